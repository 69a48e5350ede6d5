#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

using namespace JpgSegments;

namespace {

const std::vector<FrameComponent> colours{{1}, {2}, {3}};

/// A file with whatever comes behind the start of image.
Bytes With(const Bytes& segments) {
    return start + segments + end;
}

Bytes ScanOf(const std::vector<FrameComponent>& components, std::uint8_t precision = 8, std::uint8_t marker = 0xC0) {
    Bytes identifiers;
    for (const FrameComponent& component : components)
        identifiers.push_back(component.identifier);
    return With(FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                FrameHeader(marker, precision, 8, 8, components) + ScanHeader(identifiers, 0, marker == 0xC2 ? 0 : 63) +
                Bytes(64, 0));
}

TEST(JpgFailure, WithoutAStartOfImage) {
    EXPECT_EQ(JpgFailure({}), "Missing Start Of Image");
    EXPECT_EQ(JpgFailure({0xFF}), "Missing Start Of Image");
    EXPECT_EQ(JpgFailure({0xFF, 0xD9, 0xFF, 0xD8}), "Missing Start Of Image");
}

TEST(JpgFailure, WithoutAFrame) {
    EXPECT_EQ(JpgFailure(With({})), "Missing Start Of Frame!");
    EXPECT_EQ(JpgFailure(start), "Missing Start Of Frame!");
    EXPECT_EQ(JpgFailure(With(ScanHeader({1}))), "Missing Start Of Frame!");
}

TEST(JpgFailure, OfAByteInThePlaceOfAMarker) {
    EXPECT_EQ(JpgFailure(start + Bytes{0x12}), "Expected marker X'FF' at offset 0x2");
    EXPECT_EQ(JpgFailure(start + Segment(0xE0, Bytes(20, 0)) + Bytes{0}), "Expected marker X'FF' at offset 0x1A");
}

TEST(JpgFailure, OfFramesOfOtherKinds) {
    const std::pair<std::uint8_t, const char*> refused[] = {
        {0xC1, "SOF01 Extended sequential DCT with Huffman coding is not supported"},
        {0xC5, "SOF05 Differential sequential DCT with Huffman coding is not supported"},
        {0xC6, "SOF06 Differential progressive DCT with Huffman coding is not supported"},
        {0xC7, "SOF07 Differential lossless (sequential) with Huffman coding is not supported"},
        {0xC9, "SOF09 Extended sequential DCT with arithmetic coding is not supported"},
        {0xCA, "SOF10 Progressive DCT with arithmetic coding is not supported"},
        {0xCB, "SOF11 Lossless (sequential) with arithmetic coding is not supported"},
        {0xCD, "SOF13 Differential sequential DCT with arithmetic coding is not supported"},
        {0xCE, "SOF14 Differential progressive DCT with arithmetic coding is not supported"},
        {0xCF, "SOF15 Differential lossless (sequential) with arithmetic coding is not supported"},
    };
    for (const auto& [marker, text] : refused)
        EXPECT_EQ(JpgFailure(With(FrameHeader(marker, 8, 8, 8, colours))), text);
}

TEST(JpgFailure, OfMarkersThatStandAloneInTheWrongPlace) {
    for (std::uint8_t number = 1; number < 8; ++number)
        EXPECT_EQ(JpgFailure(start + Bytes{0xFF, static_cast<std::uint8_t>(0xD0 + number)}),
                  "Unexpected marker X'FFD" + std::to_string(number) + "' at offset 0x2");
    EXPECT_EQ(JpgFailure(start + start), "Unexpected marker X'FFD8' (Start Of Image) at offset 0x2");
}

TEST(JpgFailure, OfTheFirstRestartMarkerIsThatItHasNoLength) {
    EXPECT_EQ(JpgFailure(start + Bytes{0xFF, 0xD0, 0x00, 0x02}), "Missing Start Of Frame!") << "skipped by its length";
    EXPECT_EQ(JpgFailure(start + Bytes{0xFF, 0xD0, 0x00, 0x01, 0x00}), "");
}

TEST(JpgFailure, OfFrameHeadersThatCannotBe) {
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 17, 8, 8, colours))), "sample precision > 16");
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 8, 8, 0, colours))), "number of lines == 0");
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 8, 0, 8, colours))), "");
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 8, 8, 8, {}))), "invalid number of image components");
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 8, 8, 8, {{1}, {2}, {3}, {4}, {5}}))),
              "invalid number of image components");
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 8, 8, 8, {{1, 0x01}}))), "");
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 8, 8, 8, {{1, 0x15}}))), "");
}

TEST(JpgFailure, OfTablesThatCannotBe) {
    EXPECT_EQ(JpgFailure(With(Segment(0xDB, Bytes{0x10} + Bytes(128, 1)))), "JPGDecoder failed, error code 550");
    EXPECT_EQ(JpgFailure(With(Segment(0xDB, Bytes{0x20} + Bytes(64, 1)))), "JPGDecoder failed, error code 550");
    EXPECT_EQ(JpgFailure(With(Segment(0xC4, Bytes{0x20} + Bytes(16, 0)))), "JPGDecoder failed, error code 617");
    EXPECT_EQ(JpgFailure(With(Segment(0xC4, Bytes{0x00} + Bytes(16, 16) + Bytes(256, 0)))),
              "JPGDecoder failed, error code 578");
}

TEST(JpgFailure, OfScanHeadersThatDoNotFitTheFrame) {
    const Bytes frame = FrameHeader(0xC0, 8, 8, 8, {{1}});
    EXPECT_EQ(JpgFailure(With(frame + ScanHeader({1, 2}))),
              "number of image components in scan > number of image components in frame");
    EXPECT_EQ(JpgFailure(With(frame + Segment(0xDA, {1, 1, 0x40, 0, 63, 0}))), "invalid DC huffman table selector");
    EXPECT_EQ(JpgFailure(With(frame + Segment(0xDA, {1, 1, 0x04, 0, 63, 0}))), "invalid AC huffman table selector");
    EXPECT_EQ(JpgFailure(With(frame + ScanHeader({9}))), "");
    EXPECT_EQ(JpgFailure(With(frame + ScanHeader({}))), "");
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 8, 8, 8, colours) + ScanHeader({1, 1, 2}))), "");
}

TEST(JpgFailure, OfBandsThatAProgressiveScanCannotHave) {
    const Bytes frame = FrameHeader(0xC2, 8, 8, 8, colours);
    for (const Bytes& scan : {ScanHeader({1}, 0, 5), ScanHeader({1}, 5, 4), ScanHeader({1}, 1, 64),
                              ScanHeader({1, 2}, 1, 5), ScanHeader({1}, 1, 5, 0x0E)})
        EXPECT_EQ(JpgFailure(With(frame + scan)), "");
}

TEST(JpgFailure, OfFactorsThatCannotBeConverted) {
    const std::string name = "JPGDecoder failed, ";
    EXPECT_EQ(JpgFailure(ScanOf({{1, 0x41}, {2}, {3}})), name + "component 1 sampling factors must be 1 or 2");
    EXPECT_EQ(JpgFailure(ScanOf({{1}, {2, 0x22}, {3}})), name + "component 2 sampling factors must be 1");
    EXPECT_EQ(JpgFailure(ScanOf({{1}, {2}, {3, 0x12}})), name + "component 3 sampling factors must be 1");
    EXPECT_EQ(JpgFailure(ScanOf({{1}, {2, 0x22}, {3}}, 8, 0xC2)), name + "component 2 sampling factors must be 1")
        << "at the end of a progressive file";
    EXPECT_EQ(JpgFailure(ScanOf({{1}, {2}})), name + "invalid number of image components");
    EXPECT_EQ(JpgFailure(ScanOf({{1}, {2}}, 8, 0xC2)), name + "invalid number of image components");
}

TEST(JpgFailure, OfFactorsOfFilesWithInk) {
    const Bytes adobe = Segment(0xEE, Bytes{'A', 'd', 'o', 'b', 'e', 0, 100, 0, 0, 0, 0, 0});
    for (std::uint8_t place = 0; place < 4; ++place) {
        std::vector<FrameComponent> components{{1}, {2}, {3}, {4}};
        components[place].factors = 0x21;
        Bytes file = ScanOf(components);
        file.insert(file.begin() + 2, adobe.begin(), adobe.end());
        EXPECT_EQ(JpgFailure(file),
                  "JPGDecoder failed, component " + std::to_string(place + 1) + " sampling factors must be 1");
    }
}

TEST(JpgFailure, OfABaselineFileOfTwelveBits) {
    EXPECT_EQ(JpgFailure(ScanOf({{1}}, 12)),
              "JPGDecoder failed, ConvertMCUColors with 16bit is currently not supported");
}

TEST(JpgFailure, ASegmentThatLiesAboutItsLengthRaises) {
    EXPECT_EQ(JpgFailure(start + Bytes{0xFF, 0xE0, 0xFF, 0xFF, 0}), "");
    EXPECT_EQ(JpgFailure(start + Bytes{0xFF, 0xE0, 0x00, 0x01, 0}), "");
    EXPECT_EQ(JpgFailure(start + Bytes{0xFF, 0xC4, 0x00, 0x03, 0x00}), "");
}

TEST(JpgFailure, TwoFramesInOneFileRaise) {
    EXPECT_EQ(JpgFailure(With(FrameHeader(0xC0, 8, 8, 8, colours) + FrameHeader(0xC0, 8, 9, 9, colours))), "");
}

TEST(JpgFailure, AFileWithoutAScanIsGreyAndIncomplete) {
    const JpgLoad load(With(FrameHeader(0xC0, 8, 3, 2, colours)));
    EXPECT_TRUE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), Bytes(3 * 2 * 4, 0x80));
}

TEST(JpgFailure, TwelveProgressiveBitsStayGrey) {
    const JpgLoad load(With(FlatQuantisation() + FourBitCodes(0x00) + FrameHeader(0xC2, 12, 8, 8, {{1}}) +
                            ScanHeader({1}, 0, 0) + Bytes{0x5F, 0xFF, 0x00}));
    EXPECT_EQ(load.info.ColorType, Quorvex::Data::ColorTypeEnum::BGRAUInt16);
    EXPECT_EQ(load.info.BitsPerPixel, 16u);
    EXPECT_EQ(load.Samples<std::uint16_t>(), std::vector<std::uint16_t>(64 * 4, 0x8000));
}

TEST(JpgFailure, AnyBytesBetweenTheScanAndTheNextMarkerMakeItIncomplete) {
    const Bytes data{0x00};
    const JpgLoad whole(GreyFileUpToItsData(8, 8) + data + end);
    EXPECT_FALSE(whole.decoder.IsIncomplete());
    const JpgLoad load(GreyFileUpToItsData(8, 8) + data + Bytes{0x77} + end);
    EXPECT_TRUE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), whole.Samples<std::uint8_t>());
}

TEST(JpgFailure, WithoutAnEndOfImageTheFileIsIncomplete) {
    const JpgLoad load(GreyFileUpToItsData(8, 8) + Bytes{0x00});
    EXPECT_TRUE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>()[0], 128);
}

TEST(JpgFailure, FillBytesMayPrecedeAMarker) {
    Bytes file = GreyFileUpToItsData(8, 8) + Bytes{0x00, 0xFF, 0xFF} + end;
    file.insert(file.begin() + 2, 3, 0xFF);
    EXPECT_FALSE(JpgLoad(file).decoder.IsIncomplete());
}

TEST(JpgFailure, TheHeaderPassReadsNoEntropyCodedData) {
    const auto stream = Quorvex::MakeShared<TestStream>(
        start + FrameHeader(0xC0, 8, 5, 4, {{1}}) + Bytes{0x00, 0x11, 0x22}, TestStream::Manner::Memory);
    ET::Img::JPGDecoder decoder(stream);
    EXPECT_EQ(decoder.GetInfo(0).Width, 5u) << "what follows the frame header is no marker, and nobody has looked";
}

} // namespace
