#include "foundation/platform/posix/NativeText.h"

#include <cstddef>

namespace Quorvex::Platform {

namespace {

constexpr char32_t escapeBase = 0xDC00;

bool IsHighSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xD800;
}

bool IsLowSurrogate(char32_t unit) {
    return (unit & 0xFFFFFC00) == 0xDC00;
}

bool IsEscapedByte(char32_t unit) {
    return unit >= escapeBase + 0x80 && unit <= escapeBase + 0xFF;
}

void AppendCodePoint(std::string& bytes, char32_t value) {
    const auto tail = [&](int shift) { bytes.push_back(static_cast<char>(0x80 | ((value >> shift) & 0x3F))); };
    if (value < 0x80) {
        bytes.push_back(static_cast<char>(value));
    } else if (value < 0x800) {
        bytes.push_back(static_cast<char>(0xC0 | (value >> 6)));
        tail(0);
    } else if (value < 0x10000) {
        bytes.push_back(static_cast<char>(0xE0 | (value >> 12)));
        tail(6);
        tail(0);
    } else {
        bytes.push_back(static_cast<char>(0xF0 | (value >> 18)));
        tail(12);
        tail(6);
        tail(0);
    }
}

/// A sequence of the table of well-formed UTF-8 (The Unicode Standard, table 3-7): its length and the range of its
/// second byte; the further ones lie in 0x80 to 0xBF. A length of 0 marks a byte that begins nothing.
struct Sequence {
    std::size_t length;
    unsigned char secondFrom;
    unsigned char secondTo;
};

Sequence SequenceOf(unsigned char first) {
    if (first < 0x80)
        return {1, 0, 0};
    if (first >= 0xC2 && first <= 0xDF)
        return {2, 0x80, 0xBF};
    if (first >= 0xE0 && first <= 0xEF)
        return {3, static_cast<unsigned char>(first == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(first == 0xED ? 0x9F : 0xBF)};
    if (first >= 0xF0 && first <= 0xF4)
        return {4, static_cast<unsigned char>(first == 0xF0 ? 0x90 : 0x80),
                static_cast<unsigned char>(first == 0xF4 ? 0x8F : 0xBF)};
    return {0, 0, 0};
}

/// The length of the well-formed sequence at the start of the bytes, or 0.
std::size_t WellFormedLength(std::string_view bytes) {
    const Sequence sequence = SequenceOf(static_cast<unsigned char>(bytes[0]));
    if (sequence.length > bytes.size())
        return 0;
    for (std::size_t i = 1; i < sequence.length; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (byte < (i == 1 ? sequence.secondFrom : 0x80) || byte > (i == 1 ? sequence.secondTo : 0xBF))
            return 0;
    }
    return sequence.length;
}

char32_t CodePointOf(std::string_view sequence) {
    const auto first = static_cast<unsigned char>(sequence[0]);
    if (sequence.size() == 1)
        return first;
    char32_t value = first & (0xFF >> (sequence.size() + 1));
    for (std::size_t i = 1; i < sequence.size(); ++i)
        value = (value << 6) | (static_cast<unsigned char>(sequence[i]) & 0x3F);
    return value;
}

void AppendUnits(std::u16string& units, char32_t value) {
    if (value < 0x10000) {
        units.push_back(static_cast<char16_t>(value));
        return;
    }
    units.push_back(static_cast<char16_t>(0xD800 + ((value - 0x10000) >> 10)));
    units.push_back(static_cast<char16_t>(0xDC00 + ((value - 0x10000) & 0x3FF)));
}

} // namespace

std::string NativeFromWide(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = text[i];
        // A pair goes first; a lone surrogate that is left may be an escape.
        if (IsHighSurrogate(unit) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            AppendCodePoint(bytes, 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00));
            ++i;
        } else if (IsEscapedByte(unit)) {
            bytes.push_back(static_cast<char>(unit - escapeBase));
        } else {
            AppendCodePoint(bytes, unit);
        }
    }
    return bytes;
}

std::string NativeFromWide(const String& text) {
    const String wide = text.ToWide();
    return wide.IsEmpty() ? std::string() : NativeFromWide(std::u16string_view(wide.Wide(), wide.length()));
}

String WideFromNative(std::string_view bytes) {
    std::u16string units;
    units.reserve(bytes.size());
    while (!bytes.empty()) {
        const std::size_t length = WellFormedLength(bytes);
        // Byte by byte: what follows a byte that begins nothing may be well-formed again.
        if (length == 0)
            units.push_back(static_cast<char16_t>(escapeBase + static_cast<unsigned char>(bytes[0])));
        else
            AppendUnits(units, CodePointOf(bytes.substr(0, length)));
        bytes.remove_prefix(length == 0 ? 1 : length);
    }
    return String(TextView(units.data(), static_cast<std::uint32_t>(units.size()),
                           units.empty() ? Encoding::None : Encoding::Utf16));
}

} // namespace Quorvex::Platform
