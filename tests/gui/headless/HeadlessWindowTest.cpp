#include "tests/gui/headless/HeadlessFixture.h"

#include "foundation/Exception.h"

namespace Quorvex::GUI {
namespace {

using HeadlessWindowTest = HeadlessFixture;

TEST_F(HeadlessWindowTest, IsCreatedHiddenAndSilently) {
    EXPECT_FALSE(m_main->IsVisible());
    EXPECT_EQ(m_main->GetClientRect(), (Rect{100, 100, 300, 250}));
    EXPECT_EQ(m_main->GetNativeHandle(), nullptr);
    EXPECT_EQ(m_system.RunUntilIdle(), 0u);
    EXPECT_TRUE(m_mainEvents.log.empty());
}

TEST_F(HeadlessWindowTest, ShowingTheMainWindowActivatesAndPaintsIt) {
    m_main->Show();
    EXPECT_EQ(m_mainEvents.log, (Log{"activated", "focus"}));
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"activated", "focus", "paint"}));
}

TEST_F(HeadlessWindowTest, ShowingAPanelLeavesTheFocusWhereItIs) {
    m_main->Show();
    m_panel->Show();
    EXPECT_EQ(m_system.GetActiveWindow(), m_main.get());
    m_system.RunUntilIdle();
    EXPECT_EQ(m_panelEvents.log, (Log{"paint"}));
}

TEST_F(HeadlessWindowTest, KeepsWhatWasShownWithoutTheGapsOfThePitch) {
    const std::vector<std::uint8_t> bits{1, 2, 3, 4, 5, 6, 7, 8, 99, 99, 99, 99, 9, 10, 11, 12, 13, 14, 15, 16};
    m_main->ShowOpaque(bits.data(), 2, 2, 12);
    EXPECT_EQ(m_main->GetPicture().bits,
              (std::vector<std::uint8_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    EXPECT_EQ(m_main->GetPicture().width, 2u);
    EXPECT_EQ(m_main->GetPicture().height, 2u);
    EXPECT_FALSE(m_main->GetPicture().hasAlpha);
    m_main->ShowWithAlpha(bits.data(), 1, 1, 12);
    EXPECT_TRUE(m_main->GetPicture().hasAlpha);
    EXPECT_EQ(m_main->GetPicture().bits.size(), 4u);
    EXPECT_EQ(m_main->GetShowCount(), 2u);
}

TEST_F(HeadlessWindowTest, PlacingItTellsItsOwnerAtOnce) {
    ShowBoth();
    m_main->SetClientRect({10, 10, 90, 70});
    EXPECT_EQ(m_mainEvents.log, (Log{"moved"}));
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"moved", "paint"}));
}

TEST_F(HeadlessWindowTest, PlacingItWhereItIsDoesNothing) {
    ShowBoth();
    m_main->SetClientRect({100, 100, 300, 250});
    EXPECT_EQ(m_system.RunUntilIdle(), 0u);
    EXPECT_TRUE(m_mainEvents.log.empty());
}

TEST_F(HeadlessWindowTest, AMoveAloneNeedsNoPaint) {
    ShowBoth();
    m_main->SetClientRect({110, 100, 310, 250});
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.log, (Log{"moved"}));
}

TEST_F(HeadlessWindowTest, PaintNowTakesThePendingPaintAlong) {
    ShowBoth();
    EXPECT_TRUE(m_main->Invalidate());
    m_main->PaintNow();
    EXPECT_EQ(m_system.RunUntilIdle(), 0u);
    EXPECT_EQ(m_mainEvents.log, (Log{"paint"}));
}

TEST_F(HeadlessWindowTest, InvalidatingWhilePaintingPaintsAgain) {
    ShowBoth();
    int left = 3;
    m_mainEvents.onPaint = [&] {
        if (--left > 0)
            m_main->Invalidate();
    };
    m_main->Invalidate();
    m_system.RunUntilIdle();
    EXPECT_EQ(m_mainEvents.Count("paint"), 3u);
}

TEST_F(HeadlessWindowTest, ARefusedInvalidateAnswersFalse) {
    ShowBoth();
    m_system.Desktop().refusesInvalidate = true;
    EXPECT_FALSE(m_main->Invalidate());
    EXPECT_EQ(m_system.RunUntilIdle(), 0u);
}

TEST_F(HeadlessWindowTest, AHiddenWindowIsNotPainted) {
    EXPECT_TRUE(m_main->Invalidate());
    EXPECT_EQ(m_system.RunUntilIdle(), 0u);
}

TEST_F(HeadlessWindowTest, HidingGivesTheFocusToTheOwner) {
    ShowBoth();
    m_panel->Activate();
    m_panelEvents.Clear();
    m_panel->Hide();
    EXPECT_EQ(m_panelEvents.log, (Log{"deactivated", "no focus from another"}));
    EXPECT_EQ(m_system.GetActiveWindow(), m_main.get());
}

TEST_F(HeadlessWindowTest, MinimisingEmptiesTheClientAreaAndRestoringBringsItBack) {
    ShowBoth();
    m_user.Minimize(*m_main);
    m_system.RunUntilIdle();
    EXPECT_TRUE(m_main->IsIconic());
    EXPECT_TRUE(m_main->GetClientRect().IsEmpty());
    EXPECT_EQ(m_mainEvents.log, (Log{"minimized", "deactivated", "no focus"}));
    m_mainEvents.Clear();
    m_user.Restore(*m_main);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_main->GetClientRect(), (Rect{100, 100, 300, 250}));
    EXPECT_EQ(m_mainEvents.log, (Log{"moved", "activated", "focus", "paint"}));
}

TEST_F(HeadlessWindowTest, AMinimisedWindowTakesItsPlaceWhenRestored) {
    ShowBoth();
    m_user.Minimize(*m_main);
    m_system.RunUntilIdle();
    m_mainEvents.Clear();
    m_main->SetClientRect({0, 0, 50, 50});
    EXPECT_TRUE(m_mainEvents.log.empty());
    m_user.Restore(*m_main);
    m_system.RunUntilIdle();
    EXPECT_EQ(m_main->GetClientRect(), (Rect{0, 0, 50, 50}));
}

TEST_F(HeadlessWindowTest, LayeringIsUpToTheDesktop) {
    EXPECT_TRUE(m_panel->SetLayered(true));
    EXPECT_TRUE(m_panel->IsLayered());
    EXPECT_TRUE(m_panel->SetLayered(false));
    m_system.Desktop().allowsLayered = false;
    EXPECT_FALSE(m_panel->SetLayered(true));
    EXPECT_FALSE(m_panel->IsLayered());
}

TEST_F(HeadlessWindowTest, DisablingTakesTheMouseAwayFirst) {
    ShowBoth();
    m_main->SetEnabled(false);
    m_main->SetEnabled(false);
    m_main->SetEnabled(true);
    EXPECT_EQ(m_mainEvents.log, (Log{"cancel", "disabled", "enabled"}));
}

TEST_F(HeadlessWindowTest, RemembersTitleCursorOwnerAndFlashes) {
    m_main->SetTitle(u"\u4E2D");
    m_main->SetCursor(CursorShape::Hand);
    m_panel->SetOwner(m_main.get());
    m_main->Flash(5, 66);
    EXPECT_EQ(m_main->GetTitle(), String(u"\u4E2D"));
    EXPECT_EQ(m_main->GetCursor(), CursorShape::Hand);
    EXPECT_EQ(m_panel->GetOwner(), m_main.get());
    EXPECT_EQ(m_main->GetFlashes(), (std::vector<std::uint32_t>{5}));
}

TEST_F(HeadlessWindowTest, APanelOutlivesItsOwner) {
    ShowBoth();
    m_main.reset();
    EXPECT_EQ(m_panel->GetOwner(), nullptr);
    m_panel->Hide();
    EXPECT_EQ(m_mainEvents.Count("destroyed"), 1u);
}

TEST_F(HeadlessWindowTest, ARefusedWindowRaises) {
    m_system.Desktop().refusesWindows = true;
    EXPECT_THROW(Create(WindowKind::Main, {}, m_mainEvents), Exception);
}

} // namespace
} // namespace Quorvex::GUI
