#pragma once

#include <cstdint>

namespace Quorvex::GUI {

// The halves of the words of a wheel message, which are signed: a desktop may reach left of and above its origin.

constexpr std::int16_t SignedLowHalf(std::intptr_t word) {
    return static_cast<std::int16_t>(word & 0xFFFF);
}

constexpr std::int16_t SignedHighHalf(std::intptr_t word) {
    return static_cast<std::int16_t>((word >> 16) & 0xFFFF);
}

/// How far the wheel was turned, 120 a notch; positive is away from the user.
constexpr std::int16_t WheelDelta(std::uintptr_t wParam) {
    return static_cast<std::int16_t>((wParam >> 16) & 0xFFFF);
}

} // namespace Quorvex::GUI
