#include "tests/codecs/Corpus.h"
#include "tests/codecs/PngLoad.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

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
        const PngReference had = DecodePngHere(content, TestStream::Manner::File);
        EXPECT_TRUE(had.isDecoded) << file.path;
        EXPECT_TRUE(had == DecodePngByLibrary(content)) << file.path;
    }
}

TEST_F(PngCorpus, BrokenFilesAreRefusedUnlessTheirPixelsAreWhole) {
    for (const Corpus::File& file : Corpus::Files("png")) {
        if (file.isValid)
            continue;
        const auto content = Corpus::Content(file.path);
        const PngReference had = DecodePngHere(content, TestStream::Manner::File);
        // Here the damage is that of a colour profile.
        EXPECT_EQ(had.isDecoded, file.path == "png/broken/Pillow/unknown_compression_method.png") << file.path;
        EXPECT_TRUE(had == DecodePngByLibrary(content)) << file.path;
    }
}

TEST_F(PngCorpus, EveryFileEndsTheSameWayFromFileAndFromMemory) {
    for (const Corpus::File& file : Corpus::Files("png")) {
        const auto content = Corpus::Content(file.path);
        EXPECT_TRUE(DecodePngHere(content, TestStream::Manner::File) ==
                    DecodePngHere(content, TestStream::Manner::Memory))
            << file.path;
    }
}
