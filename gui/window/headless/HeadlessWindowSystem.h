#pragma once

#include "gui/window/TimerList.h"
#include "gui/window/headless/HeadlessDesktop.h"
#include "gui/window/headless/HeadlessWindow.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <set>
#include <vector>

namespace Quorvex::GUI {

/// Windows in memory, with a queue that tests fill in the place of a user (see HeadlessUser) and workers fill through
/// IPlatformWindow::Post. Time stands still for the timers but for AdvanceTime. GUI thread only, but for posts.
class HeadlessWindowSystem final : public IWindowSystem {
public:
    HeadlessWindowSystem() = default;
    /// All windows are gone by then.
    ~HeadlessWindowSystem() override;

    // What the toolkit calls.
    std::unique_ptr<IPlatformWindow> CreatePlatformWindow(WindowKind kind, const Rect& clientRect, const String& title,
                                                          IWindowEvents& events) override;
    /// Raises Exception when nothing came within the longest wait.
    Dispatched DispatchNextMessage() override;
    void PostQuit(int exitCode) override;
    int GetExitCode() const override { return m_exitCode; }
    bool IsKeyDown(std::uint32_t key) const override { return m_keysDown.contains(key); }
    void SetCapture(IPlatformWindow& window) override;
    void ReleaseCapture() override { m_capture = nullptr; }
    IPlatformWindow* GetCapture() const override { return m_capture; }
    IPlatformWindow* WindowFromPoint(std::int32_t x, std::int32_t y) const override;
    std::vector<Rect> GetMonitors() const override { return m_desktop.monitors; }
    Rect GetPrimaryScreen() const override { return m_desktop.primaryScreen; }
    Rect GetWorkAreaNearest(const Rect& rect) const override { return m_desktop.GetWorkAreaNearest(rect); }
    Rect GetWorkAreaAtMouse() const override;
    std::uint32_t GetScreenDpi() const override { return m_desktop.dpi; }
    void MoveWindows(std::span<const WindowPlacement> placements) override;
    void FlushComposition() override { ++m_flushCount; }
    std::uint32_t GetSystemColor(SystemColor role) const override { return m_desktop.colors.at(role); }
    std::optional<bool> HasGradientCaptions() const override { return m_desktop.hasGradientCaptions; }
    std::optional<Colorization> GetColorization() const override { return m_desktop.colorization; }
    std::uint32_t GetForegroundFlashCount() const override { return m_desktop.flashCount; }
    std::uint32_t GetCaretBlinkMilliseconds() const override { return m_desktop.caretBlinkMilliseconds; }
    void SetTimerHook(Function<std::uintptr_t> hook) override { m_timerHook = hook; }
    void SetTimer(std::uintptr_t identifier, std::uint32_t milliseconds) override;
    void KillTimer(std::uintptr_t identifier) override { m_timers.Kill(identifier); }
    std::unique_ptr<IGlyphSource> CreateGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth) override;

    // What tests steer.
    HeadlessDesktop& Desktop() { return m_desktop; }
    const HeadlessDesktop& Desktop() const { return m_desktop; }
    enum class WhenIdle {
        Wait, ///< DispatchNextMessage waits for a post.
        Quit, ///< DispatchNextMessage returns Quit, now and whenever nothing waits; the exit code stays 0.
    };
    void SetWhenIdle(WhenIdle whenIdle) { m_whenIdle = whenIdle; }
    /// Called whenever nothing waits to be dispatched: the place for a test that plays the user of a whole program. It
    /// may post what it likes; empty for none.
    void SetIdleHook(std::function<void()> hook) { m_idleHook = std::move(hook); }
    /// How long DispatchNextMessage waits before it takes the program for hanging. One minute at first.
    void SetLongestWait(std::chrono::milliseconds wait) { m_longestWait = wait; }
    /// Dispatches until nothing waits, the paints included, and calls afterEach after each message as a program's loop
    /// would. Workers that will post later are not waited for. Returns how many messages there were.
    std::size_t RunUntilIdle(const std::function<void()>& afterEach = {});
    /// Lets the time of the timers pass; those that come due are dispatched in order before anything else.
    void AdvanceTime(std::uint32_t milliseconds) { m_now += milliseconds; }
    /// The display goes: all windows are destroyed, and every dispatch from then on returns Quit.
    void LoseDisplay();
    std::uint32_t GetFlushCount() const { return m_flushCount; }
    /// The topmost first.
    const std::vector<HeadlessWindow*>& GetWindows() const { return m_windows; }
    /// The active window, which has the focus; null while another program has it.
    HeadlessWindow* GetActiveWindow() const { return m_active; }

    // What windows and the user call.
    using Delivery = std::function<void(HeadlessWindow&)>;
    /// Any thread. Dropped at the time of dispatch if the window has gone by then.
    void Enqueue(std::uint64_t window, Delivery delivery);
    /// What the user does with the mouse or otherwise; it finds its window when it is dispatched, as input does.
    void EnqueueMouse(std::function<void()> action);
    void EnqueueAction(std::function<void()> action);
    /// Takes queued mouse messages out of the order and dispatches them.
    void DispatchMouseMessages();
    std::uint64_t Register(HeadlessWindow& window);
    void Unregister(HeadlessWindow& window);
    void SetActiveWindow(HeadlessWindow* window);
    void SetKeyDown(std::uint32_t key, bool isDown);
    void BringToFront(HeadlessWindow& window);

private:
    struct Message {
        bool isMouse = false;
        std::function<void()> dispatch;
    };

    void Push(Message message);
    bool DispatchQueued();
    bool DispatchTimer();
    bool DispatchPaint();
    bool DispatchWaiting();
    /// Whether there is something to do after it.
    bool RunIdleHook();
    bool HasQueued();
    bool TakeQuit();
    void WaitForPost();
    HeadlessWindow* Find(std::uint64_t identifier) const;
    void PlaceBelow(HeadlessWindow& window, const HeadlessWindow& above);

    HeadlessDesktop m_desktop;
    std::vector<HeadlessWindow*> m_windows;
    HeadlessWindow* m_active = nullptr;
    HeadlessWindow* m_capture = nullptr;
    std::set<std::uint32_t> m_keysDown;
    std::uint64_t m_lastIdentifier = 0;
    TimerList m_timers;
    std::uint64_t m_now = 0;
    Function<std::uintptr_t> m_timerHook;
    bool m_hasQuit = false;
    bool m_hasLostDisplay = false;
    int m_exitCode = 0;
    std::uint32_t m_flushCount = 0;
    WhenIdle m_whenIdle = WhenIdle::Wait;
    std::function<void()> m_idleHook;
    std::chrono::milliseconds m_longestWait{60000};

    std::mutex m_mutex; ///< Guards m_queue alone.
    std::condition_variable m_arrived;
    std::deque<Message> m_queue;
};

} // namespace Quorvex::GUI
