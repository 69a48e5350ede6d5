#pragma once

#include <cstdint>

namespace Quorvex::Platform::Video {

// Conversions from floating point cut off toward zero. The language leaves the result open where the integer cannot
// hold it, and machines differ there; these are defined for every input.

/// The low 8 bits of the integer. From 2^61 on a 64-bit float is a multiple of 256, so that everything beyond the
/// 64-bit integers is 0; infinities and not-a-number are 0 too.
constexpr std::uint8_t TruncateToLowByte(double value) {
    constexpr double limit = 9223372036854775808.0;
    if (!(value > -limit && value < limit))
        return 0;
    return static_cast<std::uint8_t>(static_cast<std::int64_t>(value));
}

/// The nearest 32-bit integer where the value lies outside; 0 for not-a-number.
constexpr std::int32_t TruncateToInt32(double value) {
    if (value >= 2147483647.0)
        return 2147483647;
    if (value <= -2147483648.0)
        return -2147483647 - 1;
    return value == value ? static_cast<std::int32_t>(value) : 0;
}

/// A colour channel of 0..1 as a byte, rounded.
constexpr std::uint8_t ChannelToByte(float channel) {
    return TruncateToLowByte(channel * 255.0 + 0.5);
}

} // namespace Quorvex::Platform::Video
