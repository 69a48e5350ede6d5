#include "foundation/platform/Resources.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/platform/win32/ResourceCalls.h"

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
    const Platform::ResourceCalls& calls = Platform::GetResourceCalls();
    // Narrow and in the program's own module; the names are ASCII. Nothing is freed: the bytes lie in the mapped file.
    const HRSRC found =
        Checked(calls.findResourceA(nullptr, name, reinterpret_cast<LPCSTR>(RT_RCDATA)), __LINE__, "FindResourceA");
    const DWORD size = Checked(calls.sizeofResource(nullptr, found), __LINE__, "SizeofResource");
    const HGLOBAL loaded = Checked(calls.loadResource(nullptr, found), __LINE__, "LoadResource");
    const void* bytes = Checked(calls.lockResource(loaded), __LINE__, "LockResource");
    return {static_cast<const std::byte*>(bytes), size};
}

namespace Platform {

ResourceCalls& GetResourceCalls() {
    static ResourceCalls calls;
    return calls;
}

} // namespace Platform

} // namespace Quorvex
