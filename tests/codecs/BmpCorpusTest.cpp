#include "tests/codecs/BmpLoad.h"
#include "tests/codecs/Corpus.h"
#include "tests/codecs/ReferencePicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace Quorvex;
namespace fs = std::filesystem;

namespace {

enum class Agreement { None, Colors, All };

// A colour under alpha 0 is not compared: this program keeps it readable, others make it black.
Agreement Compare(const BmpLoad& load, const ReferencePicture& reference) {
    if (load.image->GetWidth() != reference.width || load.image->GetHeight() != reference.height)
        return Agreement::None;
    const bool hasAlpha = load.image->HasAlpha != 0;
    Agreement agreement = Agreement::All;
    for (std::uint32_t y = 0; y < reference.height; ++y) {
        for (std::uint32_t x = 0; x < reference.width; ++x) {
            const std::uint32_t expected = reference.pixels[std::size_t(y) * reference.width + x];
            const std::uint32_t difference = load.At(x, y) ^ expected;
            if (hasAlpha && expected >> 24 == 0 && difference >> 24 == 0)
                continue;
            if ((difference & 0x00FFFFFF) != 0 && expected >> 24 != 0)
                return Agreement::None;
            if (hasAlpha && difference >> 24 != 0)
                agreement = Agreement::Colors;
        }
    }
    return agreement;
}

/// Which of the references the file decodes to, or else how decoding ended.
std::string Outcome(const Corpus::File& file, TestStream::Manner manner) {
    try {
        const BmpLoad load(Corpus::Content(file.path), manner);
        if (load.decoder->IsIncomplete())
            return "incomplete";
        for (const std::string& name : file.references) {
            const auto picture =
                ReadReferencePicture(Corpus::Root() / fs::path(file.path).parent_path() / "ref" / name);
            const Agreement agreement = picture ? Compare(load, *picture) : Agreement::None;
            if (agreement != Agreement::None)
                return (agreement == Agreement::All ? "" : "colours of ") + name;
        }
        return file.references.empty() ? "decodes" : "differs";
    } catch (const Exception& failure) {
        return std::string("fails: ") + failure.what();
    }
}

// Where this program's rules lead elsewhere than the makers of a file wanted.
const std::map<std::string, std::string> otherOutcomes = {
    // Compressions that no pixels can be had from, and a container of several bitmaps.
    {"bmp/valid/bmpsuite/q/rgb24jpeg.bmp", "fails: BI_JPEG or BCA_RLE24 is not supported"},
    {"bmp/valid/bmpsuite/q/rgb24rle24.bmp", "fails: BI_JPEG or BCA_RLE24 is not supported"},
    {"bmp/valid/zune-image/pal1hufflsb.bmp", "fails: BCA_HUFFMAN1D is not supported"},
    {"bmp/valid/bmpsuite/x/ba-bm.bmp", "fails: "},
    // The embedded profile swaps red and green; profiles are not applied.
    {"bmp/valid/bmpsuite/q/rgb24prof2.bmp", "differs"},
    // Green of 18 and of 12 bits is rounded to nearest here and cut off in the references.
    {"bmp/valid/bmpsuite/q/rgb32-7187.bmp", "differs"},
    {"bmp/valid/bmpsuite/q/rgba32-81284.bmp", "differs"},
    // Alpha is scaled as red is: a field narrower than red comes out low, a wider one wraps.
    {"bmp/valid/bmpsuite/q/rgba32-1010102.bmp", "colours of rgba32-1010102.png"},
    {"bmp/valid/image-rs/rgba16-1924.bmp", "colours of rgba16-1924.bmp.png"},
    {"bmp/valid/bmpsuite/q/rgba16-5551.bmp", "colours of rgba16-5551.png"},
};

class BmpCorpus : public testing::Test {
protected:
    void SetUp() override {
        if (Corpus::Root().empty())
            GTEST_SKIP() << "VARNOLITE_CORPUS does not name the folder of the shared files";
        ASSERT_FALSE(Corpus::Files("bmp").empty()) << Corpus::Root();
    }
};

} // namespace

TEST_F(BmpCorpus, ValidFilesDecodeToTheirReferences) {
    for (const Corpus::File& file : Corpus::Files("bmp")) {
        if (!file.isValid)
            continue;
        const std::string outcome = Outcome(file, TestStream::Manner::File);
        const auto other = otherOutcomes.find(file.path);
        if (other != otherOutcomes.end()) {
            EXPECT_EQ(outcome, other->second) << file.path;
        } else if (file.references.empty()) {
            EXPECT_EQ(outcome, "decodes") << file.path;
        } else {
            EXPECT_NE(std::count(file.references.begin(), file.references.end(), outcome), 0)
                << file.path << ": " << outcome;
        }
    }
}

TEST_F(BmpCorpus, EveryFileEndsTheSameWayFromFileAndFromMemory) {
    for (const Corpus::File& file : Corpus::Files("bmp"))
        EXPECT_EQ(Outcome(file, TestStream::Manner::File), Outcome(file, TestStream::Manner::Memory)) << file.path;
}
