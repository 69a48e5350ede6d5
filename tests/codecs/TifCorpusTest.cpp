#include "data/Image.h"
#include "tests/codecs/Corpus.h"
#include "tests/codecs/TifLoad.h"
#include "tests/codecs/TifPicture.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>

using namespace Quorvex;
namespace fs = std::filesystem;
using Bytes = TifRecipe::Bytes;

namespace {

/// How loading ends; the image itself is of no interest.
std::string Outcome(const Bytes& file, TestStream::Manner manner, std::uint32_t workerCount) {
    try {
        ET::Img::TIFDecoder decoder(MakeShared<TestStream>(file, manner));
        decoder.SetWorkerCount(workerCount);
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        decoder.Load(Data::CreateImage(info.ColorType, info.Width, info.Height), 0);
        return decoder.IsIncomplete() ? "incomplete" : "decodes";
    } catch (const std::exception& failure) {
        return std::string("fails: ") + failure.what();
    }
}

const char* const deflate = "fails: Deflate compression scheme is not supported";
const char* const other = "fails: compression scheme is not supported";
const char* const bigTiff = "fails: unknown tiff version";
const char* const planarYCbCr = "fails: YCbCr with PlanarConfiguartion==2 is not supported";

// Valid files that this program refuses by its rules, and one of which libraries too can read a part only.
const std::map<std::string, std::string> otherOutcomes = {
    {"Pillow/g4_orientation_3.tif", other},
    {"Pillow/g4_orientation_5.tif", other},
    {"Pillow/g4_orientation_7.tif", other},
    {"TwelveMonkeys/ccitt-too-many-changes.tif", other},
    // WebP, ZSTD, LZMA, JPEG XL and LERC.
    {"Pillow/hopper_webp.tif", other},
    {"exampletiffs/shapes_zstd.tif", other},
    {"image-tiff/int16_zstd.tif", other},
    {"imagecodecs/gray.lzma.u2.tif", other},
    {"imagecodecs/gray.zstd.u2.tif", other},
    {"imagecodecs/rgb.tiled.jpegxl.u1.tif", other},
    {"imagecodecs/rgb.tiled.lerc.u1.tif", other},
    {"imagecodecs/rgb.tiled.lzma.u1.tif", other},
    {"golang-image/bw-deflate.tiff", deflate},
    {"image-rs/rgbr4x4.hdr.tiff", deflate},
    {"image-tiff/random-fp16-pred2.tiff", deflate},
    {"image-tiff/seq-1c-64f-deflate-fpredict-afa8560e.tiff", deflate},
    {"imagecodecs/gray.contig.u1.tif", deflate},
    {"imagecodecs/gray.i1.tif", deflate},
    {"imagecodecs/gray.i2.tif", deflate},
    {"imagecodecs/gray.i4.tif", deflate},
    {"imagecodecs/gray.i8.tif", deflate},
    {"imagecodecs/gray.u4.tif", deflate},
    {"qtimageformats/multipage.tiff", deflate},
    {"rasterio/RGBA.uint16.tif", deflate},
    {"serenity/krita.tif", deflate},
    {"wuffs/pjw-thumbnail.tiff", deflate},
    {"oiio-images/text.tif", "fails: Thunderscan compression scheme is not supported"},
    {"image-tiff/logluv-3c-16b.tiff", "fails: SGI Log Luminance RLE compression scheme is not supported"},
    {"image-size/bigtiff-jpeg.tiff", bigTiff},
    {"image-tiff/BigTIFFMotorola.tif", bigTiff},
    {"image-tiff/seq-1c-8b-bigtiff-20f3db0c.tiff", bigTiff},
    {"image-tiff/seq-3c-16b-bigtiff-1b40ca6e.tiff", bigTiff},
    {"image-tiff/usda_naip_256_webp_z3.tif", bigTiff},
    {"TwelveMonkeys/planar-yuv410-jpeg-uncompressed.tif", planarYCbCr},
    {"TwelveMonkeys/planar-yuv420-jpeg-lzw.tif", planarYCbCr},
    {"TwelveMonkeys/planar-yuv422-bt601-uncompressed.tif", planarYCbCr},
    {"TwelveMonkeys/planar-yuv444-jpeg-lzw.tif", planarYCbCr},
    // Some rows of this fax have other lengths than they should.
    {"TwelveMonkeys/g3aoe.tif", "incomplete"},
};

std::string ShortName(const std::string& path) {
    const std::string front = "tiff/valid/";
    return path.compare(0, front.size(), front) == 0 ? path.substr(front.size()) : path;
}

class TifCorpus : public testing::Test {
protected:
    void SetUp() override {
        if (Corpus::Root().empty())
            GTEST_SKIP() << "VARNOLITE_CORPUS does not name the folder of the shared files";
        ASSERT_FALSE(Corpus::Files("tiff").empty()) << Corpus::Root();
    }
};

} // namespace

TEST_F(TifCorpus, ValidFilesDecode) {
    std::size_t found = 0;
    for (const Corpus::File& file : Corpus::Files("tiff")) {
        if (!file.isValid)
            continue;
        const auto exception = otherOutcomes.find(ShortName(file.path));
        found += exception != otherOutcomes.end() ? 1 : 0;
        EXPECT_EQ(Outcome(Corpus::Content(file.path), TestStream::Manner::File, 1),
                  exception != otherOutcomes.end() ? exception->second : "decodes")
            << file.path;
    }
    EXPECT_EQ(found, otherOutcomes.size());
}

TEST_F(TifCorpus, BrokenFilesEndTheSameWayInAnyManner) {
    for (const Corpus::File& file : Corpus::Files("tiff")) {
        if (file.isValid)
            continue;
        const Bytes content = Corpus::Content(file.path);
        EXPECT_EQ(Outcome(content, TestStream::Manner::File, 1), Outcome(content, TestStream::Manner::Memory, 8))
            << file.path;
    }
}

#ifdef VARNOLITE_HAS_TIFF

namespace {

/// Images that cannot be compared, with the reason.
const std::map<std::string, std::string> incomparable = {
    {"image-tiff/hpredict-1c-12b.tiff 0", "differences without compression, which libtiff leaves as they are"},
};

/// Null where it is refused or incomplete: other tests hold that to a list.
std::unique_ptr<TifLoad> Loaded(const Bytes& content, std::uint32_t index) {
    try {
        auto load = std::make_unique<TifLoad>(content, index);
        return load->decoder.IsIncomplete() ? nullptr : std::move(load);
    } catch (const Exception&) {
        return nullptr;
    }
}

} // namespace

TEST_F(TifCorpus, AllImagesAreWhatLibtiffAndTheFormulasMakeOfThem) {
    int firstOnes = 0, furtherOnes = 0;
    std::size_t found = 0;
    for (const Corpus::File& file : Corpus::Files("tiff")) {
        if (!file.isValid)
            continue;
        const Bytes content = Corpus::Content(file.path);
        std::uint32_t count = 1;
        try {
            count = ET::Img::TIFDecoder(MakeShared<TestStream>(content)).GetCount();
        } catch (const Exception&) {
            continue;
        }
        for (std::uint32_t index = 0; index < count; ++index) {
            const std::string name = ShortName(file.path) + " " + std::to_string(index);
            const std::unique_ptr<TifLoad> load = Loaded(content, index);
            if (load && incomparable.contains(name)) {
                ++found;
            } else if (load) {
                EXPECT_EQ(TifPicture(content, index).DifferenceTo(*load), "") << name;
                ++(index == 0 ? firstOnes : furtherOnes);
            }
        }
    }
    EXPECT_EQ(found, incomparable.size());
    EXPECT_GE(firstOnes, 120);
    EXPECT_GE(furtherOnes, 8);
}

#endif
