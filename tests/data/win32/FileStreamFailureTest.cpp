#include "data/FileStream.h"
#include "foundation/Version.h"
#include "tests/data/SampleTypes.h"
#include "tests/support/LogCapture.h"

#include <windows.h>

using namespace Quorvex;
using Quorvex::Data::Test::RaisedText;
using Quorvex::Test::LogCapture;
using Quorvex::Test::TemporaryFolder;

TEST(FileStreamFailure, UnusualFailureToOpenIsReportedFirst) {
    const LogCapture log;
    EXPECT_EQ(RaisedText([&] { FileStream stream(u"C:\\a*b.bmp"); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("CreateFileW failed with error code 123")) << log.Text();
}

TEST(FileStreamFailure, NarrowSystemReportsTheNarrowCall) {
    const ScopedSystemVersion windows98({4, 10, 0});
    const LogCapture log;
    EXPECT_EQ(RaisedText([&] { FileStream stream("C:\\a*b.bmp"); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("CreateFileA failed with error code 123")) << log.Text();
}

TEST(FileStreamFailure, SeekThatTheSystemRefusesIsReported) {
    const LogCapture log;
    const TemporaryFolder folder;
    folder.Write("a", "a");
    FileStream stream(folder.PathOf("a"));
    EXPECT_EQ(RaisedText([&] { stream.seek(0xFFFFFFFF00000000); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("SetFilePointer failed with error code 131")) << log.Text();
}

TEST(FileStreamFailure, FileInUseRaisesWithoutReport) {
    const LogCapture log;
    const TemporaryFolder folder;
    folder.Write("a", "a");
    const HANDLE writer = CreateFileW((folder.Path() / "a").c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(writer, INVALID_HANDLE_VALUE);
    EXPECT_EQ(RaisedText([&] { FileStream stream(folder.PathOf("a")); }), "");
    CloseHandle(writer);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
    EXPECT_NO_THROW(FileStream stream(folder.PathOf("a")));
}
