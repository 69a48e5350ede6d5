#include "foundation/platform/win32/SystemCalls.h"

#include <gtest/gtest.h>

using namespace Quorvex::Platform;

namespace {

TEST(LoadableLibraryTest, MissingLibraryHasNoFunctions) {
    const LoadableLibrary library("no such library.dll");
    EXPECT_EQ(library.GetProcAddress("GetVersion"), nullptr);
    int(WINAPI * function)() = nullptr;
    library.Take(function, "GetVersion");
    EXPECT_EQ(function, nullptr);
}

TEST(LoadableLibraryTest, FunctionsAreFoundByName) {
    const LoadableLibrary library("kernel32.dll");
    DWORD(WINAPI * function)() = nullptr;
    library.Take(function, "GetCurrentProcessId");
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function(), GetCurrentProcessId());
    EXPECT_EQ(library.GetProcAddress("NoSuchFunction"), nullptr);
}

// What a current system has; the two calls on exception policy came and went with single versions.
TEST(SystemCallsTest, TablesAreFilled) {
    const KernelCalls& kernel = GetKernelCalls();
    EXPECT_NE(kernel.getUserDefaultUILanguage, nullptr);
    EXPECT_NE(kernel.wow64DisableWow64FsRedirection, nullptr);
    EXPECT_NE(kernel.wow64RevertWow64FsRedirection, nullptr);
    EXPECT_NE(kernel.openThread, nullptr);
    EXPECT_NE(kernel.getSystemWindowsDirectoryW, nullptr);
    EXPECT_NE(kernel.isProcessorFeaturePresent, nullptr);
    EXPECT_NE(kernel.verifyVersionInfoA, nullptr);
    EXPECT_NE(kernel.verifyVersionInfoW, nullptr);
    EXPECT_NE(kernel.verSetConditionMask, nullptr);
    EXPECT_NE(GetCommonControlCalls().trackMouseEvent, nullptr);
}

TEST(SystemCallsTest, ShellTableIsFilled) {
    const ShellCalls& shell = GetShellCalls();
    EXPECT_NE(shell.shellExecuteExA, nullptr);
    EXPECT_NE(shell.shellExecuteExW, nullptr);
    EXPECT_NE(shell.shGetFolderPathA, nullptr);
    EXPECT_NE(shell.shGetFolderPathW, nullptr);
    EXPECT_NE(shell.shGetSpecialFolderLocation, nullptr);
    EXPECT_NE(shell.shGetSpecialFolderPathA, nullptr);
    EXPECT_NE(shell.shGetSpecialFolderPathW, nullptr);
    EXPECT_NE(shell.shGetPathFromIDListA, nullptr);
    EXPECT_NE(shell.shGetPathFromIDListW, nullptr);
    EXPECT_NE(shell.shFileOperationA, nullptr);
    EXPECT_NE(shell.shFileOperationW, nullptr);
}

TEST(SystemCallsTest, UserTableIsFilled) {
    const UserCalls& user = GetUserCalls();
    EXPECT_NE(user.animateWindow, nullptr);
    EXPECT_NE(user.blockInput, nullptr);
    EXPECT_NE(user.enumDisplayMonitors, nullptr);
    EXPECT_NE(user.flashWindowEx, nullptr);
    EXPECT_NE(user.getAncestor, nullptr);
    EXPECT_NE(user.getMonitorInfoA, nullptr);
    EXPECT_NE(user.monitorFromRect, nullptr);
    EXPECT_NE(user.monitorFromPoint, nullptr);
    EXPECT_NE(user.setProcessDPIAware, nullptr);
    EXPECT_NE(user.trackMouseEvent, nullptr);
    EXPECT_NE(user.updateLayeredWindow, nullptr);
}

// A pointer in the place of another function would pass the tests above.
TEST(SystemCallsTest, FunctionsOfTheTablesDoTheirWork) {
    const KernelCalls& kernel = GetKernelCalls();
    EXPECT_EQ(kernel.getUserDefaultUILanguage(), GetUserDefaultUILanguage());
    EXPECT_TRUE(kernel.isProcessorFeaturePresent(PF_XMMI_INSTRUCTIONS_AVAILABLE));
    const HANDLE thread = kernel.openThread(SYNCHRONIZE, FALSE, GetCurrentThreadId());
    EXPECT_NE(thread, nullptr);
    CloseHandle(thread);
    const POINT origin{0, 0};
    EXPECT_EQ(GetUserCalls().monitorFromPoint(origin, MONITOR_DEFAULTTOPRIMARY),
              MonitorFromPoint(origin, MONITOR_DEFAULTTOPRIMARY));
}

} // namespace
