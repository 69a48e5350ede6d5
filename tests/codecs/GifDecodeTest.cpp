#include "data/Image.h"
#include "tests/codecs/GifLoad.h"

#include <gtest/gtest.h>

#include <numeric>

using namespace Quorvex;

namespace {

using Bytes = std::vector<std::uint8_t>;
using Pixels = std::vector<std::uint32_t>;

Bytes Indexes(std::uint32_t count, std::uint32_t colors, std::uint32_t step = 1) {
    Bytes indexes;
    for (std::uint32_t i = 0; i < count; ++i)
        indexes.push_back(static_cast<std::uint8_t>(i * step % colors));
    return indexes;
}

Pixels Shown(const Bytes& indexes, const std::vector<std::uint32_t>& colors) {
    Pixels pixels;
    for (const std::uint8_t index : indexes)
        pixels.push_back(0xFF000000 | colors[index]);
    return pixels;
}

GifRecipe TwoFrames() {
    GifRecipe recipe{.colors = GifColors(256)};
    recipe.frames = {{.width = 4, .height = 3, .indexes = Indexes(12, 256)},
                     {.width = 4, .height = 3, .indexes = Indexes(12, 256, 7)}};
    return recipe;
}

} // namespace

TEST(GifDecode, TwoFramesAreTwoImages) {
    const GifRecipe recipe = TwoFrames();
    for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory}) {
        for (const std::int32_t index : {1, 2}) {
            const GifLoad load(recipe.Build(), index, manner);
            EXPECT_EQ(load.decoder->GetCount(), 2u);
            EXPECT_EQ(load.decoder->GetDefaultIndex(), 0u);
            EXPECT_FALSE(load.decoder->IsIncomplete());
            EXPECT_EQ(load.Pixels(), Shown(recipe.frames[static_cast<std::size_t>(index) - 1].indexes, recipe.colors));
        }
    }
}

TEST(GifDecode, TheLastFrameIsAskedForByItsName) {
    const GifRecipe recipe = TwoFrames();
    const GifLoad load(recipe.Build(), ET::Img::ImageIndex::Last);
    EXPECT_EQ(load.index, 2);
    EXPECT_EQ(load.Pixels(), Shown(recipe.frames[1].indexes, recipe.colors));
    EXPECT_EQ(GifLoad(recipe.Build(), ET::Img::ImageIndex::Default).index, 1);
}

TEST(GifDecode, CountIsKnownWithoutALoad) {
    const ET::Img::GIFDecoder decoder(MakeShared<TestStream>(TwoFrames().Build()));
    EXPECT_EQ(decoder.GetCount(), 2u);
    EXPECT_EQ(decoder.GetCount(), 2u);
}

TEST(GifDecode, InfoIsTheLastFrames) {
    GifRecipe recipe = TwoFrames();
    recipe.frames[1].width = 6;
    recipe.frames[1].height = 2;
    ET::Img::GIFDecoder decoder(MakeShared<TestStream>(recipe.Build()));
    const ET::Img::ImageInfo info = decoder.GetInfo(0);
    EXPECT_EQ(info.Width, 6u);
    EXPECT_EQ(info.Height, 2u);
    EXPECT_EQ(info.BitsPerPixel, 8u);
    EXPECT_EQ(info.AllocatedWidth, 0u);
    EXPECT_EQ(info.AllocatedHeight, 0u);
    EXPECT_EQ(info.ColorType, Data::ColorTypeEnum::BGRAUInt8);
    EXPECT_FALSE(decoder.Load({}, 0)) << "without a target there is no image";
    EXPECT_EQ(decoder.GetCount(), 2u);
}

TEST(GifDecode, AFrameOfAnotherSizeFillsTheLastOnesSizeInItsOrder) {
    GifRecipe recipe = TwoFrames();
    recipe.frames[1].width = 5;
    recipe.frames[1].height = 2;
    recipe.frames[1].indexes = Indexes(10, 256);
    Pixels expected = Shown(Indexes(12, 256), recipe.colors);
    expected.resize(10);
    EXPECT_EQ(GifLoad(recipe.Build(), 1).Pixels(), expected);

    recipe.frames[1].width = 7;
    recipe.frames[1].indexes = Indexes(14, 256);
    expected = Shown(Indexes(12, 256), recipe.colors);
    expected.resize(14, 0xFF000000 | recipe.colors[0]);
    const GifLoad larger(recipe.Build(), 1);
    EXPECT_EQ(larger.Pixels(), expected);
    EXPECT_FALSE(larger.decoder->IsIncomplete());
}

TEST(GifDecode, ALocalTableLiesOverTheGlobalOne) {
    GifRecipe recipe{.colors = GifColors(256)};
    recipe.frames = {{.width = 256, .height = 1, .colors = GifColors(4, 1000), .indexes = Indexes(256, 256)},
                     {.width = 256, .height = 1, .indexes = Indexes(256, 256)}};
    std::vector<std::uint32_t> colors = recipe.colors;
    std::copy(recipe.frames[0].colors.begin(), recipe.frames[0].colors.end(), colors.begin());
    EXPECT_EQ(GifLoad(recipe.Build(), 1).Pixels(), Shown(Indexes(256, 256), colors));
    EXPECT_EQ(GifLoad(recipe.Build(), 2).Pixels(), Shown(Indexes(256, 256), recipe.colors));
}

TEST(GifDecode, ALocalTableMayBeTheLargerOne) {
    GifRecipe recipe{.colors = GifColors(2)};
    recipe.frames = {{.width = 16, .height = 1, .colors = GifColors(16, 50), .indexes = Indexes(16, 16)}};
    EXPECT_EQ(GifLoad(recipe.Build()).Pixels(), Shown(Indexes(16, 16), GifColors(16, 50)));
}

TEST(GifDecode, TheFirstThreeBytesMayBeAnything) {
    GifRecipe recipe = TwoFrames();
    for (const char* signature : {"xyz87a", "GIF87a", "...89a"}) {
        recipe.signature = signature;
        EXPECT_EQ(GifLoad(recipe.Build()).Pixels(), Shown(recipe.frames[0].indexes, recipe.colors)) << signature;
    }
}

TEST(GifDecode, AnInterlacedFrameDecodesIntoTheRightRows) {
    for (std::uint32_t height = 1; height <= 19; ++height) {
        // GIF89a appendix E: every 8th row, every 8th from the 4th, every 4th from the 2nd, every 2nd from the 1st.
        std::vector<std::uint32_t> rows;
        for (const auto& [first, step] : {std::pair{0u, 8u}, {4u, 8u}, {2u, 4u}, {1u, 2u}})
            for (std::uint32_t y = first; y < height; y += step)
                rows.push_back(y);
        GifRecipe recipe{.colors = GifColors(256)};
        GifFrame frame{.width = 3, .height = height, .isInterlaced = true};
        for (const std::uint32_t y : rows)
            frame.indexes.insert(frame.indexes.end(), 3, static_cast<std::uint8_t>(y));
        recipe.frames = {frame};
        Bytes expected;
        for (std::uint32_t y = 0; y < height; ++y)
            expected.insert(expected.end(), 3, static_cast<std::uint8_t>(y));
        EXPECT_EQ(GifLoad(recipe.Build()).Pixels(), Shown(expected, recipe.colors)) << height;
    }
}

// The passes go over the rows of the image, and take the indexes as they come.
TEST(GifDecode, AnInterlacedFrameOfAnotherSizeFillsTheLastOnesSizeInItsPasses) {
    for (const auto& [width, height] : {std::pair{4u, 9u}, {4u, 12u}, {4u, 5u}, {6u, 10u}, {3u, 10u}, {1u, 1u}}) {
        GifRecipe recipe{.colors = GifColors(256)};
        recipe.frames = {{.width = 4, .height = 10, .isInterlaced = true, .indexes = Indexes(40, 256)},
                         {.width = width, .height = height, .indexes = Indexes(width * height, 256)}};
        Bytes expected(std::size_t{width} * height);
        Bytes::const_iterator next = recipe.frames[0].indexes.begin();
        for (const auto& [first, step] : {std::pair{0u, 8u}, {4u, 8u}, {2u, 4u}, {1u, 2u}})
            for (std::uint32_t y = first; y < height; y += step)
                for (std::uint32_t x = 0; x < width; ++x)
                    expected[std::size_t{y} * width + x] = next != recipe.frames[0].indexes.end() ? *next++ : 0;
        const GifLoad load(recipe.Build(), 1);
        EXPECT_EQ(load.Pixels(), Shown(expected, recipe.colors)) << width << " x " << height;
        EXPECT_FALSE(load.decoder->IsIncomplete());
    }
}

TEST(GifDecode, LeavesThePaddingOfTheRowsAlone) {
    GifRecipe recipe{.colors = GifColors(256)};
    recipe.frames = {{.width = 13, .height = 5, .indexes = Indexes(65, 256)}};
    for (const bool isInterlaced : {false, true}) {
        recipe.frames[0].isInterlaced = isInterlaced;
        // Of the one frame, and of one that the file does not have.
        for (const std::uint32_t index : {0u, 1u}) {
            ET::Img::GIFDecoder decoder(MakeShared<TestStream>(recipe.Build()));
            using Pixel = Data::ColorBGRA<std::uint8_t>;
            const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
            auto* const pixels = static_cast<Pixel*>(image->Allocate(13, 5, 0, 0));
            const std::size_t count = std::size_t(image->AllocatedWidth) * image->AllocatedHeight;
            ASSERT_GT(count, 65u);
            std::fill(pixels, pixels + count, Pixel{1, 2, 3, 4});
            decoder.Load(image, index);
            for (std::size_t i = 0; i < count; ++i) {
                const bool isVisible = i % image->AllocatedWidth < 13 && i / image->AllocatedWidth < 5;
                ASSERT_EQ(pixels[i] == (Pixel{1, 2, 3, 4}), !isVisible) << i;
            }
        }
    }
}

TEST(GifDecode, IndexZeroFillsPixelsMissingFromACutPixelStream) {
    for (const bool isInterlaced : {false, true}) {
        GifRecipe recipe{.colors = GifColors(256)};
        // The end code comes too early in one case, the data just stop in the other.
        for (const bool hasEnd : {true, false}) {
            recipe.frames = {{.width = 2, .height = 4, .isInterlaced = isInterlaced, .indexes = {9, 8, 7}}};
            recipe.frames[0].style.hasEnd = hasEnd;
            const GifLoad load(recipe.Build());
            EXPECT_TRUE(load.decoder->IsIncomplete());
            const Bytes indexes = isInterlaced ? Bytes{9, 8, 0, 0, 7, 0, 0, 0} : Bytes{9, 8, 7, 0, 0, 0, 0, 0};
            EXPECT_EQ(load.Pixels(), Shown(indexes, recipe.colors));
        }
    }
}

TEST(GifDecode, ADamagedCodeKeepsThePixelsBeforeIt) {
    GifRecipe recipe{.colors = GifColors(256)};
    // The first string has the code 258.
    const Bytes codes = CodeWriter(8, {}).Clear().Code(5).Code(6).Code(260).Code(7).GetBytes();
    recipe.frames = {{.width = 40, .height = 1, .codes = codes}, {.width = 40, .height = 1}};
    const GifLoad load(recipe.Build());
    EXPECT_TRUE(load.decoder->IsIncomplete());
    Bytes indexes{5, 6};
    indexes.resize(40);
    EXPECT_EQ(load.Pixels(), Shown(indexes, recipe.colors));
}

TEST(GifDecode, DataBehindTheLastPixelAreSkipped) {
    GifRecipe recipe = TwoFrames();
    recipe.frames[0].indexes = Indexes(1000, 256);
    recipe.frames[0].blockSize = 10;
    const GifLoad load(recipe.Build());
    EXPECT_FALSE(load.decoder->IsIncomplete());
    EXPECT_EQ(load.Pixels(), Shown(Indexes(12, 256), recipe.colors));
    EXPECT_EQ(GifLoad(recipe.Build(), 2).Pixels(), Shown(recipe.frames[1].indexes, recipe.colors));
}

TEST(GifDecode, ExtensionsAndBytesBetweenBlocksAreSkipped) {
    GifRecipe recipe = TwoFrames();
    const Bytes graphicControl{0x21, 0xF9, 4, 0x05, 10, 0, 3, 0};
    const Bytes comment{0x21, 0xFE, 3, 0x3B, 0x2C, 0x21, 1, 0x3B, 0};
    const Bytes garbage{0x00, 0x01, 0xFF};
    recipe.beforeFrames = graphicControl;
    recipe.beforeFrames.insert(recipe.beforeFrames.end(), comment.begin(), comment.end());
    recipe.beforeFrames.insert(recipe.beforeFrames.end(), garbage.begin(), garbage.end());
    recipe.trailer = {0x07, 0x3B, 0x2C};
    const GifLoad load(recipe.Build(), 2);
    EXPECT_EQ(load.decoder->GetCount(), 2u);
    EXPECT_EQ(load.Pixels(), Shown(recipe.frames[1].indexes, recipe.colors));
}

TEST(GifDecode, ThereIsNoTransparency) {
    GifRecipe recipe = TwoFrames();
    recipe.beforeFrames = {0x21, 0xF9, 4, 0x01, 0, 0, 0, 0};
    const GifLoad load(recipe.Build());
    EXPECT_EQ(load.image->HasAlpha, 0u);
    EXPECT_EQ(load.Pixels(), Shown(recipe.frames[0].indexes, recipe.colors));
}

TEST(GifDecode, SubBlocksOfEverySizeGiveTheSamePixels) {
    GifRecipe recipe{.colors = GifColors(256)};
    recipe.frames = {{.width = 50, .height = 30, .indexes = Indexes(1500, 251, 31)}};
    for (const std::uint32_t blockSize : {1u, 2u, 3u, 7u, 8u, 9u, 254u, 255u}) {
        recipe.frames[0].blockSize = blockSize;
        EXPECT_EQ(GifLoad(recipe.Build()).Pixels(), Shown(recipe.frames[0].indexes, recipe.colors)) << blockSize;
    }
}

TEST(GifDecode, AFrameThatTheFileDoesNotHaveIsBlack) {
    const GifLoad load(TwoFrames().Build(), 3);
    EXPECT_EQ(load.Pixels(), Pixels(12, 0xFF000000));
}

TEST(GifDecode, AFileWithoutFramesGivesAnImageWithoutPixels) {
    const GifRecipe recipe{.colors = GifColors(2)};
    const GifLoad load(recipe.Build());
    EXPECT_EQ(load.decoder->GetCount(), 0u);
    EXPECT_EQ(load.image->GetWidth(), 0u);
    EXPECT_EQ(load.image->GetHeight(), 0u);
}

TEST(GifDecode, FramesWithoutPixelsNeedNoData) {
    for (const auto& [width, height] : {std::pair{0u, 5u}, {5u, 0u}, {0u, 0u}, {0u, 65535u}}) {
        GifRecipe recipe{.colors = GifColors(2)};
        recipe.frames = {{.width = width, .height = height, .codes = Bytes()}};
        const GifLoad load(recipe.Build());
        EXPECT_FALSE(load.decoder->IsIncomplete());
        EXPECT_EQ(load.image->GetWidth(), width);
        EXPECT_EQ(load.image->GetHeight(), height);
    }
}

TEST(GifDecode, AFileOfAnUnknownExtensionIsFoundByItsContent) {
    const GifRecipe recipe = TwoFrames();
    const auto stream = MakeShared<TestStream>(recipe.Build());
    ET::Img::LoadTarget target;
    target.context = MakeShared<TestContext>();
    SharedPtr<Data::ImageBase> image;
    std::int32_t index = ET::Img::ImageIndex::Last;
    EXPECT_EQ(Quorvex::Test::RaisedText([&] { ET::Img::DecodeByExtension("a.xyz", stream, target, index, image); }),
              "");
    EXPECT_EQ(index, ET::Img::ImageIndex::Last);
    const auto decoder = ET::Img::DecodeByContent(stream, target, index, image);
    EXPECT_TRUE(decoder.DynamicCast<ET::Img::GIFDecoder>());
    EXPECT_EQ(decoder->GetCount(), 2u);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(image->GetWidth(), 4u);
}
