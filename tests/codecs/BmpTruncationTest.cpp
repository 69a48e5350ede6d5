#include "tests/codecs/BmpLoad.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

std::vector<std::uint32_t> Grays(std::uint32_t count) {
    std::vector<std::uint32_t> colors;
    for (std::uint32_t i = 0; i < count; ++i)
        colors.push_back((i + 1) * 0x010101);
    return colors;
}

constexpr std::int32_t width = 5, height = 4;

BmpRecipe Uncompressed(std::uint32_t headerSize, std::uint32_t bits, bool isTopDown = false) {
    BmpRecipe recipe{.headerSize = headerSize, .width = width, .height = isTopDown ? -height : height, .bits = bits};
    if (bits <= 8)
        recipe.palette = Grays(bits == 8 ? height : 1u << bits);
    for (std::uint8_t y = 0; y < height; ++y)
        recipe.rows.push_back(Bytes((width * bits + 7) / 8, static_cast<std::uint8_t>(bits == 8 ? y : 0x11 * (y + 1))));
    return recipe;
}

std::vector<BmpRecipe> AllUncompressed() {
    std::vector<BmpRecipe> recipes;
    for (const std::uint32_t headerSize : {0x0Cu, 0x10u, 0x14u, 0x18u, 0x20u, 0x24u, 0x28u, 0x2Au, 0x2Cu, 0x2Eu, 0x30u,
                                           0x34u, 0x38u, 0x3Cu, 0x40u, 0x6Cu, 0x7Cu})
        for (const std::uint32_t bits : {1u, 2u, 4u, 8u, 16u, 24u, 32u})
            recipes.push_back(Uncompressed(headerSize, bits));
    for (const std::uint32_t bits : {1u, 8u, 24u, 32u})
        recipes.push_back(Uncompressed(0x28, bits, true));
    for (const std::uint32_t compression : {3u, 6u}) {
        BmpRecipe masked = Uncompressed(0x28, 16);
        masked.compression = compression;
        masked.masks = {0xF000, 0xF00, 0xF0, 0xF};
        recipes.push_back(masked);
    }
    return recipes;
}

Bytes Cut(const Bytes& file, std::size_t length) {
    return Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
}

// Cut behind its headers a file shows its whole rows, and what follows them is 0.
void CheckCut(const BmpRecipe& recipe, const Bytes& file, const BmpLoad& whole, std::size_t length) {
    const std::size_t rowBytes = (file.size() - recipe.PixelOffset()) / height;
    const auto wholeRows = static_cast<std::uint32_t>((length - recipe.PixelOffset()) / rowBytes);
    for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory}) {
        const BmpLoad load(Cut(file, length), manner);
        EXPECT_EQ(load.decoder->IsIncomplete(), length < file.size());
        for (std::uint32_t i = 0; i < height; ++i) {
            const std::uint32_t y = recipe.height < 0 ? i : height - 1 - i;
            for (std::uint32_t x = 0; x < width; ++x)
                ASSERT_EQ(load.At(x, y), i < wholeRows ? whole.At(x, y) : 0u)
                    << "header " << recipe.headerSize << ", " << recipe.bits << " bits, cut at " << length;
        }
    }
}

} // namespace

TEST(BmpTruncation, AtEveryByteKeepsWholeRowsAndClearsTheRest) {
    for (const BmpRecipe& recipe : AllUncompressed()) {
        const Bytes file = recipe.Build();
        const BmpLoad whole(file);
        ASSERT_FALSE(whole.decoder->IsIncomplete());
        for (std::size_t length = recipe.PixelOffset(); length <= file.size(); ++length)
            CheckCut(recipe, file, whole, length);
    }
}

TEST(BmpTruncation, AtEveryByteOfTheHeadersFails) {
    for (const BmpRecipe& recipe : AllUncompressed()) {
        const Bytes file = recipe.Build();
        for (std::size_t length = 0; length < recipe.PixelOffset(); ++length)
            ASSERT_EQ(LoadFailure(Cut(file, length)), "")
                << recipe.headerSize << ", " << recipe.bits << " bits, cut at " << length;
    }
}

TEST(BmpTruncation, CutInTheMiddleShowsTheLowerPart) {
    const BmpRecipe recipe = Uncompressed(0x28, 24);
    const Bytes file = recipe.Build();
    const BmpLoad load(Cut(file, recipe.PixelOffset() + 2 * 16));
    EXPECT_TRUE(load.decoder->IsIncomplete());
    EXPECT_EQ(load.At(0, 3), 0xFF111111u);
    EXPECT_EQ(load.At(0, 2), 0xFF222222u);
    EXPECT_EQ(load.At(0, 1), 0u);
    EXPECT_EQ(load.At(0, 0), 0u);
}

TEST(BmpTruncation, RunLengthDataThatAreNotAllThereShowNothing) {
    for (const std::uint32_t compression : {1u, 2u}) {
        BmpRecipe recipe{.width = 4, .height = 2, .bits = 8, .compression = compression, .palette = Grays(256)};
        recipe.data = {4, 0x11, 0, 0, 0, 2, 1, 0, 0, 3, 0x22, 0x33, 0x44, 0, 0, 1};
        const Bytes file = recipe.Build();
        EXPECT_FALSE(BmpLoad(file).decoder->IsIncomplete());
        for (std::size_t length = recipe.PixelOffset(); length < file.size(); ++length) {
            for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory}) {
                const BmpLoad load(Cut(file, length), manner);
                EXPECT_TRUE(load.decoder->IsIncomplete());
                EXPECT_EQ(load.At(0, 1), 0u);
            }
        }
    }
}

TEST(BmpTruncation, TransparencyCountsWhatWasDecoded) {
    BmpRecipe recipe{.headerSize = 0x38, .height = 2, .bits = 32, .compression = 3};
    recipe.masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    recipe.rows = {{0, 0, 0, 0}, {0, 0, 0, 0xFF}};
    const Bytes file = recipe.Build();
    EXPECT_EQ(BmpLoad(file).image->HasAlpha, 1u);
    EXPECT_EQ(BmpLoad(Cut(file, file.size() - 1)).image->HasAlpha, 0u);
}
