#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace JpgSegments;

namespace {

/// The pieces of a grey file of two blocks, which differ, so that others can be put between them.
std::vector<Bytes> Pieces() {
    return {start,
            FlatQuantisation(),
            FourBitCodes(0x00),
            FourBitCodes(0x10),
            FrameHeader(0xC0, 8, 16, 8, {{1}}),
            ScanHeader({1}) + FlatBlocks({200, 80}),
            end};
}

Bytes Joined(const std::vector<Bytes>& pieces) {
    Bytes file;
    for (const Bytes& piece : pieces)
        file = file + piece;
    return file;
}

Bytes PlainSamples() {
    return JpgLoad(Joined(Pieces())).Samples<std::uint8_t>();
}

/// The pieces with one more before that of the index.
Bytes With(std::size_t index, const Bytes& piece) {
    std::vector<Bytes> pieces = Pieces();
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(index), piece);
    return Joined(pieces);
}

void ExpectPlain(const Bytes& file, const char* what) {
    SCOPED_TRACE(what);
    const JpgLoad load(file);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), PlainSamples());
}

TEST(JpgMarker, ThePlainFileIsTwoGreys) {
    const Bytes samples = PlainSamples();
    ASSERT_EQ(samples.size(), 16u * 8 * 4);
    EXPECT_EQ(samples[0], 128 + 200 / 8);
    EXPECT_EQ(samples[4 * 8], 128 + 280 / 8);
}

TEST(JpgMarker, SegmentsOfOtherMarkersAreSkippedByTheirLength) {
    // A scan and an end of image in the content are no markers.
    const Bytes content{0xFF, 0xDA, 0xFF, 0xD9, 0x00, 0xFF};
    for (const int marker : {0x00, 0x01, 0xBF, 0xC8, 0xCC, 0xD0, 0xDC, 0xDE, 0xDF, 0xE0, 0xE2, 0xED, 0xEF, 0xF0, 0xFE})
        for (std::size_t index = 1; index <= 5; ++index)
            ExpectPlain(With(index, Segment(static_cast<std::uint8_t>(marker), content)),
                        ("marker " + std::to_string(marker) + " before piece " + std::to_string(index)).c_str());
}

TEST(JpgMarker, ANumberOfLinesBehindTheScanIsSkipped) {
    ExpectPlain(With(6, Segment(0xDC, {0, 8})), "DNL");
}

TEST(JpgMarker, AFrameThatLeavesItsLinesToALaterMarkerFails) {
    std::vector<Bytes> pieces = Pieces();
    pieces[4] = FrameHeader(0xC0, 8, 16, 0, {{1}});
    pieces[5] = pieces[5] + Segment(0xDC, {0, 8});
    EXPECT_EQ(JpgFailure(Joined(pieces)), "number of lines == 0");
}

TEST(JpgMarker, FillBytesMayStandBeforeEveryMarker) {
    for (std::size_t index = 1; index <= 6; ++index)
        for (const std::size_t count : {1u, 2u, 100u})
            ExpectPlain(With(index, Bytes(count, 0xFF)), ("before piece " + std::to_string(index)).c_str());
}

TEST(JpgMarker, NothingBehindTheEndOfImageIsRead) {
    ExpectPlain(With(7, start + Bytes{1, 2, 3, 0xFF, 0xC1}), "another image");
}

TEST(JpgMarker, GarbageBeforeTheFirstScanFailsWithItsOffset) {
    for (std::size_t index = 1; index <= 5; ++index) {
        std::vector<Bytes> pieces = Pieces();
        pieces.resize(index);
        char wanted[64];
        std::snprintf(wanted, sizeof(wanted), "Expected marker X'FF' at offset 0x%zX", Joined(pieces).size());
        // The header pass does not go beyond the frame; the load does.
        EXPECT_EQ(JpgFailure(With(index, {0x5A, 0xFF, 0xD8})), wanted) << "before piece " << index;
    }
}

TEST(JpgMarker, GarbageBehindAScanMakesTheImageIncomplete) {
    const JpgLoad load(With(6, {0x5A}));
    EXPECT_TRUE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), PlainSamples());
}

TEST(JpgMarker, WhatCannotBeBehindAScanMakesTheImageIncomplete) {
    const Bytes failing[] = {FrameHeader(0xC0, 8, 16, 8, {{1}}),
                             FrameHeader(0xC1, 8, 16, 8, {{1}}),
                             start,
                             {0xFF, 0xD3},
                             Segment(0xDB, {0x10}),
                             ScanHeader({7}),
                             {0xFF, 0xE0, 0xFF, 0xFF}};
    for (const Bytes& piece : failing) {
        const JpgLoad load(With(6, piece));
        EXPECT_TRUE(load.decoder.IsIncomplete());
        EXPECT_EQ(load.Samples<std::uint8_t>(), PlainSamples());
    }
}

TEST(JpgMarker, ARestartIntervalIsTheFirstWordOfItsSegment) {
    std::vector<Bytes> pieces = Pieces();
    pieces[5] = ScanHeader({1}) + FlatBlocks({200}) + Bytes{0xFF, 0xD0} + FlatBlocks({280});
    for (const Bytes& interval :
         {RestartInterval(1), Segment(0xDD, {0, 1, 9, 9}), RestartInterval(5) + RestartInterval(1)}) {
        std::vector<Bytes> changed = pieces;
        changed[1] = changed[1] + interval;
        ExpectPlain(Joined(changed), "restart interval");
    }
    pieces[1] = pieces[1] + RestartInterval(1) + RestartInterval(0);
    EXPECT_TRUE(JpgLoad(Joined(pieces)).decoder.IsIncomplete()) << "0 ends the use of intervals";
}

TEST(JpgMarker, WhatOneLoadHasReadIsForgottenInTheNext) {
    // Behind its scan the file goes over to restart intervals, and to tables without codes.
    std::vector<Bytes> pieces = Pieces();
    pieces[5] = pieces[5] + RestartInterval(1) + Segment(0xC4, Bytes{0x00} + Bytes(16, 0)) +
                Segment(0xEE, Bytes(11, 0) + Bytes{2});
    pieces.erase(pieces.begin() + 2);
    pieces.insert(pieces.begin() + 4, FourBitCodes(0x00));
    JpgLoad load(Joined(pieces));
    const Bytes first = load.Samples<std::uint8_t>();
    EXPECT_EQ(first, PlainSamples());
    load.image->clear(0);
    load.decoder.Load(load.image, 0);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), first);
}

TEST(JpgMarker, TablesAreSelectedByTheirLowestTwoBits) {
    std::vector<Bytes> pieces = Pieces();
    // Both in one segment: a table that the frame does not select, then the one that it does, under the names 4 + 2.
    const Bytes wrong(64, 7), right(64, 1);
    pieces[1] = Segment(0xDB, Bytes{0x05} + wrong + Bytes{0x06} + right);
    pieces[2] = FourBitCodes(0x0F);
    pieces[3] = FourBitCodes(0x17);
    pieces[4] = Segment(0xC0, {8, 0, 8, 0, 16, 1, 1, 0x11, 0xFE});
    pieces[5] = Segment(0xDA, {1, 1, 0x33, 0, 63, 0}) + FlatBlocks({200, 80});
    ExpectPlain(Joined(pieces), "selectors");
}

TEST(JpgMarker, SeveralHuffmanTablesShareASegment) {
    std::vector<Bytes> pieces = Pieces();
    const Bytes dc = FourBitCodes(0x00), ac = FourBitCodes(0x10);
    pieces[2] = Segment(0xC4, Bytes(dc.begin() + 4, dc.end()) + Bytes(ac.begin() + 4, ac.end()));
    pieces[3] = {};
    ExpectPlain(Joined(pieces), "one DHT");
}

TEST(JpgMarker, ALaterTableReplacesAnEarlierOne) {
    std::vector<Bytes> pieces = Pieces();
    pieces[1] = Segment(0xDB, Bytes{0x00} + Bytes(64, 9)) + pieces[1];
    pieces[2] = EightBitCodes(0x00) + pieces[2];
    ExpectPlain(Joined(pieces), "tables twice");
}

TEST(JpgMarker, AThumbnailInASegmentIsNotTheImage) {
    const Bytes thumbnail = GreyFileUpToItsData(8, 8) + FlatBlocks({-500}) + end;
    const Bytes tiff{'M', 'M', 0, 42, 0, 0, 0, 8, 0, 0, 0, 0, 0, 0};
    const Bytes exif = Segment(0xE1, Bytes{'E', 'x', 'i', 'f', 0, 0} + tiff + thumbnail);
    const Bytes jfxx = Segment(0xE0, Bytes{'J', 'F', 'X', 'X', 0, 0x10} + thumbnail);
    for (const Bytes& segment : {exif, jfxx, exif + exif, Segment(0xE2, thumbnail)}) {
        const JpgLoad load(With(1, segment));
        EXPECT_EQ(load.info.Width, 16u);
        ExpectPlain(With(1, segment), "before the tables");
        ExpectPlain(With(5, segment), "before the scan");
    }
}

TEST(JpgMarker, LengthsThatLieNeverLeadIntoTheScan) {
    const std::vector<Bytes> pieces = Pieces();
    std::vector<Bytes> segments{pieces[1],
                                pieces[2],
                                RestartInterval(0),
                                Segment(0xE1, Bytes{'E', 'x', 'i', 'f', 0, 0, 'I', 'I', 42, 0, 8, 0, 0, 0, 0, 0}),
                                Segment(0xEE, Bytes(12, 1)),
                                Segment(0xFE, Bytes(5, 'x')),
                                pieces[4]};
    for (const Bytes& segment : segments) {
        const std::size_t truth = segment.size() - 2;
        for (std::size_t length = 0; length <= 0xFFFF; length = length < truth + 8 ? length + 1 : length * 5 + 3) {
            if (length == truth)
                continue;
            Bytes lying = segment;
            lying[2] = static_cast<std::uint8_t>(length >> 8);
            lying[3] = static_cast<std::uint8_t>(length);
            std::vector<Bytes> changed = pieces;
            const auto place = std::find(changed.begin(), changed.end(), segment);
            if (place != changed.end())
                *place = lying;
            else
                changed.insert(changed.begin() + 1, lying);
            const std::string failure = JpgFailure(Joined(changed));
            EXPECT_TRUE(failure.empty() || failure.starts_with("Expected marker X'FF' at offset 0x") ||
                        failure.starts_with("JPGDecoder failed, error code "))
                << "marker " << int(segment[1]) << ", length " << length << " for " << truth << ": " << failure;
        }
    }
}

TEST(JpgMarker, TheLastScanOfAComponentCounts) {
    const Bytes head = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                       FrameHeader(0xC0, 8, 8, 8, {{1}, {2}, {3}});
    const Bytes chroma = ScanHeader({3}) + FlatBlocks({8 * 40}) + ScanHeader({2}) + FlatBlocks({8 * 10});
    const Bytes once = head + chroma + ScanHeader({1}) + FlatBlocks({8 * 30}) + end;
    const Bytes twice = head + ScanHeader({1}) + FlatBlocks({8 * -60}) + chroma + ScanHeader({2, 1}) +
                        FlatBlocks({8 * 10, 8 * 30}) + end;
    const JpgLoad load(twice);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), JpgLoad(once).Samples<std::uint8_t>());
    EXPECT_NEAR(load.Samples<std::uint8_t>()[0], 128 + 30 + 1.772 * 10, 3);
    EXPECT_NEAR(load.Samples<std::uint8_t>()[2], 128 + 30 + 1.402 * 40, 3);
}

TEST(JpgMarker, AScanOfAllComponentsMakesTheEarlierOnesForgotten) {
    const Bytes head = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                       FrameHeader(0xC0, 8, 8, 8, {{1}, {2}, {3}});
    const Bytes all = ScanHeader({1, 2, 3}) + FlatBlocks({8 * 30, 8 * 10, 8 * 40});
    const JpgLoad load(head + ScanHeader({1}) + FlatBlocks({8 * -60}) + all + end);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), JpgLoad(head + all + end).Samples<std::uint8_t>());
}

TEST(JpgMarker, AComponentWithoutAScanIsGrey) {
    const Bytes head = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                       FrameHeader(0xC0, 8, 8, 8, {{1}, {2}, {3}});
    const JpgLoad load(head + ScanHeader({1}) + FlatBlocks({8 * 30}) + end);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    const Bytes samples = load.Samples<std::uint8_t>();
    EXPECT_EQ(Bytes(samples.begin(), samples.begin() + 4), (Bytes{158, 158, 158, 255}));
}

TEST(JpgMarker, TwelveSequentialBitsInScansOfTheirOwnStayGrey) {
    const Bytes file = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                       FrameHeader(0xC0, 12, 8, 8, {{1}, {2}, {3}}) + ScanHeader({1}) + FlatBlocks({8 * 900}) +
                       ScanHeader({2, 3}) + FlatBlocks({8 * 40, 8 * -700}) + end;
    const JpgLoad load(file);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint16_t>(), std::vector<std::uint16_t>(8 * 8 * 4, 0x8000));
}

TEST(JpgMarker, TheFrameSaysWhatImageIsWanted) {
    for (unsigned precision = 0; precision <= 16; ++precision)
        for (const int marker : {0xC0, 0xC2, 0xC3}) {
            ET::Img::JPGDecoder decoder(Quorvex::MakeShared<TestStream>(
                start + FrameHeader(static_cast<std::uint8_t>(marker), static_cast<std::uint8_t>(precision), 33, 17,
                                    {{1, 0x22}, {2, 0x11}, {3, 0x14}})));
            const ET::Img::ImageInfo info = decoder.GetInfo(0);
            EXPECT_EQ(info.Width, 33u);
            EXPECT_EQ(info.Height, 17u);
            EXPECT_EQ(info.BitsPerPixel, precision < 9 ? 8u : 16u);
            EXPECT_EQ(static_cast<int>(info.ColorType), precision < 9 ? 14 : 15);
            EXPECT_EQ(info.AllocatedWidth, 48u) << "whole MCUs of 16 columns";
            EXPECT_EQ(info.AllocatedHeight, 32u) << "and of 32 rows";
        }
}

/// The route that four flat components go with an APP14 segment before their frame.
std::string RouteOf(const Bytes& adobe) {
    // Inks of 200, 100, 60 and black of 180, as differences from 128.
    const JpgLoad load(start + adobe + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                       FrameHeader(0xC0, 8, 8, 8, {{1}, {2}, {3}, {4}}) + ScanHeader({1, 2, 3, 4}) +
                       FlatBlocks({8 * 72, 8 * -28, 8 * -68, 8 * 52}) + end);
    const Bytes samples = load.Samples<std::uint8_t>();
    const auto isNear = [&](double blue, double green, double red) {
        return std::abs(samples[0] - blue) < 4 && std::abs(samples[1] - green) < 4 && std::abs(samples[2] - red) < 4;
    };
    if (isNear(60 * 180 / 255.0, 100 * 180 / 255.0, 200 * 180 / 255.0))
        return "CMYK";
    const double blue = 200 - 28 * 1.772, green = 200 + 28 * 0.344136 + 68 * 0.714136, red = 200 - 68 * 1.402;
    if (isNear(180 - blue * 180 / 255, std::max(0.0, 180 - green * 180 / 255), 180 - red * 180 / 255))
        return "YCCK";
    return isNear(blue, green, red) ? "YCbCr" : "other";
}

TEST(JpgMarker, TheTransformOfAnAdobeSegmentChoosesTheRoute) {
    const Bytes front(11, 0x41);
    EXPECT_EQ(RouteOf({}), "YCbCr");
    EXPECT_EQ(RouteOf(Segment(0xEE, front + Bytes{0})), "CMYK") << "whatever its tag is";
    EXPECT_EQ(RouteOf(Segment(0xEE, front + Bytes{2})), "YCCK");
    for (const std::uint8_t transform : {1, 3, 255})
        EXPECT_EQ(RouteOf(Segment(0xEE, front + Bytes{transform})), "YCbCr");
    EXPECT_EQ(RouteOf(Segment(0xEE, front + Bytes{2, 0, 0, 0xFF, 0xD9})), "YCCK") << "the rest is skipped";
    EXPECT_EQ(RouteOf(Segment(0xEE, front)), "YCbCr") << "a length of 13 is too short";
    EXPECT_EQ(RouteOf(Segment(0xEE, {})), "YCbCr");
    EXPECT_EQ(RouteOf(Segment(0xEE, front + Bytes{0}) + Segment(0xEE, front + Bytes{1})), "CMYK") << "left as it was";
    EXPECT_EQ(RouteOf(Segment(0xEE, front + Bytes{0}) + Segment(0xEE, front + Bytes{2})), "YCCK");
}

} // namespace
