#include "codecs/DecodeWithFactory.h"
#include "tests/codecs/PngLoad.h"
#include "tests/codecs/PngRecipe.h"
#include "tests/codecs/ProcessorTime.h"
#include "tests/codecs/TestContext.h"
#include "tests/data/AllocationProbe.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace PngChunks;

namespace {

std::string Failure(const Bytes& file, TestStream::Manner manner = TestStream::Manner::File) {
    return Quorvex::Test::RaisedText([&] { const PngLoad load(file, manner); });
}

std::string HeaderFailure(const Bytes& file) {
    return Quorvex::Test::RaisedText([&] { ET::Img::PNGDecoder(MakeShared<TestStream>(file)).GetInfo(0); });
}

const Bytes end = Chunk("IEND", {});

Bytes Grey(const Bytes& rows) {
    return Chunk("IDAT", Deflated(rows));
}

} // namespace

TEST(PngFailure, OfOtherFiles) {
    EXPECT_EQ(Failure({}), "Not a PNG file");
    EXPECT_EQ(Failure({0x89, 'P', 'N', 'G', '\r', '\n', 0x1A}), "Not a PNG file");
    EXPECT_EQ(Failure({'B', 'M', 0, 0, 0, 0, 0, 0, 0, 0}), "Not a PNG file");
    const Bytes file = PngRecipe{}.Build();
    for (std::size_t i = 0; i < signature.size(); ++i) {
        Bytes other = file;
        other[i] ^= 0x20;
        EXPECT_EQ(Failure(other), "Not a PNG file") << i;
    }
}

TEST(PngFailure, WithoutAHeader) {
    EXPECT_EQ(HeaderFailure(signature), "");
    EXPECT_EQ(HeaderFailure(Joined({signature, end})), "");
    EXPECT_EQ(HeaderFailure(Joined({signature, Grey({0, 1}), end})), "");
}

TEST(PngFailure, OfHeadersThatCannotBe) {
    const auto failure = [](const Bytes& header) {
        return HeaderFailure(Joined({signature, header, Grey({0, 1}), end}));
    };
    EXPECT_EQ(failure(Header(1, 1, 8, 0)), "(nothing was raised)");
    EXPECT_EQ(failure(Header(0, 1, 8, 0)), "");
    EXPECT_EQ(failure(Header(1, 0, 8, 0)), "");
    EXPECT_EQ(failure(Header(1, 1, 3, 0)), "");
    EXPECT_EQ(failure(Header(1, 1, 4, 2)), "");
    EXPECT_EQ(failure(Header(1, 1, 16, 3)), "");
    EXPECT_EQ(failure(Header(1, 1, 8, 1)), "");
    EXPECT_EQ(failure(Header(1, 1, 8, 7)), "");
    EXPECT_EQ(failure(Header(0x80000000, 1, 8, 0)), "");
}

TEST(PngFailure, OfAPaletteThatIsMissingOrTooLong) {
    const auto failure = [](const Bytes& palette) {
        return Failure(Joined({signature, Header(1, 1, 1, 3), palette, Grey({0, 0}), end}));
    };
    EXPECT_EQ(failure({}), "");
    EXPECT_EQ(failure(Chunk("PLTE", {1, 2, 3, 4})), "");
    EXPECT_EQ(failure(Chunk("PLTE", Bytes(769, 0))), "");
    EXPECT_EQ(failure(Chunk("PLTE", {1, 2, 3, 4, 5, 6})), "(nothing was raised)");
}

TEST(PngFailure, OfUnknownChunksThatMatter) {
    PngRecipe recipe;
    recipe.extraChunks = Chunk("ABCD", {1});
    EXPECT_EQ(Failure(recipe.Build()), "");
}

TEST(PngFailure, ADamagedHeaderFailsInTheHeaders) {
    const Bytes file = PngRecipe{.width = 4, .height = 4}.Build();
    Bytes damaged = file;
    damaged[PositionOf(file, "IHDR") + 12] ^= 1;
    EXPECT_EQ(HeaderFailure(damaged), "");
}

TEST(PngFailure, DamagedImageDataFailTheLoadAndNotTheHeaders) {
    for (const bool isInterlaced : {false, true}) {
        PngRecipe recipe{.width = 40, .height = 30, .colorType = 2};
        recipe.isInterlaced = isInterlaced;
        Bytes file = recipe.Build();
        file[file.size() - 100] ^= 1;
        EXPECT_EQ(HeaderFailure(file), "(nothing was raised)");
        EXPECT_EQ(Failure(file), "");
        file = WithRightChecksums(file);
        EXPECT_EQ(HeaderFailure(file), "(nothing was raised)");
        EXPECT_EQ(Failure(file), "");
    }
}

TEST(PngFailure, TooFewRowsFail) {
    EXPECT_EQ(Failure(Joined({signature, Header(1, 2, 8, 0), Grey({0, 1}), end})), "");
    EXPECT_EQ(Failure(Joined({signature, Header(1, 1, 8, 0), Chunk("IDAT", {}), end})), "");
}

TEST(PngFailure, AnUnknownFilterFails) {
    EXPECT_EQ(Failure(Joined({signature, Header(1, 1, 8, 0), Grey({5, 1}), end})), "");
}

TEST(PngFailure, TheEndOfTheFileIsCheckedToo) {
    const Bytes start = Joined({signature, Header(1, 1, 8, 0), Grey({0, 1})});
    EXPECT_EQ(Failure(Joined({start, end})), "(nothing was raised)");
    EXPECT_EQ(Failure(start), "");
    Bytes damaged = end;
    damaged.back() ^= 1;
    EXPECT_EQ(Failure(Joined({start, damaged})), "");
}

TEST(PngFailure, NeverMarksTheFileAsIncomplete) {
    Bytes file = PngRecipe{.width = 9, .height = 9}.Build();
    file.resize(file.size() - 20);
    ET::Img::PNGDecoder decoder(MakeShared<TestStream>(file));
    const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Data::ColorBGRA<std::uint8_t>>>();
    image->Allocate(9, 9, 0, 0);
    EXPECT_THROW(decoder.Load(image, 0), Exception);
    EXPECT_FALSE(decoder.IsIncomplete());
}

TEST(PngFailure, AnImageOfAnotherKindIsNoTarget) {
    ET::Img::PNGDecoder decoder(MakeShared<TestStream>(PngRecipe{.width = 9, .height = 9}.Build()));
    const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Data::ColorBGRA<std::uint8_t>>>();
    image->Allocate(9, 8, 0, 0);
    EXPECT_EQ(Quorvex::Test::RaisedText([&] { decoder.Load(image, 0); }), "");
}

TEST(PngFailure, OfATruncatedFileAtEveryByte) {
    for (const PngRecipe& recipe : AllPngRecipes(7, 5)) {
        const Bytes file = recipe.Build();
        for (std::size_t length = 0; length < file.size(); ++length) {
            const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
            const auto manner = length % 2 == 0 ? TestStream::Manner::File : TestStream::Manner::Memory;
            ASSERT_EQ(Failure(cut, manner), length < signature.size() ? "Not a PNG file" : "")
                << recipe.Describe() << ", cut at " << length;
        }
    }
}

// One byte of each file at a time, every second time without checksums that give it away. With them the damage is
// refused, or is none of the pixels'; but libpng passes over damaged transparency.
TEST(PngFailure, OfOneWrongByteIsThatOfLibpng) {
    for (const PngRecipe& recipe : AllPngRecipes(7, 5)) {
        const Bytes file = recipe.Build();
        const std::size_t transparency = recipe.hasTransparency ? PositionOf(file, "tRNS") : file.size();
        std::uint32_t refused = 0;
        for (std::size_t i = 0; i < 2000; ++i) {
            Bytes damaged = file;
            const std::size_t position = i % file.size(), round = i / file.size();
            damaged[position] ^= static_cast<std::uint8_t>(1 + (i * 37 + round * 11) % 255);
            const bool isGivenAway = (i + round) % 2 != 0;
            if (!isGivenAway)
                damaged = WithRightChecksums(damaged);
            const PngReference had = DecodePngHere(damaged);
            refused += had.isDecoded ? 0 : 1;
            EXPECT_TRUE(had == DecodePngByLibrary(damaged)) << recipe.Describe() << ", damage " << i;
            const bool isTransparency =
                position >= transparency && position < transparency + 12 + recipe.Transparency().size();
            if (had.isDecoded && isGivenAway && !isTransparency) {
                EXPECT_EQ(had.samples, recipe.Expected()) << recipe.Describe() << ", damage " << i;
            }
        }
        EXPECT_GT(refused, 900u) << recipe.Describe();
    }
}

TEST(PngBounds, AFewBytesThatClaimBillionsOfPixelsAreRefusedAtOnce) {
    // The decoder's own rows and what it reads at once; an image of any of these sizes would be a thousand times that.
    constexpr std::size_t mostBytes = 1 << 20;
    const double start = ProcessorSeconds();
    for (const auto& [width, height] : {std::pair{60000u, 60000u}, {0x7FFFFFFFu, 0x7FFFFFFFu}, {0x7FFFFFFFu, 1u}}) {
        for (const std::uint32_t depth : {8u, 16u}) {
            for (const bool isInterlaced : {false, true}) {
                const Bytes file =
                    Joined({signature, Header(width, height, depth, 6, isInterlaced), Grey(Bytes(20, 0)), end});
                ET::Img::LoadTarget target;
                const auto context = MakeShared<TestContext>();
                target.context = context;
                SharedPtr<Data::ImageBase> image;
                std::int32_t index = 1;
                const AllocationProbe probe;
                EXPECT_EQ(Quorvex::Test::RaisedText([&] {
                              ET::Img::DecodeWithFactory(ET::Img::PNGDecoderFactory(), MakeShared<TestStream>(file),
                                                         target, index, image);
                          }),
                          "");
                EXPECT_EQ(context->colorImages, 0);
                EXPECT_LT(probe.GetTotal(), mostBytes);
            }
        }
    }
    // With the sanitizers it takes 0.0005.
    EXPECT_LT(ProcessorSeconds() - start, 0.1);
}

TEST(PngBounds, ManyPixelsOfOneColourAreNoClaim) {
    const Bytes rows(std::size_t{3000} * 3001, 0);
    const Bytes file = Joined({signature, Header(3000, 3000, 8, 0), Grey(rows), end});
    EXPECT_LT(file.size(), 10000u);
    EXPECT_EQ(Failure(file), "(nothing was raised)");
}
