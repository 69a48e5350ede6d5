#include "video/software/RasterizeTriangle.h"
#include "video/software/Rasterizer.h"

namespace Quorvex::Platform::Video::Software {

template <class Sample>
void RasterizeShader(Triangle triangle, const RasterTarget& target, PixelShaderParameter<Sample>& parameter,
                     const PixelShader& shader) {
    RasterizeTriangle(triangle, target, parameter, [&](const PixelShaderParameter<Sample>& position) {
        Color color;
        shader.Shade(color, position);
        return color;
    });
}

#define QUORVEX_INSTANCE(value, name, sample)                                                                          \
    template void RasterizeShader(Triangle, const RasterTarget&, PixelShaderParameter<sample>&, const PixelShader&);
QUORVEX_SAMPLE_TYPES(QUORVEX_INSTANCE)
#undef QUORVEX_INSTANCE

} // namespace Quorvex::Platform::Video::Software
