#include "codecs/jpg/BlockDecoding.h"

#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

namespace ET::Img::Jpg {

namespace {

/// A code of one bit for the symbol, in a refinement of the coefficients 1 to 5.
std::string RefinementFailure(std::uint8_t symbol) {
    HuffmanTable table;
    const std::array<std::uint8_t, HuffmanTable::lengthCount> counts{1};
    table.Load(counts.data(), &symbol);
    CoefficientTable coefficients;
    coefficients.Load(counts.data(), &symbol);
    const std::array<std::uint16_t, blockSize> quantisation{1, 1, 1, 1, 1, 1};
    const std::array<std::uint8_t, 4> data{};
    BitReader reader(data.data(), data.data() + data.size());
    ScanHeader header;
    header.spectralStart = 1;
    header.spectralEnd = 5;
    header.bitHigh = 1;
    std::int32_t predictor = 0;
    std::int16_t block[blockSize] = {};
    return Quorvex::Test::RaisedText([&] {
        ProgressiveDecoder(header).Decode(reader, {table, table, coefficients, quantisation.data()}, predictor, block);
    });
}

TEST(JpgBlockDecoding, ARefinementBringsNewCoefficientsOfOneBitOnly) {
    for (const std::uint8_t size : {2, 3, 15})
        EXPECT_EQ(RefinementFailure(size), "Wrong ZeroRunLength code");
    EXPECT_EQ(RefinementFailure(0x00), "(nothing was raised)") << "the end of the band";
    EXPECT_EQ(RefinementFailure(0x01), "(nothing was raised)");
}

} // namespace

} // namespace ET::Img::Jpg
