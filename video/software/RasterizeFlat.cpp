#include "video/Blend.h"
#include "video/software/Rasterizer.h"

namespace Quorvex::Platform::Video::Software {

void RasterizeFlat(Triangle triangle, const RasterTarget& target, const PixelShaderParameter<void>& parameter) {
    triangle.SortByY();
    const TriangleSpans spans(triangle, target);
    if (spans.IsEmpty())
        return;
    // Raises for a triangle without area, as the other programs do.
    [[maybe_unused]] const Barycentric weights(triangle);
    const Color color = parameter.color;
    for (std::int32_t y = spans.RowBegin(); y < spans.RowEnd(); ++y) {
        const auto [begin, end] = spans.At(y);
        const std::size_t row = static_cast<std::size_t>(y) * target.width;
        for (std::int32_t x = begin; x < end; ++x) {
            const std::size_t index = row + static_cast<std::size_t>(x);
            target.writeBits[index] = target.isBlending ? Blend(color, target.readBits[index]) : color;
        }
    }
}

} // namespace Quorvex::Platform::Video::Software
