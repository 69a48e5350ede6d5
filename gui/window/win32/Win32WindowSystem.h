#pragma once

#include "gui/window/win32/Win32PlatformWindow.h"

#include <windows.h>

#include <vector>

namespace Quorvex::GUI {

/// The window system of the home platform. The constructor initialises OLE and asks for the screen's real pixels, the
/// destructor ends OLE. GUI thread only, but for posts.
class Win32WindowSystem final : public IWindowSystem {
public:
    Win32WindowSystem();
    /// All windows are gone by then.
    ~Win32WindowSystem() override;
    Win32WindowSystem(const Win32WindowSystem&) = delete;
    Win32WindowSystem& operator=(const Win32WindowSystem&) = delete;

    std::unique_ptr<IPlatformWindow> CreatePlatformWindow(WindowKind kind, const Rect& clientRect, const String& title,
                                                          IWindowEvents& events) override;
    Dispatched DispatchNextMessage() override;
    void PostQuit(int exitCode) override { PostQuitMessage(exitCode); }
    int GetExitCode() const override { return m_exitCode; }
    bool IsKeyDown(std::uint32_t key) const override { return GetKeyState(static_cast<int>(key)) < 0; }
    void SetCapture(IPlatformWindow& window) override;
    void ReleaseCapture() override;
    IPlatformWindow* GetCapture() const override { return Find(::GetCapture()); }
    IPlatformWindow* WindowFromPoint(std::int32_t x, std::int32_t y) const override;
    std::vector<Rect> GetMonitors() const override;
    Rect GetPrimaryScreen() const override;
    Rect GetWorkAreaNearest(const Rect& rect) const override;
    Rect GetWorkAreaAtMouse() const override;
    std::uint32_t GetScreenDpi() const override;
    void MoveWindows(std::span<const WindowPlacement> placements) override;
    void FlushComposition() override;
    std::uint32_t GetSystemColor(SystemColor role) const override { return GetSysColor(static_cast<int>(role)); }
    std::optional<bool> HasGradientCaptions() const override;
    std::optional<Colorization> GetColorization() const override;
    std::uint32_t GetForegroundFlashCount() const override;
    std::uint32_t GetCaretBlinkMilliseconds() const override;
    void SetTimerHook(Function<std::uintptr_t> hook) override { m_timerHook = hook; }
    void SetTimer(std::uintptr_t identifier, std::uint32_t milliseconds) override;
    void KillTimer(std::uintptr_t identifier) override;
    std::unique_ptr<IGlyphSource> CreateGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth) override;

    // What windows need of their system.
    /// Raises Exception where the system refuses the class; nothing the second time.
    void RegisterWindowClass();
    void Add(Win32PlatformWindow& window) { m_windows.push_back(&window); }
    void Remove(Win32PlatformWindow& window) { std::erase(m_windows, &window); }
    /// The window of this program with that handle, or null.
    Win32PlatformWindow* Find(HWND handle) const;
    bool IsCompositionEnabled() const;

private:
    struct Timer {
        std::uintptr_t identifier;
        UINT_PTR systemIdentifier;
    };

    void UnregisterWindowClass();
    void DispatchToHook(const MSG& message);
    HDWP Defer(HDWP deferred, const WindowPlacement& placement) const;

    std::vector<Win32PlatformWindow*> m_windows;
    bool m_isOleInitialized = false;
    bool m_isClassRegistered = false;
    int m_exitCode = 0;
    std::vector<Timer> m_timers;
    Function<std::uintptr_t> m_timerHook;
};

} // namespace Quorvex::GUI
