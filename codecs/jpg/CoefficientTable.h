#pragma once

#include "codecs/jpg/HuffmanTable.h"

namespace ET::Img::Jpg {

/// A code of an AC table together with the bits of the coefficient behind it.
struct CoefficientCode {
    std::int16_t value;  ///< 0: no coefficient follows in the block.
    std::uint8_t step;   ///< Places from the last coefficient to this one; beyond any block where none follows.
    std::uint8_t length; ///< Of the code and the coefficient, in bits; 0: they do not fit the table.
};

/// Whole coefficients by the bits they begin with, for codes that are short together with their coefficient, as most
/// of a picture's are.
class CoefficientTable {
public:
    static constexpr std::uint8_t endOfBlock = 64;

    /// Of the code as HuffmanTable::Load takes it.
    void Load(const std::uint8_t* counts, const std::uint8_t* symbols);

    /// What the reader stands at. It must hold 10 bits.
    CoefficientCode Peek(const BitReader& reader) const { return m_codes[reader.Peek(bits)]; }

private:
    static constexpr unsigned bits = 10;

    void Add(std::uint32_t code, unsigned length, std::uint8_t symbol);

    std::array<CoefficientCode, 1 << bits> m_codes{};
};

} // namespace ET::Img::Jpg
