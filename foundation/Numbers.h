#pragma once

#include "foundation/String.h"

#include <cstdint>

namespace Quorvex {

/// Digits in upper case, padded with "0" on the left up to minimumDigits; zero is one digit. A base outside 1..16
/// raises Exception without text. The signed form widens with its sign, so -1 reads as the largest 64-bit value.
String IntegerToString(std::uint64_t value, std::uint32_t base = 10, std::uint32_t minimumDigits = 0);
String IntegerToString(std::int32_t value, std::uint32_t base = 10, std::uint32_t minimumDigits = 0);
inline String IntegerToString(std::uint32_t value, std::uint32_t base = 10, std::uint32_t minimumDigits = 0) {
    return IntegerToString(std::uint64_t{value}, base, minimumDigits);
}

/// Reads a 32-bit float in the classic locale. An empty text raises std::logic_error "FloatFromString: empty string"; a
/// text that does not parse yields 0. Infinity is spelled exactly "1.#INF", "+1.#INF", "INF", "+INF", "-1.#INF",
/// "-INF".
float FloatFromString(const String& text);
/// Default notation, six significant digits.
String FloatToString(double value);
/// Fixed notation with that number of decimals.
String FixedToString(double value, int precision);

/// "true" or "false".
String BoolToString(bool value);
/// Accepts exactly "true" and "false"; anything else raises Exception without text.
bool BoolFromString(const String& text);

} // namespace Quorvex
