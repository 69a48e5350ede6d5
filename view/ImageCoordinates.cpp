#include "view/ImageCoordinates.h"

#include "foundation/Exception.h"

namespace Quorvex::View {

namespace {

/// Spans of the rectangle, which are negative for a mirrored picture.
double Columns(const Platform::Video::ImageRect& rect) {
    return static_cast<double>(rect.x1) - rect.x0;
}
double Rows(const Platform::Video::ImageRect& rect) {
    return static_cast<double>(rect.y1) - rect.y0;
}

} // namespace

double ImageCoordinates::ScreenToImageX(double x, double y) const {
    switch (rect.rotation) {
    case 0:
        return (x - rect.x0) * width / Columns(rect);
    case 90:
        return (rect.y1 - y) * width / Rows(rect);
    case 180:
        return (rect.x1 - x) * width / Columns(rect);
    case 270:
        return (y - rect.y0) * width / Rows(rect);
    default:
        throw Exception();
    }
}

double ImageCoordinates::ScreenToImageY(double x, double y) const {
    switch (rect.rotation) {
    case 0:
        return (y - rect.y0) * height / Rows(rect);
    case 90:
        return (x - rect.x0) * height / Columns(rect);
    case 180:
        return (rect.y1 - y) * height / Rows(rect);
    case 270:
        return (rect.x1 - x) * height / Columns(rect);
    default:
        throw Exception();
    }
}

double ImageCoordinates::ImageToScreenX(double u, double v) const {
    switch (rect.rotation) {
    case 0:
        return Columns(rect) * u / width + rect.x0;
    case 90:
        return Columns(rect) * v / height + rect.x0;
    case 180:
        return rect.x1 - Columns(rect) * u / width;
    case 270:
        return rect.x1 - Columns(rect) * v / height;
    default:
        throw Exception();
    }
}

double ImageCoordinates::ImageToScreenY(double u, double v) const {
    switch (rect.rotation) {
    case 0:
        return Rows(rect) * v / height + rect.y0;
    case 90:
        return rect.y1 - Rows(rect) * u / width;
    case 180:
        return rect.y1 - Rows(rect) * v / height;
    case 270:
        return Rows(rect) * u / width + rect.y0;
    default:
        throw Exception();
    }
}

} // namespace Quorvex::View
