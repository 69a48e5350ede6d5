#include "foundation/platform/SpecialFolders.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/Version.h"
#include "foundation/platform/win32/ModulePath.h"
#include "foundation/platform/win32/SystemCalls.h"
#include "foundation/platform/win32/WideText.h"

#include <windows.h>

#include <array>

namespace Quorvex {

using Platform::FromWideUnits;
using Platform::GetShellCalls;
using Platform::ModulePathUnits;
using Platform::ShellCalls;

namespace {

/// Larger than any path that the shell's calls give, which know no length.
using WideBuffer = std::array<wchar_t, MAX_PATH + 1>;
using NarrowBuffer = std::array<char, MAX_PATH + 1>;

// Each way returns the empty text where it leads nowhere, after a report if its call failed.

String FromFolderPath(const ShellCalls& shell, int number) {
    if (IsUnicodeSystem() && shell.shGetFolderPathW != nullptr) {
        WideBuffer path{};
        const HRESULT result = shell.shGetFolderPathW(nullptr, number, nullptr, 0, path.data());
        if (result == S_OK)
            return FromWideUnits(path.data());
        ReportFailure(__LINE__, "SHGetFolderPathW", static_cast<std::uint32_t>(result));
    } else if (!IsUnicodeSystem() && shell.shGetFolderPathA != nullptr) {
        NarrowBuffer path{};
        const HRESULT result = shell.shGetFolderPathA(nullptr, number, nullptr, 0, path.data());
        if (result == S_OK)
            return String(path.data());
        ReportFailure(__LINE__, "SHGetFolderPathA", static_cast<std::uint32_t>(result));
    }
    return String();
}

String FromSpecialFolderPath(const ShellCalls& shell, int number) {
    if (IsUnicodeSystem() && shell.shGetSpecialFolderPathW != nullptr) {
        WideBuffer path{};
        if (shell.shGetSpecialFolderPathW(nullptr, path.data(), number, FALSE))
            return FromWideUnits(path.data());
        ReportFailure(__LINE__, "SHGetSpecialFolderPathW");
    } else if (!IsUnicodeSystem() && shell.shGetSpecialFolderPathA != nullptr) {
        NarrowBuffer path{};
        if (shell.shGetSpecialFolderPathA(nullptr, path.data(), number, FALSE))
            return String(path.data());
        ReportFailure(__LINE__, "SHGetSpecialFolderPathA");
    }
    return String();
}

String PathOfItem(const ShellCalls& shell, LPCITEMIDLIST item) {
    if (IsUnicodeSystem() && shell.shGetPathFromIDListW != nullptr) {
        WideBuffer path{};
        if (shell.shGetPathFromIDListW(item, path.data()))
            return FromWideUnits(path.data());
        ReportFailure(__LINE__, "SHGetPathFromIDListW");
    } else if (!IsUnicodeSystem() && shell.shGetPathFromIDListA != nullptr) {
        NarrowBuffer path{};
        if (shell.shGetPathFromIDListA(item, path.data()))
            return String(path.data());
        ReportFailure(__LINE__, "SHGetPathFromIDListA");
    }
    return String();
}

String FromLocation(const ShellCalls& shell, int number) {
    if (shell.shGetSpecialFolderLocation == nullptr)
        return String();
    LPITEMIDLIST item = nullptr;
    const HRESULT result = shell.shGetSpecialFolderLocation(nullptr, number, &item);
    if (result != S_OK) {
        ReportFailure(__LINE__, "SHGetSpecialFolderLocation", static_cast<std::uint32_t>(result));
        return String();
    }
    // The item is freed whether it has a path or not.
    String path = PathOfItem(shell, item);
    CoTaskMemFree(item);
    return path;
}

const char* RegistryNameOf(SpecialFolder folder) {
    switch (folder) {
    case SpecialFolder::Desktop:
        return "Desktop";
    case SpecialFolder::RoamingData:
        return "AppData";
    case SpecialFolder::LocalData:
        return "Local AppData";
    }
    return "";
}

String FromRegistry(SpecialFolder folder) {
    constexpr const char* keyPath = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
    HKEY key = nullptr;
    // What the oldest shells read; newer ones keep it for the programs of their time.
    if (RegOpenKeyExA(HKEY_CURRENT_USER, keyPath, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return String();
    const String name(RegistryNameOf(folder));
    DWORD type = 0;
    String path;
    // One unit stays zero: a value of the registry need not end in a terminator.
    if (IsUnicodeSystem()) {
        WideBuffer value{};
        DWORD bytes = sizeof value - sizeof(wchar_t);
        if (RegQueryValueExW(key, Platform::WideUnits(name.ToWide()), nullptr, &type,
                             reinterpret_cast<BYTE*>(value.data()), &bytes) == ERROR_SUCCESS &&
            type == REG_SZ)
            path = FromWideUnits(value.data());
    } else {
        NarrowBuffer value{};
        DWORD bytes = sizeof value - 1;
        if (RegQueryValueExA(key, name.Narrow(), nullptr, &type, reinterpret_cast<BYTE*>(value.data()), &bytes) ==
                ERROR_SUCCESS &&
            type == REG_SZ)
            path = String(value.data());
    }
    RegCloseKey(key);
    return path;
}

} // namespace

String GetSpecialFolder(SpecialFolder folder) {
    // Newest call first.
    const ShellCalls& shell = GetShellCalls();
    const int number = static_cast<int>(folder);
    for (const auto way : {&FromFolderPath, &FromSpecialFolderPath, &FromLocation}) {
        String path = way(shell, number);
        if (!path.IsEmpty())
            return path;
    }
    String path = FromRegistry(folder);
    if (path.IsEmpty()) {
        const std::uint32_t code = GetLastError();
        ReportFailure(__LINE__, "GetSpecialFolder", code);
        throw Exception("GetSpecialFolder", code);
    }
    return path;
}

String GetModulePath() {
    if (IsUnicodeSystem())
        return FromWideUnits(ModulePathUnits<wchar_t>(&GetModuleFileNameW, "GetModuleFileNameW").data());
    return String(ModulePathUnits<char>(&GetModuleFileNameA, "GetModuleFileNameA").data());
}

} // namespace Quorvex
