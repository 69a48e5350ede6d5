#pragma once

#include "codecs/jpg/BitReader.h"

#include <array>
#include <cstddef>

namespace ET::Img::Jpg {

/// A Huffman code of ITU T.81 annex C: how many codes of each length from 1 to 16 there are, and their symbols in the
/// order of the codes. A table that nothing has been loaded into has no code.
class HuffmanTable {
public:
    static constexpr std::size_t lengthCount = 16;
    static constexpr std::size_t largestSymbolCount = 255;

    /// As a DHT segment gives them: 16 counts, whose sum is at most largestSymbolCount, and as many symbols. A code
    /// that does not fit its length ends the table: what would come behind it can never be met in a stream.
    void Load(const std::uint8_t* counts, const std::uint8_t* symbols);

    /// The next symbol. The reader must hold 16 bits. Raises Exception with empty text where the bits are no code.
    std::uint8_t Decode(BitReader& reader) const {
        std::uint16_t entry = m_fast[reader.Peek(fastBits)];
        if (entry == 0)
            entry = FindLong(reader.Peek(lengthCount));
        reader.Skip(entry & 0xFF);
        return static_cast<std::uint8_t>(entry >> 8);
    }

private:
    static constexpr unsigned fastBits = 8;

    /// An entry as in the fast table for a code that is not there.
    std::uint16_t FindLong(std::uint32_t bits) const;

    /// By the next 8 bits: the length of the code in the low byte and its symbol in the high one; 0: a longer code.
    std::array<std::uint16_t, 1 << fastBits> m_fast{};
    /// Per length: the first number of 16 bits above all codes of up to that length, filled up with zeros at its end.
    std::array<std::uint32_t, lengthCount + 1> m_limit{};
    /// Per length: what to add to a code to get the index of its symbol.
    std::array<std::int32_t, lengthCount + 1> m_offset{};
    std::array<std::uint8_t, 256> m_symbols{};
};

/// The value of a difference or a coefficient out of its size in bits and these bits (ITU T.81 F.2.2.1, EXTEND). A size
/// of 16, which only lossless frames have, stands for 32768 and has no bits.
inline std::int32_t Extend(std::uint32_t bits, unsigned size) {
    const std::uint32_t half = std::uint32_t{1} << size >> 1;
    return static_cast<std::int32_t>(bits) - (bits < half ? static_cast<std::int32_t>((half << 1) - 1) : 0);
}

} // namespace ET::Img::Jpg
