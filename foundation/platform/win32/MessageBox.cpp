#include "foundation/platform/MessageBox.h"

#include "foundation/Version.h"
#include "foundation/platform/win32/WideText.h"

#include <windows.h>

namespace Quorvex::Platform {

// Without an owner: a report may come before the main window, after it, or from a worker.
void ShowPlainMessageBox(const String& title, const String& text) {
    if (IsUnicodeSystem())
        MessageBoxW(nullptr, WideUnits(text.ToWide()), WideUnits(title.ToWide()), MB_OK);
    else
        MessageBoxA(nullptr, text.ToANSI().Narrow(), title.ToANSI().Narrow(), MB_OK);
}

} // namespace Quorvex::Platform
