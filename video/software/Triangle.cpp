#include "video/software/Triangle.h"

#include "foundation/Report.h"

#include <algorithm>

namespace Quorvex::Platform::Video::Software {

void Triangle::SortByY() {
    const auto order = [](Vertex& first, Vertex& second) {
        if (second.y < first.y)
            std::swap(first, second);
    };
    order(vertices[0], vertices[1]);
    order(vertices[1], vertices[2]);
    order(vertices[0], vertices[1]);
}

Barycentric::Barycentric(const Triangle& triangle) {
    const auto& [v0, v1, v2] = triangle.vertices;
    // Floating from the start: products of 32-bit differences leave 64-bit integers.
    const double x0 = v0.x, y0 = v0.y, x1 = v1.x, y1 = v1.y, x2 = v2.x, y2 = v2.y;
    const double determinant = (y1 - y2) * (x0 - x2) + (y0 - y2) * (x2 - x1);
    if (determinant == 0.0) {
        ReportProblem(__LINE__, "Barycentric::Barycentric", "Division by Zero");
        throw Exception(__LINE__, "Barycentric::Barycentric", "Division by Zero");
    }
    const double i = 1.0 / determinant;
    dxl0 = (y1 - y2) * i;
    dxl1 = (y2 - y0) * i;
    dyl0 = (x2 - x1) * i;
    dyl1 = (x0 - x2) * i;
    c0 = ((y2 - y1) * x2 + (x1 - x2) * y2) * i;
    c1 = ((x2 - x0) * y2 + (y0 - y2) * x2) * i;
}

namespace {

/// The column from which on pixels lie right of the edge a-b in the row.
std::int32_t EdgeColumn(const Triangle::Vertex& a, const Triangle::Vertex& b, std::int32_t y) {
    const double height = static_cast<double>(b.y) - a.y;
    const double t = height == 0.0 ? 1.0 : ((y + 0.5) - a.y) / height;
    return TruncateToInt32(a.x + (static_cast<double>(b.x) - a.x) * t + 0.49999);
}

} // namespace

TriangleSpans::TriangleSpans(const Triangle& sorted, const RasterTarget& rasterTarget)
    : triangle(sorted), target(rasterTarget) {
    const auto& [v0, v1, v2] = triangle.vertices;
    // A quad of zero width has no side to draw on.
    if (v0.x == v1.x)
        return;
    isLongEdgeLeft = v0.x < v1.x;
    rowBegin = std::max(target.clipTop, v0.y);
    rowEnd = std::min(target.clipBottom, v2.y);
}

TriangleSpans::Span TriangleSpans::At(std::int32_t y) const {
    const auto& [v0, v1, v2] = triangle.vertices;
    const std::int32_t longEdge = EdgeColumn(v0, v2, y);
    const std::int32_t shortEdge = y < v1.y ? EdgeColumn(v0, v1, y) : EdgeColumn(v1, v2, y);
    return {std::max(isLongEdgeLeft ? longEdge : shortEdge, target.clipLeft),
            std::min(isLongEdgeLeft ? shortEdge : longEdge, target.clipRight)};
}

} // namespace Quorvex::Platform::Video::Software
