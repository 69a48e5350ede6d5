#pragma once

#include "gui/window/WindowSystem.h"

#include <windows.h>

#include <atomic>

namespace Quorvex::GUI {

class Win32WindowSystem;

/// A top-level window of User32. GUI thread only, but for Post.
class Win32PlatformWindow final : public IPlatformWindow {
public:
    Win32PlatformWindow(Win32WindowSystem& system, WindowKind kind, const Rect& clientRect, const String& title,
                        IWindowEvents& events);
    ~Win32PlatformWindow() override;

    void* GetNativeHandle() const override { return m_handle; }
    bool IsLayered() const override { return m_isLayered; }
    void ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                    std::uint32_t pitchBytes) override;
    void ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                       std::uint32_t pitchBytes) override;
    void DispatchMouseMessagesAndHide() override;
    bool IsCompositionEnabled() const override;

    Rect GetClientRect() const override;
    void SetClientRect(const Rect& rect) override;
    void Show() override;
    void Hide() override;
    bool IsVisible() const override { return IsWindowVisible(m_handle) != 0; }
    bool IsIconic() const override { return ::IsIconic(m_handle) != 0; }
    void Activate() override;
    void BringToFront() override;
    void SetEnabled(bool isEnabled) override { EnableWindow(m_handle, isEnabled); }
    void SetTitle(const String& title) override;
    void SetCursor(CursorShape shape) override;
    void SetOwner(IPlatformWindow* owner) override;
    bool SetLayered(bool isLayered) override;
    void Flash(std::uint32_t count, std::uint32_t timeoutMilliseconds) override;
    bool Invalidate() override;
    void PaintNow() override { SendMessageA(m_handle, WM_PAINT, 0, 0); }
    void Post(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) override;

    HWND GetHandle() const { return m_handle; }
    /// The rectangle of the whole window around a client area.
    RECT WindowRectAround(const Rect& clientRect) const;

    /// The window procedure of the class "Quorvex": finds the window and translates.
    static LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

private:
    DWORD GetStyle() const;
    DWORD GetExtendedStyle() const;
    HWND CreateHandle(const Rect& clientRect, const String& title);
    void SetExtendedStyle(DWORD style, bool isSet);
    void SetSeeThrough(bool isSeeThrough);
    HCURSOR LoadShape() const;

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleState(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleDesktop(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandleInput(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT HandlePaint(WPARAM wParam, LPARAM lParam);
    LRESULT HandleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    void HandleLeave();
    void HandleDrop(HANDLE drop);
    void StartTracking();

    Win32WindowSystem& m_system;
    WindowKind m_kind;
    IWindowEvents& m_events;
    std::atomic<HWND> m_handle = nullptr; ///< Written by the GUI thread, read by posts of any.
    CursorShape m_cursor = CursorShape::Arrow;
    bool m_isLayered = false;
    bool m_isTracking = false;
    bool m_isReady = false; ///< The owner hears nothing before it has the object.
};

} // namespace Quorvex::GUI
