#include "video/software/PixelShaders.h"
#include "video/software/RasterizeTriangle.h"
#include "video/software/Rasterizer.h"

namespace Quorvex::Platform::Video::Software {

template <class Sample>
void RasterizeNearest(Triangle triangle, const RasterTarget& target, PixelShaderParameter<Sample>& parameter) {
    RasterizeTriangle(triangle, target, parameter, PixelShaderNearest::ShadePixel<Sample>);
}

#define QUORVEX_INSTANCE(value, name, sample)                                                                          \
    template void RasterizeNearest(Triangle, const RasterTarget&, PixelShaderParameter<sample>&);
QUORVEX_SAMPLE_TYPES(QUORVEX_INSTANCE)
#undef QUORVEX_INSTANCE

} // namespace Quorvex::Platform::Video::Software
