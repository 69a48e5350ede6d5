#include "foundation/platform/Files.h"

#include "tests/support/RaisedText.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>

using namespace Quorvex;
using namespace Quorvex::Platform;
using Quorvex::Test::RaisedText;
using Quorvex::Test::TemporaryFolder;

namespace {

class OpenedForTest {
public:
    explicit OpenedForTest(const String& path) : m_file(OpenFileForReading(path)) {}
    OpenedForTest(const OpenedForTest&) = delete;
    OpenedForTest& operator=(const OpenedForTest&) = delete;
    ~OpenedForTest() { CloseFile(m_file.handle); }
    const OpenedFile& Get() const { return m_file; }
    FileHandle Handle() const { return m_file.handle; }

private:
    OpenedFile m_file;
};

void Append(const String& path, const std::string& bytes) {
    const FileHandle file = OpenFileForAppending(path);
    SeekToEndOfFile(file);
    WriteToFile(file, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    CloseFile(file);
}

TEST(FilesTest, OpensAFileWithItsSize) {
    TemporaryFolder folder;
    folder.Write("a.bmp", "BM123");
    const OpenedForTest file(folder.PathOf("a.bmp"));
    EXPECT_NE(file.Handle(), FileHandle::Closed);
    EXPECT_EQ(file.Get().sizeBytes, 5u);
}

TEST(FilesTest, FileTimesCountHundredNanosecondsSince1601) {
    TemporaryFolder folder;
    folder.Write("a.bmp", "BM");
    const auto times = [&] { return OpenedForTest(folder.PathOf("a.bmp")).Get().times; };
    const FileTimes before = times();
    // The clock of std::filesystem has an epoch of its own and whole seconds on some systems, so moments reach the
    // file as distances between two that were set.
    const auto written = std::filesystem::last_write_time(folder.Path() / "a.bmp");
    std::filesystem::last_write_time(folder.Path() / "a.bmp", written - std::chrono::hours(24));
    const FileTimes dayOld = times();
    std::filesystem::last_write_time(folder.Path() / "a.bmp", written - std::chrono::hours(48));
    EXPECT_EQ(dayOld.lastWrite - times().lastWrite, 24ull * 3600 * 10'000'000);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto unixSeconds = std::chrono::duration_cast<std::chrono::seconds>(now).count();
    for (const std::uint64_t time : {before.creation, before.lastAccess, before.lastWrite})
        EXPECT_NEAR(static_cast<double>(time) / 1e7 - 11'644'473'600.0, static_cast<double>(unixSeconds), 60.0);
}

TEST(FilesTest, EmptyFileOpensWithSizeZeroAndFirstReadRaises) {
    TemporaryFolder folder;
    folder.Write("empty", "");
    const OpenedForTest file(folder.PathOf("empty"));
    EXPECT_EQ(file.Get().sizeBytes, 0u);
    char byte = 0;
    EXPECT_THROW(ReadFromFile(file.Handle(), &byte, 1), Exception);
}

TEST(FilesTest, ReadsExactlyToTheEndButNotBeyond) {
    TemporaryFolder folder;
    folder.Write("a", "0123456789");
    const OpenedForTest file(folder.PathOf("a"));
    std::array<char, 10> bytes{};
    ReadFromFile(file.Handle(), bytes.data(), 10);
    EXPECT_EQ(std::string(bytes.data(), bytes.size()), "0123456789");
    EXPECT_EQ(TellInFile(file.Handle()), 10u);
    EXPECT_THROW(ReadFromFile(file.Handle(), bytes.data(), 1), Exception);
    SeekInFile(file.Handle(), 5);
    EXPECT_THROW(ReadFromFile(file.Handle(), bytes.data(), 6), Exception);
}

TEST(FilesTest, SeekAndTellCarry64Bits) {
    TemporaryFolder folder;
    folder.Write("a", "x");
    const OpenedForTest file(folder.PathOf("a"));
    for (const std::uint64_t position : {0ull, 1ull, 0xFFFFFFFFull, 0x100000000ull, 0x123456789ABull}) {
        SeekInFile(file.Handle(), position);
        EXPECT_EQ(TellInFile(file.Handle()), position);
    }
}

TEST(FilesTest, ReadingZeroBytesIsNoFailure) {
    TemporaryFolder folder;
    folder.Write("a", "");
    const OpenedForTest file(folder.PathOf("a"));
    EXPECT_NO_THROW(ReadFromFile(file.Handle(), nullptr, 0));
}

TEST(FilesTest, TwoReadersMayHaveOneFileOpen) {
    TemporaryFolder folder;
    folder.Write("a", "xy");
    const OpenedForTest first(folder.PathOf("a"));
    const OpenedForTest second(folder.PathOf("a"));
    SeekInFile(first.Handle(), 1);
    EXPECT_EQ(TellInFile(second.Handle()), 0u);
}

TEST(FilesTest, MissingFileRaisesWithoutText) {
    TemporaryFolder folder;
    EXPECT_EQ(RaisedText([&] { OpenFileForReading(folder.PathOf("missing")); }), "");
    EXPECT_THROW(OpenFileForReading(folder.PathOf("no/such/folder")), Exception);
}

TEST(FilesTest, FolderIsNoFile) {
    TemporaryFolder folder;
    EXPECT_THROW(OpenFileForReading(TemporaryFolder::TextOf(folder.Path())), Exception);
}

TEST(FilesTest, NamesBeyondOneCodePageAndPlaneReachTheirFile) {
    TemporaryFolder folder;
    const std::u16string name = u"\u00E9\u4E2D\U0001F5BC.bmp";
    std::ofstream(folder.Path() / name) << "x";
    const OpenedForTest file(TemporaryFolder::TextOf(folder.Path() / name));
    EXPECT_EQ(file.Get().sizeBytes, 1u);
}

TEST(FilesTest, PathInWindows1252ReachesItsFile) {
    TemporaryFolder folder;
    std::ofstream(folder.Path() / u"\u00E4.bmp") << "x";
    const OpenedForTest file(TemporaryFolder::TextOf(folder.Path() / u"\u00E4.bmp").ToANSI());
    EXPECT_EQ(file.Get().sizeBytes, 1u);
}

TEST(FilesTest, AppendingMakesTheFileAndAddsToIt) {
    TemporaryFolder folder;
    Append(folder.PathOf("log"), "one");
    Append(folder.PathOf("log"), "two");
    EXPECT_EQ(folder.Read("log"), "onetwo");
}

TEST(FilesTest, EndOfANewFileIsAtZero) {
    TemporaryFolder folder;
    const FileHandle file = OpenFileForAppending(folder.PathOf("log"));
    EXPECT_EQ(SeekToEndOfFile(file), 0u);
    CloseFile(file);
}

TEST(FilesTest, SecondWriterFailsByTheNameCreateFile) {
    TemporaryFolder folder;
    const FileHandle first = OpenFileForAppending(folder.PathOf("log"));
    const std::string raised = RaisedText([&] { OpenFileForAppending(folder.PathOf("log")); });
    EXPECT_TRUE(raised.starts_with("CreateFile failed, error code ")) << raised;
    CloseFile(first);
    EXPECT_NO_THROW(Append(folder.PathOf("log"), "x"));
}

TEST(FilesTest, OperationsOnAHandleThatAllowsThemNotRaiseByName) {
    TemporaryFolder folder;
    folder.Write("a", "x");
    const OpenedForTest readOnly(folder.PathOf("a"));
    const std::string raised = RaisedText([&] { WriteToFile(readOnly.Handle(), "y", 1); });
    EXPECT_TRUE(raised.starts_with("WriteFile failed, error code ")) << raised;
}

TEST(FilesTest, CopyOverwrites) {
    TemporaryFolder folder;
    folder.Write("source", "new");
    folder.Write("destination", "old and longer");
    CopyFileOver(folder.PathOf("source"), folder.PathOf("destination"));
    EXPECT_EQ(folder.Read("destination"), "new");
}

TEST(FilesTest, CopyOfAMissingFileRaisesByName) {
    TemporaryFolder folder;
    const std::string raised =
        RaisedText([&] { CopyFileOver(folder.PathOf("missing"), folder.PathOf("destination")); });
    EXPECT_TRUE(raised.starts_with("CopyFile failed, error code ")) << raised;
}

TEST(FilesTest, RemoveFileTakesItAway) {
    TemporaryFolder folder;
    folder.Write("a", "x");
    RemoveFile(folder.PathOf("a"));
    EXPECT_FALSE(folder.Has("a"));
}

TEST(FilesTest, CreateDirectoryOnAnExistingFolderIsNoFailure) {
    TemporaryFolder folder;
    CreateDirectoryIfMissing(folder.PathOf("sub"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "sub"));
    EXPECT_NO_THROW(CreateDirectoryIfMissing(folder.PathOf("sub")));
}

TEST(FilesTest, FindsNamesByPattern) {
    TemporaryFolder folder;
    for (const char* name : {"Varnolite 2017-01-26", "Varnolite 2020-12-31", "Varnolite.log", "Other 2017-01-26"})
        folder.Write(name, "");
    auto names = FindFileNames(TemporaryFolder::TextOf(folder.Path()), "Varnolite ???\?-?\?-??");
    ASSERT_EQ(names.size(), 2u);
    std::sort(names.begin(), names.end(), [](const String& a, const String& b) { return a.compare(b) < 0; });
    EXPECT_EQ(names[0].ToANSI(), "Varnolite 2017-01-26");
    EXPECT_EQ(names[1].ToANSI(), "Varnolite 2020-12-31");
}

TEST(FilesTest, AStarFindsEveryEntryFoldersIncluded) {
    TemporaryFolder folder;
    folder.Write("file", "");
    std::filesystem::create_directory(folder.Path() / "sub");
    EXPECT_EQ(FindFileNames(TemporaryFolder::TextOf(folder.Path()), "*").size(), 4u); // with "." and ".."
}

// Some systems also know each name in a short form, which cuts the suffix off after three letters.
TEST(FilesTest, ASuffixCountsAsAWhole) {
    TemporaryFolder folder;
    for (const char* name : {"Varnolite.dll", "Varnolite.dllx", "Varnolite.dll.old", "OtherVarnolite.dll"})
        folder.Write(name, "");
    const auto names = FindFileNames(TemporaryFolder::TextOf(folder.Path()), "Varnolite*.dll");
    ASSERT_EQ(names.size(), 1u);
    EXPECT_EQ(names[0].ToANSI(), "Varnolite.dll");
}

TEST(FilesTest, FindsNothingInAMissingFolder) {
    TemporaryFolder folder;
    EXPECT_TRUE(FindFileNames(folder.PathOf("missing"), "*").empty());
    EXPECT_TRUE(FindFileNames(TemporaryFolder::TextOf(folder.Path()), "nothing*").empty());
}

TEST(FilesTest, JoinsPathsWithOneSeparator) {
    const String separator(GetPathSeparator());
    EXPECT_EQ(JoinPath("a", "b"), "a" + separator + "b");
    EXPECT_EQ(JoinPath("a" + separator, "b"), "a" + separator + "b");
    EXPECT_EQ(JoinPath(String(), "b"), "b");
    EXPECT_EQ(JoinPath(u"a", "b").encoding(), Encoding::Utf16);
}

} // namespace
