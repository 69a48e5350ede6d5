#include "gui/window/TimerList.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI {
namespace {

TEST(TimerList, IsEmptyAtFirst) {
    TimerList timers;
    EXPECT_FALSE(timers.GetNextDue());
    EXPECT_FALSE(timers.TakeDue(1'000'000));
}

TEST(TimerList, IsDueAfterItsPeriodAndAgainAfterTheNext) {
    TimerList timers;
    timers.Set(7, 100, 1000);
    EXPECT_EQ(timers.GetNextDue(), 1100u);
    EXPECT_FALSE(timers.TakeDue(1099));
    EXPECT_EQ(timers.TakeDue(1100), 7u);
    EXPECT_FALSE(timers.TakeDue(1199));
    EXPECT_EQ(timers.TakeDue(1200), 7u);
}

TEST(TimerList, MissedTicksFallTogether) {
    TimerList timers;
    timers.Set(7, 100, 0);
    EXPECT_EQ(timers.TakeDue(950), 7u);
    EXPECT_FALSE(timers.TakeDue(950));
    EXPECT_EQ(timers.GetNextDue(), 1050u);
}

TEST(TimerList, TakesTheMostOverdueFirst) {
    TimerList timers;
    timers.Set(1, 300, 0);
    timers.Set(2, 100, 0);
    timers.Set(3, 200, 0);
    EXPECT_EQ(timers.TakeDue(400), 2u);
    EXPECT_EQ(timers.TakeDue(400), 3u);
    EXPECT_EQ(timers.TakeDue(400), 1u);
    EXPECT_FALSE(timers.TakeDue(400));
}

TEST(TimerList, SettingAgainReplacesThePeriod) {
    TimerList timers;
    timers.Set(7, 100, 0);
    timers.Set(7, 500, 50);
    EXPECT_EQ(timers.GetNextDue(), 550u);
    EXPECT_EQ(timers.TakeDue(550), 7u);
    EXPECT_FALSE(timers.TakeDue(600));
}

TEST(TimerList, AKilledTimerIsNeverDue) {
    TimerList timers;
    timers.Set(7, 100, 0);
    timers.Kill(7);
    timers.Kill(8);
    EXPECT_FALSE(timers.TakeDue(1000));
}

TEST(TimerList, PeriodsHaveALowerLimit) {
    TimerList timers;
    timers.Set(7, 0, 0);
    EXPECT_EQ(timers.GetNextDue(), 10u);
}

} // namespace
} // namespace Quorvex::GUI
