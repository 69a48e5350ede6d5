#include "tests/codecs/CcittWriter.h"
#include "tests/codecs/JpgSegments.h"
#include "tests/codecs/LibtiffFile.h"
#include "tests/codecs/LzwWriter.h"
#include "tests/codecs/TifLoad.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using Bytes = TifRecipe::Bytes;

namespace {

std::uint8_t Reversed(std::uint8_t byte) {
    std::uint8_t reversed = 0;
    for (unsigned bit = 0; bit < 8; ++bit)
        reversed = static_cast<std::uint8_t>(reversed | (byte >> bit & 1) << (7 - bit));
    return reversed;
}

/// Colours of 8 bits with stretches that repeat.
TifRecipe Colors() {
    TifRecipe recipe;
    recipe.width = 61;
    recipe.height = 23;
    recipe.samples = 3;
    recipe.photometric = 2;
    recipe.Fill();
    for (std::size_t i = 0; i < recipe.values.size(); ++i)
        if (i / 40 % 2 != 0)
            recipe.values[i] = recipe.values[i % 40];
    return recipe;
}

/// Blue, green, red and alpha of the values themselves.
Bytes ColorsOf(const TifRecipe& recipe) {
    Bytes colors;
    for (std::size_t i = 0; i < recipe.values.size(); i += 3) {
        for (std::size_t s = 3; s-- != 0;)
            colors.push_back(static_cast<std::uint8_t>(recipe.values[i + s]));
        colors.push_back(255);
    }
    return colors;
}

constexpr CodeWriter::Format usualCodes{.isLowBitFirst = false, .earlyChange = 1};
/// Of programs older than TIFF 6.0.
constexpr CodeWriter::Format oldCodes{.isLowBitFirst = true, .earlyChange = 0};

/// The same with all of its strips or tiles as codes.
TifRecipe InLzw(TifRecipe recipe, CodeWriter::Format format) {
    const bool isFillReversed = recipe.isFillReversed;
    // The codes lie in that order of bits, not what they stand for.
    recipe.isFillReversed = false;
    std::vector<Bytes> tiles = recipe.TileData();
    for (Bytes& tile : tiles) {
        tile = WriteLzw(tile, 8, {.format = format});
        if (isFillReversed)
            std::transform(tile.begin(), tile.end(), tile.begin(), Reversed);
    }
    recipe.tiles = tiles;
    recipe.compression = 5;
    recipe.isFillReversed = isFillReversed;
    return recipe;
}

} // namespace

TEST(TifSchemes, LzwOfBothFormsInEveryArrangement) {
    for (const CodeWriter::Format& format : {usualCodes, oldCodes})
        for (const bool isPlanar : {false, true})
            for (const std::uint32_t tileSize : {0u, 16u})
                for (const std::uint32_t predictor : {1u, 2u})
                    for (const bool isFillReversed : {false, true}) {
                        TifRecipe recipe = Colors();
                        recipe.isPlanar = isPlanar;
                        recipe.tileWidth = recipe.tileHeight = tileSize;
                        recipe.rowsPerStrip = 5;
                        recipe.predictor = predictor;
                        recipe.isFillReversed = isFillReversed;
                        const TifLoad load(InLzw(recipe, format).Build());
                        EXPECT_FALSE(load.decoder.IsIncomplete());
                        ASSERT_TRUE(load.Memory() == ColorsOf(recipe))
                            << (format.isLowBitFirst ? "old codes" : "usual codes") << (isPlanar ? ", planar" : "")
                            << ", tiles of " << tileSize << ", predictor " << predictor
                            << (isFillReversed ? ", reversed" : "");
                    }
}

TEST(TifSchemes, OldLzwThatFillsItsTable) {
    TifRecipe recipe = Colors();
    recipe.width = 300;
    recipe.height = 100;
    recipe.Fill();
    const Bytes file = InLzw(recipe, oldCodes).Build();
    EXPECT_EQ(TifLoad(file).Memory(), ColorsOf(recipe));
#ifdef VARNOLITE_HAS_TIFF
    LibtiffFile::Format format;
    const Bytes read = LibtiffFile::Read(file, 0, format);
    EXPECT_EQ(read, Bytes(recipe.values.begin(), recipe.values.end())) << "the library's own reading";
#endif
}

namespace {

BilevelRows Page() {
    std::mt19937 random(1);
    BilevelRows rows(19, std::vector<std::uint8_t>(173));
    for (std::vector<std::uint8_t>& row : rows) {
        row = &row == rows.data() ? row : *(&row - 1);
        for (std::size_t x = random() % 60; x < row.size(); x += 1 + random() % 60)
            row[x] ^= 1;
    }
    return rows;
}

TifRecipe Fax(const BilevelRows& rows, std::uint32_t compression, std::uint32_t rowsPerStrip, CcittStyle style) {
    TifRecipe recipe;
    recipe.width = static_cast<std::uint32_t>(rows[0].size());
    recipe.height = static_cast<std::uint32_t>(rows.size());
    recipe.bits = 1;
    recipe.photometric = 0;
    recipe.compression = compression;
    recipe.rowsPerStrip = rowsPerStrip;
    recipe.isFillReversed = style.isReversed;
    for (std::size_t y = 0; y < rows.size(); y += rowsPerStrip)
        recipe.tiles.push_back(WriteCcitt(BilevelRows(rows.begin() + static_cast<std::ptrdiff_t>(y),
                                                      rows.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(
                                                                         rows.size(), y + rowsPerStrip))),
                                          style));
    if (compression == 3)
        recipe.tags[292] = {4, {(style.isTwoDimensional ? 1u : 0u) | (style.isByteAligned ? 4u : 0u)}};
    return recipe;
}

/// White paper, black ink.
Bytes GreysOf(const BilevelRows& rows) {
    Bytes greys;
    for (const std::vector<std::uint8_t>& row : rows)
        for (const std::uint8_t ink : row)
            greys.push_back(ink != 0 ? 0 : 255);
    return greys;
}

} // namespace

TEST(TifSchemes, FaxCodesOfEveryKindInStrips) {
    const BilevelRows rows = Page();
    for (const bool isReversed : {false, true})
        for (const std::uint32_t rowsPerStrip : {4u, 19u}) {
            const TifLoad huffman(
                Fax(rows, 2, rowsPerStrip, {.isByteAligned = true, .isReversed = isReversed}).Build());
            EXPECT_FALSE(huffman.decoder.IsIncomplete());
            ASSERT_EQ(huffman.Memory(), GreysOf(rows));
            for (const bool hasEndsOfLine : {false, true})
                for (const bool isByteAligned : {false, true})
                    for (const std::uint32_t relativeRows : {0u, 1u, 3u}) {
                        const TifLoad load(Fax(rows, 3, rowsPerStrip,
                                               {.hasEndsOfLine = hasEndsOfLine,
                                                .isByteAligned = isByteAligned,
                                                .relativeRows = relativeRows,
                                                .isTwoDimensional = relativeRows != 0,
                                                .isReversed = isReversed})
                                               .Build());
                        EXPECT_FALSE(load.decoder.IsIncomplete());
                        ASSERT_EQ(load.Memory(), GreysOf(rows))
                            << hasEndsOfLine << isByteAligned << relativeRows << isReversed << rowsPerStrip;
                    }
        }
}

TEST(TifSchemes, AFaxKnowsOfNoDifferences) {
    const BilevelRows rows = Page();
    for (const std::uint32_t compression : {2u, 3u})
        for (const std::uint32_t predictor : {2u, 3u, 77u}) {
            TifRecipe recipe = Fax(rows, compression, 19, {.isByteAligned = true});
            recipe.predictor = predictor;
            EXPECT_EQ(TifLoad(recipe.Build()).Memory(), GreysOf(rows)) << compression << ", " << predictor;
        }
}

TEST(TifSchemes, JpegKnowsOfNoDifferences) {
    using namespace JpgSegments;
    TifRecipe recipe;
    recipe.width = 16;
    recipe.height = 8;
    recipe.compression = 7;
    recipe.tiles = {GreyFileUpToItsData(16, 8) + FlatBlocks({64, -128}) + end};
    Bytes wanted;
    for (unsigned i = 0; i < 16 * 8; ++i)
        wanted.push_back(i % 16 < 8 ? 128 + 64 / 8 : 128 - 64 / 8);
    for (const std::uint32_t predictor : {1u, 2u, 3u, 77u}) {
        recipe.predictor = predictor;
        const Bytes file = recipe.Build();
        EXPECT_EQ(TifLoad(file).Memory(), wanted) << predictor;
#ifdef VARNOLITE_HAS_TIFF
        LibtiffFile::Format format;
        EXPECT_EQ(LibtiffFile::Read(file, 0, format), wanted) << "the library's own reading, " << predictor;
#endif
    }
}
