#include "gui/window/x11/X11Text.h"

#include <cstdint>

namespace Quorvex::GUI {

namespace {

bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

/// Calls take(character) for every character of the text.
template <class Take>
void ForEachCharacter(const String& text, Take take) {
    const auto wide = text.ToWide();
    for (std::uint32_t i = 0; i < wide.length(); ++i) {
        char32_t character = wide.Wide()[i];
        if (IsHighSurrogate(character) && i + 1 < wide.length() && IsLowSurrogate(wide.Wide()[i + 1])) {
            ++i;
            character = 0x10000 + ((character - 0xD800) << 10) + (wide.Wide()[i] - 0xDC00u);
        } else if (IsHighSurrogate(character) || IsLowSurrogate(character)) {
            character = 0xFFFD;
        }
        take(character);
    }
}

void AppendUtf8(std::string& result, char32_t character) {
    const auto continuation = [&](int shift) { result += static_cast<char>(0x80 | ((character >> shift) & 0x3F)); };
    if (character < 0x80) {
        result += static_cast<char>(character);
    } else if (character < 0x800) {
        result += static_cast<char>(0xC0 | (character >> 6));
        continuation(0);
    } else if (character < 0x10000) {
        result += static_cast<char>(0xE0 | (character >> 12));
        continuation(6);
        continuation(0);
    } else {
        result += static_cast<char>(0xF0 | (character >> 18));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

} // namespace

std::string ToUtf8(const String& text) {
    if (text.encoding() == Encoding::Utf8)
        return text.ToStdString();
    std::string result;
    ForEachCharacter(text, [&](char32_t character) { AppendUtf8(result, character); });
    return result;
}

std::string ToLatin1(const String& text) {
    // A text in UTF-8 cannot be read by this program; what it does with those elsewhere is one "?" a byte.
    if (text.encoding() == Encoding::Utf8)
        return text.ToANSI().ToStdString();
    std::string result;
    ForEachCharacter(text,
                     [&](char32_t character) { result += character < 0x100 ? static_cast<char>(character) : '?'; });
    return result;
}

} // namespace Quorvex::GUI
