#include "foundation/Numbers.h"

#include "foundation/Exception.h"

#include <array>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace Quorvex {

String IntegerToString(std::uint64_t value, std::uint32_t base, std::uint32_t minimumDigits) {
    if (base < 1 || base > 16)
        throw Exception();
    std::string digits;
    do {
        digits.insert(digits.begin(), "0123456789ABCDEF"[value % base]);
        // Base 1 has the one digit 0 and no end: the first digit is all that can be said.
        value = base == 1 ? 0 : value / base;
    } while (value != 0);
    // Never cuts: a number that is longer than asked for stands whole.
    if (digits.size() < minimumDigits)
        digits.insert(0, minimumDigits - digits.size(), '0');
    return String(digits.c_str());
}

String IntegerToString(std::int32_t value, std::uint32_t base, std::uint32_t minimumDigits) {
    return IntegerToString(static_cast<std::uint64_t>(std::int64_t{value}), base, minimumDigits);
}

float FloatFromString(const String& text) {
    if (text.IsEmpty())
        throw std::logic_error("FloatFromString: empty string");
    const std::string narrow = text.ToANSI().ToStdString();
    constexpr float infinity = std::numeric_limits<float>::infinity();
    static constexpr std::array<std::pair<std::string_view, float>, 6> infinities{{{"1.#INF", infinity},
                                                                                   {"+1.#INF", infinity},
                                                                                   {"INF", infinity},
                                                                                   {"+INF", infinity},
                                                                                   {"-1.#INF", -infinity},
                                                                                   {"-INF", -infinity}}};
    for (const auto& [name, value] : infinities)
        if (narrow == name)
            return value;
    // The classic locale, whatever the user's: a settings file must read the same everywhere.
    std::istringstream stream(narrow);
    stream.imbue(std::locale::classic());
    float value = 0;
    // A stream stores the largest finite value where a number overflows; that did not parse either.
    return stream >> value ? value : 0.0f;
}

String FloatToString(double value) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return String(stream.str().c_str());
}

String FixedToString(double value, int precision) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream.setf(std::ios::fixed, std::ios::floatfield);
    stream.precision(precision);
    stream << value;
    return String(stream.str().c_str());
}

String BoolToString(bool value) {
    return value ? "true" : "false";
}

bool BoolFromString(const String& text) {
    const String narrow = text.ToANSI();
    if (narrow == "true")
        return true;
    if (narrow == "false")
        return false;
    throw Exception();
}

} // namespace Quorvex
