#include "foundation/platform/SpecialFolders.h"

#include "foundation/Version.h"
#include "foundation/platform/win32/SystemCalls.h"
#include "tests/foundation/win32/Injected.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace Quorvex;
using namespace Quorvex::Platform;
using Quorvex::Test::Injected;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

/// The numbers that the calls below were asked for.
std::vector<int> asked;

HRESULT WINAPI FolderPathA(HWND, int number, HANDLE, DWORD, LPSTR path) {
    asked.push_back(number);
    lstrcpyA(path, "N:\\by folder path A");
    return S_OK;
}

HRESULT WINAPI FolderPathW(HWND, int number, HANDLE, DWORD, LPWSTR path) {
    asked.push_back(number);
    lstrcpyW(path, L"N:\\by folder path W");
    return S_OK;
}

HRESULT WINAPI NoFolderPathA(HWND, int, HANDLE, DWORD, LPSTR) {
    return E_FAIL;
}

HRESULT WINAPI NoFolderPathW(HWND, int, HANDLE, DWORD, LPWSTR) {
    return E_FAIL;
}

BOOL WINAPI SpecialFolderPathA(HWND, LPSTR path, int number, BOOL) {
    asked.push_back(number);
    lstrcpyA(path, "N:\\by special folder path A");
    return TRUE;
}

BOOL WINAPI SpecialFolderPathW(HWND, LPWSTR path, int number, BOOL) {
    asked.push_back(number);
    lstrcpyW(path, L"N:\\by special folder path W");
    return TRUE;
}

BOOL WINAPI NoSpecialFolderPathA(HWND, LPSTR, int, BOOL) {
    SetLastError(5);
    return FALSE;
}

BOOL WINAPI NoSpecialFolderPathW(HWND, LPWSTR, int, BOOL) {
    SetLastError(5);
    return FALSE;
}

HRESULT WINAPI Location(HWND, int number, LPITEMIDLIST* item) {
    asked.push_back(number);
    *item = static_cast<LPITEMIDLIST>(CoTaskMemAlloc(sizeof(ITEMIDLIST)));
    return S_OK;
}

HRESULT WINAPI NoLocation(HWND, int, LPITEMIDLIST*) {
    return E_FAIL;
}

BOOL WINAPI PathFromItemA(LPCITEMIDLIST, LPSTR path) {
    lstrcpyA(path, "N:\\by location A");
    return TRUE;
}

BOOL WINAPI PathFromItemW(LPCITEMIDLIST, LPWSTR path) {
    lstrcpyW(path, L"N:\\by location W");
    return TRUE;
}

BOOL WINAPI NoPathFromItemA(LPCITEMIDLIST, LPSTR) {
    SetLastError(6);
    return FALSE;
}

BOOL WINAPI NoPathFromItemW(LPCITEMIDLIST, LPWSTR) {
    SetLastError(6);
    return FALSE;
}

/// A shell whose calls are the ones above, or fail, or are missing.
class SpecialFoldersTest : public testing::TestWithParam<bool> {
protected:
    SpecialFoldersTest() { asked.clear(); }

    void LackFolderPath() { m_shell.shGetFolderPathA = nullptr, m_shell.shGetFolderPathW = nullptr; }
    void LackSpecialFolderPath() {
        m_shell.shGetSpecialFolderPathA = nullptr;
        m_shell.shGetSpecialFolderPathW = nullptr;
    }
    void LackLocation() { m_shell.shGetSpecialFolderLocation = nullptr; }

    bool IsWide() const { return GetParam(); }
    /// The text ends in A or W by the form of the system.
    std::string Formed(const std::string& text) const { return text + (IsWide() ? "W" : "A"); }
    std::string Found(SpecialFolder folder = SpecialFolder::LocalData) const {
        const String path = GetSpecialFolder(folder);
        EXPECT_EQ(path.encoding(), IsWide() ? Encoding::Utf16 : Encoding::Windows1252);
        return path.ToANSI().ToStdString();
    }
    bool HasReported(const std::string& text) const { return m_log.HasLineEndingIn(": " + text); }

    LogCapture m_log;
    ScopedSystemVersion m_version{{GetParam() ? 5u : 4u, 10, 0}};
    ShellCalls& m_shell = GetShellCalls();
    Injected<decltype(ShellCalls::shGetFolderPathA)> m_folderA{m_shell.shGetFolderPathA, &FolderPathA};
    Injected<decltype(ShellCalls::shGetFolderPathW)> m_folderW{m_shell.shGetFolderPathW, &FolderPathW};
    Injected<decltype(ShellCalls::shGetSpecialFolderPathA)> m_specialA{m_shell.shGetSpecialFolderPathA,
                                                                       &SpecialFolderPathA};
    Injected<decltype(ShellCalls::shGetSpecialFolderPathW)> m_specialW{m_shell.shGetSpecialFolderPathW,
                                                                       &SpecialFolderPathW};
    Injected<decltype(ShellCalls::shGetSpecialFolderLocation)> m_location{m_shell.shGetSpecialFolderLocation,
                                                                          &Location};
    Injected<decltype(ShellCalls::shGetPathFromIDListA)> m_itemA{m_shell.shGetPathFromIDListA, &PathFromItemA};
    Injected<decltype(ShellCalls::shGetPathFromIDListW)> m_itemW{m_shell.shGetPathFromIDListW, &PathFromItemW};
};

INSTANTIATE_TEST_SUITE_P(Forms, SpecialFoldersTest, testing::Bool(),
                         [](const auto& form) { return form.param ? "Wide" : "Narrow"; });

TEST_P(SpecialFoldersTest, FolderPathIsAskedFirst) {
    EXPECT_EQ(Found(), Formed("N:\\by folder path "));
    Found(SpecialFolder::Desktop);
    Found(SpecialFolder::RoamingData);
    EXPECT_EQ(asked, (std::vector<int>{0x1C, 0, 0x1A}));
    EXPECT_TRUE(m_log.IsEmpty());
}

TEST_P(SpecialFoldersTest, SpecialFolderPathIsAskedWhereTheFirstIsMissing) {
    LackFolderPath();
    EXPECT_EQ(Found(), Formed("N:\\by special folder path "));
    EXPECT_TRUE(m_log.IsEmpty());
}

TEST_P(SpecialFoldersTest, FailureOfTheFirstIsReportedWithItsCode) {
    m_shell.shGetFolderPathA = &NoFolderPathA;
    m_shell.shGetFolderPathW = &NoFolderPathW;
    EXPECT_EQ(Found(), Formed("N:\\by special folder path "));
    EXPECT_TRUE(HasReported(Formed("SHGetFolderPath") + " failed with error code 2147500037")) << m_log.Text();
}

TEST_P(SpecialFoldersTest, LocationIsAskedThird) {
    LackFolderPath();
    LackSpecialFolderPath();
    EXPECT_EQ(Found(), Formed("N:\\by location "));
    EXPECT_TRUE(m_log.IsEmpty());
}

TEST_P(SpecialFoldersTest, FailureOfTheSecondIsReported) {
    LackFolderPath();
    m_shell.shGetSpecialFolderPathA = &NoSpecialFolderPathA;
    m_shell.shGetSpecialFolderPathW = &NoSpecialFolderPathW;
    EXPECT_EQ(Found(), Formed("N:\\by location "));
    EXPECT_TRUE(HasReported(Formed("SHGetSpecialFolderPath") + " failed with error code 5")) << m_log.Text();
}

TEST_P(SpecialFoldersTest, RegistryIsAskedLast) {
    const std::string byTheSystem = [] {
        wchar_t path[MAX_PATH] = {};
        SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, 0, path);
        return String(reinterpret_cast<const char16_t*>(path)).ToANSI().ToStdString();
    }();
    LackFolderPath();
    LackSpecialFolderPath();
    LackLocation();
    EXPECT_EQ(Found(), byTheSystem);
    EXPECT_FALSE(Found(SpecialFolder::Desktop).empty());
    EXPECT_FALSE(Found(SpecialFolder::RoamingData).empty());
    EXPECT_TRUE(m_log.IsEmpty());
}

TEST_P(SpecialFoldersTest, FailureOfTheLocationIsReported) {
    LackFolderPath();
    LackSpecialFolderPath();
    m_shell.shGetSpecialFolderLocation = &NoLocation;
    EXPECT_FALSE(Found().empty());
    EXPECT_TRUE(HasReported("SHGetSpecialFolderLocation failed with error code 2147500037")) << m_log.Text();
}

TEST_P(SpecialFoldersTest, FailureOfThePathOfALocationIsReported) {
    LackFolderPath();
    LackSpecialFolderPath();
    m_shell.shGetPathFromIDListA = &NoPathFromItemA;
    m_shell.shGetPathFromIDListW = &NoPathFromItemW;
    EXPECT_FALSE(Found().empty());
    EXPECT_TRUE(HasReported(Formed("SHGetPathFromIDList") + " failed with error code 6")) << m_log.Text();
}

TEST_P(SpecialFoldersTest, FolderThatNothingKnowsIsReportedAndRaises) {
    LackFolderPath();
    LackSpecialFolderPath();
    LackLocation();
    const std::string raised = RaisedText([] { GetSpecialFolder(static_cast<SpecialFolder>(0x7F)); });
    EXPECT_TRUE(raised.starts_with("GetSpecialFolder failed, error code ")) << raised;
    EXPECT_NE(m_log.Text().find(": GetSpecialFolder failed with error code "), std::string::npos);
}

TEST_P(SpecialFoldersTest, ModulePathIsTheRunningProgram) {
    const String path = GetModulePath();
    EXPECT_EQ(path.encoding(), IsWide() ? Encoding::Utf16 : Encoding::Windows1252);
    EXPECT_TRUE(path.ToANSI().ToStdString().ends_with("\\foundation_tests.exe")) << path.ToANSI().Narrow();
}

} // namespace
