// Panels in their GUI: the list, the windows they get, and the ties between them.

#include "gui/ViewerStyle.h"
#include "tests/gui/GuiFixture.h"

namespace Quorvex::GUI::Test {
namespace {

class PanelsTest : public GuiFixture {
protected:
    void ExpectRaises(const SharedPtr<Panel>& panel, const char* text) {
        try {
            gui.AddPanel(panel);
            FAIL() << "nothing was raised";
        } catch (const Exception& exception) {
            EXPECT_STREQ(exception.what(), text);
        }
    }
    static bool IsShown(Panel& panel) {
        const auto& window = panel.GetSurface().GetOwnWindow();
        return window && window->GetPlatformWindow().IsVisible();
    }
};

TEST_F(PanelsTest, ANullPanelIsRefused) {
    ExpectRaises({}, "GUI::AddPanel: Panel is nullptr");
}

TEST_F(PanelsTest, APanelIsAddedOnce) {
    ExpectRaises(main, "GUI::AddPanel: Panel was already added");
}

TEST_F(PanelsTest, APanelOutsideOfAGuiHasNone) {
    Panel panel;
    try {
        panel.getGUI();
        FAIL() << "nothing was raised";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "Panel::getGUI");
    }
    EXPECT_EQ(panel.GetPanel(), &panel);
}

TEST_F(PanelsTest, ControlsReachTheirGuiThroughThePanel) {
    EXPECT_EQ(&main->quad.getGUI(), &gui);
    EXPECT_EQ(main->quad.GetPanel(), main.get());
    EXPECT_EQ(&gui.GetRoot(), &gui);
}

TEST_F(PanelsTest, TheMainPanelLiesLowest) {
    GUI other(system, u"a", "a");
    const auto first = MakeShared<Panel>();
    const auto second = MakeShared<Panel>();
    other.AddPanel(first);
    other.AddMainPanel(second);
    EXPECT_EQ(other.GetPanels().front(), second);
    EXPECT_EQ(other.GetMainPanel(), second);
}

TEST_F(PanelsTest, APanelWithinTheMainOneIsDrawnOverItAtItsPlace) {
    const auto panel = AddPanel("inner", {150, 120, 200, 180}, {0.0f, 1.0f, 0.0f, 0.5f});
    panel->SetBackgroundColor({0.0f, 0.0f, 0.0f, 0.0f});
    Show();
    EXPECT_FALSE(panel->GetSurface().HasOwnWindow());
    EXPECT_EQ(panel->GetSurface().GetWindowType(), "SystemWindow");
    EXPECT_EQ(panel->GetRenderer(), main->GetRenderer());
    EXPECT_EQ(PixelAt(MainWindow(), 49, 20), redPixel);
    EXPECT_EQ(PixelAt(MainWindow(), 50, 20), (Pixel{0, 127, 128, 255}));
    EXPECT_EQ(PixelAt(MainWindow(), 99, 79), (Pixel{0, 127, 128, 255}));
    EXPECT_EQ(PixelAt(MainWindow(), 100, 79), redPixel);
}

TEST_F(PanelsTest, APanelInAnothersWindowPaintsItsOwnBackground) {
    const auto panel = AddPanel("inner", {150, 120, 200, 180});
    panel->quad.SetVisible(false);
    Show();
    EXPECT_EQ(PixelAt(MainWindow(), 60, 30), (Pixel{138, 138, 134, 255}));
}

TEST_F(PanelsTest, APanelOverTheEdgeOfTheMainOneGetsAWindow) {
    const auto panel = AddPanel("tool", {450, 120, 600, 180});
    Show();
    EXPECT_EQ(panel->GetSurface().GetWindowType(), "OwnGUIWindow");
    EXPECT_EQ(panel->GetSurface().GetParent(), main.get());
    EXPECT_EQ(WindowOf(*panel).GetKind(), WindowKind::Panel);
    EXPECT_EQ(WindowOf(*panel).GetOwner(), &MainWindow());
    EXPECT_EQ(WindowOf(*panel).GetClientRect(), (Rect{450, 120, 600, 180}));
    EXPECT_TRUE(IsShown(*panel));
    EXPECT_EQ(PixelAt(WindowOf(*panel), 149, 59), greenPixel);
    EXPECT_EQ(PixelAt(MainWindow(), 390, 30), redPixel);
}

TEST_F(PanelsTest, APanelThatLeavesTheMainWindowGetsAWindowAndComesBackWithoutOne) {
    const auto panel = AddPanel("tool", {150, 120, 200, 180});
    Show();
    panel->SetRect(480, 120, 530, 180);
    Settle();
    EXPECT_TRUE(IsShown(*panel));
    EXPECT_EQ(PixelAt(MainWindow(), 60, 30), redPixel) << "the place where it was is drawn anew";
    panel->SetRect(150, 120, 200, 180);
    Settle();
    EXPECT_FALSE(panel->GetSurface().HasOwnWindow());
    EXPECT_EQ(system.GetWindows().size(), 1u);
    EXPECT_EQ(PixelAt(MainWindow(), 60, 30), greenPixel);
    EXPECT_EQ(panel->createCount, 1);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(PanelsTest, APanelBesideTheMainOneHasAFreeWindow) {
    const auto panel = AddPanel("tool", {600, 120, 700, 180});
    Show();
    EXPECT_EQ(panel->GetSurface().GetWindowType(), "SystemWindow");
    EXPECT_TRUE(IsShown(*panel));
    EXPECT_EQ(panel->GetSurface().GetParent(), nullptr);
}

TEST_F(PanelsTest, WindowsStandInTheOrderOfThePanels) {
    const auto a = AddPanel("a", {450, 120, 600, 180});
    const auto b = AddPanel("b", {450, 150, 600, 250});
    Show();
    EXPECT_EQ(system.GetWindows(), (std::vector{&WindowOf(*b), &WindowOf(*a), &MainWindow()}));
    gui.RaisePanel(*a);
    Settle();
    EXPECT_EQ(system.GetWindows(), (std::vector{&WindowOf(*a), &WindowOf(*b), &MainWindow()}));
}

TEST_F(PanelsTest, AMoveOfAPanelWithAWindowDrawsNothingAnew) {
    const auto panel = AddPanel("tool", {600, 120, 700, 180});
    Show();
    const int painted = main->quad.paintCount;
    panel->SetRect(620, 130, 720, 190);
    Settle();
    EXPECT_EQ(WindowOf(*panel).GetClientRect(), (Rect{620, 130, 720, 190}));
    EXPECT_EQ(main->quad.paintCount, painted);
}

TEST_F(PanelsTest, MovingTheMainWindowMovesThePanelsTiedToIt) {
    const auto inner = AddPanel("inner", {150, 120, 200, 180});
    const auto tool = AddPanel("tool", {450, 120, 600, 180});
    const auto over = AddPanel("over", {590, 150, 690, 170});
    const auto free = AddPanel("free", {700, 120, 800, 180});
    Show();
    ASSERT_EQ(over->GetSurface().GetParent(), tool.get());
    const int rects = tool->rectCount;
    user.Place(MainWindow(), {110, 80, 510, 380});
    Settle();
    EXPECT_EQ(inner->GetRect(), (Rect{160, 100, 210, 160}));
    EXPECT_EQ(tool->GetRect(), (Rect{460, 100, 610, 160}));
    EXPECT_EQ(over->GetRect(), (Rect{600, 130, 700, 150}));
    EXPECT_EQ(free->GetRect(), (Rect{700, 120, 800, 180}));
    EXPECT_EQ(tool->rectCount, rects) << "on the same context the rectangle is shifted";
    EXPECT_EQ(WindowOf(*tool).GetClientRect(), (Rect{460, 100, 610, 160}));
}

TEST_F(PanelsTest, ATiedPanelWithoutRendererMovesBySetRect) {
    const auto tool = AddPanel("tool", {450, 120, 600, 180});
    Show();
    tool->DeleteContextObjects();
    const int rects = tool->rectCount;
    gui.OnWindowMoved(5, 6);
    EXPECT_EQ(tool->GetRect(), (Rect{455, 126, 605, 186}));
    EXPECT_EQ(tool->rectCount, rects + 1);
}

TEST_F(PanelsTest, APanelThatMovesOffTheMainOneStaysTied) {
    const auto tool = AddPanel("tool", {450, 120, 600, 180});
    Show();
    tool->SetRect(600, 120, 750, 180);
    Settle();
    EXPECT_EQ(tool->GetSurface().GetParent(), main.get());
    user.Place(MainWindow(), {110, 100, 510, 400});
    Settle();
    EXPECT_EQ(tool->GetRect(), (Rect{610, 120, 760, 180}));
}

TEST_F(PanelsTest, APanelCannotBeTiedInACircle) {
    const auto a = AddPanel("a", {450, 120, 600, 180});
    const auto b = AddPanel("b", {600, 120, 700, 180});
    a->SetParent(b.get());
    b->SetParent(a.get());
    EXPECT_EQ(b->GetSurface().GetParent(), nullptr);
    EXPECT_TRUE(log.HasLineEndingIn("Panel::SetParent")) << log.Text();
    a->SetParent(a.get());
    EXPECT_EQ(a->GetSurface().GetParent(), b.get());
}

TEST_F(PanelsTest, ARemovedPanelIsHiddenAndComesBack) {
    const auto tool = AddPanel("tool", {450, 120, 600, 180});
    Show();
    gui.RemovePanel(*tool);
    EXPECT_FALSE(gui.HoldsPanel(*tool));
    EXPECT_FALSE(IsShown(*tool));
    gui.RemovePanel(*tool);
    Settle();
    gui.AddPanel(tool);
    Settle();
    EXPECT_TRUE(IsShown(*tool));
    EXPECT_EQ(tool->createCount, 1);
}

TEST_F(PanelsTest, APanelRemovedFromTheMainWindowIsNoLongerDrawn) {
    const auto inner = AddPanel("inner", {150, 120, 200, 180});
    Show();
    EXPECT_EQ(PixelAt(MainWindow(), 60, 30), greenPixel);
    gui.RemovePanel(*inner);
    Settle();
    EXPECT_EQ(PixelAt(MainWindow(), 60, 30), redPixel);
}

TEST_F(PanelsTest, AHiddenPanelIsNotDrawnAndComesBack) {
    const auto inner = AddPanel("inner", {150, 120, 200, 180});
    const auto tool = AddPanel("tool", {450, 120, 600, 180});
    Show();
    inner->SetVisible(false);
    tool->SetVisible(false);
    EXPECT_FALSE(IsShown(*tool));
    Settle();
    EXPECT_FALSE(IsShown(*tool));
    EXPECT_EQ(PixelAt(MainWindow(), 60, 30), redPixel);
    inner->SetVisible(true);
    tool->SetVisible(true);
    Settle();
    EXPECT_TRUE(IsShown(*tool));
    EXPECT_EQ(PixelAt(MainWindow(), 60, 30), greenPixel);
}

TEST_F(PanelsTest, RemovingAPanelHidesTheWindowsAboveItUntilTheNextPaint) {
    const auto tool = AddPanel("tool", {600, 120, 700, 180});
    const auto list = AddPanel("list", {650, 150, 750, 250});
    Show();
    ASSERT_EQ(list->GetSurface().GetParent(), tool.get());
    ASSERT_EQ(WindowOf(*list).GetOwner(), &WindowOf(*tool));
    gui.RemovePanel(*tool);
    EXPECT_FALSE(IsShown(*list));
    Settle();
    EXPECT_TRUE(IsShown(*list));
    EXPECT_EQ(WindowOf(*list).GetOwner(), &MainWindow());
    EXPECT_EQ(list->GetSurface().GetParent(), nullptr);
}

TEST_F(PanelsTest, RemovingThePanelThatHostsOthersGivesThemWindows) {
    const auto tool = AddPanel("tool", {600, 120, 700, 220});
    const auto inner = AddPanel("inner", {620, 150, 650, 180});
    Show();
    ASSERT_EQ(inner->GetSurface().GetHost(), tool.get());
    gui.RemovePanel(*tool);
    Settle();
    EXPECT_TRUE(IsShown(*inner));
}

TEST_F(PanelsTest, RemovingAPanelReleasesTheMouseThatItHeld) {
    const auto tool = AddPanel("tool", {600, 120, 700, 220});
    Show();
    user.MoveMouse(610, 130);
    user.PressLeft();
    Settle();
    ASSERT_EQ(system.GetCapture(), &WindowOf(*tool));
    calls.clear();
    gui.RemovePanel(*tool);
    EXPECT_EQ(system.GetCapture(), nullptr);
    EXPECT_EQ(calls, (Calls{"tool.Leave"}));
}

TEST_F(PanelsTest, APanelMayRemoveItselfWithinAClick) {
    class Closing : public RecordingControl {
    public:
        using RecordingControl::RecordingControl;
        Control* OnMouseLButtonUp(std::int32_t, std::int32_t) override {
            GetPanel()->Close();
            return this;
        }
    };
    auto tool = AddPanel("tool", {600, 120, 700, 220});
    AddTo<Closing>(*tool, "closing", {0, 0, 100, 100});
    Show();
    const Panel* address = tool.get();
    tool.reset();
    user.MoveMouse(610, 130);
    user.PressLeft();
    user.ReleaseLeft();
    Settle();
    EXPECT_EQ(gui.GetPanels().size(), 1u);
    EXPECT_NE(gui.GetPanels().front().get(), address);
    EXPECT_EQ(system.GetWindows().size(), 1u);
}

TEST_F(PanelsTest, AllContextObjectsGoWithTheGui) {
    const auto tool = AddPanel("tool", {450, 120, 600, 180});
    const auto removed = AddPanel("removed", {600, 120, 700, 220});
    Show();
    gui.RemovePanel(*removed);
    gui.Shutdown();
    EXPECT_EQ(main->quad.quad.get(), nullptr);
    EXPECT_EQ(tool->quad.quad.get(), nullptr);
    EXPECT_EQ(removed->quad.quad.get(), nullptr) << "panels that have left hold objects too";
    EXPECT_EQ(gui.GetContext().get(), nullptr);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(PanelsTest, AnObjectThatStaysKeepsTheContext) {
    Show();
    const auto kept = gui.GetContext()->CreateVertexBuffer2D(1);
    gui.Shutdown();
    EXPECT_NE(gui.GetContext().get(), nullptr);
}

TEST_F(PanelsTest, APanelThatRefusesToReleaseIsReportedUpToTheGui) {
    Show();
    main->quad.canRelease = false;
    gui.Shutdown();
    EXPECT_TRUE(log.HasLineEndingIn("ControlList::DeleteContextObjects")) << log.Text();
    EXPECT_TRUE(log.HasLineEndingIn("Panel::DeleteContextObjects")) << log.Text();
    EXPECT_TRUE(log.HasLineEndingIn("GUI::DeleteContextObjects")) << log.Text();
}

TEST_F(PanelsTest, AWindowThatSomebodyKeepsIsReportedAtTheEnd) {
    const auto tool = AddPanel("tool", {600, 120, 700, 220});
    Show();
    const SharedPtr<Win32Window> kept = tool->GetSurface().GetOwnWindow();
    tool->SetRect(150, 150, 200, 200);
    Settle();
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
    gui.OnClose();
    EXPECT_TRUE(log.HasLineEndingIn("GUI::OnClose")) << log.Text();
}

TEST_F(PanelsTest, ClosingTwiceTakesLeaveOnce) {
    Show();
    gui.OnClose();
    gui.OnClose();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "DestroyWindow"), 1);
}

TEST_F(PanelsTest, ContextObjectsAreMadeAgainAfterALoss) {
    Show();
    main->DeleteContextObjects();
    EXPECT_FALSE(main->GetRenderer());
    EXPECT_FALSE(MainWindow().IsVisible()) << "a window goes with its renderer";
    gui.ShowMainWindow();
    EXPECT_TRUE(MainWindow().IsVisible());
    EXPECT_EQ(PixelAt(MainWindow(), 5, 5), redPixel);
    EXPECT_EQ(main->createCount, 2);
    EXPECT_EQ(main->quad.buildCount, 2);
}

TEST_F(PanelsTest, ASeeThroughPanelLetsTheDesktopThrough) {
    const auto tool = AddPanel("tool", {600, 120, 700, 220});
    tool->SetBackgroundColor({1.0f, 1.0f, 1.0f, 0.67f});
    tool->quad.SetRect(0, 0, 10, 10);
    Show();
    EXPECT_TRUE(WindowOf(*tool).GetPicture().hasAlpha);
    EXPECT_EQ(PixelAt(WindowOf(*tool), 50, 50), (Pixel{170, 170, 170, 170})) << "premultiplied";
    EXPECT_EQ(PixelAt(WindowOf(*tool), 5, 5), greenPixel);
}

TEST_F(PanelsTest, TheStyleIsOpaqueWhereTheWindowCannotBeSeenThrough) {
    system.Desktop().allowsLayered = false;
    const auto tool = AddPanel("tool", {600, 120, 700, 220});
    tool->SetBackgroundColor({0.1f, 0.1f, 0.1f, 0.67f});
    Show();
    EXPECT_EQ(main->GetStyle(), gui.GetStyle());
    EXPECT_EQ(tool->GetStyle()->GetPanelBackgroundColor(), (Color{0.245588f, 0.243f, 0.243f, 1.0f}));
    EXPECT_EQ(tool->GetStyle(), tool->GetStyle());
    tool->SetRect(150, 150, 200, 200);
    Settle();
    EXPECT_EQ(tool->GetStyle(), gui.GetStyle()) << "within the main window it is blended";
}

TEST_F(PanelsTest, MonitorsThatTellNothingGiveNoPanelAWindow) {
    system.Desktop().monitors.clear();
    system.Desktop().primaryScreen = {};
    const auto tool = AddPanel("tool", {450, 120, 600, 180});
    Show();
    EXPECT_FALSE(tool->GetSurface().HasOwnWindow());
    EXPECT_EQ(PixelAt(MainWindow(), 360, 30), greenPixel);
}

TEST_F(PanelsTest, WithoutAListOfMonitorsThePrimaryScreenCounts) {
    system.Desktop().monitors.clear();
    system.Desktop().primaryScreen = {0, 0, 400, 1080};
    const auto tool = AddPanel("tool", {350, 120, 450, 180});
    Show();
    EXPECT_EQ(tool->GetSurface().GetWindowType(), "OwnGUIWindow") << "it crosses the screen's edge";
}

} // namespace
} // namespace Quorvex::GUI::Test
