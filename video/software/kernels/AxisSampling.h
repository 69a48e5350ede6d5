#pragma once

#include "video/software/Triangle.h"

#include <cstdint>

namespace Quorvex::Platform::Video::Software {

/// The source positions of the destination pixels along one axis of the screen, for an axis-parallel quad.
///
/// The plain program interpolates a position out of three weights, whose rounding differs from pixel to pixel by a few
/// units in the last place; here a position depends on one coordinate alone. Position() and the plain program's
/// position never lie further apart than PositionError(), and what this difference can do to a byte is decided by the
/// plain program.
struct AxisSampling {
    double sourceLength = 0.0;       ///< Source pixels that the quad's whole side covers.
    double extent = 0.0;             ///< Destination pixels along that side.
    bool isReversed = false;         ///< The source runs against the screen's axis.
    std::uint32_t visibleLength = 0; ///< Indices are clamped to 0 up to this, exclusive.

    /// In source pixels, for the destination pixel at that distance from the side's beginning.
    double Position(std::int64_t pixel) const {
        const double offset = static_cast<double>(pixel) + nearHalf;
        return sourceLength * ((isReversed ? extent - offset : offset) / extent);
    }

    /// Bound of |Position - plain position| in source pixels. With u = 2^-53: each of the weights' slopes takes at most
    /// 4 roundings, a weight is the sum of two such products and a constant (14 u), the position is the sum of up to
    /// two weighted corners (26 u and a rounding), and Position itself takes 4: 31 u, of 1, times the source's length.
    double PositionError() const { return 0x1p-48 * sourceLength; }
};

} // namespace Quorvex::Platform::Video::Software
