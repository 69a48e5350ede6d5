#include "foundation/Thread.h"

#include "foundation/platform/Threads.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>

using namespace Quorvex;
using namespace Quorvex::PAL::Threading;
using Quorvex::Test::LogCapture;

namespace {

struct Prefetch {
    std::atomic<int> idlePriority = 0;
    std::atomic<bool> mayEnd = false;
    std::atomic<int> lastPriority = 1000;

    static void Run(void* argument) {
        auto* self = static_cast<Prefetch*>(argument);
        SetCurrentThreadPriority(ThreadPriority::Idle);
        self->idlePriority = GetThreadPriority(GetCurrentThread());
        while (!self->mayEnd)
            Sleep(1);
        self->lastPriority = GetThreadPriority(GetCurrentThread());
    }
};

TEST(ThreadPriorityTest, IdleIsMinusFifteenAndNormalIsZero) {
    const LogCapture log;
    Prefetch prefetch;
    Thread thread;
    thread.Run(&Prefetch::Run, &prefetch);
    while (prefetch.idlePriority == 0)
        Sleep(1);
    thread.SetPriority(ThreadPriority::Normal);
    prefetch.mayEnd = true;
    thread.Wait();
    EXPECT_EQ(prefetch.idlePriority, -15);
    EXPECT_EQ(prefetch.lastPriority, 0);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST(ThreadPriorityTest, FailureIsReported) {
    const LogCapture log;
    Platform::SetThreadPriority(static_cast<Platform::ThreadHandle>(0x7FFC), ThreadPriority::Idle);
    EXPECT_TRUE(log.HasLineEndingIn(": SetThreadPriority failed with error code 6")) << log.Text();
}

} // namespace
