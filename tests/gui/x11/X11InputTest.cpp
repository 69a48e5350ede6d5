#include "tests/gui/x11/X11Fixture.h"

#include <X11/keysym.h>

namespace Quorvex::GUI {
namespace {

/// A main window from 100,100 to 300,250 and a panel from 350,100 to 450,200, both on the screen.
class X11Input : public X11Fixture {
protected:
    void SetUp() override {
        X11Fixture::SetUp();
        if (IsSkipped())
            return;
        if (!m_onlooker->MoveMouse(10, 500))
            GTEST_SKIP() << "no libXtst.so.6 on this machine: nobody can move the mouse";
        m_main = Create(WindowKind::Main, {100, 100, 300, 250}, m_events);
        m_panel = Create(WindowKind::Panel, {350, 100, 450, 200}, m_panelEvents);
        m_main->Show();
        m_panel->Show();
        Settle();
        Forget();
    }

    void TearDown() override {
        if (m_onlooker) {
            m_onlooker->Release(1);
            m_onlooker->MoveMouse(10, 500);
        }
        m_panel.reset();
        m_main.reset();
    }

    void Forget() {
        m_events.Clear();
        m_panelEvents.Clear();
    }

    static std::int32_t LowHalf(std::intptr_t word) { return static_cast<std::int16_t>(word & 0xFFFF); }
    static std::int32_t HighHalf(std::intptr_t word) { return static_cast<std::int16_t>((word >> 16) & 0xFFFF); }

    std::unique_ptr<X11Window> m_main;
    std::unique_ptr<X11Window> m_panel;
};

TEST_F(X11Input, MovesCarryClientAndDesktopCoordinates) {
    m_onlooker->MoveMouse(110, 130);
    ASSERT_TRUE(DispatchUntil([&] { return m_events.Has("mouse 512 at 110,130"); }));
    const auto& message = m_events.mouse.back();
    EXPECT_EQ(LowHalf(message.lParam), 10);
    EXPECT_EQ(HighHalf(message.lParam), 30);
    EXPECT_EQ(message.window, m_main.get());
    EXPECT_EQ(m_system->WindowFromPoint(110, 130), m_main.get());
}

TEST_F(X11Input, LeavingIsToldWithThePlaceOutside) {
    m_onlooker->MoveMouse(110, 130);
    m_onlooker->MoveMouse(400, 150);
    ASSERT_TRUE(DispatchUntil([&] { return m_panelEvents.Has("mouse 512 at 400,150"); }));
    EXPECT_TRUE(m_events.Has("mouse 675 at 400,150"));
    m_onlooker->MoveMouse(10, 500);
    EXPECT_TRUE(DispatchUntil([&] { return m_panelEvents.Has("mouse 675 at 10,500"); }));
}

TEST_F(X11Input, WheelsBecomeMessagesOfOneNotch) {
    m_onlooker->MoveMouse(110, 130);
    const std::vector<std::pair<MouseMessageNumber, std::int32_t>> wanted{{MouseMessageNumber::Wheel, 120},
                                                                          {MouseMessageNumber::Wheel, -120},
                                                                          {MouseMessageNumber::HorizontalWheel, -120},
                                                                          {MouseMessageNumber::HorizontalWheel, 120}};
    for (unsigned button = 4; button <= 7; ++button) {
        m_onlooker->Press(button);
        m_onlooker->Release(button);
    }
    Settle();
    std::vector<std::pair<MouseMessageNumber, std::int32_t>> seen;
    for (const auto& message : m_events.mouse) {
        if (message.number == MouseMessageNumber::Wheel || message.number == MouseMessageNumber::HorizontalWheel) {
            seen.emplace_back(message.number, HighHalf(static_cast<std::intptr_t>(message.wParam)));
            EXPECT_EQ(LowHalf(message.lParam), 110);
            EXPECT_EQ(HighHalf(message.lParam), 130);
        }
    }
    EXPECT_EQ(seen, wanted);
}

TEST_F(X11Input, ADragOutsideStaysWithItsWindowAndLeavesAfterwards) {
    m_onlooker->MoveMouse(110, 130);
    m_onlooker->Press(1);
    m_onlooker->MoveMouse(400, 150);
    m_onlooker->MoveMouse(20, 40);
    ASSERT_TRUE(DispatchUntil([&] { return m_events.Has("mouse 512 at 20,40"); }));
    EXPECT_TRUE(m_events.Has("mouse 513 at 110,130"));
    EXPECT_TRUE(m_panelEvents.log.empty());
    EXPECT_FALSE(m_events.Has("mouse 675 at 20,40"));
    EXPECT_EQ(LowHalf(m_events.mouse.back().lParam), -80);
    EXPECT_EQ(m_events.mouse.back().wParam, 1u);
    EXPECT_TRUE(m_system->IsKeyDown(1));
    m_onlooker->Release(1);
    ASSERT_TRUE(DispatchUntil([&] { return m_events.Has("mouse 675 at 20,40"); }));
    Settle();
    const auto size = m_events.log.size();
    EXPECT_EQ(m_events.log[size - 2], "mouse 514 at 20,40");
    EXPECT_EQ(m_events.log[size - 1], "mouse 675 at 20,40");
    EXPECT_FALSE(m_system->IsKeyDown(1));
}

TEST_F(X11Input, TheCaptureDuringADragGivesTheMessagesToItsWindow) {
    m_onlooker->MoveMouse(400, 150);
    m_onlooker->Press(1);
    ASSERT_TRUE(DispatchUntil([&] { return m_panelEvents.Has("mouse 513 at 400,150"); }));
    m_system->SetCapture(*m_main);
    EXPECT_EQ(m_system->GetCapture(), m_main.get());
    Forget();
    m_onlooker->MoveMouse(410, 160);
    ASSERT_TRUE(DispatchUntil([&] { return m_events.Has("mouse 512 at 410,160"); }));
    EXPECT_EQ(LowHalf(m_events.mouse.back().lParam), 310);
    m_system->ReleaseCapture();
    m_onlooker->Release(1);
    EXPECT_TRUE(DispatchUntil([&] { return m_panelEvents.Has("mouse 514 at 410,160"); }));
}

TEST_F(X11Input, ACaptureWithoutAButtonHoldsTheMouseToo) {
    m_system->SetCapture(*m_main);
    m_onlooker->MoveMouse(600, 400);
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("mouse 512 at 600,400"); }));
    m_system->ReleaseCapture();
    EXPECT_EQ(m_system->GetCapture(), nullptr);
    Settle();
    Forget();
    m_onlooker->MoveMouse(610, 410);
    Settle();
    EXPECT_FALSE(m_events.Has("mouse 512 at 610,410"));
}

TEST_F(X11Input, TwoQuickPressesAreADoubleClickAndAThirdBeginsAnew) {
    m_onlooker->MoveMouse(110, 130);
    for (int i = 0; i < 3; ++i) {
        m_onlooker->Press(1);
        m_onlooker->Release(1);
    }
    ASSERT_TRUE(DispatchUntil([&] { return m_events.Count("mouse 514 at 110,130") == 3; }));
    EXPECT_EQ(m_events.Count("mouse 513 at 110,130"), 2u);
    EXPECT_EQ(m_events.Count("mouse 515 at 110,130"), 1u);
}

TEST_F(X11Input, PressesApartAreNoDoubleClick) {
    m_onlooker->MoveMouse(110, 130);
    m_onlooker->Press(1);
    m_onlooker->Release(1);
    m_onlooker->MoveMouse(120, 130);
    m_onlooker->Press(1);
    m_onlooker->Release(1);
    ASSERT_TRUE(DispatchUntil([&] { return m_events.Has("mouse 514 at 120,130"); }));
    EXPECT_TRUE(m_events.Has("mouse 513 at 120,130"));
}

TEST_F(X11Input, AClickOnAPanelAsksWhatToActivate) {
    m_onlooker->MoveMouse(400, 150);
    m_onlooker->Press(1);
    ASSERT_TRUE(DispatchUntil([&] { return m_panelEvents.Has("mouse 513 at 400,150"); }));
    const auto size = m_panelEvents.log.size();
    EXPECT_EQ(m_panelEvents.log[size - 2], "mouse activate");
}

TEST_F(X11Input, ADisabledWindowIsDeaf) {
    m_main->SetEnabled(false);
    Forget();
    m_onlooker->MoveMouse(110, 130);
    m_onlooker->Press(1);
    m_onlooker->Release(1);
    m_onlooker->PressKey(XK_Right);
    m_onlooker->ReleaseKey(XK_Right);
    Settle();
    EXPECT_TRUE(m_events.log.empty()) << m_events.log[0];
}

TEST_F(X11Input, KeysCarryTheHomePlatformsCodes) {
    const std::vector<std::pair<KeySym, std::uint32_t>> keys{{XK_Right, 0x27}, {XK_Escape, 0x1B}, {XK_a, 0x41},
                                                             {XK_7, 0x37},     {XK_F5, 0x74},     {XK_Delete, 0x2E},
                                                             {XK_space, 0x20}, {XK_Prior, 0x21}};
    Log wanted;
    for (const auto& [symbol, code] : keys) {
        m_onlooker->PressKey(symbol);
        m_onlooker->ReleaseKey(symbol);
        wanted.push_back("key down " + std::to_string(code));
        wanted.push_back("key up " + std::to_string(code));
    }
    ASSERT_TRUE(DispatchUntil([&] { return m_events.log.size() >= wanted.size(); }));
    EXPECT_EQ(m_events.log, wanted);
}

TEST_F(X11Input, ModifiersAreDownWhileTheyAreHeld) {
    m_onlooker->PressKey(XK_Shift_L);
    m_onlooker->PressKey(XK_Right);
    ASSERT_TRUE(DispatchUntil([&] { return m_events.Has("key down 39"); }));
    EXPECT_TRUE(m_system->IsKeyDown(0x10));
    EXPECT_TRUE(m_system->IsKeyDown(0x27));
    m_onlooker->ReleaseKey(XK_Right);
    m_onlooker->ReleaseKey(XK_Shift_L);
    ASSERT_TRUE(DispatchUntil([&] { return m_events.Has("key up 16"); }));
    EXPECT_FALSE(m_system->IsKeyDown(0x10));
    EXPECT_FALSE(m_system->IsKeyDown(0x27));
}

TEST_F(X11Input, KeysWithAltStayWithTheWindowManager) {
    m_onlooker->PressKey(XK_Alt_L);
    m_onlooker->PressKey(XK_Right);
    m_onlooker->ReleaseKey(XK_Right);
    m_onlooker->ReleaseKey(XK_Alt_L);
    Settle();
    EXPECT_FALSE(m_events.Has("key down 39"));
    EXPECT_FALSE(m_events.Has("key down 18"));
}

TEST_F(X11Input, AHeldKeyRepeatsWithoutBeingLetGo) {
    // The server repeats a key after a time and at a rate of its own; both are set short here.
    XkbSetAutoRepeatRate(m_onlooker->Get(), XkbUseCoreKbd, 50, 10);
    m_onlooker->PressKey(XK_Right);
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Count("key down 39") >= 3; }));
    EXPECT_FALSE(m_events.Has("key up 39"));
    m_onlooker->ReleaseKey(XK_Right);
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("key up 39"); }));
    EXPECT_EQ((m_events.keyData[0] >> 30) & 1, 0);
    EXPECT_EQ((m_events.keyData[1] >> 30) & 1, 1);
    XkbSetAutoRepeatRate(m_onlooker->Get(), XkbUseCoreKbd, 660, 40);
}

TEST_F(X11Input, FocusBetweenTwoWindowsNamesTheOther) {
    XSetInputFocus(m_onlooker->Get(), m_panel->GetHandle(), RevertToParent, CurrentTime);
    XSync(m_onlooker->Get(), 0);
    ASSERT_TRUE(DispatchUntil([&] { return m_panelEvents.log.size() >= 2; }));
    EXPECT_EQ(m_events.log, (Log{"deactivated", "no focus from another"}));
    EXPECT_EQ(m_panelEvents.log, (Log{"activated", "focus from another"}));
}

TEST_F(X11Input, FocusOfAnotherProgramIsNobodys) {
    XSetInputFocus(m_onlooker->Get(), m_onlooker->GetRoot(), RevertToParent, CurrentTime);
    XSync(m_onlooker->Get(), 0);
    ASSERT_TRUE(DispatchUntil([&] { return m_events.log.size() >= 2; }));
    EXPECT_EQ(m_events.log, (Log{"deactivated", "no focus"}));
}

TEST_F(X11Input, PendingMouseMessagesAreDispatchedBeforeASurfaceGoes) {
    m_onlooker->MoveMouse(110, 130);
    m_onlooker->PressKey(XK_Right);
    m_onlooker->ReleaseKey(XK_Right);
    m_main->DispatchMouseMessagesAndHide();
    EXPECT_TRUE(m_events.Has("mouse 512 at 110,130"));
    EXPECT_FALSE(m_events.Has("key down 39"));
    EXPECT_FALSE(m_main->IsVisible());
}

TEST_F(X11Input, AStormOfMovesIsOneDispatch) {
    for (int i = 0; i < 100; ++i)
        m_onlooker->MoveMouse(110 + i, 130);
    XSync(m_system->GetConnection().Get(), 0);
    Forget();
    m_system->DispatchNextMessage();
    EXPECT_TRUE(m_events.Has("mouse 512 at 209,130"));
    EXPECT_LT(m_events.log.size(), 5u);
}

} // namespace
} // namespace Quorvex::GUI
