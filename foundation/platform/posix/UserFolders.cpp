#include "foundation/platform/posix/UserFolders.h"

#include <algorithm>
#include <sstream>
#include <string_view>

namespace Quorvex::Platform {

namespace {

constexpr std::string_view blanks = " \t";

void SkipBlanks(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
}

/// Takes the text off the start of the line; false if the line begins otherwise.
bool Take(std::string_view& line, std::string_view text) {
    if (!line.starts_with(text))
        return false;
    line.remove_prefix(text.size());
    return true;
}

/// Up to the closing quotation mark.
std::string Unescaped(std::string_view line) {
    std::string value;
    for (std::size_t i = 0; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size())
            ++i;
        value.push_back(line[i]);
    }
    return value;
}

std::optional<std::string> DesktopFromLine(std::string_view line, const std::string& home) {
    SkipBlanks(line);
    if (!Take(line, "XDG_DESKTOP_DIR"))
        return std::nullopt;
    SkipBlanks(line);
    if (!Take(line, "="))
        return std::nullopt;
    SkipBlanks(line);
    if (!Take(line, "\""))
        return std::nullopt;
    // Only these two forms are allowed: the file is no script, although it looks like one.
    const bool isInHome = line.starts_with("$HOME\"") || line.starts_with("$HOME/");
    if (isInHome)
        Take(line, "$HOME");
    else if (!line.starts_with("/"))
        return std::nullopt;
    std::string path = (isInHome ? home : std::string()) + Unescaped(line);
    // A desktop that is the home folder itself is written with a separator at its end.
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

} // namespace

std::optional<std::string> DesktopFromUserFolders(const std::string& text, const std::string& home) {
    std::optional<std::string> desktop;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (auto found = DesktopFromLine(line, home))
            desktop = std::move(found);
    return desktop;
}

} // namespace Quorvex::Platform
