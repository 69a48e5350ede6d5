#include "foundation/Version.h"
#include "foundation/platform/Files.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace Quorvex;
using namespace Quorvex::Platform;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

/// What an operation does on a system without wide calls, and the same on one with them.
class NarrowSystemTest : public testing::TestWithParam<bool> {
protected:
    bool IsWide() const { return GetParam(); }
    std::string Formed(const std::string& text) const { return text + (IsWide() ? "W" : "A"); }
    bool HasReported(const std::string& text) const { return m_log.HasLineEndingIn(": " + text); }

    ScopedSystemVersion m_version{{GetParam() ? 5u : 4u, 10, 0}};
    LogCapture m_log;
};

INSTANTIATE_TEST_SUITE_P(Forms, NarrowSystemTest, testing::Bool(),
                         [](const auto& form) { return form.param ? "Wide" : "Narrow"; });

TEST_P(NarrowSystemTest, FilesWithNamesInWindows1252AreOpened) {
    std::ofstream(m_log.Folder().Path() / u"\u00E4\u20AC.bmp") << "x";
    const String path = JoinPath(m_log.Folder().PathOf(""), u"\u00E4\u20AC.bmp");
    for (const String& form : {path, path.ToANSI()}) {
        const OpenedFile file = OpenFileForReading(form);
        EXPECT_EQ(file.sizeBytes, 1u);
        CloseFile(file.handle);
    }
}

TEST_P(NarrowSystemTest, NamesAreFoundInTheFormOfTheSystem) {
    std::ofstream(m_log.Folder().Path() / u"\u00E4.bmp") << "x";
    const auto names = FindFileNames(m_log.Folder().PathOf(""), "*.bmp");
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names[0].encoding(), IsWide() ? Encoding::Utf16 : Encoding::Windows1252);
    EXPECT_EQ(names[0].ToANSI(), "\xE4.bmp");
}

TEST_P(NarrowSystemTest, OrdinaryFailuresToOpenAreNotReported) {
    m_log.Folder().Write("shared", "x");
    const String path = m_log.Folder().PathOf("shared");
    const FileHandle writer = OpenFileForAppending(path);
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(path); }), "");
    CloseFile(writer);
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(m_log.Folder().PathOf("missing")); }), "");
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(m_log.Folder().PathOf("no\\such\\folder")); }), "");
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(m_log.Folder().PathOf("local")); }), "");
    EXPECT_TRUE(m_log.IsEmpty()) << m_log.Text();
}

TEST_P(NarrowSystemTest, AnyOtherFailureToOpenIsReported) {
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(m_log.Folder().PathOf("in<valid")); }), "");
    EXPECT_TRUE(HasReported(Formed("CreateFile") + " failed with error code 123")) << m_log.Text();
}

TEST_P(NarrowSystemTest, FoldersAreMadeOnce) {
    const String path = m_log.Folder().PathOf("made");
    CreateDirectoryIfMissing(path);
    EXPECT_NO_THROW(CreateDirectoryIfMissing(path));
    EXPECT_TRUE(m_log.Folder().Has("made"));
    EXPECT_TRUE(m_log.IsEmpty());
}

TEST_P(NarrowSystemTest, FolderBelowAMissingOneIsReported) {
    EXPECT_EQ(RaisedText([&] { CreateDirectoryIfMissing(m_log.Folder().PathOf("missing\\below")); }), "");
    EXPECT_TRUE(HasReported(Formed("CreateDirectory") + " failed with error code 3")) << m_log.Text();
}

TEST_P(NarrowSystemTest, FilesAreCopiedAndRemoved) {
    m_log.Folder().Write("a", "x");
    CopyFileOver(m_log.Folder().PathOf("a"), m_log.Folder().PathOf("b"));
    RemoveFile(m_log.Folder().PathOf("a"));
    EXPECT_FALSE(m_log.Folder().Has("a"));
    EXPECT_EQ(m_log.Folder().Read("b"), "x");
    EXPECT_EQ(RaisedText([&] { RemoveFile(m_log.Folder().PathOf("a")); }), "");
    EXPECT_TRUE(HasReported("DeleteFile failed with error code 2")) << m_log.Text();
}

TEST_P(NarrowSystemTest, LongPathsHaveTheirPrefixOnWideSystemsAlone) {
    EXPECT_EQ(MakeLongPath("C:\\a"), IsWide() ? "\\\\?\\C:\\a" : "C:\\a");
    const LogRecord record("Varnolite", "C:\\local", "C:\\desk");
    EXPECT_EQ(record.logPath,
              IsWide() ? "\\\\?\\C:\\local\\Varnolite\\Varnolite.log" : "C:\\local\\Varnolite\\Varnolite.log");
    EXPECT_EQ(record.desktopPath, IsWide() ? "\\\\?\\C:\\desk\\Varnolite.log" : "C:\\desk\\Varnolite.log");
}

TEST_P(NarrowSystemTest, ReportsReachTheLog) {
    WriteLogLine(5, "text");
    EXPECT_TRUE(m_log.HasLineEndingIn("line 5: text"));
    CopyLogToDesktop();
    EXPECT_EQ(m_log.DesktopText(), m_log.Text());
}

TEST(Win32FilesTest, FailuresOfAHandleAreReportedByName) {
    const LogCapture log;
    const auto nobody = static_cast<FileHandle>(0x7FFC);
    char byte = 0;
    EXPECT_EQ(RaisedText([&] { ReadFromFile(nobody, &byte, 1); }), "");
    EXPECT_TRUE(log.HasLineEndingIn(": ReadFile failed with error code 6")) << log.Text();
    EXPECT_EQ(RaisedText([&] { TellInFile(nobody); }), "");
    EXPECT_TRUE(log.HasLineEndingIn(": SetFilePointer failed with error code 6")) << log.Text();
    CloseFile(nobody);
    EXPECT_TRUE(log.HasLineEndingIn(": CloseHandle failed with error code 6")) << log.Text();
    EXPECT_EQ(RaisedText([&] { SeekToEndOfFile(nobody); }), "SetFilePointer failed, error code 6");
}

// A device opens but has no size, or on some systems a size but no times.
TEST(Win32FilesTest, DeviceIsReportedByTheFirstCallThatFails) {
    const LogCapture log;
    EXPECT_EQ(RaisedText([] { OpenFileForReading("NUL"); }), "");
    EXPECT_TRUE(log.Text().find(": GetFileSize failed with error code ") != std::string::npos ||
                log.Text().find(": GetFileTime failed with error code ") != std::string::npos)
        << log.Text();
}

TEST(Win32FilesTest, PositionWithALowHalfOfAllOnesIsNoFailure) {
    const LogCapture log;
    log.Folder().Write("a", "x");
    const OpenedFile file = OpenFileForReading(log.Folder().PathOf("a"));
    SetLastError(ERROR_INVALID_HANDLE);
    SeekInFile(file.handle, 0x1FFFFFFFFu);
    EXPECT_EQ(TellInFile(file.handle), 0x1FFFFFFFFu);
    CloseFile(file.handle);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

} // namespace
