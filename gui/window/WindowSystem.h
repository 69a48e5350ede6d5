#pragma once

#include "foundation/Function.h"
#include "gui/window/GlyphSource.h"
#include "gui/window/PlatformWindow.h"

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace Quorvex::GUI {

/// One entry of a common move of several windows.
struct WindowPlacement {
    IPlatformWindow* window = nullptr;
    Rect clientRect;
    /// The window directly above in the stacking order; null keeps the order.
    IPlatformWindow* below = nullptr;
};

/// System colours as 0x00BBGGRR, in the home platform's numbering of roles.
enum class SystemColor {
    ActiveCaption = 2,
    InactiveCaption = 3,
    CaptionText = 9,
    InactiveCaptionText = 19,
    GradientActiveCaption = 27,
    GradientInactiveCaption = 28,
};

/// The window seam: everything that the toolkit needs of a platform. Three forms stand behind it: win32, x11 and
/// headless, whose windows exist in memory and are driven by tests. GUI thread only.
class IWindowSystem {
public:
    virtual ~IWindowSystem() = default;

    /// The window is created hidden. The events object must outlive it. Raises Exception where the system refuses.
    virtual std::unique_ptr<IPlatformWindow> CreatePlatformWindow(WindowKind kind, const Rect& clientRect,
                                                                  const String& title, IWindowEvents& events) = 0;

    enum class Dispatched { Message, Quit };
    /// Waits for one message, or a run of mouse messages that wait together, hands it to its window and returns. Quit
    /// once the quit message was taken, or when the connection to the display is gone.
    virtual Dispatched DispatchNextMessage() = 0;
    virtual void PostQuit(int exitCode) = 0;
    /// Valid after Quit.
    virtual int GetExitCode() const = 0;

    /// Whether the key (a virtual-key code) was down when the message now handled was sent.
    virtual bool IsKeyDown(std::uint32_t key) const = 0;

    virtual void SetCapture(IPlatformWindow& window) = 0;
    virtual void ReleaseCapture() = 0;
    /// The window of this program that holds the mouse, or null.
    virtual IPlatformWindow* GetCapture() const = 0;
    /// The topmost window at a desktop position, null if it is not one of this program.
    virtual IPlatformWindow* WindowFromPoint(std::int32_t x, std::int32_t y) const = 0;

    /// Whole areas of all monitors; empty where the system cannot enumerate them.
    virtual std::vector<Rect> GetMonitors() const = 0;
    /// Size of the primary screen; 0 by 0 where unknown.
    virtual Rect GetPrimaryScreen() const = 0;
    /// Area free of task bars of the monitor nearest to the rectangle, or of the one with the mouse.
    virtual Rect GetWorkAreaNearest(const Rect& rect) const = 0;
    virtual Rect GetWorkAreaAtMouse() const = 0;
    /// Horizontal dots per inch of the screen.
    virtual std::uint32_t GetScreenDpi() const = 0;

    /// Moves all windows in one step, in the order given; failures are reported by name and the rest goes on.
    virtual void MoveWindows(std::span<const WindowPlacement> placements) = 0;
    /// Waits until the desktop has composed what was shown; nothing where there is no such thing.
    virtual void FlushComposition() = 0;

    virtual std::uint32_t GetSystemColor(SystemColor role) const = 0;
    /// Whether captions are drawn with a gradient; empty where the system has none.
    virtual std::optional<bool> HasGradientCaptions() const = 0;
    /// The colour and balance (percent) by which the desktop tints captions; empty where it does not, or in high
    /// contrast. 0x00RRGGBB.
    struct Colorization {
        std::uint32_t color;
        std::uint32_t balancePercent;
    };
    virtual std::optional<Colorization> GetColorization() const = 0;
    virtual std::uint32_t GetForegroundFlashCount() const = 0;
    virtual std::uint32_t GetCaretBlinkMilliseconds() const = 0;

    /// Timers without a window: their messages go to the hook. Identifiers are the caller's.
    virtual void SetTimerHook(Function<std::uintptr_t> hook) = 0;
    virtual void SetTimer(std::uintptr_t identifier, std::uint32_t milliseconds) = 0;
    virtual void KillTimer(std::uintptr_t identifier) = 0;

    /// A monochrome font of that cell height and mean character width, both in pixels.
    virtual std::unique_ptr<IGlyphSource> CreateGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth) = 0;
};

/// The platform's own window system; raises Exception where there is no display.
std::unique_ptr<IWindowSystem> CreateNativeWindowSystem();

} // namespace Quorvex::GUI
