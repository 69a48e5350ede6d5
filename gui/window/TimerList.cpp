#include "gui/window/TimerList.h"

#include <algorithm>

namespace Quorvex::GUI {

namespace {

constexpr std::uint64_t shortestPeriod = 10;

} // namespace

void TimerList::Set(std::uintptr_t identifier, std::uint32_t milliseconds, std::uint64_t now) {
    Kill(identifier);
    const auto period = std::max<std::uint64_t>(milliseconds, shortestPeriod);
    m_timers.push_back({identifier, period, now + period});
}

void TimerList::Kill(std::uintptr_t identifier) {
    std::erase_if(m_timers, [&](const Timer& timer) { return timer.identifier == identifier; });
}

std::optional<std::uint64_t> TimerList::GetNextDue() const {
    const auto next = std::ranges::min_element(m_timers, {}, &Timer::due);
    if (next == m_timers.end())
        return std::nullopt;
    return next->due;
}

std::optional<std::uintptr_t> TimerList::TakeDue(std::uint64_t now) {
    const auto next = std::ranges::min_element(m_timers, {}, &Timer::due);
    if (next == m_timers.end() || next->due > now)
        return std::nullopt;
    next->due = now + next->period;
    return next->identifier;
}

} // namespace Quorvex::GUI
