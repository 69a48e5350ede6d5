#include "foundation/Log.h"
#include "foundation/Report.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <exception>

using namespace Quorvex;
using Quorvex::Test::LogCapture;

namespace {

void Notify() {
    std::fputs("the user was notified", stderr);
}

/// A notifier that fails like everything else at such a moment.
void FailToNotify() {
    throw 0;
}

class EndOfRunDeathTest : public testing::Test {
protected:
    // The process that ends has a record of its own, so nothing reaches the user's log.
    LogCapture m_log;
};

TEST_F(EndOfRunDeathTest, RegularExitAfterAReportNotifies) {
    EXPECT_EXIT(
        {
            SetNotifier(&Notify);
            ReportProblem(1, "x");
            std::exit(7);
        },
        testing::ExitedWithCode(7), "the user was notified");
}

TEST_F(EndOfRunDeathTest, RegularExitWithoutAReportIsSilent) {
    EXPECT_EXIT(
        {
            SetNotifier(&Notify);
            WriteLogLine(1, "x");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST_F(EndOfRunDeathTest, TerminateNotifiesAndEndsTheProcess) {
    EXPECT_EXIT(
        {
            SetNotifier(&Notify);
            ReportProblem(1, "x");
            std::terminate();
        },
        testing::ExitedWithCode(3), "the user was notified");
}

TEST_F(EndOfRunDeathTest, FailingNotifierDoesNotKeepTheProcessAlive) {
    EXPECT_EXIT(
        {
            SetNotifier(&FailToNotify);
            ReportProblem(1, "x");
            std::terminate();
        },
        testing::ExitedWithCode(3), "");
}

} // namespace
