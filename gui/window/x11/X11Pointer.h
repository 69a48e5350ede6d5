#pragma once

#include "gui/window/x11/X11Window.h"

namespace Quorvex::GUI {

/// Turns pointer events into mouse messages: buttons 4 to 7 into wheels, two quick presses into a double click, leaving
/// during a drag into a leave after it. Knows who holds the mouse. GUI thread.
class X11Pointer {
public:
    explicit X11Pointer(const X11Connection& connection) : m_connection(connection) {}

    void OnButtonPress(X11Window& window, const XButtonEvent& event);
    void OnButtonRelease(X11Window& window, const XButtonEvent& event);
    void OnMotion(X11Window& window, const XMotionEvent& event);
    void OnEnter(X11Window& window, const XCrossingEvent& event);
    void OnLeave(X11Window& window, const XCrossingEvent& event);

    void SetCapture(X11Window& window);
    void ReleaseCapture();
    X11Window* GetCapture() const { return m_capture; }
    /// The window has gone.
    void Forget(const X11Window& window);

    /// Modifiers and buttons after the last event.
    unsigned int GetState() const { return m_state; }
    /// The window that the last event found under the pointer, if it was at that place and nobody held the mouse.
    X11Window* FindHovered(std::int32_t x, std::int32_t y) const;

private:
    struct Place {
        std::int32_t x = 0;
        std::int32_t y = 0;
    };

    void Note(X11Window& window, int x, int y, unsigned int stateBefore, unsigned int stateAfter);
    bool IsHeld() const;
    void Send(X11Window& window, MouseMessageNumber number, std::int32_t wheelDelta = 0);
    void PressLeft(X11Window& window, Time time);
    bool IsSecondClick(const X11Window& window, Time time) const;
    void SendLeave();
    void SendPendingLeave();

    const X11Connection& m_connection;
    X11Window* m_capture = nullptr;
    X11Window* m_hovered = nullptr;
    bool m_isLeavePending = false;
    bool m_isGrabbed = false;
    unsigned int m_state = 0;
    Place m_place;
    const X11Window* m_pressedWindow = nullptr;
    Time m_pressedTime = 0;
    Place m_pressedPlace;
};

} // namespace Quorvex::GUI
