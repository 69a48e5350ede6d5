#pragma once

#include <windows.h>

namespace Quorvex::Platform {

/// The calls that lead to the bytes of a resource. Every system has them; the table is there for tests.
struct ResourceCalls {
    HRSRC(WINAPI* findResourceA)(HMODULE, LPCSTR, LPCSTR) = &FindResourceA;
    DWORD(WINAPI* sizeofResource)(HMODULE, HRSRC) = &SizeofResource;
    HGLOBAL(WINAPI* loadResource)(HMODULE, HRSRC) = &LoadResource;
    LPVOID(WINAPI* lockResource)(HGLOBAL) = &LockResource;
};

ResourceCalls& GetResourceCalls();

} // namespace Quorvex::Platform
