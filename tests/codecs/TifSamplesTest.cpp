#include "tests/codecs/TifLoad.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

using namespace Quorvex::Data;

namespace {

/// value x (2^channelBits - 1) / (2^bits - 1), rounded to nearest, by long division in the system of two.
std::uint64_t Scaled(std::uint64_t value, std::uint32_t bits, std::uint32_t channelBits) {
    if (bits == channelBits)
        return value;
    const std::uint64_t divisor = (std::uint64_t{1} << bits) - 1;
    std::uint64_t quotient = 0, rest = 0;
    const auto carry = [&] {
        if (rest >= divisor) {
            rest -= divisor;
            ++quotient;
        }
    };
    // The factor is as many ones: each adds the value to twice what was there.
    for (std::uint32_t i = 0; i < channelBits; ++i) {
        quotient *= 2;
        rest *= 2;
        carry();
        rest += value;
        carry();
    }
    return quotient + (2 * rest > divisor ? 1 : 0);
}

std::uint32_t ChannelBits(std::uint32_t bits) {
    return bits <= 8 ? 8 : bits <= 16 ? 16 : bits <= 32 ? 32 : 64;
}

std::uint64_t SignExtendedAndShifted(std::uint64_t value, std::uint32_t bits, std::uint32_t channelBits) {
    return value << (channelBits - bits);
}

/// The sample's bits as a channel of the image has them.
std::uint64_t ChannelOf(const TifRecipe& recipe, std::uint64_t value) {
    const std::uint32_t channelBits = ChannelBits(recipe.bits);
    return recipe.format == 2 ? SignExtendedAndShifted(value, recipe.bits, channelBits)
                              : Scaled(value, recipe.bits, channelBits);
}

std::uint64_t Full(const TifRecipe& recipe) {
    const std::uint32_t channelBits = ChannelBits(recipe.bits);
    return ~std::uint64_t{0} >> (64 - channelBits + (recipe.format == 2 ? 1 : 0));
}

/// All channels of the image in the order of memory, each as its bits.
std::vector<std::uint64_t> Expected(const TifRecipe& recipe) {
    std::vector<std::uint64_t> channels;
    for (std::uint32_t y = 0; y < recipe.height; ++y)
        for (std::uint32_t x = 0; x < recipe.width; ++x) {
            const auto at = [&](std::uint32_t sample) { return ChannelOf(recipe, recipe.At(x, y, sample)); };
            if (recipe.samples == 1)
                channels.push_back(at(0));
            else if (recipe.samples == 2)
                channels.insert(channels.end(), {at(0), at(0), at(0), at(1)});
            else
                channels.insert(channels.end(), {at(2), at(1), at(0), recipe.samples == 4 ? at(3) : Full(recipe)});
        }
    return channels;
}

std::vector<std::uint64_t> Channels(const TifLoad& load, std::uint32_t channelBits) {
    const TifLoad::Bytes memory = load.Memory();
    std::vector<std::uint64_t> channels(memory.size() / (channelBits / 8));
    for (std::size_t i = 0; i < memory.size(); ++i)
        channels[i / (channelBits / 8)] |= std::uint64_t{memory[i]} << 8 * (i % (channelBits / 8));
    return channels;
}

void Check(const TifRecipe& recipe) {
    const TifLoad load(recipe.Build());
    const std::string name = std::to_string(recipe.samples) + " x " + std::to_string(recipe.bits) + " bits, format " +
                             std::to_string(recipe.format) + (recipe.isPlanar ? ", planar" : "") +
                             (recipe.order == TifRecipe::ByteOrder::Big ? ", big-endian" : "") + ", tiles of " +
                             std::to_string(recipe.tileWidth) + ", predictor " + std::to_string(recipe.predictor);
    EXPECT_FALSE(load.decoder.IsIncomplete()) << name;
    EXPECT_EQ(load.info.BitsPerPixel, recipe.bits * recipe.samples) << name;
    const std::vector<std::uint64_t> had = Channels(load, ChannelBits(recipe.bits)), wanted = Expected(recipe);
    ASSERT_EQ(had.size(), wanted.size()) << name;
    const auto [first, other] = std::mismatch(had.begin(), had.end(), wanted.begin());
    ASSERT_TRUE(first == had.end()) << name << ": " << *first << " for " << *other << " at " << first - had.begin();
}

TifRecipe Recipe(std::uint32_t bits, std::uint32_t samples, std::uint32_t format) {
    TifRecipe recipe;
    recipe.width = 9;
    recipe.height = 5;
    recipe.bits = bits;
    recipe.samples = samples;
    recipe.format = format;
    recipe.photometric = samples >= 3 ? 2 : 1;
    recipe.Fill(bits);
    return recipe;
}

/// Calls the action in both byte orders, with samples together and apart, and in strips and tiles.
template <class Action>
void InAllArrangements(TifRecipe recipe, const Action& action) {
    for (const TifRecipe::ByteOrder order : {TifRecipe::ByteOrder::Little, TifRecipe::ByteOrder::Big})
        for (const bool isPlanar : {false, true})
            for (const std::uint32_t tile : {0u, 4u, 16u}) {
                recipe.order = order;
                recipe.isPlanar = isPlanar;
                recipe.tileWidth = recipe.tileHeight = tile;
                recipe.rowsPerStrip = 2;
                action(recipe);
            }
}

TEST(TifSamples, UnsignedOfEveryDepthTakeTheWholeRange) {
    for (std::uint32_t bits = 1; bits <= 64; ++bits)
        for (std::uint32_t samples = 1; samples <= 4; ++samples)
            InAllArrangements(Recipe(bits, samples, 1), Check);
}

TEST(TifSamples, SignedOfEveryDepthKeepTheirZero) {
    for (std::uint32_t bits = 1; bits <= 64; ++bits)
        for (std::uint32_t samples = 1; samples <= 4; ++samples)
            InAllArrangements(Recipe(bits, samples, 2), Check);
}

TEST(TifSamples, DifferencesOfEveryDepthAreSummed) {
    for (std::uint32_t bits = 1; bits <= 64; ++bits)
        for (const std::uint32_t samples : {1u, 3u}) {
            TifRecipe recipe = Recipe(bits, samples, 1);
            recipe.predictor = 2;
            InAllArrangements(recipe, Check);
            recipe.compression = 32773;
            InAllArrangements(recipe, Check);
        }
}

TEST(TifSamples, PackedBitsOfEveryDepth) {
    for (std::uint32_t bits = 1; bits <= 64; ++bits) {
        TifRecipe recipe = Recipe(bits, 3, 1);
        recipe.compression = 32773;
        InAllArrangements(recipe, Check);
    }
}

TEST(TifSamples, ReversedBitsOfEveryDepth) {
    for (std::uint32_t bits = 1; bits <= 64; ++bits)
        for (const std::uint32_t compression : {1u, 32773u}) {
            TifRecipe recipe = Recipe(bits, 3, 1);
            recipe.compression = compression;
            recipe.isFillReversed = true;
            InAllArrangements(recipe, Check);
        }
}

TEST(TifSamples, AwkwardSizes) {
    for (const std::uint32_t width : {1u, 7u, 8u, 63u, 64u, 65u})
        for (const std::uint32_t height : {1u, 15u, 16u, 17u})
            for (const std::uint32_t bits : {1u, 8u, 12u, 16u}) {
                TifRecipe recipe = Recipe(bits, 3, 1);
                recipe.width = width;
                recipe.height = height;
                InAllArrangements(recipe.Fill(width + height), Check);
            }
}

/// The number that the bits of a float of 16 or 24 bits stand for, digit by digit.
double FloatOf(std::uint64_t bits, std::uint32_t exponentBits, std::uint32_t significandBits) {
    const int bias = (1 << (exponentBits - 1)) - 1;
    const auto exponent = static_cast<int>(bits >> significandBits & ((1u << exponentBits) - 1));
    const double fraction =
        std::ldexp(static_cast<double>(bits & ((1u << significandBits) - 1)), -static_cast<int>(significandBits));
    const double sign = bits >> (exponentBits + significandBits) & 1 ? -1 : 1;
    if (exponent == 0)
        return sign * std::ldexp(fraction, 1 - bias);
    if (exponent == (1 << exponentBits) - 1)
        return fraction == 0 ? sign * std::numeric_limits<double>::infinity() : std::nan("");
    return sign * std::ldexp(1 + fraction, exponent - bias);
}

void CheckFloats(const TifRecipe& recipe) {
    const TifLoad load(recipe.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    const std::vector<float> had = load.Samples<float>();
    ASSERT_EQ(had.size(), recipe.samples == 1 ? recipe.values.size() : recipe.values.size() / 3 * 4);
    for (std::size_t i = 0; i < recipe.values.size(); ++i) {
        const double wanted = recipe.bits == 16 ? FloatOf(recipe.values[i], 5, 10)
                              : recipe.bits == 24
                                  ? FloatOf(recipe.values[i], 7, 16)
                                  : double(std::bit_cast<float>(static_cast<std::uint32_t>(recipe.values[i])));
        const float sample = had[recipe.samples == 1 ? i : i / 3 * 4 + 2 - i % 3];
        if (std::isnan(wanted))
            ASSERT_TRUE(std::isnan(sample));
        else
            ASSERT_EQ(double(sample), wanted) << recipe.bits << " bits, " << std::hex << recipe.values[i];
    }
}

TEST(TifSamples, FloatsOf16And24BitsBecome32) {
    for (const std::uint32_t bits : {16u, 24u, 32u})
        for (const std::uint32_t samples : {1u, 3u})
            for (const std::uint32_t predictor : {1u, 2u, 3u}) {
                TifRecipe recipe = Recipe(bits, samples, 3);
                recipe.predictor = predictor;
                InAllArrangements(recipe, CheckFloats);
            }
}

TEST(TifSamples, EveryHalfIsRead) {
    TifRecipe recipe;
    recipe.width = recipe.height = 256;
    recipe.bits = 16;
    recipe.format = 3;
    for (std::uint64_t i = 0; i < 65536; ++i)
        recipe.values.push_back(i);
    CheckFloats(recipe);
}

TEST(TifSamples, FloatsOf24BitsAtTheEndsOfTheirRange) {
    TifRecipe recipe;
    recipe.bits = 24;
    recipe.format = 3;
    recipe.values = {0x000000, 0x800000, 0x000001, 0x00FFFF, 0x010000, 0x7EFFFF, 0x7F0000, 0xFF0000, 0x7F0001};
    recipe.width = static_cast<std::uint32_t>(recipe.values.size());
    CheckFloats(recipe);
}

TEST(TifSamples, FloatsOf64BitsWithBothPredictors) {
    for (const std::uint32_t predictor : {1u, 2u, 3u}) {
        TifRecipe recipe = Recipe(64, 3, 3);
        recipe.predictor = predictor;
        recipe.photometric = 2;
        for (std::size_t i = 0; i < recipe.values.size(); ++i)
            recipe.values[i] = std::bit_cast<std::uint64_t>(std::sin(double(i)) * 1e6);
        InAllArrangements(recipe, [](const TifRecipe& arranged) {
            const TifLoad load(arranged.Build());
            const std::vector<double> had = load.Samples<double>();
            ASSERT_EQ(had.size(), arranged.values.size() / 3 * 4);
            for (std::size_t i = 0; i < arranged.values.size(); ++i)
                ASSERT_EQ(std::bit_cast<std::uint64_t>(had[i / 3 * 4 + 2 - i % 3]), arranged.values[i]);
            ASSERT_EQ(had[3], 1.0) << "the alpha of floats is 1";
        });
    }
}

} // namespace
