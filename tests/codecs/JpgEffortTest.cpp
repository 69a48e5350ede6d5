#include "tests/codecs/JpgCoefficients.h"
#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgSegments.h"
#include "tests/codecs/ProcessorTime.h"
#include "tests/data/AllocationProbe.h"

#include <gtest/gtest.h>

// What a file may cost: time and memory stay in proportion to it and to the picture that it can hold.

using namespace JpgSegments;

namespace {

// Seconds of a processor, for work that takes a tenth of it in the slowest of builds.
constexpr double generously = 20.0;

/// A grey progressive frame of 1024 x 1024 and a scan of its first coefficients, all 0.
Bytes GreyFront(const Bytes& frame, const Bytes& firstScan) {
    return start + FlatQuantisation() + EightBitCodes(0x00) + EightBitCodes(0x10) + frame + ScanHeader({1}, 0, 0) +
           firstScan;
}

/// A scan that ends the bands of 16,384 blocks in three bytes.
Bytes EmptyScan() {
    return ScanHeader({1}, 1, 63) + Bytes{0xE0, 0x00, 0x03};
}

Bytes Repeated(const Bytes& piece, std::size_t count) {
    Bytes bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes.insert(bytes.end(), piece.begin(), piece.end());
    return bytes;
}

constexpr std::size_t blockCount = 128 * 128;

Bytes FileOfScans(std::size_t scanCount) {
    // The last scan is one that can be seen: the lowest bit of each first coefficient, in units of 8 for a sample.
    const Bytes visible = ScanHeader({1}, 0, 0, 0x43) + Bytes(blockCount / 8, 0xFE);
    return GreyFront(FrameHeader(0xC2, 8, 1024, 1024, {{1}}), Bytes(blockCount, 0)) + Repeated(EmptyScan(), scanCount) +
           visible + end;
}

TEST(JpgEffort, AFewDozenScansAreAllRead) {
    const JpgLoad load(FileOfScans(30));
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>()[0], 129);
}

TEST(JpgEffort, ThousandsOfScansOfALargePictureEndEarly) {
    const Bytes file = FileOfScans(8000);
    const double began = ProcessorSeconds();
    const JpgLoad load(file);
    EXPECT_LT(ProcessorSeconds() - began, generously);
    EXPECT_TRUE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>()[0], 128) << "the last scan is not reached";
}

Bytes SmallFileOfScans(const Bytes& tables, std::size_t scanCount) {
    return GreyFront(tables + FrameHeader(0xC2, 8, 8, 8, {{1}}), {0x00}) +
           Repeated(ScanHeader({1}, 1, 63) + Bytes{0x00}, scanCount) + ScanHeader({1}, 0, 0, 0x43) + Bytes{0xFE, 0x00} +
           end;
}

TEST(JpgEffort, ThousandsOfScansOfASmallPictureAreAllRead) {
    const Bytes file = SmallFileOfScans({}, 8000);
    const double began = ProcessorSeconds();
    const JpgLoad load(file);
    EXPECT_LT(ProcessorSeconds() - began, generously);
    EXPECT_EQ(load.Samples<std::uint8_t>()[0], 129);
}

TEST(JpgEffort, ScansOfOneIntervalAreReadWithManyWorkersToo) {
    const Bytes file = SmallFileOfScans(RestartInterval(1), 300);
    const double began = ProcessorSeconds();
    const JpgLoad load(file, 8);
    EXPECT_LT(ProcessorSeconds() - began, generously);
    EXPECT_EQ(load.Samples<std::uint8_t>()[0], 129);
}

TEST(JpgEffort, EachBitOfEachCoefficientMayHaveItsScan) {
    const JpgCoefficients::Picture picture = JpgCoefficients::RandomPicture(80, 72, 8, 1, 3);
    std::vector<JpgCoefficients::Scan> scans{{{0}, 0, 0, 0, 7}};
    for (std::uint8_t low = 7; low-- != 0;)
        scans.push_back({{0}, 0, 0, static_cast<std::uint8_t>(low + 1), low});
    for (std::uint8_t place = 1; place < 64; ++place) {
        scans.push_back({{0}, place, place, 0, 7});
        for (std::uint8_t low = 7; low-- != 0;)
            scans.push_back({{0}, place, place, static_cast<std::uint8_t>(low + 1), low});
    }
    ASSERT_EQ(scans.size(), 512u);
    const JpgLoad load(ProgressiveFile(picture, scans));
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), JpgLoad(SequentialFile(picture)).Samples<std::uint8_t>());
}

/// An image that claims a size and has no memory, and says so to whoever locks it.
class ClaimedImage final : public Quorvex::Data::ImageBase {
public:
    explicit ClaimedImage(const ET::Img::ImageInfo& info)
        : ImageBase(static_cast<Quorvex::Data::ColorTypeEnum::Value>(info.ColorType)), m_info(info) {
        AllocatedWidth = info.AllocatedWidth;
        AllocatedHeight = info.AllocatedHeight;
    }

    std::uint32_t GetWidth() const override { return m_info.Width; }
    std::uint32_t GetHeight() const override { return m_info.Height; }
    void* Allocate(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) override { return nullptr; }
    bool DeleteContextObjects() override { return true; }

private:
    ET::Img::ImageInfo m_info;
};

/// What becomes of a frame in a file of that many bytes, of which none are a scan's.
std::string FateOf(std::uint8_t marker, std::uint8_t precision, std::uint16_t width, std::uint16_t height,
                   std::size_t fileSize) {
    Bytes file = start + FrameHeader(marker, precision, width, height, {{1}, {2}, {3}});
    file.resize(fileSize - 1, 0xFF);
    file.push_back(0xD9);
    ET::Img::JPGDecoder decoder(Quorvex::MakeShared<TestStream>(file, TestStream::Manner::Memory));
    const ET::Img::ImageInfo info = decoder.GetInfo(0);
    EXPECT_EQ(info.Width, width);
    EXPECT_EQ(info.Height, height);
    const AllocationProbe probe;
    try {
        decoder.Load(Quorvex::MakeShared<ClaimedImage>(info), 0);
    } catch (const Quorvex::Exception& failure) {
        EXPECT_LT(probe.GetTotal(), std::size_t{1} << 20);
        return failure.GetMessageText().IsEmpty() ? "refused" : failure.what();
    }
    return "no exception";
}

TEST(JpgEffort, TheLargestFrameWithoutDataIsRefusedBeforeItsMemoryIsTouched) {
    for (const int marker : {0xC0, 0xC2, 0xC3})
        for (const std::uint8_t precision : {8, 12})
            EXPECT_EQ(FateOf(static_cast<std::uint8_t>(marker), precision, 65535, 65535, 100), "refused");
}

TEST(JpgEffort, FramesAreRefusedThatAreLargeAndHardlyInTheFile) {
    EXPECT_EQ(FateOf(0xC0, 8, 8192, 8192, 100), "LockBGRAUInt8 is not implemented") << "no burden";
    EXPECT_EQ(FateOf(0xC0, 8, 8192, 8193, 100), "refused");
    // 4,096 pixels for each byte of the file.
    EXPECT_EQ(FateOf(0xC0, 8, 16384, 8192, 32768), "LockBGRAUInt8 is not implemented");
    EXPECT_EQ(FateOf(0xC0, 8, 16384, 8192, 32767), "refused");
}

TEST(JpgEffort, TheHeaderPassTakesNoMemoryForTheFrame) {
    ET::Img::JPGDecoder decoder(Quorvex::MakeShared<TestStream>(
        start + FrameHeader(0xC2, 8, 65535, 65535, {{1, 0x22}, {2}, {3}}), TestStream::Manner::Memory));
    const AllocationProbe probe;
    EXPECT_EQ(decoder.GetInfo(0).AllocatedWidth, 65536u);
    EXPECT_LT(probe.GetTotal(), std::size_t{1} << 20);
}

TEST(JpgEffort, TablesOf255SymbolsOfOneLengthAreLoadedOverAndOver) {
    Bytes tables;
    for (std::uint8_t length = 0; length < 16; ++length) {
        Bytes content{0x00};
        content.resize(17);
        content[1u + length] = 255;
        tables = tables + Segment(0xC4, content + Bytes(255, 1));
    }
    const Bytes file = start + FrameHeader(0xC0, 8, 8, 8, {{1}}) + FlatQuantisation() + Repeated(tables, 500) +
                       FourBitCodes(0x00) + FourBitCodes(0x10) + ScanHeader({1}) + FlatBlocks({80}) + end;
    const double began = ProcessorSeconds();
    const JpgLoad load(file);
    EXPECT_LT(ProcessorSeconds() - began, generously);
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>()[0], 138);
}

TEST(JpgEffort, AScanWithTheCodeOf255SymbolsOfEachLengthEnds) {
    for (std::uint8_t length = 0; length < 16; ++length)
        for (const std::uint8_t symbol : {0x00, 0x01, 0x0F, 0xF0, 0xFF}) {
            Bytes content{0x00};
            content.resize(17);
            content[1u + length] = 255;
            const Bytes dc = content + Bytes(255, symbol);
            content[0] = 0x10;
            const Bytes file = start + FlatQuantisation() + Segment(0xC4, dc) +
                               Segment(0xC4, content + Bytes(255, symbol)) + FrameHeader(0xC0, 8, 64, 64, {{1}}) +
                               ScanHeader({1}) + Bytes(40, 0x12) + end;
            const JpgOutcome alone(file, 1);
            EXPECT_EQ(alone.failure, "");
            EXPECT_EQ(alone, JpgOutcome(file, 8));
        }
}

} // namespace
