#include "foundation/platform/DynamicLibrary.h"
#include "foundation/Version.h"
#include "foundation/platform/Files.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace Quorvex;
using namespace Quorvex::Platform;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

/// What happens on a system without wide calls, and the same on one with them.
class DynamicLibraryTest : public testing::TestWithParam<bool> {
protected:
    ScopedSystemVersion m_version{{GetParam() ? 5u : 4u, 10, 0}};
    LogCapture m_log;
};

INSTANTIATE_TEST_SUITE_P(Forms, DynamicLibraryTest, testing::Bool(),
                         [](const auto& form) { return form.param ? "Wide" : "Narrow"; });

String SystemPath(const char* name) {
    char folder[MAX_PATH] = {};
    EXPECT_NE(GetSystemDirectoryA(folder, MAX_PATH), 0u);
    return JoinPath(folder, name);
}

std::string Failed(DWORD code) {
    return "LoadLibraryEx failed, error code " + std::to_string(code);
}

} // namespace

TEST_P(DynamicLibraryTest, FindsWhatALibraryHas) {
    const DynamicLibrary library(SystemPath("kernel32.dll"));
    const FARPROC wanted = GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetLastError");
    EXPECT_EQ(library.Find("GetLastError"), reinterpret_cast<DynamicLibrary::Function>(wanted));
    EXPECT_EQ(library.Find("NoSuchFunction"), nullptr);
}

TEST_P(DynamicLibraryTest, FailuresAreRaisedWithTheirCode) {
    m_log.Folder().Write("text.dll", "This is no library.");
    const UINT mode = SetErrorMode(0);
    EXPECT_EQ(RaisedText([&] { DynamicLibrary library(m_log.Folder().PathOf("text.dll")); }),
              Failed(ERROR_BAD_EXE_FORMAT));
    EXPECT_EQ(RaisedText([&] { DynamicLibrary library(m_log.Folder().PathOf("missing.dll")); }),
              Failed(ERROR_MOD_NOT_FOUND));
    EXPECT_EQ(SetErrorMode(mode), 0u);
    EXPECT_TRUE(m_log.IsEmpty()) << m_log.Text();
}

TEST_P(DynamicLibraryTest, PathsThatAreNotFullAreRefused) {
    for (const char* path : {"", "a", "kernel32.dll", ".\\kernel32.dll", "C:kernel32.dll", "\\kernel32.dll"})
        EXPECT_EQ(RaisedText([&] { DynamicLibrary library{String(path)}; }), Failed(ERROR_BAD_PATHNAME)) << path;
}

TEST_P(DynamicLibraryTest, SuffixIsTheSystems) {
    EXPECT_STREQ(DynamicLibrary::GetFileSuffix(), ".dll");
}
