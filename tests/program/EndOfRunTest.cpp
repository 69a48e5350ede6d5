#include "app/Entry.h"
#include "foundation/Report.h"
#include "tests/support/LogCapture.h"
#include "tests/support/ScopedLanguage.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

using namespace Quorvex;
using namespace Quorvex::App;
using Quorvex::Test::LogCapture;
using Quorvex::Test::ScopedLanguage;

// What a user sees of the program's own failures when it ends.

namespace {

void Print(const String& title, const String& text) {
    std::fprintf(stderr, "[%d %s] %s", title.encoding(), title.ToANSI().Narrow(), text.ToANSI().Narrow());
}

std::unique_ptr<GUI::IWindowSystem> FindNoDisplay() {
    throw Exception("no display");
}

std::optional<String> NoPath() {
    return std::nullopt;
}

class ProgramEndDeathTest : public testing::Test {
protected:
    /// Starts the program, which ends at once, and ends the process; the message boxes go to its standard error.
    [[noreturn]] static void RunAndExit(bool isReporting) {
        Platform::SetMessageBoxPresenter(&Print);
        const int code = RunVarnolite(&FindNoDisplay, &NoPath);
        if (isReporting)
            ReportProblem(1, "x");
        std::exit(code);
    }

    LogCapture m_log;
};

} // namespace

TEST_F(ProgramEndDeathTest, AfterAReportShowsItsTextUnderTheWideNameOfTheProgram) {
    const ScopedLanguage english(Locale::EnumLanguage::English);
    EXPECT_EXIT(RunAndExit(true), testing::ExitedWithCode(1),
                ".1260 Varnolite. While running Varnolite potential problems were detected");
}

TEST_F(ProgramEndDeathTest, SpeaksGermanToAGerman) {
    const ScopedLanguage german(Locale::EnumLanguage::German);
    EXPECT_EXIT(RunAndExit(true), testing::ExitedWithCode(1), "von Varnolite wurden m");
}

TEST_F(ProgramEndDeathTest, WithoutADisplaySaysSoAndNothingElse) {
    EXPECT_EXIT(RunAndExit(false), testing::ExitedWithCode(1), "^.1252 Varnolite. no display$");
}
