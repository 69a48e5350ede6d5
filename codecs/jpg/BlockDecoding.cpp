#include "codecs/jpg/BlockDecoding.h"

#include "foundation/Exception.h"

#include <cstring>

namespace ET::Img::Jpg {

void ProgressiveDecoder::FirstDc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables,
                                 std::int32_t& predictor, std::int16_t* block) {
    ReadDc(reader, tables, predictor);
    block[0] = Within16Bits((std::int64_t(predictor) << scan.m_bitLow) * tables.quantisation[0]);
}

void ProgressiveDecoder::RefineDc(ProgressiveDecoder& scan, BitReader& reader, const BlockTables& tables, std::int32_t&,
                                  std::int16_t* block) {
    // The bits below are zero, also those of a negative number, so that adding sets one.
    const std::int32_t bit = static_cast<std::int32_t>(reader.GetBit()) << scan.m_bitLow;
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
        const CoefficientCode code = tables.coefficients.Peek(reader);
        if (code.value != 0) {
            reader.Skip(code.length);
            place += code.step - 1u;
            if (place > scan.m_end)
                throw Quorvex::Exception();
            block[naturalOrder[place]] = Dequantised(code.value * (std::int32_t{1} << scan.m_bitLow), tables, place);
            continue;
        }
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
    if (reader.GetBit() != 0)
        coefficient = Within16Bits(coefficient + (coefficient > 0 ? step : -std::int64_t(step)));
}

/// Whether any coefficient but the first differs from 0.
bool HasAc(const std::int16_t* block) {
    std::uint64_t four = 0, any = 0;
    for (std::size_t place = 4; place < blockSize; place += 4) {
        std::memcpy(&four, block + place, sizeof(four));
        any |= four;
    }
    return any != 0 || (block[1] | block[2] | block[3]) != 0;
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
            newValue = reader.GetBit() != 0 ? bit : -bit;
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
    if (!HasAc(block))
        return;
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
