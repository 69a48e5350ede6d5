#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace Quorvex::GUI {

/// The bitmaps with 32 bits a pixel of an icon file, as window managers take them in _NET_WM_ICON (Extended Window
/// Manager Hints): width, height and the pixels as 0xAARRGGBB, the top row first, one picture after the other. Pictures
/// wider than LARGEST_SIDE pixels and those that the file does not hold in full are left out.
std::vector<unsigned long> IconAsProperty(std::span<const std::uint8_t> file, std::uint32_t largestSide);

/// The program's own icon in that form.
std::vector<unsigned long> GetProgramIcon();

} // namespace Quorvex::GUI
