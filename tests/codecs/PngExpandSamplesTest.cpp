#include "codecs/png/ExpandSamples.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

using namespace ET::Img::Png;

namespace {

constexpr std::uint8_t untouched = 0xEE;

struct Row {
    Row(std::uint32_t channels, std::uint32_t sampleBytes, std::uint32_t count)
        : source(std::size_t{channels} * sampleBytes * count + expandReadsBehind) {
        std::mt19937 random(channels * 7 + sampleBytes + count);
        for (std::uint8_t& byte : source)
            byte = static_cast<std::uint8_t>(random());
    }

    /// The bytes of the pixels, with a guard behind them.
    std::vector<std::uint8_t> Through(ExpandForm form, std::uint32_t sampleBytes, std::uint32_t count) const {
        std::vector<std::uint8_t> pixels(std::size_t{4} * sampleBytes * count + 16, untouched);
        form(source.data(), pixels.data(), count);
        return pixels;
    }

    std::vector<std::uint8_t> source;
};

std::vector<std::uint8_t> Expected(const Row& row, std::uint32_t channels, std::uint32_t sampleBytes,
                                   std::uint32_t count) {
    std::vector<std::uint8_t> pixels;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t sources[] = {channels < 3 ? 0u : 2u, channels < 3 ? 0u : 1u, 0u, channels - 1};
        for (std::uint32_t c = 0; c < 4; ++c) {
            const std::uint8_t* bytes = row.source.data() + (std::size_t{i} * channels + sources[c]) * sampleBytes;
            const bool isOpaque = c == 3 && channels % 2 != 0;
            const std::uint32_t high = isOpaque ? 255 : bytes[0];
            if (sampleBytes == 1) {
                pixels.push_back(static_cast<std::uint8_t>(high));
                continue;
            }
            const auto sample = static_cast<std::uint16_t>(high << 8 | (isOpaque ? 255u : bytes[1]));
            std::uint8_t inMemory[2];
            std::memcpy(inMemory, &sample, 2);
            pixels.insert(pixels.end(), {inMemory[0], inMemory[1]});
        }
    }
    pixels.resize(pixels.size() + 16, untouched);
    return pixels;
}

} // namespace

TEST(PngExpandSamples, EveryFormGivesThePixelsOfEveryLayoutAndLength) {
    for (const std::uint32_t channels : {1u, 2u, 3u, 4u})
        for (const std::uint32_t sampleBytes : {1u, 2u})
            for (std::uint32_t count = 0; count < 40; ++count) {
                const Row row(channels, sampleBytes, count);
                const auto expected = Expected(row, channels, sampleBytes, count);
                EXPECT_EQ(row.Through(ExpandForms::Plain(channels, sampleBytes), sampleBytes, count), expected);
                EXPECT_EQ(row.Through(ChooseExpandForm(channels, sampleBytes), sampleBytes, count), expected);
                const ExpandForm vectors = ExpandForms::Ssse3(channels, sampleBytes);
                if (vectors == nullptr)
                    continue;
                EXPECT_EQ(row.Through(vectors, sampleBytes, count), expected)
                    << channels << " channels, " << sampleBytes << " bytes, " << count;
            }
}
