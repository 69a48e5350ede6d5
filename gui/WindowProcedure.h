#pragma once

#include "gui/window/WindowEvents.h"

namespace Quorvex::GUI {

class GUI;
class Win32Window;

/// Where the events of one window enter the toolkit: each is handed to the operation of the GUI that handles it, and no
/// exception goes back into the platform. An Exception is reported with its text, anything else as "unknown exception
/// in WndProc".
class WindowProcedure final : public IWindowEvents {
public:
    WindowProcedure(GUI& gui, Win32Window& window) : m_gui(gui), m_window(window) {}

    void OnMouseMessage(const MouseMessage& message) noexcept override;
    void OnKeyDown(std::uint32_t key, std::intptr_t repeatData) noexcept override;
    void OnKeyUp(std::uint32_t key, std::intptr_t repeatData) noexcept override;
    void OnMovedOrSized(bool isMinimized) noexcept override;
    void OnPaint() noexcept override;
    void OnClose() noexcept override;
    void OnDestroyed() noexcept override;
    void OnActivated(bool isActive) noexcept override;
    void OnFocusChanged(bool hasFocus, IPlatformWindow* other) noexcept override;
    void OnEnabled(bool isEnabled) noexcept override;
    void OnSystemColorsChanged() noexcept override;
    void OnCompositionChanged() noexcept override;
    void OnCancelMode() noexcept override;
    void OnMouseActivate() noexcept override;
    void OnFilesDropped(const std::vector<String>& paths) noexcept override;
    void OnUserMessage(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) noexcept override;

private:
    GUI& m_gui;
    Win32Window& m_window;
};

} // namespace Quorvex::GUI
