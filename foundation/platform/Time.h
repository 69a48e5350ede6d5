#pragma once

#include <cstdint>
#include <optional>

namespace Quorvex::Platform {

/// A moment on the clock of the user's time zone.
struct ClockTime {
    std::uint32_t year = 0;
    std::uint32_t month = 0;  ///< 1 to 12
    std::uint32_t day = 0;    ///< 1 to 31
    std::uint32_t hour = 0;   ///< 0 to 23
    std::uint32_t minute = 0; ///< 0 to 59
    std::uint32_t second = 0; ///< 0 to 60
    std::int32_t minutesAheadOfUtc = 0;
};

/// Empty where the system cannot tell.
std::optional<ClockTime> GetClockTime();

/// Nanoseconds since some fixed moment; never runs backwards. For the measurement of durations.
std::uint64_t GetMonotonicNanoseconds();

} // namespace Quorvex::Platform
