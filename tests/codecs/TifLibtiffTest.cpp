#ifdef VARNOLITE_HAS_TIFF

#include "tests/codecs/LibtiffFile.h"
#include "tests/codecs/TifLoad.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
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
    if (format.sampleFormat == 3)
        for (std::size_t i = 0; i + 4 <= rows.size() && format.bits == 32; i += 4) {
            const float number = static_cast<float>(i % 977) / 7.0f - 30.0f;
            std::memcpy(rows.data() + i, &number, 4);
        }
    return rows;
}

/// The samples of a depth of whole bytes, in the order of the image's memory.
Bytes Expected(const Format& format, const Bytes& rows) {
    const std::size_t bytes = format.bits / 8, pixels = std::size_t(format.width) * format.height;
    Bytes expected;
    for (std::size_t i = 0; i < pixels; ++i)
        for (std::size_t channel = 0; channel < (format.samples == 1 ? 1 : 4); ++channel) {
            const std::size_t sample = format.samples == 1 || channel == 3 ? channel : 2 - channel;
            if (sample >= format.samples) {
                const float one = 1;
                std::uint8_t full[8] = {255, 255, 255, 255, 255, 255, 255, 255};
                if (format.sampleFormat == 2)
                    full[bytes - 1] = 127;
                if (format.sampleFormat == 3)
                    std::memcpy(full, &one, sizeof(one));
                expected.insert(expected.end(), full, full + bytes);
                continue;
            }
            const std::size_t place = format.isPlanar ? sample * pixels + i : i * format.samples + sample;
            const auto first = rows.begin() + static_cast<std::ptrdiff_t>(place * bytes);
            expected.insert(expected.end(), first, first + static_cast<std::ptrdiff_t>(bytes));
        }
    return expected;
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
    ASSERT_TRUE(rows == readBack) << "the library's own reading: " << NameOf(format);
    const TifLoad load(file);
    EXPECT_FALSE(load.decoder.IsIncomplete()) << NameOf(format);
    ASSERT_TRUE(load.Memory() == Expected(format, rows)) << NameOf(format);
}

constexpr std::uint16_t none = 1, lzw = 5, packBits = 32773;

template <class Action>
void InAllArrangements(Format format, const Action& action) {
    for (const bool isBigEndian : {false, true})
        for (const bool isPlanar : {false, true})
            for (const std::uint32_t tileSize : {0u, 16u})
                for (const std::uint16_t fillOrder : {std::uint16_t{1}, std::uint16_t{2}}) {
                    format.isBigEndian = isBigEndian;
                    format.isPlanar = isPlanar;
                    format.tileSize = tileSize;
                    format.fillOrder = fillOrder;
                    action(format);
                }
}

Format FormatFor(std::uint16_t samples, std::uint16_t bits, std::uint16_t sampleFormat, std::uint16_t compression,
                 std::uint16_t predictor) {
    Format format;
    format.width = 41;
    format.height = 35;
    format.samples = samples;
    format.bits = bits;
    format.sampleFormat = sampleFormat;
    format.photometric = samples == 3 ? 2 : 1;
    format.compression = compression;
    format.predictor = predictor;
    return format;
}

} // namespace

TEST(TifLibtiff, WholeBytesOfEverySchemeInEveryArrangement) {
    for (const std::uint16_t compression : {none, lzw, packBits})
        for (const std::uint16_t samples : {std::uint16_t{1}, std::uint16_t{3}})
            for (const std::uint16_t bits : {std::uint16_t{8}, std::uint16_t{16}, std::uint16_t{32}, std::uint16_t{64}})
                for (const std::uint16_t sampleFormat : {std::uint16_t{1}, std::uint16_t{2}})
                    InAllArrangements(FormatFor(samples, bits, sampleFormat, compression, 1), Check);
}

TEST(TifLibtiff, DifferencesOfEveryWholeDepth) {
    for (const std::uint16_t samples : {std::uint16_t{1}, std::uint16_t{3}})
        for (const std::uint16_t bits : {std::uint16_t{8}, std::uint16_t{16}, std::uint16_t{32}, std::uint16_t{64}})
            InAllArrangements(FormatFor(samples, bits, 1, lzw, 2), Check);
}

TEST(TifLibtiff, DifferencesOfFloats) {
    for (const std::uint16_t samples : {std::uint16_t{1}, std::uint16_t{3}})
        for (const std::uint16_t predictor : {std::uint16_t{1}, std::uint16_t{2}, std::uint16_t{3}})
            InAllArrangements(FormatFor(samples, 32, 3, lzw, predictor), Check);
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

TEST(TifLibtiff, DepthsBelowAByteOfEveryScheme) {
    for (const std::uint16_t compression : {none, lzw, packBits})
        for (const std::uint16_t bits : {std::uint16_t{1}, std::uint16_t{2}, std::uint16_t{4}})
            InAllArrangements(FormatFor(1, bits, 1, compression, 1), [](Format format) {
                // Rows of whole bytes, since tiles are put together from bytes.
                format.width = 48;
                const Bytes rows = Rows(format, format.bits);
                const TifLoad load(LibtiffFile::Write(format, rows));
                EXPECT_FALSE(load.decoder.IsIncomplete());
                const Bytes had = load.Memory();
                const unsigned largest = (1u << format.bits) - 1;
                for (std::size_t i = 0; i < had.size(); ++i) {
                    const std::size_t bit = i * format.bits;
                    const unsigned value = rows[bit / 8] >> (8 - format.bits - bit % 8) & largest;
                    ASSERT_EQ(had[i], value * 255 / largest) << NameOf(format);
                }
            });
}

#endif
