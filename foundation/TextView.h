#pragma once

#include <cstddef>
#include <cstdint>

namespace Quorvex {

/// Number of a text encoding. 874 and 1250 to 1258 are single-byte code pages by their usual numbers; the two Unicode
/// forms have numbers of this program's own.
namespace Encoding {
inline constexpr std::int32_t None = 0;
inline constexpr std::int32_t Windows1252 = 1252;
inline constexpr std::int32_t Utf8 = 1259;
inline constexpr std::int32_t Utf16 = 1260;
} // namespace Encoding

/// A text that somebody else owns: a literal, or a view of a String for the time of a call. Never stored.
struct TextView {
    const void* data = nullptr;
    std::uint32_t length = 0; ///< In code units, without a terminator.
    std::int32_t encoding = Encoding::None;

    constexpr TextView() = default;
    constexpr TextView(const void* text, std::uint32_t textLength, std::int32_t textEncoding)
        : data(text), length(textLength), encoding(textEncoding) {}
    /// A terminated narrow text in Windows-1252; null has no encoding and reads as the empty text.
    constexpr TextView(const char* text)
        : data(text), length(CountUnits(text)), encoding(text != nullptr ? Encoding::Windows1252 : Encoding::None) {}
    /// A terminated UTF-16 text; null has no encoding and reads as the empty text.
    constexpr TextView(const char16_t* text)
        : data(text), length(CountUnits(text)), encoding(text != nullptr ? Encoding::Utf16 : Encoding::None) {}

private:
    template <class Unit>
    static constexpr std::uint32_t CountUnits(const Unit* text) {
        std::uint32_t count = 0;
        while (text != nullptr && text[count] != 0)
            ++count;
        return count;
    }
};

namespace Internal {

/// Sources are UTF-8 and texts of the program are Windows-1252: the conversion happens while compiling, so that a
/// German text reads naturally in the source and costs nothing at start.
template <std::size_t Size>
struct Windows1252Literal {
    char bytes[Size]{};
    std::uint32_t length = 0;

    consteval Windows1252Literal(const char (&utf8)[Size]) {
        for (std::size_t i = 0; i + 1 < Size; ++i) {
            auto value = static_cast<unsigned char>(utf8[i]);
            if (value >= 0x80) {
                if ((value & 0xFC) != 0xC0)
                    throw "only characters up to U+00FF can stand in a literal";
                ++i;
                value = static_cast<unsigned char>((value << 6) | (static_cast<unsigned char>(utf8[i]) & 0x3F));
            }
            bytes[length++] = static_cast<char>(value);
        }
    }
};

} // namespace Internal

inline namespace Literals {
/// "..."_t is a Windows-1252 literal written in UTF-8.
template <Internal::Windows1252Literal literal>
constexpr TextView operator""_t() {
    return TextView(literal.bytes, literal.length, Encoding::Windows1252);
}
} // namespace Literals

} // namespace Quorvex
