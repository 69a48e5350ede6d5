#include "foundation/platform/SystemLocale.h"

#include "foundation/platform/win32/SystemCalls.h"

namespace Quorvex::Platform {

String GetSystemLocaleName() {
    // The English name of the language alone; narrow, since every system has that form and the name is ASCII.
    char name[128] = {};
    if (GetKernelCalls().getLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SENGLANGUAGE, name, sizeof name) == 0)
        return String();
    return String(name);
}

} // namespace Quorvex::Platform
