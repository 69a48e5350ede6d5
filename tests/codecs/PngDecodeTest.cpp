#include "codecs/DecodeWithFactory.h"
#include "codecs/png/PngReader.h"
#include "tests/codecs/PngLoad.h"
#include "tests/codecs/PngRecipe.h"
#include "tests/codecs/TestContext.h"
#include "tests/data/AllocationProbe.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using Data::ColorTypeEnum;
using Samples = std::vector<std::uint16_t>;

namespace {

/// What of a file is shown: "8 bits, 24 per pixel, opaque".
std::string Kind(const PngLoad& load) {
    return (load.info.ColorType == ColorTypeEnum::BGRAUInt16  ? "16 bits, "
            : load.info.ColorType == ColorTypeEnum::BGRAUInt8 ? "8 bits, "
                                                              : "?, ") +
           std::to_string(load.info.BitsPerPixel) + " per pixel, " + (load.image->HasAlpha ? "alpha" : "opaque");
}

std::string KindOf(std::uint32_t colorType, std::uint32_t depth, bool hasTransparency = false) {
    PngRecipe recipe{.width = 5, .height = 3, .depth = depth, .colorType = colorType};
    recipe.hasTransparency = hasTransparency;
    return Kind(PngLoad(recipe.Build()));
}

} // namespace

TEST(PngDecode, GivesThePixelsOfEveryKindOfFile) {
    for (const auto& [width, height] : {std::pair{13u, 11u}, {1u, 1u}, {2u, 5u}, {3u, 1u}, {33u, 9u}, {64u, 3u}}) {
        for (const PngRecipe& recipe : AllPngRecipes(width, height)) {
            const auto file = recipe.Build();
            for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory}) {
                const PngLoad load(file, manner);
                ASSERT_EQ(load.Samples(), recipe.Expected()) << recipe.Describe();
                EXPECT_FALSE(load.decoder.IsIncomplete());
            }
        }
    }
}

TEST(PngDecode, GivesThePixelsThatLibpngGives) {
    for (const PngRecipe& recipe : AllPngRecipes(21, 10)) {
        const auto file = recipe.Build();
        const PngLoad load(file);
        EXPECT_TRUE(OutcomeOf(load) == DecodePngByLibrary(file)) << recipe.Describe();
        if (recipe.depth <= 8) {
            EXPECT_EQ(load.Samples(), DecodePngSimplified(file).samples) << recipe.Describe();
        }
    }
}

// Rows of several blocks of the file, image data in many chunks, and rows wider than any vector.
TEST(PngDecode, GivesThePixelsOfLargerFiles) {
    for (const std::uint32_t colorType : {0u, 2u, 4u, 6u}) {
        for (const bool isInterlaced : {false, true}) {
            PngRecipe recipe{.width = 411, .height = 203, .depth = 16, .colorType = colorType};
            recipe.isInterlaced = isInterlaced;
            recipe.idatBytes = 1000;
            EXPECT_TRUE(PngLoad(recipe.Build()).Samples() == recipe.Expected()) << recipe.Describe();
        }
    }
}

TEST(PngDecode, GreyOfOneBitArrivesAs8Bits) {
    const PngRecipe recipe{.width = 16, .height = 4, .depth = 1};
    const PngLoad load(recipe.Build());
    EXPECT_EQ(load.info.ColorType, ColorTypeEnum::BGRAUInt8);
    EXPECT_EQ(load.info.BitsPerPixel, 8u);
    EXPECT_EQ(load.Samples(), recipe.Expected());
}

TEST(PngDecode, APaletteIsExpandedToColours) {
    const PngRecipe recipe{.width = 16, .height = 4, .depth = 2, .colorType = 3};
    const PngLoad load(recipe.Build());
    EXPECT_EQ(load.info.BitsPerPixel, 24u);
    EXPECT_EQ(load.Samples(), recipe.Expected());
}

TEST(PngDecode, ColoursOf16BitsKeepThemInTheOrderOfTheMachine) {
    const auto file =
        PngChunks::Joined({PngChunks::signature, PngChunks::Header(1, 1, 16, 2),
                           PngChunks::Chunk("IDAT", PngChunks::Deflated({0, 0x12, 0x34, 0x56, 0x78, 0x9A, 0xBC})),
                           PngChunks::Chunk("IEND", {})});
    const PngLoad load(file);
    EXPECT_EQ(load.info.ColorType, ColorTypeEnum::BGRAUInt16);
    EXPECT_EQ(load.info.BitsPerPixel, 48u);
    EXPECT_EQ(load.Samples(), (Samples{0x9ABC, 0x5678, 0x1234, 0xFFFF}));
}

TEST(PngDecode, EveryKindHasItsTypeAndDepth) {
    for (const std::uint32_t depth : {1u, 2u, 4u, 8u}) {
        EXPECT_EQ(KindOf(0, depth), "8 bits, 8 per pixel, opaque");
        EXPECT_EQ(KindOf(0, depth, true), "8 bits, 16 per pixel, alpha");
        EXPECT_EQ(KindOf(3, depth), "8 bits, 24 per pixel, opaque");
        EXPECT_EQ(KindOf(3, depth, true), "8 bits, 32 per pixel, alpha");
    }
    EXPECT_EQ(KindOf(0, 16), "16 bits, 16 per pixel, opaque");
    EXPECT_EQ(KindOf(0, 16, true), "16 bits, 32 per pixel, alpha");
    EXPECT_EQ(KindOf(2, 8), "8 bits, 24 per pixel, opaque");
    EXPECT_EQ(KindOf(2, 8, true), "8 bits, 32 per pixel, alpha");
    EXPECT_EQ(KindOf(2, 16), "16 bits, 48 per pixel, opaque");
    EXPECT_EQ(KindOf(2, 16, true), "16 bits, 64 per pixel, alpha");
    EXPECT_EQ(KindOf(4, 8), "8 bits, 16 per pixel, alpha");
    EXPECT_EQ(KindOf(4, 16), "16 bits, 32 per pixel, alpha");
    EXPECT_EQ(KindOf(6, 8), "8 bits, 32 per pixel, alpha");
    EXPECT_EQ(KindOf(6, 16), "16 bits, 64 per pixel, alpha");
}

TEST(PngDecode, TheHeadersSayWhatTheWholeFileSays) {
    for (const PngRecipe& recipe : AllPngRecipes(7, 5)) {
        const auto file = recipe.Build();
        const PngReference whole = DecodePngByLibrary(file);
        ET::Img::PNGDecoder decoder(MakeShared<TestStream>(file));
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        EXPECT_EQ(info.Width, whole.width);
        EXPECT_EQ(info.Height, whole.height);
        EXPECT_EQ(info.AllocatedWidth, 0u);
        EXPECT_EQ(info.AllocatedHeight, 0u);
        EXPECT_EQ(info.BitsPerPixel, whole.bitsPerPixel) << recipe.Describe();
        EXPECT_EQ(info.ColorType, whole.isWide ? ColorTypeEnum::BGRAUInt16 : ColorTypeEnum::BGRAUInt8)
            << recipe.Describe();
        EXPECT_FALSE(decoder.Load({}, 0)) << "without a target there is no image";
        const PngLoad load(file);
        EXPECT_EQ(load.decoder.GetLoadedInfo().BitsPerPixel, whole.bitsPerPixel) << recipe.Describe();
    }
}

TEST(PngDecode, TheHeadersAreReadWithoutAPixel) {
    const PngRecipe recipe{.width = 500, .height = 400, .depth = 16, .colorType = 6};
    auto file = recipe.Build();
    // Not one byte of the image data is right.
    for (std::size_t i = PngChunks::PositionOf(file, "IDAT") + 8; i < file.size(); ++i)
        file[i] ^= 0xFF;
    const auto stream = MakeShared<TestStream>(file);
    ET::Img::PNGDecoder decoder(stream);
    EXPECT_EQ(decoder.GetInfo(0).BitsPerPixel, 64u);
    EXPECT_LT(stream->bytesRead, file.size() / 10);
}

TEST(PngDecode, AFileHasOneImageAndEveryIndexGivesIt) {
    const PngRecipe recipe{.width = 3, .height = 2, .colorType = 2};
    const PngLoad load(recipe.Build(), TestStream::Manner::File, 7);
    EXPECT_EQ(load.decoder.GetCount(), 1u);
    EXPECT_EQ(load.decoder.GetDefaultIndex(), 0u);
    EXPECT_EQ(load.Samples(), recipe.Expected());
    EXPECT_FALSE(load.decoder.GetProperties());
}

TEST(PngDecode, DecodesAgainFromTheStart) {
    const PngRecipe recipe{.width = 3, .height = 2, .colorType = 2};
    PngLoad load(recipe.Build());
    load.image->clear(0);
    load.decoder.Load(load.image, 0);
    EXPECT_EQ(load.Samples(), recipe.Expected());
}

TEST(PngDecode, LeavesThePaddingOfTheRowsAlone) {
    const PngRecipe recipe{.width = 13, .height = 5, .colorType = 6, .isInterlaced = true};
    ET::Img::PNGDecoder decoder(MakeShared<TestStream>(recipe.Build()));
    using Pixel = Data::ColorBGRA<std::uint8_t>;
    const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
    auto* const pixels = static_cast<Pixel*>(image->Allocate(13, 5, 0, 0));
    const std::size_t count = std::size_t(image->AllocatedWidth) * image->AllocatedHeight;
    std::fill(pixels, pixels + count, Pixel{1, 2, 3, 4});
    decoder.Load(image, 0);
    for (std::size_t i = 0; i < count; ++i) {
        if (i % image->AllocatedWidth >= 13 || i / image->AllocatedWidth >= 5) {
            ASSERT_EQ(pixels[i], (Pixel{1, 2, 3, 4})) << i;
        }
    }
}

TEST(PngDecode, SkipsWhatIsNoneOfThePixelsWhateverItsSize) {
    const auto plain = PngRecipe{.width = 3, .height = 2, .colorType = 2};
    PngRecipe recipe = plain;
    using namespace PngChunks;
    auto damaged = Chunk("tEXt", {'a', 0, 'b'});
    damaged.back() ^= 1;
    recipe.extraChunks = Joined({Chunk("iCCP", PngRecipe::Bytes(100, 7)), Chunk("gAMA", {1, 2}), damaged,
                                 Chunk("zTXt", PngRecipe::Bytes(10'000'000, 0)), Chunk("prVt", {})});
    EXPECT_EQ(PngLoad(recipe.Build()).Samples(), plain.Expected());
}

TEST(PngDecode, AnAnimationShowsItsFirstPicture) {
    PngRecipe recipe{.width = 3, .height = 2, .colorType = 2};
    recipe.extraChunks = PngChunks::Chunk("acTL", {0, 0, 0, 2, 0, 0, 0, 0});
    EXPECT_EQ(PngLoad(recipe.Build()).Samples(), recipe.Expected());
}

TEST(PngDecode, MemoryThatRunsOutIsToldAsSuch) {
    const PngRecipe recipe{.width = 20000, .height = 2, .depth = 16, .colorType = 6};
    const auto file = recipe.Build();
    const auto stream = MakeShared<TestStream>(file);
    ET::Img::PNGDecoder decoder(stream);
    for (const std::size_t failFrom : {std::size_t{100}, std::size_t{5000}, std::size_t{100'000}}) {
        const AllocationProbe probe(failFrom);
        EXPECT_THROW(decoder.GetInfo(0), std::bad_alloc) << failFrom;
    }
    EXPECT_EQ(decoder.GetInfo(0).Width, 20000u);
}

TEST(PngHeader, OfAnotherDepthIsRefused) {
    const auto failure = [](std::uint32_t depth, std::uint32_t colorType) -> std::string {
        try {
            ET::Img::Png::Header{1, 1, depth, colorType}.GetImageInfo();
        } catch (const Exception& raised) {
            return raised.what();
        }
        return "none";
    };
    for (const std::uint32_t depth : {0u, 1u, 2u, 4u, 15u, 32u})
        EXPECT_EQ(failure(depth, 2), "unsupported bit_depth");
    for (const std::uint32_t colorType : {1u, 3u, 5u, 7u, 8u})
        EXPECT_EQ(failure(8, colorType), "color_type not supported");
    for (const std::uint32_t colorType : {0u, 2u, 4u, 6u})
        EXPECT_EQ(failure(16, colorType), "none");
}

TEST(PngDecode, AFileThatIsNamedAsABitmapIsFoundByItsContent) {
    const PngRecipe recipe{.width = 6, .height = 4, .colorType = 2};
    const auto stream = MakeShared<TestStream>(recipe.Build());
    ET::Img::LoadTarget target;
    target.context = MakeShared<TestContext>();
    SharedPtr<Data::ImageBase> image;
    std::int32_t index = ET::Img::ImageIndex::Default;
    EXPECT_THROW(ET::Img::DecodeByExtension("a.bmp", stream, target, index, image), Exception);
    stream->seek(0);
    index = ET::Img::ImageIndex::Default;
    const auto decoder = ET::Img::DecodeByContent(stream, target, index, image);
    EXPECT_TRUE(decoder.DynamicCast<ET::Img::PNGDecoder>());
    EXPECT_EQ(index, 1);
    EXPECT_EQ(image->GetWidth(), 6u);
}
