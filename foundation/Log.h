#pragma once

#include "foundation/BilingualText.h"
#include "foundation/platform/Time.h"

#include <atomic>
#include <optional>

namespace Quorvex {

/// What the log file of the process stands on. Built once and alive until the end of the process.
struct LogRecord {
    std::atomic<bool> firstUse = true;      ///< Until the first line was written.
    std::atomic<bool> reportCopied = false; ///< Whether the log lies on the desktop.
    String version;                         ///< The build time.
    String programNameNarrow;
    String programNameWide;
    String logFolder;
    String logPath;
    String desktopFolder;
    String desktopPath;
    BilingualText reportText;
    void (*notifier)() = nullptr; ///< Called at the end of a run with a report.

    LogRecord() = default;
    /// The log of a program with its folder below the one given and its copy in the other; an empty folder is one that
    /// the system does not have.
    LogRecord(const String& programName, const String& localDataFolder, const String& desktop);
};

/// The record in use; built from the user's folders at first use.
LogRecord& GetLogRecord();
/// Puts another record in use, which the caller owns; null stands for the one of the user's folders. Returns the former
/// one. To be called while no other thread writes.
LogRecord* SetLogRecord(LogRecord* record) noexcept;

/// Appends one line to the log file; the common end of the reporters. Line 0 stands for none. The file is opened for
/// the line alone and shared with nobody, so a writer that comes at the same time fails; any thread may try. A failure
/// shows in a message box, and the program goes on.
void WriteLogLine(int line, const String& text) noexcept;

/// Copies the log file over the one on the user's desktop, so that the copy is complete after each report. A failure
/// leaves the report without a copy.
void CopyLogToDesktop() noexcept;

/// Sets what tells the user about the report at the end of a run, and sees to it that the end of the run, be it
/// regular or through std::terminate, is noticed. Call it once, at the start of the program.
void SetNotifier(void (*function)());

/// What happens at the end of a run: where a report was copied and a notifier is set, copies once more and notifies.
void FinishReport() noexcept;

/// "[2017-01-26T09:05:00+01:00]" in local time with the difference to UTC.
String MakeTimeStamp();
/// The stamp for a time; an unknown one has letters and blanks in the places of its digits.
String MakeTimeStamp(const std::optional<Platform::ClockTime>& time);

} // namespace Quorvex
