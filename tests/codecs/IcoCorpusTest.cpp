#include "codecs/ico/ICODecoder.h"
#include "foundation/Exception.h"
#include "tests/codecs/Corpus.h"
#include "tests/codecs/DecoderLoad.h"
#include "tests/codecs/IcoReference.h"
#include "tests/codecs/ReferencePicture.h"

#include <gtest/gtest.h>

using namespace Quorvex;
namespace fs = std::filesystem;
using IcoLoad = DecoderLoad<ET::Img::ICODecoder>;

namespace {

std::vector<Corpus::File> AllFiles() {
    std::vector<Corpus::File> files = Corpus::Files("ico");
    const std::vector<Corpus::File> cursors = Corpus::Files("cur");
    files.insert(files.end(), cursors.begin(), cursors.end());
    return files;
}

class IcoCorpus : public testing::Test {
protected:
    void SetUp() override {
        if (Corpus::Root().empty())
            GTEST_SKIP() << "VARNOLITE_CORPUS does not name the folder of the shared files";
        ASSERT_FALSE(AllFiles().empty()) << Corpus::Root();
    }
};

/// Every image of a file: "decodes", or how it fails.
std::vector<std::string> Outcomes(const std::vector<std::uint8_t>& file, TestStream::Manner manner) {
    std::vector<std::string> outcomes;
    std::uint32_t count = 1;
    for (std::uint32_t i = 0; i < count; ++i) {
        try {
            count = std::min(ET::Img::ICODecoder(MakeShared<TestStream>(file, manner)).GetCount(), 100u);
            const IcoLoad load(file, manner, i);
            outcomes.push_back("decodes");
        } catch (const Exception& raised) {
            outcomes.push_back(std::string("fails: ") + raised.what());
        }
    }
    return outcomes;
}

} // namespace

// Their directories give the image a few bytes only, which others do not look at.
bool HasWrongSize(const Corpus::File& file) {
    return file.path == "ico/valid/Pillow/mask_1.cur" || file.path == "ico/valid/Pillow/mask_L.cur";
}

TEST_F(IcoCorpus, EveryImageOfTheValidFilesDecodesToItsPixels) {
    for (const Corpus::File& file : AllFiles()) {
        if (!file.isValid)
            continue;
        const auto content = Corpus::Content(file.path);
        if (HasWrongSize(file)) {
            EXPECT_EQ(Outcomes(content, TestStream::Manner::File), std::vector<std::string>{"fails: "}) << file.path;
            continue;
        }
        for (std::uint32_t i = 0; i < IconImageCount(content); ++i) {
            const IcoReference expected = DecodeIconImage(IconImageBytes(content, i));
            ASSERT_TRUE(expected.isDecoded) << file.path << " " << i;
            const IcoLoad load(content, TestStream::Manner::File, i);
            EXPECT_EQ(load.info.Width, expected.width) << file.path << " " << i;
            EXPECT_EQ(load.info.Height, expected.height) << file.path << " " << i;
            EXPECT_TRUE(load.Samples() == expected.samples) << file.path << " " << i;
        }
    }
}

// What the makers of the files want to see; a colour under alpha 0 is none.
TEST_F(IcoCorpus, FilesOfOneImageShowTheirReference) {
    int compared = 0;
    for (const Corpus::File& file : AllFiles()) {
        const auto content = Corpus::Content(file.path);
        if (!file.isValid || file.references.empty() || IconImageCount(content) != 1)
            continue;
        const auto picture =
            ReadReferencePicture(Corpus::Root() / fs::path(file.path).parent_path() / "ref" / file.references.front());
        ASSERT_TRUE(picture) << file.path;
        ++compared;
        const IcoLoad load(content);
        const auto samples = load.Samples();
        ASSERT_EQ(samples.size(), 4 * picture->pixels.size()) << file.path;
        for (std::size_t i = 0; i < picture->pixels.size(); ++i) {
            std::uint32_t pixel = 0;
            for (std::size_t c = 4; c-- > 0;)
                pixel = pixel << 8 | samples[4 * i + c];
            const bool isHidden = pixel >> 24 == 0 && picture->pixels[i] >> 24 == 0;
            ASSERT_TRUE(isHidden || pixel == picture->pixels[i]) << file.path << ", pixel " << i;
        }
    }
    EXPECT_GT(compared, 0);
}

TEST_F(IcoCorpus, EveryFileEndsTheSameWayFromFileAndFromMemory) {
    for (const Corpus::File& file : AllFiles()) {
        const auto content = Corpus::Content(file.path);
        EXPECT_EQ(Outcomes(content, TestStream::Manner::File), Outcomes(content, TestStream::Manner::Memory))
            << file.path;
    }
}
