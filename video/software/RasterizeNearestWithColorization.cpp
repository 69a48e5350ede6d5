#include "video/software/PixelShaders.h"
#include "video/software/RasterizeTriangle.h"
#include "video/software/Rasterizer.h"

namespace Quorvex::Platform::Video::Software {

template <class Sample>
void RasterizeNearestWithColorization(Triangle triangle, const RasterTarget& target,
                                      PixelShaderParameter<Sample>& parameter) {
    RasterizeTriangle(triangle, target, parameter, PixelShaderNearestWithColorization::ShadePixel<Sample>);
}

#define QUORVEX_INSTANCE(value, name, sample)                                                                          \
    template void RasterizeNearestWithColorization(Triangle, const RasterTarget&, PixelShaderParameter<sample>&);
QUORVEX_SAMPLE_TYPES(QUORVEX_INSTANCE)
#undef QUORVEX_INSTANCE

} // namespace Quorvex::Platform::Video::Software
