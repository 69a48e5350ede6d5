#include "tests/gui/GuiFixture.h"
#include "tests/gui/RecordingContext.h"

namespace Quorvex::GUI::Test {
namespace {

using Platform::Video::BufferFormat;

/// A GUI on a device that records instead of drawing.
class RecordingGUI : public TestGUI {
public:
    using TestGUI::TestGUI;
    SharedPtr<Platform::Video::Context> CreateSoftwareContext(const SharedPtr<Win32Window>&) override {
        SharedPtr<Platform::Video::Context> made(device = new RecordingContext(calls));
        return made;
    }
    RecordingContext* device = nullptr;
};

class FrameCycleTest : public testing::Test {
protected:
    FrameCycleTest() {
        main->SetRect(100, 50, 500, 350);
        gui.AddMainPanel(main);
        gui.CreateMainWindow();
        gui.ShowMainWindow();
        calls.clear();
    }
    RecordingRenderer& Renderer() { return *gui.device->renderers.front(); }

    Quorvex::Test::LogCapture log;
    Calls calls;
    HeadlessWindowSystem system;
    RecordingGUI gui{system, calls};
    SharedPtr<TestPanel> main = MakeShared<TestPanel>("main", calls, opaqueRed);
};

TEST_F(FrameCycleTest, RunsInItsOrder) {
    main->Invalidate();
    gui.OnGlobalPaint();
    EXPECT_EQ(calls, (Calls{"BeginPaint 100", "EnableBlending", "Translate -100,-50", "Translate 100,50",
                            "Translate -100,-50", "Translate 100,50", "DisableBlending", "EndPaint", "Present"}));
    EXPECT_FALSE(gui.GetContext()->renderTarget);
}

TEST_F(FrameCycleTest, ACleanPanelIsOnlyPresented) {
    gui.OnGlobalPaint();
    EXPECT_EQ(calls, (Calls{"Present"}));
}

TEST_F(FrameCycleTest, ALostDeviceIsDrawnAgainUntilItPresents) {
    Renderer().lostPresents = 3;
    gui.OnGlobalPaint();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Present"), 3);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "BeginPaint 100"), 2);
    EXPECT_EQ(calls.back(), "Present");
}

TEST_F(FrameCycleTest, ANestedFrameGivesTheOuterOneItsTargetBack) {
    main->quad.onPaint = [&] {
        main->quad.onPaint = {};
        Renderer().lostPresents = 2;
        gui.HandlePaint(*gui.GetMainWindow());
        EXPECT_EQ(gui.GetContext()->renderTarget.get(), &Renderer());
        EXPECT_TRUE(gui.GetContext()->blendingEnabled);
        EXPECT_EQ(gui.GetContext()->translateX, 0);
    };
    main->Invalidate();
    gui.OnGlobalPaint();
    EXPECT_FALSE(gui.GetContext()->renderTarget);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "BeginPaint 100"), 2);
}

TEST_F(FrameCycleTest, AFailingPresentIsReportedAndEndsThePaint) {
    Renderer().raisesOnPresent = true;
    EXPECT_FALSE(gui.OnGlobalPaint());
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Present"), 1);
    EXPECT_TRUE(log.HasLineEndingIn("cannot present")) << log.Text();
}

TEST_F(FrameCycleTest, ASeeThroughWindowIsClearedToNothing) {
    main->SetBackgroundColor({0.1f, 0.1f, 0.1f, 0.67f});
    gui.OnGlobalPaint();
    EXPECT_EQ(calls.at(1), "BeginPaint 0");
    EXPECT_TRUE(main->GetSurface().IsSeeThrough());
}

TEST_F(FrameCycleTest, ASurfaceWithoutAlphaIsNotSeeThrough) {
    Renderer().hasAlpha = false;
    main->SetBackgroundColor({0.1f, 0.1f, 0.1f, 0.67f});
    gui.OnGlobalPaint();
    EXPECT_EQ(calls.front(), "BeginPaint 67");
}

TEST_F(FrameCycleTest, AsksForSurfacesInTheOrderOfTheirDepth) {
    EXPECT_EQ(gui.device->wantedFormats,
              (std::vector{BufferFormat::BGRA32, BufferFormat::BGRX32, BufferFormat::BGR24, BufferFormat::BGR565}));
}

TEST_F(FrameCycleTest, TheFramesOfAllPanelsAreDrawnUpwardsAndPresentedDownwards) {
    const auto other = MakeShared<TestPanel>("other", calls, opaqueGreen);
    other->SetRect(600, 50, 700, 350);
    gui.AddPanel(other);
    main->quad.onPaint = [&] { calls.push_back("main"); };
    other->quad.onPaint = [&] { calls.push_back("other"); };
    gui.Invalidate();
    gui.OnGlobalPaint();
    const auto at = [&](const char* call) { return std::find(calls.begin(), calls.end(), call) - calls.begin(); };
    EXPECT_LT(at("main"), at("other"));
    EXPECT_LT(at("other"), at("Present"));
    EXPECT_EQ(gui.device->renderers.size(), 2u);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Present"), 2);
}

} // namespace
} // namespace Quorvex::GUI::Test
