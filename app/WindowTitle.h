#pragma once

#include "foundation/String.h"

namespace Quorvex::App {

/// The program's name as its title bars and message boxes show it.
inline constexpr const char* programName = "Varnolite";

/// The title for a path: the name of the program, then the path without the prefix that lets long paths pass.
String MakeWindowTitle(const String& path);

} // namespace Quorvex::App
