#pragma once

#include "gui/ControlList.h"
#include "gui/Label.h"
#include "video/Image2DMeta.h"
#include "video/Resampling.h"
#include "view/ViewTransform.h"

namespace Quorvex::View {

/// Something painted over the image by a view: the values of its pixels, or a ruler. It keeps nothing between paints.
class IViewOverlay {
public:
    virtual ~IViewOverlay() = default;
    /// The view's rectangle, in panel coordinates.
    virtual void SetRect(const GUI::Rect& rect) = 0;
    /// Where the image lies, the image whose samples the user is told, and screen pixels per image unit.
    virtual void PaintOver(const Platform::Video::ImageRect& rect, const SharedPtr<Data::ImageBase>& userImage,
                           double scale) = 0;
};

/// Shows one image exactly, under a zoom, a rotation in steps of 90 degrees and a scroll offset, and turns mouse and
/// wheel into those three. It holds no pixels but the texture, and does not choose the resampling mode: its owner
/// writes that into resampling. Three states follow from the fields: no image (the label's text), fit to window, free
/// zoom; a drag lies over either of the latter two. GUI thread only.
class Varnolite : public GUI::ControlList {
public:
    Varnolite();

    // The tree.
    void Paint() override;
    bool DeleteContextObjects() override;
    /// This control: its children never see the mouse.
    GUI::Control* GetControlAt(std::int32_t x, std::int32_t y) override;
    GUI::Control* OnMouseMove(std::int32_t x, std::int32_t y) override;
    std::int32_t OnMouseMoveGlobal(std::int32_t x, std::int32_t y) override;
    GUI::Control* OnMouseLButtonDown(std::int32_t x, std::int32_t y) override;
    GUI::Control* OnMouseLButtonUp(std::int32_t x, std::int32_t y) override;
    std::int32_t OnMouseLButtonUpGlobal(std::int32_t x, std::int32_t y) override;
    GUI::Control* OnMouseLeave() override;
    std::int32_t OnMouseWheel(std::uintptr_t wParam, std::intptr_t lParam) override;
    void SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) override;

    /// Shows an image; an empty one empties the view. userImage is what the overlays tell the values of, which can be
    /// another image than the one that was prepared for display.
    void SetImage(Platform::Video::Image2DMeta newImage, SharedPtr<Data::ImageBase> newUserImage);
    /// Leaves the fit. Limited to 6.25 % .. 25600 %.
    void SetZoom(double newInverseZoom);
    /// Moves on a grid of eight steps an octave; positive steps enlarge.
    void ZoomStep(double steps);
    /// The same, and keeps the image point at that offset from the view centre, in screen pixels, in place.
    void ZoomStepAt(double steps, double px, double py);
    void FitToWindow();
    /// Moves the picture by screen pixels, unclamped, and leaves the fit.
    void ScrollBy(double dx, double dy);
    /// 0, 90, 180 or 270 degrees counterclockwise; the image point at the view centre stays there.
    void SetRotation(std::int32_t degrees);
    void SetRulerVisible(bool isVisible);
    void SetRGBOverlayVisible(bool isVisible);
    void SetToolbarHeight(std::int32_t height);
    /// Not owned; null for none.
    void SetOverlays(IViewOverlay* newRgbOverlay, IViewOverlay* newRuler);
    /// The text that stands where an image would. Empty texts show nothing.
    void SetLabelText(const BilingualText& text);
    /// In the present language.
    const String& GetLabelText() const { return label.GetText(); }

    Platform::Video::ImageRect ComputeImageRect(double scrollAtX, double scrollAtY) const;
    std::pair<double, double> ClampScroll(double scrollAtX, double scrollAtY) const;

    // Between the screen and the image's samples, by the rectangle and not by the zoom, so that what is drawn with them
    // sits exactly on the painted pixels. Raise Exception for a rotation that is not a multiple of 90.
    double ScreenToImageX(const Platform::Video::ImageRect& rect, double x, double y) const;
    double ScreenToImageY(const Platform::Video::ImageRect& rect, double x, double y) const;
    double ImageToScreenX(const Platform::Video::ImageRect& rect, double u, double v) const;
    double ImageToScreenY(const Platform::Video::ImageRect& rect, double u, double v) const;

    bool HasImage() const { return static_cast<bool>(image.source); }
    const ViewTransform& GetTransform() const { return transform; }
    bool IsFitToWindow() const { return fitToWindow; }
    bool IsDragging() const { return dragging; }
    Platform::Video::Resampling& GetResampling() { return resampling; }

    Function<Varnolite&> fitChanged;
    Function<Varnolite&> zoomChanged;
    Function<Varnolite&> rotationChanged;

private:
    void PaintLabel();
    void PaintImage();
    void UpdateLayout();
    void Fit();
    void TakeLimitedZoom(double newInverseZoom);
    /// Of an image that is not dragged.
    void ClampStoredScroll();
    void TakeClampedScroll();
    void EndDrag();
    void EnterListeners();
    void LeaveListeners();
    ImageExtent GetExtent() const;

    GUI::Label label;
    Platform::Video::Image2DMeta image;
    SharedPtr<Data::ImageBase> userImage;
    Platform::Video::Resampling resampling;
    ViewTransform transform;
    ViewArea area;
    bool fitToWindow = true;
    bool imageChanged = false;
    bool rgbOverlayVisible = false;
    IViewOverlay* rgbOverlay = nullptr;
    bool rulerVisible = false;
    IViewOverlay* ruler = nullptr;
    double dragX = 0;
    double dragY = 0;
    bool dragging = false;
};

} // namespace Quorvex::View
