#pragma once

#include "foundation/Exception.h"

#include <cstdint>

namespace ET::Img::Lzw {

/// A string of bytes that the output has already, or is just about to get: where it begins there, and how long it is.
struct String {
    std::uint32_t start;
    std::uint32_t length;
};

/// What the codes of 12 bits stand for. Each string is another one and the byte that followed it, and the two lie in
/// the output one behind the other. So an entry is a place in the output, and to decode a code is to copy from there.
class Strings {
public:
    static constexpr std::uint32_t capacity = 4096;

    const String& operator[](std::uint32_t code) const { return m_strings[code]; }

    /// The string of the code, which is below the capacity: one byte longer than the one before it in the output.
    /// Raises Exception "_StackPtr>=LZ_MAX_CODE" for a string that no table of this capacity can lead to.
    void Enter(std::uint32_t code, String before) {
        if (before.length >= longest)
            throw Quorvex::Exception("_StackPtr>=LZ_MAX_CODE");
        m_strings[code] = {before.start, before.length + 1};
    }

private:
    static constexpr std::uint32_t longest = 4095; // Bytes.

    String m_strings[capacity];
};

} // namespace ET::Img::Lzw
