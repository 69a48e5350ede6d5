#include "foundation/platform/win32/SystemCalls.h"

namespace Quorvex::Platform {

// By name, never by the import table: a system that lacks one of these would not start the program at all.
KernelCalls::KernelCalls() : library("kernel32.dll"), getVersionExA(&GetVersionExA), getLocaleInfoA(&GetLocaleInfoA) {
    library.Take(getUserDefaultUILanguage, "GetUserDefaultUILanguage");
    library.Take(wow64DisableWow64FsRedirection, "Wow64DisableWow64FsRedirection");
    library.Take(wow64RevertWow64FsRedirection, "Wow64RevertWow64FsRedirection");
    library.Take(openThread, "OpenThread");
    library.Take(getSystemWindowsDirectoryW, "GetSystemWindowsDirectoryW");
    library.Take(isProcessorFeaturePresent, "IsProcessorFeaturePresent");
    library.Take(setProcessUserModeExceptionPolicy, "SetProcessUserModeExceptionPolicy");
    library.Take(getProcessUserModeExceptionPolicy, "GetProcessUserModeExceptionPolicy");
    library.Take(verifyVersionInfoA, "VerifyVersionInfoA");
    library.Take(verifyVersionInfoW, "VerifyVersionInfoW");
    library.Take(verSetConditionMask, "VerSetConditionMask");
}

ShellCalls::ShellCalls() : library("shell32.dll") {
    library.Take(shellExecuteExA, "ShellExecuteExA");
    library.Take(shellExecuteExW, "ShellExecuteExW");
    library.Take(shGetFolderPathA, "SHGetFolderPathA");
    library.Take(shGetFolderPathW, "SHGetFolderPathW");
    library.Take(shGetSpecialFolderLocation, "SHGetSpecialFolderLocation");
    library.Take(shGetSpecialFolderPathA, "SHGetSpecialFolderPathA");
    library.Take(shGetSpecialFolderPathW, "SHGetSpecialFolderPathW");
    library.Take(shGetPathFromIDListA, "SHGetPathFromIDListA");
    library.Take(shGetPathFromIDListW, "SHGetPathFromIDListW");
    library.Take(shFileOperationA, "SHFileOperationA");
    library.Take(shFileOperationW, "SHFileOperationW");
}

UserCalls::UserCalls() : library("user32.dll") {
    library.Take(animateWindow, "AnimateWindow");
    library.Take(blockInput, "BlockInput");
    library.Take(enumDisplayMonitors, "EnumDisplayMonitors");
    library.Take(flashWindowEx, "FlashWindowEx");
    library.Take(getAncestor, "GetAncestor");
    library.Take(getMonitorInfoA, "GetMonitorInfoA");
    library.Take(monitorFromRect, "MonitorFromRect");
    library.Take(monitorFromPoint, "MonitorFromPoint");
    library.Take(setProcessDPIAware, "SetProcessDPIAware");
    library.Take(trackMouseEvent, "TrackMouseEvent");
    library.Take(updateLayeredWindow, "UpdateLayeredWindow");
}

// With its underscore: the form that came with the browser of its time and works on the oldest systems.
CommonControlCalls::CommonControlCalls() : library("comctl32.dll") {
    library.Take(trackMouseEvent, "_TrackMouseEvent");
}

// Each on first use: a library that is never asked for is never loaded.
KernelCalls& GetKernelCalls() {
    static KernelCalls calls;
    return calls;
}

ShellCalls& GetShellCalls() {
    static ShellCalls calls;
    return calls;
}

UserCalls& GetUserCalls() {
    static UserCalls calls;
    return calls;
}

CommonControlCalls& GetCommonControlCalls() {
    static CommonControlCalls calls;
    return calls;
}

} // namespace Quorvex::Platform
