#include "foundation/platform/win32/Wow64RedirectionGuard.h"

#include "foundation/platform/win32/SystemCalls.h"
#include "tests/foundation/win32/Injected.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace Quorvex::Platform;
using Quorvex::Test::Injected;
using Quorvex::Test::LogCapture;

namespace {

int disabled = 0;
void* reverted = nullptr;
int drivesAsked = 0;

BOOL WINAPI Disable(PVOID* former) {
    ++disabled;
    *former = &disabled;
    return TRUE;
}

BOOL WINAPI FailToDisable(PVOID*) {
    return FALSE;
}

BOOL WINAPI Revert(PVOID former) {
    reverted = former;
    return TRUE;
}

BOOL WINAPI FailToRevert(PVOID) {
    SetLastError(87);
    return FALSE;
}

UINT WINAPI SystemOnD(LPWSTR folder, UINT) {
    ++drivesAsked;
    lstrcpyW(folder, L"d:\\Windows");
    return 10;
}

UINT WINAPI NoSystemFolder(LPWSTR, UINT) {
    return 0;
}

/// A 32-bit program on a 64-bit system whose system drive is D.
class Wow64RedirectionGuardTest : public testing::Test {
protected:
    Wow64RedirectionGuardTest() {
        disabled = 0;
        reverted = nullptr;
        drivesAsked = 0;
    }

    KernelCalls& m_kernel = GetKernelCalls();
    Injected<decltype(KernelCalls::wow64DisableWow64FsRedirection)> m_disable{m_kernel.wow64DisableWow64FsRedirection,
                                                                              &Disable};
    Injected<decltype(KernelCalls::wow64RevertWow64FsRedirection)> m_revert{m_kernel.wow64RevertWow64FsRedirection,
                                                                            &Revert};
    Injected<decltype(KernelCalls::getSystemWindowsDirectoryW)> m_folder{m_kernel.getSystemWindowsDirectoryW,
                                                                         &SystemOnD};
    Injected<std::optional<char16_t>> m_drive{m_kernel.systemDrive, std::nullopt};
};

TEST_F(Wow64RedirectionGuardTest, PathOnTheSystemDriveSwitchesRedirectionOffAndBack) {
    for (const char* path : {"D:\\a.bmp", "d:\\a.bmp", "\\\\?\\D:\\a.bmp", "\\\\?\\d:\\a.bmp", "D:"}) {
        disabled = 0;
        reverted = nullptr;
        {
            const Wow64RedirectionGuard guard(path);
            EXPECT_TRUE(guard.IsActive()) << path;
            EXPECT_EQ(disabled, 1) << path;
            EXPECT_EQ(reverted, nullptr) << path;
        }
        EXPECT_EQ(reverted, &disabled) << path;
    }
}

TEST_F(Wow64RedirectionGuardTest, PathOnAnotherDriveLeavesRedirectionOn) {
    for (const char* path : {"C:\\a.bmp", "\\\\?\\C:\\a.bmp", "\\\\server\\D:\\a.bmp", "a.bmp", "D", "", "\\\\?\\",
                             "\\\\?\\UNC\\server\\share", "1:\\a.bmp"}) {
        const Wow64RedirectionGuard guard(path);
        EXPECT_FALSE(guard.IsActive()) << path;
    }
    EXPECT_EQ(disabled, 0);
    EXPECT_EQ(reverted, nullptr);
}

TEST_F(Wow64RedirectionGuardTest, SystemDriveIsFoundOnce) {
    for (int i = 0; i < 3; ++i)
        const Wow64RedirectionGuard guard("D:\\a.bmp");
    EXPECT_EQ(drivesAsked, 1);
}

TEST_F(Wow64RedirectionGuardTest, SystemWithoutEitherFunctionHasAnEmptyGuard) {
    {
        const Injected<decltype(KernelCalls::wow64DisableWow64FsRedirection)> none(
            m_kernel.wow64DisableWow64FsRedirection, nullptr);
        EXPECT_FALSE(Wow64RedirectionGuard("D:\\a.bmp").IsActive());
    }
    const Injected<decltype(KernelCalls::wow64RevertWow64FsRedirection)> none(m_kernel.wow64RevertWow64FsRedirection,
                                                                              nullptr);
    EXPECT_FALSE(Wow64RedirectionGuard("D:\\a.bmp").IsActive());
    EXPECT_EQ(disabled, 0);
}

TEST_F(Wow64RedirectionGuardTest, SystemWithoutAKnownFolderHasAnEmptyGuard) {
    m_kernel.getSystemWindowsDirectoryW = &NoSystemFolder;
    EXPECT_FALSE(Wow64RedirectionGuard("D:\\a.bmp").IsActive());
    m_kernel.getSystemWindowsDirectoryW = nullptr;
    m_kernel.systemDrive.reset();
    EXPECT_FALSE(Wow64RedirectionGuard("D:\\a.bmp").IsActive());
}

TEST_F(Wow64RedirectionGuardTest, RedirectionThatCannotBeSwitchedOffIsNotSwitchedBack) {
    const LogCapture log;
    m_kernel.wow64DisableWow64FsRedirection = &FailToDisable;
    { const Wow64RedirectionGuard guard("D:\\a.bmp"); }
    EXPECT_EQ(reverted, nullptr);
    EXPECT_TRUE(log.IsEmpty());
}

TEST_F(Wow64RedirectionGuardTest, FailingRevertIsReported) {
    const LogCapture log;
    m_kernel.wow64RevertWow64FsRedirection = &FailToRevert;
    { const Wow64RedirectionGuard guard("D:\\a.bmp"); }
    EXPECT_TRUE(log.HasLineEndingIn(": Wow64RevertWow64FsRedirection failed with error code 87")) << log.Text();
}

} // namespace
