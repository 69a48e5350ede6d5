#pragma once

#include <cstdint>

/// The calls of the system that a thread object stands on.
namespace Quorvex::Platform {

/// A thread that was started; it stays valid after the thread has ended, until it is closed.
enum class ThreadHandle : std::uintptr_t { None = 0 };

/// The numbers of the two priorities in use.
enum class ThreadPriority : std::int32_t { Normal = 0, Idle = -15 };

/// Results of a wait: what the system answers, with the numbers of its oldest interface.
namespace WaitResult {
inline constexpr std::uint32_t Finished = 0;
inline constexpr std::uint32_t Failed = 0xFFFFFFFF;
} // namespace WaitResult

struct ThreadCalls {
    /// None where no thread could be started; the code of the failure is the last error then.
    ThreadHandle (*start)(void (*procedure)(void*), void* argument);
    /// Waits without time limit; may be called again after it has returned. The code of a failure is the last error.
    std::uint32_t (*wait)(ThreadHandle thread);
    /// False after a failure, whose code is the last error. Does not wait for the thread.
    bool (*close)(ThreadHandle thread);
};

/// The table in use. Tests put failing calls in; it must not change while a thread object is at work.
ThreadCalls& GetThreadCalls();

/// Best effort: a system that does not let the priority change goes on with the old one. A thread that has ended
/// already is left alone.
void SetThreadPriority(ThreadHandle thread, ThreadPriority priority) noexcept;
void SetCurrentThreadPriority(ThreadPriority priority) noexcept;

} // namespace Quorvex::Platform
