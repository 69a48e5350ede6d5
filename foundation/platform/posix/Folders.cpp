#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/Wildcards.h"
#include "foundation/platform/Files.h"
#include "foundation/platform/posix/NativeText.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <memory>

namespace Quorvex::Platform {

namespace {

/// Ends a walk through a folder on every way out of it.
struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

} // namespace

// Private to the user and with all its parents: a home folder need not hold them, and the XDG base directory
// specification asks for both.
std::optional<FailedCall> TryCreateDirectory(const String& path) {
    const std::string native = NativeFromWide(path);
    for (std::size_t end = native.find('/', 1); end != std::string::npos; end = native.find('/', end + 1))
        mkdir(native.substr(0, end).c_str(), 0700);
    if (mkdir(native.c_str(), 0700) == 0 || errno == EEXIST)
        return std::nullopt;
    return FailedCall{"mkdir", static_cast<std::uint32_t>(errno)};
}

void CopyFileOver(const String& source, const String& destination) {
    std::error_code failure;
    std::filesystem::copy_file(NativeFromWide(source), NativeFromWide(destination),
                               std::filesystem::copy_options::overwrite_existing, failure);
    if (failure)
        throw Exception("CopyFile", static_cast<std::uint32_t>(failure.value()));
}

void RemoveFile(const String& path) {
    if (unlink(NativeFromWide(path).c_str()) == 0)
        return;
    ReportFailure(__LINE__, "unlink");
    throw Exception();
}

std::vector<String> FindFileNames(const String& folder, const String& pattern) {
    const std::unique_ptr<DIR, CloseFolder> opened(opendir(NativeFromWide(folder).c_str()));
    if (opened == nullptr) {
        if (errno == ENOENT || errno == ENOTDIR)
            return {};
        ReportFailure(__LINE__, "opendir");
        throw Exception();
    }
    std::vector<String> names;
    // The end of the folder and a failure look alike but for the code.
    errno = 0;
    while (const dirent* entry = readdir(opened.get())) {
        String name = WideFromNative(entry->d_name);
        if (MatchesWildcards(name, pattern))
            names.push_back(std::move(name));
        errno = 0;
    }
    if (errno != 0) {
        ReportFailure(__LINE__, "readdir");
        throw Exception();
    }
    return names;
}

const char* GetPathSeparator() {
    return "/";
}

String MakeLongPath(const String& path) {
    return path;
}

} // namespace Quorvex::Platform
