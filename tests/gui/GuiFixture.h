#pragma once

#include "gui/GUI.h"
#include "gui/QuadWriter.h"
#include "gui/Scale.h"
#include "gui/window/headless/HeadlessUser.h"
#include "tests/gui/RecordingControl.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI::Test {

using Color = Data::ColorBGRA<float>;
using Pixel = Data::ColorBGRA<std::uint8_t>;

inline constexpr Color opaqueBlack{0.0f, 0.0f, 0.0f, 1.0f};
inline constexpr Color opaqueRed{0.0f, 0.0f, 1.0f, 1.0f};
inline constexpr Color opaqueGreen{0.0f, 1.0f, 0.0f, 1.0f};
inline constexpr Pixel blackPixel{0, 0, 0, 255};
inline constexpr Pixel redPixel{0, 0, 255, 255};
inline constexpr Pixel greenPixel{0, 255, 0, 255};

/// A coloured rectangle, built and released as a control of the toolkit is.
class QuadControl : public RecordingControl {
public:
    QuadControl(std::string controlName, Calls& record, const Color& quadColor)
        : RecordingControl(std::move(controlName), record), color(quadColor) {}

    void CreateContextObjects() override {
        quad = GetPanel()->GetRenderer()->GetContext()->CreateVertexBuffer2D(1);
        QuadWriter(*quad).Write(GetRect(), color);
        ++buildCount;
        cacheValid = true;
    }
    void Paint() override {
        ++paintCount;
        if (onPaint)
            onPaint();
        if (!cacheValid)
            CreateContextObjects();
        quad->Render();
    }
    bool DeleteContextObjects() override {
        quad.reset();
        cacheValid = false;
        return RecordingControl::DeleteContextObjects();
    }

    Color color;
    SharedPtr<Platform::Video::VertexBuffer2D> quad;
    std::function<void()> onPaint;
    int buildCount = 0;
    int paintCount = 0;
};

/// A panel with one control that fills it.
class TestPanel : public Panel {
public:
    TestPanel(const std::string& name, Calls& record, const Color& quadColor)
        : quad(name, record, quadColor), calls(record) {
        quad.SetEnabled(true);
        add(quad);
    }

    void SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) override {
        Panel::SetRect(newLeft, newTop, newRight, newBottom);
        quad.SetRect(0, 0, newRight - newLeft, newBottom - newTop);
        ++rectCount;
    }
    void OnCreate() override {
        ++createCount;
        if (failsToCreate)
            throw Exception("no");
    }
    void SetActive(bool isActive) override { calls.push_back(quad.name + (isActive ? ".Active" : ".Inactive")); }
    bool DrawsFocusState() const override { return drawsFocus; }
    Control* OnFocusGained() override {
        ++focusGained;
        return this;
    }
    Color TitleColor() { return titleLabelA.GetBackgroundColor(); }
    bool OnEscape() override {
        calls.push_back(quad.name + ".Escape");
        return usesEscape;
    }

    QuadControl quad;
    Calls& calls;
    bool failsToCreate = false;
    bool drawsFocus = false;
    bool usesEscape = false;
    int createCount = 0;
    int focusGained = 0;
    int rectCount = 0;
};

/// A main frame that writes down which of its hooks are called.
class TestGUI : public GUI {
public:
    TestGUI(IWindowSystem& system, Calls& record) : GUI(system, u"Varnolite", "Varnolite"), calls(record) {
        SetWantedRenderer(Platform::Video::RendererTypeEnum::Software);
    }
    ~TestGUI() override { Shutdown(); }

    void OnContextCreated() override { calls.push_back("ContextCreated"); }
    void OnFirstPaint() override { calls.push_back("FirstPaint"); }
    void OnUserMessage(std::uintptr_t wParam, std::intptr_t lParam) override {
        calls.push_back("User " + std::to_string(wParam) + "," + std::to_string(lParam));
        if (raisesOnUserMessage)
            raisesOnUserMessage();
    }
    void OnFilesDropped(const std::vector<String>& paths) override {
        calls.push_back("Dropped " + std::to_string(paths.size()));
    }
    void OnTimer(std::uintptr_t identifier) override { calls.push_back("Timer " + std::to_string(identifier)); }
    void OnWindowMoved(std::int32_t dx, std::int32_t dy) override {
        calls.push_back("Moved " + std::to_string(dx) + "," + std::to_string(dy));
        GUI::OnWindowMoved(dx, dy);
    }
    void OnDestroyWindow() override {
        calls.push_back("DestroyWindow");
        GUI::OnDestroyWindow();
    }

    Calls& calls;
    std::function<void()> raisesOnUserMessage;
};

/// A main window from (100, 100) to (500, 400) on a desktop in memory, not yet shown, and a user in front of it.
class GuiFixture : public testing::Test {
protected:
    GuiFixture() {
        main->SetRect(100, 100, 500, 400);
        gui.AddMainPanel(main);
    }
    ~GuiFixture() override { SetScale(1); }

    /// Shows the main window and lets everything settle.
    void Show() {
        gui.CreateMainWindow();
        gui.ShowMainWindow();
        Settle();
        calls.clear();
    }
    void Settle() {
        system.RunUntilIdle([this] { gui.HandleGUIMessages(); });
    }
    SharedPtr<TestPanel> AddPanel(const std::string& name, const Rect& rect, const Color& color = opaqueGreen) {
        auto panel = MakeShared<TestPanel>(name, calls, color);
        panel->SetRect(rect.left, rect.top, rect.right, rect.bottom);
        gui.AddPanel(panel);
        return panel;
    }
    static HeadlessWindow& WindowOf(Panel& panel) {
        return static_cast<HeadlessWindow&>(panel.GetSurface().GetWindow()->GetPlatformWindow());
    }
    HeadlessWindow& MainWindow() { return WindowOf(*main); }
    /// What the window shows at a place relative to its client area.
    static Pixel PixelAt(const HeadlessWindow& window, std::uint32_t x, std::uint32_t y) {
        const ShownPicture& picture = window.GetPicture();
        EXPECT_LT(x, picture.width);
        EXPECT_LT(y, picture.height);
        const std::uint8_t* bits = picture.bits.data() + (std::size_t{y} * picture.width + x) * 4;
        return {bits[0], bits[1], bits[2], bits[3]};
    }

    /// Adds a control to the panel that lives until the panel has gone.
    template <class T>
    T& AddTo(ControlList& list, const std::string& name, const Rect& rect) {
        auto made = std::make_unique<T>(name, calls);
        T& control = *made;
        controls.push_back(std::move(made));
        control.SetRect(rect.left, rect.top, rect.right, rect.bottom);
        list.add(control);
        return control;
    }

    Quorvex::Test::LogCapture log;
    Calls calls;
    std::vector<std::unique_ptr<Control>> controls;
    HeadlessWindowSystem system;
    HeadlessUser user{system};
    TestGUI gui{system, calls};
    SharedPtr<TestPanel> main = MakeShared<TestPanel>("main", calls, opaqueRed);
};

} // namespace Quorvex::GUI::Test

namespace Quorvex::Data {
inline void PrintTo(const ColorBGRA<std::uint8_t>& pixel, std::ostream* stream) {
    *stream << int{pixel.blue} << " " << int{pixel.green} << " " << int{pixel.red} << " " << int{pixel.alpha};
}
inline void PrintTo(const ColorBGRA<float>& color, std::ostream* stream) {
    *stream << color.blue << " " << color.green << " " << color.red << " " << color.alpha;
}
} // namespace Quorvex::Data

namespace Quorvex::GUI {
inline void PrintTo(const Rect& rect, std::ostream* stream) {
    *stream << rect.left << "," << rect.top << " to " << rect.right << "," << rect.bottom;
}
} // namespace Quorvex::GUI
