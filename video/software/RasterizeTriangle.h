#pragma once

#include "video/Blend.h"
#include "video/software/PixelShader.h"
#include "video/software/Triangle.h"

namespace Quorvex::Platform::Video::Software {

/// Draws the triangle with the colours that shade(parameter) gives.
template <class Sample, class Shade>
void RasterizeTriangle(Triangle triangle, const RasterTarget& target, PixelShaderParameter<Sample>& parameter,
                       const Shade& shade) {
    triangle.SortByY();
    const TriangleSpans spans(triangle, target);
    if (spans.IsEmpty())
        return;
    Barycentric weights(triangle);
    const auto& [v0, v1, v2] = triangle.vertices;
    for (std::int32_t y = spans.RowBegin(); y < spans.RowEnd(); ++y) {
        const TriangleSpans::Span span = spans.At(y);
        const std::size_t row = static_cast<std::size_t>(y) * target.width;
        weights.StartRow(y);
        for (std::int32_t x = span.begin; x < span.end; ++x) {
            weights.MoveTo(x);
            parameter.u = weights.Interpolate(v0.u, v1.u, v2.u);
            parameter.v = weights.Interpolate(v0.v, v1.v, v2.v);
            const Color color = shade(parameter);
            const std::size_t index = row + static_cast<std::size_t>(x);
            // Opaque over anything is the colour itself; most pixels of text and images are.
            const bool isBlended = target.isBlending && color.alpha != 255;
            target.writeBits[index] = isBlended ? Blend(color, target.readBits[index]) : color;
        }
    }
}

} // namespace Quorvex::Platform::Video::Software
