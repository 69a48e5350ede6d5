#include "codecs/bmp/Masks.h"
#include "tests/codecs/BmpLoad.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<std::string>;

// One row of 16-bit or 32-bit pixels.
BmpRecipe Words(std::uint32_t bits, const std::vector<std::uint32_t>& words) {
    ByteWriter row;
    for (const std::uint32_t word : words)
        bits == 16 ? row.U16(word) : row.U32(word);
    return {.width = static_cast<std::int32_t>(words.size()), .bits = bits, .rows = {row.bytes}};
}

BmpRecipe MaskedWords(std::uint32_t bits, RecipeMasks masks, const std::vector<std::uint32_t>& words) {
    BmpRecipe recipe = Words(bits, words);
    recipe.compression = masks.alpha != 0 ? 6 : 3;
    recipe.masks = masks;
    return recipe;
}

ET::Img::PixelMasks MasksFor(const BmpRecipe& recipe) {
    TestStream stream(recipe.Build());
    Quorvex::CompositeOfProperties root;
    ET::Img::NormalHeader header;
    ReadHeaders(stream, root, header);
    return MasksOf(header);
}

} // namespace

TEST(BmpMasks, SixteenBitsWithoutMasksAreFiveEachAndAlphaZero) {
    EXPECT_EQ(BmpLoad(Words(16, {0x7FFF, 0x7C00, 0x03E0, 0x001F, 0x8000, 0x0421}).Build()).Rows(),
              Strings{"00FFFFFF 00FF0000 0000FF00 000000FF 00000000 00080808"});
}

TEST(BmpMasks, FiveBitsBecomeEightByRoundingToNearest) {
    std::vector<std::uint32_t> words;
    for (std::uint32_t value = 0; value < 32; ++value)
        words.push_back(value);
    const BmpLoad load(Words(16, words).Build());
    // Multiples of 255 / 31, to nearest.
    const std::uint32_t expected[32] = {0,   8,   16,  25,  33,  41,  49,  58,  66,  74,  82,  90,  99,  107, 115, 123,
                                        132, 140, 148, 156, 165, 173, 181, 189, 197, 206, 214, 222, 230, 239, 247, 255};
    for (std::uint32_t x = 0; x < 32; ++x)
        EXPECT_EQ(load.At(x, 0), expected[x]) << x;
}

TEST(BmpMasks, ThirtyTwoBitsWithoutMasksKeepTheTopByteAsAlpha) {
    const BmpLoad load(Words(32, {0x80112233, 0x00FFFFFF, 0xFF000000}).Build());
    EXPECT_EQ(load.Rows(), Strings{"80112233 00FFFFFF FF000000"});
    EXPECT_EQ(load.image->HasAlpha, 0u);
}

TEST(BmpMasks, MasksBehindAHeaderOf40Bytes) {
    EXPECT_EQ(BmpLoad(MaskedWords(16, {0xF800, 0x07E0, 0x001F, 0}, {0xFFFF, 0xF800, 0x07E0, 0x001F}).Build()).Rows(),
              Strings{"00FFFFFF 00FF0000 0000FF00 000000FF"});
    EXPECT_EQ(BmpLoad(MaskedWords(32, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}, {0x11223344}).Build()).Rows(),
              Strings{"11443322"});
}

TEST(BmpMasks, AlphaMaskBehindAHeaderOf52Bytes) {
    BmpRecipe recipe = MaskedWords(32, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}, {0x11223344});
    recipe.headerSize = 0x34;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"11443322"});
    recipe.compression = 3; // Then there is none.
    recipe.masks.alpha = 0;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00443322"});
}

TEST(BmpMasks, MasksInsideTheLongerHeaders) {
    for (const std::uint32_t size : {0x38u, 0x6Cu, 0x7Cu}) {
        for (const std::uint32_t compression : {3u, 6u}) {
            BmpRecipe recipe = MaskedWords(32, {0xFF, 0xFF00, 0xFF0000, 0xFF000000}, {0x11223344});
            recipe.headerSize = size;
            recipe.compression = compression;
            EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"11443322"}) << size;
        }
    }
}

TEST(BmpMasks, MasksGrowTheHeaderOfABareBitmap) {
    BmpRecipe recipe = MaskedWords(32, {0xFF, 0xFF00, 0xFF0000, 0}, {0x00223344});
    recipe.hasFileHeader = false;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00443322"});
    recipe.compression = 6;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00443322"});
}

TEST(BmpMasks, MasksOfOddWidths) {
    // 1, 2, 3 bits; 2, 3, 1 bits as in an 8-bit display; 10 bits each; 7, 18, 7 bits.
    EXPECT_EQ(BmpLoad(MaskedWords(16, {0x1, 0x6, 0x38, 0}, {0x3F, 0x01, 0x02, 0x08}).Build()).Rows(),
              Strings{"00FFFFFF 00FF0000 00005500 00000024"});
    EXPECT_EQ(BmpLoad(MaskedWords(32, {0x3FF00000, 0xFFC00, 0x3FF, 0}, {0x3FFFFFFF, 0x20080200}).Build()).Rows(),
              Strings{"00FFFFFF 00808080"});
    EXPECT_EQ(BmpLoad(MaskedWords(32, {0xFE000000, 0x01FFFF80, 0x7F, 0}, {0xFFFFFFFF, 0x80004001}).Build()).Rows(),
              Strings{"00FFFFFF 00810002"});
}

TEST(BmpMasks, MaskWithHolesCountsItsValueAsItLies) {
    // Bits 0 and 2: the values are 0, 1, 4 and 5 of 5.
    EXPECT_EQ(BmpLoad(MaskedWords(16, {0x5, 0, 0, 0}, {0, 1, 4, 5}).Build()).Rows(),
              Strings{"00000000 00330000 00CC0000 00FF0000"});
}

TEST(BmpMasks, OverlappingMasksReadTheSameBits) {
    EXPECT_EQ(BmpLoad(MaskedWords(16, {0xFF, 0xFF, 0xFF, 0}, {0x12}).Build()).Rows(), Strings{"00121212"});
}

TEST(BmpMasks, MaskOfAllBits) {
    EXPECT_EQ(BmpLoad(MaskedWords(32, {0xFFFFFFFF, 0, 0, 0}, {0xFFFFFFFF, 0x80000000, 0}).Build()).Rows(),
              Strings{"00FF0000 00800000 00000000"});
}

TEST(BmpMasks, MaskOfZeroGivesZero) {
    EXPECT_EQ(BmpLoad(MaskedWords(16, {0, 0, 0, 0}, {0xFFFF}).Build()).Rows(), Strings{"00000000"});
    EXPECT_EQ(BmpLoad(MaskedWords(32, {0, 0, 0, 0}, {0xFFFFFFFF}).Build()).Rows(), Strings{"00000000"});
}

TEST(BmpMasks, AlphaTakesTheScaleOfRed) {
    // One bit of alpha beside five of red: 1 * 255 / 31.
    EXPECT_EQ(BmpLoad(MaskedWords(16, {0x7C00, 0x3E0, 0x1F, 0x8000}, {0xFFFF}).Build()).Rows(), Strings{"08FFFFFF"});
    // Four beside four: as wide as red.
    EXPECT_EQ(BmpLoad(MaskedWords(16, {0xF00, 0xF0, 0xF, 0xF000}, {0x8FFF}).Build()).Rows(), Strings{"88FFFFFF"});
    // Eight beside five: 255 * 255 / 31 is 2098 to nearest, of which the low 8 bits are 0x32.
    EXPECT_EQ(BmpLoad(MaskedWords(32, {0x1F, 0, 0, 0xFF000000}, {0xFF00001F}).Build()).Rows(), Strings{"32FF0000"});
}

TEST(BmpMasks, AlphaBesideNoRedKeepsItsValue) {
    EXPECT_EQ(BmpLoad(MaskedWords(32, {0, 0xFF00, 0xFF, 0xFF000000}, {0x7F00AABB}).Build()).Rows(),
              Strings{"7F00AABB"});
}

TEST(BmpMasks, MasksOfOtherDepthsAreIgnored) {
    BmpRecipe recipe{.headerSize = 0x38, .compression = 3, .masks = {1, 2, 4, 8}, .rows = {{1, 2, 3}}};
    const BmpLoad load(recipe.Build());
    EXPECT_EQ(load.Rows(), Strings{"FF030201"});
    EXPECT_EQ(load.image->HasAlpha, 0u);
}

TEST(BmpMasks, Os2HeadersHaveNone) {
    BmpRecipe recipe = Words(16, {0xFFFF});
    recipe.headerSize = 0x40;
    recipe.compression = 6;
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00000000"});
}

TEST(BmpMasks, ExplicitAlphaMaskWithAnyAlphaIsTransparency) {
    const RecipeMasks masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    EXPECT_EQ(BmpLoad(MaskedWords(32, masks, {0, 0, 0x01000000}).Build()).image->HasAlpha, 1u);
    EXPECT_EQ(BmpLoad(MaskedWords(32, masks, {0xFF000000}).Build()).image->HasAlpha, 1u);
    EXPECT_EQ(BmpLoad(MaskedWords(32, masks, {0x00FFFFFF}).Build()).image->HasAlpha, 0u);
}

TEST(BmpMasks, AlphaMaskThatTheHeaderNamesIsExplicitWithoutCompressionToo) {
    BmpRecipe recipe = Words(32, {0x80112233});
    recipe.headerSize = 0x7C;
    EXPECT_EQ(BmpLoad(recipe.Build()).image->HasAlpha, 0u);
    recipe.masks = {0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    EXPECT_EQ(BmpLoad(recipe.Build()).image->HasAlpha, 1u);
    // One that differs from what holds without compression says nothing about the bits that are used.
    recipe.masks = {0xFF000000, 0xFF0000, 0xFF00, 0xFF};
    const BmpLoad load(recipe.Build());
    EXPECT_EQ(load.Rows(), Strings{"80112233"});
    EXPECT_EQ(load.image->HasAlpha, 0u);
}

TEST(BmpMasks, ShiftAndScaleOfEachChannel) {
    const auto masks = MasksFor(MaskedWords(32, {0x3FF00000, 0xFFC00, 0x3FE, 0xC0000000}, {0}));
    EXPECT_EQ(masks.red.shift, 20u);
    EXPECT_EQ(masks.green.shift, 10u);
    EXPECT_EQ(masks.blue.shift, 1u);
    EXPECT_EQ(masks.alpha.shift, 30u);
    EXPECT_EQ(masks.red.scale, 255.0f / 1023);
    EXPECT_EQ(masks.blue.scale, 255.0f / 511);
    EXPECT_EQ(masks.alpha.scale, masks.red.scale);
    EXPECT_TRUE(masks.hasExplicitAlpha);
}

TEST(BmpMasks, NarrowChannelsRoundAsExactArithmeticDoes) {
    // Up to 16 bits a product never lies so near to a half that 32 bits of float could decide it wrongly.
    for (std::uint32_t bits = 1; bits <= 16; ++bits) {
        const std::uint32_t largest = (1u << bits) - 1;
        ET::Img::ChannelMask channel{largest, 0, static_cast<float>(255.0 / largest)};
        for (std::uint32_t value = 0; value <= largest; ++value)
            ASSERT_EQ(channel.Extract(value), (510 * value + largest) / (2 * largest)) << value << " of " << largest;
    }
}

TEST(BmpMasks, LargeImageGoesThroughATableWithTheSameResult) {
    // 65536 pixels hold every word once.
    BmpRecipe recipe{.width = 256, .height = 256, .bits = 16, .compression = 6, .masks = {0x7C00, 0x3E0, 0x1F, 0x8000}};
    std::vector<Bytes> rows(256);
    for (std::uint32_t word = 0; word < 65536; ++word) {
        rows[word / 256].push_back(static_cast<std::uint8_t>(word));
        rows[word / 256].push_back(static_cast<std::uint8_t>(word >> 8));
    }
    recipe.rows = rows;
    const ET::Img::PixelMasks masks = MasksFor(recipe);
    const BmpLoad load(recipe.Build());
    for (std::uint32_t word = 0; word < 65536; ++word) {
        const ET::Img::Pixel pixel = masks.Extract(word);
        const std::uint32_t expected = static_cast<std::uint32_t>(pixel.alpha) << 24 |
                                       static_cast<std::uint32_t>(pixel.red) << 16 |
                                       static_cast<std::uint32_t>(pixel.green) << 8 | pixel.blue;
        ASSERT_EQ(load.At(word % 256, 255 - word / 256), expected) << word;
    }
}

TEST(BmpMasks, ChannelsOfWholeBytesMoveAsTheFormulaSays) {
    const std::uint32_t bytes[] = {0, 0xFF, 0xFF00, 0xFF0000, 0xFF000000};
    for (const std::uint32_t red : bytes)
        for (const std::uint32_t blue : bytes)
            for (const std::uint32_t alpha : bytes) {
                const BmpRecipe recipe = MaskedWords(32, {red, 0xFF00, blue, alpha}, {0x12345678, 0xFFFEFDFC});
                const ET::Img::PixelMasks masks = MasksFor(recipe);
                const BmpLoad load(recipe.Build());
                EXPECT_EQ(load.At(0, 0) >> 24, masks.alpha.Extract(0x12345678)) << red << " " << blue << " " << alpha;
                EXPECT_EQ(load.At(0, 0) >> 16 & 0xFF, masks.red.Extract(0x12345678));
                EXPECT_EQ(load.At(1, 0) >> 8 & 0xFF, 0xFDu);
                EXPECT_EQ(load.At(1, 0) & 0xFF, masks.blue.Extract(0xFFFEFDFC));
            }
}
