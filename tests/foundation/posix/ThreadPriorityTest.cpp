#include "foundation/Thread.h"

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

using namespace Quorvex::PAL::Threading;

namespace {

/// A thread that goes to idle by itself and waits for its end; it tells its policies on the way.
struct Prefetch {
    std::atomic<int> idlePolicy = -1;
    std::atomic<bool> mayEnd = false;
    std::atomic<int> lastPolicy = -1;

    static void Run(void* argument) {
        auto* self = static_cast<Prefetch*>(argument);
        SetCurrentThreadPriority(ThreadPriority::Idle);
        self->idlePolicy = sched_getscheduler(0);
        while (!self->mayEnd)
            std::this_thread::yield();
        self->lastPolicy = sched_getscheduler(0);
    }
};

/// Runs a prefetch that the user comes to wait for.
void Promote(Prefetch& prefetch) {
    Thread thread;
    thread.Run(&Prefetch::Run, &prefetch);
    while (prefetch.idlePolicy < 0)
        std::this_thread::yield();
    thread.SetPriority(ThreadPriority::Normal);
    prefetch.mayEnd = true;
    thread.Wait();
}

TEST(ThreadPriorityTest, IdleThreadIsPromotedToNormal) {
    Prefetch prefetch;
    Promote(prefetch);
    EXPECT_TRUE(prefetch.idlePolicy == SCHED_IDLE || prefetch.idlePolicy == SCHED_BATCH) << prefetch.idlePolicy;
    EXPECT_EQ(prefetch.lastPolicy, SCHED_OTHER);
    EXPECT_EQ(sched_getscheduler(0), SCHED_OTHER);
}

/// Ends the process with 0 if an ordinary user, whose limits let no thread leave SCHED_IDLE, is promoted.
[[noreturn]] void PromoteAsOrdinaryUser() {
    const rlimit none{0, 0};
    constexpr uid_t nobody = 65534;
    const bool isOrdinaryUser = setrlimit(RLIMIT_NICE, &none) == 0 && (geteuid() != 0 || setuid(nobody) == 0);
    Prefetch prefetch;
    Promote(prefetch);
    const bool isPromoted = prefetch.idlePolicy == SCHED_BATCH && prefetch.lastPolicy == SCHED_OTHER;
    std::_Exit(isOrdinaryUser && isPromoted ? 0 : 1);
}

TEST(ThreadPriorityDeathTest, OrdinaryUserIsPromotedToo) {
    // A new process has not asked yet what its user may do.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(PromoteAsOrdinaryUser(), testing::ExitedWithCode(0), "");
}

} // namespace
