#include "tests/codecs/TifLoad.h"
#include "tests/codecs/TifReference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

using namespace Quorvex::Data;

namespace {

/// All channels of the image in the order of memory, each as its bits.
std::vector<std::uint64_t> Expected(const TifRecipe& recipe) {
    std::vector<std::uint64_t> channels;
    for (std::uint32_t y = 0; y < recipe.height; ++y)
        for (std::uint32_t x = 0; x < recipe.width; ++x) {
            const auto at = [&](std::uint32_t sample) {
                return TifReference::ChannelOf(recipe.At(x, y, sample), recipe.bits, recipe.format);
            };
            if (recipe.samples == 1)
                channels.push_back(at(0));
            else if (recipe.samples == 2)
                channels.insert(channels.end(), {at(0), at(0), at(0), at(1)});
            else
                channels.insert(channels.end(),
                                {at(2), at(1), at(0),
                                 recipe.samples == 4 ? at(3) : TifReference::FullOf(recipe.bits, recipe.format)});
        }
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
    const std::vector<std::uint64_t> had = TifReference::ChannelsOf(load), wanted = Expected(recipe);
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

void CheckFloats(const TifRecipe& recipe) {
    const TifLoad load(recipe.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    const std::vector<float> had = load.Samples<float>();
    ASSERT_EQ(had.size(), recipe.samples == 1 ? recipe.values.size() : recipe.values.size() / 3 * 4);
    for (std::size_t i = 0; i < recipe.values.size(); ++i) {
        const double wanted = TifReference::FloatOf(recipe.values[i], recipe.bits);
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
