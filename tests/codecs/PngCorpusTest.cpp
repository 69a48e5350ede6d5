#include "codecs/png/PNGDecoder.h"
#include "foundation/Exception.h"
#include "tests/codecs/Corpus.h"
#include "tests/codecs/DecoderLoad.h"
#include "tests/codecs/PngReference.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

PngReference Decode(const std::vector<std::uint8_t>& file, TestStream::Manner manner) {
    try {
        const DecoderLoad<ET::Img::PNGDecoder> load(file, manner);
        return {true, load.info.ColorType == Data::ColorTypeEnum::BGRAUInt16, load.info.Width, load.info.Height,
                load.Samples()};
    } catch (const Exception&) {
        return {};
    }
}

class PngCorpus : public testing::Test {
protected:
    void SetUp() override {
        if (Corpus::Root().empty())
            GTEST_SKIP() << "VARNOLITE_CORPUS does not name the folder of the shared files";
        ASSERT_FALSE(Corpus::Files("png").empty()) << Corpus::Root();
    }
};

} // namespace

TEST_F(PngCorpus, ValidFilesDecodeToThePixelsOfLibpng) {
    for (const Corpus::File& file : Corpus::Files("png")) {
        if (!file.isValid)
            continue;
        const auto content = Corpus::Content(file.path);
        const PngReference had = Decode(content, TestStream::Manner::File);
        EXPECT_TRUE(had.isDecoded) << file.path;
        EXPECT_TRUE(had == DecodePngByLibrary(content)) << file.path;
    }
}

TEST_F(PngCorpus, BrokenFilesAreRefusedUnlessTheirPixelsAreWhole) {
    for (const Corpus::File& file : Corpus::Files("png")) {
        if (file.isValid)
            continue;
        const auto content = Corpus::Content(file.path);
        const PngReference had = Decode(content, TestStream::Manner::File);
        // Here the damage is that of a colour profile.
        EXPECT_EQ(had.isDecoded, file.path == "png/broken/Pillow/unknown_compression_method.png") << file.path;
        EXPECT_TRUE(had == DecodePngByLibrary(content)) << file.path;
    }
}

TEST_F(PngCorpus, EveryFileEndsTheSameWayFromFileAndFromMemory) {
    for (const Corpus::File& file : Corpus::Files("png")) {
        const auto content = Corpus::Content(file.path);
        EXPECT_TRUE(Decode(content, TestStream::Manner::File) == Decode(content, TestStream::Manner::Memory))
            << file.path;
    }
}
