#include "codecs/jpg/InverseDct.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace ET::Img::Jpg {

namespace {

struct Block {
    std::array<std::int16_t, blockSize> values{};

    bool operator==(const Block&) const = default;
};

using Samples = std::array<double, blockSize>;

/// cosines[position][frequency], with the factor that makes the transform orthogonal.
const std::array<std::array<double, 8>, 8>& Cosines() {
    static const auto cosines = [] {
        std::array<std::array<double, 8>, 8> table{};
        for (int x = 0; x < 8; ++x)
            for (int u = 0; u < 8; ++u)
                table[x][u] = 0.5 * (u == 0 ? std::sqrt(0.5) : 1.0) * std::cos((2 * x + 1) * u * std::acos(-1.0) / 16);
        return table;
    }();
    return cosines;
}

/// The double sum of ITU T.81 A.3.3, not limited.
Samples Defined(const Block& block) {
    Samples samples{};
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            for (int v = 0; v < 8; ++v)
                for (int u = 0; u < 8; ++u)
                    samples[8 * y + x] += Cosines()[y][v] * Cosines()[x][u] * block.values[8 * v + u];
    return samples;
}

/// What an encoder without quantisation makes of samples.
Block Forward(const Samples& samples) {
    Block block;
    for (int v = 0; v < 8; ++v)
        for (int u = 0; u < 8; ++u) {
            double sum = 0.0;
            for (int y = 0; y < 8; ++y)
                for (int x = 0; x < 8; ++x)
                    sum += Cosines()[y][v] * Cosines()[x][u] * samples[8 * y + x];
            block.values[8 * v + u] = static_cast<std::int16_t>(std::lround(sum));
        }
    return block;
}

Block Transformed(InverseDct transform, Block block) {
    transform(block.values.data(), 1);
    return block;
}

double Limited(double sample) {
    return std::clamp(sample, -128.0, 127.0);
}

/// Blocks of pictures: noise of several strengths, and single coefficients of both signs.
std::vector<Block> PictureBlocks() {
    std::vector<Block> blocks;
    std::mt19937 random(922);
    for (const int strength : {2, 10, 60, 128}) {
        for (int i = 0; i < 2000; ++i) {
            Samples samples;
            for (double& sample : samples)
                sample = static_cast<double>(random() % (2 * strength)) - strength;
            blocks.push_back(Forward(samples));
        }
    }
    for (std::size_t place = 0; place < blockSize; ++place) {
        for (const int value : {1, -1, 7, -8, 100, -100, 1016, -1024}) {
            Block block;
            block.values[place] = static_cast<std::int16_t>(value);
            blocks.push_back(block);
        }
    }
    return blocks;
}

/// What no picture gives: every coefficient anywhere within 16 bits.
std::vector<Block> ExtremeBlocks() {
    std::vector<Block> blocks;
    std::mt19937 random(7);
    for (int i = 0; i < 2000; ++i) {
        Block block;
        for (std::int16_t& value : block.values)
            value = i % 2 == 0 ? static_cast<std::int16_t>(random()) : (random() & 1) != 0 ? 32767 : -32768;
        blocks.push_back(block);
    }
    return blocks;
}

TEST(JpgInverseDct, ReferenceTruncatesTheDefinition) {
    for (const std::vector<Block>& blocks : {PictureBlocks(), ExtremeBlocks()}) {
        for (const Block& block : blocks) {
            const Samples wanted = Defined(block);
            const Block had = Transformed(InverseDctForms::Reference, block);
            for (std::size_t i = 0; i < blockSize; ++i) {
                // Where the sum is a whole number but for its own rounding, either side of it is as good.
                const double low = std::trunc(Limited(wanted[i] - 1e-6)), high = std::trunc(Limited(wanted[i] + 1e-6));
                ASSERT_TRUE(had.values[i] == low || had.values[i] == high)
                    << "place " << i << ": had " << had.values[i] << ", wanted " << wanted[i];
            }
        }
    }
}

TEST(JpgInverseDct, Sse2DiffersFromTheDefinitionByLessThanOneAndAHalf) {
    const InverseDct sse2 = InverseDctForms::Sse2();
    if (sse2 == nullptr)
        GTEST_SKIP() << "this processor lacks SSE2";
    double sum = 0.0, squares = 0.0, largest = 0.0;
    std::size_t count = 0;
    for (const Block& block : PictureBlocks()) {
        const Samples wanted = Defined(block);
        const Block had = Transformed(sse2, block);
        for (std::size_t i = 0; i < blockSize; ++i) {
            const double error = had.values[i] - Limited(wanted[i]);
            largest = std::max(largest, std::abs(error));
            sum += error;
            squares += error * error;
            ++count;
        }
    }
    // Rounding to whole numbers alone may be off by a half and has a mean square of 1/12; the stages add the rest.
    EXPECT_LT(largest, 1.5);
    EXPECT_LT(std::abs(sum / static_cast<double>(count)), 0.05);
    EXPECT_LT(squares / static_cast<double>(count), 1.0 / 12 + 0.05);
}

TEST(JpgInverseDct, Sse2KeepsExtremesWithinTheLimits) {
    const InverseDct sse2 = InverseDctForms::Sse2();
    if (sse2 == nullptr)
        GTEST_SKIP() << "this processor lacks SSE2";
    for (const Block& block : ExtremeBlocks()) {
        const Block had = Transformed(sse2, block);
        for (const std::int16_t sample : had.values) {
            ASSERT_GE(sample, -128);
            ASSERT_LE(sample, 127);
        }
    }
}

TEST(JpgInverseDct, BothFormsGiveAFlatBlockForTheFirstCoefficient) {
    for (const InverseDct transform : {InverseDct(InverseDctForms::Reference), InverseDctForms::Sse2()}) {
        if (transform == nullptr)
            continue;
        for (int sample = -128; sample <= 127; ++sample) {
            Block block;
            block.values[0] = static_cast<std::int16_t>(8 * sample);
            // The reference meets whole numbers from either side, and truncates.
            const int tolerance = transform == InverseDctForms::Sse2() ? 0 : 1;
            const Block had = Transformed(transform, block);
            for (const std::int16_t value : had.values)
                ASSERT_LE(std::abs(value - sample), tolerance) << "of " << sample;
        }
    }
}

/// Blocks whose coefficients end early, as most of a picture's do.
std::vector<Block> ShortBlocks() {
    std::vector<Block> blocks;
    std::mt19937 random(31);
    for (int i = 0; i < 4000; ++i) {
        Block block;
        const std::size_t rows = random() % 9, columns = i % 3 == 0 ? 1 : random() % 9;
        for (std::size_t y = 0; y < rows; ++y)
            for (std::size_t x = 0; x < columns; ++x)
                block.values[8 * y + x] =
                    static_cast<std::int16_t>(i % 5 == 0 ? random() : static_cast<unsigned>(random() % 400) - 200);
        blocks.push_back(block);
    }
    for (int value = -32768; value < 32768; value += 7) {
        Block block;
        block.values[0] = static_cast<std::int16_t>(value);
        blocks.push_back(block);
    }
    return blocks;
}

/// The rows of a block that ends early are left out of the sums; a coefficient that makes no difference brings them
/// back. Where only the last row has one, the first stage gives zeros for it when it is too small to be seen.
TEST(JpgInverseDct, BlocksThatEndEarlyAreTransformedLikeAnyOther) {
    const InverseDct sse2 = InverseDctForms::Sse2();
    if (sse2 == nullptr)
        GTEST_SKIP() << "this processor lacks SSE2";
    for (const Block& block : ShortBlocks()) {
        const Samples wanted = Defined(block);
        if (std::any_of(wanted.begin(), wanted.end(), [](double sample) { return std::abs(sample) > 900.0; }))
            continue;
        const Block had = Transformed(sse2, block);
        for (std::size_t i = 0; i < blockSize; ++i)
            ASSERT_NEAR(had.values[i], Limited(wanted[i]), 1.5);
    }
}

TEST(JpgInverseDct, Avx2GivesTheSamplesOfSse2) {
    const InverseDct sse2 = InverseDctForms::Sse2(), avx2 = InverseDctForms::Avx2();
    if (avx2 == nullptr)
        GTEST_SKIP() << "this processor lacks AVX2";
    for (const std::vector<Block>& blocks : {PictureBlocks(), ExtremeBlocks(), ShortBlocks()}) {
        // Pairs share a vector, and what is left over is alone in one.
        for (std::size_t first = 0; first < blocks.size(); ++first) {
            const std::size_t count = std::min<std::size_t>(1 + first % 5, blocks.size() - first);
            std::vector<Block> had(blocks.begin() + static_cast<std::ptrdiff_t>(first),
                                   blocks.begin() + static_cast<std::ptrdiff_t>(first + count));
            std::vector<Block> wanted = had;
            avx2(had.front().values.data(), count);
            for (Block& block : wanted)
                sse2(block.values.data(), 1);
            ASSERT_EQ(had, wanted) << "from block " << first << " on";
        }
    }
}

TEST(JpgInverseDct, TheProgramTakesTheFastestForm) {
    const InverseDct sse2 = InverseDctForms::Sse2(), avx2 = InverseDctForms::Avx2();
    EXPECT_EQ(GetInverseDct(), avx2 != nullptr   ? avx2
                               : sse2 != nullptr ? sse2
                                                 : InverseDct(InverseDctForms::Reference));
}

} // namespace

} // namespace ET::Img::Jpg
