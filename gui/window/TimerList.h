#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace Quorvex::GUI {

/// Periodic timers of window systems that have none of their own. Times are milliseconds of any steady clock, which the
/// caller reads. One thread.
class TimerList {
public:
    /// Starts the timer, or starts it anew with another period. Periods below 10 ms count as 10 ms, so that a timer
    /// cannot keep everything else from running.
    void Set(std::uintptr_t identifier, std::uint32_t milliseconds, std::uint64_t now);
    void Kill(std::uintptr_t identifier);

    /// When the next timer is due; empty without a timer.
    std::optional<std::uint64_t> GetNextDue() const;
    /// The identifier of a timer that is due, the most overdue first; it is due again one period after now. Ticks that
    /// nobody took in time fall together.
    std::optional<std::uintptr_t> TakeDue(std::uint64_t now);

private:
    struct Timer {
        std::uintptr_t identifier;
        std::uint64_t period;
        std::uint64_t due;
    };

    std::vector<Timer> m_timers;
};

} // namespace Quorvex::GUI
