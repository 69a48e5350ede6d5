#include "codecs/jpg/BlockDecoding.h"

#include "foundation/Exception.h"

#include <algorithm>
#include <limits>

namespace ET::Img::Jpg {

namespace {

constexpr unsigned zeroRunSymbol = 0xF0;
constexpr unsigned largestSize = 15;

std::int16_t Within16Bits(std::int64_t value) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

std::int16_t Dequantised(std::int32_t value, const BlockTables& tables, unsigned place) {
    return Within16Bits(std::int64_t(value) * tables.quantisation[place]);
}

std::int32_t GetExtended(BitReader& reader, unsigned size) {
    return size != 0 ? Extend(reader.Get(size), size) : 0;
}

/// The difference from the last block's first coefficient, added to the predictor.
void ReadDc(BitReader& reader, const BlockTables& tables, std::int32_t& predictor) {
    reader.Fill();
    const unsigned size = tables.dc.Decode(reader);
    if (size > largestSize)
        throw Quorvex::Exception();
    // Without a sign, as a damaged file may count on until the sum leaves 32 bits.
    predictor = static_cast<std::int32_t>(static_cast<std::uint32_t>(predictor) +
                                          static_cast<std::uint32_t>(GetExtended(reader, size)));
}

} // namespace

void DecodeSequential(BitReader& reader, const BlockTables& tables, std::int32_t& predictor, std::int16_t* block) {
    ReadDc(reader, tables, predictor);
    block[0] = Dequantised(predictor, tables, 0);
    for (unsigned place = 1; place < blockSize; ++place) {
        reader.Fill();
        const unsigned symbol = tables.ac.Decode(reader);
        const unsigned size = symbol & 0xF;
        if (size == 0) {
            if (symbol != zeroRunSymbol)
                return;
            place += 15;
            continue;
        }
        place += symbol >> 4;
        if (place >= blockSize)
            throw Quorvex::Exception();
        block[naturalOrder[place]] = Dequantised(Extend(reader.Get(size), size), tables, place);
    }
}

void ProgressiveDecoder::FirstDc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables,
                                 std::int32_t& predictor, std::int16_t* block) {
    ReadDc(reader, tables, predictor);
    block[0] = Within16Bits((std::int64_t(predictor) << scan.m_bitLow) * tables.quantisation[0]);
}

void ProgressiveDecoder::RefineDc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables, std::int32_t&,
                                  std::int16_t* block) {
    // The bits below are zero, also those of a negative number, so that adding sets one.
    const std::int32_t bit = static_cast<std::int32_t>(reader.FillAndGet(1)) << scan.m_bitLow;
    block[0] = Within16Bits(block[0] + std::int64_t(bit) * tables.quantisation[0]);
}

void ProgressiveDecoder::ReadEndOfBandRun(BitReader& reader, unsigned size) {
    m_endOfBandRun = (std::uint32_t{1} << size) + (size != 0 ? reader.Get(size) : 0);
}

void ProgressiveDecoder::FirstAc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables, std::int32_t&,
                                 std::int16_t* block) {
    if (scan.m_endOfBandRun != 0) {
        --scan.m_endOfBandRun;
        return;
    }
    for (unsigned place = scan.m_start; place <= scan.m_end; ++place) {
        reader.Fill();
        const unsigned symbol = tables.ac.Decode(reader);
        const unsigned run = symbol >> 4, size = symbol & 0xF;
        if (size == 0) {
            if (run < 15) {
                scan.ReadEndOfBandRun(reader, run);
                --scan.m_endOfBandRun;
                return;
            }
            place += 15;
            continue;
        }
        place += run;
        if (place > scan.m_end)
            throw Quorvex::Exception();
        const std::int32_t value = Extend(reader.Get(size), size) * (std::int32_t{1} << scan.m_bitLow);
        block[naturalOrder[place]] = Dequantised(value, tables, place);
    }
}

namespace {

/// A coefficient that is known to differ from 0 gets one bit more, away from it.
void RefineCoefficient(BitReader& reader, std::int16_t& coefficient, std::int32_t step) {
    if (reader.FillAndGet(1) != 0)
        coefficient = Within16Bits(coefficient + (coefficient > 0 ? step : -std::int64_t(step)));
}

} // namespace

void ProgressiveDecoder::RefineAc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables, std::int32_t&,
                                  std::int16_t* block) {
    const std::int32_t bit = std::int32_t{1} << scan.m_bitLow;
    unsigned place = scan.m_start;
    while (scan.m_endOfBandRun == 0 && place <= scan.m_end) {
        reader.Fill();
        const unsigned symbol = tables.ac.Decode(reader);
        unsigned zeros = symbol >> 4;
        std::int32_t newValue = 0;
        if ((symbol & 0xF) == 0) {
            if (zeros < 15) {
                scan.ReadEndOfBandRun(reader, zeros);
                break;
            }
        } else if ((symbol & 0xF) == 1) {
            newValue = reader.FillAndGet(1) != 0 ? bit : -bit;
        } else {
            throw Quorvex::Exception("Wrong ZeroRunLength code");
        }
        // The run counts coefficients that are still 0; the others on the way are refined.
        for (; place <= scan.m_end; ++place) {
            std::int16_t& coefficient = block[naturalOrder[place]];
            if (coefficient != 0)
                RefineCoefficient(reader, coefficient, bit * tables.quantisation[place]);
            else if (zeros-- == 0)
                break;
        }
        if (place > scan.m_end) {
            if (newValue != 0)
                throw Quorvex::Exception();
            break;
        }
        if (newValue != 0)
            block[naturalOrder[place]] = Dequantised(newValue, tables, place);
        ++place;
    }
    if (scan.m_endOfBandRun == 0)
        return;
    --scan.m_endOfBandRun;
    for (; place <= scan.m_end; ++place)
        if (std::int16_t& coefficient = block[naturalOrder[place]]; coefficient != 0)
            RefineCoefficient(reader, coefficient, bit * tables.quantisation[place]);
}

std::int32_t DecodeDifference(BitReader& reader, const HuffmanTable& table) {
    reader.Fill();
    const unsigned size = table.Decode(reader);
    if (size == 16)
        return 32768;
    if (size > largestSize)
        throw Quorvex::Exception();
    return GetExtended(reader, size);
}

} // namespace ET::Img::Jpg
