#include "tests/codecs/BmpLoad.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<std::string>;

std::vector<std::uint32_t> Grays(std::uint32_t count) {
    std::vector<std::uint32_t> colors;
    for (std::uint32_t i = 0; i < count; ++i)
        colors.push_back(0x80000000 | i * 0x010101);
    return colors;
}

BmpRecipe RunLength8(std::int32_t width, std::int32_t height, Bytes data) {
    return {.width = width, .height = height, .bits = 8, .compression = 1, .palette = Grays(256), .data = data};
}

BmpRecipe RunLength4(std::int32_t width, std::int32_t height, Bytes data) {
    return {.width = width, .height = height, .bits = 4, .compression = 2, .palette = Grays(16), .data = data};
}

/// The image as one text: a row a word, a pixel two digits of its blue, ".." where nothing was written; behind it "!"
/// if it is incomplete.
std::string Picture(const BmpRecipe& recipe) {
    std::string result;
    for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory}) {
        const BmpLoad load(recipe.Build(), manner);
        std::string picture;
        for (const std::string& row : load.Rows()) {
            picture += picture.empty() ? "" : " ";
            for (std::size_t x = 0; x < row.size(); x += 9)
                picture += row.substr(x, 8) == "00000000" ? ".." : row.substr(x + 6, 2);
        }
        picture += load.decoder->IsIncomplete() ? " !" : "";
        EXPECT_TRUE(result.empty() || result == picture) << "from a file: " << result << ", from memory: " << picture;
        result = picture;
    }
    return result;
}

} // namespace

TEST(BmpRunLength8, RunsFillFromTheLowestRow) {
    EXPECT_EQ(Picture(RunLength8(3, 2, {3, 0x11, 0, 0, 2, 0x22, 1, 0x33, 0, 1})), "222233 111111");
}

TEST(BmpRunLength8, EndOfLineLeavesTheRestClear) {
    EXPECT_EQ(Picture(RunLength8(3, 2, {1, 0x11, 0, 0, 1, 0x22, 0, 1})), "22.... 11....");
}

TEST(BmpRunLength8, EndOfBitmapLeavesTheRestClearAndIsComplete) {
    EXPECT_EQ(Picture(RunLength8(2, 3, {2, 0x11, 0, 1})), ".... .... 1111");
}

TEST(BmpRunLength8, EndsCompleteWhereTheRowsAreUsedUp) {
    // No end of bitmap: two ends of line lead above the image.
    EXPECT_EQ(Picture(RunLength8(2, 2, {2, 0x11, 0, 0, 2, 0x22, 0, 0})), "2222 1111");
}

TEST(BmpRunLength8, DeltaMovesRightAndUp) {
    EXPECT_EQ(Picture(RunLength8(4, 3, {1, 0x11, 0, 2, 1, 2, 1, 0x22, 0, 1})), "....22.. ........ 11......");
}

TEST(BmpRunLength8, DeltaOfZeroStays) {
    EXPECT_EQ(Picture(RunLength8(2, 1, {0, 2, 0, 0, 2, 0x11, 0, 1})), "1111");
}

TEST(BmpRunLength8, DeltaAboveTheImageEndsComplete) {
    EXPECT_EQ(Picture(RunLength8(2, 2, {1, 0x11, 0, 2, 0, 2, 9, 9})), ".... 11..");
    EXPECT_EQ(Picture(RunLength8(2, 2, {1, 0x11, 0, 2, 0, 255, 9, 9})), ".... 11..");
}

TEST(BmpRunLength8, DeltaBesideTheImageWritesNothingThere) {
    EXPECT_EQ(Picture(RunLength8(2, 2, {0, 2, 255, 0, 5, 0x11, 0, 0, 2, 0x22, 0, 1})), "2222 ....");
}

TEST(BmpRunLength8, AbsoluteRunOfEvenAndOddLength) {
    EXPECT_EQ(Picture(RunLength8(8, 1, {0, 4, 1, 2, 3, 4, 0, 3, 5, 6, 7, 0xEE, 1, 8, 0, 1})), "0102030405060708");
}

TEST(BmpRunLength8, AbsoluteRunOf255) {
    Bytes data = {0, 255};
    for (std::uint32_t i = 0; i < 255; ++i)
        data.push_back(static_cast<std::uint8_t>(i));
    data.insert(data.end(), {0xEE, 0, 1});
    const BmpLoad load(RunLength8(255, 1, data).Build());
    EXPECT_EQ(load.At(254, 0), 0x80FEFEFEu);
    EXPECT_FALSE(load.decoder->IsIncomplete());
}

TEST(BmpRunLength8, RunIsClippedAtTheWidthWithoutWrapping) {
    EXPECT_EQ(Picture(RunLength8(2, 2, {200, 0x11, 0, 0, 1, 0x22, 0, 1})), "22.. 1111");
}

TEST(BmpRunLength8, ClippedAbsoluteRunDoesNotConsumeItsRest) {
    // Of six bytes two fit; the other four are read as what they then are: a run of 3 fives... and an end of line.
    EXPECT_EQ(Picture(RunLength8(2, 2, {0, 6, 0x11, 0x12, 0, 0, 2, 5, 0, 1})), "0505 1112");
}

TEST(BmpRunLength8, ClippedAbsoluteRunOfOddRoomIsRoundedUpToEven) {
    EXPECT_EQ(Picture(RunLength8(3, 2, {0, 5, 1, 2, 3, 0xEE, 0, 0, 3, 5, 0, 1})), "050505 010203");
}

TEST(BmpRunLength8, NegativeHeightHasNoEffect) {
    EXPECT_EQ(Picture(RunLength8(3, -2, {3, 0x11, 0, 0, 2, 0x22, 1, 0x33, 0, 1})), "222233 111111");
}

TEST(BmpRunLength8, DepthIsNotConsulted) {
    BmpRecipe recipe = RunLength8(2, 1, {2, 0x0F, 0, 1});
    recipe.bits = 4; // 16 colours are read, and the bytes stay indices.
    recipe.palette.resize(16);
    EXPECT_EQ(Picture(recipe), "0F0F");
    recipe.bits = 24; // No palette at all: its colours are 0.
    recipe.palette.clear();
    EXPECT_EQ(Picture(recipe), "....");
}

TEST(BmpRunLength8, SizeOfZeroShowsABlackImageAsIncomplete) {
    BmpRecipe recipe = RunLength8(2, 2, {2, 0x11, 0, 0, 2, 0x22, 0, 1});
    recipe.sizeImage = 0;
    EXPECT_EQ(Picture(recipe), ".... .... !");
}

TEST(BmpRunLength8, SizeBeyondTheFileShowsABlackImageAsIncomplete) {
    BmpRecipe recipe = RunLength8(2, 2, {2, 0x11, 0, 0, 2, 0x22, 0, 1});
    recipe.sizeImage = 9;
    EXPECT_EQ(Picture(recipe), ".... .... !");
    recipe.sizeImage = 0xFFFFFFFF;
    EXPECT_EQ(Picture(recipe), ".... .... !");
}

TEST(BmpRunLength8, SizeThatEndsEarlyKeepsWhatWasDecoded) {
    BmpRecipe recipe = RunLength8(2, 2, {2, 0x11, 0, 0, 2, 0x22, 0, 1});
    const std::string expected[] = {".... .... !", ".... .... !", ".... 1111 !", ".... 1111 !", ".... 1111 !",
                                    ".... 1111 !", "2222 1111 !", "2222 1111 !", "2222 1111"};
    for (std::uint32_t size = 0; size <= 8; ++size) {
        recipe.sizeImage = size;
        EXPECT_EQ(Picture(recipe), expected[size]) << size;
    }
}

TEST(BmpRunLength8, BytesBehindTheSizeAreNotRead) {
    // The file goes on, the block does not: the absolute run stops at its end.
    BmpRecipe recipe = RunLength8(4, 1, {0, 4, 1, 2, 3, 4, 0, 1});
    recipe.sizeImage = 4;
    EXPECT_EQ(Picture(recipe), "0102.... !");
}

TEST(BmpRunLength8, EndInsideADeltaIsIncomplete) {
    EXPECT_EQ(Picture(RunLength8(2, 1, {1, 0x11, 0, 2})), "11.. !");
    EXPECT_EQ(Picture(RunLength8(2, 1, {1, 0x11, 0, 2, 1})), "11.. !");
}

TEST(BmpRunLength8, IndexBeyondThePaletteIsBlack) {
    BmpRecipe recipe = RunLength8(3, 1, {1, 0, 1, 1, 1, 200, 0, 1});
    recipe.palette.resize(2);
    EXPECT_EQ(Picture(recipe), "0001..");
}

TEST(BmpRunLength8, WorksWithAnOs2Header) {
    BmpRecipe recipe = RunLength8(3, 1, {3, 0x11, 0, 1});
    recipe.headerSize = 0x40;
    EXPECT_EQ(Picture(recipe), "111111");
}

TEST(BmpRunLength8, HasNoTransparency) {
    EXPECT_EQ(BmpLoad(RunLength8(1, 1, {1, 1, 0, 1}).Build()).image->HasAlpha, 0u);
}

TEST(BmpRunLength8, ImageWithoutRowsIsComplete) {
    EXPECT_EQ(Picture(RunLength8(2, 0, {2, 0x11, 0, 1})), "");
}

TEST(BmpRunLength8, EmptyRowsTakeNoPixels) {
    EXPECT_EQ(Picture(RunLength8(0, 1, {200, 0x11, 0, 200, 0, 1})), "");
}

TEST(BmpRunLength4, RunsAlternateBetweenBothNibbles) {
    EXPECT_EQ(Picture(RunLength4(5, 2, {5, 0x12, 0, 0, 1, 0x34, 2, 0x56, 0, 1})), "030506.... 0102010201");
}

TEST(BmpRunLength4, EachRunStartsWithTheHighNibble) {
    EXPECT_EQ(Picture(RunLength4(4, 1, {1, 0x12, 3, 0x34, 0, 1})), "01030403");
}

TEST(BmpRunLength4, AbsoluteRunsOfEachLengthModuloFour) {
    EXPECT_EQ(Picture(RunLength4(4, 1, {0, 4, 0x12, 0x34, 0, 1})), "01020304");
    EXPECT_EQ(Picture(RunLength4(5, 1, {0, 5, 0x12, 0x34, 0x5E, 0xEE, 0, 1})), "0102030405");
    EXPECT_EQ(Picture(RunLength4(6, 1, {0, 6, 0x12, 0x34, 0x56, 0xEE, 0, 1})), "010203040506");
    EXPECT_EQ(Picture(RunLength4(8, 1, {0, 7, 0x12, 0x34, 0x56, 0x7E, 1, 0x80, 0, 1})), "0102030405060708");
}

TEST(BmpRunLength4, ClippedAbsoluteRunTakesTheHighNibbleOfTheLastByte) {
    // Three of six fit: two bytes are consumed, and the rest is read as an end of line.
    EXPECT_EQ(Picture(RunLength4(3, 2, {0, 6, 0x12, 0x34, 0, 0, 3, 0x55, 0, 1})), "050505 010203");
}

TEST(BmpRunLength4, RunIsClippedAtTheWidth) {
    EXPECT_EQ(Picture(RunLength4(3, 1, {255, 0x12, 0, 1})), "010201");
}

TEST(BmpRunLength4, DeltaAndEndsAsInTheOtherMode) {
    EXPECT_EQ(Picture(RunLength4(4, 2, {1, 0x10, 0, 2, 2, 1, 1, 0x20, 0, 1})), "......02 01......");
    EXPECT_EQ(Picture(RunLength4(2, 2, {2, 0x12, 0, 0, 2, 0x34, 0, 0})), "0304 0102");
}

TEST(BmpRunLength4, SizeOfZeroShowsABlackImageAsIncomplete) {
    BmpRecipe recipe = RunLength4(2, 1, {2, 0x12, 0, 1});
    recipe.sizeImage = 0;
    EXPECT_EQ(Picture(recipe), ".... !");
}
