#pragma once

#include "gui/Rect.h"
#include "video/ImageRect.h"

#include <utility>

namespace Quorvex::View {

/// Adds one half away from zero and truncates, so that ties go away from zero. Saturates at +-(2^30 - 1), far outside
/// any screen, so that the distance of two results fits 32 bits.
std::int32_t RoundAwayFromZero(double value);

/// The limits of the zoom in image units per screen pixel: 6.25 % and 25600 %.
inline constexpr double largestInverseZoom = 16.0;
inline constexpr double smallestInverseZoom = 0.00390625;

/// The size of the shown image in image units, samples times pixel sizes; negative for a mirrored axis.
struct ImageExtent {
    double x = 0;
    double y = 0;
};

/// The rectangle of the view with what is kept free at its edges, in screen pixels.
struct ViewArea {
    GUI::Rect rect;
    std::int32_t marginLeft = 0;
    std::int32_t marginTop = 0;
    std::int32_t marginRight = 0;
    std::int32_t marginBottom = 0;
    std::int32_t toolbarHeight = 0;

    /// Free width and height, never negative.
    std::int32_t AvailableWidth() const;
    std::int32_t AvailableHeight() const;
};

/// Rotation, zoom and scroll offset of a view, and the arithmetic between image and screen. A plain value without
/// notifications; the view control tells its owner what changed.
struct ViewTransform {
    std::int32_t rotation = 0; ///< Degrees counterclockwise: 0, 90, 180 or 270.
    double inverseZoom = 1.0;  ///< Image units per screen pixel.
    double scrollX = 0;        ///< Offset of the view centre from the image centre, in image units along the
    double scrollY = 0;        ///< screen's axes.

    /// Extent along the screen's axes. Raises Exception for any other rotation.
    ImageExtent ShownExtent(const ImageExtent& extent) const;

    /// The image's rectangle on the screen for a scroll offset, unclipped. Each edge pair is snapped so that the size
    /// on screen is the rounded size and the better-placed edge wins: pixels stay square at integer zoom factors
    /// however the centre falls. Fills x0, x1, y0, y1 and rotation.
    Platform::Video::ImageRect ComputeImageRect(const ImageExtent& extent, const ViewArea& area, double scrollAtX,
                                                double scrollAtY) const;

    /// Keeps 50 screen pixels of the image inside the free area. A coordinate whose limit is negative stays as it is.
    std::pair<double, double> ClampScroll(const ImageExtent& extent, const ViewArea& area, double x, double y) const;

    /// Zoom that lets the whole image fit the free area, not yet limited. Infinite for an empty area.
    double FittingInverseZoom(const ImageExtent& extent, const ViewArea& area) const;

    /// The zoom that many eighths of an octave nearer, on the logarithmic grid.
    double SteppedInverseZoom(double steps) const;

    /// Turns the scroll offset so that the image point at the view centre stays there, and takes the new rotation.
    void Rotate(std::int32_t degrees);
};

double LimitedInverseZoom(double inverseZoom);

} // namespace Quorvex::View
