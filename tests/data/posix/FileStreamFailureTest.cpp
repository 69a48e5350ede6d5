#include "data/FileStream.h"
#include "tests/data/SampleTypes.h"
#include "tests/support/LogCapture.h"

#include <cerrno>
#include <sys/stat.h>

using namespace Quorvex;
using Quorvex::Data::Test::RaisedText;
using Quorvex::Test::LogCapture;
using Quorvex::Test::TemporaryFolder;

TEST(FileStreamFailure, UnusualFailureToOpenIsReportedFirst) {
    const LogCapture log;
    const TemporaryFolder folder;
    EXPECT_EQ(RaisedText([&] { FileStream stream(folder.PathOf(std::string(300, 'a'))); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("open failed with error code " + std::to_string(ENAMETOOLONG))) << log.Text();
}

TEST(FileStreamFailure, SeekThatTheSystemRefusesIsReported) {
    const LogCapture log;
    const TemporaryFolder folder;
    folder.Write("a", "a");
    FileStream stream(folder.PathOf("a"));
    EXPECT_EQ(RaisedText([&] { stream.seek(0xFFFFFFFFFFFFFFFF); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("lseek failed with error code " + std::to_string(EINVAL))) << log.Text();
}

TEST(FileStreamFailure, PipeIsNoFileAndOpeningItDoesNotWait) {
    const LogCapture log;
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(RaisedText([&] { FileStream stream(folder.PathOf("pipe")); }), "");
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST(FileStreamFailure, ReadThatTheSystemRefusesIsReported) {
    const LogCapture log;
    // The memory of this process: a file like any other, but nothing is mapped at its start.
    FileStream stream("/proc/self/mem");
    char byte = 0;
    EXPECT_EQ(RaisedText([&] { stream.read(&byte, 1); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("read failed with error code " + std::to_string(EIO))) << log.Text();
}

// Where others may write to an open file, its stream still goes by what it found.
TEST(FileStreamFailure, SizeAndTimeAreThoseOfTheMomentOfOpening) {
    const TemporaryFolder folder;
    folder.Write("a", "a");
    const FileStream stream(folder.PathOf("a"));
    const std::uint64_t written = stream.GetLastWriteTime();
    folder.Write("a", "changed");
    std::filesystem::last_write_time(folder.Path() / "a", std::filesystem::file_time_type());
    EXPECT_EQ(stream.size(), 1u);
    EXPECT_EQ(stream.GetLastWriteTime(), written);
}

TEST(FileStreamFailure, FileThatShrinksEndsWhereItEndsNow) {
    const LogCapture log;
    const TemporaryFolder folder;
    folder.Write("a", "0123456789");
    FileStream stream(folder.PathOf("a"));
    std::filesystem::resize_file(folder.Path() / "a", 5);
    char bytes[10]{};
    EXPECT_EQ(RaisedText([&] { stream.read(bytes, 10); }), "");
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}
