#include "tests/gui/GuiFixture.h"

namespace Quorvex::GUI::Test {
namespace {

class GlobalPaintTest : public GuiFixture {};

TEST_F(GlobalPaintTest, APanelWithAColouredQuadShowsInTheWindow) {
    main->SetBackgroundColor(opaqueGreen);
    main->quad.SetRect(10, 20, 30, 40);
    Show();
    EXPECT_TRUE(MainWindow().IsVisible());
    EXPECT_EQ(MainWindow().GetKind(), WindowKind::Main);
    EXPECT_EQ(MainWindow().GetPicture().width, 400u);
    EXPECT_EQ(MainWindow().GetPicture().height, 300u);
    EXPECT_EQ(PixelAt(MainWindow(), 10, 20), redPixel);
    EXPECT_EQ(PixelAt(MainWindow(), 29, 39), redPixel);
    EXPECT_EQ(PixelAt(MainWindow(), 9, 20), greenPixel);
    EXPECT_EQ(PixelAt(MainWindow(), 30, 39), greenPixel);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(GlobalPaintTest, TheDefaultBackgroundIsGrey) {
    main->quad.SetVisible(false);
    Show();
    EXPECT_EQ(PixelAt(MainWindow(), 0, 0), (Pixel{138, 138, 134, 255}));
}

TEST_F(GlobalPaintTest, TheWindowIsMadeHiddenAndShownAfterItsFirstFrame) {
    gui.CreateMainWindow();
    EXPECT_FALSE(MainWindow().IsVisible());
    EXPECT_EQ(MainWindow().GetShowCount(), 0u);
    EXPECT_EQ(MainWindow().GetClientRect(), (Rect{100, 100, 500, 400}));
    EXPECT_EQ(calls, (Calls{"ContextCreated"}));
    gui.ShowMainWindow();
    EXPECT_TRUE(MainWindow().IsVisible());
    EXPECT_EQ(MainWindow().GetShowCount(), 1u);
}

TEST_F(GlobalPaintTest, WhatWasUncoveredIsShownAgainWithoutBeingDrawn) {
    Show();
    const int painted = main->quad.paintCount;
    const auto shown = MainWindow().GetShowCount();
    user.Uncover(MainWindow());
    Settle();
    EXPECT_EQ(main->quad.paintCount, painted);
    EXPECT_EQ(MainWindow().GetShowCount(), shown + 1);
}

TEST_F(GlobalPaintTest, AnInvalidatedPanelIsDrawnAgain) {
    Show();
    const int painted = main->quad.paintCount;
    main->Invalidate();
    Settle();
    EXPECT_EQ(main->quad.paintCount, painted + 1);
}

TEST_F(GlobalPaintTest, ManyInvalidationsOfABatchCostOnePaint) {
    Show();
    const int painted = main->quad.paintCount;
    MouseMessage message{MouseMessageNumber::Move, 0, 0, 150, 150, &MainWindow()};
    class Invalidating : public RecordingControl {
    public:
        using RecordingControl::RecordingControl;
        Control* OnMouseMove(std::int32_t, std::int32_t) override {
            getGUI().Invalidate();
            InvalidatePanel();
            return this;
        }
    };
    AddTo<Invalidating>(*main, "x", {0, 0, 400, 300});
    for (int i = 0; i < 5; ++i) {
        message.screenX += 1;
        gui.QueueMouseMessage(message);
    }
    gui.HandleGUIMessages();
    EXPECT_EQ(main->quad.paintCount, painted + 1);
    EXPECT_FALSE(MainWindow().IsInvalid());
}

TEST_F(GlobalPaintTest, APaintWithinAPaintReturnsTrueAtOnce) {
    bool isInnerRunning = false;
    main->quad.onPaint = [&] { isInnerRunning = gui.OnGlobalPaint(); };
    gui.CreateMainWindow();
    EXPECT_FALSE(gui.OnGlobalPaint());
    EXPECT_TRUE(isInnerRunning);
    EXPECT_EQ(main->quad.paintCount, 1);
}

TEST_F(GlobalPaintTest, APaintMessageWithinAPaintShowsTheLastFrameAndComesAgain) {
    Show();
    const auto shown = MainWindow().GetShowCount();
    main->quad.onPaint = [&] {
        MainWindow().PaintNow();
        EXPECT_EQ(MainWindow().GetShowCount(), shown + 1);
        EXPECT_TRUE(MainWindow().IsInvalid());
    };
    main->Invalidate();
    gui.OnGlobalPaint();
    EXPECT_EQ(MainWindow().GetShowCount(), shown + 2);
    EXPECT_EQ(PixelAt(MainWindow(), 5, 5), redPixel);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST_F(GlobalPaintTest, AFailingControlEndsThePaintAndTheProgramGoesOn) {
    Show();
    main->quad.onPaint = [] { throw Exception("no texture"); };
    main->Invalidate();
    Settle();
    EXPECT_TRUE(log.HasLineEndingIn("no texture")) << log.Text();
    EXPECT_FALSE(gui.GetContext()->renderTarget);
    main->quad.onPaint = {};
    const int painted = main->quad.paintCount;
    EXPECT_FALSE(gui.OnGlobalPaint());
    EXPECT_EQ(main->quad.paintCount, painted + 1);
}

TEST_F(GlobalPaintTest, AskingForAPaintWhileDrawingAsksForNothing) {
    Show();
    main->quad.onPaint = [&] { main->Invalidate(); };
    main->Invalidate();
    Settle();
    EXPECT_FALSE(MainWindow().IsInvalid());
}

TEST_F(GlobalPaintTest, TheFirstPaintIsToldOnce) {
    gui.CreateMainWindow();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "FirstPaint"), 0);
    gui.ShowMainWindow();
    gui.OnGlobalPaint();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "FirstPaint"), 1);
}

TEST_F(GlobalPaintTest, WaitsForTheCompositionUnlessMinimised) {
    Show();
    const auto flushed = system.GetFlushCount();
    gui.OnGlobalPaint();
    EXPECT_EQ(system.GetFlushCount(), flushed + 1);
    MainWindow().SetIconic(true);
    gui.OnGlobalPaint();
    EXPECT_EQ(system.GetFlushCount(), flushed + 1);
}

TEST_F(GlobalPaintTest, AMinimisedWindowIsNotPainted) {
    Show();
    MainWindow().SetIconic(true);
    const auto shown = MainWindow().GetShowCount();
    MainWindow().PaintNow();
    EXPECT_EQ(MainWindow().GetShowCount(), shown);
}

TEST_F(GlobalPaintTest, ARefusedInvalidationSkipsThePaint) {
    Show();
    system.Desktop().refusesInvalidate = true;
    const int painted = main->quad.paintCount;
    main->Invalidate();
    Settle();
    EXPECT_EQ(main->quad.paintCount, painted);
    EXPECT_NE(log.Text().find("InvalidateRect failed with error code"), std::string::npos) << log.Text();
}

TEST_F(GlobalPaintTest, APanelOfNoSizeIsNotDrawn) {
    Show();
    const int painted = main->quad.paintCount;
    main->SetRect(100, 100, 100, 400);
    EXPECT_FALSE(gui.OnGlobalPaint());
    EXPECT_EQ(main->quad.paintCount, painted);
}

TEST_F(GlobalPaintTest, ANewSizeGivesANewFrame) {
    Show();
    user.Place(MainWindow(), {100, 100, 350, 280});
    Settle();
    EXPECT_EQ(MainWindow().GetPicture().width, 250u);
    EXPECT_EQ(MainWindow().GetPicture().height, 180u);
    EXPECT_EQ(PixelAt(MainWindow(), 249, 179), redPixel);
}

TEST_F(GlobalPaintTest, AnUnknownWindowTypeIsReportedAndRaises) {
    Show();
    main->GetSurface().SetWindowType("Window", nullptr);
    try {
        main->EnterPaint();
        FAIL() << "nothing was raised";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "Panel::EnterPaint");
    }
    EXPECT_TRUE(log.HasLineEndingIn("Panel::EnterPaint")) << log.Text();
}

TEST_F(GlobalPaintTest, AFailingOnCreateIsReportedAndRaisesUntilItWorks) {
    main->failsToCreate = true;
    for (int i = 1; i <= 2; ++i) {
        try {
            gui.CreateMainWindow();
            FAIL() << "nothing was raised";
        } catch (const Exception& exception) {
            EXPECT_STREQ(exception.what(), "Panel::EnterPaint: OnCreate failed");
        }
        EXPECT_EQ(main->createCount, i);
    }
    EXPECT_TRUE(log.HasLineEndingIn("Panel::EnterPaint: OnCreate failed")) << log.Text();
    main->failsToCreate = false;
    gui.CreateMainWindow();
    gui.CreateMainWindow();
    EXPECT_EQ(main->createCount, 3);
}

TEST_F(GlobalPaintTest, ARefusedWindowRaises) {
    system.Desktop().refusesWindows = true;
    EXPECT_THROW(gui.CreateMainWindow(), Exception);
    EXPECT_FALSE(main->GetSurface().HasOwnWindow());
}

} // namespace
} // namespace Quorvex::GUI::Test
