#pragma once

#include "foundation/String.h"

#include <cstdint>
#include <vector>

namespace Quorvex::GUI {

class IPlatformWindow;

/// The mouse messages, by the numbers that the home platform gives them.
enum class MouseMessageNumber : std::uint32_t {
    Move = 512,
    LeftButtonDown = 513,
    LeftButtonUp = 514,
    LeftButtonDoubleClick = 515,
    Wheel = 522,
    HorizontalWheel = 526,
    Leave = 675,
};

/// A mouse message as it is queued. The two words have the home platform's layout on every platform: the position in
/// the signed low and high half of lParam (client coordinates, but screen coordinates for the two wheels), the wheel's
/// delta (120 a notch) in the signed high half of wParam. A leave has empty words.
struct MouseMessage {
    MouseMessageNumber number;
    std::uintptr_t wParam = 0;
    std::intptr_t lParam = 0;
    std::int32_t screenX = 0; ///< Desktop coordinates; of a leave, where the mouse has gone.
    std::int32_t screenY = 0;
    IPlatformWindow* window = nullptr;
};

/// What a platform window tells its owner. The platform layer translates and calls; it contains no logic of the
/// toolkit. All calls come on the GUI thread, from IWindowSystem::DispatchNextMessage or from a synchronous operation
/// on the window. An exception that leaves a handler is the owner's to catch: none may reach the platform layer.
class IWindowEvents {
public:
    virtual ~IWindowEvents() = default;

    virtual void OnMouseMessage(const MouseMessage& message) noexcept = 0;
    /// Virtual-key codes of the home platform; other platforms translate.
    virtual void OnKeyDown(std::uint32_t key, std::intptr_t repeatData) noexcept = 0;
    virtual void OnKeyUp(std::uint32_t key, std::intptr_t repeatData) noexcept = 0;
    /// The window was moved, sized, or minimised.
    virtual void OnMovedOrSized(bool isMinimized) noexcept = 0;
    /// The window must be painted and shown; comes when no other message waits.
    virtual void OnPaint() noexcept = 0;
    /// The user asks to close the window. It stays until its owner destroys it.
    virtual void OnClose() noexcept = 0;
    /// The platform's window goes away, by its owner or with the display.
    virtual void OnDestroyed() noexcept = 0;
    virtual void OnActivated(bool isActive) noexcept = 0;
    /// other is the window of this program that the focus comes from or goes to, or null.
    virtual void OnFocusChanged(bool hasFocus, IPlatformWindow* other) noexcept = 0;
    virtual void OnEnabled(bool isEnabled) noexcept = 0;
    virtual void OnSystemColorsChanged() noexcept = 0;
    virtual void OnCompositionChanged() noexcept = 0;
    /// The system takes the mouse away.
    virtual void OnCancelMode() noexcept = 0;
    /// A mouse button goes down on an inactive window, before the message itself.
    virtual void OnMouseActivate() noexcept = 0;
    virtual void OnFilesDropped(const std::vector<String>& paths) noexcept = 0;
    /// A message that any thread posted with IPlatformWindow::Post.
    virtual void OnUserMessage(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) noexcept = 0;
};

} // namespace Quorvex::GUI
