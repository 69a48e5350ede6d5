#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/Version.h"
#include "foundation/platform/Files.h"
#include "foundation/platform/win32/WideText.h"
#include "foundation/platform/win32/Wow64RedirectionGuard.h"

#include <windows.h>

namespace Quorvex::Platform {

namespace {

// The one way from a record to its name, so that the search below is written once for both forms.
String NameOf(const WIN32_FIND_DATAW& found) {
    return FromWideUnits(found.cFileName);
}

String NameOf(const WIN32_FIND_DATAA& found) {
    return String(found.cFileName);
}

[[noreturn]] void RaiseReported(int line, const char* name) {
    ReportFailure(line, name, GetLastError());
    throw Exception();
}

/// Ends a search on every way out of it.
class SearchHandle {
public:
    explicit SearchHandle(HANDLE search) : m_search(search) {}
    SearchHandle(const SearchHandle&) = delete;
    SearchHandle& operator=(const SearchHandle&) = delete;
    ~SearchHandle() {
        if (m_search != INVALID_HANDLE_VALUE && !FindClose(m_search))
            ReportFailure(__LINE__, "FindClose");
    }
    HANDLE Get() const { return m_search; }

private:
    HANDLE m_search;
};

/// FIRST and NEXT are the two calls in the form of the record.
template <class Record, class First, class Next>
std::vector<String> Collect(const First& first, const Next& next) {
    Record found{};
    const SearchHandle search(first(&found));
    if (search.Get() == INVALID_HANDLE_VALUE) {
        if (GetLastError() == ERROR_FILE_NOT_FOUND || GetLastError() == ERROR_PATH_NOT_FOUND)
            return {};
        RaiseReported(__LINE__, "FindFirstFile");
    }
    std::vector<String> names;
    do {
        names.push_back(NameOf(found));
    } while (next(search.Get(), &found));
    if (GetLastError() != ERROR_NO_MORE_FILES)
        RaiseReported(__LINE__, "FindNextFile");
    return names;
}

} // namespace

std::optional<FailedCall> TryCreateDirectory(const String& path) {
    const bool isWide = IsUnicodeSystem();
    const BOOL isDone = isWide ? CreateDirectoryW(WideUnits(path.ToWide()), nullptr)
                               : CreateDirectoryA(path.ToANSI().Narrow(), nullptr);
    // The system does not tell a folder from a file of that name here; what is done in it next will.
    if (isDone || GetLastError() == ERROR_ALREADY_EXISTS)
        return std::nullopt;
    return FailedCall{isWide ? "CreateDirectoryW" : "CreateDirectoryA", GetLastError()};
}

void CopyFileOver(const String& source, const String& destination) {
    const BOOL isDone = IsUnicodeSystem()
                            ? CopyFileW(WideUnits(source.ToWide()), WideUnits(destination.ToWide()), FALSE)
                            : CopyFileA(source.ToANSI().Narrow(), destination.ToANSI().Narrow(), FALSE);
    if (!isDone)
        throw Exception("CopyFile", std::uint32_t{GetLastError()});
}

void RemoveFile(const String& path) {
    const BOOL isDone = IsUnicodeSystem() ? DeleteFileW(WideUnits(path.ToWide())) : DeleteFileA(path.ToANSI().Narrow());
    if (!isDone)
        RaiseReported(__LINE__, "DeleteFile");
}

std::vector<String> FindFileNames(const String& folder, const String& pattern) {
    const Wow64RedirectionGuard redirection(folder);
    const String path = JoinPath(folder, pattern);
    if (IsUnicodeSystem())
        return Collect<WIN32_FIND_DATAW>(
            [&](WIN32_FIND_DATAW* found) { return FindFirstFileW(WideUnits(path.ToWide()), found); }, &FindNextFileW);
    return Collect<WIN32_FIND_DATAA>(
        [&](WIN32_FIND_DATAA* found) { return FindFirstFileA(path.ToANSI().Narrow(), found); }, &FindNextFileA);
}

const char* GetPathSeparator() {
    return "\\";
}

// The narrow calls know no such prefix.
String MakeLongPath(const String& path) {
    return IsUnicodeSystem() ? "\\\\?\\" + path : path;
}

} // namespace Quorvex::Platform
