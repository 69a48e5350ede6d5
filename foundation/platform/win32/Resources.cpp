#include "foundation/platform/Resources.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"

#include <windows.h>

namespace Quorvex {

namespace {

/// A null result of a call by that name is a failure.
template <class Result>
Result Checked(Result result, int line, const char* name) {
    if (result)
        return result;
    ReportFailure(line, name, GetLastError());
    throw Exception();
}

} // namespace

std::span<const std::byte> LoadResourceBytes(const char* name) {
    // Narrow and in the program's own module; the names are ASCII. Nothing is freed: the bytes lie in the mapped file.
    const HRSRC found =
        Checked(FindResourceA(nullptr, name, reinterpret_cast<LPCSTR>(RT_RCDATA)), __LINE__, "FindResourceA");
    const DWORD size = Checked(SizeofResource(nullptr, found), __LINE__, "SizeofResource");
    const HGLOBAL loaded = Checked(LoadResource(nullptr, found), __LINE__, "LoadResource");
    const void* bytes = Checked(LockResource(loaded), __LINE__, "LockResource");
    return {static_cast<const std::byte*>(bytes), size};
}

} // namespace Quorvex
