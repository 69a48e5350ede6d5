#include "codecs/DecodeWithFactory.h"
#include "codecs/bmp/Palette.h"
#include "tests/codecs/BmpLoad.h"
#include "tests/codecs/ProcessorTime.h"
#include "tests/data/AllocationProbe.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

/// What a load took.
struct Cost {
    std::size_t allocatedBytes = 0;
    std::uint64_t readBytes = 0;
    std::size_t imageBytes = 0;
    bool isIncomplete = false;
};

Cost CostOf(const Bytes& file, std::size_t failFromBytes = ~std::size_t{0}) {
    const auto stream = MakeShared<TestStream>(file);
    ET::Img::LoadTarget target;
    target.context = MakeShared<TestContext>();
    SharedPtr<Data::ImageBase> image;
    std::int32_t index = 1;
    const AllocationProbe probe(failFromBytes);
    const auto decoder = ET::Img::DecodeWithFactory(ET::Img::BMPDecoderFactory(), stream, target, index, image);
    return {probe.GetTotal(), stream->bytesRead,
            std::size_t{image->AllocatedWidth} * image->AllocatedHeight * sizeof(ET::Img::Pixel),
            decoder->IsIncomplete()};
}

// Headers, palette, tables of colours and blocks of rows: what no input can raise.
constexpr std::size_t fixedBytes = 2 << 20;

/// 64 MB of pixels, of which at most a few bytes are in the file.
BmpRecipe GiganticClaim(std::uint32_t bits, std::uint32_t compression) {
    BmpRecipe recipe{.width = 4096, .height = 4096, .bits = bits, .compression = compression};
    recipe.masks = {0x7C00, 0x3E0, 0x1F, 0x8000};
    if (bits <= 8)
        recipe.palette = std::vector<std::uint32_t>(std::size_t{1} << bits);
    recipe.data = {1, 2, 3};
    return recipe;
}

void ExpectNoMoreThanTheClaimedImage(const BmpRecipe& recipe) {
    const Bytes file = recipe.Build();
    const Cost cost = CostOf(file);
    const std::string claim = std::to_string(recipe.width) + " x " + std::to_string(recipe.height) + ", " +
                              std::to_string(recipe.bits) + " bits, compression " + std::to_string(recipe.compression);
    EXPECT_TRUE(cost.isIncomplete) << claim;
    EXPECT_LE(cost.allocatedBytes, cost.imageBytes + file.size() + fixedBytes) << claim;
    // Two passes over the headers, the second of which goes on to the pixels; both look at two bytes in advance.
    EXPECT_LE(cost.readBytes, 2 * (file.size() + 2)) << claim;
}

} // namespace

TEST(BmpSize, BeyondFourGigabytesIsRefusedWithEmptyText) {
    EXPECT_EQ(LoadFailure(BmpRecipe{.width = 60000, .height = 60000, .data = Bytes(46)}.Build()), "");
    EXPECT_EQ(LoadFailure(BmpRecipe{.width = INT32_MAX, .height = INT32_MAX, .data = Bytes(46)}.Build()), "");
    EXPECT_EQ(LoadFailure(BmpRecipe{.width = INT32_MIN, .height = INT32_MIN, .data = Bytes(46)}.Build()), "");
    EXPECT_EQ(LoadFailure(BmpRecipe{.headerSize = 0x40, .width = -1, .height = -1, .data = Bytes(46)}.Build()), "");
}

TEST(BmpSize, MemoryThatTheClaimedImageDoesNotGetPassesThrough) {
    EXPECT_THROW(CostOf(GiganticClaim(24, 0).Build(), 32 << 20), std::bad_alloc);
}

TEST(BmpSize, GiganticClaimOfATinyFileTakesNoMoreThanTheClaimedImage) {
    for (const std::uint32_t bits : {1u, 2u, 4u, 8u, 16u, 24u, 32u})
        ExpectNoMoreThanTheClaimedImage(GiganticClaim(bits, 0));
    for (const std::uint32_t compression : {3u, 6u})
        for (const std::uint32_t bits : {16u, 32u})
            ExpectNoMoreThanTheClaimedImage(GiganticClaim(bits, compression));
    ExpectNoMoreThanTheClaimedImage(GiganticClaim(8, 1));
    ExpectNoMoreThanTheClaimedImage(GiganticClaim(4, 2));
}

TEST(BmpSize, NumberOfColorsBeyondTheFileTakesNoMemory) {
    BmpRecipe recipe = GiganticClaim(8, 0);
    recipe.colorsUsed = 0xFFFFFFFF;
    ExpectNoMoreThanTheClaimedImage(recipe);
    recipe = GiganticClaim(24, 0);
    recipe.colorsUsed = 0xFFFFFFFF;
    recipe.hasFileHeader = false;
    ExpectNoMoreThanTheClaimedImage(recipe);
}

TEST(BmpSize, RowLongerThanTheFileTakesNoMemory) {
    // One row of 8 MB, of which a byte is there: a decoder that believed the header would read into a block of that
    // size.
    BmpRecipe recipe{.width = 2000000, .height = 1, .bits = 32, .data = Bytes(1)};
    ExpectNoMoreThanTheClaimedImage(recipe);
}

TEST(BmpSize, RunLengthSizeBeyondTheFileTakesNoMemory) {
    for (const std::uint32_t size : {100u, 10u << 20, 0xFFFFFFFFu}) {
        BmpRecipe recipe{.width = 2, .height = 2, .bits = 8, .compression = 1, .sizeImage = size};
        recipe.palette = std::vector<std::uint32_t>(256);
        recipe.data = {2, 1, 0, 1};
        ExpectNoMoreThanTheClaimedImage(recipe);
    }
}

TEST(BmpSize, RowsAndColumnsWithoutPixelsTakeNoTime) {
    // Two thousand million rows of no bytes, one after the other, or as many columns of no rows: no pass over the image
    // may count them, the one that follows each load included.
    const double start = ProcessorSeconds();
    for (const auto& [width, height] : {std::pair(0, INT32_MIN), std::pair(0, -0x7FFFFFF0), std::pair(0, 0x7FFFFFF0),
                                        std::pair(INT32_MIN, 0), std::pair(0x7FFFFFC0, 0)}) {
        for (const std::uint32_t compression : {0u, 1u, 3u}) {
            BmpRecipe recipe{.headerSize = 0x38, .width = width, .height = height, .bits = 32};
            recipe.compression = compression;
            recipe.masks = {0xFF, 0xFF00, 0xFF0000, 0xFF000000};
            recipe.data = {0, 1, 0, 0};
            if (width != 0 && compression != 1) {
                // Rows of 8 GB are refused, though there are none.
                EXPECT_EQ(LoadFailure(recipe.Build()), "");
                continue;
            }
            const BmpLoad load(recipe.Build());
            load.image->PaintBorder();
            EXPECT_EQ(load.image->GetWidth() != 0, width != 0);
            EXPECT_FALSE(load.decoder->IsIncomplete()) << compression;
        }
    }
    EXPECT_LT(ProcessorSeconds() - start, 5);
}

TEST(BmpSize, ImageWithoutRowsIsComplete) {
    const BmpLoad load(BmpRecipe{.width = 5, .height = 0, .data = Bytes(8)}.Build());
    EXPECT_EQ(load.image->GetHeight(), 0u);
    EXPECT_FALSE(load.decoder->IsIncomplete());
}
