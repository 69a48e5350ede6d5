// Before Xlib, whose macros would swallow a name of it.
#include "tests/support/LogCapture.h"

#include "gui/window/x11/X11MessageBox.h"
#include "tests/foundation/posix/ScopedVariable.h"
#include "tests/gui/x11/X11Fixture.h"

#include <thread>

// A display that goes while the program runs: the loop ends, and everything that is left can be used and closed.

namespace Quorvex::GUI {
namespace {

using Dispatched = IWindowSystem::Dispatched;

class X11DisplayLoss : public X11Fixture {
protected:
    void SetUp() override {
        m_display.emplace();
        if (!m_display->IsRunning())
            GTEST_SKIP() << "no Xvfb on this machine: the loss of a display stays untested";
        m_system.emplace(m_display->GetName());
        m_window = Create(WindowKind::Main, {10, 10, 210, 110}, m_events);
        m_panel = Create(WindowKind::Panel, {100, 50, 300, 150}, m_panelEvents);
        m_panel->SetOwner(m_window.get());
        m_window->Show();
        m_panel->Show();
        Settle();
    }
    void TearDown() override { EXPECT_TRUE(m_log.IsEmpty()) << m_log.Text(); }

    void ShowPicture(X11Window& window, std::uint32_t seed) {
        const auto bits = MakePicture(200, 100, seed);
        window.ShowOpaque(bits.data(), 200, 100, 800);
    }
    /// Everything that a program asks of its windows and its desktop.
    void UseEverything() {
        for (auto* window : {m_window.get(), m_panel.get()}) {
            ShowPicture(*window, 1);
            window->SetClientRect({20, 20, 220, 120});
            window->SetTitle("title");
            window->SetCursor(CursorShape::Hand);
            window->SetCursor(CursorShape::Arrow);
            window->Activate();
            window->BringToFront();
            window->SetLayered(true);
            window->SetLayered(false);
            window->Flash(1, 1);
            window->Invalidate();
            window->PaintNow();
            window->Hide();
            window->Show();
            m_system->SetCapture(*window);
            m_system->ReleaseCapture();
            window->DispatchMouseMessagesAndHide();
            EXPECT_FALSE(window->IsCompositionEnabled());
        }
        const std::vector<WindowPlacement> placements{{m_panel.get(), {1, 2, 303, 404}, nullptr},
                                                      {m_window.get(), {5, 6, 207, 308}, m_panel.get()}};
        m_system->MoveWindows(placements);
        m_system->FlushComposition();
        m_system->WindowFromPoint(30, 30);
        EXPECT_FALSE(m_system->GetMonitors().empty());
        EXPECT_FALSE(m_system->GetWorkAreaAtMouse().IsEmpty());
        EXPECT_GT(m_system->GetScreenDpi(), 0u);
    }
    Dispatched DispatchUntilQuit() {
        auto result = m_system->DispatchNextMessage();
        while (result == Dispatched::Message)
            result = m_system->DispatchNextMessage();
        return result;
    }
    void Close() {
        m_panel.reset();
        m_window.reset();
        m_system.reset();
    }

    const Quorvex::Test::LogCapture m_log;
    std::optional<VirtualDisplay> m_display;
    std::unique_ptr<X11Window> m_window;
    std::unique_ptr<X11Window> m_panel;
};

TEST_F(X11DisplayLoss, EndsTheLoopAndTellsEachWindowOnce) {
    m_display->Kill();
    EXPECT_EQ(DispatchUntilQuit(), Dispatched::Quit);
    EXPECT_EQ(m_system->DispatchNextMessage(), Dispatched::Quit) << "for good";
    EXPECT_EQ(m_system->GetExitCode(), 0);
    Close();
    EXPECT_EQ(m_events.Count("destroyed"), 1u);
    EXPECT_EQ(m_panelEvents.Count("destroyed"), 1u);
}

TEST_F(X11DisplayLoss, IsHarmlessWhereNobodyHasNoticedIt) {
    ShowPicture(*m_window, 1);
    m_display->Kill();
    Close();
    EXPECT_EQ(m_events.Count("destroyed"), 1u);
}

TEST_F(X11DisplayLoss, IsNoticedByWhateverComesFirst) {
    ShowPicture(*m_window, 1);
    m_display->Kill();
    ShowPicture(*m_window, 2);
    ShowPicture(*m_window, 3);
    UseEverything();
    EXPECT_EQ(DispatchUntilQuit(), Dispatched::Quit);
    Close();
}

TEST_F(X11DisplayLoss, LeavesAllOperationsHarmlessHoweverOftenTheyAreUsed) {
    UseEverything();
    m_window->Show();
    m_panel->Show();
    Settle();
    m_display->Kill();
    EXPECT_EQ(DispatchUntilQuit(), Dispatched::Quit);
    // More requests than the connection's buffer holds, which nobody empties any more.
    for (int i = 0; i < 500; ++i)
        UseEverything();
    EXPECT_THROW(Create(WindowKind::Main, {0, 0, 10, 10}, m_events), Exception);
    Close();
}

TEST_F(X11DisplayLoss, ALaterConnectionIsAsGoodAsTheFirst) {
    for (int i = 0; i < 3; ++i) {
        ShowPicture(*m_window, 1);
        m_display->Kill();
        EXPECT_EQ(DispatchUntilQuit(), Dispatched::Quit);
        Close();
        m_display.reset();
        SetUp();
        m_onlooker.emplace(m_display->GetName());
        m_panel->Hide();
        ShowPicture(*m_window, 7);
        m_system->FlushComposition();
        XSync(m_system->GetConnection().Get(), 0);
        EXPECT_EQ(m_onlooker->Photograph({10, 10, 210, 110}), WithoutAlpha(MakePicture(200, 100, 7)));
        m_onlooker.reset();
    }
}

TEST_F(X11DisplayLoss, LeavesTheTextOfAMessageBoxOnStandardError) {
    const Quorvex::Test::ScopedVariable variable("DISPLAY", m_display->GetName());
    testing::internal::CaptureStderr();
    std::jthread box([] { ShowX11MessageBox("A Report", "text"); });
    {
        const Onlooker onlooker(m_display->GetName());
        const auto isShown = [&] {
            for (const ::Window window : onlooker.GetStacking())
                if (onlooker.GetText(reinterpret_cast<void*>(window), "_NET_WM_NAME", "UTF8_STRING") == "A Report")
                    return true;
            return false;
        };
        while (!isShown())
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    m_display->Kill();
    box.join();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "A Report: text\n");
    Close();
}

} // namespace
} // namespace Quorvex::GUI
