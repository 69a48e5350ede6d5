#include "foundation/platform/Time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace Quorvex::Platform;

namespace {

TEST(TimeTest, ClockTimeLessItsDifferenceIsUtc) {
    using namespace std::chrono;
    // A clock of the system may tick only every 16 ms.
    const auto before = floor<seconds>(system_clock::now() - milliseconds(16));
    const auto time = GetClockTime();
    const auto after = floor<seconds>(system_clock::now());
    ASSERT_TRUE(time.has_value());
    const sys_days date = year(static_cast<int>(time->year)) / month(time->month) / day(time->day);
    const auto utc =
        date + hours(time->hour) + minutes(time->minute) + seconds(time->second) - minutes(time->minutesAheadOfUtc);
    EXPECT_GE(utc, before);
    EXPECT_LE(utc, after);
}

TEST(TimeTest, MonotonicTimeCountsNanoseconds) {
    const auto start = std::chrono::steady_clock::now();
    const std::uint64_t before = GetMonotonicNanoseconds();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    const std::uint64_t after = GetMonotonicNanoseconds();
    const std::chrono::duration<double, std::nano> whole = std::chrono::steady_clock::now() - start;
    // The sleep lies within the measured span, and that within the other clock's. A clock of the system may tick only
    // every 16 ms.
    EXPECT_GE(after - before, 4'000'000u);
    EXPECT_LE(static_cast<double>(after - before), whole.count() + 16e6);
}

} // namespace
