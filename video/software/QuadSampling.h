#pragma once

#include "video/ImageQuad.h"
#include "video/software/PixelPrograms.h"
#include "video/software/Triangle.h"
#include "video/software/kernels/AxisSampling.h"

namespace Quorvex::Platform::Video::Software {

/// Pixels of a surface, the ends exclusive.
struct PixelRegion {
    std::int32_t left;
    std::int32_t top;
    std::int32_t right;
    std::int32_t bottom;

    bool IsEmpty() const { return left >= right || top >= bottom; }
};

PixelRegion Intersection(const PixelRegion& a, const PixelRegion& b);
/// The rectangle without its mirroring.
PixelRegion Normalized(const ImageRect& rect);

/// Where the pixels of an image rectangle lie in the image. Columns and rows count from the rectangle's own left and
/// top, not from the screen's: a picture that is scrolled keeps every rounding, and with it every byte, wherever the
/// rectangle lies.
class QuadSampling {
public:
    QuadSampling(const ImageRect& rect, const Data::ImageBase& image);

    /// Nothing is to be drawn: the rectangle has no area, its rotation is none of the four, or a side does not fit 31
    /// bits.
    bool IsEmpty() const { return isEmpty; }
    /// The source's rows run along the screen's columns.
    bool IsTurned() const { return isTurned; }
    const AreaFootprint& Footprint() const { return footprint; }
    /// What the screen's columns and rows take from the source, for the fast kernels.
    const AxisSampling& Columns() const { return columns; }
    const AxisSampling& Rows() const { return rows; }

    /// The positions of one row of pixels as the rasteriser interpolates them.
    class Row {
    public:
        struct Position {
            double x; ///< Source pixels.
            double y;
        };

        Row(const QuadSampling& quadSampling, std::int32_t y);
        Position At(std::int32_t x);

    private:
        const QuadSampling& sampling;
        Barycentric weights[2];
        std::int32_t leftEnd; ///< From here on a pixel belongs to the right one of the triangles.
        std::uint32_t left;   ///< Index of the left triangle.
    };

private:
    void MakeAxes(const Data::ImageBase& image, bool isMirroredX, bool isMirroredY, std::int32_t rotation);

    Triangle triangles[2]; ///< Sorted.
    double allocatedWidth;
    double allocatedHeight;
    AxisSampling columns;
    AxisSampling rows;
    AreaFootprint footprint;
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool isTurned = false;
    bool isEmpty = true;
};

} // namespace Quorvex::Platform::Video::Software
