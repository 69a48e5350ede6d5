#include "tests/codecs/BmpLoad.h"

#include <gtest/gtest.h>

#include <chrono>

using namespace Quorvex;

namespace {

double SecondsOf(const Bytes& file) {
    const auto start = std::chrono::steady_clock::now();
    try {
        BmpLoad load(file);
        EXPECT_TRUE(load.decoder->IsIncomplete());
    } catch (const std::exception&) {
        // What cannot be allocated at all is refused.
    }
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

TEST(BmpSize, BeyondFourGigabytesIsRefusedWithEmptyText) {
    EXPECT_EQ(LoadFailure(BmpRecipe{.width = 60000, .height = 60000, .data = Bytes(46)}.Build()), "");
    EXPECT_EQ(LoadFailure(BmpRecipe{.width = INT32_MAX, .height = INT32_MAX, .data = Bytes(46)}.Build()), "");
    EXPECT_EQ(LoadFailure(BmpRecipe{.width = INT32_MIN, .height = INT32_MIN, .data = Bytes(46)}.Build()), "");
    EXPECT_EQ(LoadFailure(BmpRecipe{.headerSize = 0x40, .width = -1, .height = -1, .data = Bytes(46)}.Build()), "");
}

TEST(BmpSize, LargeSizeInASmallFileIsQuick) {
    // 256 MB of pixels that are not in the file. Nothing is decoded; what is cleared was never touched.
    for (const std::uint32_t compression : {0u, 1u}) {
        BmpRecipe recipe{.width = 8192, .height = 8192, .bits = 8, .compression = compression, .hasFileHeader = false};
        recipe.palette = std::vector<std::uint32_t>(256);
        recipe.data = {1, 2, 3};
        EXPECT_LT(SecondsOf(recipe.Build()), 5) << compression;
    }
}

TEST(BmpSize, RowsWithoutPixelsTakeNoTime) {
    // Two thousand million rows of no bytes, one after the other: no pass over the image may count them.
    const auto start = std::chrono::steady_clock::now();
    for (const std::int32_t height : {INT32_MIN, -0x7FFFFFF0, 0x7FFFFFF0}) {
        for (const std::uint32_t compression : {0u, 1u, 3u}) {
            BmpRecipe recipe{.headerSize = 0x38, .width = 0, .height = height, .bits = 32, .compression = compression};
            recipe.masks = {0xFF, 0xFF00, 0xFF0000, 0xFF000000};
            recipe.data = {0, 1, 0, 0};
            const BmpLoad load(recipe.Build());
            EXPECT_EQ(load.image->GetWidth(), 0u);
            EXPECT_FALSE(load.decoder->IsIncomplete()) << compression;
        }
    }
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 5);
}

TEST(BmpSize, ImageWithoutRowsIsComplete) {
    const BmpLoad load(BmpRecipe{.width = 5, .height = 0, .data = Bytes(8)}.Build());
    EXPECT_EQ(load.image->GetHeight(), 0u);
    EXPECT_FALSE(load.decoder->IsIncomplete());
}

TEST(BmpSize, RowLongerThanTheFileAllocatesNothing) {
    // One row of 80 MB, of which a byte is there: a decoder that believed the header would read into a block of that
    // size.
    BmpRecipe recipe{.width = 20000000, .height = 1, .bits = 32, .data = Bytes(1)};
    EXPECT_LT(SecondsOf(recipe.Build()), 5);
}

TEST(BmpSize, RunLengthSizeBeyondTheFileAllocatesNothing) {
    BmpRecipe recipe{.width = 2, .height = 2, .bits = 8, .compression = 1, .sizeImage = 0xFFFFFFFF};
    recipe.palette = std::vector<std::uint32_t>(256);
    recipe.data = {2, 1, 0, 1};
    const BmpLoad load(recipe.Build());
    EXPECT_TRUE(load.decoder->IsIncomplete());
}
