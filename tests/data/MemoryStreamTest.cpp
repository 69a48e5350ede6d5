#include "data/MemoryStream.h"
#include "tests/data/SampleTypes.h"
#include "tests/support/LogCapture.h"

#include <array>
#include <numeric>

using namespace Quorvex;
using Quorvex::Data::Test::RaisedText;

namespace {

std::array<std::uint8_t, 100> Counting() {
    std::array<std::uint8_t, 100> bytes{};
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}

} // namespace

TEST(MemoryStream, ReadsInOrderAndTellsItsPosition) {
    const auto bytes = Counting();
    MemoryStream stream(bytes.data(), 100);
    EXPECT_EQ(stream.size(), 100u);
    EXPECT_EQ(stream.tell(), 0u);
    std::uint8_t out[3]{};
    stream.read(out, 3);
    EXPECT_EQ(out[2], 2);
    EXPECT_EQ(stream.tell(), 3u);
    stream.seek(98);
    stream.read(out, 2);
    EXPECT_EQ(out[1], 99);
    EXPECT_EQ(stream.tell(), 100u);
}

TEST(MemoryStream, ReadingPastTheEndRaisesAndStaysWhereItWas) {
    const auto bytes = Counting();
    MemoryStream stream(bytes.data(), 100);
    std::uint8_t out[4]{0xEE, 0xEE, 0xEE, 0xEE};
    stream.seek(97);
    EXPECT_EQ(RaisedText([&] { stream.read(out, 4); }), "");
    EXPECT_EQ(stream.tell(), 97u);
    EXPECT_EQ(out[0], 0xEE);
    EXPECT_NO_THROW(stream.read(out, 3));
    EXPECT_NO_THROW(stream.read(out, 0));
    EXPECT_THROW(stream.read(out, 1), Exception);
    EXPECT_THROW(stream.read(out, 0xFFFFFFFF), Exception);
}

TEST(MemoryStream, SeekTakesAnyPositionAndReadingThereFails) {
    const auto bytes = Counting();
    MemoryStream stream(bytes.data(), 100);
    std::uint8_t out = 0;
    stream.seek(5000);
    EXPECT_EQ(stream.tell(), 5000u);
    EXPECT_THROW(stream.read(&out, 1), Exception);
    EXPECT_THROW(stream.lock(1), Exception);
    EXPECT_NO_THROW(stream.read(&out, 0));
    EXPECT_EQ(stream.lock(0).Size, 0u);
    EXPECT_EQ(stream.tell(), 5000u);
    stream.seek(7);
    stream.read(&out, 1);
    EXPECT_EQ(out, 7);
}

TEST(MemoryStream, SeekTakesTheLow32BitsAndTellWidensWithTheSign) {
    const auto bytes = Counting();
    MemoryStream stream(bytes.data(), 100);
    stream.seek(0x500000007);
    EXPECT_EQ(stream.tell(), 7u);
    stream.seek(0xFFFFFFFF);
    EXPECT_EQ(stream.tell(), 0xFFFFFFFFFFFFFFFFu);
    std::uint8_t out = 0;
    EXPECT_THROW(stream.read(&out, 1), Exception);
}

TEST(MemoryStream, LockGivesTheBytesInPlaceAndMovesAtOnce) {
    const auto bytes = Counting();
    MemoryStream stream(bytes.data(), 100);
    stream.seek(10);
    const StreamLock lock = stream.lock(20);
    EXPECT_EQ(lock.Source, &stream);
    EXPECT_EQ(lock.Address, bytes.data() + 10);
    EXPECT_EQ(lock.Size, 20u);
    EXPECT_EQ(stream.tell(), 30u);
}

TEST(MemoryStream, LockPastTheEndRaises) {
    const auto bytes = Counting();
    MemoryStream stream(bytes.data(), 100);
    stream.seek(99);
    EXPECT_EQ(RaisedText([&] { stream.lock(2); }), "");
    EXPECT_EQ(stream.tell(), 99u);
    EXPECT_NO_THROW(stream.lock(1));
}

TEST(MemoryStream, CloneIsReportedAndAlwaysRaises) {
    const Quorvex::Test::LogCapture log;
    const auto bytes = Counting();
    const MemoryStream stream(bytes.data(), 100);
    EXPECT_EQ(RaisedText([&] { stream.Clone(); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("MemoryStream::Clone")) << log.Text();
}

TEST(MemoryStream, EmptyMemoryIsAStreamWithoutBytes) {
    MemoryStream stream(nullptr, 0);
    EXPECT_EQ(stream.size(), 0u);
    std::uint8_t out = 0;
    EXPECT_NO_THROW(stream.read(&out, 0));
    EXPECT_THROW(stream.read(&out, 1), Exception);
}
