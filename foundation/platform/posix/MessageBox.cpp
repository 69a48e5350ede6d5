#include "foundation/platform/MessageBox.h"

#include "foundation/platform/posix/NativeText.h"

#include <cstdio>

namespace Quorvex::Platform {

// Without a display, or before there is one, whoever started the program reads it where they started it.
void ShowPlainMessageBox(const String& title, const String& text) {
    std::fprintf(stderr, "%s: %s\n", NativeFromWide(title).c_str(), NativeFromWide(text).c_str());
}

} // namespace Quorvex::Platform
