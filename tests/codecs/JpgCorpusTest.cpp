#include "tests/codecs/Corpus.h"
#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgReference.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

namespace {

using Bytes = std::vector<std::uint8_t>;

class JpgCorpus : public testing::Test {
protected:
    void SetUp() override {
        if (Corpus::Root().empty())
            GTEST_SKIP() << "VARNOLITE_CORPUS names no folder with the shared pictures";
        ASSERT_FALSE(Corpus::Files("jpeg").empty()) << Corpus::Root();
    }
};

TEST_F(JpgCorpus, EveryFileEndsTheSameWayWithAnyNumberOfWorkers) {
    for (const Corpus::File& file : Corpus::Files("jpeg")) {
        const Bytes bytes = Corpus::Content(file.path);
        const JpgOutcome alone(bytes);
        EXPECT_TRUE(JpgOutcome(bytes, 2) == alone) << file.path;
        EXPECT_TRUE(JpgOutcome(bytes, 8) == alone) << file.path;
    }
}

/// Good files that end otherwise here than in other programs, and how. Three components are luminance and chrominance,
/// whatever an Adobe segment or their names say; a file without its Huffman tables, and one without an end, are
/// incomplete.
const std::map<std::string, std::string>& Peculiar() {
    static const std::map<std::string, std::string> outcomes{
        {"jpeg/valid/go-fuzz-corpus/video-001.221212.jpeg",
         "JPGDecoder failed, component 2 sampling factors must be 1"},
        {"jpeg/valid/go-fuzz-corpus/video-001.q50.410.progressive.jpeg",
         "JPGDecoder failed, component 1 sampling factors must be 1 or 2"},
        {"jpeg/valid/go-fuzz-corpus/video-001.q50.411.jpeg",
         "JPGDecoder failed, component 1 sampling factors must be 1 or 2"},
        {"jpeg/valid/go-fuzz-corpus/video-001.rgb.jpeg", "other colours"},
        {"jpeg/valid/imagecodecs/gray.u2.jpg", "SOF01 Extended sequential DCT with Huffman coding is not supported"},
        {"jpeg/valid/imagecodecs/rgba.u2.jpg", "SOF01 Extended sequential DCT with Huffman coding is not supported"},
        {"jpeg/valid/imageworsener/jpeg.jpg", "SOF09 Extended sequential DCT with arithmetic coding is not supported"},
        {"jpeg/valid/jpeg-decoder/16bit-qtables.jpg", "JPGDecoder failed, error code 550"},
        {"jpeg/valid/jpeg-decoder/mjpeg.jpg", "incomplete"},
        {"jpeg/valid/jpeg-decoder/partial_progressive.jpg", "incomplete"},
        {"jpeg/valid/jpeg-decoder/rgb.jpg", "other colours"},
        {"jpeg/valid/libjpeg-turbo/monkey12.jpg", "SOF01 Extended sequential DCT with Huffman coding is not supported"},
        {"jpeg/valid/libvips/sample-xyb.jpg", "SOF01 Extended sequential DCT with Huffman coding is not supported"},
        {"jpeg/valid/pylibjpeg-data/E1.JPG", "JPGDecoder failed, error code 550"},
        {"jpeg/valid/pylibjpeg-data/O1.JPG", "JPGDecoder failed, component 2 sampling factors must be 1"},
        {"jpeg/valid/serenity/12-bit.jpg", "SOF01 Extended sequential DCT with Huffman coding is not supported"},
        {"jpeg/valid/serenity/rgb_components.jpg", "other colours"},
        {"jpeg/valid/serenity/ycck-2111.jpg", "JPGDecoder failed, component 1 sampling factors must be 1"},
        {"jpeg/valid/wuffs/hippopotamus-bad-comment-length.jpeg", "no text"},
        {"jpeg/valid/wuffs/peacock.s-very-weird.jpeg",
         "JPGDecoder failed, component 1 sampling factors must be 1 or 2"},
        {"jpeg/valid/wuffs/peacock.s-weird.jpeg", "JPGDecoder failed, component 2 sampling factors must be 1"},
        {"jpeg/valid/zune-image/weid_sampling_factors.jpg",
         "JPGDecoder failed, component 2 sampling factors must be 1"},
    };
    return outcomes;
}

/// How a good file compares with libjpeg: empty where it agrees or cannot be compared.
std::string Difference(const Bytes& bytes) {
    const JpgOutcome had(bytes);
    if (!had.failure.empty())
        return had.failure;
    if (had.isIncomplete)
        return "incomplete";
    const Bytes wanted = DecodeJpgByLibrary(bytes);
    if (wanted.empty() || had.isWide || wanted.size() / 3 != had.samples.size() / 4)
        return "";
    for (std::size_t i = 0; i < had.samples.size() / 4; ++i)
        for (std::size_t c = 0; c < 3; ++c)
            if (std::abs(int(had.samples[4 * i + c]) - int(wanted[3 * i + c])) > 3)
                return "other colours";
    return "";
}

TEST_F(JpgCorpus, ValidFilesDecode) {
    if (!HasJpgLibrary())
        GTEST_SKIP() << "this build has no libjpeg to compare with";
    std::map<std::string, std::string> had;
    for (const Corpus::File& file : Corpus::Files("jpeg"))
        if (const std::string difference = file.isValid ? Difference(Corpus::Content(file.path)) : "";
            !difference.empty())
            had[file.path] = difference;
    EXPECT_EQ(had, Peculiar());
}

} // namespace
