#include "foundation/Log.h"

#include "foundation/Report.h"
#include "foundation/Version.h"
#include "foundation/Wildcards.h"
#include "foundation/platform/Files.h"
#include "foundation/platform/Processes.h"
#include "foundation/platform/Time.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScopedLanguage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace Quorvex;
using Quorvex::Test::LogCapture;
using Quorvex::Test::ScopedLanguage;

namespace {

const std::string englishText =
    "While running Varnolite potential problems were detected.\r\nA report was generated and copied into the file "
    "Varnolite.log on your desktop.\r\n\r\nPlease help us improve our software and send this file to "
    "support@varnolite.example. Thank you very much.\r\n\r\n";

const std::string germanText =
    "W\xC3\xA4hrend der Ausf\xC3\xBChrung von Varnolite wurden m\xC3\xB6gliche Probleme erkannt.\r\nEin Bericht wurde "
    "generiert und in die Datei Varnolite.log auf Ihrem Desktop kopiert.\r\n\r\nBitte helfen Sie uns bei der "
    "Verbesserung unserer Software und senden diese Datei an support@varnolite.example. Vielen Dank.\r\n\r\n";

std::string Digits5(std::uint32_t value) {
    std::string digits = std::to_string(value);
    return std::string(digits.size() < 5 ? 5 - digits.size() : 0, '0') + digits;
}

/// What follows the time stamp in every line of this thread.
std::string Ids() {
    return "[PID=" + Digits5(Platform::GetThisProcessId()) + "][TID=" + Digits5(Platform::GetThisThreadId()) + "] ";
}

/// The lines after the report text, without their time stamps.
std::vector<std::string> LinesAfter(const std::string& reportText, const std::string& log) {
    EXPECT_EQ(log.substr(0, reportText.size()), reportText);
    std::vector<std::string> lines;
    for (std::size_t start = reportText.size(); start < log.size();) {
        const std::size_t end = log.find("\r\n", start);
        EXPECT_NE(end, std::string::npos) << "a line without an end";
        if (end == std::string::npos)
            break;
        lines.push_back(log.substr(start + 27, end - start - 27));
        start = end + 2;
    }
    return lines;
}

int notifications = 0;

void Notify() {
    ++notifications;
}

TEST(LogTest, RunWithoutReportLeavesNoLogAndNoMessage) {
    LogCapture log;
    log.Record().notifier = &Notify;
    notifications = 0;
    FinishReport();
    EXPECT_FALSE(std::filesystem::exists(log.Folder().Path() / "local" / "Varnolite"));
    EXPECT_FALSE(log.Folder().Has("desktop/Varnolite.log"));
    EXPECT_EQ(notifications, 0);
    EXPECT_TRUE(log.MessageBoxes().empty());
}

TEST(LogTest, NewLogBeginsWithReportTextThenVersionThenTheLine) {
    const ScopedLanguage english(Locale::EnumLanguage::English);
    LogCapture log;
    WriteLogLine(66, "LoadValueFromStream");
    const std::string version = String(GetBuildTime()).ToStdString();
    EXPECT_THAT(LinesAfter(englishText, log.Text()),
                testing::ElementsAre(Ids() + "Version " + version, Ids() + "line 66: LoadValueFromStream"));
}

TEST(LogTest, ReportTextIsInTheLanguageOfTheProgram) {
    const ScopedLanguage german(Locale::EnumLanguage::German);
    LogCapture log;
    WriteLogLine(1, "x");
    EXPECT_EQ(LinesAfter(germanText, log.Text()).size(), 2u);
}

TEST(LogTest, SecondLineOfARunFollowsAlone) {
    const ScopedLanguage english(Locale::EnumLanguage::English);
    LogCapture log;
    WriteLogLine(1, "first");
    WriteLogLine(2, "second");
    EXPECT_EQ(LinesAfter(englishText, log.Text()).at(2), Ids() + "line 2: second");
}

TEST(LogTest, NextRunWritesItsVersionButNoSecondReportText) {
    const ScopedLanguage english(Locale::EnumLanguage::English);
    LogCapture log;
    WriteLogLine(1, "first");
    log.Record().firstUse = true;
    WriteLogLine(2, "second");
    const auto lines = LinesAfter(englishText, log.Text());
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_TRUE(lines[2].starts_with(Ids() + "Version ")) << lines[2];
}

TEST(LogTest, LineNumberZeroLeavesOutTheLinePart) {
    const ScopedLanguage english(Locale::EnumLanguage::English);
    LogCapture log;
    WriteLogLine(0, "by hand");
    EXPECT_EQ(LinesAfter(englishText, log.Text()).at(1), Ids() + "by hand");
}

TEST(LogTest, TextsOfEveryEncodingGoOutAsUtf8) {
    LogCapture log;
    WriteLogLine(1, "\xE9");
    WriteLogLine(2, u"\u4E2D");
    WriteLogLine(3, String("\xE9").ToUTF8());
    WriteLogLine(4, String());
    EXPECT_TRUE(log.HasLineEndingIn("line 1: \xC3\xA9"));
    EXPECT_TRUE(log.HasLineEndingIn("line 2: \xE4\xB8\xAD"));
    EXPECT_TRUE(log.HasLineEndingIn("line 3: \xC3\xA9"));
    EXPECT_TRUE(log.HasLineEndingIn("line 4: "));
}

TEST(LogTest, TimeStampHasLocalTimeWithTheDifferenceToUtc) {
    const std::string stamp = MakeTimeStamp().ToStdString();
    EXPECT_TRUE(MatchesWildcards(stamp.c_str(), "[20?\?-?\?-?\?T?\?:?\?:?\?*:?\?]")) << stamp;
    EXPECT_EQ(stamp.size(), std::string("[2017-01-26T09:05:00+01:00]").size());
    EXPECT_THAT(stamp.at(20), testing::AnyOf('+', '-'));
}

TEST(LogTest, TimeStampPadsItsFieldsAndSignsTheDifferenceToUtc) {
    Platform::ClockTime time{2017, 1, 26, 9, 5, 0, 60};
    EXPECT_EQ(MakeTimeStamp(time), "[2017-01-26T09:05:00+01:00]");
    time.minutesAheadOfUtc = -210;
    EXPECT_EQ(MakeTimeStamp(time), "[2017-01-26T09:05:00-03:30]");
    time = {45, 12, 31, 23, 59, 59, 0};
    EXPECT_EQ(MakeTimeStamp(time), "[0045-12-31T23:59:59+00:00]");
}

TEST(LogTest, TimeStampOfAnUnknownTimeIsItsPattern) {
    EXPECT_EQ(MakeTimeStamp(std::nullopt), "[YYYY-MM-DDTHH:MM:SS   :  ]");
}

TEST(LogTest, ReportsWriteALineAndCopyTheLog) {
    LogCapture log;
    ReportFailure(7, "ReadFile", 38);
    EXPECT_TRUE(log.HasLineEndingIn("line 7: ReadFile failed with error code 38"));
    EXPECT_EQ(log.DesktopText(), log.Text());
    EXPECT_TRUE(log.Record().reportCopied);
}

TEST(LogTest, ProblemsAreLoggedAsTheyStand) {
    LogCapture log;
    ReportProblem(8, "one");
    ReportProblem(9, "two ", "joined");
    ReportProblem(10, "wide ", u"\u4E2D");
    EXPECT_TRUE(log.HasLineEndingIn("line 8: one"));
    EXPECT_TRUE(log.HasLineEndingIn("line 9: two joined"));
    EXPECT_TRUE(log.HasLineEndingIn("line 10: wide \xE4\xB8\xAD"));
    EXPECT_EQ(log.DesktopText(), log.Text());
}

TEST(LogTest, ReportWithoutACodeTakesTheSystemsLastError) {
    LogCapture log;
    Platform::FindFileNames(log.Folder().PathOf("missing"), "*");
    ReportFailure(3, "opendir");
    EXPECT_FALSE(log.HasLineEndingIn("error code 0"));
    EXPECT_TRUE(MatchesWildcards(log.Text().c_str(), "*line 3: opendir failed with error code ?*\r\n")) << log.Text();
}

TEST(LogTest, ALineAloneMakesNoCopy) {
    LogCapture log;
    WriteLogLine(1, "x");
    EXPECT_FALSE(log.Record().reportCopied);
    EXPECT_FALSE(log.Folder().Has("desktop/Varnolite.log"));
}

TEST(LogTest, FailedCopyIsNoReport) {
    LogCapture log;
    log.Record().desktopPath = log.Folder().PathOf("missing/folder/Varnolite.log");
    ReportFailure(7, "ReadFile", 38);
    EXPECT_FALSE(log.Record().reportCopied);
    EXPECT_TRUE(log.HasLineEndingIn("line 7: ReadFile failed with error code 38"));
    EXPECT_TRUE(log.MessageBoxes().empty());
}

TEST(LogTest, EndOfARunWithAReportCopiesOnceMoreAndNotifies) {
    LogCapture log;
    log.Record().notifier = &Notify;
    ReportFailure(7, "ReadFile", 38);
    WriteLogLine(8, "after the report");
    notifications = 0;
    FinishReport();
    EXPECT_EQ(notifications, 1);
    EXPECT_EQ(log.DesktopText(), log.Text());
}

TEST(LogTest, EndOfARunWithoutANotifierIsSilent) {
    LogCapture log;
    ReportFailure(7, "ReadFile", 38);
    log.Folder().Write("desktop/Varnolite.log", "");
    FinishReport();
    EXPECT_EQ(log.DesktopText(), "");
}

TEST(LogTest, ConcurrentWriterFailsAtOpeningAndTellsTheUser) {
    LogCapture log;
    WriteLogLine(1, "x");
    const Platform::FileHandle other = Platform::OpenFileForAppending(log.Record().logPath);
    WriteLogLine(2, "lost");
    Platform::CloseFile(other);
    const auto boxes = log.MessageBoxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].first, "Quorvex Logger");
    EXPECT_TRUE(boxes[0].second.starts_with("CreateFile failed, error code ")) << boxes[0].second;
    WriteLogLine(3, "goes on");
    EXPECT_TRUE(log.HasLineEndingIn("line 3: goes on"));
    EXPECT_FALSE(log.HasLineEndingIn("line 2: lost"));
}

TEST(LogTest, FolderThatCannotBeMadeEndsInOneMessageBox) {
    LogCapture log;
    log.Folder().Write("plain", "");
    log.Record().logFolder = log.Folder().PathOf("plain/below");
    log.Record().logPath = log.Folder().PathOf("plain/below/Varnolite.log");
    ReportFailure(1, "ReadFile", 38);
    ASSERT_EQ(log.MessageBoxes().size(), 1u);
    EXPECT_TRUE(log.MessageBoxes()[0].second.starts_with("CreateFile failed, error code "));
}

TEST(LogTest, FailureToMakeTheFolderIsReportedInALogThatCanBeWritten) {
    LogCapture log;
    log.Folder().Write("plain", "");
    log.Record().logFolder = log.Folder().PathOf("plain/below");
    WriteLogLine(1, "x");
    std::filesystem::create_directory(log.Folder().Path() / "local" / "Varnolite");
    WriteLogLine(2, "y");
    EXPECT_TRUE(MatchesWildcards(log.Text().c_str(), "*line ?*: mkdir failed with error code ?*\r\n*") ||
                MatchesWildcards(log.Text().c_str(), "*line ?*: CreateDirectoryW failed with error code ?*\r\n*"))
        << log.Text();
}

TEST(LogTest, UserWithoutTheFoldersHasNoPaths) {
    const LogRecord record("Varnolite", String(), String());
    EXPECT_TRUE(record.logPath.IsEmpty());
    EXPECT_TRUE(record.desktopPath.IsEmpty());
}

TEST(LogTest, RecordNamesItsPathsByTheProgram) {
    const LogRecord record("Name", "L", "D");
    const String separator(Platform::GetPathSeparator());
    EXPECT_EQ(record.logFolder.ToANSI(), Platform::MakeLongPath("L" + separator + "Name").ToANSI());
    EXPECT_EQ(record.logPath.ToANSI(), record.logFolder.ToANSI() + separator + "Name.log");
    EXPECT_EQ(record.desktopPath.ToANSI(), Platform::MakeLongPath("D" + separator + "Name.log").ToANSI());
    EXPECT_EQ(record.programNameNarrow.encoding(), Encoding::Windows1252);
    EXPECT_EQ(record.programNameWide, u"Name");
    EXPECT_TRUE(record.firstUse);
    EXPECT_FALSE(record.reportCopied);
    EXPECT_EQ(record.version, String(GetBuildTime()));
}

} // namespace
