#pragma once

#include <windows.h>

#include <cstdint>

namespace Quorvex::GUI {

/// Draws a buffer into the window's client area. 32-bit BGRA, rows top-down and pitchBytes apart, alpha ignored. A
/// failed call is reported by its name.
void ShowBuffer(HWND window, const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                std::uint32_t pitchBytes);

/// Makes the buffer the whole content of a layered window, with premultiplied per-pixel alpha. Failed calls are
/// reported by their names, and the steps after them still run.
void ShowBufferWithAlpha(HWND window, const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                         std::uint32_t pitchBytes);

} // namespace Quorvex::GUI
