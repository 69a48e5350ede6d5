#include "tests/gui/headless/HeadlessFixture.h"

namespace Quorvex::GUI {
namespace {

using HeadlessUserTest = HeadlessFixture;

std::int32_t LowHalf(std::intptr_t word) {
    return static_cast<std::int16_t>(word & 0xFFFF);
}

std::int32_t HighHalf(std::intptr_t word) {
    return static_cast<std::int16_t>((word >> 16) & 0xFFFF);
}

TEST_F(HeadlessUserTest, NothingHappensBeforeTheDispatch) {
    ShowBoth();
    m_user.MoveMouse(110, 120);
    m_user.PressLeft();
    EXPECT_TRUE(m_mainEvents.log.empty());
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"mouse 512 at 110,120", "mouse 513 at 110,120"}));
}

TEST_F(HeadlessUserTest, MovesCarryClientAndDesktopCoordinates) {
    ShowBoth();
    m_user.MoveMouse(110, 120);
    m_system.RunUntilIdle();
    ASSERT_EQ(m_mainEvents.mouse.size(), 1u);
    const auto& message = m_mainEvents.mouse[0];
    EXPECT_EQ(LowHalf(message.lParam), 10);
    EXPECT_EQ(HighHalf(message.lParam), 20);
    EXPECT_EQ(message.window, m_main.get());
}

TEST_F(HeadlessUserTest, ThePanelAboveTakesTheMouseAndTheWindowBelowLearnsThatItLeft) {
    ShowBoth();
    m_user.MoveMouse(240, 130);
    m_user.MoveMouse(260, 130);
    m_user.MoveMouse(900, 900);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"mouse 512 at 240,130", "mouse 675 at 260,130"}));
    EXPECT_EQ(m_panelEvents.log, (Log{"mouse 512 at 260,130", "mouse 675 at 900,900"}));
}

TEST_F(HeadlessUserTest, TheCaptureHoldsTheMouseOutsideOfItsWindow) {
    ShowBoth();
    m_user.MoveMouse(110, 110);
    m_user.PressLeft();
    m_system.RunUntilIdle();
    m_mainEvents.Clear();
    m_system.SetCapture(*m_main);
    m_user.MoveMouse(50, 60);
    m_user.ReleaseLeft();
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"mouse 512 at 50,60", "mouse 514 at 50,60"}));
    EXPECT_EQ(LowHalf(m_mainEvents.mouse[0].lParam), -50);
    m_system.ReleaseCapture();
    EXPECT_EQ(m_system.GetCapture(), nullptr);
}

TEST_F(HeadlessUserTest, TheButtonStateGoesWithEachMessage) {
    ShowBoth();
    m_user.Drag(110, 110, 150, 110, 2);
    m_system.RunUntilIdle();
    ASSERT_EQ(m_mainEvents.mouse.size(), 5u);
    const std::vector<std::uintptr_t> wanted{0, 1, 1, 1, 0};
    for (std::size_t i = 0; i < wanted.size(); ++i)
        EXPECT_EQ(m_mainEvents.mouse[i].wParam, wanted[i]) << i;
    EXPECT_EQ(m_mainEvents.mouse[2].screenX, 130);
}

TEST_F(HeadlessUserTest, ASecondClickIsADoubleClickMessage) {
    ShowBoth();
    m_user.MoveMouse(110, 110);
    m_user.DoubleClick();
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"mouse 512 at 110,110", "mouse 513 at 110,110", "mouse 514 at 110,110",
                                     "mouse 515 at 110,110", "mouse 514 at 110,110"}));
}

TEST_F(HeadlessUserTest, WheelsCarryTheirDelta) {
    ShowBoth();
    m_user.MoveMouse(110, 110);
    m_user.TurnWheel(-240);
    m_user.TiltWheel(120);
    m_system.RunUntilIdle();
    ASSERT_EQ(m_mainEvents.mouse.size(), 3u);
    EXPECT_EQ(m_mainEvents.mouse[1].number, MouseMessageNumber::Wheel);
    EXPECT_EQ(HighHalf(static_cast<std::intptr_t>(m_mainEvents.mouse[1].wParam)), -240);
    EXPECT_EQ(LowHalf(m_mainEvents.mouse[1].lParam), 110);
    EXPECT_EQ(m_mainEvents.mouse[2].number, MouseMessageNumber::HorizontalWheel);
    EXPECT_EQ(HighHalf(static_cast<std::intptr_t>(m_mainEvents.mouse[2].wParam)), 120);
}

TEST_F(HeadlessUserTest, AClickOnAPanelAsksWhatToActivate) {
    ShowBoth();
    m_user.MoveMouse(260, 130);
    m_user.PressLeft();
    m_system.RunUntilIdle();
    EXPECT_EQ(m_panelEvents.log, (Log{"mouse 512 at 260,130", "mouse activate", "mouse 513 at 260,130"}));
    EXPECT_EQ(m_system.GetActiveWindow(), m_main.get());
}

TEST_F(HeadlessUserTest, AClickOnTheMainWindowTakesItFromAnotherProgram) {
    ShowBoth();
    m_user.SwitchTo(nullptr);
    m_user.MoveMouse(110, 110);
    m_user.PressLeft();
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"deactivated", "no focus", "mouse 512 at 110,110", "mouse activate", "activated",
                                     "focus", "mouse 513 at 110,110"}));
}

TEST_F(HeadlessUserTest, ADisabledWindowIsDeafToTheMouse) {
    ShowBoth();
    m_main->SetEnabled(false);
    m_mainEvents.Clear();
    m_user.MoveMouse(110, 110);
    m_user.PressLeft();
    m_system.RunUntilIdle();
    EXPECT_TRUE(m_mainEvents.log.empty());
}

TEST_F(HeadlessUserTest, KeysGoToTheActiveWindowWithTheirRepeatState) {
    ShowBoth();
    m_user.PressKey(37);
    m_user.PressKey(37, true);
    m_user.ReleaseKey(37);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"key down 37", "key down 37", "key up 37"}));
    EXPECT_EQ((m_mainEvents.keyData[0] >> 30) & 1, 0);
    EXPECT_EQ((m_mainEvents.keyData[1] >> 30) & 1, 1);
    EXPECT_TRUE(m_panelEvents.log.empty());
}

TEST_F(HeadlessUserTest, AKeyIsDownFromItsPressToItsRelease) {
    ShowBoth();
    m_user.PressKey(16);
    m_system.RunUntilIdle();
    EXPECT_TRUE(m_system.IsKeyDown(16));
    EXPECT_FALSE(m_system.IsKeyDown(17));
    m_user.ReleaseKey(16);
    m_system.RunUntilIdle();
    EXPECT_FALSE(m_system.IsKeyDown(16));
}

TEST_F(HeadlessUserTest, FocusBetweenTwoWindowsNamesTheOther) {
    ShowBoth();
    m_user.SwitchTo(m_panel.get());
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"deactivated", "no focus from another"}));
    EXPECT_EQ(m_panelEvents.log, (Log{"activated", "focus from another"}));
}

TEST_F(HeadlessUserTest, WindowEventsReachTheirWindow) {
    ShowBoth();
    m_user.Close(*m_main);
    m_user.Place(*m_main, {0, 0, 200, 150});
    m_user.DropFiles(*m_main, {"a.bmp", "b.bmp"});
    m_user.Uncover(*m_main);
    m_user.CancelMode(*m_main);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"close", "moved", "dropped 2", "cancel", "paint"}));
}

TEST_F(HeadlessUserTest, DesktopChangesReachAllWindows) {
    ShowBoth();
    m_user.ChangeColors();
    m_user.ChangeComposition(false);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"colors", "composition"}));
    EXPECT_EQ(m_panelEvents.log, (Log{"colors", "composition"}));
    EXPECT_FALSE(m_main->IsCompositionEnabled());
}

TEST_F(HeadlessUserTest, PendingMouseMessagesAreDispatchedBeforeASurfaceGoes) {
    ShowBoth();
    m_user.PressKey(65);
    m_user.MoveMouse(110, 110);
    m_main->DispatchMouseMessagesAndHide();
    EXPECT_TRUE(m_mainEvents.Has("mouse 512 at 110,110"));
    EXPECT_FALSE(m_mainEvents.Has("key down 65"));
    EXPECT_FALSE(m_main->IsVisible());
}

} // namespace
} // namespace Quorvex::GUI
