#include "data/Image.h"
#include "tests/codecs/ProcessorTime.h"
#include "tests/codecs/TifLoad.h"
#include "tests/data/AllocationProbe.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using Bytes = TifRecipe::Bytes;

namespace {

/// What it costs to fill an image, whatever comes of it.
struct Cost {
    explicit Cost(const Bytes& file) {
        ET::Img::TIFDecoder decoder(MakeShared<TestStream>(file, TestStream::Manner::Memory));
        decoder.SetWorkerCount(1);
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        const auto image = Data::CreateImage(info.ColorType, info.Width, info.Height);
        const double before = ProcessorSeconds();
        const AllocationProbe probe;
        try {
            decoder.Load(image, 0);
        } catch (const Exception&) {
            isRefused = true;
        }
        seconds = ProcessorSeconds() - before;
        bytes = probe.GetTotal();
        isIncomplete = decoder.IsIncomplete();
    }
    double seconds = 0;
    std::size_t bytes = 0;
    bool isIncomplete = false;
    bool isRefused = false;
};

TEST(TifEffort, ManyTilesOfTheSameBytesTakeNoTimeBeyondTheirImage) {
    // Each of 60,000 strips claims the same megabyte of bytes that stand for nothing.
    constexpr std::uint32_t strips = 60000;
    TifRecipe recipe;
    recipe.width = 8;
    recipe.height = strips;
    recipe.compression = 32773;
    recipe.rowsPerStrip = 1;
    recipe.tiles = {Bytes(1 << 20, 0x80)};
    recipe.tags[273] = {4, std::vector<std::uint32_t>(strips, 8)};
    recipe.tags[279] = {4, std::vector<std::uint32_t>(strips, 1 << 20)};
    const Cost cost(recipe.Build());
    EXPECT_TRUE(cost.isIncomplete);
    EXPECT_LT(cost.seconds, 2.0);
    EXPECT_LT(cost.bytes, std::size_t{1} << 20) << "three numbers for each strip";
}

TEST(TifEffort, TilesThatHangFarOverTheImageAreRefused) {
    for (const std::uint32_t compression : {1u, 5u, 32773u, 7u}) {
        TifRecipe recipe;
        recipe.width = 10;
        recipe.height = 60000;
        recipe.compression = compression;
        recipe.tileWidth = 1 << 24;
        recipe.tileHeight = 1;
        recipe.tiles = {Bytes(1000, 0x81)};
        const Bytes file = recipe.Build();
        const Cost cost(file);
        EXPECT_TRUE(cost.isRefused);
        EXPECT_LT(cost.seconds, 0.5);
        EXPECT_LT(cost.bytes, std::size_t{1} << 12) << compression;
        EXPECT_EQ(TifFailure(file), "");
    }
}

TEST(TifEffort, HugeImagesInTinyFilesTakeNeitherTimeNorMemory) {
    constexpr std::uint32_t size = 12000;
    for (const std::uint32_t compression : {1u, 2u, 3u, 5u, 7u, 32773u})
        for (const bool isTiled : {false, true}) {
            TifRecipe recipe;
            recipe.width = recipe.height = size;
            recipe.bits = compression == 2 || compression == 3 ? 1 : 8;
            recipe.compression = compression;
            recipe.tiles = {Bytes(64, 0x81)};
            recipe.values = {0};
            if (isTiled)
                recipe.tileWidth = recipe.tileHeight = 8192;
            else
                recipe.rowsPerStrip = size;
            const Cost cost(recipe.Build());
            EXPECT_TRUE(cost.isIncomplete) << compression;
            EXPECT_LT(cost.seconds, 0.5) << compression;
            EXPECT_LT(cost.bytes, std::size_t{1} << 16) << compression;
        }
}

TEST(TifEffort, SamplesWithoutNumberTakeNoMemory) {
    for (const std::uint32_t bits : {1u, 64u}) {
        TifRecipe recipe;
        recipe.width = 1792;
        recipe.height = 5;
        recipe.bits = bits;
        recipe.samples = 46698;
        recipe.compression = 5;
        recipe.tiles = {Bytes(64, 0x81)};
        recipe.tags[258] = {3, {bits}};
        EXPECT_EQ(TifFailure(recipe.Build()), "") << bits;
    }
    // Few enough to be read, if only they were there.
    TifRecipe recipe;
    recipe.width = 1000;
    recipe.samples = 10000;
    recipe.tiles = {Bytes(64, 0x81)};
    recipe.tags[258] = {3, {8}};
    EXPECT_LT(Cost(recipe.Build()).bytes, std::size_t{1} << 20);
}

} // namespace
