#pragma once

#include "codecs/jpg/Scan.h"
#include "foundation/Exception.h"

#include <algorithm>
#include <limits>

namespace ET::Img::Jpg {

/// The tables for the blocks of one component.
struct BlockTables {
    const HuffmanTable& dc;
    const HuffmanTable& ac;
    const CoefficientTable& coefficients; ///< Of the codes in ac.
    const std::uint16_t* quantisation;    ///< In zigzag order.
};

// All of them multiply the coefficients by their quantisation, keep the results within 16 bits and put them into
// natural order. They raise Exception with empty text for codes that cannot be, and read zeros behind the end of the
// data, which the caller looks for.

constexpr unsigned largestSize = 15; ///< Of a coefficient or a difference, in bits.

inline std::int16_t Within16Bits(std::int64_t value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

/// VALUE has 31 bits at most.
inline std::int16_t Dequantised(std::int32_t value, const BlockTables& tables, unsigned place) {
    return Within16Bits(std::int64_t(value) * tables.quantisation[place]);
}

[[gnu::always_inline]] inline std::int32_t GetExtended(BitReader& reader, unsigned size) {
    return size != 0 ? Extend(reader.Get(size), size) : 0;
}

/// The difference from the last block's first coefficient, added to the predictor.
[[gnu::always_inline]] inline void ReadDc(BitReader& reader, const BlockTables& tables, std::int32_t& predictor) {
    reader.Fill();
    const unsigned size = tables.dc.Decode(reader);
    if (size > largestSize)
        throw Quorvex::Exception();
    // Without a sign, as a damaged file may count on until the sum leaves 32 bits.
    predictor = static_cast<std::int32_t>(static_cast<std::uint32_t>(predictor) +
                                          static_cast<std::uint32_t>(GetExtended(reader, size)));
}

/// Decodes one AC code that the table of whole coefficients does not hold, and goes on from PLACE, that of the last
/// coefficient, to its own. False where no coefficient follows in the block.
[[gnu::always_inline]] inline bool DecodeLongCoefficient(BitReader& reader, const BlockTables& tables, unsigned& place,
                                                         std::int16_t* block) {
    constexpr unsigned zeroRunSymbol = 0xF0;
    const unsigned symbol = tables.ac.Decode(reader);
    const unsigned size = symbol & 0xF;
    if (size == 0) {
        place += 16;
        return symbol == zeroRunSymbol && place < blockSize;
    }
    place += (symbol >> 4) + 1;
    if (place >= blockSize)
        throw Quorvex::Exception();
    block[naturalOrder[place]] = Dequantised(Extend(reader.Get(size), size), tables, place);
    return true;
}

/// ITU T.81 F.2.2. The block must be zero.
[[gnu::always_inline]] inline void DecodeSequential(BitReader& reader, const BlockTables& tables,
                                                    std::int32_t& predictor, std::int16_t* block) {
    // What a fill brings is enough for two short codes and a code of any length.
    constexpr int shortCodesPerFill = 2;
    ReadDc(reader, tables, predictor);
    block[0] = Dequantised(predictor, tables, 0);
    for (unsigned place = 0; place < blockSize - 1;) {
        reader.Fill();
        CoefficientCode code = tables.coefficients.Peek(reader);
        for (int i = 0; i < shortCodesPerFill && code.length != 0; ++i) {
            reader.Skip(code.length);
            place += code.step;
            if (place >= blockSize) {
                if (code.value != 0)
                    throw Quorvex::Exception();
                return;
            }
            block[naturalOrder[place]] = Dequantised(code.value, tables, place);
            if (place == blockSize - 1)
                return;
            code = tables.coefficients.Peek(reader);
        }
        if (code.length == 0 && !DecodeLongCoefficient(reader, tables, place, block))
            return;
    }
}

/// The four kinds of scan of a progressive frame (ITU T.81 G.1.2), with the run of blocks that hold nothing more.
class ProgressiveDecoder {
public:
    explicit ProgressiveDecoder(const ScanHeader& header)
        : m_decode(header.spectralStart == 0 ? header.bitHigh == 0 ? FirstDc : RefineDc
                   : header.bitHigh == 0     ? FirstAc
                                             : RefineAc),
          m_start(header.spectralStart), m_end(header.spectralEnd), m_bitLow(header.bitLow) {}

    /// Raises "Wrong ZeroRunLength code" for a refinement that cannot be, besides what the others raise.
    void Decode(BitReader& reader, const BlockTables& tables, std::int32_t& predictor, std::int16_t* block) {
        m_decode(*this, reader, tables, predictor, block);
    }

private:
    using Form = void (*)(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables,
                          std::int32_t& predictor, std::int16_t* block);

    static void FirstDc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables, std::int32_t& predictor,
                        std::int16_t* block);
    static void RefineDc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables,
                         std::int32_t& predictor, std::int16_t* block);
    static void FirstAc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables, std::int32_t& predictor,
                        std::int16_t* block);
    static void RefineAc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables,
                         std::int32_t& predictor, std::int16_t* block);
    void ReadEndOfBandRun(BitReader& reader, unsigned size);

    Form m_decode;
    unsigned m_start;
    unsigned m_end;
    unsigned m_bitLow;
    std::uint32_t m_endOfBandRun = 0;
};

/// The difference of a lossless frame (ITU T.81 H.1.2.2).
std::int32_t DecodeDifference(BitReader& reader, const HuffmanTable& table);

} // namespace ET::Img::Jpg
