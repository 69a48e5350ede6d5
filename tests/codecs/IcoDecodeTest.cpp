#include "codecs/DecodeWithFactory.h"
#include "codecs/ico/AndMask.h"
#include "codecs/ico/ICODecoder.h"
#include "data/MemoryStream.h"
#include "tests/codecs/BmpRecipe.h"
#include "tests/codecs/DecoderLoad.h"
#include "tests/codecs/IcoRecipe.h"
#include "tests/codecs/IcoReference.h"
#include "tests/codecs/PngRecipe.h"
#include "tests/codecs/PngReference.h"
#include "tests/codecs/TestContext.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using IcoLoad = DecoderLoad<ET::Img::ICODecoder>;
using Samples = std::vector<std::uint16_t>;

namespace {

constexpr auto fromFile = TestStream::Manner::File;
constexpr std::uint16_t iconType = 1, cursorType = 2;

ET::Img::ICODecoder Opened(const IcoRecipe& recipe) {
    return ET::Img::ICODecoder(MakeShared<TestStream>(recipe.Build()));
}

std::uint32_t DefaultIndex(std::vector<IcoRecipe::Image> images, std::uint16_t type = iconType) {
    return Opened({.type = type, .images = std::move(images)}).GetDefaultIndex();
}

IcoRecipe::Image Square(std::uint32_t side, std::uint32_t bits) {
    return IconBitmap{.width = side, .height = side, .bits = bits}.ToImage();
}

IcoRecipe::Image Unmeasured(Bytes data) {
    return {0, 0, 0, std::move(data)};
}

Bytes SquarePng(std::uint32_t side, std::uint32_t colorType = 6) {
    return PngRecipe{.width = side, .height = side, .colorType = colorType}.Build();
}

std::vector<IconBitmap> AllBitmaps() {
    std::vector<IconBitmap> bitmaps;
    for (const std::uint32_t bits : {1u, 2u, 4u, 8u, 16u, 24u, 32u})
        for (const auto& [width, height] : {std::pair{16u, 16u}, {1u, 1u}, {33u, 5u}, {47u, 48u}})
            for (const bool hasMask : {true, false})
                bitmaps.push_back({width, height, bits, bits * 100 + width, hasMask});
    // An odd number of rows loses the half one, and the other way round it gains one.
    constexpr std::int32_t height = 11;
    for (const std::uint32_t bits : {1u, 4u, 8u, 16u, 24u, 32u})
        for (const std::int32_t rows : {2 * height + 1, -2 * height, 1 - 2 * height})
            for (const bool hasMask : {true, false})
                bitmaps.push_back({13, height, bits, bits, hasMask, rows});
    return bitmaps;
}

/// One row of 32-bit pixels, AARRGGBB, with the first byte of its mask, as the image of an icon.
IcoRecipe::Image OneRow(const std::vector<std::uint32_t>& pixels, std::uint8_t mask, std::uint32_t bits = 32) {
    BmpRecipe recipe{.width = static_cast<std::int32_t>(pixels.size()), .height = 2, .bits = bits};
    recipe.hasFileHeader = false;
    ByteWriter row;
    for (const std::uint32_t pixel : pixels)
        bits == 32 ? row.U32(pixel) : row.U8(pixel).U8(pixel >> 8).U8(pixel >> 16);
    recipe.rows = {row.bytes, {mask}};
    return {static_cast<std::uint8_t>(pixels.size()), 1, 32, recipe.Build()};
}

/// Four pixels by three, of codes, with the mask behind them. What no run covers has alpha 0, and so have the colours.
IcoRecipe::Image RunLength(std::uint32_t bits, const Bytes& codes, std::optional<std::uint32_t> codeBytes = {}) {
    BmpRecipe recipe{.width = 4, .height = 6, .bits = bits, .compression = bits == 8 ? 1u : 2u};
    recipe.hasFileHeader = false;
    for (std::uint32_t i = 0; i < 1u << bits; ++i)
        recipe.palette.push_back(i * 0x010203);
    recipe.sizeImage = codeBytes.value_or(static_cast<std::uint32_t>(codes.size()));
    const Bytes mask{0x80, 0, 0, 0, 0x40, 0, 0, 0, 0x20, 0, 0, 0};
    recipe.data = ByteWriter().Append(codes).Append(mask).bytes;
    return {4, 3, static_cast<std::uint8_t>(bits), recipe.Build()};
}

/// Four pixels by three: a row of runs with the lowest index first, one with a gap, one of indexes.
const Bytes codesOf8Bits{1, 9, 3, 7, 0, 0, 0, 2, 2, 0, 2, 5, 0, 0, 0, 4, 1, 2, 3, 4, 0, 1};
const Bytes codesOf4Bits{1, 0x90, 3, 0x77, 0, 0, 0, 2, 2, 0, 2, 0x55, 0, 0, 0, 4, 0x12, 0x34, 0, 1};

/// What they show, with the alphas for each row.
Samples ShownRunLength(const std::vector<std::uint16_t>& alphas) {
    constexpr std::uint16_t indexes[] = {1, 2, 3, 4, 0, 0, 5, 5, 9, 7, 7, 7};
    Samples samples;
    for (std::size_t i = 0; i < 12; ++i)
        for (const int factor : {3, 2, 1, 0})
            samples.push_back(factor != 0 ? static_cast<std::uint16_t>(factor * indexes[i]) : alphas[i]);
    return samples;
}

std::vector<int> Alphas(const IcoLoad& load) {
    const Samples samples = load.Samples();
    std::vector<int> alphas;
    for (std::size_t i = 3; i < samples.size(); i += 4)
        alphas.push_back(samples[i]);
    return alphas;
}

} // namespace

TEST(IcoDefaultIndex, IsThatOfTheHighestImage) {
    EXPECT_EQ(DefaultIndex({Square(16, 32), Square(32, 4)}), 1u);
    EXPECT_EQ(DefaultIndex({Square(32, 4), Square(16, 32)}), 0u);
    EXPECT_EQ(DefaultIndex({Square(16, 1), Square(48, 1), Square(32, 1)}), 1u);
}

TEST(IcoDefaultIndex, AmongTheHighestIsThatOfTheDeepest) {
    EXPECT_EQ(DefaultIndex({Square(32, 4), Square(32, 32), Square(32, 8)}), 1u);
    EXPECT_EQ(DefaultIndex({Square(32, 8), Square(32, 24), Square(32, 24)}), 1u);
    EXPECT_EQ(DefaultIndex({Square(32, 8), Square(32, 8)}), 0u);
}

TEST(IcoDefaultIndex, LooksAtTheHeightAlone) {
    EXPECT_EQ(DefaultIndex({{200, 16, 8, {}}, {16, 17, 8, {}}}), 1u);
}

TEST(IcoDefaultIndex, MeasuresAPngWhoseSizeTheDirectoryDoesNotTell) {
    EXPECT_EQ(DefaultIndex({Square(128, 32), Unmeasured(SquarePng(256))}), 1u);
    EXPECT_EQ(DefaultIndex({Square(128, 32), Unmeasured(SquarePng(64))}), 0u);
    EXPECT_EQ(DefaultIndex({{0, 200, 32, SquarePng(20)}, Square(32, 1)}), 1u) << "a width of 0 alone";
    EXPECT_EQ(DefaultIndex({{200, 0, 32, SquarePng(20)}, Square(32, 1)}), 1u) << "a height of 0 alone";
}

TEST(IcoDefaultIndex, MeasuresTheDepthOfAPngWithAllItsChannels) {
    EXPECT_EQ(DefaultIndex({Unmeasured(SquarePng(64, 2)), Unmeasured(SquarePng(64, 6)), Unmeasured(SquarePng(64, 0))}),
              1u);
}

// Its header counts the rows of the mask too, and is taken as it stands.
TEST(IcoDefaultIndex, MeasuresABitmapWithTheRowsOfItsMask) {
    const Bytes bitmap = IconBitmap{.width = 20, .height = 20}.Build();
    EXPECT_EQ(DefaultIndex({Square(39, 32), Unmeasured(bitmap)}), 1u);
    EXPECT_EQ(DefaultIndex({Square(41, 32), Unmeasured(bitmap)}), 0u);
    EXPECT_EQ(DefaultIndex({Square(40, 24), Unmeasured(bitmap)}), 1u) << "of 32 bits";
}

TEST(IcoDefaultIndex, MeasuresWhatClaimsMoreThan32Bits) {
    const Bytes small = SquarePng(8);
    EXPECT_EQ(DefaultIndex({{64, 64, 33, small}, Square(16, 8)}), 1u);
    EXPECT_EQ(DefaultIndex({{64, 64, 32, small}, Square(16, 8)}), 0u);
}

TEST(IcoDefaultIndex, TakesTheHotspotOfACursorForADepth) {
    EXPECT_EQ(DefaultIndex({{32, 32, 3, {}}, {32, 32, 9, {}}, {32, 32, 5, {}}}, cursorType), 1u);
    const IcoRecipe::Image far{32, 32, 40, SquarePng(16)};
    EXPECT_EQ(DefaultIndex({far, {17, 17, 0, {}}}, cursorType), 1u) << "a hotspot beyond 32 makes the image measured";
}

TEST(IcoDefaultIndex, PassesOverWhatCannotBeMeasured) {
    EXPECT_EQ(DefaultIndex({Unmeasured({}), Square(16, 8)}), 1u);
    EXPECT_EQ(DefaultIndex({Unmeasured({1, 2, 3}), Square(16, 8)}), 1u);
    IcoRecipe::Image outside = Unmeasured(SquarePng(64));
    outside.offset = 0xFFFFFFF0;
    EXPECT_EQ(DefaultIndex({outside, Square(16, 8)}), 1u);
    outside.offset.reset();
    outside.size = 100000;
    EXPECT_EQ(DefaultIndex({outside, Square(16, 8)}), 1u);
    EXPECT_EQ(DefaultIndex({outside, outside}), 0u) << "nothing can be measured";
}

TEST(IcoDecode, GivesThePixelsOfEveryKindOfBitmap) {
    for (const IconBitmap& bitmap : AllBitmaps()) {
        const IcoReference expected = DecodeIconImage(bitmap.Build());
        ASSERT_TRUE(expected.isDecoded);
        for (const std::uint16_t type : {iconType, cursorType}) {
            const Bytes file = IcoRecipe{.type = type, .images = {bitmap.ToImage()}}.Build();
            for (const auto manner : {fromFile, TestStream::Manner::Memory}) {
                const IcoLoad load(file, manner);
                EXPECT_EQ(load.info.Width, bitmap.width) << bitmap.Describe();
                EXPECT_EQ(load.info.Height, bitmap.height) << bitmap.Describe();
                EXPECT_EQ(load.info.BitsPerPixel, bitmap.bits);
                EXPECT_EQ(load.info.ColorType, Data::ColorTypeEnum::BGRAUInt8);
                ASSERT_EQ(load.Samples(), expected.samples) << bitmap.Describe();
            }
        }
    }
}

TEST(IcoDecode, TheHighestRowMayComeFirstButTheMasksNever) {
    BmpRecipe recipe{.width = 1, .height = -6, .bits = 24};
    recipe.hasFileHeader = false;
    recipe.rows = {{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {0x80}, {0}, {0}};
    const IcoLoad load(IcoRecipe{.images = {{1, 3, 24, recipe.Build()}}}.Build());
    EXPECT_EQ(load.Samples(), (Samples{1, 1, 1, 255, 2, 2, 2, 255, 3, 3, 3, 0}));
}

TEST(IcoDecode, GivesThePixelsOfEveryKindOfPng) {
    for (const PngRecipe& recipe : AllPngRecipes(19, 7)) {
        const IcoLoad load(IcoRecipe{.images = {Unmeasured(recipe.Build())}}.Build());
        EXPECT_EQ(load.Samples(), recipe.Expected()) << recipe.Describe();
        EXPECT_EQ(load.info.BitsPerPixel, DecodePngByLibrary(recipe.Build()).bitsPerPixel) << recipe.Describe();
    }
}

TEST(IcoDecode, CountsItsEntriesAndShowsEachByItsIndex) {
    IcoRecipe recipe;
    for (const IconBitmap& bitmap : AllBitmaps())
        recipe.images.push_back(bitmap.ToImage());
    recipe.images.push_back(Unmeasured(SquarePng(30)));
    for (const std::uint16_t type : {iconType, cursorType}) {
        recipe.type = type;
        const Bytes file = recipe.Build();
        ASSERT_EQ(Opened(recipe).GetCount(), recipe.images.size());
        for (std::uint32_t i = 0; i < recipe.images.size(); ++i) {
            const IcoLoad load(file, fromFile, i);
            ASSERT_EQ(load.Samples(), DecodeIconImage(recipe.images[i].data).samples) << i;
        }
    }
}

TEST(IcoDecode, AnAlphaChannelStaysWhereTheMaskIsClear) {
    const IcoLoad load(IcoRecipe{.images = {OneRow({0x80112233, 0xFF112233, 0x01112233}, 0)}}.Build());
    EXPECT_EQ(Alphas(load), (std::vector{0x80, 0xFF, 0x01}));
    EXPECT_EQ(load.image->HasAlpha, 1u);
}

TEST(IcoDecode, APixelWithoutAlphaIsOpaqueWhereTheMaskIsClear) {
    const IcoLoad load(IcoRecipe{.images = {OneRow({0x00112233, 0x00445566}, 0)}}.Build());
    EXPECT_EQ(Alphas(load), (std::vector{255, 255}));
    EXPECT_EQ(load.image->HasAlpha, 0u);
}

TEST(IcoDecode, APixelIsTransparentWhereTheMaskIsSet) {
    const IcoLoad load(IcoRecipe{.images = {OneRow({0xFF112233, 0x80112233, 0, 0xFF445566}, 0b1110'0000)}}.Build());
    EXPECT_EQ(Alphas(load), (std::vector{0, 0, 0, 255}));
    EXPECT_EQ(load.image->HasAlpha, 1u);
}

TEST(IcoDecode, ABitmapOf24BitsBecomesTransparentWhereTheMaskIsSet) {
    const IcoLoad load(IcoRecipe{.images = {OneRow({0x112233, 0x445566, 0x778899}, 0b0100'0000, 24)}}.Build());
    EXPECT_EQ(Alphas(load), (std::vector{255, 0, 255}));
    EXPECT_EQ(load.Samples()[4], 0x66) << "the colour stays";
    EXPECT_EQ(load.image->HasAlpha, 1u);
}

TEST(IcoDecode, TheFirstRowOfTheMaskIsTheLowestOfTheImage) {
    BmpRecipe recipe{.width = 1, .height = 6, .bits = 24};
    recipe.hasFileHeader = false;
    recipe.rows = {{1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {0x80}, {0}, {0}};
    const IcoLoad load(IcoRecipe{.images = {{1, 3, 24, recipe.Build()}}}.Build());
    EXPECT_EQ(load.Samples(), (Samples{3, 3, 3, 255, 2, 2, 2, 255, 1, 1, 1, 0}));
}

TEST(IcoDecode, RunLengthsHaveAMaskToo) {
    for (const std::uint16_t type : {iconType, cursorType}) {
        for (const std::uint32_t bits : {8u, 4u}) {
            const Bytes file =
                IcoRecipe{.type = type, .images = {RunLength(bits, bits == 8 ? codesOf8Bits : codesOf4Bits)}}.Build();
            for (const auto manner : {fromFile, TestStream::Manner::Memory}) {
                const IcoLoad load(file, manner);
                EXPECT_EQ(load.info.Height, 3u);
                EXPECT_EQ(load.info.BitsPerPixel, bits);
                EXPECT_EQ(load.Samples(), ShownRunLength({255, 255, 0, 255, 255, 0, 255, 255, 0, 255, 255, 255}));
                EXPECT_EQ(load.image->HasAlpha, 1u);
            }
        }
    }
}

TEST(IcoDecode, RunLengthsThatCountTheMaskAsTheirsHaveNone) {
    const auto all = static_cast<std::uint32_t>(codesOf8Bits.size() + 12);
    const IcoLoad load(IcoRecipe{.images = {RunLength(8, codesOf8Bits, all)}}.Build());
    EXPECT_EQ(load.Samples(), ShownRunLength(std::vector<std::uint16_t>(12)));
    EXPECT_EQ(load.image->HasAlpha, 0u);
}

TEST(IcoDecode, RunLengthsThatAreNotAllThereShowNothing) {
    for (const std::uint32_t codeBytes : {0u, 1000u, 0xFFFFFFFFu}) {
        const IcoLoad load(IcoRecipe{.images = {RunLength(8, codesOf8Bits, codeBytes)}}.Build());
        EXPECT_EQ(load.Samples(), Samples(48)) << codeBytes;
        EXPECT_FALSE(load.decoder.IsIncomplete());
    }
}

TEST(IcoDecode, AMaskThatIsNotAllThereIsSkipped) {
    for (const std::uint32_t bits : {24u, 32u}) {
        IconBitmap bitmap{.width = 9, .height = 3, .bits = bits};
        Bytes cut = bitmap.Build();
        cut.pop_back();
        bitmap.hasMask = false;
        const IcoLoad load(IcoRecipe{.images = {{9, 3, 32, cut}}}.Build());
        EXPECT_EQ(load.Samples(), DecodeIconImage(bitmap.Build()).samples);
        EXPECT_EQ(load.image->HasAlpha, bits == 32 ? 1u : 0u) << "an alpha channel counts without a mask too";
    }
    Bytes withoutMask = OneRow({0x00112233, 0x00445566}, 0).data;
    withoutMask.resize(withoutMask.size() - 4);
    const IcoLoad load(IcoRecipe{.images = {{2, 1, 32, withoutMask}}}.Build());
    EXPECT_EQ(Alphas(load), (std::vector{0, 0}));
    EXPECT_EQ(load.image->HasAlpha, 0u) << "no pixel has an alpha";
}

TEST(IcoDecode, ABitmapThatEndsEarlyShowsItsRowsAndDoesNotCountAsIncomplete) {
    const IconBitmap bitmap{.width = 4, .height = 4, .bits = 24, .hasMask = false};
    Bytes cut = bitmap.Build();
    cut.resize(cut.size() - 12);
    const IcoLoad load(IcoRecipe{.images = {{4, 4, 24, cut}}}.Build());
    Samples expected = DecodeIconImage(bitmap.Build()).samples;
    std::fill(expected.begin(), expected.begin() + 16, std::uint16_t{0});
    EXPECT_EQ(load.Samples(), expected);
    EXPECT_FALSE(load.decoder.IsIncomplete());
}

TEST(IcoDecode, TheRestOfARowThatEndsEarlyIsNoMask) {
    // A mask of 16 rows would take 64 bytes; a row of 96 is cut to 70.
    const IconBitmap bitmap{.width = 32, .height = 16, .bits = 24, .hasMask = false};
    Bytes cut = bitmap.Build();
    cut.resize(cut.size() - 26);
    const IcoLoad load(IcoRecipe{.images = {{32, 16, 24, cut}}}.Build());
    Samples expected = DecodeIconImage(bitmap.Build()).samples;
    std::fill(expected.begin(), expected.begin() + 32 * 4, std::uint16_t{0});
    EXPECT_EQ(load.Samples(), expected);
}

TEST(IcoDecode, LeavesTheStreamAndItsBytesAsTheyWere) {
    const IcoRecipe recipe{.images = {IconBitmap{.width = 5, .height = 5}.ToImage(), Unmeasured(SquarePng(3))}};
    Bytes file = recipe.Build();
    const Bytes before = file;
    const auto stream = MakeShared<MemoryStream>(file.data(), static_cast<std::uint32_t>(file.size()));
    ET::Img::ICODecoder decoder(stream);
    stream->seek(11);
    decoder.GetInfo(0);
    decoder.GetInfo(1);
    EXPECT_EQ(stream->tell(), 11u);
    EXPECT_EQ(file, before) << "the height is halved in a copy";
}

TEST(IcoDecode, WithoutATargetThereIsNoImage) {
    const IcoRecipe recipe{.images = {Square(16, 32), Unmeasured(SquarePng(30))}};
    ET::Img::ICODecoder decoder = Opened(recipe);
    EXPECT_FALSE(decoder.Load({}, 0));
    EXPECT_EQ(decoder.GetLoadedInfo().Height, 16u);
    EXPECT_FALSE(decoder.Load({}, 1));
    EXPECT_EQ(decoder.GetLoadedInfo().Height, 30u);
}

TEST(IcoDecode, HasNoTreeOfHeaderFields) {
    const IcoRecipe recipe{.images = {IconBitmap{}.ToImage()}};
    EXPECT_FALSE(Opened(recipe).GetProperties());
}

TEST(IcoDecode, TheDefaultImageAndTheLastOneAreFoundByTheirIndices) {
    const auto stream =
        MakeShared<TestStream>(IcoRecipe{.images = {Square(16, 32), Square(48, 8), Square(32, 4)}}.Build());
    ET::Img::LoadTarget target;
    target.context = MakeShared<TestContext>();
    SharedPtr<Data::ImageBase> image;
    std::int32_t index = ET::Img::ImageIndex::Default;
    ET::Img::DecodeByExtension("A.ICO", stream, target, index, image);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(image->GetHeight(), 48u);
    stream->seek(0);
    index = ET::Img::ImageIndex::Last;
    ET::Img::DecodeByExtension("a.cur", stream, target, index, image);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(image->GetHeight(), 32u);
}

TEST(IcoMask, WorksOn16BitsToo) {
    using Pixel = Data::ColorBGRA<std::uint16_t>;
    const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
    auto* const pixels = static_cast<Pixel*>(image->Allocate(4, 1, 0, 0));
    pixels[0] = {1, 2, 3, 0};
    pixels[1] = {1, 2, 3, 0xFFFF};
    pixels[2] = {1, 2, 3, 0x1234};
    pixels[3] = {1, 2, 3, 0};
    const std::uint8_t mask[] = {0b0101'0000, 0, 0, 0};
    MemoryStream stream(mask, sizeof(mask));
    EXPECT_TRUE(ET::Img::Ico::ReadMask(stream, *image));
    EXPECT_EQ(pixels[0], (Pixel{1, 2, 3, 0xFFFF}));
    EXPECT_EQ(pixels[1], (Pixel{1, 2, 3, 0}));
    EXPECT_EQ(pixels[2], (Pixel{1, 2, 3, 0x1234}));
    EXPECT_EQ(pixels[3], (Pixel{1, 2, 3, 0}));
    EXPECT_EQ(image->HasAlpha, 1u);
}

TEST(IcoMask, LeavesOtherImagesAlone) {
    const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<std::uint8_t>>();
    image->Allocate(4, 1, 0, 0);
    const std::uint8_t mask[] = {0xFF, 0, 0, 0};
    MemoryStream stream(mask, sizeof(mask));
    EXPECT_FALSE(ET::Img::Ico::ReadMask(stream, *image));
    EXPECT_EQ(stream.tell(), 0u);
}
