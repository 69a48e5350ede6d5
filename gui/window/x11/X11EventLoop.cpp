#include "gui/window/x11/X11WindowSystem.h"

#include "foundation/Report.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <utility>

// The half of the window system that waits for messages and hands them out.

namespace Quorvex::GUI {

namespace {

constexpr long pointerEvents =
    ButtonPressMask | ButtonReleaseMask | PointerMotionMask | EnterWindowMask | LeaveWindowMask;

bool IsPointerEvent(int type) {
    return type == MotionNotify || type == ButtonPress || type == ButtonRelease || type == EnterNotify ||
           type == LeaveNotify;
}

/// A focus event that is no change of the focus: keyboard grabs begin and end, the pointer brings the focus along.
bool IsFalseFocus(const XFocusChangeEvent& event) {
    return event.mode == NotifyGrab || event.mode == NotifyUngrab || event.detail == NotifyPointer ||
           event.detail == NotifyPointerRoot || event.detail == NotifyInferior;
}

} // namespace

std::uint64_t X11WindowSystem::Now() {
    using namespace std::chrono;
    return static_cast<std::uint64_t>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

IWindowSystem::Dispatched X11WindowSystem::DispatchNextMessage() {
    for (;;) {
        if (m_connection.IsGone()) {
            EndWithDisplay();
            return Dispatched::Quit;
        }
        // In turns, so that neither workers nor the user can keep the other waiting.
        m_arePostsNext = !m_arePostsNext;
        if (m_arePostsNext ? DispatchPosted() || DispatchEvent() : DispatchEvent() || DispatchPosted())
            return Dispatched::Message;
        if (std::exchange(m_hasQuit, false))
            return Dispatched::Quit;
        // Timers go before paints: what they change is painted along.
        if (DispatchTimer() || DispatchPaint())
            return Dispatched::Message;
        Wait();
    }
}

void X11WindowSystem::EndWithDisplay() {
    if (std::exchange(m_hasEnded, true))
        return;
    const auto windows = m_windows;
    for (auto* window : windows) {
        // An owner may let other windows go when one is destroyed.
        if (std::ranges::find(m_windows, window) != m_windows.end())
            window->OnGone();
    }
}

bool X11WindowSystem::DispatchPosted() {
    const auto message = m_posts.Take();
    if (!message)
        return false;
    const auto found = std::ranges::find(m_windows, message->window, &X11Window::GetIdentifier);
    if (found == m_windows.end())
        return true;
    if (message->number == UserMessage::Invalidate)
        (*found)->Invalidate();
    else
        (*found)->GetEvents().OnUserMessage(message->number, message->wParam, message->lParam);
    return true;
}

bool X11WindowSystem::DispatchTimer() {
    const auto identifier = m_timers.TakeDue(Now());
    if (!identifier)
        return false;
    if (m_timerHook)
        m_timerHook(*identifier);
    return true;
}

bool X11WindowSystem::DispatchPaint() {
    const auto invalid = std::ranges::find_if(m_windows, &X11Window::IsInvalid);
    if (invalid == m_windows.end())
        return false;
    (*invalid)->PaintNow();
    return true;
}

void X11WindowSystem::Wait() {
    pollfd sources[]{{m_connection.GetDescriptor(), POLLIN, 0}, {m_posts.GetDescriptor(), POLLIN, 0}};
    int milliseconds = -1;
    if (const auto due = m_timers.GetNextDue()) {
        const auto now = Now();
        constexpr std::uint64_t longest = 60000;
        milliseconds = static_cast<int>(*due > now ? std::min(*due - now, longest) : 0);
    }
    if (poll(sources, 2, milliseconds) == -1 && errno != EINTR)
        ReportFailure(__LINE__, "poll");
}

bool X11WindowSystem::DispatchEvent() {
    auto* const display = m_connection.Get();
    if (XEventsQueued(display, QueuedAfterFlush) == 0)
        return false;
    XEvent event;
    XNextEvent(display, &event);
    const bool isPointer = IsPointerEvent(event.type);
    Handle(event);
    // Mouse messages only queue up with the program, which paints once for all that came together.
    while (isPointer && XEventsQueued(display, QueuedAlready) > 0) {
        XPeekEvent(display, &event);
        if (!IsPointerEvent(event.type))
            break;
        XNextEvent(display, &event);
        Handle(event);
    }
    return true;
}

void X11WindowSystem::DispatchMouseEvents() {
    if (m_connection.IsGone())
        return;
    XEvent event;
    while (XCheckMaskEvent(m_connection.Get(), pointerEvents, &event) != 0)
        Handle(event);
}

void X11WindowSystem::Handle(XEvent& event) {
    if (event.type == MappingNotify) {
        XRefreshKeyboardMapping(&event.xmapping);
        return;
    }
    if (HandleDesktop(event))
        return;
    auto* const window = Find(event.xany.window);
    if (window == nullptr)
        return;
    if (IsPointerEvent(event.type)) {
        HandlePointer(*window, event);
        m_keyboard.SetState(m_pointer.GetState());
    } else {
        HandleWindow(*window, event);
    }
}

bool X11WindowSystem::HandleDesktop(XEvent& event) {
    if (m_monitors.Handle(event))
        return true;
    if (!m_compositor.Handle(event))
        return false;
    const auto windows = m_windows;
    for (auto* window : windows) {
        if (std::ranges::find(m_windows, window) != m_windows.end())
            window->GetEvents().OnCompositionChanged();
    }
    return true;
}

void X11WindowSystem::HandlePointer(X11Window& window, XEvent& event) {
    switch (event.type) {
    case MotionNotify:
        SkipToLastMotion(event);
        m_pointer.OnMotion(window, event.xmotion);
        break;
    case ButtonPress:
        m_pointer.OnButtonPress(window, event.xbutton);
        break;
    case ButtonRelease:
        m_pointer.OnButtonRelease(window, event.xbutton);
        break;
    case EnterNotify:
        window.OnEnter();
        m_pointer.OnEnter(window, event.xcrossing);
        break;
    default:
        m_pointer.OnLeave(window, event.xcrossing);
        break;
    }
}

/// Of several moves in a row only the last one matters, as on the home platform.
void X11WindowSystem::SkipToLastMotion(XEvent& event) {
    auto* const display = m_connection.Get();
    while (XEventsQueued(display, QueuedAlready) > 0) {
        XEvent next;
        XPeekEvent(display, &next);
        if (next.type != MotionNotify || next.xmotion.window != event.xmotion.window)
            return;
        XNextEvent(display, &event);
    }
}

void X11WindowSystem::HandleWindow(X11Window& window, XEvent& event) {
    switch (event.type) {
    case Expose:
        // The last one of a series stands for all: the picture is shown as a whole.
        if (event.xexpose.count == 0)
            window.OnExpose();
        break;
    case ConfigureNotify:
        HandleConfigure(window, event);
        break;
    case ReparentNotify:
        window.OnReparent(event.xreparent);
        break;
    case MapNotify:
        window.OnMap();
        break;
    case UnmapNotify:
        window.OnStateChange();
        break;
    case PropertyNotify:
        if (event.xproperty.atom == m_connection.GetAtom(X11Atom::WmState))
            window.OnStateChange();
        break;
    case DestroyNotify:
        window.OnHandleDestroyed();
        break;
    default:
        HandleInput(window, event);
        break;
    }
}

void X11WindowSystem::HandleInput(X11Window& window, XEvent& event) {
    switch (event.type) {
    case KeyPress:
    case KeyRelease:
        HandleKey(window, event.xkey);
        break;
    case FocusIn:
        if (!IsFalseFocus(event.xfocus))
            window.OnFocus(true, std::exchange(m_focusSource, nullptr));
        break;
    case FocusOut:
        if (!IsFalseFocus(event.xfocus))
            HandleFocusOut(window);
        break;
    case ClientMessage:
        HandleClientMessage(window, event.xclient);
        break;
    default:
        if (m_completionType == 0)
            m_completionType = XShmGetEventBase(m_connection.Get()) + ShmCompletion;
        if (event.type == m_completionType)
            window.OnCompletion(reinterpret_cast<const XShmCompletionEvent&>(event));
        break;
    }
}

void X11WindowSystem::HandleConfigure(X11Window& window, XEvent& event) {
    // A window that is sized with the mouse is told many sizes; only the last one is still true.
    XEvent next;
    while (XCheckTypedWindowEvent(m_connection.Get(), event.xconfigure.window, ConfigureNotify, &next) != 0)
        event = next;
    window.OnConfigure(event.xconfigure);
}

void X11WindowSystem::HandleFocusOut(X11Window& window) {
    m_keyboard.ForgetKeys();
    auto* const next = FindNextFocus();
    m_focusSource = next != nullptr ? &window : nullptr;
    window.OnFocus(false, next);
}

/// The window of this program that takes the focus, if its event waits behind the loss of another's.
X11Window* X11WindowSystem::FindNextFocus() const {
    struct Search {
        const X11WindowSystem* system;
        X11Window* found;
    } search{this, nullptr};
    const auto look = [](Display*, XEvent* event, XPointer argument) {
        auto& current = *reinterpret_cast<Search*>(argument);
        if (event->type == FocusIn && !IsFalseFocus(event->xfocus))
            current.found = current.system->Find(event->xfocus.window);
        // Nothing is taken out of the queue.
        return 0;
    };
    XEvent unused;
    XCheckIfEvent(m_connection.Get(), &unused, look, reinterpret_cast<XPointer>(&search));
    return search.found;
}

void X11WindowSystem::HandleClientMessage(X11Window& window, const XClientMessageEvent& event) {
    if (event.message_type != m_connection.GetAtom(X11Atom::WmProtocols))
        return;
    const auto protocol = static_cast<Atom>(event.data.l[0]);
    if (protocol == m_connection.GetAtom(X11Atom::WmDeleteWindow)) {
        if (window.IsEnabled())
            window.GetEvents().OnClose();
    } else if (protocol == m_connection.GetAtom(X11Atom::NetWmPing)) {
        // The answer is the message itself, sent to the root window.
        XEvent answer{};
        answer.xclient = event;
        answer.xclient.window = m_connection.GetRoot();
        XSendEvent(m_connection.Get(), m_connection.GetRoot(), 0, SubstructureNotifyMask | SubstructureRedirectMask,
                   &answer);
    }
}

void X11WindowSystem::HandleKey(X11Window& window, XKeyEvent& event) {
    const bool isPress = event.type == KeyPress;
    const auto key = isPress ? m_keyboard.Press(event) : m_keyboard.Release(event);
    if (key.code == 0 || !window.IsEnabled())
        return;
    if (isPress)
        window.GetEvents().OnKeyDown(key.code, key.data);
    else
        window.GetEvents().OnKeyUp(key.code, key.data);
}

} // namespace Quorvex::GUI
