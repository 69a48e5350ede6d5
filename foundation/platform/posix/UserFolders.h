#pragma once

#include <optional>
#include <string>

namespace Quorvex::Platform {

/// The folder that the text of a file user-dirs.dirs names for the desktop, as xdg-user-dirs writes it:
/// XDG_DESKTOP_DIR="$HOME/Schreibtisch" or an absolute path, with backslashes before special characters. The last line
/// for it holds. Empty where it names none.
std::optional<std::string> DesktopFromUserFolders(const std::string& text, const std::string& home);

} // namespace Quorvex::Platform
