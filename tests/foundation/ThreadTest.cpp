#include "foundation/Thread.h"

#include "foundation/CriticalSection.h"
#include "foundation/platform/Processes.h"
#include "foundation/platform/Processors.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <new>
#include <stdexcept>
#include <thread>

using namespace Quorvex;
using namespace Quorvex::PAL::Threading;
using Platform::ThreadHandle;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

/// Puts calls of the test into the table and the former ones back.
class InjectedCalls {
public:
    InjectedCalls() : m_former(Platform::GetThreadCalls()) {}
    InjectedCalls(const InjectedCalls&) = delete;
    InjectedCalls& operator=(const InjectedCalls&) = delete;
    ~InjectedCalls() { Platform::GetThreadCalls() = m_former; }

private:
    Platform::ThreadCalls m_former;
};

void Count(void* counter) {
    ++*static_cast<int*>(counter);
}

void RunAndWait(Thread& thread, Thread::Procedure procedure) {
    thread.Run(procedure, nullptr);
    thread.Wait();
}

TEST(ThreadTest, RunsTheProcedureWithItsArgumentOnAnotherThread) {
    std::uint32_t id = 0;
    Thread thread;
    thread.Run([](void* argument) { *static_cast<std::uint32_t*>(argument) = Platform::GetThisThreadId(); }, &id);
    thread.Wait();
    EXPECT_NE(id, 0u);
    EXPECT_NE(id, Platform::GetThisThreadId());
}

TEST(ThreadTest, WaitOnAThreadNeverStartedReturnsAtOnce) {
    Thread thread;
    EXPECT_NO_THROW(thread.Wait());
    EXPECT_NO_THROW(thread.RethrowThreadException());
}

TEST(ThreadTest, WaitMayBeCalledAgain) {
    int count = 0;
    Thread thread;
    thread.Run(&Count, &count);
    thread.Wait();
    EXPECT_NO_THROW(thread.Wait());
    EXPECT_EQ(count, 1);
}

TEST(ThreadTest, SecondRunRaisesAlsoAfterTheEnd) {
    const LogCapture log;
    int count = 0;
    Thread thread;
    thread.Run(&Count, &count);
    EXPECT_EQ(RaisedText([&] { thread.Run(&Count, &count); }), "");
    EXPECT_NE(log.Text().find(": Quorvex::PAL::Threading::Thread::Run failed with error code "), std::string::npos);
    thread.Wait();
    EXPECT_EQ(RaisedText([&] { thread.Run(&Count, &count); }), "");
    EXPECT_EQ(count, 1);
}

TEST(ThreadTest, NothingRaisedIsNothingRethrown) {
    Thread thread;
    RunAndWait(thread, [](void*) {});
    EXPECT_NO_THROW(thread.RethrowThreadException());
}

TEST(ThreadTest, BadAllocIsRethrownAsBadAlloc) {
    Thread thread;
    RunAndWait(thread, [](void*) { throw std::bad_alloc(); });
    EXPECT_THROW(thread.RethrowThreadException(), std::bad_alloc);
    EXPECT_THROW(thread.RethrowThreadException(), std::bad_alloc);
}

TEST(ThreadTest, ClassesDerivedFromBadAllocCountAsBadAlloc) {
    Thread thread;
    RunAndWait(thread, [](void*) { throw std::bad_array_new_length(); });
    EXPECT_THROW(thread.RethrowThreadException(), std::bad_alloc);
}

TEST(ThreadTest, StandardExceptionIsRethrownAsExceptionWithItsText) {
    Thread thread;
    RunAndWait(thread, [](void*) { throw std::runtime_error("the text of the failure, longer than a few words"); });
    EXPECT_EQ(RaisedText([&] { thread.RethrowThreadException(); }), "the text of the failure, longer than a few words");
}

TEST(ThreadTest, ExceptionOfTheProgramKeepsItsText) {
    Thread thread;
    RunAndWait(thread, [](void*) { throw Exception("DecodeBMP", 7u); });
    EXPECT_EQ(RaisedText([&] { thread.RethrowThreadException(); }), "DecodeBMP failed, error code 7");
}

TEST(ThreadTest, ExceptionWithoutTextIsRethrownWithoutText) {
    Thread thread;
    RunAndWait(thread, [](void*) { throw Exception(); });
    EXPECT_EQ(RaisedText([&] { thread.RethrowThreadException(); }), "");
}

TEST(ThreadTest, AnyOtherExceptionIsUnknown) {
    Thread thread;
    RunAndWait(thread, [](void*) { throw 5; });
    EXPECT_EQ(RaisedText([&] { thread.RethrowThreadException(); }), "unknown exception");
}

TEST(ThreadTest, FailureToStartRaisesWithoutTextAndLeavesNoThread) {
    const LogCapture log;
    const InjectedCalls calls;
    Platform::GetThreadCalls().start = [](void (*)(void*), void*) { return ThreadHandle::None; };
    Thread thread;
    EXPECT_EQ(RaisedText([&] { thread.Run(&Count, nullptr); }), "");
    EXPECT_NE(log.Text().find(": CreateThread failed with error code "), std::string::npos);
    EXPECT_NO_THROW(thread.Wait());
}

TEST(ThreadTest, FailingWaitRaisesWithoutText) {
    const LogCapture log;
    int count = 0;
    Thread thread;
    thread.Run(&Count, &count);
    {
        const InjectedCalls calls;
        Platform::GetThreadCalls().wait = [](ThreadHandle) { return Platform::WaitResult::Failed; };
        EXPECT_EQ(RaisedText([&] { thread.Wait(); }), "");
    }
    EXPECT_NE(log.Text().find(": WaitForSingleObject failed with error code "), std::string::npos);
    thread.Wait();
}

TEST(ThreadTest, AnyOtherResultOfAWaitRaisesWithText) {
    int count = 0;
    Thread thread;
    thread.Run(&Count, &count);
    {
        const InjectedCalls calls;
        Platform::GetThreadCalls().wait = [](ThreadHandle) { return std::uint32_t{0x102}; };
        EXPECT_EQ(RaisedText([&] { thread.Wait(); }), "Wait: WaitForSingleObject");
    }
    thread.Wait();
}

TEST(ThreadTest, FailingCloseIsReported) {
    const LogCapture log;
    static bool (*realClose)(ThreadHandle);
    const InjectedCalls calls;
    realClose = Platform::GetThreadCalls().close;
    Platform::GetThreadCalls().close = [](ThreadHandle thread) { return !realClose(thread); };
    {
        int count = 0;
        Thread thread;
        thread.Run(&Count, &count);
        thread.Wait();
    }
    EXPECT_NE(log.Text().find(": CloseHandle failed with error code "), std::string::npos);
}

TEST(ThreadTest, PriorityMayChangeAtAnyTime) {
    std::atomic<bool> mayEnd = false;
    Thread thread;
    thread.SetPriority(ThreadPriority::Idle);
    thread.Run(
        [](void* end) {
            SetCurrentThreadPriority(ThreadPriority::Idle);
            while (!*static_cast<std::atomic<bool>*>(end))
                std::this_thread::yield();
            SetCurrentThreadPriority(ThreadPriority::Normal);
        },
        &mayEnd);
    thread.SetPriority(ThreadPriority::Normal);
    thread.SetPriority(ThreadPriority::Idle);
    mayEnd = true;
    thread.Wait();
    thread.SetPriority(ThreadPriority::Normal);
}

TEST(ThreadTest, ThereIsAtLeastOneProcessor) {
    EXPECT_GE(Platform::GetProcessorCount(), 1u);
}

TEST(CriticalSectionTest, OneThreadAtATime) {
    struct Shared {
        CriticalSection section;
        int count = 0;
    } shared;
    const auto countUp = [](void* argument) {
        auto* common = static_cast<Shared*>(argument);
        for (int i = 0; i < 10000; ++i) {
            const CriticalSectionLock lock(&common->section);
            ++common->count;
        }
    };
    Thread first;
    Thread second;
    first.Run(countUp, &shared);
    second.Run(countUp, &shared);
    first.Wait();
    second.Wait();
    EXPECT_EQ(shared.count, 20000);
}

TEST(CriticalSectionTest, TheSameThreadMayEnterAgainAndNullIsNoSection) {
    CriticalSection section;
    const CriticalSectionLock outer(&section);
    const CriticalSectionLock inner(&section);
    const CriticalSectionLock none(nullptr);
}

} // namespace
