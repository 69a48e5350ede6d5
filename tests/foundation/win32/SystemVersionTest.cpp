#include "foundation/platform/SystemVersion.h"

#include "foundation/platform/win32/SystemCalls.h"
#include "tests/foundation/win32/Injected.h"

#include <gtest/gtest.h>

using namespace Quorvex::Platform;
using Quorvex::Test::Injected;

namespace {

BOOL WINAPI NoVersion(LPOSVERSIONINFOA) {
    return FALSE;
}

/// Windows 2000 with its service pack 3; knows both records.
BOOL WINAPI Windows2000(LPOSVERSIONINFOA record) {
    record->dwMajorVersion = 5;
    record->dwMinorVersion = 0;
    if (record->dwOSVersionInfoSize == sizeof(OSVERSIONINFOEXA))
        reinterpret_cast<OSVERSIONINFOEXA*>(record)->wServicePackMajor = 3;
    return TRUE;
}

/// Windows 98 knows the short record alone.
BOOL WINAPI Windows98(LPOSVERSIONINFOA record) {
    if (record->dwOSVersionInfoSize != sizeof(OSVERSIONINFOA))
        return FALSE;
    record->dwMajorVersion = 4;
    record->dwMinorVersion = 10;
    return TRUE;
}

/// Of the table's calls, those that verify versions are missing.
struct WithoutVerification {
    Injected<decltype(KernelCalls::verifyVersionInfoW)> wide{GetKernelCalls().verifyVersionInfoW, nullptr};
    Injected<decltype(KernelCalls::verifyVersionInfoA)> narrow{GetKernelCalls().verifyVersionInfoA, nullptr};
};

OSVERSIONINFOEXW verified;
DWORD verifiedFields = 0;
DWORDLONG verifiedMask = 0;

BOOL WINAPI RememberWide(LPOSVERSIONINFOEXW record, DWORD fields, DWORDLONG mask) {
    verified = *record;
    verifiedFields = fields;
    verifiedMask = mask;
    return TRUE;
}

TEST(SystemVersionTest, SystemThatCannotTellHasVersionZero) {
    const Injected version(GetKernelCalls().getVersionExA, &NoVersion);
    EXPECT_EQ(QueryMajorVersion(), 0u);
    const WithoutVerification without;
    EXPECT_FALSE(QueryIsVersionAtLeast(4, 0, 0));
    EXPECT_TRUE(QueryIsVersionAtLeast(0, 0, 0));
}

TEST(SystemVersionTest, MajorVersionIsTheSystems) {
    const Injected version(GetKernelCalls().getVersionExA, &Windows98);
    EXPECT_EQ(QueryMajorVersion(), 4u);
}

TEST(SystemVersionTest, OldSystemsCompareTheirRecord) {
    const WithoutVerification without;
    const Injected version(GetKernelCalls().getVersionExA, &Windows2000);
    EXPECT_TRUE(QueryIsVersionAtLeast(5, 0, 3));
    EXPECT_FALSE(QueryIsVersionAtLeast(5, 0, 4));
    EXPECT_FALSE(QueryIsVersionAtLeast(5, 1, 0));
    EXPECT_FALSE(QueryIsVersionAtLeast(6, 0, 0));
    EXPECT_TRUE(QueryIsVersionAtLeast(4, 10, 9));
}

TEST(SystemVersionTest, OldestSystemsHaveTheShortRecordAlone) {
    const WithoutVerification without;
    const Injected version(GetKernelCalls().getVersionExA, &Windows98);
    EXPECT_TRUE(QueryIsVersionAtLeast(4, 10, 0));
    EXPECT_FALSE(QueryIsVersionAtLeast(4, 10, 1));
    EXPECT_FALSE(QueryIsVersionAtLeast(5, 0, 0));
}

TEST(SystemVersionTest, VerificationIsAskedWithARecordOf284Bytes) {
    const Injected verify(GetKernelCalls().verifyVersionInfoW, &RememberWide);
    EXPECT_TRUE(QueryIsVersionAtLeast(6, 1, 2));
    EXPECT_EQ(verified.dwOSVersionInfoSize, 284u);
    EXPECT_EQ(verified.dwMajorVersion, 6u);
    EXPECT_EQ(verified.dwMinorVersion, 1u);
    EXPECT_EQ(verified.wServicePackMajor, 2u);
    EXPECT_EQ(verifiedFields, DWORD{VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR});
    EXPECT_NE(verifiedMask, 0u);
}

TEST(SystemVersionTest, BothFormsOfVerificationAgreeWithTheSystem) {
    for (const bool hasWide : {true, false}) {
        const Injected verify(GetKernelCalls().verifyVersionInfoW,
                              hasWide ? GetKernelCalls().verifyVersionInfoW : nullptr);
        EXPECT_TRUE(QueryIsVersionAtLeast(5, 0, 0)) << hasWide;
        EXPECT_TRUE(QueryIsVersionAtLeast(6, 0, 0)) << hasWide;
        EXPECT_FALSE(QueryIsVersionAtLeast(200, 0, 0)) << hasWide;
    }
}

TEST(SystemVersionTest, WithoutConditionMasksTheRecordIsCompared) {
    const Injected<decltype(KernelCalls::verSetConditionMask)> mask(GetKernelCalls().verSetConditionMask, nullptr);
    const Injected version(GetKernelCalls().getVersionExA, &Windows2000);
    EXPECT_TRUE(QueryIsVersionAtLeast(5, 0, 0));
    EXPECT_FALSE(QueryIsVersionAtLeast(6, 0, 0));
}

} // namespace
