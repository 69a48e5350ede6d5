#include "data/FileStream.h"

#include "data/StreamBuffer.h"
#include "foundation/Version.h"
#include "tests/data/SampleTypes.h"
#include "tests/support/LogCapture.h"

#include <chrono>

using namespace Quorvex;
using Quorvex::Data::Test::RaisedText;
using Quorvex::Test::LogCapture;
using Quorvex::Test::TemporaryFolder;

namespace {

/// A folder with one file of 200 bytes, byte i being i.
class FileStreamTest : public ::testing::Test {
protected:
    FileStreamTest() {
        std::string bytes;
        for (int i = 0; i < 200; ++i)
            bytes.push_back(static_cast<char>(i));
        folder.Write("counting", bytes);
    }
    String Counting() const { return folder.PathOf("counting"); }

    TemporaryFolder folder;
    LogCapture log;
};

std::uint8_t NextByte(Stream& stream) {
    std::uint8_t byte = 0;
    stream.read(&byte, 1);
    return byte;
}

} // namespace

TEST_F(FileStreamTest, ReadsFromTheStartAndTellsItsPosition) {
    FileStream stream(Counting());
    EXPECT_EQ(stream.size(), 200u);
    EXPECT_EQ(stream.tell(), 0u);
    std::uint8_t bytes[4]{};
    stream.read(bytes, 4);
    EXPECT_EQ(bytes[3], 3);
    EXPECT_EQ(stream.tell(), 4u);
    stream.seek(150);
    EXPECT_EQ(NextByte(stream), 150);
    EXPECT_NO_THROW(stream.read(bytes, 0));
    EXPECT_EQ(stream.tell(), 151u);
}

TEST_F(FileStreamTest, ReadsExactlyToTheEndAndNotOneByteMore) {
    FileStream stream(Counting());
    std::uint8_t bytes[201]{};
    stream.read(bytes, 200);
    EXPECT_EQ(bytes[199], 199);
    EXPECT_EQ(RaisedText([&] { stream.read(bytes, 1); }), "");
    stream.seek(0);
    EXPECT_EQ(RaisedText([&] { stream.read(bytes, 201); }), "");
    stream.seek(1000);
    EXPECT_EQ(stream.tell(), 1000u);
    EXPECT_EQ(RaisedText([&] { stream.read(bytes, 1); }), "");
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(FileStreamTest, EmptyFileOpensAndItsFirstReadRaises) {
    folder.Write("empty", "");
    FileStream stream(folder.PathOf("empty"));
    EXPECT_EQ(stream.size(), 0u);
    EXPECT_THROW(NextByte(stream), Exception);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(FileStreamTest, MissingFileRaisesWithoutReport) {
    EXPECT_EQ(RaisedText([&] { FileStream stream(folder.PathOf("missing")); }), "");
    EXPECT_EQ(RaisedText([&] { FileStream stream(folder.PathOf("no/such/folder")); }), "");
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(FileStreamTest, FolderIsNoFileAndRaisesWithoutReport) {
    EXPECT_EQ(RaisedText([&] { FileStream stream(TemporaryFolder::TextOf(folder.Path())); }), "");
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(FileStreamTest, PositionsBeyond32BitsAreReached) {
    constexpr std::uint64_t size = 0x1'4000'0003; // 5 GiB and 3 bytes, of which the system stores next to nothing
    folder.Write("sparse", "");
    std::filesystem::resize_file(folder.Path() / "sparse", size - 3);
    std::ofstream(folder.Path() / "sparse", std::ios::binary | std::ios::app) << "end";
    FileStream stream(folder.PathOf("sparse"));
    EXPECT_EQ(stream.size(), size);
    stream.seek(size - 3);
    EXPECT_EQ(stream.tell(), size - 3);
    EXPECT_EQ(NextByte(stream), 'e');
    EXPECT_EQ(stream.tell(), size - 2);
    stream.seek(0x1'0000'0000);
    EXPECT_EQ(stream.tell(), 0x1'0000'0000u);
    EXPECT_EQ(NextByte(stream), 0);
    stream.seek(0xFFFFFFFF); // a low half of all ones is a position like any other
    EXPECT_EQ(stream.tell(), 0xFFFFFFFFu);
    EXPECT_EQ(NextByte(stream), 0);
    EXPECT_EQ(stream.Clone()->tell(), 0x1'0000'0000u);
}

TEST_F(FileStreamTest, LockNeitherReadsNorMovesUntilTheBufferIsBuilt) {
    FileStream stream(Counting());
    stream.seek(20);
    const StreamLock lock = stream.lock(30);
    EXPECT_EQ(lock.Source, &stream);
    EXPECT_EQ(lock.Address, nullptr);
    EXPECT_EQ(lock.Size, 30u);
    EXPECT_EQ(stream.tell(), 20u);
    StreamBuffer buffer(lock);
    EXPECT_EQ(stream.tell(), 50u);
    EXPECT_EQ(buffer.GetOwnedSize(), 30u);
    EXPECT_EQ(buffer.ReadByte(), 20);
}

TEST_F(FileStreamTest, BufferOfMoreThanTheFileHasRaises) {
    FileStream stream(Counting());
    EXPECT_EQ(RaisedText([&] { StreamBuffer buffer(stream.lock(0xFFFFFFFF)); }), "");
    stream.seek(1);
    EXPECT_EQ(RaisedText([&] { StreamBuffer buffer(stream.lock(200)); }), "");
    EXPECT_NO_THROW(StreamBuffer buffer(stream.lock(199)));
}

TEST_F(FileStreamTest, TwoStreamsReadOneFileAtTheSameTime) {
    FileStream first(Counting());
    FileStream second(Counting());
    first.seek(10);
    second.seek(20);
    EXPECT_EQ(NextByte(first), 10);
    EXPECT_EQ(NextByte(second), 20);
    EXPECT_EQ(NextByte(first), 11);
}

TEST_F(FileStreamTest, CloneStandsAtTheSamePositionAndMovesAlone) {
    FileStream stream(Counting());
    stream.seek(100);
    const auto clone = stream.Clone();
    EXPECT_EQ(clone->tell(), 100u);
    EXPECT_EQ(clone->size(), 200u);
    EXPECT_EQ(NextByte(*clone), 100);
    EXPECT_EQ(NextByte(*clone), 101);
    EXPECT_EQ(stream.tell(), 100u);
    EXPECT_EQ(NextByte(stream), 100);
}

TEST_F(FileStreamTest, CloneOutlivesItsSource) {
    auto stream = std::make_unique<FileStream>(Counting());
    const auto clone = stream->Clone();
    stream.reset();
    EXPECT_EQ(NextByte(*clone), 0);
}

TEST_F(FileStreamTest, CloneOfAFileThatHasGoneFailsAsOpeningDoes) {
    const FileStream stream(Counting());
    std::error_code error;
    // Where the system keeps an open file from being removed, it cannot go, and the clone succeeds.
    if (std::filesystem::remove(folder.Path() / "counting", error))
        EXPECT_EQ(RaisedText([&] { stream.Clone(); }), "");
    else
        EXPECT_NO_THROW(stream.Clone());
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(FileStreamTest, LastWriteTimeIsInUnitsOf100Nanoseconds) {
    const std::filesystem::path path = folder.Path() / "counting";
    const auto written = std::filesystem::last_write_time(path);
    const auto timeAfter = [&](std::chrono::hours age) {
        std::filesystem::last_write_time(path, written - age);
        return FileStream(Counting()).GetLastWriteTime();
    };
    EXPECT_EQ(timeAfter(std::chrono::hours(1)) - timeAfter(std::chrono::hours(3)), 2 * 3600ull * 10'000'000);
}

TEST_F(FileStreamTest, LastWriteTimeCountsFrom1601) {
    // 2000-01-01 00:00 UTC: 399 years, of which 96 had a 29th of February, behind the start of the count.
    const std::filesystem::path path = folder.Path() / "counting";
    std::filesystem::last_write_time(path, std::chrono::file_clock::from_sys(std::chrono::sys_seconds(
                                               std::chrono::sys_days(std::chrono::year(2000) / 1 / 1))));
    EXPECT_EQ(FileStream(Counting()).GetLastWriteTime(), (399 * 365 + 96) * 86400ull * 10'000'000);
}

TEST_F(FileStreamTest, ClosedStreamNamesTheOperationThatWasTried) {
    FileStream stream(Counting());
    stream.Close();
    std::uint8_t byte = 0;
    EXPECT_EQ(RaisedText([&] { stream.size(); }), "FileStream::size");
    EXPECT_EQ(RaisedText([&] { stream.lock(1); }), "FileStream::lock");
    EXPECT_EQ(RaisedText([&] { stream.read(&byte, 1); }), "FileStream::read");
    EXPECT_EQ(RaisedText([&] { stream.tell(); }), "FileStream::tell");
    EXPECT_EQ(RaisedText([&] { stream.seek(0); }), "FileStream::seek");
    EXPECT_EQ(RaisedText([&] { stream.Clone(); }), "FileStream::Clone");
    EXPECT_EQ(RaisedText([&] { stream.GetLastWriteTime(); }), "FileStream::GetLastWriteTime");
    EXPECT_NO_THROW(stream.Close());
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(FileStreamTest, CloseGivesTheFileBackToTheSystem) {
    FileStream stream(Counting());
    stream.Close();
    EXPECT_TRUE(std::filesystem::remove(folder.Path() / "counting"));
}

TEST_F(FileStreamTest, NarrowSystemOpensANameOfItsCodePage) {
    const std::filesystem::path path = folder.Path() / u"Gr\u00f6\u00dfe \u20ac.bmp";
    std::ofstream(path, std::ios::binary) << "BM";
    const ScopedSystemVersion windows98({4, 10, 0});
    ASSERT_FALSE(IsUnicodeSystem());
    FileStream stream(TemporaryFolder::TextOf(path));
    EXPECT_EQ(NextByte(stream), 'B');
    EXPECT_EQ(NextByte(*stream.Clone()), 'M');
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(FileStreamTest, WideNamesAreOpenedUnitByUnit) {
    const std::filesystem::path path = folder.Path() / u"\u4e2d\u6587 \U0001F600.bmp";
    std::ofstream(path, std::ios::binary) << "BM";
    FileStream stream(TemporaryFolder::TextOf(path));
    EXPECT_EQ(NextByte(stream), 'B');
}
