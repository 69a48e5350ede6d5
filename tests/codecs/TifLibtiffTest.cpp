#ifdef VARNOLITE_HAS_TIFF

#include "tests/codecs/LibtiffFile.h"
#include "tests/codecs/TifLoad.h"
#include "tests/codecs/TifPicture.h"
#include "tests/codecs/TifReference.h"
#include "tests/codecs/TifVariants.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>

using LibtiffFile::Format;
using Bytes = LibtiffFile::Bytes;

namespace {

/// Random bits with runs of equal ones, so that every scheme has something to do.
Bytes Rows(const Format& format, std::uint32_t seed) {
    const std::size_t rowBytes =
        (std::size_t(format.width) * (format.isPlanar ? 1 : format.samples) * format.bits + 7) / 8;
    Bytes rows(rowBytes * format.height * (format.isPlanar ? format.samples : 1));
    std::mt19937 random(seed);
    std::uint8_t byte = 0;
    for (std::uint8_t& place : rows) {
        if (random() % 3 != 0)
            byte = static_cast<std::uint8_t>(random());
        place = byte;
    }
    return rows;
}

/// The channels of the image: a second or fourth sample is alpha.
std::vector<std::uint64_t> Expected(const Format& format, const Bytes& rows) {
    std::vector<std::uint64_t> channels;
    const std::uint64_t opaque = TifReference::FullOf(format.bits, format.sampleFormat);
    for (std::size_t y = 0; y < format.height; ++y)
        for (std::size_t x = 0; x < format.width; ++x) {
            const auto at = [&](std::size_t s) {
                return TifReference::ChannelOf(LibtiffFile::SampleOf(rows, format, x, y, s), format.bits,
                                               format.sampleFormat);
            };
            if (format.samples == 1)
                channels.push_back(at(0));
            else if (format.samples == 2)
                channels.insert(channels.end(), {at(0), at(0), at(0), at(1)});
            else
                channels.insert(channels.end(), {at(2), at(1), at(0), format.samples == 4 ? at(3) : opaque});
        }
    return channels;
}

/// Numbers that are none are all the same: their other bits need not survive a conversion.
bool IsSame(std::uint64_t had, std::uint64_t wanted, const Format& format) {
    return had == wanted || (format.sampleFormat == 3 && format.bits < 32 &&
                             std::isnan(std::bit_cast<float>(static_cast<std::uint32_t>(had))) &&
                             std::isnan(std::bit_cast<float>(static_cast<std::uint32_t>(wanted))));
}

std::string NameOf(const Format& format) {
    return std::to_string(format.samples) + " x " + std::to_string(format.bits) + " bits of format " +
           std::to_string(format.sampleFormat) + ", compression " + std::to_string(format.compression) +
           ", predictor " + std::to_string(format.predictor) + (format.isPlanar ? ", planar" : "") +
           (format.isBigEndian ? ", big-endian" : "") + ", tiles of " + std::to_string(format.tileSize) +
           ", fill order " + std::to_string(format.fillOrder);
}

void Check(const Format& format) {
    Bytes rows = Rows(format, format.bits + format.samples);
    const Bytes file = LibtiffFile::Write(format, rows);
    Format found = format;
    const Bytes readBack = LibtiffFile::Read(file, 0, found);
    // The library writes floats of the other byte order with their bytes swapped before it takes differences of them;
    // what it reads then is what the file says.
    if (format.predictor == 3 && format.isBigEndian)
        rows = readBack;
    const std::vector<std::uint64_t> wanted = Expected(format, rows);
    ASSERT_TRUE(readBack == rows || Expected(format, readBack) == wanted)
        << "the library's own reading: " << NameOf(format);
    const TifLoad load(file);
    EXPECT_FALSE(load.decoder.IsIncomplete()) << NameOf(format);
    const std::vector<std::uint64_t> had = TifReference::ChannelsOf(load);
    ASSERT_TRUE(std::equal(had.begin(), had.end(), wanted.begin(), wanted.end(), [&](std::uint64_t a, std::uint64_t b) {
        return IsSame(a, b, format);
    })) << NameOf(format);
}

constexpr std::uint16_t none = 1, lzw = 5, packBits = 32773;

/// Fill orders take turns: they are undone before anything else, whatever the bytes are.
template <class Action>
void InAllArrangements(Format format, const Action& action) {
    for (const bool isBigEndian : {false, true})
        for (const bool isPlanar : {false, true})
            for (const std::uint32_t tileSize : {0u, 16u}) {
                format.isBigEndian = isBigEndian;
                format.isPlanar = isPlanar;
                format.tileSize = tileSize;
                format.fillOrder = static_cast<std::uint16_t>(3 - format.fillOrder);
                action(format);
            }
}

Format FormatFor(std::uint16_t samples, std::uint16_t bits, std::uint16_t sampleFormat, std::uint16_t compression,
                 std::uint16_t predictor) {
    Format format;
    format.width = 19;
    format.height = 17;
    format.samples = samples;
    format.bits = bits;
    format.sampleFormat = sampleFormat;
    format.photometric = samples >= 3 ? 2 : 1;
    format.extraSample = samples % 2 == 0 ? 2 : 0;
    format.compression = compression;
    format.predictor = predictor;
    // An odd number of arrangements apart, so that each meets both.
    format.fillOrder = static_cast<std::uint16_t>(1 + (samples + bits + compression + predictor) % 2);
    return format;
}

/// A depth and what its bits are.
struct Kind {
    std::uint16_t bits;
    std::uint16_t sampleFormat;
};

/// Those whose samples are words, which the byte order is about.
std::vector<Kind> KindsOfWholeWords() {
    std::vector<Kind> kinds;
    for (const std::uint16_t sampleFormat : {std::uint16_t{1}, std::uint16_t{2}, std::uint16_t{3}})
        for (const std::uint16_t bits : {std::uint16_t{8}, std::uint16_t{16}, std::uint16_t{32}, std::uint16_t{64}})
            if (sampleFormat != 3 || bits != 8)
                kinds.push_back({bits, sampleFormat});
    return kinds;
}

constexpr std::uint16_t mostSamples = 4;

} // namespace

TEST(TifLibtiff, WordsOfEverySchemeInEveryArrangement) {
    std::vector<Kind> kinds = KindsOfWholeWords();
    kinds.push_back({24, 3});
    for (const std::uint16_t compression : {none, lzw, packBits})
        for (std::uint16_t samples = 1; samples <= mostSamples; ++samples)
            for (const Kind& kind : kinds)
                InAllArrangements(FormatFor(samples, kind.bits, kind.sampleFormat, compression, 1), Check);
}

TEST(TifLibtiff, OtherDepthsUpTo64OfEveryScheme) {
    for (std::uint16_t bits = 1; bits < 64; ++bits) {
        if (std::has_single_bit(bits) && bits >= 8)
            continue;
        std::uint16_t samples = bits;
        for (const std::uint16_t compression : {none, lzw, packBits})
            for (const std::uint16_t sampleFormat : {std::uint16_t{1}, std::uint16_t{2}}) {
                samples = static_cast<std::uint16_t>(samples % mostSamples + 1);
                InAllArrangements(FormatFor(samples, bits, sampleFormat, compression, 1), Check);
            }
    }
}

TEST(TifLibtiff, DifferencesOfEveryWord) {
    for (std::uint16_t samples = 1; samples <= mostSamples; ++samples)
        for (const Kind& kind : KindsOfWholeWords())
            InAllArrangements(FormatFor(samples, kind.bits, kind.sampleFormat, lzw, 2), Check);
}

TEST(TifLibtiff, DifferencesOfTheBytesOfFloats) {
    for (std::uint16_t samples = 1; samples <= mostSamples; ++samples)
        for (const std::uint16_t bits : {std::uint16_t{16}, std::uint16_t{24}, std::uint16_t{32}, std::uint16_t{64}})
            InAllArrangements(FormatFor(samples, bits, 3, lzw, 3), Check);
}

namespace {

/// Rows of bits as the decoder gives them where black is 0 or 1 as told.
Bytes Bilevel(const Format& format, const Bytes& rows) {
    Bytes expected;
    const std::size_t rowBytes = (format.width + 7) / 8;
    for (std::size_t y = 0; y < format.height; ++y)
        for (std::size_t x = 0; x < format.width; ++x) {
            const bool bit = (rows[y * rowBytes + x / 8] >> (7 - x % 8) & 1) != 0;
            expected.push_back(bit != (format.photometric == 0) ? 255 : 0);
        }
    return expected;
}

} // namespace

TEST(TifLibtiff, FaxCodesInBothFillOrders) {
    constexpr std::uint32_t t4Options = 292;
    for (const std::uint16_t compression : {std::uint16_t{2}, std::uint16_t{3}})
        for (const std::uint32_t options : {0u, 1u, 4u, 5u})
            for (const std::uint16_t photometric : {std::uint16_t{0}, std::uint16_t{1}})
                for (const std::uint32_t tileSize : {0u, 16u})
                    for (const std::uint16_t fillOrder : {std::uint16_t{1}, std::uint16_t{2}})
                        for (const bool isBigEndian : {false, true}) {
                            if (compression == 2 && options != 0)
                                continue;
                            Format format = FormatFor(1, 1, 1, compression, 1);
                            format.width = 173;
                            format.photometric = photometric;
                            format.tileSize = tileSize;
                            format.fillOrder = fillOrder;
                            format.isBigEndian = isBigEndian;
                            if (compression == 3)
                                format.tags = {{t4Options, options}};
                            const Bytes rows = Rows(format, 7);
                            const TifLoad load(LibtiffFile::Write(format, rows));
                            EXPECT_FALSE(load.decoder.IsIncomplete()) << NameOf(format) << ", options " << options;
                            ASSERT_TRUE(load.Memory() == Bilevel(format, rows))
                                << NameOf(format) << ", options " << options;
                        }
}

namespace {

/// Whether libtiff takes the file for what it is. It undoes no differences without its own compression, wants to see
/// ends of line, and knows old JPEG in colours alone.
bool IsKnownToLibtiff(const TifVariant& variant) {
    const TifRecipe& recipe = variant.recipe;
    const bool hasEndsOfLine = recipe.tags.contains(292);
    return (recipe.predictor == 1 || recipe.compression == lzw) && (recipe.compression != 3 || hasEndsOfLine) &&
           recipe.compression != 6;
}

} // namespace

TEST(TifLibtiff, SmallFilesOfEveryVariantAreWhatTheFormulasMakeOfThem) {
    int compared = 0;
    for (const TifVariant& variant : TifVariants()) {
        if (!IsKnownToLibtiff(variant))
            continue;
        const Bytes file = variant.recipe.Build();
        EXPECT_EQ(TifPicture(file, 0).DifferenceTo(TifLoad(file)), "") << variant.name;
        ++compared;
    }
    EXPECT_GE(compared, 30);
}

#endif
