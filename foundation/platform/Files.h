#pragma once

#include "foundation/String.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Files and folders of the system. Paths are texts in UTF-16 or Windows-1252. On a system without wide file interfaces
/// they go to it in the system's code page; on systems whose paths are bytes, bytes that are no UTF-8 are escaped in
/// the text, so that a name the system gave leads back to its file.
///
/// Unless a declaration says otherwise a failing call is reported to the log by its name, and then Exception without
/// text is raised. Any thread may call; a handle belongs to one thread at a time.
namespace Quorvex::Platform {

/// An open file; the owner closes it.
enum class FileHandle : std::uintptr_t { Closed = 0 };

/// In units of 100 ns since 1601-01-01 00:00 UTC, on every system.
struct FileTimes {
    std::uint64_t creation = 0;
    std::uint64_t lastAccess = 0;
    std::uint64_t lastWrite = 0;
};

struct OpenedFile {
    FileHandle handle = FileHandle::Closed;
    std::uint64_t sizeBytes = 0; ///< At the time of opening.
    FileTimes times;
};

/// Opens an existing file for reading; others may read it meanwhile. A file that is missing, denied, in use or no file
/// at all (a folder, a pipe) is an ordinary event and raises without a report.
OpenedFile OpenFileForReading(const String& path);
/// Does not raise; a failure is reported. A closed handle is left alone.
void CloseFile(FileHandle file) noexcept;

/// Reads exactly that many bytes from the file's position. The end of the file before that raises without a report.
void ReadFromFile(FileHandle file, void* destination, std::uint32_t bytes);
/// The position in bytes from the start.
std::uint64_t TellInFile(FileHandle file);
/// Positions beyond the end are allowed; what is read there fails.
void SeekInFile(FileHandle file, std::uint64_t positionBytes);

/// Opens a file for writing and makes it if it is missing; nobody else may have it open for writing at the time. Raises
/// Exception("CreateFile", code) without a report: the log itself stands on this operation.
FileHandle OpenFileForAppending(const String& path);
/// Moves to the end and tells where that is. Raises Exception("SetFilePointer", code) without a report.
std::uint64_t SeekToEndOfFile(FileHandle file);
/// Raises Exception("WriteFile", code) without a report.
void WriteToFile(FileHandle file, const void* source, std::uint32_t bytes);

/// A call of the system that failed.
struct FailedCall {
    const char* name;
    std::uint32_t code;
};

/// Makes a folder; one that is there already is no failure. The log stands on this operation: a failure is handed back.
std::optional<FailedCall> TryCreateDirectory(const String& path);

/// Copies over an existing file. Raises Exception("CopyFile", code) without a report.
void CopyFileOver(const String& source, const String& destination);
void RemoveFile(const String& path);

/// The names of the entries in the folder that match, as the system spells and orders them; folders and the entries "."
/// and ".." count as well. In the pattern "*" stands for any text and "?" for one unit. Empty where nothing matches or
/// the folder is missing.
std::vector<String> FindFileNames(const String& folder, const String& pattern);

/// What stands between a folder and a name.
const char* GetPathSeparator();
/// The path of a name in a folder, which may end in a separator or not.
String JoinPath(const String& folder, const String& name);
/// The path in the form that lifts the system's length limit, where there is such a form.
String MakeLongPath(const String& path);

} // namespace Quorvex::Platform

namespace Quorvex {

/// A folder that is there already is no failure. Other failures are reported by name and raise Exception without text.
void CreateDirectoryIfMissing(const String& path);

} // namespace Quorvex
