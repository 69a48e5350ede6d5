#pragma once

#include "gui/window/TimerList.h"
#include "gui/window/x11/X11Compositor.h"
#include "gui/window/x11/X11Keys.h"
#include "gui/window/x11/X11Monitors.h"
#include "gui/window/x11/X11Pointer.h"
#include "gui/window/x11/X11PostedMessages.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace Quorvex::GUI {

/// The window system on an X server. Whatever costs a round trip to the server is asked only when it is needed, so that
/// the first picture is early. GUI thread only, but for posts.
class X11WindowSystem final : public IWindowSystem {
public:
    /// Null means the display that the environment names. Raises Exception where there is none.
    explicit X11WindowSystem(const char* displayName = nullptr);
    /// All windows are gone by then.
    ~X11WindowSystem() override;

    std::unique_ptr<IPlatformWindow> CreatePlatformWindow(WindowKind kind, const Rect& clientRect, const String& title,
                                                          IWindowEvents& events) override;
    Dispatched DispatchNextMessage() override;
    void PostQuit(int exitCode) override;
    int GetExitCode() const override { return m_exitCode; }
    bool IsKeyDown(std::uint32_t key) const override;
    void SetCapture(IPlatformWindow& window) override { m_pointer.SetCapture(static_cast<X11Window&>(window)); }
    void ReleaseCapture() override { m_pointer.ReleaseCapture(); }
    IPlatformWindow* GetCapture() const override { return m_pointer.GetCapture(); }
    IPlatformWindow* WindowFromPoint(std::int32_t x, std::int32_t y) const override;
    std::vector<Rect> GetMonitors() const override { return m_monitors.GetMonitors(); }
    Rect GetPrimaryScreen() const override { return m_monitors.GetPrimary(); }
    Rect GetWorkAreaNearest(const Rect& rect) const override { return m_monitors.GetWorkAreaNearest(rect); }
    Rect GetWorkAreaAtMouse() const override;
    std::uint32_t GetScreenDpi() const override { return m_monitors.GetDpi(); }
    void MoveWindows(std::span<const WindowPlacement> placements) override;
    void FlushComposition() override;
    std::uint32_t GetSystemColor(SystemColor role) const override;
    std::optional<bool> HasGradientCaptions() const override { return std::nullopt; }
    std::optional<Colorization> GetColorization() const override { return std::nullopt; }
    std::uint32_t GetForegroundFlashCount() const override { return 3; }
    std::uint32_t GetCaretBlinkMilliseconds() const override { return 530; }
    void SetTimerHook(Function<std::uintptr_t> hook) override { m_timerHook = hook; }
    void SetTimer(std::uintptr_t identifier, std::uint32_t milliseconds) override;
    void KillTimer(std::uintptr_t identifier) override { m_timers.Kill(identifier); }
    std::unique_ptr<IGlyphSource> CreateGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth) override;

    // What windows need of their system.
    const X11Connection& GetConnection() const { return m_connection; }
    const X11Visual& GetOpaqueVisual() const { return m_opaqueVisual; }
    /// Empty unless windows with alpha can be shown now.
    std::optional<X11Visual> FindVisualWithAlpha();
    bool IsCompositionEnabled() const { return m_compositor.IsRunning(); }
    bool HasWindowManager() const;
    Cursor GetCursor(CursorShape shape);
    std::uint64_t Register(X11Window& window);
    void Unregister(X11Window& window);
    void AnnounceOwnerOfPanels(const X11Window& owner);
    /// Any thread.
    void Post(const PostedMessage& message) { m_posts.Add(message); }
    void DispatchMouseEvents();

private:
    bool DispatchPosted();
    bool DispatchEvent();
    bool DispatchTimer();
    bool DispatchPaint();
    void Wait();
    void EndWithDisplay();
    X11Window* Find(::Window handle) const;
    /// Milliseconds of a steady clock.
    static std::uint64_t Now();

    void Handle(XEvent& event);
    bool HandleDesktop(XEvent& event);
    void HandlePointer(X11Window& window, XEvent& event);
    void SkipToLastMotion(XEvent& event);
    void HandleWindow(X11Window& window, XEvent& event);
    void HandleInput(X11Window& window, XEvent& event);
    void HandleConfigure(X11Window& window, XEvent& event);
    void HandleFocusOut(X11Window& window);
    void HandleClientMessage(X11Window& window, const XClientMessageEvent& event);
    void HandleKey(X11Window& window, XKeyEvent& event);
    X11Window* FindNextFocus() const;

    X11Connection m_connection;
    X11Visual m_opaqueVisual;
    X11PostedMessages m_posts;
    std::vector<X11Window*> m_windows;
    std::uint64_t m_lastIdentifier = 0;
    TimerList m_timers;
    Function<std::uintptr_t> m_timerHook;
    // Answers of the server that are kept; asking for them changes nothing that can be seen.
    mutable X11Monitors m_monitors{m_connection};
    mutable X11Compositor m_compositor{m_connection};
    X11Keyboard m_keyboard{m_connection};
    X11Pointer m_pointer{m_connection};
    std::array<Cursor, 7> m_cursors{};
    X11Window* m_focusSource = nullptr; ///< Lost the focus to a window of this program that has not been told yet.
    int m_completionType = 0;           ///< Of MIT-SHM; 0 until it is asked.
    bool m_arePostsNext = false;
    bool m_hasQuit = false;
    bool m_hasEnded = false;
    int m_exitCode = 0;
};

} // namespace Quorvex::GUI
