#include "view/ViewTransform.h"

#include "foundation/Exception.h"

#include <algorithm>
#include <cmath>

namespace Quorvex::View {

namespace {

using Platform::Video::ImageRect;

/// An image is never less than one pixel wide on screen, at any zoom.
double AtLeastOnePixel(double size) {
    if (size > 0 && size < 1)
        return 1;
    if (size < 0 && size > -1)
        return -1;
    return size;
}

struct Edges {
    std::int32_t first;
    std::int32_t last;
};

Edges Snapped(double a, double b, double size) {
    Edges edges{RoundAwayFromZero(a), RoundAwayFromZero(b)};
    const std::int32_t roundedSize = RoundAwayFromZero(size);
    const double errorFirst = std::fabs(a - edges.first);
    const double errorLast = std::fabs(b - edges.last);
    const double span = static_cast<double>(edges.last) - edges.first;
    if (errorFirst < errorLast || (errorFirst == errorLast && size < span))
        edges.last = edges.first + roundedSize;
    else if (errorLast < errorFirst || size > span)
        edges.first = edges.last - roundedSize;
    return edges;
}

double Power(double base, std::int32_t exponent) {
    auto remaining = static_cast<std::uint32_t>(std::abs(exponent));
    double result = 1;
    for (double square = base; remaining != 0; remaining >>= 1, square *= square)
        if ((remaining & 1) != 0)
            result *= square;
    return exponent < 0 ? 1 / result : result;
}

double Clamped(double value, double limit) {
    return limit >= -limit ? std::clamp(value, -limit, limit) : value;
}

} // namespace

std::int32_t RoundAwayFromZero(double value) {
    constexpr double largest = 0x3FFFFFFF;
    const double shifted = value > 0 ? value + 0.5 : value < 0 ? value - 0.5 : 0;
    return static_cast<std::int32_t>(std::clamp(shifted, -largest, largest));
}

std::int32_t ViewArea::AvailableWidth() const {
    return std::max(rect.right - rect.left - marginLeft - marginRight, 0);
}

std::int32_t ViewArea::AvailableHeight() const {
    return std::max(rect.bottom - rect.top - (toolbarHeight + marginTop) - marginBottom, 0);
}

ImageExtent ViewTransform::ShownExtent(const ImageExtent& extent) const {
    switch (rotation) {
    case 0:
    case 180:
        return extent;
    case 90:
    case 270:
        return {extent.y, extent.x};
    default:
        throw Exception();
    }
}

ImageRect ViewTransform::ComputeImageRect(const ImageExtent& extent, const ViewArea& area, double scrollAtX,
                                          double scrollAtY) const {
    const ImageExtent shown = ShownExtent(extent);
    const double width = AtLeastOnePixel(shown.x / inverseZoom);
    const double height = AtLeastOnePixel(shown.y / inverseZoom);
    const double scale = 1 / inverseZoom;
    const GUI::Rect& rect = area.rect;
    // Twice the centre of the free area, which may lie between two pixels.
    const std::int32_t centreX2 = rect.left + rect.right - area.marginRight + area.marginLeft;
    const std::int32_t centreY2 = rect.top + rect.bottom - area.marginBottom + area.marginTop + area.toolbarHeight;
    const Edges columns =
        Snapped((centreX2 - width) * 0.5 - scale * scrollAtX, (centreX2 + width) * 0.5 - scale * scrollAtX, width);
    const Edges rows =
        Snapped((centreY2 - height) * 0.5 - scale * scrollAtY, (centreY2 + height) * 0.5 - scale * scrollAtY, height);
    ImageRect result;
    result.x0 = columns.first;
    result.x1 = columns.last;
    result.y0 = rows.first;
    result.y1 = rows.last;
    result.rotation = rotation;
    return result;
}

std::pair<double, double> ViewTransform::ClampScroll(const ImageExtent& extent, const ViewArea& area, double x,
                                                     double y) const {
    constexpr double keptPixels = 50.0;
    const ImageExtent shown = ShownExtent(extent);
    const double limitX = shown.x * 0.5 + (area.AvailableWidth() * inverseZoom * 0.5 - inverseZoom * keptPixels);
    const double limitY = shown.y * 0.5 + (area.AvailableHeight() * inverseZoom * 0.5 - inverseZoom * keptPixels);
    return {Clamped(x, limitX), Clamped(y, limitY)};
}

double ViewTransform::FittingInverseZoom(const ImageExtent& extent, const ViewArea& area) const {
    const ImageExtent shown = ShownExtent(extent);
    double fitting = 0.001;
    if (area.AvailableWidth() * fitting < std::fabs(shown.x))
        fitting = std::fabs(shown.x) / area.AvailableWidth();
    if (area.AvailableHeight() * fitting < std::fabs(shown.y))
        fitting = std::fabs(shown.y) / area.AvailableHeight();
    return fitting;
}

double ViewTransform::SteppedInverseZoom(double steps) const {
    constexpr double eighthRootOfTwo = 1.0905077326652577;
    return Power(eighthRootOfTwo, RoundAwayFromZero(std::log(inverseZoom) / std::log(eighthRootOfTwo) - steps));
}

void ViewTransform::Rotate(std::int32_t degrees) {
    // Degrees to radians with pi as 3.14159: views that were turned keep the offsets that they always had.
    constexpr double radians = 0.01745327777777778;
    const double back = rotation * radians;
    const double x = std::cos(back) * scrollX - std::sin(back) * scrollY;
    const double y = std::sin(back) * scrollX + std::cos(back) * scrollY;
    const double forth = -degrees * radians;
    scrollX = std::cos(forth) * x - std::sin(forth) * y;
    scrollY = std::sin(forth) * x + std::cos(forth) * y;
    rotation = degrees;
}

double LimitedInverseZoom(double inverseZoom) {
    if (inverseZoom >= largestInverseZoom)
        return largestInverseZoom;
    return inverseZoom < smallestInverseZoom ? smallestInverseZoom : inverseZoom;
}

} // namespace Quorvex::View
