#pragma once

#include "foundation/platform/Threads.h"

#include <string>

namespace Quorvex::PAL::Threading {

using Platform::SetCurrentThreadPriority;
using Platform::ThreadPriority;

/// A thread that keeps what its procedure raised for whoever waits for it. It is started once and cannot be restarted;
/// its owner waits for it before its destruction. One thread at a time uses the object, which is not the started one.
class Thread {
public:
    using Procedure = void (*)(void* argument);

    Thread() = default;
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;
    ~Thread();

    /// Raises Exception without text, after a report, if a thread was started before or none can be started.
    void Run(Procedure procedure, void* argument);
    /// Waits without time limit; returns at once if none was started, and may be called again. A failing wait is
    /// reported and raises Exception without text; any other unexpected result raises "Wait: WaitForSingleObject".
    void Wait();
    /// After Wait: raises std::bad_alloc or Exception with the message of what the procedure raised; returns if it
    /// raised nothing.
    void RethrowThreadException() const;

    /// Also while the thread runs; best effort. Without a thread nothing happens.
    void SetPriority(ThreadPriority priority) noexcept;

private:
    static void Entry(void* thread);
    void Execute() noexcept;
    void Keep(const char* type, const char* message) noexcept;

    std::string m_exceptionType;
    std::string m_exceptionMessage;
    void* m_argument = nullptr;
    Procedure m_procedure = nullptr;
    Platform::ThreadHandle m_handle = Platform::ThreadHandle::None;
};

} // namespace Quorvex::PAL::Threading
