#include "video/software/PixelShaders.h"

namespace Quorvex::Platform::Video::Software {

template class PixelShaderOfType<PixelShaderDefault>;
template class PixelShaderOfType<PixelShaderNearest>;
template class PixelShaderOfType<PixelShaderNearestWithColorization>;
template class PixelShaderOfType<PixelShaderLinear>;
template class PixelShaderOfType<PixelShaderCubic>;
template class PixelShaderOfType<PixelShaderArea>;

} // namespace Quorvex::Platform::Video::Software
