#include "foundation/platform/Files.h"

#include "foundation/platform/posix/NativeText.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <string>

using namespace Quorvex;
using namespace Quorvex::Platform;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

std::string FailureLine(const char* name, int code) {
    return std::string(": ") + name + " failed with error code " + std::to_string(code);
}

TEST(PosixFilesTest, MissingFileIsNotReported) {
    LogCapture log;
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(log.Folder().PathOf("missing")); }), "");
    log.Folder().Write("plain", "");
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(log.Folder().PathOf("plain/below")); }), "");
    EXPECT_TRUE(log.IsEmpty());
}

TEST(PosixFilesTest, FolderAndPipeAreNoFilesAndNotReported) {
    LogCapture log;
    const String pipe = log.Folder().PathOf("pipe");
    ASSERT_EQ(mkfifo(NativeFromWide(pipe).c_str(), 0600), 0);
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(pipe); }), "");
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(log.Folder().PathOf("local")); }), "");
    EXPECT_EQ(RaisedText([&] { OpenFileForReading("/dev/null"); }), "");
    EXPECT_TRUE(log.IsEmpty());
}

// In a process of its own, since nothing is denied to the superuser.
TEST(PosixFilesDeathTest, DeniedFileIsNotReported) {
    LogCapture log;
    log.Folder().Write("secret", "x");
    const String path = log.Folder().PathOf("secret");
    ASSERT_EQ(chmod(NativeFromWide(path).c_str(), 0), 0);
    constexpr uid_t nobody = 65534;
    EXPECT_EXIT(
        {
            const bool isOrdinaryUser = geteuid() != 0 || setuid(nobody) == 0;
            const std::string raised = RaisedText([&] { OpenFileForReading(path); });
            std::_Exit(isOrdinaryUser && raised.empty() && log.IsEmpty() && log.MessageBoxes().empty() ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

TEST(PosixFilesTest, AnyOtherFailureToOpenIsReported) {
    LogCapture log;
    const String loop = log.Folder().PathOf("loop");
    ASSERT_EQ(symlink("loop", NativeFromWide(loop).c_str()), 0);
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(loop); }), "");
    EXPECT_TRUE(log.HasLineEndingIn(FailureLine("open", ELOOP))) << log.Text();
}

TEST(PosixFilesTest, DeviceErrorWhileReadingIsReported) {
    LogCapture log;
    // Nothing is mapped at address 0 of this process.
    const OpenedFile memory = OpenFileForReading("/proc/self/mem");
    char byte = 0;
    EXPECT_EQ(RaisedText([&] { ReadFromFile(memory.handle, &byte, 1); }), "");
    CloseFile(memory.handle);
    EXPECT_TRUE(log.HasLineEndingIn(FailureLine("read", EIO))) << log.Text();
}

TEST(PosixFilesTest, EndOfTheFileIsNotReported) {
    LogCapture log;
    log.Folder().Write("a", "x");
    const OpenedFile file = OpenFileForReading(log.Folder().PathOf("a"));
    char bytes[2] = {};
    EXPECT_EQ(RaisedText([&] { ReadFromFile(file.handle, bytes, 2); }), "");
    CloseFile(file.handle);
    EXPECT_TRUE(log.IsEmpty());
}

TEST(PosixFilesTest, FailuresOfAHandleAreReportedByName) {
    LogCapture log;
    const auto nobody = static_cast<FileHandle>(100001);
    EXPECT_EQ(RaisedText([&] { TellInFile(nobody); }), "");
    EXPECT_EQ(RaisedText([&] { SeekInFile(nobody, 0); }), "");
    CloseFile(nobody);
    EXPECT_TRUE(log.HasLineEndingIn(FailureLine("lseek", EBADF))) << log.Text();
    EXPECT_TRUE(log.HasLineEndingIn(FailureLine("close", EBADF))) << log.Text();
    CloseFile(FileHandle::Closed);
}

TEST(PosixFilesTest, EndOfAHandleThatIsNoneRaisesByName) {
    EXPECT_EQ(RaisedText([] { SeekToEndOfFile(static_cast<FileHandle>(100001)); }),
              "SetFilePointer failed, error code " + std::to_string(EBADF));
}

TEST(PosixFilesTest, DescriptorZeroIsAnOpenFile) {
    LogCapture log;
    log.Folder().Write("a", "x");
    const int saved = dup(0);
    ASSERT_EQ(close(0), 0);
    const OpenedFile file = OpenFileForReading(log.Folder().PathOf("a"));
    EXPECT_NE(file.handle, FileHandle::Closed);
    char byte = 0;
    ReadFromFile(file.handle, &byte, 1);
    EXPECT_EQ(byte, 'x');
    CloseFile(file.handle);
    dup2(saved, 0);
    close(saved);
}

TEST(PosixFilesTest, FullDiskRaisesByName) {
    LogCapture log;
    const FileHandle file = OpenFileForAppending("/dev/full");
    EXPECT_EQ(RaisedText([&] { WriteToFile(file, "x", 1); }), "WriteFile failed, error code " + std::to_string(ENOSPC));
    CloseFile(file);
}

TEST(PosixFilesTest, NameThatIsNoUtf8LeadsBackToItsFile) {
    LogCapture log;
    std::ofstream(log.Folder().Path().string() + "/\xE9t\xE9.bmp") << "xyz";
    const String folder = Quorvex::Test::TemporaryFolder::TextOf(log.Folder().Path());
    const auto names = FindFileNames(folder, "*.bmp");
    ASSERT_EQ(names.size(), 1u);
    const OpenedFile file = OpenFileForReading(JoinPath(folder, names[0]));
    EXPECT_EQ(file.sizeBytes, 3u);
    CloseFile(file.handle);
}

TEST(PosixFilesTest, MissingFileToRemoveIsReported) {
    LogCapture log;
    EXPECT_EQ(RaisedText([&] { RemoveFile(log.Folder().PathOf("missing")); }), "");
    EXPECT_TRUE(log.HasLineEndingIn(FailureLine("unlink", ENOENT))) << log.Text();
}

TEST(PosixFilesTest, FolderThatCannotBeListedIsReported) {
    LogCapture log;
    const String loop = log.Folder().PathOf("loop");
    ASSERT_EQ(symlink("loop", NativeFromWide(loop).c_str()), 0);
    EXPECT_EQ(RaisedText([&] { FindFileNames(loop, "*"); }), "");
    EXPECT_TRUE(log.HasLineEndingIn(FailureLine("opendir", ELOOP))) << log.Text();
}

TEST(PosixFilesTest, FoldersAreMadeWithTheirParentsForTheUserAlone) {
    LogCapture log;
    CreateDirectoryIfMissing(log.Folder().PathOf("one/two/three"));
    for (const char* name : {"one", "one/two", "one/two/three"}) {
        struct stat status {};
        ASSERT_EQ(stat(NativeFromWide(log.Folder().PathOf(name)).c_str(), &status), 0) << name;
        EXPECT_EQ(status.st_mode & 0777, 0700u) << name;
    }
}

TEST(PosixFilesTest, FolderBelowAPlainFileIsReported) {
    LogCapture log;
    log.Folder().Write("plain", "");
    EXPECT_EQ(RaisedText([&] { CreateDirectoryIfMissing(log.Folder().PathOf("plain/below")); }), "");
    EXPECT_TRUE(log.HasLineEndingIn(FailureLine("mkdir", ENOTDIR))) << log.Text();
}

} // namespace
