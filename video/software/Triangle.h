#pragma once

#include "video/software/SampleConversion.h"

namespace Quorvex::Platform::Video::Software {

/// The working form of three vertices. Passed by value: sorting leaves the vertex buffer alone.
struct Triangle {
    struct Vertex {
        std::int32_t x; ///< Target pixels.
        std::int32_t y;
        Color color;
        float u; ///< Fractions of the allocated image.
        float v;
    };

    Vertex vertices[3];

    /// By y; vertices of equal y keep their order.
    void SortByY();
};

/// The largest 32-bit float below one half. A sample is taken just before the centre of a pixel, so that a source edge
/// which meets the centre, as it does at every even magnification, falls to the same side in all rows and columns.
inline constexpr double nearHalf = 0.4999999701976776123046875;

/// The plane of a triangle: the weights of its vertices at a pixel, in target pixels.
struct Barycentric {
    double l0 = 0.0, l1 = 0.0, l2 = 0.0; ///< Weights at the current pixel.
    double c0, c1;
    double dxl0, dxl1;
    double dyl0, dyl1;
    double rowL0 = 0.0, rowL1 = 0.0; ///< Their part that is the same for the whole row.

    /// Of a sorted triangle. Reports "Barycentric::Barycentric" with "Division by Zero" and raises Exception if the
    /// vertices lie on one line.
    explicit Barycentric(const Triangle& triangle);

    void StartRow(std::int32_t y) {
        rowL0 = (y + nearHalf) * dyl0 + c0;
        rowL1 = (y + nearHalf) * dyl1 + c1;
    }
    void MoveTo(std::int32_t x) {
        l0 = (x + nearHalf) * dxl0 + rowL0;
        l1 = (x + nearHalf) * dxl1 + rowL1;
        l2 = (1.0 - l0) - l1;
    }
    /// The value at the current pixel of what has these values at the vertices.
    double Interpolate(double value0, double value1, double value2) const {
        return value0 * l0 + value1 * l1 + value2 * l2;
    }
};

/// Where a triangle is drawn to. The clip rectangle lies within the target.
struct RasterTarget {
    const Color* readBits; ///< Rows WIDTH pixels apart, as writeBits.
    Color* writeBits;
    std::uint32_t width;
    std::int32_t clipLeft, clipTop, clipRight, clipBottom;
    bool isBlending;
};

/// The pixels of a sorted triangle, row by row. Made for the two triangles of an axis-parallel quad whose vertices come
/// in the order top left, top right, bottom right and top left, bottom right, bottom left: the side of the middle
/// vertex is told by the first two vertices alone. Columns and rows with integer corners are covered from the first up
/// to the last, exclusive.
class TriangleSpans {
public:
    struct Span {
        std::int32_t begin; ///< Columns; the end is exclusive.
        std::int32_t end;
    };

    TriangleSpans(const Triangle& triangle, const RasterTarget& target);

    bool IsEmpty() const { return rowBegin >= rowEnd; }
    std::int32_t RowBegin() const { return rowBegin; }
    std::int32_t RowEnd() const { return rowEnd; }
    Span At(std::int32_t y) const;

private:
    using Vertex = Triangle::Vertex;

    const Triangle& triangle;
    const RasterTarget& target;
    std::int32_t rowBegin = 0;
    std::int32_t rowEnd = 0;
    bool isLongEdgeLeft = false;
};

} // namespace Quorvex::Platform::Video::Software
