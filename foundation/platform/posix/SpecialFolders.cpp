#include "foundation/platform/SpecialFolders.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/platform/posix/NativeText.h"
#include "foundation/platform/posix/UserFolders.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace Quorvex {

namespace {

/// Empty unless the variable holds an absolute path; the XDG base directory specification has others ignored.
std::string AbsolutePathIn(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value == '/' ? value : "";
}

/// Empty for a user without a home.
std::string HomeFolder() {
    std::string home = AbsolutePathIn("HOME");
    if (!home.empty())
        return home;
    // The entry of the user table may be long where it comes over a network.
    std::array<char, 16384> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return "";
    return found->pw_dir;
}

std::string BaseFolder(const char* variable, const std::string& home, const char* belowHome) {
    std::string folder = AbsolutePathIn(variable);
    if (!folder.empty() || home.empty())
        return folder;
    return home + belowHome;
}

bool IsFolder(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// What user-dirs.dirs says, else ~/Desktop, else the home folder; the first that is there.
std::string DesktopFolder(const std::string& home) {
    if (home.empty())
        return home;
    std::ifstream file(BaseFolder("XDG_CONFIG_HOME", home, "/.config") + "/user-dirs.dirs", std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const auto named = Platform::DesktopFromUserFolders(text, home);
    if (named && IsFolder(*named))
        return *named;
    const std::string usual = home + "/Desktop";
    return IsFolder(usual) ? usual : home;
}

std::string FolderOf(SpecialFolder folder) {
    const std::string home = HomeFolder();
    switch (folder) {
    case SpecialFolder::Desktop:
        return DesktopFolder(home);
    case SpecialFolder::RoamingData:
        return BaseFolder("XDG_CONFIG_HOME", home, "/.config");
    case SpecialFolder::LocalData:
        return BaseFolder("XDG_STATE_HOME", home, "/.local/state");
    }
    return "";
}

} // namespace

String GetSpecialFolder(SpecialFolder folder) {
    const std::string path = FolderOf(folder);
    if (path.empty()) {
        ReportFailure(__LINE__, "GetSpecialFolder", ENOENT);
        throw Exception("GetSpecialFolder", std::uint32_t{ENOENT});
    }
    return Platform::WideFromNative(path);
}

String GetModulePath() {
    std::array<char, 32768> buffer{};
    // A full buffer may have been cut.
    const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size());
    if (length <= 0 || static_cast<std::size_t>(length) == buffer.size())
        throw Exception("readlink", static_cast<std::uint32_t>(errno));
    return Platform::WideFromNative(std::string_view(buffer.data(), static_cast<std::size_t>(length)));
}

} // namespace Quorvex
