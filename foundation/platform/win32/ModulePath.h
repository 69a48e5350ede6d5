#pragma once

#include "foundation/Exception.h"

#include <windows.h>

#include <vector>

namespace Quorvex::Platform {

/// The terminated path that one of the two forms of GetModuleFileName gives for the program. A failure, and a full
/// buffer, which may hold a path that was cut, raise Exception with the name.
template <class Unit>
std::vector<Unit> ModulePathUnits(DWORD(WINAPI* call)(HMODULE, Unit*, DWORD), const char* name) {
    std::vector<Unit> path(32768);
    const DWORD length = call(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0 || length >= path.size())
        throw Exception(TextView(name), std::uint32_t{GetLastError()});
    return path;
}

} // namespace Quorvex::Platform
