#pragma once

#include "codecs/jpg/Scan.h"

namespace ET::Img::Jpg {

/// The tables for the blocks of one component.
struct BlockTables {
    const HuffmanTable& dc;
    const HuffmanTable& ac;
    const std::uint16_t* quantisation; ///< In zigzag order.
};

// All of them multiply the coefficients by their quantisation, keep the results within 16 bits and put them into
// natural order. They raise Exception with empty text for codes that cannot be, and read zeros behind the end of the
// data, which the caller looks for.

/// ITU T.81 F.2.2. The block must be zero.
void DecodeSequential(BitReader& reader, const BlockTables& tables, std::int32_t& predictor, std::int16_t* block);

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
