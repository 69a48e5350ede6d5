#pragma once

#include "foundation/String.h"

namespace Quorvex::GUI {

/// A message box on the display that the environment names, by a connection of its own: it can come before the main
/// window, after it, or from a worker. Without a display, or when it goes, the text goes to standard error.
void ShowX11MessageBox(const String& title, const String& text);

} // namespace Quorvex::GUI
