#pragma once

#include <cstdint>

namespace Quorvex::GUI {

/// 1 below 144 dots per inch, 2 from 144, 4 from 288: whole factors only, so that every edge stays on a pixel.
std::int32_t ScaleFromDpi(std::uint32_t dotsPerInch);

/// The process-wide factor of all fixed pixel sizes. 1 until the GUI has asked the screen. GUI thread.
std::int32_t GetScale();
void SetScale(std::int32_t scale);

} // namespace Quorvex::GUI
