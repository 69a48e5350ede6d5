#include "tests/gui/GuiFixture.h"

#include <thread>

namespace Quorvex::GUI::Test {
namespace {

class WindowEventsTest : public GuiFixture {
protected:
    WindowEventsTest() { Show(); }
    IWindowEvents& Events(Panel& panel) { return WindowOf(panel).GetEvents(); }
    /// A floating panel beside the main window.
    SharedPtr<TestPanel> Float() {
        auto panel = AddPanel("tool", {600, 100, 900, 300});
        Settle();
        calls.clear();
        return panel;
    }
};

TEST_F(WindowEventsTest, AMoveOfTheMainWindowMovesItsPanel) {
    user.Place(MainWindow(), {130, 90, 530, 390});
    Settle();
    EXPECT_EQ(main->GetRect(), (Rect{130, 90, 530, 390}));
    EXPECT_EQ(calls.front(), "Moved 30,-10");
}

TEST_F(WindowEventsTest, AnUnchangedRectangleIsIgnored) {
    const int rects = main->rectCount;
    Events(*main).OnMovedOrSized(false);
    EXPECT_EQ(main->rectCount, rects);
    EXPECT_TRUE(calls.empty());
}

TEST_F(WindowEventsTest, AnEmptyRectangleIsIgnored) {
    MainWindow().SetIconic(true);
    Events(*main).OnMovedOrSized(false);
    EXPECT_EQ(main->GetRect(), (Rect{100, 100, 500, 400}));
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(WindowEventsTest, MinimisingChangesNothing) {
    user.Minimize(MainWindow());
    Settle();
    EXPECT_EQ(main->GetRect(), (Rect{100, 100, 500, 400}));
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(WindowEventsTest, AMinimisedWindowWithASizeIsLogged) {
    Events(*main).OnMovedOrSized(true);
    EXPECT_TRUE(log.HasLineEndingIn("WM_SIZE")) << log.Text();
}

TEST_F(WindowEventsTest, AMoveOfAFloatingPanelMovesItAlone) {
    const auto panel = Float();
    user.Place(WindowOf(*panel), {650, 100, 950, 300});
    Settle();
    EXPECT_EQ(panel->GetRect(), (Rect{650, 100, 950, 300}));
    EXPECT_TRUE(calls.empty());
}

TEST_F(WindowEventsTest, ActivationIsToldToThePanel) {
    const auto panel = Float();
    Events(*panel).OnActivated(true);
    Events(*panel).OnActivated(false);
    EXPECT_EQ(calls, (Calls{"tool.Active", "tool.Inactive"}));
}

TEST_F(WindowEventsTest, FocusFromAnotherProgramReachesThePanelAndRepaintsTheOthers) {
    const auto panel = Float();
    panel->drawsFocus = true;
    const auto hidden = AddPanel("hidden", {600, 400, 900, 500});
    Settle();
    hidden->drawsFocus = true;
    hidden->SetVisible(false);
    Settle();
    calls.clear();
    const int painted = panel->quad.paintCount;
    Events(*main).OnFocusChanged(false, nullptr);
    EXPECT_EQ(calls, (Calls{"main.FocusLost"}));
    EXPECT_FALSE(gui.HasFocus());
    Settle();
    EXPECT_EQ(panel->quad.paintCount, painted + 1);
    const int gained = main->focusGained;
    Events(*main).OnFocusChanged(true, nullptr);
    EXPECT_TRUE(gui.HasFocus());
    EXPECT_EQ(main->focusGained, gained + 1);
}

TEST_F(WindowEventsTest, FocusBetweenTwoWindowsOfTheProgramIsIgnored) {
    const auto panel = Float();
    Events(*main).OnFocusChanged(false, &WindowOf(*panel));
    EXPECT_TRUE(calls.empty());
    EXPECT_TRUE(gui.HasFocus());
}

TEST_F(WindowEventsTest, DisablingAnotherWindowBringsTheModalOneToTheFront) {
    const auto panel = Float();
    gui.SetModalPanel(panel.get());
    system.BringToFront(MainWindow());
    MainWindow().SetEnabled(false);
    EXPECT_EQ(system.GetWindows().front(), &WindowOf(*panel));
}

TEST_F(WindowEventsTest, DisablingTheModalWindowItselfLeavesTheOrder) {
    const auto panel = Float();
    const auto other = AddPanel("other", {950, 100, 999, 300});
    Settle();
    gui.SetModalPanel(panel.get());
    system.BringToFront(WindowOf(*other));
    WindowOf(*panel).SetEnabled(false);
    EXPECT_EQ(system.GetWindows().front(), &WindowOf(*other));
    WindowOf(*panel).SetEnabled(true);
    MainWindow().SetEnabled(true);
    EXPECT_EQ(system.GetWindows().front(), &WindowOf(*other));
}

TEST_F(WindowEventsTest, ClosingTheMainPanelEndsTheProgram) {
    user.Close(MainWindow());
    Settle();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "DestroyWindow"), 1);
    EXPECT_EQ(system.DispatchNextMessage(), IWindowSystem::Dispatched::Quit);
    EXPECT_TRUE(gui.GetPanels().empty());
    EXPECT_TRUE(system.GetWindows().empty());
    EXPECT_EQ(gui.GetContext().get(), nullptr);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(WindowEventsTest, ClosingAnyOtherPanelIsItsOwnMatter) {
    const auto panel = Float();
    user.Close(WindowOf(*panel));
    Settle();
    EXPECT_FALSE(gui.HoldsPanel(*panel));
    EXPECT_TRUE(gui.HoldsPanel(*main));
    EXPECT_FALSE(static_cast<HeadlessWindow&>(panel->GetSurface().GetOwnWindow()->GetPlatformWindow()).IsVisible());
}

TEST_F(WindowEventsTest, ALostDisplayReleasesThePanelsAndEndsTheLoop) {
    const auto panel = Float();
    system.LoseDisplay();
    EXPECT_FALSE(main->GetSurface().HasOwnWindow());
    EXPECT_FALSE(panel->GetSurface().HasOwnWindow());
    EXPECT_EQ(main->quad.quad.get(), nullptr);
    EXPECT_EQ(gui.Run(), 0);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(WindowEventsTest, AWorkerMayPostToAWindowThatOthersHaveDestroyed) {
    HeadlessWindow& lost = MainWindow();
    // Each worker keeps the window that it reports to until it is waited for, which is later than the window's end.
    IPlatformWindow& asWorkersKnowIt = lost;
    lost.Destroy();
    gui.HandleGUIMessages();
    EXPECT_FALSE(main->GetSurface().HasOwnWindow());
    std::thread([&] { asWorkersKnowIt.Post(UserMessage::LoadFinished, 1, 2); }).join();
    calls.clear();
    Settle();
    EXPECT_TRUE(calls.empty()) << "the message is dropped";
    EXPECT_EQ(system.GetWindows(), (std::vector{&lost})) << "it ends with the GUI";
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(WindowEventsTest, TheEndOfTheMainWindowEndsTheLoop) {
    MainWindow().Destroy();
    EXPECT_EQ(gui.Run(), 0);
}

TEST_F(WindowEventsTest, TheEndOfAnyOtherWindowLeavesTheLoopRunning) {
    const auto panel = Float();
    WindowOf(*panel).Destroy();
    system.SetWhenIdle(HeadlessWindowSystem::WhenIdle::Quit);
    EXPECT_EQ(system.DispatchNextMessage(), IWindowSystem::Dispatched::Quit) << "nothing waits";
    panel->Invalidate();
    Settle();
    EXPECT_TRUE(panel->GetSurface().HasOwnWindow()) << "the next paint makes another one";
    gui.OnClose();
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(WindowEventsTest, NewSystemColoursReachTheTitlesAndRepaint) {
    const int painted = main->quad.paintCount;
    system.Desktop().hasGradientCaptions = false;
    system.Desktop().colors[SystemColor::ActiveCaption] = 0x000000FF;
    user.ChangeColors();
    Settle();
    EXPECT_EQ(main->TitleColor(), (Color{0.0f, 0.0f, 255 * 0.003921569f, 1.0f}));
    EXPECT_EQ(main->quad.paintCount, painted + 1);
}

TEST_F(WindowEventsTest, CancelModeEndsTheGestureAndTheHover) {
    main->quad.onMove = &main->quad;
    user.MoveMouse(120, 130);
    user.PressLeft();
    Settle();
    calls.clear();
    user.CancelMode(MainWindow());
    Settle();
    EXPECT_EQ(calls, (Calls{"main.Leave"}));
    EXPECT_EQ(system.GetCapture(), nullptr);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(WindowEventsTest, AClickOnAFloatingPanelActivatesTheMainWindow) {
    const auto panel = Float();
    user.SwitchTo(nullptr);
    user.MoveMouse(620, 120);
    user.PressLeft();
    Settle();
    EXPECT_EQ(system.GetActiveWindow(), &MainWindow());
}

TEST_F(WindowEventsTest, WithAModalPanelAClickElsewhereFlashesIt) {
    const auto panel = Float();
    gui.SetModalPanel(panel.get());
    system.Desktop().flashCount = 5;
    Events(*main).OnMouseActivate();
    EXPECT_EQ(WindowOf(*panel).GetFlashes(), (std::vector<std::uint32_t>{5}));
}

TEST_F(WindowEventsTest, TheFlashLastsAnEighthOfTheBlinkOfTheCaret) {
    EXPECT_EQ(FlashTimeoutMilliseconds(800), 100u);
    EXPECT_EQ(FlashTimeoutMilliseconds(0), 66u);
    EXPECT_EQ(FlashTimeoutMilliseconds(UINT32_MAX), 66u);
}

TEST_F(WindowEventsTest, KeysReachTheWindowsPanel) {
    main->SetFocus(&main->quad);
    main->quad.usesKeys = true;
    calls.clear();
    user.PressKey(65);
    user.ReleaseKey(65);
    Settle();
    EXPECT_EQ(calls, (Calls{"main.KeyDown 65", "main.KeyUp 65"}));
}

TEST_F(WindowEventsTest, KeysOfTheMainWindowReachThePanelThatHasTheKeyboardFirst) {
    const auto panel = Float();
    panel->SetFocus(&panel->quad);
    main->quad.usesKeys = true;
    calls.clear();
    EXPECT_FALSE(gui.OnKeyDown(*main, 65, 0));
    EXPECT_FALSE(gui.OnKeyUp(*main, 65, 0));
    panel->quad.usesKeys = true;
    EXPECT_TRUE(gui.OnKeyDown(*main, 66, 0));
    EXPECT_EQ(calls, (Calls{"tool.KeyDown 65", "tool.KeyUp 65", "tool.KeyDown 66"}));
    panel->SetFocus(nullptr);
    calls.clear();
    gui.OnKeyDown(*main, 67, 0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(WindowEventsTest, DroppedFilesReachTheHook) {
    user.DropFiles(MainWindow(), {"a.bmp", "b.bmp"});
    Settle();
    EXPECT_EQ(calls, (Calls{"Dropped 2"}));
}

TEST_F(WindowEventsTest, TheUserMessageReachesTheHook) {
    MainWindow().Post(0x400, 7, -3);
    Settle();
    EXPECT_EQ(calls, (Calls{"User 7,-3"}));
}

TEST_F(WindowEventsTest, TheInvalidateMessageRepaints) {
    const int painted = main->quad.paintCount;
    Events(*main).OnUserMessage(0x401, 0, 0);
    Settle();
    EXPECT_EQ(main->quad.paintCount, painted + 1);
    EXPECT_TRUE(calls.empty());
}

TEST_F(WindowEventsTest, AnotherUserMessageDoesNothing) {
    Events(*main).OnUserMessage(0x402, 1, 2);
    EXPECT_TRUE(calls.empty());
}

TEST_F(WindowEventsTest, TimersReachTheHook) {
    system.SetTimer(9, 50);
    system.AdvanceTime(60);
    Settle();
    EXPECT_EQ(calls, (Calls{"Timer 9"}));
}

TEST_F(WindowEventsTest, AnExceptionIsReportedWithItsTextAndStops) {
    gui.raisesOnUserMessage = [] { throw Exception("told so"); };
    MainWindow().Post(0x400, 0, 0);
    Settle();
    EXPECT_TRUE(log.HasLineEndingIn("told so")) << log.Text();
}

TEST_F(WindowEventsTest, AnythingElseIsReportedAsUnknown) {
    gui.raisesOnUserMessage = [] { throw 5; };
    MainWindow().Post(0x400, 0, 0);
    Settle();
    EXPECT_TRUE(log.HasLineEndingIn("unknown exception in WndProc")) << log.Text();
}

TEST_F(WindowEventsTest, MissingMemoryIsReportedAsUnknown) {
    gui.raisesOnUserMessage = [] { throw std::bad_alloc(); };
    MainWindow().Post(0x400, 0, 0);
    Settle();
    EXPECT_TRUE(log.HasLineEndingIn("unknown exception in WndProc")) << log.Text();
}

TEST_F(WindowEventsTest, CompositionThatEndsMakesASeeThroughPanelOpaque) {
    const auto panel = AddPanel("tool", {600, 100, 900, 300});
    panel->SetBackgroundColor({0.1f, 0.1f, 0.1f, 0.67f});
    panel->quad.SetVisible(false);
    Settle();
    EXPECT_TRUE(WindowOf(*panel).GetPicture().hasAlpha);
    EXPECT_EQ(PixelAt(WindowOf(*panel), 5, 5).alpha, 170);
    user.ChangeComposition(false);
    Settle();
    EXPECT_FALSE(WindowOf(*panel).GetPicture().hasAlpha);
    EXPECT_FALSE(panel->GetSurface().IsSeeThrough());
    user.ChangeComposition(true);
    Settle();
    EXPECT_TRUE(WindowOf(*panel).GetPicture().hasAlpha);
}

TEST_F(WindowEventsTest, TheLoopDispatchesUntilQuit) {
    system.PostQuit(3);
    EXPECT_EQ(gui.Run(), 3);
}

} // namespace
} // namespace Quorvex::GUI::Test
