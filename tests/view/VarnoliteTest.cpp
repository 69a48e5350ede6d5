#include "view/Varnolite.h"

#include "data/Image.h"
#include "tests/gui/GuiFixture.h"
#include "video/Renderer.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace Quorvex::View;

namespace {

/// Writes down what it was given, and whether blending was on.
class RecordingOverlay final : public IViewOverlay {
public:
    RecordingOverlay(std::string overlayName, std::vector<std::string>& calls, GUI::GUI& root)
        : name(std::move(overlayName)), record(calls), gui(root) {}
    void SetRect(const GUI::Rect& newRect) override { rect = newRect; }
    void PaintOver(const Platform::Video::ImageRect& newImageRect, const SharedPtr<Data::ImageBase>& image,
                   double newScale) override {
        record.push_back(name + (gui.GetContext()->blendingEnabled ? " blended" : " opaque"));
        imageRect = newImageRect;
        userImage = image.get();
        scale = newScale;
    }

    std::string name;
    std::vector<std::string>& record;
    GUI::GUI& gui;
    GUI::Rect rect;
    Platform::Video::ImageRect imageRect;
    const Data::ImageBase* userImage = nullptr;
    double scale = 0;
};

/// A panel that the view fills, as the application's does.
class ViewPanel final : public GUI::Panel {
public:
    ViewPanel() {
        add(view);
        view.SetEnabled(true);
    }
    void SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) override {
        Panel::SetRect(newLeft, newTop, newRight, newBottom);
        view.SetRect(0, 0, newRight - newLeft, newBottom - newTop);
    }
    Varnolite view;
};

class VarnoliteTest : public testing::Test {
protected:
    VarnoliteTest() : gui(system, u"test", "test"), panel(new ViewPanel()) {
        panel->SetRect(100, 50, 300, 200);
        gui.AddMainPanel(panel);
        gui.CreateMainWindow();
        gui.ShowMainWindow();
        view.fitChanged.Bind(this, &VarnoliteTest::CountFit);
        view.zoomChanged.Bind(this, &VarnoliteTest::CountZoom);
        view.rotationChanged.Bind(this, &VarnoliteTest::CountRotation);
    }
    ~VarnoliteTest() override { gui.Shutdown(); }

    void Show(std::uint32_t width, std::uint32_t height, bool hasAlpha = false) {
        SharedPtr<Data::ImageBase> image = Data::CreateImage(Data::ColorTypeEnum::BGRAUInt8, width, height);
        image->clear(77);
        image->HasAlpha = hasAlpha ? 1 : 0;
        Platform::Video::Image2DMeta display;
        display.CreateFromMemory(gui.GetContext(), image);
        view.SetImage(display, image);
        shownImage = image.get();
    }
    void Paint() { gui.OnGlobalPaint(); }

    void CountFit(Varnolite&) { ++fitCount; }
    void CountZoom(Varnolite&) { ++zoomCount; }
    void CountRotation(Varnolite&) { ++rotationCount; }

    static std::uintptr_t Wheel(std::int32_t delta) { return static_cast<std::uintptr_t>(std::uint32_t(delta) << 16); }
    static std::intptr_t Position(std::int32_t x, std::int32_t y) {
        return static_cast<std::intptr_t>((std::uint32_t(y) << 16) | (std::uint32_t(x) & 0xFFFF));
    }

    GUI::HeadlessWindowSystem system;
    GUI::GUI gui;
    SharedPtr<ViewPanel> panel;
    Varnolite& view = panel->view;
    const Data::ImageBase* shownImage = nullptr;
    int fitCount = 0;
    int zoomCount = 0;
    int rotationCount = 0;
};

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

TEST_F(VarnoliteTest, PaintsImageThenValuesThenRulerBlendedAsEachNeeds) {
    std::vector<std::string> record;
    RecordingOverlay values("values", record, gui);
    RecordingOverlay ruler("ruler", record, gui);
    view.SetOverlays(&values, &ruler);
    view.SetRGBOverlayVisible(true);
    view.SetRulerVisible(true);
    Show(20, 10);
    Paint();
    EXPECT_EQ(record, (std::vector<std::string>{"values opaque", "ruler blended"}));
    EXPECT_EQ(values.userImage, shownImage);
    EXPECT_EQ(ruler.imageRect.x0, values.imageRect.x0);
    EXPECT_DOUBLE_EQ(ruler.scale, 1 / view.GetTransform().inverseZoom);
    EXPECT_EQ(ruler.rect, (GUI::Rect{0, 0, 200, 150}));
    record.clear();
    Show(20, 10, true);
    Paint();
    EXPECT_EQ(record, (std::vector<std::string>{"values blended", "ruler blended"}));
    view.SetOverlays(nullptr, nullptr);
}

TEST_F(VarnoliteTest, TellsTheResamplingWhetherTheImageIsTheOneOfTheLastPaint) {
    std::vector<std::string> record;
    RecordingOverlay values("values", record, gui);
    view.SetOverlays(&values, nullptr);
    view.SetRGBOverlayVisible(true);
    Show(20, 10);
    Paint();
    EXPECT_FALSE(values.imageRect.unchanged);
    EXPECT_TRUE(values.imageRect.prepared);
    gui.Invalidate();
    Paint();
    EXPECT_TRUE(values.imageRect.unchanged);
    view.SetOverlays(nullptr, nullptr);
}

TEST_F(VarnoliteTest, ClipsTheRectangleToTheView) {
    std::vector<std::string> record;
    RecordingOverlay values("values", record, gui);
    view.SetOverlays(&values, nullptr);
    view.SetRGBOverlayVisible(true);
    Show(1000, 10);
    view.SetZoom(1.0);
    Paint();
    EXPECT_EQ(values.imageRect.x0, -400);
    EXPECT_EQ(values.imageRect.clipX0, 0);
    EXPECT_EQ(values.imageRect.clipX1, 200);
    EXPECT_EQ(values.imageRect.clipY0, 70);
    EXPECT_EQ(values.imageRect.clipY1, 80);
    view.SetOverlays(nullptr, nullptr);
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

TEST_F(VarnoliteTest, DrawsAgainAfterItsContextObjectsWereDeleted) {
    Show(20, 10);
    Paint();
    EXPECT_TRUE(view.DeleteContextObjects());
    gui.Invalidate();
    Paint();
    const auto& picture = system.GetWindows().front()->GetPicture();
    EXPECT_EQ(picture.bits.at((75 * 200 + 100) * 4), 77);
}

TEST_F(VarnoliteTest, PutsItsTextInTheMiddleInWhiteOrBlackByTheBackground) {
    view.SetLabelText({"Text", "Text"});
    for (const auto& [level, textLevel] : {std::pair{0.2f, 255}, {0.9f, 0}}) {
        panel->SetBackgroundColor({level, level, level, 1.0f});
        gui.Invalidate();
        Paint();
        const auto& bits = system.GetWindows().front()->GetPicture().bits;
        int textPixels = 0;
        for (std::size_t y = 68; y < 82; ++y)
            for (std::size_t x = 0; x < 200; ++x)
                // A tint darkens alpha by a level, so that black ink lets a trace of the background through.
                textPixels += std::abs(bits.at((y * 200 + x) * 4) - textLevel) <= 1 ? 1 : 0;
        EXPECT_GT(textPixels, 10) << level;
    }
}
