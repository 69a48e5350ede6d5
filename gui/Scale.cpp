#include "gui/Scale.h"

namespace Quorvex::GUI {

namespace {
std::int32_t currentScale = 1;
}

std::int32_t ScaleFromDpi(std::uint32_t dotsPerInch) {
    if (dotsPerInch >= 288)
        return 4;
    return dotsPerInch >= 144 ? 2 : 1;
}

std::int32_t GetScale() {
    return currentScale;
}

void SetScale(std::int32_t scale) {
    currentScale = scale;
}

} // namespace Quorvex::GUI
