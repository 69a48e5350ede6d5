#include "tests/codecs/BmpLoad.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<std::string>;

const std::vector<std::uint32_t> fourColors = {0x00000000, 0x00112233, 0x00445566, 0x80778899};

// Four pixels that name the four colours, behind whatever header.
BmpRecipe FourPixels(std::uint32_t headerSize) {
    return {.headerSize = headerSize, .width = 4, .bits = 8, .palette = fourColors, .rows = {{0, 1, 2, 3}}};
}

} // namespace

TEST(BmpPalette, EntriesOfFourBytesKeepTheirAlphaByte) {
    for (const std::uint32_t size : {0x28u, 0x10u, 0x40u, 0x34u, 0x38u, 0x6Cu, 0x7Cu})
        EXPECT_EQ(BmpLoad(FourPixels(size).Build()).Rows(), Strings{"00000000 00112233 00445566 80778899"}) << size;
}

TEST(BmpPalette, EntriesOfThreeBytesHaveAlphaZero) {
    EXPECT_EQ(BmpLoad(FourPixels(0x0C).Build()).Rows(), Strings{"00000000 00112233 00445566 00778899"});
}

TEST(BmpPalette, AlphaOfAPaletteIsNoTransparency) {
    EXPECT_EQ(BmpLoad(FourPixels(0x28).Build()).image->HasAlpha, 0u);
}

TEST(BmpPalette, RoomBeforeThePixelsLimitsTheCount) {
    // Eight bits would mean 256 entries; there is room for four, and the others are black.
    BmpRecipe recipe = FourPixels(0x28);
    recipe.rows = {{0, 1, 4, 255}};
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00000000 00112233 00000000 00000000"});
    recipe.headerSize = 0x0C;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00000000 00112233 00000000 00000000"});
}

TEST(BmpPalette, NumberOfUsedColorsLimitsTheCount) {
    BmpRecipe recipe = FourPixels(0x28);
    recipe.colorsUsed = 2;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00000000 00112233 00000000 00000000"});
}

TEST(BmpPalette, MoreUsedColorsThanTheDepthAllowsAreCutToTheDepth) {
    // With 300 entries in the file of a 4-bit image 16 are read: a bare bitmap then finds its pixels behind those 16.
    BmpRecipe recipe{.width = 2, .bits = 4, .colorsUsed = 300, .hasFileHeader = false};
    recipe.palette = std::vector<std::uint32_t>(16, 0x00ABCDEF);
    recipe.rows = {{0x0F}};
    const BmpLoad load(recipe.Build());
    EXPECT_EQ(load.Rows(), Strings{"00ABCDEF 00ABCDEF"});
    EXPECT_FALSE(load.decoder->IsIncomplete());
    recipe.colorsUsed = 0xFFFFFFFF;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00ABCDEF 00ABCDEF"});
}

TEST(BmpPalette, ZeroUsedColorsMeansAllThatTheDepthAllows) {
    for (const auto& [bits, count] : {std::pair(1u, 2u), std::pair(2u, 4u), std::pair(4u, 16u), std::pair(8u, 256u)}) {
        BmpRecipe recipe{.bits = bits, .hasFileHeader = false};
        recipe.palette = std::vector<std::uint32_t>(count, 0x00ABCDEF);
        recipe.rows = {{0xFF}};
        EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00ABCDEF"}) << bits;
    }
}

TEST(BmpPalette, OffsetBeforeThePaletteDoesNotLimitIt) {
    // The room is counted without a sign, so an offset into the headers leaves it boundless.
    BmpRecipe recipe{.bits = 1, .palette = {0x00010203, 0x00040506}, .rows = {{0x80}}};
    recipe.offBits = 50;
    const BmpLoad load(recipe.Build());
    EXPECT_FALSE(load.decoder->IsIncomplete());
    EXPECT_EQ(load.Rows(), Strings{"00010203"}); // The first pixel lies in the header's number of colours, 0.
}

TEST(BmpPalette, CutAnywhereInThePaletteFailsWithEmptyText) {
    for (const std::uint32_t size : {0x0Cu, 0x28u}) {
        const BmpRecipe recipe = FourPixels(size);
        const Bytes file = recipe.Build();
        for (std::size_t cut = recipe.PixelOffset() - 12; cut < recipe.PixelOffset(); ++cut)
            EXPECT_EQ(LoadFailure(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(cut))), "") << cut;
    }
}

TEST(BmpPalette, AboveEightBitsThereIsNone) {
    // The same colours before 24-bit pixels are passed over, by the offset or by their number.
    BmpRecipe recipe{.colorsUsed = 4, .palette = fourColors, .rows = {{1, 2, 3}}};
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"FF030201"});
    recipe.hasFileHeader = false;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"FF030201"});
}

TEST(BmpPalette, BareBitmapHasItsPixelsDirectlyBehindThePalette) {
    BmpRecipe recipe = FourPixels(0x28);
    recipe.colorsUsed = 4;
    recipe.hasFileHeader = false;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00000000 00112233 00445566 80778899"});
    EXPECT_EQ(BmpLoad(recipe.Build(), TestStream::Manner::Memory).Rows(),
              Strings{"00000000 00112233 00445566 80778899"});
}

TEST(BmpPalette, GapBetweenPaletteAndPixelsIsPassedOver) {
    BmpRecipe recipe = FourPixels(0x28);
    recipe.colorsUsed = 4;
    recipe.palette.insert(recipe.palette.end(), 5, 0x00EEEEEE);
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00000000 00112233 00445566 80778899"});
}
