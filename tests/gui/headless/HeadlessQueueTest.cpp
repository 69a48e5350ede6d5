#include "tests/gui/headless/HeadlessFixture.h"

#include "foundation/Exception.h"

#include <thread>

namespace Quorvex::GUI {
namespace {

using HeadlessQueueTest = HeadlessFixture;
using Dispatched = IWindowSystem::Dispatched;

TEST_F(HeadlessQueueTest, PaintsComeWhenNothingElseWaits) {
    ShowBoth();
    m_main->Invalidate();
    m_main->Post(0x400, 1, 2);
    m_user.PressKey(27);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"user 1024 1 2", "key down 27", "paint"}));
}

TEST_F(HeadlessQueueTest, AnyNumberOfInvalidationsCostsOnePaint) {
    ShowBoth();
    for (int i = 0; i < 5; ++i)
        m_main->Invalidate();
    EXPECT_EQ(m_system.RunUntilIdle(), 1u);
}

TEST_F(HeadlessQueueTest, APostedInvalidationPaints) {
    ShowBoth();
    m_main->Post(UserMessage::Invalidate, 0, 0);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"paint"}));
}

TEST_F(HeadlessQueueTest, DispatchTakesOneMessageAtATime) {
    ShowBoth();
    m_main->Post(0x400, 1, 0);
    m_main->Post(0x400, 2, 0);
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Message);
    EXPECT_EQ(m_mainEvents.log, (Log{"user 1024 1 0"}));
}

TEST_F(HeadlessQueueTest, QuitComesAfterWhatWasPosted) {
    ShowBoth();
    m_main->Invalidate();
    m_system.PostQuit(3);
    m_main->Post(0x400, 1, 0);
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Message);
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Quit);
    EXPECT_EQ(m_system.GetExitCode(), 3);
    EXPECT_EQ(m_mainEvents.log, (Log{"user 1024 1 0"}));
}

TEST_F(HeadlessQueueTest, AMessageToAWindowThatHasGoneIsDropped) {
    ShowBoth();
    m_panel->Post(0x400, 1, 0);
    m_panel.reset();
    m_system.RunUntilIdle();
    EXPECT_EQ(m_panelEvents.log, (Log{"destroyed"}));
}

TEST_F(HeadlessQueueTest, AWindowMayGoWhileItsMessageIsHandled) {
    ShowBoth();
    m_panelEvents.onUserMessage = [&](auto...) { m_panel.reset(); };
    m_panel->Post(0x400, 1, 0);
    m_panel->Post(0x400, 2, 0);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_panelEvents.log, (Log{"user 1024 1 0", "destroyed"}));
}

TEST_F(HeadlessQueueTest, PostsOfFourThreadsAllArrive) {
    ShowBoth();
    constexpr std::uintptr_t threads = 4;
    constexpr std::intptr_t each = 500;
    std::vector<std::intptr_t> next(threads, 0);
    std::size_t received = 0;
    m_mainEvents.onUserMessage = [&](std::uint32_t, std::uintptr_t thread, std::intptr_t index) {
        EXPECT_EQ(index, next[thread]++) << "thread " << thread;
        ++received;
    };
    std::vector<std::jthread> workers;
    for (std::uintptr_t thread = 0; thread < threads; ++thread) {
        workers.emplace_back([&, thread] {
            for (std::intptr_t i = 0; i < each; ++i)
                m_main->Post(0x400, thread, i);
        });
    }
    while (received < threads * each)
        ASSERT_EQ(m_system.DispatchNextMessage(), Dispatched::Message);
}

TEST_F(HeadlessQueueTest, WaitsForAPost) {
    ShowBoth();
    std::jthread worker([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        m_main->Post(0x400, 1, 0);
    });
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Message);
    EXPECT_TRUE(m_mainEvents.Has("user 1024 1 0"));
}

TEST_F(HeadlessQueueTest, RaisesWhenNothingEverComes) {
    m_system.SetLongestWait(std::chrono::milliseconds(1));
    EXPECT_THROW(m_system.DispatchNextMessage(), Exception);
}

TEST_F(HeadlessQueueTest, QuitsWhenIdleIfToldTo) {
    ShowBoth();
    m_system.SetWhenIdle(HeadlessWindowSystem::WhenIdle::Quit);
    m_main->Invalidate();
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Message);
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Quit);
    m_main->Invalidate();
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Message);
}

TEST_F(HeadlessQueueTest, TheIdleHookPlaysTheUser) {
    ShowBoth();
    int step = 0;
    m_system.SetIdleHook([&] {
        if (++step == 1)
            m_user.PressKey(65);
        else if (step == 2)
            m_main->Invalidate();
        else
            m_system.PostQuit(step);
    });
    while (m_system.DispatchNextMessage() == Dispatched::Message) {
    }
    EXPECT_EQ(m_mainEvents.log, (Log{"key down 65", "paint"}));
    EXPECT_EQ(m_system.GetExitCode(), 3);
}

TEST_F(HeadlessQueueTest, RunUntilIdleCallsBackAfterEachMessage) {
    ShowBoth();
    m_main->Post(0x400, 1, 0);
    m_main->Invalidate();
    std::size_t calls = 0;
    EXPECT_EQ(m_system.RunUntilIdle([&] { ++calls; }), 2u);
    EXPECT_EQ(calls, 2u);
}

class TimerCounter {
public:
    void Tick(std::uintptr_t identifier) { ticks.push_back(identifier); }
    std::vector<std::uintptr_t> ticks;
};

TEST_F(HeadlessQueueTest, TimersFollowTheTimeOfTheTest) {
    TimerCounter counter;
    Function<std::uintptr_t> hook;
    hook.Bind(&counter, &TimerCounter::Tick);
    m_system.SetTimerHook(hook);
    m_system.SetTimer(4, 100);
    m_system.RunUntilIdle();
    EXPECT_TRUE(counter.ticks.empty());
    m_system.AdvanceTime(100);
    m_system.RunUntilIdle();
    EXPECT_EQ(counter.ticks, (std::vector<std::uintptr_t>{4}));
    m_system.KillTimer(4);
    m_system.AdvanceTime(1000);
    m_system.RunUntilIdle();
    EXPECT_EQ(counter.ticks.size(), 1u);
}

TEST_F(HeadlessQueueTest, LosingTheDisplayDestroysTheWindowsAndEndsTheLoop) {
    ShowBoth();
    m_system.SetCapture(*m_main);
    m_main->Post(0x400, 1, 0);
    m_system.LoseDisplay();
    EXPECT_EQ(m_mainEvents.log, (Log{"destroyed"}));
    EXPECT_EQ(m_panelEvents.log, (Log{"destroyed"}));
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Quit);
    EXPECT_EQ(m_system.DispatchNextMessage(), Dispatched::Quit);
    EXPECT_EQ(m_system.GetCapture(), nullptr);
    // The objects remain until their owner lets them go, and tell nothing a second time.
    m_main->Show();
    m_main->SetClientRect({0, 0, 5, 5});
    m_main.reset();
    EXPECT_EQ(m_mainEvents.log, (Log{"destroyed"}));
}

} // namespace
} // namespace Quorvex::GUI
