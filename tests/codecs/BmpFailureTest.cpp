#include "codecs/DecodeWithFactory.h"
#include "tests/codecs/BmpLoad.h"

#include <gtest/gtest.h>

#include <new>

using namespace Quorvex;

namespace {

BmpRecipe Compressed(std::uint32_t compression, std::uint32_t bits, std::uint32_t headerSize = 0x40) {
    return {.headerSize = headerSize,
            .bits = bits,
            .compression = compression,
            .palette = {0, 0xFFFFFF},
            .data = Bytes(64)};
}

/// A file whose headers are read as ever; there is no memory left for a block of its pixels.
class StreamWithoutMemory final : public Stream {
public:
    explicit StreamWithoutMemory(const Bytes& bytes) : m_bytes(bytes) {}
    std::uint64_t tell() const override { return m_bytes.tell(); }
    std::uint64_t size() const override { return m_bytes.size(); }
    void seek(std::uint64_t position) override { m_bytes.seek(position); }
    void read(void* destination, std::uint32_t byteCount) override { m_bytes.read(destination, byteCount); }
    StreamLock lock(std::uint32_t) override { throw std::bad_alloc(); }
    std::unique_ptr<Stream> Clone() const override { return nullptr; }

private:
    TestStream m_bytes;
};

} // namespace

TEST(BmpCompression, ValuesThatCannotBeDecodedFailWithTheirTexts) {
    EXPECT_EQ(LoadFailure(Compressed(3, 1).Build()), "BCA_HUFFMAN1D is not supported");
    EXPECT_EQ(LoadFailure(Compressed(3, 1, 0x28).Build()), "BCA_HUFFMAN1D is not supported");
    for (const std::uint32_t bits : {1u, 8u, 24u}) {
        EXPECT_EQ(LoadFailure(Compressed(4, bits).Build()), "BI_JPEG or BCA_RLE24 is not supported");
        EXPECT_EQ(LoadFailure(Compressed(5, bits).Build()), "BI_PNG is not supported");
        EXPECT_EQ(LoadFailure(Compressed(7, bits).Build()), "invalid compression");
        EXPECT_EQ(LoadFailure(Compressed(0xFFFFFFFF, bits).Build()), "invalid compression");
    }
}

TEST(BmpCompression, AcceptedValuesLoad) {
    for (const std::uint32_t compression : {0u, 1u, 2u, 6u})
        EXPECT_NO_THROW(BmpLoad(Compressed(compression, 1).Build())) << compression;
    for (const std::uint32_t bits : {2u, 4u, 8u, 16u, 24u, 32u})
        EXPECT_NO_THROW(BmpLoad(Compressed(3, bits).Build())) << bits;
}

TEST(BmpCompression, IsCheckedBehindTheHeaderPass) {
    ET::Img::BMPDecoder decoder(MakeShared<TestStream>(Compressed(5, 24).Build()));
    EXPECT_NO_THROW(decoder.GetInfo(0));
}

TEST(BmpCompression, IsCheckedBeforeThePalette) {
    BmpRecipe recipe = Compressed(5, 8);
    recipe.palette.clear();
    recipe.data.clear();
    EXPECT_EQ(LoadFailure(recipe.Build()), "BI_PNG is not supported");
}

TEST(BmpTarget, OfAnotherSizeOrTypeThanTheHeadersIsRefused) {
    // As if the file had been replaced between the two passes.
    const auto context = MakeShared<TestContext>();
    ET::Img::BMPDecoder decoder(MakeShared<TestStream>(BmpRecipe{.width = 2, .rows = {{1, 2, 3, 4, 5, 6}}}.Build()));
    EXPECT_THROW(decoder.Load(context->CreateImage(Data::ColorTypeEnum::BGRAUInt8, 1, 1), 0), Exception);
    EXPECT_THROW(decoder.Load(context->CreateImage(Data::ColorTypeEnum::BGRAUInt8, 2, 2), 0), Exception);
    EXPECT_THROW(decoder.Load(context->CreateImage(Data::ColorTypeEnum::BGRAUInt16, 2, 1), 0), Exception);
    EXPECT_THROW(decoder.Load(context->CreateImage(Data::ColorTypeEnum::UInt8, 2, 1), 0), Exception);
    EXPECT_TRUE(decoder.Load(context->CreateImage(Data::ColorTypeEnum::BGRAUInt8, 2, 1), 0));
    EXPECT_FALSE(decoder.IsIncomplete());
}

TEST(BmpOffset, BeyondTheFileIsIncomplete) {
    for (const std::uint32_t offset : {1000u, 0xFFFFFFFFu}) {
        BmpRecipe recipe{.rows = {{1, 2, 3}}, .offBits = offset};
        for (const auto manner : {TestStream::Manner::File, TestStream::Manner::Memory}) {
            const BmpLoad load(recipe.Build(), manner);
            EXPECT_TRUE(load.decoder->IsIncomplete());
            EXPECT_EQ(load.At(0, 0), 0u);
        }
    }
}

TEST(BmpOffset, IntoTheHeadersIsFollowed) {
    const BmpLoad load(BmpRecipe{.rows = {{1, 2, 3}}, .offBits = 2}.Build());
    EXPECT_FALSE(load.decoder->IsIncomplete());
    EXPECT_EQ(load.At(0, 0), 0xFF00003Au); // The size of the file, 58 bytes.
}

TEST(BmpOffset, ZeroCountsFromTheStartWithoutTheFileHeader) {
    // More than 8 bits and no offset: header size and four bytes for each colour used, from the start of the file.
    const BmpLoad load(BmpRecipe{.rows = {{1, 2, 3}}, .offBits = 0}.Build());
    EXPECT_EQ(load.At(0, 0), 0xFF000000u); // Byte 40 of the file lies in the resolutions.
}

TEST(BmpOffset, ColorsUsedWithoutAnOffsetAreCountedIn64Bits) {
    BmpRecipe recipe{.colorsUsed = 0x40000000, .rows = {{1, 2, 3}}, .hasFileHeader = false};
    EXPECT_TRUE(BmpLoad(recipe.Build()).decoder->IsIncomplete());
}

TEST(BmpMemory, ThatRunsOutInThePixelsIsNoIncompleteImage) {
    const BmpRecipe runLength{.bits = 8, .compression = 1, .palette = {0, 0xFFFFFF}, .data = {1, 1, 0, 1}};
    for (const BmpRecipe& recipe : {BmpRecipe{.rows = {{1, 2, 3}}}, runLength}) {
        const auto context = MakeShared<TestContext>();
        ET::Img::BMPDecoder decoder(MakeShared<StreamWithoutMemory>(recipe.Build()));
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        EXPECT_THROW(decoder.Load(context->CreateImage(info.ColorType, 1, 1), 0), std::bad_alloc) << recipe.compression;
        EXPECT_FALSE(decoder.IsIncomplete()) << recipe.compression;
    }
}
