#include "foundation/platform/SystemLocale.h"

#include <cstdlib>
#include <string_view>

namespace Quorvex::Platform {

// POSIX.1 section 8.2: LC_ALL goes above the category, the category above LANG; an empty value counts as unset.
String GetSystemLocaleName() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value == nullptr || *value == 0)
            continue;
        const std::string_view name(value);
        if (name == "de" || name.starts_with("de_") || name.starts_with("de.") || name.starts_with("de@"))
            return "German";
        return "English";
    }
    return "English";
}

} // namespace Quorvex::Platform
