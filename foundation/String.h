#pragma once

#include "foundation/TextView.h"

#include <string>

namespace Quorvex {

/// The text type of the whole program: an owned block of code units together with the number of its encoding.
/// The block always ends in a terminator of one unit; a null block reads as the empty text. A value type without
/// shared state: an object belongs to one thread at a time. Copies, comparisons and conversions raise Exception without
/// text for an unknown encoding number, and std::bad_alloc when memory runs out.
class String {
public:
    String() = default;
    String(const char* text) : String(TextView(text)) {}
    String(const char16_t* text) : String(TextView(text)) {}
    String(TextView text);
    String(const String& other) : String(other.View()) {}
    String(String&& other) noexcept { Swap(other); }
    ~String();

    String& operator=(const String& other);
    String& operator=(String&& other) noexcept;

    /// True at once if both are empty, false if one is. Otherwise the encodings must agree: Exception "different string
    /// encoding".
    friend bool operator==(const String& a, const String& b);
    /// Negative, zero or positive by the first unit that differs, else by length. Does not look at the encodings: units
    /// of different widths are compared by their values.
    int compare(const String& other) const;

    // The result has the encoding asked for, also for a text without encoding. Of the code pages only Windows-1252 is
    // converted; others raise.

    /// Windows-1252. What it does not hold becomes "?"; bytes of UTF-8 above ASCII give one "?" each.
    String ToANSI() const;
    /// UTF-16. Raises for UTF-8: the program reads no UTF-8 of its own.
    String ToWide() const;
    /// UTF-8, each 16-bit unit encoded on its own in at most 3 bytes.
    String ToUTF8() const;

    std::uint32_t length() const { return m_length; }
    std::int32_t encoding() const { return m_encoding; }
    bool IsEmpty() const { return m_length == 0; }
    TextView View() const { return TextView(m_data, m_length, m_encoding); }
    operator TextView() const { return View(); }

    /// The units as they stand; the caller knows the encoding. Never null.
    const char* Narrow() const { return m_data != nullptr ? static_cast<const char*>(m_data) : ""; }
    const char16_t* Wide() const { return m_data != nullptr ? static_cast<const char16_t*>(m_data) : u""; }
    std::string ToStdString() const { return std::string(Narrow(), m_length); }

    void Swap(String& other) noexcept;

private:
    void* m_data = nullptr;
    std::uint32_t m_length = 0;
    std::int32_t m_encoding = Encoding::None;
};

/// Joins two texts. The result has the encoding of the operand that is not empty; where both are not and differ it is
/// UTF-8, as it is where either is. UTF-16 on either side goes above all else. Other code pages than Windows-1252
/// raise.
String operator+(const String& a, const String& b);
// Literals need overloads of their own: they convert to a String and to a TextView alike.
inline String operator+(const String& a, TextView b) {
    return a + String(b);
}
inline String operator+(TextView a, const String& b) {
    return String(a) + b;
}
inline String operator+(const String& a, const char* b) {
    return a + String(b);
}
inline String operator+(const char* a, const String& b) {
    return String(a) + b;
}
inline String operator+(const String& a, const char16_t* b) {
    return a + String(b);
}
inline String operator+(const char16_t* a, const String& b) {
    return String(a) + b;
}

namespace Internal {
/// The published Windows-1252 mapping from a byte to its Unicode value; the five unassigned bytes map to U+FFFD.
extern const char16_t windows1252[256];
} // namespace Internal

} // namespace Quorvex
