#pragma once

#include "foundation/Exception.h"

#include <cstdint>

namespace ET::Img::Lzw {

/// A string of bytes that the output has already, or is just about to get.
struct String {
    static constexpr std::uint32_t headSize = 8; // Bytes.

    std::uint64_t head;  ///< Its first bytes, the first one lowest; 0 behind its end.
    std::uint32_t start; ///< Where it begins in the output. A string of one byte need not be there.
    std::uint32_t length;

    static String OfByte(std::uint32_t byte, std::uint32_t start) { return {byte & 0xFF, start, 1}; }

    std::uint32_t FirstByte() const { return head & 0xFF; }
    /// The string and the byte that follows it in the output.
    String With(std::uint32_t byte) const {
        const std::uint64_t added = length < headSize ? std::uint64_t{byte} << (8 * (length % headSize)) : 0;
        return {head | added, start, length + 1};
    }
};

/// What the codes of 12 bits stand for. Each string is another one and the byte that followed it, and the two lie in
/// the output one behind the other. So an entry is a place in the output, and to decode a code is to copy from there.
/// But most strings are short, and the place of one was often written just before: it would be read again before the
/// processor has stored it. So an entry has its first bytes itself.
class Strings {
public:
    static constexpr std::uint32_t capacity = 4096;

    /// The codes below singleBytes stand for a byte; of those above 255 the low byte is meant.
    explicit Strings(std::uint32_t singleBytes) {
        for (std::uint32_t code = 0; code < singleBytes; ++code)
            m_strings[code] = String::OfByte(code, 0);
    }

    const String& operator[](std::uint32_t code) const { return m_strings[code]; }

    /// The string of the code, which is below the capacity. Raises Exception "_StackPtr>=LZ_MAX_CODE" for a string that
    /// no table of this capacity can lead to.
    void Enter(std::uint32_t code, const String& string) {
        if (string.length > longest)
            throw Quorvex::Exception("_StackPtr>=LZ_MAX_CODE");
        m_strings[code] = string;
    }

private:
    static constexpr std::uint32_t longest = 4095; // Bytes.

    String m_strings[capacity];
};

} // namespace ET::Img::Lzw
