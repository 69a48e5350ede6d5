#include "tests/codecs/LibtiffFile.h"
#include "tests/codecs/TifLoad.h"

#include <gtest/gtest.h>

#include <algorithm>

using Bytes = TifRecipe::Bytes;

namespace {

TifRecipe Color() {
    TifRecipe recipe;
    recipe.width = 4;
    recipe.height = 2;
    recipe.samples = 3;
    recipe.photometric = 2;
    return recipe.Fill();
}

std::string FailureOfCompression(std::uint32_t compression) {
    TifRecipe recipe = Color();
    recipe.compression = compression;
    return TifFailure(recipe.Build());
}

TEST(TifFailure, AByteOrderThatIsNone) {
    Bytes file = Color().Build();
    for (const auto& mark : {std::pair{'I', 'M'}, {'M', 'I'}, {'B', 'M'}, {'i', 'i'}}) {
        file[0] = static_cast<std::uint8_t>(mark.first);
        file[1] = static_cast<std::uint8_t>(mark.second);
        EXPECT_EQ(TifFailure(file), "invalid byte order");
    }
}

TEST(TifFailure, AVersionThatIsNone) {
    Bytes file = Color().Build();
    // 43 is for files with offsets of 64 bits.
    for (const int version : {0, 41, 43}) {
        file[2] = static_cast<std::uint8_t>(version);
        EXPECT_EQ(TifFailure(file), "unknown tiff version");
    }
    TifRecipe recipe = Color();
    recipe.order = TifRecipe::ByteOrder::Big;
    Bytes big = recipe.Build();
    big[3] = 43;
    EXPECT_EQ(TifFailure(big), "unknown tiff version");
}

/// The first bytes of a file that is larger than any that can be read.
class HugeStream final : public Quorvex::Stream {
public:
    explicit HugeStream(Bytes first) : m_first(std::move(first)) {}

    std::uint64_t tell() const override { return m_position; }
    std::uint64_t size() const override { return std::uint64_t{5} << 30; }
    void seek(std::uint64_t position) override { m_position = position; }
    void read(void* destination, std::uint32_t byteCount) override {
        if (m_position + byteCount > m_first.size())
            throw std::runtime_error("the whole file was asked for");
        std::copy_n(m_first.begin() + static_cast<std::ptrdiff_t>(m_position), byteCount,
                    static_cast<std::uint8_t*>(destination));
        m_position += byteCount;
    }
    Quorvex::StreamLock lock(std::uint32_t byteCount) override { return {this, nullptr, byteCount}; }
    std::unique_ptr<Quorvex::Stream> Clone() const override { throw Quorvex::Exception(); }

private:
    Bytes m_first;
    std::uint64_t m_position = 0;
};

std::string FailureOfHugeFile(const Bytes& first) {
    try {
        const ET::Img::TIFDecoder decoder(Quorvex::MakeShared<HugeStream>(first));
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "no exception";
}

TEST(TifFailure, AHugeFileIsToldByItsFirstBytes) {
    EXPECT_EQ(FailureOfHugeFile({'I', 'I', 43, 0, 8, 0, 0, 0}), "unknown tiff version");
    EXPECT_EQ(FailureOfHugeFile({'M', 'M', 0, 43, 0, 8, 0, 0}), "unknown tiff version");
    EXPECT_EQ(FailureOfHugeFile({'P', 'K', 3, 4, 0, 0, 0, 0}), "invalid byte order");
    EXPECT_EQ(FailureOfHugeFile({'I', 'I', 42, 0, 8, 0, 0, 0}), "") << "offsets of 32 bits do not reach its end";
}

TEST(TifFailure, FilesOfAFewBytes) {
    EXPECT_EQ(TifFailure({}), "");
    EXPECT_EQ(TifFailure({'I'}), "");
    EXPECT_EQ(TifFailure({'B', 'M'}), "invalid byte order");
    EXPECT_EQ(TifFailure({'I', 'I', 42}), "");
    EXPECT_EQ(TifFailure({'I', 'I', 43, 0}), "unknown tiff version");
    EXPECT_EQ(TifFailure({'I', 'I', 42, 0, 8, 0}), "");
}

TEST(TifFailure, CompressionSchemesHaveTheirTexts) {
    EXPECT_EQ(FailureOfCompression(8), "Deflate compression scheme is not supported");
    EXPECT_EQ(FailureOfCompression(32946), "Deflate compression scheme is not supported");
    EXPECT_EQ(FailureOfCompression(32809), "Thunderscan compression scheme is not supported");
    EXPECT_EQ(FailureOfCompression(34676), "SGI Log Luminance RLE compression scheme is not supported");
    EXPECT_EQ(FailureOfCompression(34677), "SGI Log 24-bit packed compression scheme is not supported");
    for (const std::uint32_t other : {0u, 9u, 10u, 32766u, 32771u, 34661u, 50000u, 65535u})
        EXPECT_EQ(FailureOfCompression(other), "compression scheme is not supported") << other;
}

TEST(TifFailure, Group4EndsInTheGeneralText) {
    EXPECT_EQ(FailureOfCompression(4), "compression scheme is not supported");
}

TEST(TifFailure, JpegOfOtherDepths) {
    for (const std::uint32_t compression : {6u, 7u})
        for (const std::uint32_t bits : {1u, 4u, 12u, 16u}) {
            TifRecipe recipe = Color();
            recipe.bits = bits;
            recipe.compression = compression;
            EXPECT_EQ(TifFailure(recipe.Fill().Build()), "JPEG compression with BitsPerSample!=8 is not supported");
        }
}

TEST(TifFailure, YCbCrInPlanes) {
    for (const std::uint32_t compression : {1u, 5u, 32773u, 7u}) {
        TifRecipe recipe = Color();
        recipe.photometric = 6;
        recipe.compression = compression;
        recipe.isPlanar = true;
        EXPECT_EQ(TifFailure(recipe.Build()), "YCbCr with PlanarConfiguartion==2 is not supported");
    }
}

TEST(TifFailure, YCbCrOfOtherDepths) {
    for (const std::uint32_t bits : {4u, 10u, 16u}) {
        TifRecipe recipe = Color();
        recipe.photometric = 6;
        recipe.bits = bits;
        EXPECT_EQ(TifFailure(recipe.Fill().Build()), "YCbCr with BitsPerSample!=8 is not supported");
    }
}

TEST(TifFailure, YCbCrWithMoreSamples) {
    for (const std::uint32_t compression : {1u, 5u, 32773u, 7u}) {
        TifRecipe recipe = Color();
        recipe.photometric = 6;
        recipe.samples = 4;
        recipe.compression = compression;
        recipe.tags[338] = {3, {2}};
        EXPECT_EQ(TifFailure(recipe.Fill().Build()), "YCbCr with SamplesPerPixel!=3 is not supported");
    }
}

TEST(TifFailure, SamplesOfDifferentFormats) {
    for (const std::vector<std::uint32_t>& formats :
         {std::vector<std::uint32_t>{1, 1, 2}, {3, 1, 1}, {1, 2}, {2, 2, 4}}) {
        TifRecipe recipe = Color();
        recipe.bits = 32;
        recipe.Fill().tags[339] = {3, formats};
        const Bytes file = recipe.Build();
        EXPECT_EQ(TifFailure(file), "different values of SampleFormat are not supported");
#ifdef VARNOLITE_HAS_TIFF
        LibtiffFile::Format format;
        EXPECT_TRUE(LibtiffFile::Read(file, 0, format).empty()) << "the library refuses them too";
#endif
    }
    TifRecipe recipe = Color();
    recipe.tags[339] = {3, {1, 4, 1, 3}};
    EXPECT_EQ(TifFailure(recipe.Build()), "no exception") << "undefined is unsigned, and there are three samples";
}

TEST(TifFailure, AnUnsupportedSchemeStillTellsWhatImageItIs) {
    TifRecipe recipe = Color();
    recipe.compression = 8;
    ET::Img::TIFDecoder decoder(Quorvex::MakeShared<TestStream>(recipe.Build()));
    EXPECT_EQ(decoder.GetInfo(0).Width, 4u);
}

/// A picture that one tag makes impossible.
std::string FailureWith(std::uint16_t tag, const TifRecipe::Entry& entry, TifRecipe recipe = Color()) {
    recipe.tags[tag] = entry;
    return TifFailure(recipe.Build());
}

std::string FailureWithout(std::uint16_t tag) {
    TifRecipe recipe = Color();
    recipe.without = {tag};
    return TifFailure(recipe.Build());
}

TEST(TifFailure, ImagesWithoutASizeOrData) {
    for (const std::uint16_t tag : {std::uint16_t{256}, std::uint16_t{257}}) {
        EXPECT_EQ(FailureWith(tag, {4, {0}}), "");
        EXPECT_EQ(FailureWithout(tag), "");
        EXPECT_EQ(FailureWith(tag, {2, {4}}), "") << "a text is no number";
    }
    EXPECT_EQ(FailureWithout(273), "") << "no offsets";
}

TEST(TifFailure, SamplesThatNoImageHas) {
    EXPECT_EQ(FailureWith(258, {3, {0, 0, 0}}), "");
    EXPECT_EQ(FailureWith(258, {3, {65, 65, 65}}), "");
    EXPECT_EQ(FailureWith(258, {3, {8, 8, 16}}), "") << "different depths";
    EXPECT_EQ(FailureWith(277, {3, {0}}), "");
    EXPECT_EQ(FailureWith(339, {3, {5, 5, 5}}), "") << "complex integers";
    EXPECT_EQ(FailureWith(339, {3, {6, 6, 6}}), "") << "complex floats";
    EXPECT_EQ(FailureWith(339, {3, {3, 3, 3}}), "") << "floats of 8 bits";
    EXPECT_EQ(FailureWith(317, {3, {4}}), "") << "a predictor that nobody knows";
    EXPECT_EQ(FailureWith(317, {3, {3}}), "") << "the predictor of floats for integers";
}

TEST(TifFailure, ColoursThatLackSomething) {
    for (const std::uint32_t photometric : {5u, 6u, 8u}) {
        TifRecipe recipe;
        recipe.samples = 2;
        recipe.photometric = photometric;
        EXPECT_EQ(TifFailure(recipe.Fill().Build()), "") << "too few samples for " << photometric;
    }
    TifRecipe palette;
    palette.photometric = 3;
    palette.Fill();
    EXPECT_EQ(TifFailure(palette.Build()), "") << "no map";
    EXPECT_EQ(FailureWith(320, {3, std::vector<std::uint32_t>(767)}, palette), "") << "a map that is too short";
    palette.bits = 17;
    EXPECT_EQ(FailureWith(320, {3, std::vector<std::uint32_t>(768)}, palette.Fill()), "") << "too many indices";
    TifRecipe lab = Color();
    lab.photometric = 8;
    lab.bits = 32;
    EXPECT_EQ(TifFailure(lab.Fill().Build()), "");
    for (const std::uint32_t photometric : {9u, 10u, 32844u, 32845u}) {
        TifRecipe recipe = Color();
        recipe.photometric = photometric;
        EXPECT_EQ(TifFailure(recipe.Build()), "") << photometric;
    }
}

TEST(TifFailure, UnitsOfChrominanceThatNobodyHas) {
    TifRecipe recipe = Color();
    recipe.photometric = 6;
    for (const std::vector<std::uint32_t>& factors : {std::vector<std::uint32_t>{0, 1}, {3, 1}, {1, 8}, {1, 0}})
        EXPECT_EQ(FailureWith(530, {3, factors}, recipe), "");
    recipe.predictor = 2;
    EXPECT_EQ(FailureWith(530, {3, {2, 2}}, recipe), "") << "differences of units";
}

TEST(TifFailure, FaxCodesOfMoreThanABit) {
    for (const std::uint32_t compression : {2u, 3u})
        EXPECT_EQ(FailureOfCompression(compression), "") << compression;
}

} // namespace
