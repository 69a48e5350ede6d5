#include "video/ResamplingMode.h"

namespace Quorvex::Platform::Video {

std::span<const ResamplingModeName> ResamplingModeNames() {
    static const ResamplingModeName names[] = {
        {EnumResamplingMode::Cubic, {"Kubisch", "Cubic"}},
        {EnumResamplingMode::Linear, {"Linear", "Linear"}},
        {EnumResamplingMode::Nearest, {"Nächster Nachbar"_t, "Nearest neighbor"}},
        {EnumResamplingMode::Area, {"Flächenabtastung"_t, "Area sampling"}},
    };
    return names;
}

} // namespace Quorvex::Platform::Video
