#include "foundation/platform/Time.h"

#include <windows.h>

namespace Quorvex::Platform {

namespace {

std::int64_t UnitsOf(const FILETIME& time) {
    return static_cast<std::int64_t>(static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
}

} // namespace

// The difference to UTC is the one of this moment: the local form of the present time carries summer time in it.
std::optional<ClockTime> GetClockTime() {
    FILETIME utc{};
    FILETIME local{};
    SYSTEMTIME fields{};
    GetSystemTimeAsFileTime(&utc);
    if (!FileTimeToLocalFileTime(&utc, &local) || !FileTimeToSystemTime(&local, &fields))
        return std::nullopt;
    constexpr std::int64_t unitsPerMinute = 600'000'000;
    ClockTime time;
    time.year = fields.wYear;
    time.month = fields.wMonth;
    time.day = fields.wDay;
    time.hour = fields.wHour;
    time.minute = fields.wMinute;
    time.second = fields.wSecond;
    time.minutesAheadOfUtc = static_cast<std::int32_t>((UnitsOf(local) - UnitsOf(utc)) / unitsPerMinute);
    return time;
}

std::uint64_t GetMonotonicNanoseconds() {
    LARGE_INTEGER frequency{};
    LARGE_INTEGER ticks{};
    // Systems before Windows XP may run on hardware without the counter; their clock ticks every 10 to 55 ms.
    if (!QueryPerformanceFrequency(&frequency) || frequency.QuadPart == 0)
        return std::uint64_t{GetTickCount()} * 1'000'000;
    QueryPerformanceCounter(&ticks);
    // In two steps, so that a long uptime does not overflow the product.
    constexpr std::uint64_t nanosecondsPerSecond = 1'000'000'000;
    const auto perSecond = static_cast<std::uint64_t>(frequency.QuadPart);
    const auto count = static_cast<std::uint64_t>(ticks.QuadPart);
    return count / perSecond * nanosecondsPerSecond + count % perSecond * nanosecondsPerSecond / perSecond;
}

} // namespace Quorvex::Platform
