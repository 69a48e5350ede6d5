#include "video/software/QuadSampling.h"

#include "data/ImageBase.h"

#include <limits>

namespace Quorvex::Platform::Video::Software {

PixelRegion Intersection(const PixelRegion& a, const PixelRegion& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

PixelRegion Normalized(const ImageRect& rect) {
    return {std::min(rect.x0, rect.x1), std::min(rect.y0, rect.y1), std::max(rect.x0, rect.x1),
            std::max(rect.y0, rect.y1)};
}

QuadSampling::QuadSampling(const ImageRect& rect, const Data::ImageBase& image)
    : allocatedWidth(image.AllocatedWidth), allocatedHeight(image.AllocatedHeight) {
    const PixelRegion bounds = Normalized(rect);
    const std::int64_t extentX = std::int64_t{bounds.right} - bounds.left;
    const std::int64_t extentY = std::int64_t{bounds.bottom} - bounds.top;
    constexpr std::int64_t largest = std::numeric_limits<std::int32_t>::max();
    if (extentX == 0 || extentY == 0 || extentX > largest || extentY > largest)
        return;
    width = static_cast<std::int32_t>(extentX);
    height = static_cast<std::int32_t>(extentY);

    const bool isMirroredX = rect.x0 > rect.x1;
    const bool isMirroredY = rect.y0 > rect.y1;
    ImageRect relative = rect;
    relative.x0 = isMirroredX ? width : 0;
    relative.x1 = width - relative.x0;
    relative.y0 = isMirroredY ? height : 0;
    relative.y1 = height - relative.y0;
    const std::optional<ImageQuad> quad =
        MakeImageQuad(relative, EdgeTextureCoordinate(image.GetWidth(), image.AllocatedWidth),
                      EdgeTextureCoordinate(image.GetHeight(), image.AllocatedHeight));
    if (!quad)
        return;
    for (std::size_t i = 0; i < quad->size(); ++i) {
        const ImageQuadVertex& vertex = (*quad)[i];
        triangles[i / 3].vertices[i % 3] = {vertex.x, vertex.y, Color{}, vertex.u, vertex.v};
    }
    for (Triangle& triangle : triangles)
        triangle.SortByY();
    MakeAxes(image, isMirroredX, isMirroredY, rect.rotation);
    isEmpty = false;
}

void QuadSampling::MakeAxes(const Data::ImageBase& image, bool isMirroredX, bool isMirroredY, std::int32_t rotation) {
    isTurned = rotation == 90 || rotation == 270;
    const double sourceWidth = allocatedWidth * EdgeTextureCoordinate(image.GetWidth(), image.AllocatedWidth);
    const double sourceHeight = allocatedHeight * EdgeTextureCoordinate(image.GetHeight(), image.AllocatedHeight);
    columns = {sourceWidth, double(width), isMirroredX != (rotation == 180 || rotation == 270), image.GetWidth()};
    rows = {sourceHeight, double(height), isMirroredY != (rotation == 180 || rotation == 90), image.GetHeight()};
    if (isTurned) {
        std::swap(columns.sourceLength, rows.sourceLength);
        std::swap(columns.visibleLength, rows.visibleLength);
    }
    footprint.sizeX = image.GetWidth() / double(isTurned ? height : width);
    footprint.sizeY = image.GetHeight() / double(isTurned ? width : height);
    footprint.invArea = 1.0 / (footprint.sizeX * footprint.sizeY);
}

QuadSampling::Row::Row(const QuadSampling& quadSampling, std::int32_t y)
    : sampling(quadSampling), weights{Barycentric(sampling.triangles[0]), Barycentric(sampling.triangles[1])} {
    const RasterTarget whole{nullptr, nullptr, 0, 0, 0, sampling.width, sampling.height, false};
    const TriangleSpans::Span first = TriangleSpans(sampling.triangles[0], whole).At(y);
    const TriangleSpans::Span second = TriangleSpans(sampling.triangles[1], whole).At(y);
    left = first.begin <= second.begin && first.end <= second.end ? 0 : 1;
    leftEnd = left == 0 ? first.end : second.end;
    for (Barycentric& plane : weights)
        plane.StartRow(y);
}

QuadSampling::Row::Position QuadSampling::Row::At(std::int32_t x) {
    const std::uint32_t index = x < leftEnd ? left : 1 - left;
    Barycentric& plane = weights[index];
    const auto& [v0, v1, v2] = sampling.triangles[index].vertices;
    plane.MoveTo(x);
    return {sampling.allocatedWidth * plane.Interpolate(v0.u, v1.u, v2.u),
            sampling.allocatedHeight * plane.Interpolate(v0.v, v1.v, v2.v)};
}

} // namespace Quorvex::Platform::Video::Software
