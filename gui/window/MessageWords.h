#pragma once

#include "gui/Rect.h"
#include "gui/window/WindowEvents.h"

namespace Quorvex::GUI {

/// Bits of the low half of a mouse message's wParam.
namespace MouseKey {
inline constexpr std::uint32_t LeftButton = 0x01;
inline constexpr std::uint32_t RightButton = 0x02;
inline constexpr std::uint32_t Shift = 0x04;
inline constexpr std::uint32_t Control = 0x08;
inline constexpr std::uint32_t MiddleButton = 0x10;
} // namespace MouseKey

/// Two signed 16-bit halves in one word, as the home platform packs positions; beyond 16 bits they wrap.
constexpr std::intptr_t PackPosition(std::int32_t x, std::int32_t y) {
    const auto low = static_cast<std::uint32_t>(x) & 0xFFFF;
    const auto high = static_cast<std::uint32_t>(y) << 16;
    return static_cast<std::int32_t>(low | high);
}

/// A message as the home platform would send it: wheel positions are desktop coordinates, a leave has none, all others
/// are relative to the client area. keys are bits of MouseKey; wheelDelta counts 120 a notch.
MouseMessage MakeMouseMessage(IPlatformWindow& window, MouseMessageNumber number, std::int32_t screenX,
                              std::int32_t screenY, const Rect& clientRect, std::uint32_t keys,
                              std::int32_t wheelDelta);

/// The second word of a key message: repeat count 1, the hardware's scan code, whether the key was down before, and
/// whether it goes up.
std::intptr_t MakeKeyData(std::uint8_t scanCode, bool wasDown, bool isUp);

} // namespace Quorvex::GUI
