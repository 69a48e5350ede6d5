#pragma once

#include "foundation/platform/win32/LoadableLibrary.h"

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include <optional>

/// Calls that older systems lack, by library. A null pointer means that this system lacks the call, and every caller
/// tests for it. The tables are made on first use, which falls on the main thread during start-up; tests put pointers
/// of their own in.
namespace Quorvex::Platform {

struct KernelCalls {
    KernelCalls();

    LoadableLibrary library;
    LANGID(WINAPI* getUserDefaultUILanguage)() = nullptr;
    BOOL(WINAPI* wow64DisableWow64FsRedirection)(PVOID*) = nullptr;
    BOOL(WINAPI* wow64RevertWow64FsRedirection)(PVOID) = nullptr;
    HANDLE(WINAPI* openThread)(DWORD, BOOL, DWORD) = nullptr;
    UINT(WINAPI* getSystemWindowsDirectoryW)(LPWSTR, UINT) = nullptr;
    BOOL(WINAPI* isProcessorFeaturePresent)(DWORD) = nullptr;
    BOOL(WINAPI* setProcessUserModeExceptionPolicy)(DWORD) = nullptr;
    BOOL(WINAPI* getProcessUserModeExceptionPolicy)(LPDWORD) = nullptr;
    BOOL(WINAPI* verifyVersionInfoA)(LPOSVERSIONINFOEXA, DWORD, DWORDLONG) = nullptr;
    BOOL(WINAPI* verifyVersionInfoW)(LPOSVERSIONINFOEXW, DWORD, DWORDLONG) = nullptr;
    ULONGLONG(WINAPI* verSetConditionMask)(ULONGLONG, DWORD, BYTE) = nullptr;

    // Every system has these two; they stand here for tests.
    BOOL(WINAPI* getVersionExA)(LPOSVERSIONINFOA) = nullptr;
    int(WINAPI* getLocaleInfoA)(LCID, LCTYPE, LPSTR, int) = nullptr;
    /// The upper-case letter of the drive that holds the system, once it was asked for; 0 if there is none.
    std::optional<char16_t> systemDrive;
};

struct ShellCalls {
    ShellCalls();

    LoadableLibrary library;
    BOOL(WINAPI* shellExecuteExA)(SHELLEXECUTEINFOA*) = nullptr;
    BOOL(WINAPI* shellExecuteExW)(SHELLEXECUTEINFOW*) = nullptr;
    HRESULT(WINAPI* shGetFolderPathA)(HWND, int, HANDLE, DWORD, LPSTR) = nullptr;
    HRESULT(WINAPI* shGetFolderPathW)(HWND, int, HANDLE, DWORD, LPWSTR) = nullptr;
    HRESULT(WINAPI* shGetSpecialFolderLocation)(HWND, int, LPITEMIDLIST*) = nullptr;
    BOOL(WINAPI* shGetSpecialFolderPathA)(HWND, LPSTR, int, BOOL) = nullptr;
    BOOL(WINAPI* shGetSpecialFolderPathW)(HWND, LPWSTR, int, BOOL) = nullptr;
    BOOL(WINAPI* shGetPathFromIDListA)(LPCITEMIDLIST, LPSTR) = nullptr;
    BOOL(WINAPI* shGetPathFromIDListW)(LPCITEMIDLIST, LPWSTR) = nullptr;
    int(WINAPI* shFileOperationA)(LPSHFILEOPSTRUCTA) = nullptr;
    int(WINAPI* shFileOperationW)(LPSHFILEOPSTRUCTW) = nullptr;
};

struct UserCalls {
    UserCalls();

    LoadableLibrary library;
    BOOL(WINAPI* animateWindow)(HWND, DWORD, DWORD) = nullptr;
    BOOL(WINAPI* blockInput)(BOOL) = nullptr;
    BOOL(WINAPI* enumDisplayMonitors)(HDC, LPCRECT, MONITORENUMPROC, LPARAM) = nullptr;
    BOOL(WINAPI* flashWindowEx)(PFLASHWINFO) = nullptr;
    HWND(WINAPI* getAncestor)(HWND, UINT) = nullptr;
    BOOL(WINAPI* getMonitorInfoA)(HMONITOR, LPMONITORINFO) = nullptr;
    HMONITOR(WINAPI* monitorFromRect)(LPCRECT, DWORD) = nullptr;
    HMONITOR(WINAPI* monitorFromPoint)(POINT, DWORD) = nullptr;
    BOOL(WINAPI* setProcessDPIAware)() = nullptr;
    BOOL(WINAPI* trackMouseEvent)(LPTRACKMOUSEEVENT) = nullptr;
    BOOL(WINAPI* updateLayeredWindow)(HWND, HDC, POINT*, SIZE*, HDC, POINT*, COLORREF, BLENDFUNCTION*, DWORD) = nullptr;
};

struct CommonControlCalls {
    CommonControlCalls();

    LoadableLibrary library;
    /// For systems whose User32 has no TrackMouseEvent.
    BOOL(WINAPI* trackMouseEvent)(LPTRACKMOUSEEVENT) = nullptr;
};

KernelCalls& GetKernelCalls();
ShellCalls& GetShellCalls();
UserCalls& GetUserCalls();
CommonControlCalls& GetCommonControlCalls();

} // namespace Quorvex::Platform
