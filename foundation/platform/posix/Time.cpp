#include "foundation/platform/Time.h"

#include <ctime>

namespace Quorvex::Platform {

std::optional<ClockTime> GetClockTime() {
    // time() answers from a clock that ticks with the scheduler and may still show the second before.
    timespec now{};
    std::tm local{};
    if (clock_gettime(CLOCK_REALTIME, &now) != 0 || localtime_r(&now.tv_sec, &local) == nullptr)
        return std::nullopt;
    ClockTime time;
    time.year = static_cast<std::uint32_t>(local.tm_year + 1900);
    time.month = static_cast<std::uint32_t>(local.tm_mon + 1);
    time.day = static_cast<std::uint32_t>(local.tm_mday);
    time.hour = static_cast<std::uint32_t>(local.tm_hour);
    time.minute = static_cast<std::uint32_t>(local.tm_min);
    time.second = static_cast<std::uint32_t>(local.tm_sec);
    // Difference of this moment, with summer time in it.
    time.minutesAheadOfUtc = static_cast<std::int32_t>(local.tm_gmtoff / 60);
    return time;
}

std::uint64_t GetMonotonicNanoseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000 + static_cast<std::uint64_t>(now.tv_nsec);
}

} // namespace Quorvex::Platform
