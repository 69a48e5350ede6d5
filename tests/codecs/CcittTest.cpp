#include "codecs/tif/Ccitt.h"
#include "tests/codecs/CcittWriter.h"
#include "tests/codecs/LibtiffStrip.h"
#include "tests/codecs/ProcessorTime.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace ET::Img;
using Quorvex::Test::RaisedText;

namespace {

using Bytes = std::vector<std::uint8_t>;

/// Runs of very different lengths, of which each row keeps most of the one above.
BilevelRows Picture(std::uint32_t width, std::uint32_t height, std::uint32_t seed) {
    std::mt19937 random(seed);
    BilevelRows rows;
    for (std::uint32_t y = 0; y < height; ++y) {
        std::vector<std::uint8_t> row = y > 0 ? rows.back() : std::vector<std::uint8_t>(width);
        const std::uint32_t edits = y % 5 == 0 ? 40 : static_cast<std::uint32_t>(random() % 4);
        for (std::uint32_t i = 0; i < edits; ++i) {
            const auto begin = static_cast<std::uint32_t>(random() % width);
            const auto largest = 1u << random() % 12;
            const std::uint32_t end = std::min(width, begin + 1 + static_cast<std::uint32_t>(random() % largest));
            std::fill(row.begin() + begin, row.begin() + end, static_cast<std::uint8_t>(random() % 2));
        }
        // A row that is like the one above but for its place.
        if (y % 7 == 3)
            std::rotate(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(random() % std::min(width, 5u)),
                        row.end());
        rows.push_back(row);
    }
    return rows;
}

CcittParameters ParametersOf(const BilevelRows& rows, std::uint32_t t4Options = 0) {
    return {.width = static_cast<std::uint32_t>(rows[0].size()),
            .rows = static_cast<std::uint32_t>(rows.size()),
            .t4Options = t4Options};
}

struct Outcome {
    Bytes rows; ///< What is not written stays 0xEE.
    bool isWhole;
};

Outcome Decode(const Bytes& source, const CcittParameters& parameters) {
    Outcome outcome{Bytes(std::size_t(parameters.width + 7) / 8 * parameters.rows, 0xEE), false};
    outcome.isWhole =
        RaisedText([&] {
            DecodeCcitt(source.data(), source.size(), outcome.rows.data(), outcome.rows.size(), parameters);
        }) != "";
    return outcome;
}

void ExpectRows(const Bytes& source, const CcittParameters& parameters, const BilevelRows& rows,
                const std::string& what) {
    const Outcome outcome = Decode(source, parameters);
    EXPECT_TRUE(outcome.isWhole) << what;
    EXPECT_TRUE(outcome.rows == Packed(rows)) << what;
}

constexpr std::uint32_t widths[] = {1, 2, 7, 8, 9, 31, 63, 64, 65, 100, 1728, 2561, 5300};

/// A way of coding, with what decodes it.
struct Way {
    CcittStyle style;
    std::uint32_t t4Options = 0;
    bool isModifiedHuffman = false;

    CcittParameters ParametersFor(const BilevelRows& rows) const {
        CcittParameters parameters = ParametersOf(rows, t4Options);
        parameters.isModifiedHuffman = isModifiedHuffman;
        parameters.isFillOrderReversed = style.isReversed;
        return parameters;
    }
};

std::vector<Way> AllWays() {
    std::vector<Way> ways;
    for (const bool isReversed : {false, true}) {
        ways.push_back({{.isByteAligned = true, .isReversed = isReversed}, 0, true});
        for (const bool hasEndsOfLine : {false, true})
            for (const bool isByteAligned : {false, true})
                for (const std::uint32_t relativeRows : {0u, 1u, 3u, 1000u})
                    ways.push_back({{.hasEndsOfLine = hasEndsOfLine,
                                     .isByteAligned = isByteAligned,
                                     .relativeRows = relativeRows,
                                     .isTwoDimensional = relativeRows != 0,
                                     .isReversed = isReversed},
                                    (relativeRows != 0 ? T4Options::twoDimensional : 0) |
                                        (isByteAligned ? T4Options::fillBits : 0)});
    }
    return ways;
}

} // namespace

TEST(Ccitt, DecodesEveryWayOfCoding) {
    for (const std::uint32_t width : widths) {
        const BilevelRows rows = Picture(width, 24, width);
        std::uint32_t number = 0;
        for (const Way& way : AllWays())
            ExpectRows(WriteCcitt(rows, way.style), way.ParametersFor(rows), rows,
                       "width " + std::to_string(width) + ", way " + std::to_string(number++));
    }
}

TEST(Ccitt, DecodesRunsOfEveryLength) {
    constexpr std::uint32_t longest = 2700;
    BilevelRows rows;
    for (std::uint32_t y = 0; y <= longest; y += y < 140 ? 1 : 13) {
        std::vector<std::uint8_t> row(2 * longest + 64);
        std::fill(row.begin() + y, row.begin() + 2 * y, std::uint8_t(1));
        std::fill(row.begin() + 2 * longest, row.end(), std::uint8_t(1));
        rows.push_back(row);
    }
    for (const Way& way : AllWays())
        ExpectRows(WriteCcitt(rows, way.style), way.ParametersFor(rows), rows, "");
}

TEST(Ccitt, WhiteAndBlackRows) {
    for (const std::uint8_t color : {0, 1}) {
        const BilevelRows rows(5, std::vector<std::uint8_t>(2000, color));
        for (const Way& way : AllWays())
            ExpectRows(WriteCcitt(rows, way.style), way.ParametersFor(rows), rows, "");
    }
}

TEST(Ccitt, TheEndOfThePageIsNoRow) {
    const BilevelRows rows = Picture(100, 10, 1);
    for (Way way : AllWays()) {
        if (!way.style.hasEndsOfLine)
            continue;
        way.style.endsOfLineAtEnd = 6;
        CcittParameters parameters = way.ParametersFor(rows);
        const Bytes codes = WriteCcitt(rows, way.style);
        ExpectRows(codes, parameters, rows, "");
        // A row that does not come stays as it is.
        parameters.rows = 12;
        const Outcome outcome = Decode(codes, parameters);
        EXPECT_FALSE(outcome.isWhole);
        const Bytes packed = Packed(rows);
        EXPECT_TRUE(std::equal(packed.begin(), packed.end(), outcome.rows.begin()));
        EXPECT_EQ(Bytes(outcome.rows.end() - 26, outcome.rows.end()), Bytes(26, 0xEE));
    }
}

TEST(Ccitt, AnEndOfLineMayBeMissingBeforeTheFirstRow) {
    const BilevelRows rows = Picture(100, 10, 2);
    const Bytes codes = WriteCcitt(rows, {.hasEndsOfLine = true, .isByteAligned = true});
    ASSERT_EQ(codes[1], 1);
    const Bytes without(codes.begin() + 2, codes.end());
    ExpectRows(without, ParametersOf(rows), rows, "");
}

TEST(Ccitt, CutAtEveryByteKeepsTheRowsBefore) {
    const BilevelRows rows = Picture(150, 12, 3);
    const Bytes packed = Packed(rows);
    constexpr std::size_t rowBytes = 19;
    for (const Way& way : AllWays()) {
        const Bytes codes = WriteCcitt(rows, way.style);
        std::size_t before = 0;
        for (std::size_t length = 0; length < codes.size(); ++length) {
            const Bytes cut(codes.begin(), codes.begin() + static_cast<std::ptrdiff_t>(length));
            const Outcome outcome = Decode(cut, way.ParametersFor(rows));
            ASSERT_FALSE(outcome.isWhole) << length;
            std::size_t same = 0;
            while (same < packed.size() && outcome.rows[same] == packed[same])
                ++same;
            // With more bytes there are never fewer rows.
            ASSERT_GE(same / rowBytes, before) << length;
            before = same / rowBytes;
        }
        ASSERT_GE(before, 10u);
    }
}

TEST(Ccitt, DamageEndsWithTheRowWhereRowsHaveEnds) {
    const BilevelRows rows = Picture(1000, 20, 4);
    const Bytes packed = Packed(rows);
    constexpr std::size_t rowBytes = 125;
    const Bytes codes = WriteCcitt(rows, {.hasEndsOfLine = true, .isByteAligned = true});
    const auto bytesOf = [&](std::size_t count, std::uint32_t endsOfLine) {
        const BilevelRows before(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(count));
        return WriteCcitt(before, {.hasEndsOfLine = true, .isByteAligned = true, .endsOfLineAtEnd = endsOfLine}).size();
    };
    for (std::size_t y = 0; y < rows.size(); ++y) {
        const std::size_t begin = bytesOf(y, 1);
        ASSERT_LT(begin + 2, bytesOf(y + 1, 0));
        Bytes bad = codes;
        // No code begins with eight zeros, and an end of line needs three more.
        bad[begin] = 0x00;
        bad[begin + 1] = 0xFF;
        const Outcome outcome = Decode(bad, ParametersOf(rows));
        EXPECT_FALSE(outcome.isWhole);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const bool isSame = std::equal(packed.begin() + static_cast<std::ptrdiff_t>(i * rowBytes),
                                           packed.begin() + static_cast<std::ptrdiff_t>((i + 1) * rowBytes),
                                           outcome.rows.begin() + static_cast<std::ptrdiff_t>(i * rowBytes));
            if (i != y) {
                EXPECT_TRUE(isSame) << "damage in row " << y << ", row " << i;
            } else {
                EXPECT_EQ(outcome.rows[i * rowBytes], 0);
            }
        }
    }
}

TEST(Ccitt, ARunBeyondTheRowIsDamage) {
    // White 2, black 5 of which there is room for 4, in a byte each of padding.
    const Bytes codes{0b01110011, 0b10110000};
    const Outcome outcome = Decode(codes, {.width = 6, .rows = 1});
    EXPECT_FALSE(outcome.isWhole);
    EXPECT_EQ(outcome.rows, Bytes{0});
    EXPECT_EQ(Decode(codes, {.width = 7, .rows = 1}).rows, Bytes{0b00111110});
}

TEST(Ccitt, ARowKeepsTheRunsBeforeDamage) {
    // White 2, black 3, then zeros that are no code.
    const Outcome outcome = Decode({0b01111000, 0, 0, 0}, {.width = 20, .rows = 1});
    EXPECT_FALSE(outcome.isWhole);
    EXPECT_EQ(outcome.rows, (Bytes{0b00111000, 0, 0}));
}

TEST(Ccitt, UncompressedModeIsDamage) {
    // An end of line, a row in two dimensions, and the code that goes over to uncompressed mode.
    const Outcome outcome = Decode({0x00, 0x10, 0b00000111, 0b10000000, 0xFF},
                                   {.width = 16, .rows = 1, .t4Options = T4Options::twoDimensional});
    EXPECT_FALSE(outcome.isWhole);
    EXPECT_EQ(outcome.rows, (Bytes{0, 0}));
}

TEST(Ccitt, ATargetWithoutRoomIsRefused) {
    Bytes target(5);
    const Bytes codes(100);
    for (const CcittParameters& parameters :
         {CcittParameters{.width = 16, .rows = 3}, {.width = 41, .rows = 1}, {.width = 0xFFFFFFFF, .rows = 0xFFFFFFFF}})
        EXPECT_EQ(RaisedText([&] { DecodeCcitt(codes.data(), codes.size(), target.data(), 5, parameters); }), "");
}

TEST(Ccitt, NothingIsDecodedWithoutTrouble) {
    for (const CcittParameters& parameters : {CcittParameters{.width = 0, .rows = 0xFFFFFFFF}, {.width = 5, .rows = 0}})
        EXPECT_EQ(DecodeCcitt(nullptr, 0, nullptr, 0, parameters), 0u);
}

TEST(Ccitt, TimeIsBoundByDataAndRows) {
    constexpr std::uint32_t width = 1 << 20, rows = 256;
    const double start = ProcessorSeconds();
    for (const std::uint8_t byte : {0x00, 0xFF, 0x35, 0x01, 0x80}) {
        for (const bool isModifiedHuffman : {false, true}) {
            for (const std::uint32_t options : {0u, 1u, 4u, 5u}) {
                const CcittParameters parameters{width, rows, options, false, isModifiedHuffman};
                Decode(Bytes(1000, byte), parameters);
            }
        }
    }
    EXPECT_LT(ProcessorSeconds() - start, 60.0);
}

#ifdef VARNOLITE_HAS_TIFF

namespace {

constexpr std::uint16_t modifiedHuffman = 2, group3 = 3;
constexpr std::uint32_t t4OptionsTag = 292, fillOrderTag = 266;

LibtiffStrip StripOf(const BilevelRows& rows, const Way& way) {
    LibtiffStrip strip{.width = static_cast<std::uint32_t>(rows[0].size()),
                       .height = static_cast<std::uint32_t>(rows.size()),
                       .bitsPerSample = 1,
                       .compression = way.isModifiedHuffman ? modifiedHuffman : group3};
    if (!way.isModifiedHuffman)
        strip.tags.push_back({t4OptionsTag, way.t4Options});
    strip.tags.push_back({fillOrderTag, way.style.isReversed ? 2u : 1u});
    return strip;
}

/// Without ends of line, libtiff knows modified Huffman alone.
std::vector<Way> WaysOfLibtiff() {
    std::vector<Way> ways;
    for (const Way& way : AllWays())
        if (way.isModifiedHuffman || way.style.hasEndsOfLine)
            ways.push_back(way);
    return ways;
}

} // namespace

TEST(Ccitt, DecodesWhatLibtiffEncodes) {
    for (const std::uint32_t width : widths) {
        const BilevelRows rows = Picture(width, 30, width + 1);
        for (const Way& way : WaysOfLibtiff())
            ExpectRows(StripOf(rows, way).Encode(Packed(rows)), way.ParametersFor(rows), rows,
                       "width " + std::to_string(width) + ", options " + std::to_string(way.t4Options));
    }
}

TEST(Ccitt, LibtiffReadsEveryLengthOfRunAlike) {
    constexpr std::uint32_t longest = 2700;
    BilevelRows rows;
    for (std::uint32_t y = 0; y <= longest; ++y) {
        std::vector<std::uint8_t> row(2 * longest + 1);
        std::fill(row.begin() + y, row.begin() + 2 * y, std::uint8_t(1));
        rows.push_back(row);
    }
    for (const Way& way : WaysOfLibtiff()) {
        const Bytes packed = Packed(rows);
        const Bytes codes = WriteCcitt(rows, way.style);
        EXPECT_TRUE(StripOf(rows, way).Decode(codes).rows == packed);
        ExpectRows(StripOf(rows, way).Encode(packed), way.ParametersFor(rows), rows, "");
    }
}

// In two dimensions the two part: where an end of line comes too early, libtiff fills up with the present colour.
TEST(Ccitt, LibtiffToleratesDamageInOneDimensionAlike) {
    const BilevelRows rows = Picture(700, 20, 6);
    for (const Way& way : WaysOfLibtiff()) {
        if (way.style.isTwoDimensional)
            continue;
        const Bytes codes = WriteCcitt(rows, way.style);
        std::mt19937 random(7);
        for (int i = 0; i < 500; ++i) {
            Bytes bad = codes;
            // The first end of line stays.
            bad[2 + random() % (bad.size() - 2)] ^= static_cast<std::uint8_t>(1 + random() % 255);
            Outcome outcome = Decode(bad, way.ParametersFor(rows));
            // Rows behind the data are 0 there.
            std::replace(outcome.rows.begin(), outcome.rows.end(), std::uint8_t(0xEE), std::uint8_t(0));
            Bytes peer = StripOf(rows, way).Decode(bad).rows;
            std::replace(peer.begin(), peer.end(), std::uint8_t(0xEE), std::uint8_t(0));
            ASSERT_TRUE(outcome.rows == peer) << i;
        }
    }
}

#endif
