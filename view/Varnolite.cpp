#include "view/Varnolite.h"

#include "gui/GUI.h"
#include "gui/Panel.h"
#include "gui/Scale.h"
#include "view/ImageCoordinates.h"

#include <tuple>
#include <utility>

namespace Quorvex::View {

using Platform::Video::Image2DMeta;
using Platform::Video::ImageRect;

Varnolite::Varnolite() {
    add(label);
}

void Varnolite::SetImage(Image2DMeta newImage, SharedPtr<Data::ImageBase> newUserImage) {
    image = std::move(newImage);
    userImage = std::move(newUserImage);
    imageChanged = true;
    if (dragging)
        return;
    if (fitToWindow)
        Fit();
    // The fit asks for a paint only where it changes the zoom, and another image is another picture at any zoom.
    InvalidatePanel();
}

void Varnolite::TakeLimitedZoom(double newInverseZoom) {
    const double limited = LimitedInverseZoom(newInverseZoom);
    if (limited == transform.inverseZoom)
        return;
    transform.inverseZoom = limited;
    if (zoomChanged)
        zoomChanged(*this);
    InvalidatePanel();
}

void Varnolite::SetZoom(double newInverseZoom) {
    fitToWindow = false;
    if (fitChanged)
        fitChanged(*this);
    TakeLimitedZoom(newInverseZoom);
    ClampStoredScroll();
}

void Varnolite::ClampStoredScroll() {
    if (HasImage() && !dragging)
        TakeClampedScroll();
}

void Varnolite::TakeClampedScroll() {
    std::tie(transform.scrollX, transform.scrollY) = ClampScroll(transform.scrollX, transform.scrollY);
}

void Varnolite::ZoomStep(double steps) {
    SetZoom(transform.SteppedInverseZoom(steps));
}

void Varnolite::ZoomStepAt(double steps, double px, double py) {
    const ViewTransform old = transform;
    ZoomStep(steps);
    transform.scrollX = old.scrollX + px * (old.inverseZoom - transform.inverseZoom);
    transform.scrollY = old.scrollY + py * (old.inverseZoom - transform.inverseZoom);
    ClampStoredScroll();
}

void Varnolite::FitToWindow() {
    if (transform.scrollX != 0 || transform.scrollY != 0) {
        transform.scrollX = 0;
        transform.scrollY = 0;
        InvalidatePanel();
    }
    fitToWindow = true;
    if (fitChanged)
        fitChanged(*this);
    Fit();
}

void Varnolite::Fit() {
    if (HasImage())
        TakeLimitedZoom(transform.FittingInverseZoom(GetExtent(), area));
}

void Varnolite::ScrollBy(double dx, double dy) {
    if (!HasImage() || (dx == 0 && dy == 0))
        return;
    if (fitToWindow) {
        fitToWindow = false;
        if (fitChanged)
            fitChanged(*this);
    }
    transform.scrollX -= dx * transform.inverseZoom;
    transform.scrollY -= dy * transform.inverseZoom;
    InvalidatePanel();
}

void Varnolite::SetRotation(std::int32_t degrees) {
    transform.Rotate(degrees);
    if (rotationChanged)
        rotationChanged(*this);
    if (fitToWindow)
        Fit();
    else if (!dragging)
        TakeClampedScroll();
    InvalidatePanel();
}

void Varnolite::SetRulerVisible(bool isVisible) {
    if (isVisible == rulerVisible)
        return;
    rulerVisible = isVisible;
    const std::int32_t sign = isVisible ? 1 : -1;
    constexpr std::int32_t columns = 40;
    constexpr std::int32_t rows = 20;
    area.marginLeft += sign * columns * GUI::GetScale();
    area.marginTop += sign * rows * GUI::GetScale();
    UpdateLayout();
}

void Varnolite::SetRGBOverlayVisible(bool isVisible) {
    if (isVisible == rgbOverlayVisible)
        return;
    rgbOverlayVisible = isVisible;
    InvalidatePanel();
}

void Varnolite::SetToolbarHeight(std::int32_t height) {
    if (dragging)
        dragY -= (area.toolbarHeight - height) * 0.5;
    area.toolbarHeight = height;
    UpdateLayout();
}

void Varnolite::SetOverlays(IViewOverlay* newRgbOverlay, IViewOverlay* newRuler) {
    rgbOverlay = newRgbOverlay;
    ruler = newRuler;
    UpdateLayout();
}

void Varnolite::SetLabelText(const BilingualText& text) {
    label.SetText(text[0], text[1]);
    InvalidatePanel();
}

void Varnolite::SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) {
    if (dragging) {
        // The picture moves with the centre of the view; the mouse keeps its place on the picture.
        dragX -= (right + left) * 0.5 - (newLeft + newRight) * 0.5;
        dragY -= (bottom + top) * 0.5 - (newTop + newBottom) * 0.5;
    }
    ControlList::SetRect(newLeft, newTop, newRight, newBottom);
    area.rect = {newLeft, newTop, newRight, newBottom};
    UpdateLayout();
}

void Varnolite::UpdateLayout() {
    for (IViewOverlay* overlay : {ruler, rgbOverlay})
        if (overlay != nullptr)
            overlay->SetRect(area.rect);
    if (dragging)
        return;
    if (fitToWindow)
        Fit();
    // Even at an unchanged zoom the picture has another place now.
    InvalidatePanel();
}

ImageExtent Varnolite::GetExtent() const {
    return {image.width * image.pixelScaleX, image.height * image.pixelScaleY};
}

ImageRect Varnolite::ComputeImageRect(double scrollAtX, double scrollAtY) const {
    ImageRect rect = transform.ComputeImageRect(GetExtent(), area, scrollAtX, scrollAtY);
    rect.source = &image;
    return rect;
}

std::pair<double, double> Varnolite::ClampScroll(double scrollAtX, double scrollAtY) const {
    return transform.ClampScroll(GetExtent(), area, scrollAtX, scrollAtY);
}

double Varnolite::ScreenToImageX(const ImageRect& rect, double x, double y) const {
    return ImageCoordinates{rect, double(image.width), double(image.height)}.ScreenToImageX(x, y);
}

double Varnolite::ScreenToImageY(const ImageRect& rect, double x, double y) const {
    return ImageCoordinates{rect, double(image.width), double(image.height)}.ScreenToImageY(x, y);
}

double Varnolite::ImageToScreenX(const ImageRect& rect, double u, double v) const {
    return ImageCoordinates{rect, double(image.width), double(image.height)}.ImageToScreenX(u, v);
}

double Varnolite::ImageToScreenY(const ImageRect& rect, double u, double v) const {
    return ImageCoordinates{rect, double(image.width), double(image.height)}.ImageToScreenY(u, v);
}

} // namespace Quorvex::View
