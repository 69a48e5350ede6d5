#include "foundation/Log.h"

#include "foundation/Numbers.h"
#include "foundation/Version.h"
#include "foundation/platform/Files.h"
#include "foundation/platform/MessageBox.h"
#include "foundation/platform/Processes.h"
#include "foundation/platform/SpecialFolders.h"

#include <cstdlib>
#include <exception>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace Quorvex {

namespace {

// Null until somebody puts a record of their own in use; see GetLogRecord.
std::atomic<LogRecord*> recordInUse = nullptr;

struct DivertedReport {
    int line;
    String text;
};

thread_local std::vector<DivertedReport>* diversion = nullptr;

/// While it lives, what this thread reports is kept here in place of the log: the log's own calls may fail and report,
/// and such a report must not ask for the log again.
class ReportDiversion {
public:
    ReportDiversion() : m_outer(std::exchange(diversion, &m_reports)) {}
    ReportDiversion(const ReportDiversion&) = delete;
    ReportDiversion& operator=(const ReportDiversion&) = delete;
    ~ReportDiversion() { diversion = m_outer; }

    const std::vector<DivertedReport>& GetReports() const { return m_reports; }

private:
    std::vector<DivertedReport> m_reports;
    std::vector<DivertedReport>* m_outer;
};

String Padded(std::uint32_t value, std::uint32_t digits) {
    return IntegerToString(std::uint64_t{value}, 10, digits);
}

// A user without such a folder still gets a program that runs; the failure itself was reported.
String FolderOrEmpty(SpecialFolder folder) {
    try {
        return GetSpecialFolder(folder);
    } catch (const std::exception&) {
        return String();
    }
}

BilingualText ReportText(const String& name) {
    constexpr const char* address = "support@varnolite.example";
    return {"Während der Ausführung von "_t + name +
                " wurden mögliche Probleme erkannt.\r\nEin Bericht wurde generiert und in die Datei "_t + name +
                ".log auf Ihrem Desktop kopiert.\r\n\r\nBitte helfen Sie uns bei der Verbesserung unserer Software und "
                "senden diese Datei an " +
                address + ". Vielen Dank.\r\n\r\n",
            "While running "_t + name +
                " potential problems were detected.\r\nA report was generated and copied into the file " + name +
                ".log on your desktop.\r\n\r\nPlease help us improve our software and send this file to " + address +
                ". Thank you very much.\r\n\r\n"};
}

String LinePrefix(int line) {
    const String prefix = MakeTimeStamp() + "[PID=" + Padded(Platform::GetThisProcessId(), 5) +
                          "][TID=" + Padded(Platform::GetThisThreadId(), 5) + "] ";
    return line == 0 ? prefix : prefix + "line " + IntegerToString(std::int32_t{line}) + ": ";
}

/// The log file, open for one line.
class OpenedLog {
public:
    explicit OpenedLog(const String& path) : m_file(Platform::OpenFileForAppending(path)) {}
    OpenedLog(const OpenedLog&) = delete;
    OpenedLog& operator=(const OpenedLog&) = delete;
    ~OpenedLog() { Platform::CloseFile(m_file); }

    std::uint64_t SeekToEnd() { return Platform::SeekToEndOfFile(m_file); }
    void Write(const String& text) {
        const String bytes = text.ToUTF8();
        Platform::WriteToFile(m_file, bytes.Narrow(), bytes.length());
    }

private:
    Platform::FileHandle m_file;
};

void AppendLine(LogRecord& record, int line, const String& text) {
    // On every line, not once: whoever deletes the folder while the program runs loses no report that follows.
    const auto folderFailure = Platform::TryCreateDirectory(record.logFolder);
    OpenedLog log(record.logPath);
    // A new file, or one that was emptied: it has to explain itself.
    if (log.SeekToEnd() == 0)
        log.Write(InCurrentLanguage(record.reportText));
    if (record.firstUse) {
        log.Write(LinePrefix(0) + "Version " + record.version + "\r\n");
        // After the write: a line that failed leaves the version to the next one.
        record.firstUse = false;
    }
    // A folder that cannot be made is reported like any failed call, but the report must not ask for the folder again.
    if (folderFailure)
        log.Write(LinePrefix(__LINE__) + folderFailure->name + " failed with error code " +
                  IntegerToString(std::uint64_t{folderFailure->code}) + "\r\n");
    log.Write(LinePrefix(line) + text + "\r\n");
}

// The last resort: a log that cannot be written tells the user, and the program goes on.
void AppendLineOrTell(LogRecord& record, int line, const String& text) {
    try {
        AppendLine(record, line, text);
    } catch (const std::exception& failure) {
        Platform::ShowMessageBox("Quorvex Logger", failure.what());
    }
}

LogRecord* BuildRecord() {
    const ReportDiversion whileThereIsNoLog;
    auto* record =
        new LogRecord("Varnolite", FolderOrEmpty(SpecialFolder::LocalData), FolderOrEmpty(SpecialFolder::Desktop));
    for (const DivertedReport& report : whileThereIsNoLog.GetReports())
        AppendLineOrTell(*record, report.line, report.text);
    return record;
}

[[noreturn]] void Terminate() {
    FinishReport();
    // Three is what abort ends with; abort itself would show a box of its own on some systems.
    std::_Exit(3);
}

} // namespace

LogRecord::LogRecord(const String& programName, const String& localDataFolder, const String& desktop)
    : version(GetBuildTime()), programNameNarrow(programName.ToANSI()), programNameWide(programName.ToWide()),
      reportText(ReportText(programName)) {
    // The log belongs to this machine, its copy to whoever sits before it.
    const String fileName = programName + ".log";
    if (!localDataFolder.IsEmpty()) {
        logFolder = Platform::MakeLongPath(Platform::JoinPath(localDataFolder, programName));
        logPath = Platform::JoinPath(logFolder, fileName);
    }
    if (!desktop.IsEmpty()) {
        desktopFolder = Platform::MakeLongPath(desktop);
        desktopPath = Platform::JoinPath(desktopFolder, fileName);
    }
}

LogRecord& GetLogRecord() {
    if (LogRecord* record = recordInUse)
        return *record;
    // Never destroyed: the last report may come after the end of everything else.
    static LogRecord& record = *BuildRecord();
    return record;
}

LogRecord* SetLogRecord(LogRecord* record) noexcept {
    return recordInUse.exchange(record);
}

void WriteLogLine(int line, const String& text) noexcept {
    try {
        if (diversion != nullptr) {
            diversion->push_back({line, text});
            return;
        }
        const ReportDiversion ofTheLogItself;
        AppendLineOrTell(GetLogRecord(), line, text);
    } catch (const std::exception&) {
        // No memory is left, not even for the message: there is nobody to tell.
    }
}

void CopyLogToDesktop() noexcept {
    if (diversion != nullptr)
        return;
    const ReportDiversion ofTheLogItself;
    try {
        LogRecord& record = GetLogRecord();
        Platform::CopyFileOver(record.logPath, record.desktopPath);
        record.reportCopied = true;
    } catch (const std::exception&) {
        // A report of this failure would ask for the copy again.
    }
}

void SetNotifier(void (*function)()) {
    GetLogRecord().notifier = function;
    // Exit handlers run in reverse order, so one that is registered at the start runs after nearly all others and
    // tells of their reports too.
    static std::once_flag hooks;
    std::call_once(hooks, [] {
        std::atexit(&FinishReport);
        std::set_terminate(&Terminate);
    });
}

void FinishReport() noexcept {
    try {
        const LogRecord& record = GetLogRecord();
        if (!record.reportCopied || record.notifier == nullptr)
            return;
        CopyLogToDesktop();
        record.notifier();
    } catch (...) {
        // The process ends here in any case.
    }
}

String MakeTimeStamp() {
    return MakeTimeStamp(Platform::GetClockTime());
}

String MakeTimeStamp(const std::optional<Platform::ClockTime>& time) {
    if (!time)
        return "[YYYY-MM-DDTHH:MM:SS   :  ]";
    const bool isAhead = time->minutesAheadOfUtc >= 0;
    const auto minutes = static_cast<std::uint32_t>(isAhead ? time->minutesAheadOfUtc : -time->minutesAheadOfUtc);
    return "[" + Padded(time->year, 4) + "-" + Padded(time->month, 2) + "-" + Padded(time->day, 2) + "T" +
           Padded(time->hour, 2) + ":" + Padded(time->minute, 2) + ":" + Padded(time->second, 2) +
           (isAhead ? "+" : "-") + Padded(minutes / 60, 2) + ":" + Padded(minutes % 60, 2) + "]";
}

} // namespace Quorvex
