#pragma once

// Xlib with the extensions in use, without those of its macros that would swallow names of this program. Headers of
// the program that hold such names come first.
#include "gui/window/WindowSystem.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
// These need the macros that are removed below.
#include <X11/XKBlib.h>
#include <X11/extensions/XShm.h>
#include <X11/extensions/Xrandr.h>

#undef Always
#undef Bool
#undef CursorShape
#undef None
#undef Status
#undef Success
#undef True
#undef False

namespace Quorvex::GUI {

/// "No resource of this kind" in requests and answers.
inline constexpr XID noXid = 0;

} // namespace Quorvex::GUI
