// The two drags of a panel: by its title strip and by its edges.

#include "tests/gui/GuiFixture.h"

namespace Quorvex::GUI::Test {
namespace {

/// A floating panel from (600, 100) to (1000, 400), with controls that leave its edges and its title strip free.
class PanelDragTest : public GuiFixture {
protected:
    PanelDragTest() {
        tool->quad.SetVisible(false);
        tool->SetMovable(true);
        tool->SetResizable(true);
        Show();
    }
    void Drag(std::int32_t fromX, std::int32_t fromY, std::int32_t toX, std::int32_t toY, std::int32_t steps = 4) {
        user.Drag(fromX, fromY, toX, toY, steps);
        Settle();
    }
    void ExpectNoDragLeft() {
        EXPECT_EQ(system.GetCapture(), nullptr);
        calls.clear();
        user.MoveMouse(50, 60);
        Settle();
        EXPECT_TRUE(log.IsEmpty()) << log.Text();
    }

    SharedPtr<TestPanel> tool = AddPanel("tool", {600, 100, 1000, 400});
};

TEST_F(PanelDragTest, TheTitleStripMovesThePanel) {
    Drag(610, 110, 640, 90);
    EXPECT_EQ(tool->GetRect(), (Rect{630, 80, 1030, 380}));
    EXPECT_EQ(WindowOf(*tool).GetClientRect(), (Rect{630, 80, 1030, 380}));
    EXPECT_TRUE(tool->IsChanged());
    ExpectNoDragLeft();
    EXPECT_EQ(tool->GetRect(), (Rect{630, 80, 1030, 380}));
}

TEST_F(PanelDragTest, TheStripReachesFromFiveToTwentyAndLeavesTheCloseButtonFree) {
    EXPECT_EQ(tool->GetControlAt(4, 10), tool->GetControlAt(0, 10)) << "the edge";
    auto* strip = tool->GetControlAt(5, 5);
    EXPECT_NE(strip, nullptr);
    EXPECT_EQ(tool->GetControlAt(377, 19), strip);
    EXPECT_EQ(tool->GetControlAt(378, 10), nullptr);
    EXPECT_EQ(tool->GetControlAt(10, 20), nullptr);
    EXPECT_NE(tool->GetControlAt(4, 10), strip);
}

TEST_F(PanelDragTest, APanelThatIsNotMovableStays) {
    tool->SetMovable(false);
    Drag(610, 110, 640, 90);
    EXPECT_EQ(tool->GetRect(), (Rect{600, 100, 1000, 400}));
    EXPECT_FALSE(tool->IsChanged());
}

TEST_F(PanelDragTest, TheDragGoesOnBelowOtherPanels) {
    Drag(610, 110, 310, 310, 1);
    EXPECT_EQ(tool->GetRect(), (Rect{300, 300, 700, 600}));
}

TEST_F(PanelDragTest, AMoveKeepsTheTieToTheMainWindow) {
    Drag(610, 110, 460, 110);
    ASSERT_EQ(tool->GetSurface().GetParent(), main.get());
    Drag(460, 110, 760, 110);
    EXPECT_EQ(tool->GetSurface().GetParent(), main.get());
    user.Place(MainWindow(), {110, 120, 510, 420});
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{760, 120, 1160, 420}));
}

TEST_F(PanelDragTest, EscapeLeavesTheDragGoing) {
    user.MoveMouse(610, 110);
    user.PressLeft();
    user.PressKey(27);
    user.MoveMouse(620, 120);
    Settle();
    EXPECT_EQ(calls.back(), "main.Escape");
    EXPECT_EQ(tool->GetRect(), (Rect{610, 110, 1010, 410}));
}

TEST_F(PanelDragTest, TheSystemMayEndTheDrag) {
    user.MoveMouse(610, 110);
    user.PressLeft();
    user.MoveMouse(620, 120);
    Settle();
    user.CancelMode(WindowOf(*tool));
    user.MoveMouse(700, 300);
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{610, 110, 1010, 410}));
    ExpectNoDragLeft();
}

TEST_F(PanelDragTest, RemovingThePanelEndsTheDrag) {
    user.MoveMouse(610, 110);
    user.PressLeft();
    Settle();
    gui.RemovePanel(*tool);
    tool.reset();
    user.MoveMouse(620, 120);
    user.ReleaseLeft();
    Settle();
    EXPECT_EQ(system.GetWindows().size(), 1u) << "nothing holds the panel any more";
}

TEST_F(PanelDragTest, AWindowLostInADragEndsIt) {
    user.MoveMouse(610, 110);
    user.PressLeft();
    Settle();
    system.LoseDisplay();
    EXPECT_EQ(tool->GetSurface().GetOwnWindow().get(), nullptr);
}

TEST_F(PanelDragTest, EachEdgeFollowsTheMouse) {
    Drag(602, 250, 582, 260);
    EXPECT_EQ(tool->GetRect(), (Rect{580, 100, 1000, 400})) << "left";
    Drag(997, 250, 1027, 260);
    EXPECT_EQ(tool->GetRect(), (Rect{580, 100, 1030, 400})) << "right";
    Drag(800, 101, 810, 81);
    EXPECT_EQ(tool->GetRect(), (Rect{580, 80, 1030, 400})) << "top";
    Drag(800, 398, 810, 448);
    EXPECT_EQ(tool->GetRect(), (Rect{580, 80, 1030, 450})) << "bottom";
    EXPECT_TRUE(tool->IsChanged());
    ExpectNoDragLeft();
}

TEST_F(PanelDragTest, ACornerFollowsInBothDirections) {
    Drag(601, 101, 591, 121);
    EXPECT_EQ(tool->GetRect(), (Rect{590, 120, 1000, 400}));
    Drag(998, 398, 1008, 408);
    EXPECT_EQ(tool->GetRect(), (Rect{590, 120, 1010, 410}));
    Drag(1008, 122, 1018, 112);
    EXPECT_EQ(tool->GetRect(), (Rect{590, 110, 1020, 410}));
}

TEST_F(PanelDragTest, TheCornersReachAlongTheEdges) {
    Drag(610, 398, 600, 408);
    EXPECT_EQ(tool->GetRect(), (Rect{590, 100, 1000, 410}));
}

TEST_F(PanelDragTest, ARightEdgeStopsAtTheSmallestWidth) {
    user.MoveMouse(998, 250);
    user.PressLeft();
    user.MoveMouse(850, 250);
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{600, 100, 866, 400}));
    user.MoveMouse(700, 250);
    user.MoveMouse(400, 250);
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{600, 100, 866, 400})) << "dragging on has no further effect";
    user.MoveMouse(399, 250);
    user.ReleaseLeft();
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{600, 100, 866, 400})) << "no jump back";
}

TEST_F(PanelDragTest, ALeftEdgeStopsAtTheSmallestWidthAndWaitsForTheMouse) {
    user.MoveMouse(602, 250);
    user.PressLeft();
    user.MoveMouse(900, 250);
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{734, 100, 1000, 400}));
    user.MoveMouse(740, 250);
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{734, 100, 1000, 400}));
    user.MoveMouse(722, 250);
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{720, 100, 1000, 400}));
}

TEST_F(PanelDragTest, TopAndBottomStopAtTheSmallestHeight) {
    Drag(800, 101, 800, 390);
    EXPECT_EQ(tool->GetRect(), (Rect{600, 242, 1000, 400}));
    Drag(800, 399, 800, 250);
    EXPECT_EQ(tool->GetRect(), (Rect{600, 242, 1000, 400}));
}

TEST_F(PanelDragTest, APanelThatIsNotResizableKeepsItsSize) {
    tool->SetResizable(false);
    Drag(998, 250, 1050, 250);
    EXPECT_EQ(tool->GetRect(), (Rect{600, 100, 1000, 400}));
}

TEST_F(PanelDragTest, AnUpThatWentAstrayDoesNotEndInAJump) {
    user.MoveMouse(610, 110);
    user.PressLeft();
    user.PressLeft();
    user.MoveMouse(620, 110);
    user.ReleaseLeft();
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{610, 100, 1010, 400}));
}

TEST_F(PanelDragTest, TheCursorTellsTheEdge) {
    const auto cursorAt = [&](std::int32_t x, std::int32_t y) {
        user.MoveMouse(x, y);
        Settle();
        return WindowOf(*tool).GetCursor();
    };
    EXPECT_EQ(cursorAt(601, 250), CursorShape::SizeHorizontal);
    EXPECT_EQ(cursorAt(999, 250), CursorShape::SizeHorizontal);
    EXPECT_EQ(cursorAt(800, 101), CursorShape::SizeVertical);
    EXPECT_EQ(cursorAt(800, 399), CursorShape::SizeVertical);
    EXPECT_EQ(cursorAt(601, 101), CursorShape::SizeFalling);
    EXPECT_EQ(cursorAt(999, 399), CursorShape::SizeFalling);
    EXPECT_EQ(cursorAt(999, 101), CursorShape::SizeRising);
    EXPECT_EQ(cursorAt(601, 399), CursorShape::SizeRising);
    EXPECT_EQ(cursorAt(800, 250), CursorShape::Arrow);
}

TEST_F(PanelDragTest, EverythingGrowsWithTheScale) {
    SetScale(2);
    EXPECT_EQ(ResizeAction::SmallestWidth(), 532);
    EXPECT_EQ(ResizeAction::SmallestHeight(), 316);
    tool->SetRect(600, 100, 1600, 700);
    auto* strip = tool->GetControlAt(10, 10);
    EXPECT_NE(strip, nullptr);
    EXPECT_EQ(tool->GetControlAt(955, 39), strip);
    EXPECT_NE(tool->GetControlAt(9, 10), strip);
    EXPECT_EQ(tool->GetControlAt(956, 39), nullptr);
    EXPECT_EQ(tool->GetControlAt(500, 40), nullptr);
    EXPECT_NE(tool->GetControlAt(500, 590), nullptr);
    SetScale(4);
    EXPECT_EQ(ResizeAction::SmallestWidth(), 1064);
}

} // namespace
} // namespace Quorvex::GUI::Test
