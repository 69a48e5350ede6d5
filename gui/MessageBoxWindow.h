#pragma once

#include "foundation/String.h"

namespace Quorvex::GUI {

class IWindowSystem;

/// Shows a text with a button in a window of its own, for platforms that have no message box, and returns once the user
/// is through with it: by the button, by Enter, Escape or the space bar, or by closing the window. False where the
/// display has gone before. Dispatches the window system's messages meanwhile; nothing else of the toolkit is needed.
bool RunMessageBox(IWindowSystem& windowSystem, const String& title, const String& text);

} // namespace Quorvex::GUI
