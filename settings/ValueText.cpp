#include "settings/ValueText.h"

#include "foundation/Numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>

namespace Quorvex {

namespace {

template <class Integer>
String IntegerToText(Integer value) {
    std::array<char, 24> digits{};
    std::to_chars(digits.data(), digits.data() + digits.size() - 1, value);
    return String(digits.data());
}

template <class Integer>
Integer IntegerFromText(const String& text) {
    const std::string narrow = text.ToANSI().ToStdString();
    Integer value = 0;
    const char* const end = narrow.data() + narrow.size();
    const auto [position, error] = std::from_chars(narrow.data(), end, value);
    if (error != std::errc() || position != end)
        throw Exception();
    return value;
}

/// The nearest multiple of 2^-30, counted in such steps; may lie outside the range of the type.
double RawFromText(std::string_view text) {
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto [position, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
    if (error != std::errc() || position != end)
        throw Exception();
    return std::nearbyint(value * FixedPoint230::one);
}

} // namespace

namespace Internal {

String SignedToText(std::int64_t value) {
    return IntegerToText(value);
}

String UnsignedToText(std::uint64_t value) {
    return IntegerToText(value);
}

std::int64_t SignedFromText(const String& text, std::int64_t minimum, std::int64_t maximum) {
    const auto value = IntegerFromText<std::int64_t>(text);
    if (value < minimum || value > maximum)
        throw Exception();
    return value;
}

std::uint64_t UnsignedFromText(const String& text, std::uint64_t maximum) {
    const auto value = IntegerFromText<std::uint64_t>(text);
    if (value > maximum)
        throw Exception();
    return value;
}

} // namespace Internal

String ValueText<bool>::ToText(bool value) {
    return BoolToString(value);
}

bool ValueText<bool>::FromText(const String& text) {
    return BoolFromString(text);
}

String ValueText<FixedPoint230>::ToText(FixedPoint230 value) {
    // A step is 9.3e-10: ten decimals tell any two neighbours apart, most values in files were meant as fewer.
    constexpr int enoughDecimals = 10;
    std::array<char, 24> text{};
    for (int decimals = 0; decimals <= enoughDecimals; ++decimals) {
        const auto result = std::to_chars(text.data(), text.data() + text.size() - 1, value.ToDouble(),
                                          std::chars_format::fixed, decimals);
        *result.ptr = '\0';
        if (RawFromText({text.data(), result.ptr}) == value.raw)
            break;
    }
    return String(text.data());
}

FixedPoint230 ValueText<FixedPoint230>::FromText(const String& text) {
    const double raw = RawFromText(text.ToANSI().ToStdString());
    if (!(raw >= std::numeric_limits<std::int32_t>::min() && raw <= std::numeric_limits<std::int32_t>::max()))
        throw Exception();
    return {static_cast<std::int32_t>(raw)};
}

String ValueText<Data::ColorBGRA<float>>::ToText(const Data::ColorBGRA<float>& value) {
    return FloatToString(value.blue) + " " + FloatToString(value.green) + " " + FloatToString(value.red) + " " +
           FloatToString(value.alpha);
}

Data::ColorBGRA<float> ValueText<Data::ColorBGRA<float>>::FromText(const String& text) {
    const std::string narrow = text.ToANSI().ToStdString();
    std::array<float, 4> channels{};
    std::size_t start = 0;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const bool isLast = i + 1 == channels.size();
        const std::size_t end = isLast ? narrow.size() : narrow.find(' ', start);
        const std::string channel = end == std::string::npos ? std::string() : narrow.substr(start, end - start);
        if (channel.empty() || channel.find(' ') != std::string::npos)
            throw Exception();
        channels[i] = FloatFromString(String(channel.c_str()));
        start = end + 1;
    }
    return {channels[0], channels[1], channels[2], channels[3]};
}

} // namespace Quorvex
