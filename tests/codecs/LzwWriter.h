#pragma once

#include <cstdint>
#include <vector>

/// Codes of growing width, one after the other, as an LZW format packs them.
class CodeWriter {
public:
    struct Format {
        bool isLowBitFirst = true;
        std::uint32_t earlyChange = 0; ///< By how many codes the width grows too early.
    };

    CodeWriter(std::uint32_t codeSize, Format format);

    /// Writes a code of the present width. One that clears the table makes the width what it was at first.
    CodeWriter& Code(std::uint32_t code);
    CodeWriter& Clear() { return Code(m_clearCode); }
    CodeWriter& End() { return Code(m_clearCode + 1); }

    std::uint32_t GetClearCode() const { return m_clearCode; }
    /// The code that the string behind the last written code will have; 4096 where it has none.
    std::uint32_t GetNext() const { return m_next; }
    /// The bytes so far, the last one filled up with zeros.
    std::vector<std::uint8_t> GetBytes() const;

private:
    Format m_format;
    std::uint32_t m_codeSize;
    std::uint32_t m_clearCode;
    std::uint32_t m_next;
    unsigned m_width;
    std::vector<bool> m_bits;
};

/// What encoders of LZW are free to do.
struct LzwStyle {
    CodeWriter::Format format{};
    bool beginsWithClear = true;
    bool clearsFullTable = true;       ///< Else the table stays as it is.
    std::uint32_t codesUntilClear = 0; ///< Clears after so many codes; 0: not before the table is full.
    bool hasEnd = true;
};

/// A plain encoder: looks strings up in a map.
std::vector<std::uint8_t> WriteLzw(const std::vector<std::uint8_t>& data, std::uint32_t codeSize,
                                   const LzwStyle& style = {});
