#include "codecs/jpg/HuffmanTable.h"

#include "foundation/Exception.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace ET::Img::Jpg {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Counts = std::array<std::uint8_t, HuffmanTable::lengthCount>;

/// The codes as texts of digits, one after the other as ITU T.81 figure C.2 makes them.
std::vector<std::string> CodesOf(const Counts& counts) {
    std::vector<std::string> codes;
    std::uint32_t code = 0;
    for (std::size_t length = 1; length <= counts.size(); ++length, code <<= 1)
        for (unsigned i = 0; i < counts[length - 1]; ++i, ++code) {
            std::string digits;
            for (std::size_t bit = length; bit-- != 0;)
                digits += (code >> bit & 1) != 0 ? '1' : '0';
            codes.push_back(digits);
        }
    return codes;
}

/// Digits as bytes of a segment, filled up with ones.
Bytes Packed(std::string digits) {
    digits.resize((digits.size() + 7) / 8 * 8, '1');
    Bytes bytes;
    for (std::size_t i = 0; i < digits.size(); i += 8) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 8), nullptr, 2)));
        if (bytes.back() == 0xFF)
            bytes.push_back(0);
    }
    return bytes;
}

std::uint8_t DecodeNext(const HuffmanTable& table, BitReader& reader) {
    reader.Fill();
    return table.Decode(reader);
}

/// Every symbol by itself, then a long random sequence of all of them.
void ExpectDecodes(const Counts& counts, const Bytes& symbols) {
    HuffmanTable table;
    table.Load(counts.data(), symbols.data());
    const std::vector<std::string> codes = CodesOf(counts);
    ASSERT_EQ(codes.size(), symbols.size());
    std::mt19937 random(1);
    std::string digits;
    Bytes wanted;
    for (std::size_t i = 0; i < codes.size() + 500; ++i) {
        const std::size_t index = i < codes.size() ? i : random() % codes.size();
        digits += codes[index];
        wanted.push_back(symbols[index]);
    }
    const Bytes bytes = Packed(digits);
    BitReader reader(bytes.data(), bytes.data() + bytes.size());
    for (std::size_t i = 0; i < wanted.size(); ++i)
        ASSERT_EQ(DecodeNext(table, reader), wanted[i]) << "code " << i;
    EXPECT_FALSE(reader.IsOverrun());
}

Bytes Numbered(std::size_t count) {
    Bytes symbols;
    for (std::size_t i = 0; i < count; ++i)
        symbols.push_back(static_cast<std::uint8_t>(i * 37 + 5));
    return symbols;
}

TEST(JpgHuffmanTable, DecodesTheTypicalTableOfLuminanceDifferences) {
    // ITU T.81 table K.3.
    ExpectDecodes({0, 1, 5, 1, 1, 1, 1, 1, 1}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
}

TEST(JpgHuffmanTable, DecodesCodesOfAllLengths) {
    const Counts counts{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
    ExpectDecodes(counts, Numbered(16));
}

TEST(JpgHuffmanTable, DecodesCodesOfSixteenBitsOnly) {
    Counts counts{};
    counts[15] = 255;
    ExpectDecodes(counts, Numbered(255));
}

TEST(JpgHuffmanTable, DecodesAFullCodeOfEightBits) {
    Counts counts{};
    counts[7] = 255;
    ExpectDecodes(counts, Numbered(255));
}

TEST(JpgHuffmanTable, DecodesCodesAroundTheLengthOfTheFastTable) {
    ExpectDecodes({0, 1, 2, 3, 1, 0, 2, 3, 5, 7, 0, 9, 20, 0, 0, 40}, Numbered(93));
}

TEST(JpgHuffmanTable, BitsThatAreNoCodeRaise) {
    HuffmanTable table;
    const Counts counts{1};
    const Bytes symbols{9};
    table.Load(counts.data(), symbols.data());
    const Bytes bytes{0x7F, 0xFF, 0x00};
    BitReader reader(bytes.data(), bytes.data() + bytes.size());
    EXPECT_EQ(DecodeNext(table, reader), 9);
    EXPECT_THROW(DecodeNext(table, reader), Quorvex::Exception);
}

TEST(JpgHuffmanTable, ATableThatWasNeverLoadedHasNoCode) {
    const HuffmanTable table;
    const Bytes bytes{0, 0, 0, 0};
    BitReader reader(bytes.data(), bytes.data() + bytes.size());
    EXPECT_THROW(DecodeNext(table, reader), Quorvex::Exception);
}

TEST(JpgHuffmanTable, ANewLoadForgetsTheOldCodes) {
    HuffmanTable table;
    const Counts wide{2}, narrow{1};
    const Bytes symbols{1, 2};
    table.Load(wide.data(), symbols.data());
    table.Load(narrow.data(), symbols.data());
    const Bytes bytes{0x80, 0x00};
    BitReader reader(bytes.data(), bytes.data() + bytes.size());
    EXPECT_THROW(DecodeNext(table, reader), Quorvex::Exception);
}

TEST(JpgHuffmanTable, MoreCodesThanTheirLengthHasRoomForAreCutOff) {
    // 3 codes of one bit, and 200 of two: only the first two exist.
    HuffmanTable table;
    const Counts counts{3, 200};
    const Bytes symbols = Numbered(203);
    table.Load(counts.data(), symbols.data());
    const Bytes bytes{0x55};
    BitReader reader(bytes.data(), bytes.data() + bytes.size());
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(DecodeNext(table, reader), symbols[0]);
        EXPECT_EQ(DecodeNext(table, reader), symbols[1]);
    }
}

TEST(JpgHuffmanTable, ExtendGivesTheValuesOfEachSize) {
    // ITU T.81 table F.1.
    EXPECT_EQ(Extend(0, 0), 0);
    EXPECT_EQ(Extend(0, 1), -1);
    EXPECT_EQ(Extend(1, 1), 1);
    EXPECT_EQ(Extend(0, 2), -3);
    EXPECT_EQ(Extend(1, 2), -2);
    EXPECT_EQ(Extend(2, 2), 2);
    EXPECT_EQ(Extend(3, 2), 3);
    EXPECT_EQ(Extend(0, 11), -2047);
    EXPECT_EQ(Extend(1023, 11), -1024);
    EXPECT_EQ(Extend(1024, 11), 1024);
    EXPECT_EQ(Extend(0, 15), -32767);
    EXPECT_EQ(Extend(32767, 15), 32767);
}

} // namespace

} // namespace ET::Img::Jpg
