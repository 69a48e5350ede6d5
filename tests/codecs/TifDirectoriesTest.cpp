#include "codecs/DecodeWithFactory.h"
#include "data/Image.h"
#include "tests/codecs/TestContext.h"
#include "tests/codecs/TifLoad.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using Bytes = TifRecipe::Bytes;

namespace {

TifRecipe Grey(std::uint32_t width, std::uint8_t value) {
    TifRecipe recipe;
    recipe.width = width;
    recipe.values.assign(width, value);
    return recipe;
}

std::vector<TifRecipe> Three() {
    return {Grey(1, 10), Grey(2, 20), Grey(3, 30)};
}

std::uint32_t CountOf(const Bytes& file) {
    return ET::Img::TIFDecoder(MakeShared<TestStream>(file)).GetCount();
}

void Put(Bytes& file, std::size_t place, std::uint32_t number) {
    Bytes bytes;
    PutNumber(bytes, TifRecipe::ByteOrder::Little, number, 4);
    std::copy(bytes.begin(), bytes.end(), file.begin() + static_cast<std::ptrdiff_t>(place));
}

std::uint32_t Get(const Bytes& file, std::size_t place, unsigned byteCount) {
    std::uint32_t number = 0;
    for (unsigned i = byteCount; i-- != 0;)
        number = number << 8 | file[place + i];
    return number;
}

/// Where the links of the file's directories lie, the one in its head first.
std::vector<std::size_t> LinksOf(const Bytes& file) {
    std::vector<std::size_t> links{4};
    while (const std::uint32_t directory = Get(file, links.back(), 4))
        links.push_back(directory + 2 + 12 * Get(file, directory, 2));
    return links;
}

TEST(TifDirectories, TheFactoryIsTheLastAndNamesItsFiles) {
    const auto& registry = ET::Img::GetCodecRegistry();
    const ET::Img::TIFDecoderFactory factory;
    EXPECT_EQ(factory.GetFilePattern(), String(u"*.tif;*.tiff"));
    EXPECT_EQ(registry.back()->GetFilePattern(), factory.GetFilePattern());
    EXPECT_TRUE(ET::Img::MatchesPattern(factory.GetFilePattern(), String(u"Scan.TIFF")));
    const std::u16string_view german = ET::Img::TIFDecoderFactory::germanText;
    EXPECT_EQ(german, u"TIF-Dateien (*.tif;*.tiff)");
    EXPECT_EQ(std::u16string_view(ET::Img::TIFDecoderFactory::englishText), u"TIF files (*.tif;*.tiff)");
}

TEST(TifDirectories, AFileOfThreeHasThreeImages) {
    const Bytes file = TifRecipe::Build(Three());
    EXPECT_EQ(CountOf(file), 3u);
    for (std::uint32_t i = 0; i < 3; ++i)
        EXPECT_EQ(TifLoad(file, i).Samples<std::uint8_t>(), Bytes(i + 1, static_cast<std::uint8_t>(10 * (i + 1))));
}

TEST(TifDirectories, TheFirstAndTheLastImageHaveIndicesOfTheirOwn) {
    const Bytes file = TifRecipe::Build(Three());
    for (const auto& [asked, wanted] : {std::pair{0, 1}, {-1, 3}}) {
        ET::Img::LoadTarget target;
        target.context = MakeShared<TestContext>();
        SharedPtr<Data::ImageBase> image;
        std::int32_t index = asked;
        ET::Img::DecodeWithFactory(ET::Img::TIFDecoderFactory(), MakeShared<TestStream>(file), target, index, image);
        EXPECT_EQ(index, wanted);
        EXPECT_EQ(image->GetWidth(), static_cast<std::uint32_t>(wanted));
    }
}

TEST(TifDirectories, AnIndexBehindTheLastFails) {
    const Bytes file = TifRecipe::Build(Three());
    ET::Img::TIFDecoder decoder(MakeShared<TestStream>(file));
    EXPECT_THROW(decoder.GetInfo(3), Exception);
    EXPECT_THROW(decoder.GetInfo(0xFFFFFFFF), Exception);
}

TEST(TifDirectories, AChainThatGoesRoundEndsWithWhatWasCounted) {
    const Bytes file = TifRecipe::Build(Three());
    const std::vector<std::size_t> links = LinksOf(file);
    ASSERT_EQ(links.size(), 4u);
    for (std::size_t target = 0; target < 3; ++target) {
        Bytes round = file;
        Put(round, links[3], Get(file, links[target], 4));
        EXPECT_EQ(CountOf(round), 3u) << "back to " << target;
        EXPECT_EQ(TifLoad(round, 2).Samples<std::uint8_t>(), Bytes(3, 30));
    }
    Bytes self = file;
    Put(self, links[1], Get(file, links[0], 4));
    EXPECT_EQ(CountOf(self), 1u) << "the first leads to itself";
}

TEST(TifDirectories, LongChainsAreCountedWhereverTheyGoRound) {
    for (const std::size_t count : {1u, 2u, 3u, 4u, 7u, 8u, 9u, 31u, 33u}) {
        const Bytes file = TifRecipe::Build(std::vector<TifRecipe>(count, Grey(1, 1)));
        EXPECT_EQ(CountOf(file), count);
        const std::vector<std::size_t> links = LinksOf(file);
        for (std::size_t target = 0; target < count; ++target) {
            Bytes round = file;
            Put(round, links[count], Get(file, links[target], 4));
            EXPECT_EQ(CountOf(round), count) << "back to " << target;
        }
    }
}

TEST(TifDirectories, ALinkBeyondTheFileEndsTheChain) {
    Bytes file = TifRecipe::Build(Three());
    const std::vector<std::size_t> links = LinksOf(file);
    for (const std::uint32_t target : {static_cast<std::uint32_t>(file.size()), 0xFFFFFFFFu, 0xFFFFFFFEu}) {
        Put(file, links[2], target);
        EXPECT_EQ(CountOf(file), 2u);
    }
}

TEST(TifDirectories, AFileThatEndsBeforeALinkEndsTheChain) {
    Bytes file = TifRecipe::Build(Three());
    file.resize(LinksOf(file)[2] + 2);
    EXPECT_EQ(CountOf(file), 2u);
}

TEST(TifDirectories, NoDirectoryIsNoImage) {
    Bytes file = Grey(1, 1).Build();
    Put(file, 4, 0);
    EXPECT_EQ(CountOf(file), 0u);
    EXPECT_EQ(TifFailure(file), "");
}

TEST(TifDirectories, AFirstDirectoryBeyondTheFileFails) {
    Bytes file = Grey(1, 1).Build();
    Put(file, 4, 0xFFFFFFF0);
    EXPECT_EQ(TifFailure(file), "");
}

TEST(TifDirectories, ADirectoryOf65535EntriesIsRead) {
    Bytes file = Grey(1, 77).Build();
    const std::uint32_t directory = Get(file, 4, 4), count = Get(file, directory, 2);
    const Bytes entries(file.begin() + directory + 2, file.begin() + directory + 2 + 12 * count);
    Put(file, 4, static_cast<std::uint32_t>(file.size()));
    PutNumber(file, TifRecipe::ByteOrder::Little, 65535, 2);
    file.insert(file.end(), entries.begin(), entries.end());
    // Numbers of 16 bits with tags that nobody knows, and no directory behind.
    for (std::uint32_t i = count; i < 65535; ++i)
        for (const std::uint8_t byte : {0xF0, 0xFD, 3, 0, 1, 0, 0, 0, 7, 0, 0, 0})
            file.push_back(byte);
    file.resize(file.size() + 4);
    EXPECT_EQ(TifLoad(file).Samples<std::uint8_t>(), Bytes{77});
}

TEST(TifDirectories, ACountOfEntriesThatReachesBeyondTheFileFails) {
    Bytes file = Grey(1, 1).Build();
    const std::uint32_t directory = Get(file, 4, 4);
    file[directory] = file[directory + 1] = 0xFF;
    EXPECT_EQ(TifFailure(file), "");
}

TEST(TifDirectories, AValueBeyondTheFileFailsWhereItIsNeeded) {
    for (const std::uint16_t tag : {std::uint16_t{256}, std::uint16_t{258}, std::uint16_t{273}, std::uint16_t{279}}) {
        TifRecipe recipe = Grey(1, 1);
        recipe.tags[tag] = {4, {0xFFFFFFF0}};
        Bytes file = recipe.Build();
        const std::uint32_t directory = Get(file, 4, 4);
        for (std::uint32_t i = 0; i < Get(file, directory, 2); ++i) {
            const std::size_t entry = directory + 2 + 12 * i;
            if (Get(file, entry, 2) == tag)
                Put(file, entry + 4, 1000);
        }
        EXPECT_EQ(TifFailure(file), "") << tag;
    }
}

TEST(TifDirectories, AValueBeyondTheFileThatNobodyNeedsDoesNoHarm) {
    TifRecipe recipe = Grey(1, 5);
    recipe.tags[270] = {4, {0xFFFFFFF0, 1, 2, 3}};
    Bytes file = recipe.Build();
    const std::uint32_t directory = Get(file, 4, 4);
    for (std::uint32_t i = 0; i < Get(file, directory, 2); ++i)
        if (Get(file, directory + 2 + 12 * i, 2) == 270)
            Put(file, directory + 2 + 12 * i + 8, 0xFFFFFFF0);
    EXPECT_EQ(TifLoad(file).Samples<std::uint8_t>(), Bytes{5});
}

TEST(TifDirectories, NumbersOfAnyWidthServe) {
    for (const std::uint16_t type : {std::uint16_t{1}, std::uint16_t{3}, std::uint16_t{4}, std::uint16_t{13}}) {
        TifRecipe recipe = Grey(9, 5);
        recipe.tags[256] = {type, {9}};
        recipe.tags[277] = {type, {1}};
        EXPECT_EQ(TifLoad(recipe.Build()).Samples<std::uint8_t>(), Bytes(9, 5)) << type;
    }
}

} // namespace

// Offsets lead anywhere, so that a file is read whole; but once, and after the pixels its bytes are not kept.
TEST(TifDirectories, BothPassesReadTheFileOnce) {
    TifRecipe recipe;
    recipe.width = 9;
    recipe.height = 5;
    const TifRecipe::Bytes file = recipe.Fill().Build();
    const auto stream = Quorvex::MakeShared<TestStream>(file);
    ET::Img::TIFDecoder decoder(stream);
    const ET::Img::ImageInfo info = decoder.GetInfo(0);
    EXPECT_EQ(decoder.GetInfo(0).Width, 9u);
    const auto image = Quorvex::Data::CreateImage(info.ColorType, info.Width, info.Height);
    EXPECT_EQ(decoder.Load(image, 0), image);
    constexpr std::uint64_t markBytes = 4;
    EXPECT_EQ(stream->bytesRead, file.size() + markBytes);
    EXPECT_EQ(decoder.GetInfo(0).Height, 5u);
    EXPECT_EQ(stream->bytesRead, 2 * (file.size() + markBytes));
}
