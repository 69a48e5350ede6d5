#pragma once

#include "data/ColorBGRA.h"
#include "foundation/Exception.h"
#include "settings/FixedPoint230.h"

#include <concepts>
#include <cstdint>
#include <limits>

namespace Quorvex {

/// The text form of a value: what is written to the settings and shown in a tree of headers. A text that means no
/// value, and a value without a text, raise Exception without text.
template <class T>
struct ValueText;

/// One value of an enumeration with its text.
template <class T>
struct Keyword {
    T value;
    const char* text;
};

/// Specialised beside an enumeration that is kept in the settings:
///     static constexpr Keyword<Enumeration> table[] = {{Enumeration::First, "First"}, ...};
template <class T>
struct Keywords;

template <class T>
concept HasKeywords = requires {
    Keywords<T>::table;
};

template <HasKeywords T>
struct ValueText<T> {
    static String ToText(T value) {
        for (const Keyword<T>& keyword : Keywords<T>::table)
            if (keyword.value == value)
                return keyword.text;
        throw Exception();
    }
    static T FromText(const String& text) {
        const String narrow = text.ToANSI();
        for (const Keyword<T>& keyword : Keywords<T>::table)
            if (narrow == keyword.text)
                return keyword.value;
        throw Exception();
    }
};

template <>
struct Keywords<Locale::EnumLanguage> {
    static constexpr Keyword<Locale::EnumLanguage> table[] = {{Locale::EnumLanguage::Automatic, "Auto"},
                                                              {Locale::EnumLanguage::German, "DE"},
                                                              {Locale::EnumLanguage::English, "EN"}};
};

/// "true" or "false".
template <>
struct ValueText<bool> {
    static String ToText(bool value);
    static bool FromText(const String& text);
};

namespace Internal {
String SignedToText(std::int64_t value);
String UnsignedToText(std::uint64_t value);
/// Decimal digits with an optional minus and nothing else, within the limits; otherwise Exception without text.
std::int64_t SignedFromText(const String& text, std::int64_t minimum, std::int64_t maximum);
std::uint64_t UnsignedFromText(const String& text, std::uint64_t maximum);
} // namespace Internal

/// Decimal, negative values with a minus.
template <std::signed_integral T>
struct ValueText<T> {
    static String ToText(T value) { return Internal::SignedToText(value); }
    static T FromText(const String& text) {
        using Limits = std::numeric_limits<T>;
        return static_cast<T>(Internal::SignedFromText(text, Limits::min(), Limits::max()));
    }
};
template <std::unsigned_integral T>
struct ValueText<T> {
    static String ToText(T value) { return Internal::UnsignedToText(value); }
    static T FromText(const String& text) {
        return static_cast<T>(Internal::UnsignedFromText(text, std::numeric_limits<T>::max()));
    }
};

/// The shortest decimal fraction that reads back as the same value.
template <>
struct ValueText<FixedPoint230> {
    static String ToText(FixedPoint230 value);
    static FixedPoint230 FromText(const String& text);
};

/// Blue, green, red and alpha as float texts with a blank between them.
template <>
struct ValueText<Data::ColorBGRA<float>> {
    static String ToText(const Data::ColorBGRA<float>& value);
    static Data::ColorBGRA<float> FromText(const String& text);
};

} // namespace Quorvex
