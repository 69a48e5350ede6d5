#include "foundation/platform/Threads.h"

#include <pthread.h>
#include <sched.h>

#include <cerrno>
#include <memory>
#include <new>

namespace Quorvex::Platform {

namespace {

struct Started {
    pthread_t thread{};
    bool isJoined = false;
};

/// What the new thread takes over from the one that started it.
struct Errand {
    void (*procedure)(void*);
    void* argument;
};

void* RunErrand(void* errand) {
    const std::unique_ptr<Errand> owned(static_cast<Errand*>(errand));
    owned->procedure(owned->argument);
    return nullptr;
}

ThreadHandle Start(void (*procedure)(void*), void* argument) {
    // Memory that runs out here is a thread that could not be started, like any other reason.
    std::unique_ptr<Started> started(new (std::nothrow) Started);
    std::unique_ptr<Errand> errand(new (std::nothrow) Errand{procedure, argument});
    const int code = started && errand ? pthread_create(&started->thread, nullptr, &RunErrand, errand.get()) : ENOMEM;
    if (code != 0) {
        errno = code;
        return ThreadHandle::None;
    }
    // The thread owns it now.
    static_cast<void>(errand.release());
    return static_cast<ThreadHandle>(reinterpret_cast<std::uintptr_t>(started.release()));
}

Started* StartedOf(ThreadHandle thread) {
    return reinterpret_cast<Started*>(static_cast<std::uintptr_t>(thread));
}

std::uint32_t Wait(ThreadHandle thread) {
    Started* started = StartedOf(thread);
    // A thread can be joined once, but its object may be waited for again.
    if (started->isJoined)
        return WaitResult::Finished;
    const int code = pthread_join(started->thread, nullptr);
    if (code != 0) {
        errno = code;
        return WaitResult::Failed;
    }
    started->isJoined = true;
    return WaitResult::Finished;
}

bool Close(ThreadHandle thread) {
    // The thread, should it still run, does not need this record.
    const std::unique_ptr<Started> started(StartedOf(thread));
    const int code = started->isJoined ? 0 : pthread_detach(started->thread);
    errno = code;
    return code == 0;
}

bool SetPolicy(pthread_t thread, int policy) {
    const sched_param parameters{};
    return pthread_setschedparam(thread, policy, &parameters) == 0;
}

void* TryIdleAndBack(void* isReversible) {
    *static_cast<bool*>(isReversible) = SetPolicy(pthread_self(), SCHED_IDLE) && SetPolicy(pthread_self(), SCHED_OTHER);
    return nullptr;
}

/// An ordinary user may enter SCHED_IDLE but, where RLIMIT_NICE forbids it, not leave it again (sched(7)); a load that
/// the user has come to wait for would then starve on a busy machine. A thread of its own finds out. SCHED_BATCH,
/// which keeps a thread from interrupting others when it wakes, is always open in both directions.
int IdlePolicy() {
    static const int policy = [] {
        bool isReversible = false;
        pthread_t probe{};
        if (pthread_create(&probe, nullptr, &TryIdleAndBack, &isReversible) == 0)
            pthread_join(probe, nullptr);
        return isReversible ? SCHED_IDLE : SCHED_BATCH;
    }();
    return policy;
}

int PolicyOf(ThreadPriority priority) {
    return priority == ThreadPriority::Idle ? IdlePolicy() : SCHED_OTHER;
}

} // namespace

ThreadCalls& GetThreadCalls() {
    static ThreadCalls calls{&Start, &Wait, &Close};
    return calls;
}

void SetThreadPriority(ThreadHandle thread, ThreadPriority priority) noexcept {
    const Started* started = StartedOf(thread);
    // The number of a joined thread may belong to another one by now.
    if (!started->isJoined)
        SetPolicy(started->thread, PolicyOf(priority));
}

void SetCurrentThreadPriority(ThreadPriority priority) noexcept {
    SetPolicy(pthread_self(), PolicyOf(priority));
}

} // namespace Quorvex::Platform
