#include "codecs/bmp/Rows.h"
#include "tests/codecs/BmpLoad.h"

#include <gtest/gtest.h>

using Quorvex::Data::LockMode;

namespace {

using Strings = std::vector<std::string>;

std::vector<std::uint32_t> Grays(std::uint32_t count) {
    std::vector<std::uint32_t> colors;
    for (std::uint32_t i = 0; i < count; ++i)
        colors.push_back(i * 0x010101);
    return colors;
}

// Three rows of three pixels whose blue is the number of the row in the file.
BmpRecipe ThreeRows(std::int32_t height) {
    return {.width = 3,
            .height = height,
            .rows = {{1, 0, 0, 1, 0, 0, 1, 0, 0}, {2, 0, 0, 2, 0, 0, 2, 0, 0}, {3, 0, 0, 3, 0, 0, 3, 0, 0}}};
}

} // namespace

TEST(BmpRows, OneBitStartsAtTheHighestBit) {
    const BmpRecipe recipe{.width = 10, .bits = 1, .palette = Grays(2), .rows = {{0xB1, 0x40}}};
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00010101 00000000 00010101 00010101 00000000 00000000 00000000 "
                                                      "00010101 00000000 00010101"});
}

TEST(BmpRows, TwoBitsStartAtTheHighestBits) {
    const BmpRecipe recipe{.width = 5, .bits = 2, .palette = Grays(4), .rows = {{0x1B, 0x80}}};
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00000000 00010101 00020202 00030303 00020202"});
}

TEST(BmpRows, FourBitsStartAtTheHighNibble) {
    const BmpRecipe recipe{.width = 3, .bits = 4, .palette = Grays(16), .rows = {{0x1F, 0x80}}};
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00010101 000F0F0F 00080808"});
}

TEST(BmpRows, EightBitsNameAColorEach) {
    const BmpRecipe recipe{.width = 3, .bits = 8, .palette = Grays(256), .rows = {{0, 0x7F, 0xFF}}};
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"00000000 007F7F7F 00FFFFFF"});
}

TEST(BmpRows, TwentyFourBitsAreOpaque) {
    const BmpRecipe recipe{.width = 2, .rows = {{1, 2, 3, 0xFD, 0xFE, 0xFF}}};
    EXPECT_EQ(BmpLoad(recipe.Build()).Rows(), Strings{"FF030201 FFFFFEFD"});
}

TEST(BmpRows, AnyOtherDepthFailsWithEmptyText) {
    for (std::uint32_t bits = 0; bits <= 66; ++bits) {
        const bool isKnown = bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
        if (!isKnown) {
            BmpRecipe recipe{.bits = bits, .palette = Grays(256), .data = Bytes(64)};
            EXPECT_EQ(LoadFailure(recipe.Build()), "") << bits;
        }
    }
    EXPECT_EQ(LoadFailure(BmpRecipe{.bits = 0xFFFF, .data = Bytes(64)}.Build()), "");
}

TEST(BmpRows, PositiveHeightIsBottomUp) {
    EXPECT_EQ(BmpLoad(ThreeRows(3).Build()).Rows(),
              (Strings{"FF000003 FF000003 FF000003", "FF000002 FF000002 FF000002", "FF000001 FF000001 FF000001"}));
}

TEST(BmpRows, NegativeHeightIsTopDown) {
    EXPECT_EQ(BmpLoad(ThreeRows(-3).Build()).Rows(),
              (Strings{"FF000001 FF000001 FF000001", "FF000002 FF000002 FF000002", "FF000003 FF000003 FF000003"}));
}

TEST(BmpRows, Os2BitmapsAreBottomUp) {
    for (const std::uint32_t headerSize : {0x0Cu, 0x10u, 0x40u}) {
        BmpRecipe recipe = ThreeRows(3);
        recipe.headerSize = headerSize;
        EXPECT_EQ(BmpLoad(recipe.Build()).Rows()[0], "FF000003 FF000003 FF000003") << headerSize;
    }
}

TEST(BmpRows, HeightOfOs2CountsAsSignedForTheOrderAlone) {
    // An image of so many rows has no memory, but the order of its rows is told all the same.
    TestStream stream(BmpRecipe{.headerSize = 0x40, .height = -3}.Build());
    Quorvex::CompositeOfProperties root;
    ET::Img::NormalHeader header;
    ReadHeaders(stream, root, header);
    EXPECT_EQ(header.height, 0xFFFFFFFDu);
    EXPECT_EQ(header.fields.biHeight.Get(), -3);
    ET::Img::RowWalk walk(header.fields.biHeight, header.height);
    EXPECT_EQ(walk.GetRow(), 0u);
    walk.Next();
    EXPECT_EQ(walk.GetRow(), 1u);
    // Sixteen bits have no sign.
    TestStream core(BmpRecipe{.headerSize = 0x0C, .height = -3}.Build());
    Quorvex::CompositeOfProperties coreRoot;
    ET::Img::NormalHeader coreHeader;
    ReadHeaders(core, coreRoot, coreHeader);
    EXPECT_EQ(coreHeader.fields.biHeight.Get(), 0xFFFD);
}

TEST(BmpRows, RowsOfAnyWidthAreFilledUpToFourBytes) {
    for (const std::uint32_t bits : {1u, 2u, 4u, 8u, 16u, 24u, 32u}) {
        for (const std::int32_t width : {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65}) {
            BmpRecipe recipe{.width = width, .height = -2, .bits = bits};
            if (bits <= 8)
                recipe.palette = Grays(1u << bits);
            const auto bytes = (static_cast<std::uint32_t>(width) * bits + 7) / 8;
            recipe.rows = {Bytes(bytes, 0), Bytes(bytes, 0xFF)};
            const BmpLoad load(recipe.Build());
            const std::uint32_t last = static_cast<std::uint32_t>(width) - 1;
            const std::uint32_t brightest = bits <= 8 ? (1u << bits) - 1 : 0xFF;
            EXPECT_FALSE(load.decoder->IsIncomplete()) << bits << " bits, " << width;
            EXPECT_EQ(load.At(last, 0) & 0xFF, 0u) << bits << " bits, " << width;
            EXPECT_EQ(load.At(0, 1) & 0xFF, brightest) << bits << " bits, " << width;
            EXPECT_EQ(load.At(last, 1) & 0xFF, brightest) << bits << " bits, " << width;
        }
    }
}

TEST(BmpRows, ImageOfManyBlocksIsWholeInBothOrders) {
    // 700 rows of 900 bytes are read in several blocks.
    for (const std::int32_t height : {700, -700}) {
        BmpRecipe recipe{.width = 300, .height = height};
        for (std::uint32_t y = 0; y < 700; ++y)
            recipe.rows.push_back(Bytes(900, static_cast<std::uint8_t>(y % 251)));
        for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory}) {
            const BmpLoad load(recipe.Build(), manner);
            ASSERT_FALSE(load.decoder->IsIncomplete());
            for (std::uint32_t y = 0; y < 700; ++y)
                ASSERT_EQ(load.At(299, height < 0 ? y : 699 - y) & 0xFF, y % 251) << y;
        }
    }
}

TEST(BmpRows, RowsLongerThanABlock) {
    BmpRecipe recipe{.width = 100000, .height = 2, .rows = {Bytes(300000, 7), Bytes(300000, 9)}};
    const BmpLoad load(recipe.Build());
    EXPECT_EQ(load.At(99999, 1), 0xFF070707u);
    EXPECT_EQ(load.At(99999, 0), 0xFF090909u);
}

TEST(BmpRows, PaddingOfTheImageIsNotTouchedByClearing) {
    const auto image = Quorvex::MakeShared<TestContext>()->CreateImage(Quorvex::Data::ColorTypeEnum::BGRAUInt8, 3, 2);
    const auto lock = image->LockBGRAUInt8(LockMode::ReadWrite);
    for (std::uint32_t y = 0; y < lock.AllocatedHeight; ++y)
        for (std::uint32_t x = 0; x < lock.AllocatedWidth; ++x)
            lock(x, y) = {1, 2, 3, 4};
    ET::Img::ClearRows(lock, 1, 2);
    for (std::uint32_t y = 0; y < lock.AllocatedHeight; ++y)
        for (std::uint32_t x = 0; x < lock.AllocatedWidth; ++x)
            EXPECT_EQ(lock(x, y).alpha, y == 1 && x < 3 ? 0 : 4) << x << ", " << y;
}

TEST(BmpRows, ClearingReachesEverySpanOfALongRow) {
    const auto image =
        Quorvex::MakeShared<TestContext>()->CreateImage(Quorvex::Data::ColorTypeEnum::BGRAUInt8, 2500, 1);
    const auto lock = image->LockBGRAUInt8(LockMode::ReadWrite);
    for (const std::uint32_t dirty : {0u, 1023u, 1024u, 2047u, 2048u, 2499u}) {
        ET::Img::ClearRows(lock, 0, 1);
        lock(dirty, 0) = {0, 0, 0, 1};
        EXPECT_TRUE(ET::Img::HasVisibleAlpha(lock));
        ET::Img::ClearRows(lock, 0, 1);
        EXPECT_FALSE(ET::Img::HasVisibleAlpha(lock)) << dirty;
    }
}

TEST(RowWalk, CountsWhatRemainsInBothOrders) {
    ET::Img::RowWalk up(3, 3);
    ET::Img::RowWalk down(-3, 3);
    up.Next();
    down.Next();
    EXPECT_EQ(up.GetRow(), 1u);
    EXPECT_EQ(up.GetRemaining(), 2u);
    EXPECT_EQ(up.GetFirstRemaining(), 0u);
    EXPECT_EQ(down.GetRow(), 1u);
    EXPECT_EQ(down.GetRemaining(), 2u);
    EXPECT_EQ(down.GetFirstRemaining(), 1u);
    up.Next();
    up.Next();
    EXPECT_TRUE(up.IsDone());
    EXPECT_EQ(up.GetRemaining(), 0u);
}

TEST(RowWalk, ExtremeHeightsDoNotOverflow) {
    EXPECT_TRUE(ET::Img::RowWalk(0, 0).IsDone());
    ET::Img::RowWalk lowest(INT32_MIN, 0x80000000u);
    EXPECT_EQ(lowest.GetRow(), 0u);
    EXPECT_EQ(lowest.GetRemaining(), 0x80000000u);
    EXPECT_EQ(ET::Img::RowWalk(INT32_MAX, INT32_MAX).GetRow(), 0x7FFFFFFEu);
}
