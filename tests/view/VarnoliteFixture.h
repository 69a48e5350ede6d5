#pragma once

#include "data/Image.h"
#include "tests/gui/GuiFixture.h"
#include "video/Renderer.h"
#include "view/Varnolite.h"

#include <gtest/gtest.h>

namespace Quorvex::View {

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

class VarnoliteFixture : public testing::Test {
protected:
    VarnoliteFixture() : gui(system, u"test", "test"), panel(new ViewPanel()) {
        panel->SetRect(100, 50, 300, 200);
        gui.AddMainPanel(panel);
        gui.CreateMainWindow();
        gui.ShowMainWindow();
        view.fitChanged.Bind(this, &VarnoliteFixture::CountFit);
        view.zoomChanged.Bind(this, &VarnoliteFixture::CountZoom);
        view.rotationChanged.Bind(this, &VarnoliteFixture::CountRotation);
    }
    ~VarnoliteFixture() override { gui.Shutdown(); }

    void Show(std::uint32_t width, std::uint32_t height, bool hasAlpha = false) {
        SharedPtr<Data::ImageBase> image = Data::CreateImage(Data::ColorTypeEnum::BGRAUInt8, width, height);
        image->clear(77);
        image->HasAlpha = hasAlpha ? 1 : 0;
        ShowImage(image);
    }
    void ShowImage(const SharedPtr<Data::ImageBase>& image) {
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

} // namespace Quorvex::View
