#pragma once

#include "foundation/String.h"

#include <windows.h>

namespace Quorvex::Platform {

/// The units of a UTF-16 text as the system's calls take them. The pointer lives as long as the text.
inline const wchar_t* WideUnits(const String& wide) {
    return reinterpret_cast<const wchar_t*>(wide.Wide());
}

/// A terminated text of the system.
inline String FromWideUnits(const wchar_t* text) {
    return String(reinterpret_cast<const char16_t*>(text));
}

} // namespace Quorvex::Platform
