#include "gui/WheelWords.h"
#include "gui/window/MessageWords.h"
#include "tests/gui/GuiFixture.h"

namespace Quorvex::GUI::Test {
namespace {

/// The main window shows one control, from (10, 10) to (110, 110) in it: (110, 110) to (210, 210) on the desktop.
class MousePathTest : public GuiFixture {
protected:
    MousePathTest() {
        main->quad.SetRect(10, 10, 110, 110);
        main->quad.onMove = &main->quad;
        Show();
    }
    void Queue(MouseMessageNumber number, std::int32_t x, std::int32_t y, std::int32_t delta = 0) {
        gui.QueueMouseMessage(MakeMouseMessage(MainWindow(), number, x, y, MainWindow().GetClientRect(), 0, delta));
    }

    RecordingControl listener{"listener", calls};
};

TEST_F(MousePathTest, AMessageWaitsUntilTheQueueIsHandled) {
    Queue(MouseMessageNumber::Move, 120, 130);
    EXPECT_TRUE(calls.empty());
    gui.HandleGUIMessages();
    EXPECT_EQ(calls, (Calls{"main.Move 20,30"}));
}

TEST_F(MousePathTest, AMoveBecomesAMove) {
    user.MoveMouse(120, 130);
    Settle();
    EXPECT_EQ(calls, (Calls{"main.Move 20,30"}));
}

TEST_F(MousePathTest, ASecondMoveToTheSamePlaceIsNotDelivered) {
    user.MoveMouse(120, 130);
    user.MoveMouse(120, 130);
    Settle();
    EXPECT_EQ(calls, (Calls{"main.Move 20,30"}));
}

TEST_F(MousePathTest, AMoveToTheSamePlaceIsDeliveredWhileNoPanelIsHit) {
    gui.mouseMoveListeners.Add(listener);
    Queue(MouseMessageNumber::Move, 900, 900);
    Queue(MouseMessageNumber::Move, 900, 900);
    gui.HandleGUIMessages();
    EXPECT_EQ(calls, (Calls{"listener.MoveGlobal 900,900", "listener.MoveGlobal 900,900"}));
}

TEST_F(MousePathTest, AButtonDownMovesFirst) {
    Queue(MouseMessageNumber::LeftButtonDown, 120, 130);
    gui.HandleGUIMessages();
    EXPECT_EQ(calls, (Calls{"main.Move 20,30", "main.Down 20,30"}));
}

TEST_F(MousePathTest, ADoubleClickIsASecondButtonDown) {
    user.MoveMouse(120, 130);
    user.DoubleClick();
    Settle();
    EXPECT_EQ(calls,
              (Calls{"main.Move 20,30", "main.Down 20,30", "main.Up 20,30", "main.Down 20,30", "main.Up 20,30"}));
}

TEST_F(MousePathTest, AButtonDownTakesTheMouseAndAnUpGivesItBack) {
    Queue(MouseMessageNumber::LeftButtonDown, 120, 130);
    gui.HandleGUIMessages();
    EXPECT_EQ(system.GetCapture(), &MainWindow());
    Queue(MouseMessageNumber::LeftButtonUp, 125, 130);
    gui.HandleGUIMessages();
    EXPECT_EQ(system.GetCapture(), nullptr);
    EXPECT_EQ(calls, (Calls{"main.Move 20,30", "main.Down 20,30", "main.Move 25,30", "main.Up 25,30"}));
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(MousePathTest, AWheelMovesToTheSignedPlaceFirst) {
    class Wheel : public RecordingControl {
    public:
        using RecordingControl::RecordingControl;
        std::int32_t OnMouseWheel(std::uintptr_t wParam, std::intptr_t lParam) override {
            calls.push_back("wheel " + std::to_string(WheelDelta(wParam)) + " at " +
                            std::to_string(SignedLowHalf(lParam)) + "," + std::to_string(SignedHighHalf(lParam)));
            return 1;
        }
    };
    auto& wheel = AddTo<Wheel>(*main, "wheel", {10, 10, 110, 110});
    gui.MoveMainWindow({-300, -200, 100, 100});
    calls.clear();
    wheel.onMove = &wheel;
    Queue(MouseMessageNumber::Wheel, -280, -170, -240);
    gui.HandleGUIMessages();
    EXPECT_EQ(calls, (Calls{"wheel.Move 20,30", "wheel -240 at -280,-170"}));
}

TEST_F(MousePathTest, AHorizontalWheelMovesAndReachesNoControl) {
    Queue(MouseMessageNumber::HorizontalWheel, 120, 130, 120);
    gui.HandleGUIMessages();
    EXPECT_EQ(calls, (Calls{"main.Move 20,30"}));
    EXPECT_EQ(gui.OnMouseHWheel(0, 0), 0);
}

TEST_F(MousePathTest, AWheelOverNoControlIsDropped) {
    Queue(MouseMessageNumber::Wheel, 300, 300, 120);
    gui.HandleGUIMessages();
    EXPECT_TRUE(calls.empty());
}

TEST_F(MousePathTest, AnUnknownMessageIsLogged) {
    Queue(static_cast<MouseMessageNumber>(516), 120, 130);
    gui.HandleGUIMessages();
    EXPECT_TRUE(calls.empty());
    EXPECT_TRUE(log.HasLineEndingIn("HandleGUIMessages")) << log.Text();
}

TEST_F(MousePathTest, LeavingTheProgramClearsTheHover) {
    user.MoveMouse(120, 130);
    user.MoveMouse(900, 900);
    Settle();
    EXPECT_EQ(calls, (Calls{"main.Move 20,30", "main.Leave"}));
}

TEST_F(MousePathTest, LeavingForAnotherPanelOfTheProgramLeavesTheHoverToTheMove) {
    gui.OnMouseMove(120, 130);
    gui.OnMouseLeave(150, 150);
    EXPECT_EQ(calls, (Calls{"main.Move 20,30"}));
}

TEST_F(MousePathTest, MovingIntoAnotherPanelEndsTheHoverOfTheFirst) {
    const auto other = AddPanel("other", {600, 100, 700, 200});
    Settle();
    calls.clear();
    user.MoveMouse(120, 130);
    user.MoveMouse(610, 120);
    Settle();
    EXPECT_EQ(calls, (Calls{"main.Move 20,30", "main.Leave", "other.Move 10,20", "other.Leave", "other.Move 10,20"}));
}

TEST_F(MousePathTest, AGestureKeepsItsPanelWhileTheButtonIsDown) {
    const auto other = AddPanel("other", {600, 100, 700, 200});
    Settle();
    calls.clear();
    other->quad.onMove = &other->quad;
    user.MoveMouse(120, 130);
    user.PressLeft();
    user.MoveMouse(610, 120);
    Settle();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "main.Leave"), 0);
}

TEST_F(MousePathTest, AListenerComesFirstAndMayEndTheDelivery) {
    gui.mouseMoveListeners.Add(listener);
    user.MoveMouse(120, 130);
    Settle();
    EXPECT_EQ(calls, (Calls{"listener.MoveGlobal 120,130", "main.Move 20,30"}));
    listener.globalResult = 1;
    calls.clear();
    user.MoveMouse(121, 130);
    Settle();
    EXPECT_EQ(calls, (Calls{"listener.MoveGlobal 121,130"}));
}

TEST_F(MousePathTest, ListenersOfTheButtonAndTheWheelEndTheDeliveryToo) {
    user.MoveMouse(120, 130);
    user.PressLeft();
    Settle();
    gui.lButtonUpListeners.Add(listener);
    gui.wheelListeners.Add(listener);
    listener.globalResult = 1;
    calls.clear();
    user.TurnWheel(120);
    user.ReleaseLeft();
    Settle();
    EXPECT_EQ(calls, (Calls{"listener.Wheel", "listener.UpGlobal 120,130"}));
}

TEST_F(MousePathTest, AButtonUpOverNothingIsLoggedWithoutAReportToTheUser) {
    Queue(MouseMessageNumber::LeftButtonUp, 900, 900);
    gui.HandleGUIMessages();
    EXPECT_TRUE(log.HasLineEndingIn("OnMouseLButtonUp")) << log.Text();
    EXPECT_TRUE(log.DesktopText().empty());
}

TEST_F(MousePathTest, TheTopmostOfTwoPanelsInAWindowIsFound) {
    const auto lower = AddPanel("lower", {120, 120, 200, 200});
    const auto upper = AddPanel("upper", {150, 150, 250, 250});
    Settle();
    calls.clear();
    user.MoveMouse(160, 160);
    user.MoveMouse(130, 130);
    Settle();
    EXPECT_EQ(calls.front(), "upper.Move 10,10");
    EXPECT_EQ(calls.back(), "lower.Move 10,10");
    gui.RaisePanel(*lower);
    calls.clear();
    user.MoveMouse(161, 160);
    Settle();
    EXPECT_EQ(calls.front(), "lower.Move 41,40");
}

TEST_F(MousePathTest, TheRightAndBottomEdgeOfAPanelLieOutside) {
    const auto inner = AddPanel("inner", {120, 120, 200, 200});
    Settle();
    calls.clear();
    user.MoveMouse(200, 150);
    Settle();
    EXPECT_EQ(calls.front(), "main.Move 100,50");
}

TEST_F(MousePathTest, APanelThatIsNeverHitLetsTheMouseThrough) {
    class Unhit : public TestPanel {
    public:
        using TestPanel::TestPanel;
        bool IsHit(std::int32_t, std::int32_t) override { return false; }
    };
    const auto tooltip = MakeShared<Unhit>("tooltip", calls, opaqueGreen);
    tooltip->SetRect(120, 120, 200, 200);
    gui.AddPanel(tooltip);
    Settle();
    calls.clear();
    user.MoveMouse(150, 150);
    Settle();
    EXPECT_EQ(calls, (Calls{"main.Move 50,50"}));
}

TEST_F(MousePathTest, AHandlerThatRaisesIsReportedAndTheNextMessageIsHandled) {
    class Raising : public RecordingControl {
    public:
        using RecordingControl::RecordingControl;
        Control* OnMouseLButtonDown(std::int32_t, std::int32_t) override { throw Exception("no click"); }
    };
    AddTo<Raising>(*main, "raising", {200, 200, 300, 300});
    Queue(MouseMessageNumber::LeftButtonDown, 310, 310);
    Queue(MouseMessageNumber::LeftButtonUp, 310, 310);
    gui.HandleGUIMessages();
    EXPECT_TRUE(log.HasLineEndingIn("no click")) << log.Text();
    EXPECT_EQ(calls.back(), "raising.Up 210,210");
}

TEST_F(MousePathTest, WhileAPanelIsModalTheOthersGetNoMouse) {
    const auto dialog = AddPanel("dialog", {600, 100, 700, 200});
    const auto list = AddPanel("list", {620, 190, 680, 300});
    Settle();
    gui.SetModalPanel(dialog.get());
    calls.clear();
    user.MoveMouse(120, 130);
    user.MoveMouse(610, 120);
    user.MoveMouse(630, 250);
    Settle();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "main.Move 20,30"), 0);
    EXPECT_EQ(calls.front(), "dialog.Move 10,20");
    EXPECT_EQ(calls.back(), "list.Move 10,60") << "a list over the dialog is tied to it";
    gui.SetModalPanel(nullptr);
    user.MoveMouse(120, 130);
    Settle();
    EXPECT_EQ(calls.back(), "main.Move 20,30");
}

TEST_F(MousePathTest, AModalPanelInTheMainWindowBlocksTheRestOfIt) {
    const auto dialog = AddPanel("dialog", {300, 300, 400, 380});
    Settle();
    user.MoveMouse(120, 130);
    Settle();
    calls.clear();
    gui.SetModalPanel(dialog.get());
    EXPECT_EQ(calls, (Calls{"main.Leave"}));
    calls.clear();
    user.MoveMouse(121, 130);
    user.MoveMouse(310, 310);
    Settle();
    EXPECT_EQ(calls.front(), "dialog.Move 10,10");
}

TEST_F(MousePathTest, EscapeDuringADragRunsTheKeyAndLeavesTheDrag) {
    user.MoveMouse(120, 130);
    user.PressLeft();
    user.PressKey(27);
    user.MoveMouse(150, 130);
    Settle();
    EXPECT_EQ(calls, (Calls{"main.Move 20,30", "main.Down 20,30", "main.Escape", "main.Move 50,30"}));
    EXPECT_EQ(system.GetCapture(), &MainWindow());
}

} // namespace
} // namespace Quorvex::GUI::Test
