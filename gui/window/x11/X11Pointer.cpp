#include "gui/window/x11/X11Pointer.h"

#include "foundation/Report.h"
#include "gui/window/MessageWords.h"

#include <array>
#include <cstdlib>
#include <utility>

namespace Quorvex::GUI {

namespace {

constexpr unsigned int allButtons = Button1Mask | Button2Mask | Button3Mask;
constexpr std::int32_t notch = 120;
// The home platform's usual values.
constexpr Time doubleClickMilliseconds = 500;
constexpr std::int32_t doubleClickReach = 2;

struct WheelButton {
    unsigned int button;
    MouseMessageNumber number;
    std::int32_t delta;
};

/// Away from the user and to the right are positive. Wheels are buttons 4 to 7 to the server by old custom.
constexpr std::array wheelButtons{
    WheelButton{4, MouseMessageNumber::Wheel, notch},
    WheelButton{5, MouseMessageNumber::Wheel, -notch},
    WheelButton{6, MouseMessageNumber::HorizontalWheel, -notch},
    WheelButton{7, MouseMessageNumber::HorizontalWheel, notch},
};

unsigned int MaskOf(unsigned int button) {
    return button <= 3 ? static_cast<unsigned int>(Button1Mask) << (button - 1) : 0;
}

std::uint32_t KeysOf(unsigned int state) {
    return ((state & Button1Mask) != 0 ? MouseKey::LeftButton : 0) |
           ((state & Button2Mask) != 0 ? MouseKey::MiddleButton : 0) |
           ((state & Button3Mask) != 0 ? MouseKey::RightButton : 0) | ((state & ShiftMask) != 0 ? MouseKey::Shift : 0) |
           ((state & ControlMask) != 0 ? MouseKey::Control : 0);
}

} // namespace

void X11Pointer::Note(X11Window& window, int x, int y, unsigned int stateBefore, unsigned int stateAfter) {
    // From a press to its release the server sends everything to the window of the press, wherever the pointer is.
    if (m_capture == nullptr && (stateBefore & allButtons) == 0)
        m_hovered = &window;
    m_state = stateAfter;
    m_place = {x, y};
}

bool X11Pointer::IsHeld() const {
    return m_capture != nullptr || (m_state & allButtons) != 0;
}

void X11Pointer::Send(X11Window& window, MouseMessageNumber number, std::int32_t wheelDelta) {
    auto& target = m_capture != nullptr ? *m_capture : window;
    if (!target.IsEnabled())
        return;
    target.GetEvents().OnMouseMessage(
        MakeMouseMessage(target, number, m_place.x, m_place.y, target.GetClientRect(), KeysOf(m_state), wheelDelta));
}

void X11Pointer::OnButtonPress(X11Window& window, const XButtonEvent& event) {
    Note(window, event.x_root, event.y_root, event.state, event.state | MaskOf(event.button));
    for (const auto& wheel : wheelButtons) {
        if (wheel.button == event.button)
            Send(window, wheel.number, wheel.delta);
    }
    if (event.button == Button1)
        PressLeft(window, event.time);
}

void X11Pointer::PressLeft(X11Window& window, Time time) {
    if (!window.HasFocus() && window.IsEnabled())
        window.GetEvents().OnMouseActivate();
    const bool isSecond = IsSecondClick(window, time);
    // A third click begins anew.
    m_pressedWindow = isSecond ? nullptr : &window;
    m_pressedTime = time;
    m_pressedPlace = m_place;
    Send(window, isSecond ? MouseMessageNumber::LeftButtonDoubleClick : MouseMessageNumber::LeftButtonDown);
}

bool X11Pointer::IsSecondClick(const X11Window& window, Time time) const {
    return m_pressedWindow == &window && time - m_pressedTime <= doubleClickMilliseconds &&
           std::abs(m_place.x - m_pressedPlace.x) <= doubleClickReach &&
           std::abs(m_place.y - m_pressedPlace.y) <= doubleClickReach;
}

void X11Pointer::OnButtonRelease(X11Window& window, const XButtonEvent& event) {
    Note(window, event.x_root, event.y_root, event.state, event.state & ~MaskOf(event.button));
    if (event.button == Button1)
        Send(window, MouseMessageNumber::LeftButtonUp);
    SendPendingLeave();
}

void X11Pointer::OnMotion(X11Window& window, const XMotionEvent& event) {
    Note(window, event.x_root, event.y_root, event.state, event.state);
    Send(window, MouseMessageNumber::Move);
}

void X11Pointer::OnEnter(X11Window& window, const XCrossingEvent& event) {
    m_isLeavePending = false;
    // A grab of the window manager's ends where it began; nothing has moved.
    if (event.mode == NotifyGrab)
        return;
    Note(window, event.x_root, event.y_root, event.state, event.state);
    Send(window, MouseMessageNumber::Move);
}

void X11Pointer::OnLeave(X11Window& window, const XCrossingEvent& event) {
    if (event.mode == NotifyGrab || m_hovered != &window)
        return;
    m_state = event.state;
    m_place = {event.x_root, event.y_root};
    m_isLeavePending = true;
    SendPendingLeave();
}

void X11Pointer::SendPendingLeave() {
    if (!m_isLeavePending || IsHeld())
        return;
    m_isLeavePending = false;
    if (auto* const left = std::exchange(m_hovered, nullptr))
        Send(*left, MouseMessageNumber::Leave);
}

void X11Pointer::SetCapture(X11Window& window) {
    m_capture = &window;
    // A button that is down has grabbed the pointer already.
    if ((m_state & allButtons) != 0 || m_isGrabbed || m_connection.IsGone())
        return;
    constexpr unsigned int mask = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
    const int result = XGrabPointer(m_connection.Get(), window.GetHandle(), 0, mask, GrabModeAsync, GrabModeAsync,
                                    noXid, noXid, CurrentTime);
    m_isGrabbed = result == GrabSuccess;
    if (!m_isGrabbed)
        ReportFailure(__LINE__, "XGrabPointer", static_cast<std::uint32_t>(result));
}

void X11Pointer::ReleaseCapture() {
    m_capture = nullptr;
    if (m_isGrabbed && !m_connection.IsGone())
        XUngrabPointer(m_connection.Get(), CurrentTime);
    m_isGrabbed = false;
    SendPendingLeave();
}

void X11Pointer::Forget(const X11Window& window) {
    if (m_capture == &window) {
        m_isLeavePending = false;
        ReleaseCapture();
    }
    if (m_hovered == &window)
        m_hovered = nullptr;
    if (m_pressedWindow == &window)
        m_pressedWindow = nullptr;
}

X11Window* X11Pointer::FindHovered(std::int32_t x, std::int32_t y) const {
    const bool isThere = !IsHeld() && m_place.x == x && m_place.y == y && !m_isLeavePending;
    return isThere ? m_hovered : nullptr;
}

} // namespace Quorvex::GUI
