#include "tests/codecs/Corpus.h"
#include "tests/codecs/LibtiffFile.h"
#include "tests/codecs/TifLoad.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using namespace Quorvex;
namespace fs = std::filesystem;
using Bytes = TifRecipe::Bytes;

namespace {

std::string Outcome(const Bytes& file, TestStream::Manner manner, std::uint32_t workerCount) {
    try {
        const TifLoad load(file, 0, workerCount, manner);
        return load.decoder.IsIncomplete() ? "incomplete" : "decodes";
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

/// Sample s of a pixel, as libtiff's rows hold it: numbers of whole words in the order of the processor, others packed
/// from the highest bit on, those of 24 bits in the order of the file.
std::uint64_t SampleOf(const Bytes& rows, const LibtiffFile::Format& format, bool isFileBigEndian, std::size_t x,
                       std::size_t y, std::size_t s) {
    const std::size_t together = format.isPlanar ? 1 : format.samples;
    const std::size_t rowBytes = (format.width * together * format.bits + 7) / 8;
    const std::size_t row = (format.isPlanar ? s * format.height : 0) + y;
    const std::size_t bit = row * rowBytes * 8 + (x * together + (format.isPlanar ? 0 : s)) * format.bits;
    std::uint64_t value = 0;
    if (format.bits % 8 != 0) {
        for (std::size_t i = bit; i < bit + format.bits; ++i)
            value = value << 1 | (rows[i / 8] >> (7 - i % 8) & 1);
        return value;
    }
    const std::size_t bytes = format.bits / 8;
    for (std::size_t i = 0; i < bytes; ++i)
        value |= std::uint64_t{rows[bit / 8 + i]} << 8 * (bytes == 3 && isFileBigEndian ? bytes - 1 - i : i);
    return value;
}

/// The channel's bits for a sample that keeps or widens its number.
std::uint64_t Widened(std::uint64_t value, unsigned bits, unsigned channelBits) {
    if (bits == channelBits)
        return value;
    const auto largest = static_cast<long double>((std::uint64_t{1} << bits) - 1);
    const auto full = static_cast<long double>(~std::uint64_t{0} >> (64 - channelBits));
    return static_cast<std::uint64_t>(static_cast<long double>(value) * full / largest + 0.5L);
}

/// The channels of the image are those samples, which have no colours to be converted.
bool IsComparable(const LibtiffFile::Format& format, const TifLoad& load) {
    const bool isPlain = format.photometric <= 2 && format.sampleFormat <= 3 && format.compression != 6 &&
                         format.compression != 7 && format.samples <= 4 && format.bits <= 32;
    return isPlain && (format.sampleFormat != 3 || format.bits == 32) &&
           (format.sampleFormat != 2 || format.bits % 8 == 0) && load.image->HasAlpha == 0;
}

} // namespace

TEST_F(TifCorpus, SamplesAreThoseThatLibtiffReads) {
    int compared = 0;
    for (const Corpus::File& file : Corpus::Files("tiff")) {
        if (!file.isValid)
            continue;
        const Bytes content = Corpus::Content(file.path);
        // Uncompressed differences, which libtiff leaves as they are.
        const bool hasDifferences = ShortName(file.path) == "image-tiff/hpredict-1c-12b.tiff";
        if (hasDifferences || Outcome(content, TestStream::Manner::Memory, 2) != "decodes")
            continue;
        const TifLoad load(content);
        LibtiffFile::Format format;
        const Bytes rows = LibtiffFile::Read(content, 0, format);
        if (rows.empty() || !IsComparable(format, load))
            continue;
        ++compared;
        const unsigned channelBits = format.bits <= 8 ? 8 : format.bits <= 16 ? 16 : 32;
        const Bytes memory = load.Memory();
        const std::size_t channels = format.samples == 1 ? 1 : 4, bytes = channelBits / 8;
        bool isSame = true;
        for (std::size_t y = 0; y < format.height && isSame; ++y)
            for (std::size_t x = 0; x < format.width && isSame; ++x)
                for (std::size_t s = 0; s < std::min<std::size_t>(format.samples, 3); ++s) {
                    std::uint64_t wanted =
                        Widened(SampleOf(rows, format, content[0] == 'M', x, y, s), format.bits, channelBits);
                    if (format.photometric == 0 && format.sampleFormat != 3)
                        wanted = ~wanted & (~std::uint64_t{0} >> (64 - channelBits));
                    std::uint64_t had = 0;
                    const std::size_t channel = format.samples >= 3 ? 2 - s : s;
                    // Of grey with alpha the second sample is no colour.
                    if (format.samples == 2 && s == 1)
                        continue;
                    for (std::size_t i = 0; i < bytes; ++i)
                        had |= std::uint64_t{memory[((y * format.width + x) * channels + channel) * bytes + i]}
                               << 8 * i;
                    isSame = isSame && had == wanted;
                    EXPECT_EQ(had, wanted) << file.path << " at " << x << ", " << y << ", sample " << s;
                }
    }
    EXPECT_GE(compared, 50);
}

#endif
