#include "foundation/String.h"

#include "foundation/Exception.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

namespace Quorvex {

namespace {

/// The one place that knows which numbers are encodings: every copy, comparison and conversion comes through here or
/// names the encodings that it takes.
std::size_t UnitBytes(std::int32_t encoding) {
    if (encoding == Encoding::Utf16)
        return sizeof(char16_t);
    const bool isCodePage = encoding == 874 || (encoding >= 1250 && encoding <= 1258);
    if (encoding == Encoding::None || encoding == Encoding::Utf8 || isCodePage)
        return 1;
    throw Exception();
}

/// Raises std::length_error for more units than a String can count.
template <class Unit>
String FromUnits(const std::basic_string<Unit>& units, std::int32_t encoding) {
    if (units.size() > std::numeric_limits<std::uint32_t>::max())
        throw std::length_error("String: too long");
    return String(TextView(units.data(), static_cast<std::uint32_t>(units.size()), encoding));
}

char16_t InUnicode(char byte) {
    return Internal::windows1252[static_cast<unsigned char>(byte)];
}

// The first match counts: the five unassigned bytes share U+FFFD, and the lowest of them stands for it.
char NearestInWindows1252(char32_t value) {
    const auto* end = Internal::windows1252 + 256;
    const auto* found = std::find(Internal::windows1252, end, value);
    return found == end ? '?' : static_cast<char>(found - Internal::windows1252);
}

// Surrogates get no special handling; a pair becomes six bytes (the form that is known as CESU-8).
void AppendUtf8(std::string& bytes, char16_t value) {
    if (value < 0x80) {
        bytes.push_back(static_cast<char>(value));
    } else if (value < 0x800) {
        bytes.push_back(static_cast<char>(0xC0 | (value >> 6)));
        bytes.push_back(static_cast<char>(0x80 | (value & 0x3F)));
    } else {
        bytes.push_back(static_cast<char>(0xE0 | (value >> 12)));
        bytes.push_back(static_cast<char>(0x80 | ((value >> 6) & 0x3F)));
        bytes.push_back(static_cast<char>(0x80 | (value & 0x3F)));
    }
}

std::int32_t JoinedEncoding(const String& a, const String& b) {
    const auto eitherIs = [&](std::int32_t encoding) { return a.encoding() == encoding || b.encoding() == encoding; };
    if (eitherIs(Encoding::Utf16))
        return Encoding::Utf16;
    if (eitherIs(Encoding::Utf8))
        return Encoding::Utf8;
    if (a.IsEmpty() || b.IsEmpty())
        return a.IsEmpty() ? b.encoding() : a.encoding();
    return a.encoding() == b.encoding() ? a.encoding() : Encoding::Utf8;
}

String ConvertedTo(const String& text, std::int32_t encoding) {
    switch (encoding) {
    case Encoding::Windows1252:
        return text.ToANSI();
    case Encoding::Utf8:
        return text.ToUTF8();
    case Encoding::Utf16:
        return text.ToWide();
    default:
        throw Exception();
    }
}

} // namespace

String::String(TextView text) {
    const std::size_t unit = UnitBytes(text.encoding);
    // The empty text needs no block; a null block reads as empty everywhere.
    if (text.length == 0) {
        m_encoding = text.encoding;
        return;
    }
    const std::size_t bytes = unit * text.length;
    m_data = ::operator new(bytes + unit);
    std::memcpy(m_data, text.data, bytes);
    std::memset(static_cast<char*>(m_data) + bytes, 0, unit);
    m_length = text.length;
    m_encoding = text.encoding;
}

String::~String() {
    ::operator delete(m_data);
}

// By copy and swap: memory that runs out leaves the old text in place, and a text may be assigned to itself.
String& String::operator=(const String& other) {
    String copy(other);
    Swap(copy);
    return *this;
}

String& String::operator=(String&& other) noexcept {
    String moved(std::move(other));
    Swap(moved);
    return *this;
}

void String::Swap(String& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_length, other.m_length);
    std::swap(m_encoding, other.m_encoding);
}

bool operator==(const String& a, const String& b) {
    if (a.IsEmpty() && b.IsEmpty())
        return true;
    if (a.IsEmpty() || b.IsEmpty())
        return false;
    if (a.encoding() != b.encoding())
        throw Exception("different string encoding");
    return a.compare(b) == 0;
}

// Unit by unit rather than by the C library, which would stop at a zero unit or follow the locale.
int String::compare(const String& other) const {
    const bool isWide = UnitBytes(m_encoding) == 2;
    const bool isOtherWide = UnitBytes(other.m_encoding) == 2;
    const auto unitOf = [](const String& text, bool asWide, std::uint32_t index) {
        return asWide ? text.Wide()[index] : static_cast<char16_t>(static_cast<unsigned char>(text.Narrow()[index]));
    };
    const std::uint32_t common = std::min(m_length, other.m_length);
    for (std::uint32_t i = 0; i < common; ++i) {
        const char16_t a = unitOf(*this, isWide, i);
        const char16_t b = unitOf(other, isOtherWide, i);
        if (a != b)
            return a < b ? -1 : 1;
    }
    if (m_length == other.m_length)
        return 0;
    return m_length < other.m_length ? -1 : 1;
}

String String::ToWide() const {
    if (m_encoding == Encoding::Utf16)
        return *this;
    if (m_encoding != Encoding::Windows1252 && m_encoding != Encoding::None)
        throw Exception();
    std::u16string units(m_length, u'\0');
    std::transform(Narrow(), Narrow() + m_length, units.begin(), InUnicode);
    return FromUnits(units, Encoding::Utf16);
}

String String::ToANSI() const {
    if (m_encoding == Encoding::Windows1252)
        return *this;
    std::string bytes(m_length, '\0');
    if (m_encoding == Encoding::Utf16)
        std::transform(Wide(), Wide() + m_length, bytes.begin(), NearestInWindows1252);
    else if (m_encoding == Encoding::Utf8)
        // Taken as signed values, bytes above ASCII match no entry: UTF-8 is plain ASCII when it comes here.
        std::transform(Narrow(), Narrow() + m_length, bytes.begin(),
                       [](char byte) { return static_cast<signed char>(byte) < 0 ? '?' : byte; });
    else if (m_encoding != Encoding::None)
        throw Exception();
    return FromUnits(bytes, Encoding::Windows1252);
}

String String::ToUTF8() const {
    if (m_encoding == Encoding::Utf8)
        return *this;
    std::string bytes;
    if (m_encoding == Encoding::Utf16)
        std::for_each(Wide(), Wide() + m_length, [&](char16_t unit) { AppendUtf8(bytes, unit); });
    else if (m_encoding == Encoding::Windows1252)
        std::for_each(Narrow(), Narrow() + m_length, [&](char byte) { AppendUtf8(bytes, InUnicode(byte)); });
    else if (m_encoding != Encoding::None)
        throw Exception();
    return FromUnits(bytes, Encoding::Utf8);
}

String operator+(const String& a, const String& b) {
    const std::int32_t encoding = JoinedEncoding(a, b);
    if (encoding == Encoding::None)
        return String();
    const String left = ConvertedTo(a, encoding);
    const String right = ConvertedTo(b, encoding);
    if (encoding == Encoding::Utf16) {
        std::u16string joined(left.Wide(), left.length());
        joined.append(right.Wide(), right.length());
        return FromUnits(joined, encoding);
    }
    return FromUnits(left.ToStdString() + right.ToStdString(), encoding);
}

} // namespace Quorvex
