#include "foundation/platform/win32/ModulePath.h"

#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace Quorvex;
using Quorvex::Platform::ModulePathUnits;
using Quorvex::Test::RaisedText;

namespace {

DWORD WINAPI NoPath(HMODULE, wchar_t*, DWORD) {
    SetLastError(126);
    return 0;
}

DWORD WINAPI CutPath(HMODULE, char* path, DWORD size) {
    SetLastError(122);
    std::fill_n(path, size, 'x');
    return size;
}

DWORD WINAPI LongestPath(HMODULE, char* path, DWORD size) {
    std::fill_n(path, size - 1, 'x');
    return size - 1;
}

TEST(ModulePathTest, FailureRaisesWithTheName) {
    EXPECT_EQ(RaisedText([] { ModulePathUnits<wchar_t>(&NoPath, "GetModuleFileNameW"); }),
              "GetModuleFileNameW failed, error code 126");
}

TEST(ModulePathTest, FullBufferRaisesWithTheName) {
    EXPECT_EQ(RaisedText([] { ModulePathUnits<char>(&CutPath, "GetModuleFileNameA"); }),
              "GetModuleFileNameA failed, error code 122");
}

TEST(ModulePathTest, LongestPathOfTheSystemFits) {
    const auto path = ModulePathUnits<char>(&LongestPath, "GetModuleFileNameA");
    EXPECT_EQ(std::string(path.data()).size(), 32767u);
}

} // namespace
