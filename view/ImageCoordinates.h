#pragma once

#include "video/ImageRect.h"

namespace Quorvex::View {

/// Between screen pixels and samples of an image of width by height samples that lies in a rectangle. A rotation of 90
/// turns the picture counterclockwise: the image's top left corner lies bottom left. All raise Exception for a rotation
/// that is not a multiple of 90.
struct ImageCoordinates {
    const Platform::Video::ImageRect& rect;
    double width;
    double height;

    double ScreenToImageX(double x, double y) const;
    double ScreenToImageY(double x, double y) const;
    double ImageToScreenX(double u, double v) const;
    double ImageToScreenY(double u, double v) const;
};

} // namespace Quorvex::View
