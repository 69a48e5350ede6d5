#include "codecs/DecodeWithFactory.h"
#include "codecs/bmp/BMPDecoder.h"
#include "codecs/ico/EntryStream.h"
#include "codecs/ico/ICODecoder.h"
#include "codecs/png/PNGDecoder.h"
#include "data/StreamBuffer.h"
#include "tests/codecs/BmpRecipe.h"
#include "tests/codecs/DecoderLoad.h"
#include "tests/codecs/IcoRecipe.h"
#include "tests/codecs/IcoReference.h"
#include "tests/codecs/PngRecipe.h"
#include "tests/codecs/ProcessorTime.h"
#include "tests/codecs/TestContext.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace Quorvex;
using Quorvex::Test::RaisedText;
using IcoLoad = DecoderLoad<ET::Img::ICODecoder>;

namespace {

constexpr char nothing[] = "(nothing was raised)";

// Of the processor, for 65535 images that have to be measured: with the sanitizers it takes 1.7.
constexpr double directorySeconds = 6.0;

std::string OpeningFailure(const Bytes& file) {
    return RaisedText([&] { ET::Img::ICODecoder decoder(MakeShared<TestStream>(file)); });
}

std::string Failure(const Bytes& file, std::uint32_t index = 0) {
    return RaisedText([&] { const IcoLoad load(file, TestStream::Manner::File, index); });
}

std::string ImageFailure(const Bytes& image) {
    return Failure(IcoRecipe{.images = {{1, 1, 32, image}}}.Build());
}

Bytes Cut(const Bytes& file, std::size_t length) {
    return Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
}

/// How a load ends: the text of its failure, and blue, green and red of each pixel.
struct Ending {
    std::string failure;
    std::vector<std::uint16_t> colors;
};

template <class D>
Ending EndingOf(const Bytes& file, std::uint32_t index = 0) {
    Ending ending;
    ending.failure = RaisedText([&] {
        const std::vector<std::uint16_t> samples = DecoderLoad<D>(file, TestStream::Manner::Memory, index).Samples();
        for (std::size_t i = 0; i < samples.size(); ++i)
            if (i % 4 != 3)
                ending.colors.push_back(samples[i]);
    });
    return ending;
}

/// How an image ends that is given to the decoder of bitmaps with half of its rows, the others being the mask's. More
/// pixels than 2^24 are too many for the few bytes here.
Ending EndingAsBitmap(Bytes image) {
    if (image.size() < 12)
        return {};
    std::int32_t rows = 0;
    std::memcpy(&rows, image.data() + 8, 4);
    rows = (rows - (rows & 1)) / 2;
    std::memcpy(image.data() + 8, &rows, 4);
    std::uint64_t pixels = 0;
    const std::string failure = RaisedText([&] {
        const ET::Img::ImageInfo info = ET::Img::BMPDecoder(MakeShared<TestStream>(image)).GetInfo(0);
        pixels = std::uint64_t{info.Width} * info.Height;
    });
    if (failure != nothing)
        return {failure, {}};
    return pixels > 1 << 24 ? Ending{} : EndingOf<ET::Img::BMPDecoder>(image);
}

/// One image of each kind.
IcoRecipe MixedRecipe() {
    IcoRecipe recipe;
    for (const std::uint32_t bits : {1u, 4u, 8u, 16u, 24u, 32u})
        recipe.images.push_back(IconBitmap{.width = 5, .height = 3, .bits = bits}.ToImage());
    recipe.images.push_back(IconBitmap{.width = 5, .height = 3, .rows = -6}.ToImage());
    recipe.images.push_back({0, 0, 0, PngRecipe{.width = 5, .height = 3, .colorType = 6}.Build()});
    return recipe;
}

} // namespace

TEST(IcoFailure, OfFilesThatAreNoIcons) {
    const IcoRecipe::Image image = IconBitmap{}.ToImage();
    EXPECT_EQ(OpeningFailure(IcoRecipe{.reserved = 1, .images = {image}}.Build()), "not an icon or cursor file");
    EXPECT_EQ(OpeningFailure(IcoRecipe{.reserved = 256, .images = {image}}.Build()), "not an icon or cursor file");
    for (const std::uint16_t type : {0, 3, 256, 257})
        EXPECT_EQ(OpeningFailure(IcoRecipe{.type = type, .images = {image}}.Build()), "not an icon or cursor file");
    EXPECT_EQ(OpeningFailure(IcoRecipe{.type = 1, .images = {image}}.Build()), nothing);
    EXPECT_EQ(OpeningFailure(IcoRecipe{.type = 2, .images = {image}}.Build()), nothing);
}

TEST(IcoFailure, OfFilesWithoutAnImage) {
    EXPECT_EQ(OpeningFailure(IcoRecipe{}.Build()), "empty container!");
}

TEST(IcoFailure, OfADirectoryThatEndsEarly) {
    const Bytes file = MixedRecipe().Build();
    const std::size_t directoryEnd = 6 + 16 * MixedRecipe().images.size();
    for (std::size_t length = 0; length < directoryEnd; ++length)
        EXPECT_EQ(OpeningFailure(Cut(file, length)), "") << length;
    EXPECT_EQ(OpeningFailure(Cut(file, directoryEnd)), nothing);
}

TEST(IcoFailure, OfACountThatIsNotThatOfTheDirectory) {
    IcoRecipe recipe = MixedRecipe();
    const auto images = static_cast<std::uint16_t>(recipe.images.size());
    recipe.count = 0;
    EXPECT_EQ(OpeningFailure(recipe.Build()), "empty container!");
    recipe.count = 65535;
    EXPECT_EQ(OpeningFailure(recipe.Build()), "");
    // The images keep their places: all that are counted are there, and no others.
    for (std::uint16_t count = 1; count < images; ++count) {
        recipe.count = count;
        const Bytes file = recipe.Build();
        EXPECT_EQ(ET::Img::ICODecoder(MakeShared<TestStream>(file)).GetCount(), count);
        const IcoLoad last(file, TestStream::Manner::File, count - 1u);
        EXPECT_EQ(last.Samples(), DecodeIconImage(recipe.images[count - 1u].data).samples) << count;
        EXPECT_EQ(Failure(file, count), "") << count;
    }
    // What is counted too much is read as entries, though it is the first image.
    recipe.count = static_cast<std::uint16_t>(images + 1);
    const Bytes file = recipe.Build();
    EXPECT_EQ(ET::Img::ICODecoder(MakeShared<TestStream>(file)).GetCount(), images + 1u);
    EXPECT_EQ(Failure(file, 0), nothing);
    EXPECT_EQ(Failure(file, images), "");
}

TEST(IcoFailure, OfAnImageThatIsNotThere) {
    EXPECT_EQ(Failure(MixedRecipe().Build(), static_cast<std::uint32_t>(MixedRecipe().images.size())), "");
    EXPECT_EQ(Failure(MixedRecipe().Build(), 0xFFFFFFFF), "");
}

TEST(IcoFailure, OfAnImageWithoutBytes) {
    EXPECT_EQ(ImageFailure({}), "");
}

TEST(IcoFailure, OfAnImageTooShortForAHeight) {
    for (std::size_t length = 1; length < 40; ++length)
        EXPECT_EQ(ImageFailure(Cut(IconBitmap{}.Build(), length)), "") << length;
}

TEST(IcoFailure, OfAnImageThatBothDecodersRefuseIsThatOfBitmaps) {
    struct Case {
        std::uint32_t bits, compression;
        const char* failure;
    };
    for (const Case& refused :
         {Case{24, 4, "BI_JPEG or BCA_RLE24 is not supported"}, Case{24, 5, "BI_PNG is not supported"},
          Case{24, 7, "invalid compression"}, Case{24, 0xFFFFFFFF, "invalid compression"},
          Case{1, 3, "BCA_HUFFMAN1D is not supported"}, Case{3, 0, ""}, Case{0, 0, ""}}) {
        BmpRecipe recipe{.height = 2, .bits = refused.bits, .compression = refused.compression};
        recipe.hasFileHeader = false;
        recipe.data = Bytes(100, 0);
        for (const std::uint16_t type : {1, 2})
            EXPECT_EQ(Failure(IcoRecipe{.type = type, .images = {{1, 1, 32, recipe.Build()}}}.Build()), refused.failure)
                << refused.bits << " bits, compression " << refused.compression;
    }
    // The text for PNG would be another.
    EXPECT_EQ(ImageFailure(Bytes(100, 0xAB)), "");
    EXPECT_EQ(RaisedText([] { ET::Img::PNGDecoder(MakeShared<TestStream>(Bytes(100, 0xAB))).GetInfo(0); }),
              "Not a PNG file");
}

TEST(IcoFailure, OfADamagedPngHasNoText) {
    Bytes png = PngRecipe{.width = 20, .height = 20, .colorType = 6}.Build();
    png[png.size() - 50] ^= 1;
    EXPECT_EQ(ImageFailure(png), "");
}

TEST(IcoFailure, ABrokenImageFailsAlone) {
    IcoRecipe recipe = MixedRecipe();
    recipe.images[1].offset = 0x7FFFFFFF;
    recipe.images[3].size = 0x7FFFFFFF;
    recipe.images[5].data.assign(200, 0xCD);
    const Bytes file = recipe.Build();
    for (std::uint32_t i = 0; i < recipe.images.size(); ++i) {
        if (i == 1 || i == 3 || i == 5) {
            EXPECT_EQ(Failure(file, i), "") << i;
        } else {
            const IcoLoad load(file, TestStream::Manner::File, i);
            EXPECT_EQ(load.Samples(), DecodeIconImage(recipe.images[i].data).samples) << i;
        }
    }
}

TEST(IcoFailure, ATruncatedFileKeepsTheImagesThatAreWhole) {
    const IcoRecipe recipe = MixedRecipe();
    const Bytes file = recipe.Build();
    const std::size_t directoryEnd = 6 + 16 * recipe.images.size();
    for (std::size_t length = directoryEnd; length <= file.size(); ++length) {
        std::size_t end = directoryEnd;
        const Bytes cut = Cut(file, length);
        for (std::uint32_t i = 0; i < recipe.images.size(); ++i) {
            end += recipe.images[i].data.size();
            ASSERT_EQ(Failure(cut, i), end <= length ? nothing : "") << "image " << i << ", cut at " << length;
        }
    }
}

// Whatever is damaged: the images whose bytes and entries are whole come out as they were. What becomes of the one that
// is hit, plain code tells where it still is an image that such code reads.
TEST(IcoFailure, OneWrongByteDamagesOneImageAtMost) {
    const IcoRecipe recipe = MixedRecipe();
    const Bytes file = recipe.Build();
    std::vector<std::vector<std::uint16_t>> expected;
    for (const auto& image : recipe.images)
        expected.push_back(DecodeIconImage(image.data).samples);
    const std::size_t directoryEnd = 6 + 16 * recipe.images.size();
    std::uint32_t shown = 0, partlyShown = 0, refused = 0;
    for (std::size_t i = 0; i < 2000; ++i) {
        const std::size_t position = 6 + i % (file.size() - 6);
        Bytes damaged = file;
        damaged[position] ^= static_cast<std::uint8_t>(1 + i * 37 % 255);
        std::size_t begin = directoryEnd;
        for (std::uint32_t image = 0; image < expected.size(); ++image) {
            const std::size_t end = begin + recipe.images[image].data.size();
            const bool isHit =
                position < directoryEnd ? (position - 6) / 16 == image : position >= begin && position < end;
            begin = end;
            if (!isHit && i % 7 != image % 7)
                continue;
            const Bytes bytes = IconImageBytes(damaged, image);
            const IcoReference wanted = DecodeIconImage(bytes);
            ASSERT_TRUE(isHit || wanted.samples == expected[image]) << "image " << image << ", damage at " << position;
            if (wanted.isDecoded) {
                shown += isHit ? 1 : 0;
                const IcoLoad load(damaged, TestStream::Manner::Memory, image);
                ASSERT_EQ(load.Samples(), wanted.samples) << "image " << image << ", damage at " << position;
            } else if (bytes.empty() || image + 1 == expected.size()) {
                // Without bytes, or a PNG file.
                ++refused;
                ASSERT_EQ(Failure(damaged, image), "") << "image " << image << ", damage at " << position;
            } else {
                // Another kind of bitmap, one that ends early, or none.
                const Ending ending = EndingOf<ET::Img::ICODecoder>(damaged, image);
                const Ending alone = EndingAsBitmap(bytes);
                ASSERT_EQ(ending.failure, alone.failure) << "image " << image << ", damage at " << position;
                ASSERT_EQ(ending.colors, alone.colors) << "image " << image << ", damage at " << position;
                ++(ending.failure == nothing ? partlyShown : refused);
            }
        }
    }
    EXPECT_GT(shown, 500u);
    EXPECT_GT(partlyShown, 5u);
    EXPECT_GT(refused, 100u);
}

TEST(IcoFailure, OneWrongByteOfAnyImagesHeaderLeavesTheOthersToOpen) {
    for (std::size_t i = 0; i < 2000; ++i) {
        IcoRecipe recipe = MixedRecipe();
        IcoRecipe::Image& image = recipe.images[i % recipe.images.size()];
        image.width = 0;
        const std::size_t position = i / recipe.images.size() % std::min<std::size_t>(image.data.size(), 60);
        image.data[position] ^= static_cast<std::uint8_t>(1 + i * 91 % 255);
        EXPECT_EQ(OpeningFailure(recipe.Build()), nothing) << i;
    }
}

TEST(IcoBounds, AFewBytesThatClaimBillionsOfPixelsAreRefusedAtOnce) {
    for (const std::uint32_t bits : {1u, 8u, 32u}) {
        BmpRecipe bitmap{.width = 60000, .height = 120000, .bits = bits, .colorsUsed = 1};
        bitmap.hasFileHeader = false;
        bitmap.data = {0};
        ET::Img::LoadTarget target;
        const auto context = MakeShared<TestContext>();
        target.context = context;
        const auto file = IcoRecipe{.images = {{32, 32, 32, bitmap.Build()}}}.Build();
        SharedPtr<Data::ImageBase> image;
        std::int32_t index = 0;
        EXPECT_EQ(RaisedText([&] {
                      ET::Img::DecodeWithFactory(ET::Img::ICODecoderFactory(), MakeShared<TestStream>(file), target,
                                                 index, image);
                  }),
                  "");
        EXPECT_EQ(context->colorImages, 0);
    }
}

TEST(IcoBounds, ADirectoryOf65535ImagesIsFine) {
    constexpr std::uint32_t count = 65535;
    for (const Bytes& image : {IconBitmap{.width = 4, .height = 4}.Build(), Bytes(100, 0xAB),
                               PngRecipe{.width = 4, .height = 4, .colorType = 6}.Build()}) {
        IcoRecipe recipe;
        // All of them name the first one's bytes, and none its size.
        for (std::uint32_t i = 0; i < count; ++i)
            recipe.images.push_back({0, 0, 0, i == 0 ? image : Bytes(), static_cast<std::uint32_t>(image.size()),
                                     static_cast<std::uint32_t>(6 + 16 * count)});
        const Bytes file = recipe.Build();
        const double start = ProcessorSeconds();
        ET::Img::ICODecoder decoder(MakeShared<TestStream>(file));
        EXPECT_EQ(decoder.GetCount(), count);
        EXPECT_EQ(decoder.GetDefaultIndex(), 0u);
        EXPECT_LT(ProcessorSeconds() - start, directorySeconds);
        const IcoReference expected = DecodeIconImage(image);
        if (expected.isDecoded)
            EXPECT_EQ(IcoLoad(file, TestStream::Manner::File, count - 1).Samples(), expected.samples);
        else
            EXPECT_EQ(Failure(file, count - 1), "");
    }
}

TEST(IcoBounds, OfADirectoryThatTellsAllSizesNoImageIsRead) {
    IcoRecipe recipe;
    for (std::uint32_t i = 0; i < 65535; ++i)
        recipe.images.push_back(
            {static_cast<std::uint8_t>(i % 255 + 1), static_cast<std::uint8_t>(i % 200 + 1), 8, {}});
    recipe.images[50000].height = 255;
    const Bytes file = recipe.Build();
    const auto stream = MakeShared<TestStream>(file);
    EXPECT_EQ(ET::Img::ICODecoder(stream).GetDefaultIndex(), 50000u);
    EXPECT_EQ(stream->bytesRead, file.size());
}

// Each image is a PNG file in whose first chunk, to be skipped, lie all that follow.
TEST(IcoBounds, ImagesInsideOfEachOtherAreMeasuredInProportionToTheFile) {
    using namespace PngChunks;
    constexpr std::uint32_t count = 4000, step = 8 + 25 + 8;
    const std::uint32_t first = 6 + 16 * count, end = first + step * count + 64;
    IcoRecipe recipe;
    Bytes nested;
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint32_t offset = first + i * step;
        recipe.images.push_back({0, 0, 0, {}, end - offset, offset});
        Bytes chunk = Chunk("teSt", {});
        const std::uint32_t length = end - offset - step - 4;
        for (std::uint32_t byte = 0; byte < 4; ++byte)
            chunk[byte] = static_cast<std::uint8_t>(length >> (24 - 8 * byte));
        chunk.resize(8);
        for (const Bytes& part : {signature, Header(9, 9, 8, 6), chunk})
            nested.insert(nested.end(), part.begin(), part.end());
    }
    Bytes file = recipe.Build();
    file.insert(file.end(), nested.begin(), nested.end());
    file.resize(end);
    const auto stream = MakeShared<TestStream>(file);
    EXPECT_EQ(ET::Img::ICODecoder(stream).GetCount(), count);
    EXPECT_LT(stream->bytesRead, 4 * file.size());
}

TEST(IcoEntryStream, IsAPartOfTheFileAndNoMore) {
    TestStream file(Bytes{0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    std::uint64_t budget = 100;
    ET::Img::Ico::EntryStream stream(file, 3, 4, budget);
    EXPECT_EQ(stream.size(), 4u);
    std::uint8_t bytes[4] = {};
    stream.read(bytes, 3);
    EXPECT_EQ(bytes[0], 3);
    EXPECT_EQ(bytes[2], 5);
    EXPECT_EQ(stream.tell(), 3u);
    EXPECT_EQ(RaisedText([&] { stream.read(bytes, 2); }), "");
    EXPECT_EQ(stream.tell(), 3u);
    stream.seek(5);
    EXPECT_EQ(RaisedText([&] { stream.read(bytes, 1); }), "");
    stream.seek(1);
    StreamBuffer buffer(stream.lock(3));
    EXPECT_EQ(buffer.Take(3)[2], 6);
    EXPECT_EQ(budget, 94u);
    EXPECT_EQ(RaisedText([&] { stream.Clone(); }), "");
    EXPECT_EQ(RaisedText([&] { ET::Img::Ico::EntryStream(file, 7, 4, budget); }), "");
    EXPECT_EQ(RaisedText([&] { ET::Img::Ico::EntryStream(file, 0xFFFFFFFF, 0xFFFFFFFF, budget); }), "");
}

TEST(IcoEntryStream, EndsWithItsBudget) {
    TestStream file(Bytes(10, 7));
    std::uint64_t budget = 5;
    ET::Img::Ico::EntryStream stream(file, 0, 10, budget);
    std::uint8_t bytes[10] = {};
    stream.read(bytes, 4);
    EXPECT_EQ(RaisedText([&] { stream.read(bytes, 2); }), "");
    stream.read(bytes, 1);
    EXPECT_EQ(budget, 0u);
}
