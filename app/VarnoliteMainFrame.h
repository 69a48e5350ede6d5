#pragma once

#include "app/VarnoliteApplication.h"
#include "gui/GUI.h"

namespace Quorvex::App {

/// The program's root: makes the window and the application in it, and takes both down in an order that leaves no image
/// holding on to a renderer and no worker behind. GUI thread only.
class VarnoliteMainFrame final : public GUI::GUI {
public:
    explicit VarnoliteMainFrame(::Quorvex::GUI::IWindowSystem& windowSystem);
    ~VarnoliteMainFrame() override;

    /// Makes the window with its context and shows it.
    void Open();

    void OnUserMessage(std::uintptr_t wParam, std::intptr_t lParam) override;
    void OnDestroyWindow() override;
    bool OnKeyDown(::Quorvex::GUI::Panel& panel, std::uint32_t key, std::intptr_t repeatData) override;
    bool OnKeyUp(::Quorvex::GUI::Panel& panel, std::uint32_t key, std::intptr_t repeatData) override;
    void OnFirstPaint() override;

    VarnoliteApplication& GetApplication() { return *m_application; }
    /// Whether one pixel of the frame buffer takes the exact value that was drawn; known after the first paint.
    bool IsPixelMappingPrecise() const { return m_isPixelMappingPrecise; }

private:
    SharedPtr<VarnoliteApplication> m_application;
    bool m_isPixelMappingPrecise = true;
};

} // namespace Quorvex::App
