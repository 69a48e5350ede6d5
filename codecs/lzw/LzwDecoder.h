#pragma once

#include "codecs/CodeReader.h"
#include "codecs/lzw/Output.h"
#include "foundation/Exception.h"

namespace ET::Img::Lzw {

/// How the codes of formats differ.
struct Format {
    BitOrder bitOrder;
    /// By how many codes the width of a code grows before its number asks for it.
    std::uint32_t earlyChange;
};

/// The codes of Lempel, Ziv and Welch with up to 12 bits, one of them clearing the table and one ending the data
/// (GIF89a appendix F, TIFF 6.0 section 13). A full table stays as it is until it is cleared.
template <Format format>
class Decoder {
public:
    /// There are 2^codeSize codes for single bytes, up to 2^11; of those above 255 the low byte is meant.
    Decoder(const std::uint8_t* source, std::size_t sourceSize, std::uint32_t codeSize)
        : m_codes(source, sourceSize), m_firstWidth(codeSize + 1), m_clearCode(1u << codeSize), m_strings(m_clearCode) {
    }

    /// Decodes until the output is full. Raises Exception with empty text where the data end before, or have a code
    /// that stands for nothing; the output has what was decoded until then.
    void Decode(Output& output) {
        // The decoder and the output are values here and no references: as the bytes that are written could be any
        // object's, all that a reference leads to would be read again behind each of them.
        const Result result = Run(m_codes, output);
        output = result.output;
        if (result.isWhole)
            return;
        output.ClearSlack();
        throw Quorvex::Exception();
    }

private:
    static constexpr unsigned largestWidth = 12;

    struct Result {
        Output output;
        bool isWhole;
    };

    Result Run(CodeReader<format.bitOrder> codes, Output output) {
        const unsigned firstWidth = m_firstWidth;
        const std::uint32_t clearCode = m_clearCode, endCode = clearCode + 1;
        std::uint32_t code = clearCode;
        while (!output.IsFull()) {
            // The table is clear. More clearing does no harm, and the first code stands for a byte.
            while (code == clearCode && !codes.IsOverrun())
                code = codes.Read(firstWidth);
            if (code >= clearCode || codes.IsOverrun())
                return {output, false};
            String last = output.AppendByte(code);
            unsigned width = firstWidth;
            std::uint32_t next = endCode + 1; // The first code that stands for nothing yet.
            while (!output.IsFull()) {
                if (next + format.earlyChange >= 1u << width && width < largestWidth)
                    ++width;
                code = codes.Read(width);
                if (codes.IsOverrun())
                    return {output, false};
                String string;
                if (code < next && code != clearCode && code != endCode) [[likely]]
                    string = m_strings[code];
                else if (code == next) // The entry that it makes itself.
                    string = last.With(last.FirstByte());
                else if (code == clearCode)
                    break;
                else
                    return {output, false};
                // The entry that each code makes: the string before it, and its own first byte.
                if (next < Strings::capacity)
                    m_strings.Enter(next++, last.With(string.FirstByte()));
                last = output.Append(string);
            }
        }
        return {output, true};
    }

    CodeReader<format.bitOrder> m_codes;
    unsigned m_firstWidth;
    std::uint32_t m_clearCode;
    Strings m_strings;
};

} // namespace ET::Img::Lzw
