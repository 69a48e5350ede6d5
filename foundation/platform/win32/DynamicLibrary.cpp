#include "foundation/platform/DynamicLibrary.h"

#include "foundation/Exception.h"
#include "foundation/Version.h"
#include "foundation/platform/win32/WideText.h"

namespace Quorvex::Platform {

namespace {

bool IsFullPath(const String& path) {
    const String wide = path.ToWide();
    if (wide.length() < 3)
        return false;
    const char16_t* const units = wide.Wide();
    return (units[1] == u':' && units[2] == u'\\') || (units[0] == u'\\' && units[1] == u'\\');
}

HMODULE TryLoad(const String& path) {
    // The libraries that it needs may lie beside it.
    constexpr DWORD flags = LOAD_WITH_ALTERED_SEARCH_PATH;
    if (IsUnicodeSystem())
        return LoadLibraryExW(WideUnits(path.ToWide()), nullptr, flags);
    return LoadLibraryExA(path.ToANSI().Narrow(), nullptr, flags);
}

HMODULE Load(const String& path) {
    if (!IsFullPath(path))
        throw Exception("LoadLibraryEx", std::uint32_t{ERROR_BAD_PATHNAME});
    // A file that is no library is not to show a message box of the system's.
    const UINT formerMode = SetErrorMode(SEM_FAILCRITICALERRORS);
    const HMODULE handle = TryLoad(path);
    const DWORD code = GetLastError();
    SetErrorMode(formerMode);
    if (handle == nullptr)
        throw Exception("LoadLibraryEx", std::uint32_t{code});
    return handle;
}

} // namespace

DynamicLibrary::DynamicLibrary(const String& path) : m_handle(Load(path)) {}

DynamicLibrary::~DynamicLibrary() {
    FreeLibrary(static_cast<HMODULE>(m_handle));
}

DynamicLibrary::Function DynamicLibrary::Find(const char* name) const {
    return reinterpret_cast<Function>(GetProcAddress(static_cast<HMODULE>(m_handle), name));
}

const char* DynamicLibrary::GetFileSuffix() {
    return ".dll";
}

} // namespace Quorvex::Platform
