#include "tests/view/VarnoliteFixture.h"

using namespace Quorvex;
using namespace Quorvex::View;

namespace {

class VarnoliteTest : public VarnoliteFixture {};

} // namespace

TEST_F(VarnoliteTest, CallsFitChangedOnEverySetZoom) {
    Show(20, 10);
    fitCount = 0;
    view.SetZoom(1.0);
    view.SetZoom(1.0);
    EXPECT_EQ(fitCount, 2);
    EXPECT_FALSE(view.IsFitToWindow());
}

TEST_F(VarnoliteTest, CallsZoomChangedOnlyWhereTheLimitedZoomDiffers) {
    Show(20, 10);
    view.SetZoom(16.0);
    zoomCount = 0;
    view.SetZoom(100.0);
    EXPECT_EQ(zoomCount, 0);
    view.SetZoom(8.0);
    EXPECT_EQ(zoomCount, 1);
}

TEST_F(VarnoliteTest, ZoomsWithoutAnImageButDoesNotScrollFitOrTakeTheWheel) {
    view.SetZoom(4.0);
    EXPECT_EQ(view.GetTransform().inverseZoom, 4.0);
    view.ZoomStep(8);
    EXPECT_NEAR(view.GetTransform().inverseZoom, 2.0, 1e-12);
    view.ScrollBy(5, 5);
    EXPECT_EQ(view.GetTransform().scrollX, 0);
    EXPECT_EQ(view.OnMouseWheel(Wheel(120), Position(150, 100)), 0);
    view.FitToWindow();
    EXPECT_NEAR(view.GetTransform().inverseZoom, 2.0, 1e-12);
}

TEST_F(VarnoliteTest, LeavesTheFitByScrollingAndTellsOnce) {
    Show(20, 10);
    fitCount = 0;
    view.ScrollBy(0, 0);
    EXPECT_TRUE(view.IsFitToWindow());
    view.ScrollBy(1, 0);
    view.ScrollBy(1, 0);
    EXPECT_EQ(fitCount, 1);
    EXPECT_FALSE(view.IsFitToWindow());
}

TEST_F(VarnoliteTest, ScrollsByScreenPixelsAtAnyZoom) {
    Show(2000, 1000);
    view.SetZoom(2.0);
    view.ScrollBy(3, -4);
    EXPECT_EQ(view.GetTransform().scrollX, -6);
    EXPECT_EQ(view.GetTransform().scrollY, 8);
}

TEST_F(VarnoliteTest, ZeroesTheScrollWhenItFits) {
    Show(2000, 1000);
    view.SetZoom(2.0);
    view.ScrollBy(3, -4);
    view.FitToWindow();
    EXPECT_EQ(view.GetTransform().scrollX, 0);
    EXPECT_EQ(view.GetTransform().scrollY, 0);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 10.0);
}

TEST_F(VarnoliteTest, EnlargesASmallImageToFitUpToTheLimit) {
    Show(1, 1);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 1 / 150.0);
    panel->SetRect(0, 0, 2000, 2000);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, smallestInverseZoom);
}

TEST_F(VarnoliteTest, FitsADraggedViewOnlyAfterwards) {
    Show(100, 100);
    const double zoom = view.GetTransform().inverseZoom;
    view.OnMouseLButtonDown(10, 10);
    panel->SetRect(0, 0, 400, 400);
    EXPECT_EQ(view.GetTransform().inverseZoom, zoom);
    view.OnMouseLButtonUp(10, 10);
}

TEST_F(VarnoliteTest, ReturnsNullFromADisabledView) {
    Show(100, 100);
    view.SetEnabled(false);
    EXPECT_EQ(view.OnMouseLButtonDown(10, 10), nullptr);
    EXPECT_FALSE(view.IsDragging());
    EXPECT_EQ(view.OnMouseWheel(Wheel(120), Position(150, 100)), 0);
}

TEST_F(VarnoliteTest, StandsInTheThreeListsWhileItIsDragged) {
    Show(100, 100);
    EXPECT_EQ(view.OnMouseLButtonDown(10, 10), &view);
    EXPECT_TRUE(gui.mouseMoveListeners.Contains(view));
    EXPECT_TRUE(gui.lButtonUpListeners.Contains(view));
    EXPECT_TRUE(gui.wheelListeners.Contains(view));
    EXPECT_EQ(view.OnMouseLeave(), nullptr);
    EXPECT_FALSE(view.IsDragging());
    EXPECT_FALSE(gui.mouseMoveListeners.Contains(view));
    EXPECT_FALSE(gui.lButtonUpListeners.Contains(view));
    EXPECT_FALSE(gui.wheelListeners.Contains(view));
}

TEST_F(VarnoliteTest, TakesDesktopCoordinatesFromTheListeners) {
    Show(2000, 2000);
    view.SetZoom(1.0);
    view.OnMouseLButtonDown(10, 10);
    EXPECT_NE(view.OnMouseMoveGlobal(100 + 15, 50 + 3), 0);
    EXPECT_EQ(view.GetTransform().scrollX, -5);
    EXPECT_EQ(view.GetTransform().scrollY, 7);
    view.OnMouseLButtonUpGlobal(0, 0);
    EXPECT_FALSE(view.IsDragging());
    EXPECT_EQ(view.OnMouseMoveGlobal(0, 0), 0);
}

TEST_F(VarnoliteTest, LetsTheMouseKeepItsPlaceOnThePictureWhenTheWindowIsSizedInADrag) {
    Show(2000, 2000);
    view.SetZoom(1.0);
    view.OnMouseLButtonDown(50, 50);
    view.SetRect(0, 0, 240, 190);
    // The centre has gone 20 right and 20 down, and the picture with it.
    view.OnMouseMove(70, 70);
    EXPECT_EQ(view.GetTransform().scrollX, 0);
    EXPECT_EQ(view.GetTransform().scrollY, 0);
    view.SetToolbarHeight(10);
    view.OnMouseMove(70, 75);
    EXPECT_EQ(view.GetTransform().scrollY, 0);
    view.OnMouseLButtonUp(70, 75);
}

TEST_F(VarnoliteTest, ZoomsByTheWheelAboutTheMouse) {
    Show(2000, 2000);
    view.SetZoom(1.0);
    // 30 right and 20 above of the panel's centre at 200, 125.
    EXPECT_NE(view.OnMouseWheel(Wheel(8 * 120), Position(230, 105)), 0);
    EXPECT_NEAR(view.GetTransform().inverseZoom, 0.5, 1e-12);
    EXPECT_NEAR(view.GetTransform().scrollX, 15, 1e-9);
    EXPECT_NEAR(view.GetTransform().scrollY, -10, 1e-9);
}

TEST_F(VarnoliteTest, ReadsTheWheelsDeltaAndPositionWithTheirSigns) {
    Show(2000, 2000);
    view.SetZoom(1.0);
    view.OnMouseWheel(Wheel(-120), Position(-300, -25));
    EXPECT_NEAR(view.GetTransform().inverseZoom, std::exp2(1.0 / 8), 1e-12);
    EXPECT_GT(view.GetTransform().scrollX, 0);
}

TEST_F(VarnoliteTest, KeepsTheZoomForAFractionOfANotchThatReachesNoGridPoint) {
    Show(2000, 2000);
    view.SetZoom(1.0);
    view.OnMouseWheel(Wheel(50), Position(230, 105));
    EXPECT_EQ(view.GetTransform().inverseZoom, 1.0);
}

TEST_F(VarnoliteTest, TellsOfARotationAndFitsTheTurnedImage) {
    Show(2000, 500);
    view.SetRotation(90);
    EXPECT_EQ(rotationCount, 1);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 2000.0 / 150);
}

TEST_F(VarnoliteTest, LeavesRoomForTheRulerWhileItIsShown) {
    Show(160, 130);
    view.SetRulerVisible(true);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 1.0);
    view.SetRulerVisible(true);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 1.0);
    view.SetRulerVisible(false);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 130 / 150.0);
}

TEST_F(VarnoliteTest, IsHitItselfInPlaceOfItsChildren) {
    EXPECT_EQ(view.GetControlAt(3, 3), &view);
}

TEST_F(VarnoliteTest, ReachesExactlyOneHundredPercentBy32NotchesFromTheLowerLimit) {
    Show(2000, 2000);
    view.SetZoom(largestInverseZoom);
    for (int notch = 0; notch < 32; ++notch) {
        EXPECT_NE(view.GetTransform().inverseZoom, 1.0) << notch;
        view.OnMouseWheel(Wheel(120), Position(230, 105));
    }
    EXPECT_EQ(view.GetTransform().inverseZoom, 1.0);
}

TEST_F(VarnoliteTest, KeepsZoomTurnAndPlaceForAnotherImageOutsideTheFit) {
    Show(2000, 2000);
    view.SetZoom(2.0);
    view.SetRotation(90);
    view.ScrollBy(30, -40);
    const ViewTransform before = view.GetTransform();
    Show(1000, 3000);
    EXPECT_EQ(view.GetTransform().inverseZoom, 2.0);
    EXPECT_EQ(view.GetTransform().rotation, 90);
    EXPECT_EQ(view.GetTransform().scrollX, before.scrollX);
    EXPECT_EQ(view.GetTransform().scrollY, before.scrollY);
}

TEST_F(VarnoliteTest, FitsAnotherImageUnlessItIsDragged) {
    Show(100, 150);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 1.0);
    Show(100, 300);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 2.0);
    view.OnMouseLButtonDown(10, 10);
    Show(100, 150);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 2.0);
    view.OnMouseLButtonUp(10, 10);
}

TEST_F(VarnoliteTest, IsEmptiedByAnEmptyImage) {
    Show(100, 100);
    EXPECT_TRUE(view.HasImage());
    view.SetImage({}, {});
    EXPECT_FALSE(view.HasImage());
    EXPECT_EQ(view.OnMouseWheel(Wheel(120), Position(150, 100)), 0);
}

TEST_F(VarnoliteTest, KeepsTheOffsetOfADragPastTheLimitUntilTheButtonIsUp) {
    Show(100, 100);
    view.SetZoom(1.0);
    // 50 pixels of the image stay inside: half of it and half of the view less 50.
    const double limitX = 50 + (100 - 50), limitY = 50 + (75 - 50);
    view.OnMouseLButtonDown(50, 50);
    view.OnMouseMove(1050, -950);
    EXPECT_EQ(view.GetTransform().scrollX, -1000);
    EXPECT_EQ(view.GetTransform().scrollY, 1000);
    view.OnMouseLButtonUp(1050, -950);
    EXPECT_EQ(view.GetTransform().scrollX, -limitX);
    EXPECT_EQ(view.GetTransform().scrollY, limitY);
}

TEST_F(VarnoliteTest, ClampsADraggedOffsetWhenTheMouseIsLost) {
    Show(100, 100);
    view.SetZoom(1.0);
    view.OnMouseLButtonDown(50, 50);
    view.OnMouseMove(1050, 50);
    view.OnMouseLeave();
    EXPECT_EQ(view.GetTransform().scrollX, -100);
    EXPECT_EQ(view.OnMouseMove(2050, 50), nullptr) << "the drag has ended";
    EXPECT_EQ(view.GetTransform().scrollX, -100);
}

TEST_F(VarnoliteTest, ZoomsAndTurnsADraggedViewWithoutAClamp) {
    Show(100, 100);
    view.SetZoom(1.0);
    view.OnMouseLButtonDown(50, 50);
    view.OnMouseMove(1050, 50);
    view.SetZoom(2.0);
    EXPECT_EQ(view.GetTransform().scrollX, -1000);
    view.ZoomStepAt(8, 0, 0);
    EXPECT_EQ(view.GetTransform().scrollX, -1000);
    view.SetRotation(180);
    EXPECT_NEAR(view.GetTransform().scrollX, 1000, 1e-2);
    view.OnMouseLButtonUp(1050, 50);
    EXPECT_EQ(view.GetTransform().scrollX, 100);
}

TEST_F(VarnoliteTest, ClampsTheScrollWhenItIsTurned) {
    Show(100, 100);
    view.SetZoom(1.0);
    view.ScrollBy(-90, 0);
    // The point 90 to the right comes to lie 90 above the centre, where the view ends earlier.
    view.SetRotation(90);
    EXPECT_EQ(view.GetTransform().scrollY, -75);
    Show(2000, 2000);
    view.ScrollBy(-500, 0);
    view.SetImage({}, {});
    view.SetRotation(270);
    EXPECT_EQ(view.GetTransform().scrollX, -50) << "without an image too";
}

TEST_F(VarnoliteTest, LeavesTheRulerMoreRoomOnAFinerScreen) {
    GUI::SetScale(2);
    Show(120, 110);
    view.SetRulerVisible(true);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 1.0) << "80 columns and 40 rows of 200 x 150";
    view.SetRulerVisible(false);
    GUI::SetScale(1);
    EXPECT_DOUBLE_EQ(view.GetTransform().inverseZoom, 110 / 150.0);
}
