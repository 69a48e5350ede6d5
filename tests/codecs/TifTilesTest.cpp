#include "tests/codecs/TifLoad.h"

#include <gtest/gtest.h>

#include <algorithm>

using Bytes = TifRecipe::Bytes;

namespace {

TifRecipe Picture(std::uint32_t samples = 3, std::uint32_t bits = 8) {
    TifRecipe recipe;
    recipe.width = 37;
    recipe.height = 29;
    recipe.samples = samples;
    recipe.bits = bits;
    recipe.photometric = samples >= 3 ? 2 : 1;
    return recipe.Fill();
}

Bytes Whole(const TifRecipe& recipe) {
    const TifLoad load(recipe.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    return load.Memory();
}

TEST(TifTiles, BothByteOrdersGiveTheSameImage) {
    for (const std::uint32_t bits : {16u, 24u, 32u, 64u}) {
        TifRecipe recipe = Picture(3, bits);
        const Bytes little = Whole(recipe);
        recipe.order = TifRecipe::ByteOrder::Big;
        EXPECT_EQ(Whole(recipe), little) << bits << " bits";
    }
}

TEST(TifTiles, StripsAndTilesGiveTheSameImage) {
    TifRecipe recipe = Picture();
    const Bytes oneStrip = Whole(recipe);
    for (const std::uint32_t rows : {1u, 7u, 28u, 29u, 30u}) {
        recipe.rowsPerStrip = rows;
        EXPECT_EQ(Whole(recipe), oneStrip) << rows << " rows in a strip";
    }
    for (const std::uint32_t width : {1u, 16u, 37u, 48u})
        for (const std::uint32_t height : {1u, 16u, 29u, 64u})
            for (const bool isPlanar : {false, true}) {
                recipe.tileWidth = width;
                recipe.tileHeight = height;
                recipe.isPlanar = isPlanar;
                EXPECT_EQ(Whole(recipe), oneStrip) << "tiles of " << width << " x " << height;
            }
}

TEST(TifTiles, TilesLargerThanTheImage) {
    TifRecipe recipe = Picture();
    const Bytes oneStrip = Whole(recipe);
    recipe.tileWidth = recipe.tileHeight = 512;
    for (const std::uint32_t compression : {1u, 32773u}) {
        recipe.compression = compression;
        EXPECT_EQ(Whole(recipe), oneStrip);
    }
}

TEST(TifTiles, AnyNumberOfThreadsGivesTheSameImage) {
    TifRecipe recipe = Picture(3, 16);
    recipe.width = 700;
    recipe.height = 500;
    recipe.Fill();
    recipe.compression = 32773;
    recipe.rowsPerStrip = 3;
    Bytes file = recipe.Build();
    // Damage in some strips must not depend on who meets it.
    for (std::size_t i = 1000; i < file.size() / 2; i += 50000)
        file[i] ^= 0x40;
    const TifLoad one(file, 0, 1);
    for (const std::uint32_t workers : {0u, 2u, 8u}) {
        const TifLoad shared(file, 0, workers);
        EXPECT_EQ(shared.Memory(), one.Memory()) << workers;
        EXPECT_EQ(shared.decoder.IsIncomplete(), one.decoder.IsIncomplete());
    }
}

TEST(TifTiles, FilesAndMemoryGiveTheSameImage) {
    const Bytes file = Picture().Build();
    EXPECT_EQ(TifLoad(file, 0, 1, TestStream::Manner::File).Memory(),
              TifLoad(file, 0, 1, TestStream::Manner::Memory).Memory());
}

TEST(TifTiles, RowsPerStripOfNothingAndOfEverythingMeanOneStrip) {
    TifRecipe recipe = Picture();
    const Bytes wanted = Whole(recipe);
    for (const std::uint32_t rows : {0u, 0xFFFFFFFFu, 30u, 1000000u}) {
        recipe.tags[278] = {4, {rows}};
        EXPECT_EQ(Whole(recipe), wanted) << rows;
    }
    recipe.tags.clear();
    recipe.without = {278};
    EXPECT_EQ(Whole(recipe), wanted) << "no such tag";
}

TEST(TifTiles, MissingByteCountsAreDerived) {
    for (const std::uint32_t compression : {1u, 32773u}) {
        TifRecipe recipe = Picture();
        recipe.compression = compression;
        recipe.rowsPerStrip = 10;
        const Bytes wanted = Whole(recipe);
        recipe.without = {279};
        EXPECT_EQ(Whole(recipe), wanted) << "compression " << compression;
        recipe.without.clear();
        recipe.tags[279] = {4, {0, 0, 0}};
        EXPECT_EQ(Whole(recipe), wanted) << "compression " << compression;
    }
}

TEST(TifTiles, ByteCountsThatReachBeyondTheFileAreDerived) {
    for (const std::uint32_t compression : {1u, 32773u}) {
        TifRecipe recipe = Picture();
        recipe.compression = compression;
        recipe.rowsPerStrip = 10;
        const Bytes wanted = Whole(recipe);
        recipe.tags[279] = {4, {0xFFFFFFFF, 0x7FFFFFFF, 100000}};
        EXPECT_EQ(Whole(recipe), wanted) << "compression " << compression;
    }
}

TEST(TifTiles, ByteCountsThatAreTooSmallDoNotMatterWhereTheSizeIsKnown) {
    TifRecipe recipe = Picture();
    recipe.rowsPerStrip = 10;
    const Bytes wanted = Whole(recipe);
    recipe.tags[279] = {4, {1, 1, 1}};
    EXPECT_EQ(Whole(recipe), wanted);
}

/// Whether the pixels of a rectangle are 0, and those outside of it as wanted.
void ExpectHole(const TifLoad& load, const Bytes& wanted, std::uint32_t left, std::uint32_t top, std::uint32_t right,
                std::uint32_t bottom) {
    EXPECT_TRUE(load.decoder.IsIncomplete());
    const Bytes had = load.Memory();
    const std::uint32_t width = load.image->GetWidth();
    const std::size_t pixelBytes = had.size() / width / load.image->GetHeight();
    for (std::size_t i = 0; i < had.size(); ++i) {
        const std::size_t x = i / pixelBytes % width, y = i / pixelBytes / width;
        const bool isInside = x >= left && x < right && y >= top && y < bottom;
        ASSERT_EQ(had[i], isInside ? 0 : wanted[i]) << x << ", " << y;
    }
}

TifRecipe SixTiles(std::uint32_t compression) {
    TifRecipe recipe = Picture();
    recipe.compression = compression;
    recipe.tileWidth = recipe.tileHeight = 16;
    return recipe;
}

TEST(TifTiles, ATileOutsideTheFileStaysAtZeroAndTheOthersAreThere) {
    for (const std::uint32_t compression : {1u, 32773u}) {
        TifRecipe recipe = SixTiles(compression);
        const Bytes wanted = Whole(recipe);
        std::vector<std::uint32_t> offsets{8};
        for (const Bytes& tile : recipe.TileData())
            offsets.push_back(offsets.back() + static_cast<std::uint32_t>(tile.size()));
        offsets.pop_back();
        const auto fileSize = static_cast<std::uint32_t>(recipe.Build().size());
        for (const std::uint32_t place : {0xFFFFFF00u, fileSize, fileSize - 1}) {
            offsets[4] = place;
            recipe.tags[324] = {4, offsets};
            ExpectHole(TifLoad(recipe.Build()), wanted, 16, 16, 32, 29);
        }
    }
}

TEST(TifTiles, ATileWhoseDataEndTooEarlyStaysAtZeroAndTheOthersAreThere) {
    TifRecipe recipe = SixTiles(32773);
    const Bytes wanted = Whole(recipe);
    // The rows that hang over the image are of no use, and their data neither.
    const std::size_t whole = recipe.TileData()[4].size();
    for (const std::size_t size : {std::size_t{1}, whole / 2, whole * 3 / 4}) {
        recipe.tiles.clear();
        recipe.tiles = recipe.TileData();
        recipe.tiles[4].resize(size);
        ExpectHole(TifLoad(recipe.Build()), wanted, 16, 16, 32, 29);
    }
}

TEST(TifTiles, MissingTilesAreZero) {
    TifRecipe recipe = Picture();
    recipe.rowsPerStrip = 10;
    const Bytes wanted = Whole(recipe);
    recipe.tags[273] = {4, {8}};
    recipe.tags[279] = {4, {37 * 10 * 3}};
    ExpectHole(TifLoad(recipe.Build()), wanted, 0, 10, 37, 29);
}

TEST(TifTiles, ADamagedPlaneLeavesTheOthers) {
    TifRecipe recipe = Picture();
    recipe.isPlanar = true;
    Bytes wanted = Whole(recipe);
    const std::uint32_t planeBytes = 37 * 29;
    recipe.tags[273] = {4, {8, 0xFFFFFFF0, 8 + 2 * planeBytes}};
    const TifLoad load(recipe.Build());
    EXPECT_TRUE(load.decoder.IsIncomplete());
    for (std::size_t i = 1; i < wanted.size(); i += 4)
        wanted[i] = 0;
    EXPECT_EQ(load.Memory(), wanted) << "green alone is missing";
}

TEST(TifTiles, AFloatImageWithoutDataIsZeroToo) {
    TifRecipe recipe = Picture(1, 32);
    recipe.format = 3;
    recipe.tags[273] = {4, {0xFFFFFFF0}};
    const TifLoad load(recipe.Build());
    EXPECT_TRUE(load.decoder.IsIncomplete());
    const Bytes had = load.Memory();
    EXPECT_EQ(std::count(had.begin(), had.end(), 0), std::ssize(had));
}

TEST(TifTiles, ThePixelAspectFollowsBothResolutions) {
    TifRecipe recipe = Picture();
    recipe.tags[282] = {5, {300, 1}};
    EXPECT_EQ(TifLoad(recipe.Build()).image->PixelScaleX, 1.0) << "one of them says nothing";
    recipe.tags[283] = {5, {300, 2}};
    const TifLoad load(recipe.Build());
    EXPECT_EQ(load.image->PixelScaleX, 1.0);
    EXPECT_EQ(load.image->PixelScaleY, 2.0);
}

TEST(TifTiles, AResolutionOfNothingChangesNothing) {
    for (const std::vector<std::uint32_t>& wrong :
         {std::vector<std::uint32_t>{0, 1}, std::vector<std::uint32_t>{1, 0}, std::vector<std::uint32_t>{0, 0}}) {
        TifRecipe recipe = Picture();
        recipe.tags[282] = {5, {300, 1}};
        recipe.tags[283] = {5, wrong};
        const TifLoad load(recipe.Build());
        EXPECT_EQ(load.image->PixelScaleX, 1.0);
        EXPECT_EQ(load.image->PixelScaleY, 1.0);
    }
}

TEST(TifTiles, TheOrientationIsTold) {
    for (std::uint32_t orientation = 0; orientation <= 9; ++orientation) {
        TifRecipe recipe = Picture();
        recipe.tags[274] = {3, {orientation}};
        const TifLoad load(recipe.Build());
        EXPECT_EQ(load.decoder.GetOrientation(), orientation >= 1 && orientation <= 8 ? orientation : 1);
        EXPECT_EQ(load.info.Width, 37u) << "the image itself lies as it is stored";
    }
}

} // namespace
