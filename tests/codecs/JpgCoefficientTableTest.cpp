#include "codecs/jpg/CoefficientTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace ET::Img::Jpg {

namespace {

constexpr unsigned peeked = 10;

using Counts = std::array<std::uint8_t, HuffmanTable::lengthCount>;

/// A code with any lengths that leave room for what comes behind them.
Counts RandomCounts(std::mt19937& random, unsigned& total) {
    Counts counts{};
    std::uint32_t room = 1;
    total = 0;
    for (std::uint8_t& count : counts) {
        room *= 2;
        count = static_cast<std::uint8_t>(std::min({std::uint32_t(random()) % (room / 2 + 1), 60u, 200u - total}));
        room -= count;
        total += count;
    }
    return counts;
}

/// By going through the codes of ITU T.81 figure C.2 until one is how the ten bits begin.
CoefficientCode Sought(const Counts& counts, const std::vector<std::uint8_t>& symbols, std::uint32_t bits) {
    std::uint32_t code = 0;
    std::size_t index = 0;
    for (unsigned length = 1; length <= peeked; ++length, code <<= 1)
        for (unsigned i = 0; i < counts[length - 1]; ++i, ++code, ++index) {
            if (bits >> (peeked - length) != code)
                continue;
            const unsigned run = symbols[index] >> 4, size = symbols[index] & 0xF, whole = length + size;
            if (whole > peeked || symbols[index] == 0xF0)
                return {};
            if (size == 0)
                return {0, CoefficientTable::endOfBlock, static_cast<std::uint8_t>(whole)};
            const int extra = static_cast<int>(bits >> (peeked - whole) & ((1u << size) - 1));
            // ITU T.81 table F.2: the lower half of the numbers stands for negative coefficients.
            const int value = extra >= 1 << (size - 1) ? extra : extra - (1 << size) + 1;
            return {static_cast<std::int16_t>(value), static_cast<std::uint8_t>(run + 1),
                    static_cast<std::uint8_t>(whole)};
        }
    return {};
}

TEST(JpgCoefficientTable, HoldsWhatTheBitsBeginWith) {
    std::mt19937 random(10);
    for (int round = 0; round < 50; ++round) {
        unsigned total = 0;
        const Counts counts = RandomCounts(random, total);
        std::vector<std::uint8_t> symbols(total);
        for (std::uint8_t& symbol : symbols)
            symbol = static_cast<std::uint8_t>(random() % 4 == 0 ? random() & 0xF0 : random());
        CoefficientTable table;
        table.Load(counts.data(), symbols.data());
        for (std::uint32_t bits = 0; bits < 1u << peeked; ++bits) {
            const std::array<std::uint8_t, 16> data{static_cast<std::uint8_t>(bits >> 2),
                                                    static_cast<std::uint8_t>(bits << 6)};
            // FF is followed by a zero in a segment.
            const std::array<std::uint8_t, 16> stuffed{data[0], 0, data[1]};
            const std::array<std::uint8_t, 16>& bytes = data[0] == 0xFF ? stuffed : data;
            BitReader reader(bytes.data(), bytes.data() + bytes.size());
            reader.Fill();
            const CoefficientCode had = table.Peek(reader), wanted = Sought(counts, symbols, bits);
            ASSERT_EQ(had.length, wanted.length) << bits;
            ASSERT_EQ(had.value, wanted.value) << bits;
            ASSERT_EQ(had.step, wanted.step) << bits;
        }
    }
}

TEST(JpgCoefficientTable, ANewLoadForgetsTheOldCodes) {
    CoefficientTable table;
    Counts counts{1};
    std::uint8_t symbol = 0x01;
    table.Load(counts.data(), &symbol);
    counts = {0, 1};
    table.Load(counts.data(), &symbol);
    const std::array<std::uint8_t, 16> data{0x7F};
    BitReader reader(data.data(), data.data() + data.size());
    reader.Fill();
    EXPECT_EQ(table.Peek(reader).length, 0);
}

} // namespace

} // namespace ET::Img::Jpg
