#include "data/StreamBuffer.h"
#include "tests/data/AllocationProbe.h"
#include "tests/data/SampleTypes.h"

#include <array>
#include <numeric>

using namespace Quorvex;
using Quorvex::Data::Test::RaisedText;

namespace {

/// A stream whose bytes must be read: byte i of the file is i modulo 251. Its size is a claim; memory it has none.
class ComputedStream final : public Stream {
public:
    explicit ComputedStream(std::uint64_t claimedSize) : m_size(claimedSize) {}
    std::uint64_t tell() const override { return m_position; }
    void read(void* destination, std::uint32_t byteCount) override {
        ++reads;
        if (m_position > m_size || byteCount > m_size - m_position)
            throw Exception();
        for (std::uint32_t i = 0; i < byteCount; ++i)
            static_cast<std::uint8_t*>(destination)[i] = static_cast<std::uint8_t>(m_position++ % 251);
    }
    void seek(std::uint64_t position) override { m_position = position; }
    std::uint64_t size() const override { return m_size; }
    StreamLock lock(std::uint32_t byteCount) override { return {this, nullptr, byteCount}; }
    std::unique_ptr<Stream> Clone() const override { return nullptr; }

    int reads = 0;

private:
    std::uint64_t m_size;
    std::uint64_t m_position = 0;
};

} // namespace

TEST(StreamBuffer, OwnsACopyOfWhatMustBeRead) {
    ComputedStream stream(1000);
    stream.seek(250);
    const StreamLock lock = stream.lock(10);
    EXPECT_EQ(stream.tell(), 250u);
    const StreamBuffer buffer(lock);
    EXPECT_EQ(stream.tell(), 260u);
    EXPECT_EQ(stream.reads, 1);
    EXPECT_EQ(buffer.GetPosition(), 0u);
    EXPECT_EQ(buffer.GetSize(), 10u);
    EXPECT_EQ(buffer.GetOwnedSize(), 10u);
    EXPECT_EQ(buffer.GetData()[0], 250);
    EXPECT_EQ(buffer.GetData()[1], 0);
}

TEST(StreamBuffer, OverMemoryOwnsNothingAndFreesNothing) {
    std::array<std::uint8_t, 8> bytes{1, 2, 3, 4, 5, 6, 7, 8};
    {
        const AllocationProbe probe;
        MemoryStream stream(bytes.data(), 8);
        const StreamBuffer buffer(stream.lock(8));
        EXPECT_EQ(buffer.GetData(), bytes.data());
        EXPECT_EQ(buffer.GetSize(), 8u);
        EXPECT_EQ(buffer.GetOwnedSize(), 0u);
        EXPECT_EQ(probe.GetCount(), 0u);
    }
    bytes[0] = 9;
    EXPECT_EQ(bytes[0], 9);
}

TEST(StreamBuffer, WalksItsBytesUpToTheEnd) {
    ComputedStream stream(6);
    StreamBuffer buffer(stream.lock(6));
    EXPECT_EQ(buffer.ReadByte(), 0);
    EXPECT_EQ(buffer.Take(2)[1], 2);
    EXPECT_EQ(buffer.GetPosition(), 3u);
    EXPECT_EQ(buffer.GetRemaining(), 3u);
    EXPECT_EQ(RaisedText([&] { buffer.Take(4); }), "");
    EXPECT_EQ(buffer.GetPosition(), 3u);
    EXPECT_EQ(buffer.Take(3)[0], 3);
    EXPECT_EQ(RaisedText([&] { buffer.ReadByte(); }), "");
    EXPECT_NO_THROW(buffer.Take(0));
    buffer.Seek(6);
    buffer.Seek(1);
    EXPECT_EQ(buffer.ReadByte(), 1);
    EXPECT_EQ(RaisedText([&] { buffer.Seek(7); }), "");
    EXPECT_EQ(RaisedText([&] { buffer.Take(0xFFFFFFFF); }), "");
}

TEST(StreamBuffer, EmptyBlockFailsAtItsFirstByte) {
    ComputedStream stream(6);
    StreamBuffer buffer(stream.lock(0));
    EXPECT_EQ(buffer.GetSize(), 0u);
    EXPECT_EQ(RaisedText([&] { buffer.ReadByte(); }), "");
    StreamBuffer none;
    EXPECT_EQ(RaisedText([&] { none.ReadByte(); }), "");
}

TEST(StreamBuffer, BlockBeyondTheStreamFailsWithoutTakingMemory) {
    const AllocationProbe probe;
    ComputedStream stream(100);
    EXPECT_EQ(RaisedText([&] { StreamBuffer buffer(stream.lock(0xFFFFFFFF)); }), "");
    stream.seek(1);
    EXPECT_EQ(RaisedText([&] { StreamBuffer buffer(stream.lock(100)); }), "");
    stream.seek(101);
    EXPECT_EQ(RaisedText([&] { StreamBuffer buffer(stream.lock(1)); }), "");
    EXPECT_EQ(probe.GetCount(), 0u);
    EXPECT_EQ(stream.reads, 0);
}

TEST(StreamBuffer, MemoryThatRunsOutPassesThrough) {
    const AllocationProbe probe(1000);
    ComputedStream stream(5000);
    EXPECT_THROW(StreamBuffer buffer(stream.lock(5000)), std::bad_alloc);
    EXPECT_EQ(probe.GetLargest(), 5000u);
}

TEST(StreamBuffer, RefillUsesItsBlockAgainRowAfterRow) {
    ComputedStream stream(1000);
    StreamBuffer buffer(stream.lock(100));
    const std::uint8_t* const block = buffer.GetData();
    const AllocationProbe probe;
    for (std::uint64_t row = 1; row < 10; ++row) {
        buffer.Refill(stream.lock(100));
        EXPECT_EQ(buffer.GetData(), block);
        EXPECT_EQ(buffer.GetPosition(), 0u);
        EXPECT_EQ(buffer.ReadByte(), row * 100 % 251);
    }
    EXPECT_EQ(probe.GetCount(), 0u);
    EXPECT_EQ(RaisedText([&] { buffer.Refill(stream.lock(100)); }), "");
    EXPECT_EQ(buffer.GetSize(), 0u);
    EXPECT_EQ(RaisedText([&] { buffer.ReadByte(); }), "");
}

TEST(StreamBuffer, RefillTakesSmallerAndLargerBlocks) {
    ComputedStream stream(1000);
    StreamBuffer buffer(stream.lock(100));
    buffer.Refill(stream.lock(10));
    EXPECT_EQ(buffer.GetSize(), 10u);
    EXPECT_EQ(buffer.GetOwnedSize(), 10u);
    EXPECT_THROW(buffer.Take(11), Exception);
    buffer.Refill(stream.lock(500));
    EXPECT_EQ(buffer.GetSize(), 500u);
    EXPECT_EQ(buffer.GetData()[499], (110 + 499) % 251);
}

TEST(StreamBuffer, RefillFromMemoryBorrowsAndTheOwnBlockStaysForLater) {
    const std::array<std::uint8_t, 4> bytes{7, 8, 9, 10};
    ComputedStream computed(1000);
    MemoryStream memory(bytes.data(), 4);
    StreamBuffer buffer(computed.lock(100));
    buffer.Refill(memory.lock(4));
    EXPECT_EQ(buffer.GetOwnedSize(), 0u);
    EXPECT_EQ(buffer.ReadByte(), 7);
    const AllocationProbe probe;
    buffer.Refill(computed.lock(100));
    EXPECT_EQ(buffer.GetOwnedSize(), 100u);
    EXPECT_EQ(buffer.ReadByte(), 100);
    EXPECT_EQ(probe.GetCount(), 0u);
}

TEST(StreamBuffer, RemainingBytesAreAStreamOfTheirOwn) {
    ComputedStream stream(10);
    StreamBuffer buffer(stream.lock(10));
    buffer.Seek(4);
    MemoryStream rest = buffer.GetRemainingAsStream();
    EXPECT_EQ(rest.size(), 6u);
    std::uint8_t out = 0;
    rest.read(&out, 1);
    EXPECT_EQ(out, 4);
    EXPECT_EQ(buffer.GetPosition(), 4u);
}

TEST(StreamBuffer, NoBytesLeftAreNoStream) {
    ComputedStream stream(10);
    StreamBuffer buffer(stream.lock(10));
    buffer.Seek(10);
    EXPECT_EQ(RaisedText([&] { buffer.GetRemainingAsStream(); }), "");
    EXPECT_EQ(RaisedText([] { StreamBuffer().GetRemainingAsStream(); }), "");
}
