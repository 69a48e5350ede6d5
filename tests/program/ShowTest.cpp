#include "tests/program/ProgramFixture.h"

using namespace Quorvex;
using namespace Quorvex::App::Test;

// What a user sees who opens a picture, zooms, drags and sizes the window.

TEST_F(ProgramTest, OpensAnEmptyWindowInTheMiddleOfTheWorkArea) {
    EXPECT_EQ(Window().GetClientRect(), (GUI::Rect{448, 136, 1472, 904}));
    EXPECT_TRUE(Window().IsVisible());
    EXPECT_EQ(Title(), "Varnolite");
    EXPECT_TRUE(ShownPixel(0, 0) == (Pixel{138, 136, 136, 255}));
    EXPECT_TRUE(ShownPixel(1023, 767) == (Pixel{138, 136, 136, 255}));
}

TEST_F(ProgramTest, ShowsAFileWithItsTitleFittedToTheWindow) {
    Open(Write("a.bmp", MakeBitmap(32, 32)));
    EXPECT_TRUE(View().IsFitToWindow());
    EXPECT_TRUE(Title().starts_with("Varnolite - "));
    EXPECT_TRUE(Title().ends_with("a.bmp"));
    ExpectMagnified(32, 32, 24);
}

TEST_F(ProgramTest, ShowsEachPixelAsOneAt100Percent) {
    Open(Write("a.bmp", MakeBitmap(50, 31)));
    for (const std::int32_t size : {333, 400, 401}) {
        Resize(size, size - 100);
        ZoomTo100Percent();
        ASSERT_EQ(View().GetTransform().inverseZoom, 1.0);
        ExpectMagnified(50, 31, 1);
    }
}

TEST_F(ProgramTest, EnlargesByNearestWhereTheUserHasChosenIt) {
    Open(Write("a.bmp", MakeBitmap(50, 31)));
    Resize(401, 333);
    ZoomTo100Percent();
    TurnWheel(8);
    ExpectMagnified(50, 31, 2);
    TurnWheel(8);
    ExpectMagnified(50, 31, 4);
}

TEST_F(ProgramTest, ChoosesTheSamplingMethodByTheZoom) {
    using Mode = Platform::Video::EnumResamplingMode;
    Application().GetSettings().InterpolationG100.Set(Mode::Cubic);
    Open(Write("a.bmp", MakeBitmap(50, 31)));
    ZoomTo100Percent();
    EXPECT_EQ(View().GetResampling().mode, Mode::Nearest);
    TurnWheel(1);
    EXPECT_EQ(View().GetResampling().mode, Mode::Cubic);
    TurnWheel(-2);
    EXPECT_EQ(View().GetResampling().mode, Mode::Area);
}

TEST_F(ProgramTest, StopsAtBothLimitsOfTheZoom) {
    Open(Write("a.bmp", MakeBitmap(50, 31)));
    TurnWheel(-200);
    EXPECT_EQ(View().GetTransform().inverseZoom, 16.0);
    TurnWheel(200);
    EXPECT_EQ(View().GetTransform().inverseZoom, 0.00390625);
}

TEST_F(ProgramTest, KeepsThePointUnderTheMouseWhenTheWheelTurns) {
    Open(Write("a.bmp", MakeBitmap(200, 200)));
    ZoomTo100Percent();
    const GUI::Rect window = Window().GetClientRect();
    const auto before = View().ComputeImageRect(View().GetTransform().scrollX, View().GetTransform().scrollY);
    const std::int32_t x = before.x0 + 40;
    const std::int32_t y = before.y0 + 60;
    user.MoveMouse(window.left + x, window.top + y);
    for (int i = 0; i < 16; ++i)
        user.TurnWheel(120);
    Settle();
    const auto after = View().ComputeImageRect(View().GetTransform().scrollX, View().GetTransform().scrollY);
    EXPECT_NEAR(View().ScreenToImageX(after, x, y), 40, 0.5);
    EXPECT_NEAR(View().ScreenToImageY(after, x, y), 60, 0.5);
}

TEST_F(ProgramTest, DragsThePictureAndShowsItWhereItWasDraggedTo) {
    Open(Write("a.bmp", MakeBitmap(50, 31)));
    ZoomTo100Percent();
    const auto before = View().ComputeImageRect(0, 0);
    const GUI::Rect window = Window().GetClientRect();
    user.Drag(window.left + 500, window.top + 300, window.left + 523, window.top + 289, 7);
    Settle();
    const auto after = View().ComputeImageRect(View().GetTransform().scrollX, View().GetTransform().scrollY);
    EXPECT_EQ(after.x0, before.x0 + 23);
    EXPECT_EQ(after.y0, before.y0 - 11);
    ExpectMagnified(50, 31, 1);
}

TEST_F(ProgramTest, HoldsADraggedPictureAtTheLimitUntilTheMouseComesBack) {
    Open(Write("a.bmp", MakeBitmap(50, 31)));
    ZoomTo100Percent();
    const GUI::Rect window = Window().GetClientRect();
    user.MoveMouse(window.left + 500, window.top + 300);
    user.PressLeft();
    user.MoveMouse(window.left + 5000, window.top + 300);
    Settle();
    EXPECT_LT(View().GetTransform().scrollX, -4000) << "the stored offset follows the mouse";
    const std::uint32_t shown = Window().GetShowCount();
    ExpectMagnified(50, 31, 1);
    user.MoveMouse(window.left + 4000, window.top + 300);
    Settle();
    EXPECT_GT(Window().GetShowCount(), shown);
    ExpectMagnified(50, 31, 1);
    user.ReleaseLeft();
    Settle();
    const auto [limitX, limitY] = View().ClampScroll(-1e9, 0);
    EXPECT_EQ(View().GetTransform().scrollX, limitX);
    EXPECT_FALSE(View().IsDragging());
}

TEST_F(ProgramTest, FitsAgainWhenTheWindowIsSized) {
    Open(Write("a.bmp", MakeBitmap(32, 16)));
    for (const auto& [width, height] : {std::pair{640, 480}, {320, 400}, {64, 64}}) {
        Resize(width, height);
        ExpectMagnified(32, 16, std::min(width / 32, height / 16));
    }
}

TEST_F(ProgramTest, LeavesTheFitWithTheWheelAndKeepsTheZoomThen) {
    Open(Write("a.bmp", MakeBitmap(32, 16)));
    TurnWheel(1);
    const double zoom = View().GetTransform().inverseZoom;
    EXPECT_FALSE(View().IsFitToWindow());
    Resize(500, 500);
    EXPECT_EQ(View().GetTransform().inverseZoom, zoom);
}

TEST_F(ProgramTest, StaysQuietWithAnEmptyClientArea) {
    Open(Write("a.bmp", MakeBitmap(32, 16)));
    Resize(200, 0);
    user.Minimize(Window());
    Settle();
    user.Restore(Window());
    Resize(64, 32);
    ExpectMagnified(32, 16, 2);
    EXPECT_EQ(log.Text(), "");
}
