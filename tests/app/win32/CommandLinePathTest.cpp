#include "app/win32/CommandLinePath.h"

#include "foundation/Version.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <string>

using namespace Quorvex;
using namespace Quorvex::App;
using Quorvex::Test::LogCapture;

namespace {

wchar_t wideLine[] = L"\"C:\\my v.exe\" \"Gr\u00FC\u00DFe \u20AC.bmp\" other.bmp";
char narrowLine[] = "\"C:\\my v.exe\" \"Gr\xFC\xDF"
                    "e \x80.bmp\" other.bmp";
constexpr const char* narrowPath = "Gr\xFC\xDF"
                                   "e \x80.bmp";

LPWSTR WINAPI WideLine() {
    return wideLine;
}

LPSTR WINAPI NarrowLine() {
    return narrowLine;
}

LPWSTR WINAPI WideNameAlone() {
    static wchar_t line[] = L"v.exe";
    return line;
}

LPSTR WINAPI NarrowNameAlone() {
    static char line[] = "v.exe ";
    return line;
}

LPWSTR* WINAPI NoWideArguments(LPCWSTR, int*) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

LPSTR* NoNarrowArguments(LPCSTR, int*) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

HLOCAL WINAPI FailAfterFreeing(HLOCAL block) {
    LocalFree(block);
    SetLastError(ERROR_INVALID_HANDLE);
    return block;
}

/// The command line above on a system with or without wide calls.
class CommandLinePathTest : public testing::TestWithParam<bool> {
protected:
    CommandLinePathTest() {
        calls.getCommandLineW = &WideLine;
        calls.getCommandLineA = &NarrowLine;
    }

    bool IsWide() const { return GetParam(); }
    std::string Formed(const std::string& text) const { return text + (IsWide() ? "W" : "A"); }

    CommandLineCalls calls;
    ScopedSystemVersion version{{GetParam() ? 5u : 4u, 10, 0}};
    LogCapture log;
};

INSTANTIATE_TEST_SUITE_P(Forms, CommandLinePathTest, testing::Bool(),
                         [](const auto& form) { return form.param ? "Wide" : "Narrow"; });

} // namespace

TEST_P(CommandLinePathTest, IsTheFirstArgumentInTheFormOfTheSystem) {
    const auto path = PathFromCommandLine(calls);
    ASSERT_TRUE(path);
    EXPECT_EQ(path->encoding(), IsWide() ? Encoding::Utf16 : Encoding::Windows1252);
    EXPECT_EQ(path->ToANSI(), narrowPath);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_P(CommandLinePathTest, IsNoneWithoutAnArgument) {
    calls.getCommandLineW = &WideNameAlone;
    calls.getCommandLineA = &NarrowNameAlone;
    EXPECT_FALSE(PathFromCommandLine(calls));
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_P(CommandLinePathTest, IsNoneWhereTheLineCannotBeSplitAndThatIsReported) {
    calls.commandLineToArgvW = &NoWideArguments;
    calls.commandLineToArgvA = &NoNarrowArguments;
    EXPECT_FALSE(PathFromCommandLine(calls));
    EXPECT_TRUE(log.HasLineEndingIn(": " + Formed("CommandLineToArgv") + " failed with error code 8")) << log.Text();
}

TEST_P(CommandLinePathTest, StandsWhereTheArgumentsCannotBeFreedAndThatIsReported) {
    calls.localFree = &FailAfterFreeing;
    const auto path = PathFromCommandLine(calls);
    ASSERT_TRUE(path);
    EXPECT_EQ(path->ToANSI(), narrowPath);
    EXPECT_TRUE(log.HasLineEndingIn(": LocalFree failed with error code 6")) << log.Text();
}

TEST(CommandLineToArgvA, GivesOneBlockThatLocalFreeTakesBack) {
    int count = 0;
    LPSTR* const arguments = CommandLineToArgvA("v.exe \"a b\" c", &count);
    ASSERT_NE(arguments, nullptr);
    ASSERT_EQ(count, 3);
    EXPECT_STREQ(arguments[0], "v.exe");
    EXPECT_STREQ(arguments[1], "a b");
    EXPECT_STREQ(arguments[2], "c");
    const auto* const block = reinterpret_cast<const char*>(arguments);
    for (int i = 0; i < count; ++i) {
        EXPECT_GE(arguments[i], block + 3 * sizeof(LPSTR)) << i;
        EXPECT_LT(arguments[i], block + LocalSize(arguments)) << i;
    }
    EXPECT_EQ(LocalFree(arguments), nullptr);
}
