#pragma once

#include "gui/Rect.h"
#include "gui/window/WindowEvents.h"
#include "video/WindowSurface.h"

namespace Quorvex::GUI {

enum class CursorShape { Arrow, SizeHorizontal, SizeVertical, SizeFalling, SizeRising, Hand, Wait };

/// Numbers for IPlatformWindow::Post.
namespace UserMessage {
inline constexpr std::uint32_t LoadFinished = 0x400; ///< WM_USER: reaches the GUI's user hook.
inline constexpr std::uint32_t Invalidate = 0x401;   ///< Invalidates the window.
} // namespace UserMessage

/// What a window is to the system.
enum class WindowKind {
    Main,  ///< A framed top-level window with title and system menu.
    Panel, ///< A frameless top-level window that floats above its owner.
};

/// One platform window. Destroying the object destroys the window. GUI thread only, but for Post.
class IPlatformWindow : public Platform::Video::IWindowSurface {
public:
    /// The client area in desktop coordinates; empty while minimised.
    virtual Rect GetClientRect() const = 0;
    /// Places the client area; the frame lies outside.
    virtual void SetClientRect(const Rect& rect) = 0;

    virtual void Show() = 0;
    virtual void Hide() = 0;
    virtual bool IsVisible() const = 0;
    virtual bool IsIconic() const = 0;
    virtual void Activate() = 0;
    virtual void BringToFront() = 0;
    virtual void SetEnabled(bool isEnabled) = 0;
    /// UTF-16 or Windows-1252, by what the system understands.
    virtual void SetTitle(const String& title) = 0;
    virtual void SetCursor(CursorShape shape) = 0;
    /// The window that this one floats above; null for none.
    virtual void SetOwner(IPlatformWindow* owner) = 0;
    /// Whether the window is shown with per-pixel alpha; false comes back where the system cannot. The native handle
    /// may be another one afterwards, so this comes before anything is bound to it.
    virtual bool SetLayered(bool isLayered) = 0;
    /// Blinks the window's frame or its entry in the task bar.
    virtual void Flash(std::uint32_t count, std::uint32_t timeoutMilliseconds) = 0;

    /// Asks for OnPaint once the queue is empty. False where the system refuses.
    virtual bool Invalidate() = 0;
    /// Calls OnPaint now.
    virtual void PaintNow() = 0;

    /// Puts a message into the window's queue. Any thread. A message to a window that has gone is dropped.
    virtual void Post(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) = 0;
};

} // namespace Quorvex::GUI
