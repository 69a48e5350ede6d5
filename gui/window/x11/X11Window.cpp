#include "gui/window/x11/X11Window.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "gui/window/x11/X11WindowSystem.h"

#include <algorithm>
#include <optional>

namespace Quorvex::GUI {

namespace {

constexpr long eventMask = ExposureMask | StructureNotifyMask | PropertyChangeMask | FocusChangeMask | KeyPressMask |
                           KeyReleaseMask | ButtonPressMask | ButtonReleaseMask | PointerMotionMask | EnterWindowMask |
                           LeaveWindowMask;

/// The server knows no empty windows, and no side above 16 bits signed.
unsigned int ServerSide(std::int32_t side) {
    return static_cast<unsigned int>(std::clamp(side, 1, 32767));
}

} // namespace

X11Window::X11Window(X11WindowSystem& system, WindowKind kind, const Rect& clientRect, const String& title,
                     IWindowEvents& events)
    : m_system(system), m_connection(system.GetConnection()), m_kind(kind), m_clientRect(clientRect), m_title(title),
      m_events(events), m_visual(system.GetOpaqueVisual()) {
    CreateHandle(m_visual);
    // Last of all: a window that cannot be made is none of the system's.
    m_identifier = m_system.Register(*this);
}

X11Window::~X11Window() {
    OnGone();
    m_system.Unregister(*this);
    DestroyHandle();
}

bool X11Window::IsUsable() const {
    return !m_isGone && !m_connection.IsGone();
}

void X11Window::CreateHandle(const X11Visual& visual) {
    if (m_connection.IsGone())
        throw Exception(__LINE__, "XCreateWindow");
    auto* const display = m_connection.Get();
    m_visual = visual;
    if (visual.visual != DefaultVisual(display, m_connection.GetScreen()))
        m_colormap = XCreateColormap(display, m_connection.GetRoot(), visual.visual, AllocNone);
    XSetWindowAttributes attributes{};
    // No background: the server would fill the window with it before each picture, and that flickers.
    attributes.background_pixmap = noXid;
    attributes.border_pixel = 0;
    // What is shown stays while the window is sized, until the next picture.
    attributes.bit_gravity = NorthWestGravity;
    attributes.event_mask = eventMask;
    attributes.colormap = m_colormap;
    const unsigned long mask =
        CWBackPixmap | CWBorderPixel | CWBitGravity | CWEventMask | (m_colormap != noXid ? CWColormap : 0);
    m_parent = m_connection.GetRoot();
    m_handle = XCreateWindow(display, m_parent, m_clientRect.left, m_clientRect.top, ServerSide(m_clientRect.Width()),
                             ServerSide(m_clientRect.Height()), 0, visual.depth, InputOutput, visual.visual, mask,
                             &attributes);
    if (m_handle == noXid)
        throw Exception(__LINE__, "XCreateWindow");
    SetHints();
}

void X11Window::DestroyHandle() {
    m_presenter.reset();
    if (m_connection.IsGone() || m_handle == noXid)
        return;
    XDestroyWindow(m_connection.Get(), m_handle);
    if (m_colormap != noXid)
        XFreeColormap(m_connection.Get(), m_colormap);
    m_handle = noXid;
    m_colormap = noXid;
}

void X11Window::OnGone() {
    if (m_isGone)
        return;
    m_isGone = true;
    m_isVisible = false;
    m_isInvalid = false;
    m_events.OnDestroyed();
}

void X11Window::OnHandleDestroyed() {
    m_presenter.reset();
    m_handle = noXid;
    OnGone();
}

X11Presenter& X11Window::GetPresenter() {
    if (!m_presenter)
        m_presenter = std::make_unique<X11Presenter>(m_connection, m_handle, m_visual);
    return *m_presenter;
}

void X11Window::ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                           std::uint32_t pitchBytes) {
    if (IsUsable())
        GetPresenter().Show(bits, width, height, pitchBytes, X11PixelFormat::Alpha::Opaque);
}

void X11Window::ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                              std::uint32_t pitchBytes) {
    if (IsUsable())
        GetPresenter().Show(bits, width, height, pitchBytes, X11PixelFormat::Alpha::Keep);
}

void X11Window::DispatchMouseMessagesAndHide() {
    m_system.DispatchMouseEvents();
    Hide();
}

bool X11Window::IsCompositionEnabled() const {
    return m_system.IsCompositionEnabled();
}

bool X11Window::Place(const Rect& rect) {
    if (!IsUsable() || rect == m_clientRect)
        return false;
    if (m_isVisible && (rect.Width() != m_clientRect.Width() || rect.Height() != m_clientRect.Height()))
        m_isInvalid = true;
    m_clientRect = rect;
    if (!m_isVisible)
        SetGeometryHints();
    m_placeSerial = NextRequest(m_connection.Get());
    XMoveResizeWindow(m_connection.Get(), m_handle, rect.left, rect.top, ServerSide(rect.Width()),
                      ServerSide(rect.Height()));
    return true;
}

void X11Window::SetClientRect(const Rect& rect) {
    if (Place(rect) && !m_isIconic)
        m_events.OnMovedOrSized(false);
}

Rect X11Window::TranslateToDesktop(const XConfigureEvent& event) const {
    int x = event.x;
    int y = event.y;
    // The server counts from the parent, which is the window manager's frame; the window manager from the root.
    if (event.send_event == 0 && m_parent != m_connection.GetRoot()) {
        ::Window child = noXid;
        XTranslateCoordinates(m_connection.Get(), m_handle, m_connection.GetRoot(), 0, 0, &x, &y, &child);
    }
    return {x, y, x + event.width, y + event.height};
}

void X11Window::OnConfigure(const XConfigureEvent& event) {
    if (event.serial < m_placeSerial || event.window != m_handle)
        return;
    const auto rect = TranslateToDesktop(event);
    // An empty area is one pixel large to the server.
    const bool isEmptyArea = m_clientRect.IsEmpty() && rect.Width() == 1 && rect.Height() == 1;
    if (rect == m_clientRect || isEmptyArea)
        return;
    if (rect.Width() != m_clientRect.Width() || rect.Height() != m_clientRect.Height())
        m_isInvalid = m_isVisible;
    m_clientRect = rect;
    if (!m_isIconic)
        m_events.OnMovedOrSized(false);
}

void X11Window::Show() {
    if (m_isVisible || !IsUsable())
        return;
    m_isVisible = true;
    XMapWindow(m_connection.Get(), m_handle);
    // The picture is drawn while the window manager is at work; if it comes too early it is repeated on exposure.
    m_isInvalid = !m_presenter || !m_presenter->HasPicture();
}

void X11Window::Hide() {
    if (!m_isVisible)
        return;
    m_isVisible = false;
    m_isInvalid = false;
    m_isIconic = false;
    if (IsUsable())
        XWithdrawWindow(m_connection.Get(), m_handle, m_connection.GetScreen());
}

void X11Window::OnMap() {
    OnStateChange();
    // Without a window manager nobody else gives the focus.
    if (m_kind == WindowKind::Main && !m_hasFocus && !m_system.HasWindowManager())
        Activate();
}

void X11Window::OnStateChange() {
    const auto state = m_connection.GetNumbers(m_handle, m_connection.GetAtom(X11Atom::WmState),
                                               m_connection.GetAtom(X11Atom::WmState), 1);
    const bool isIconic = m_isVisible && !state.empty() && state[0] == IconicState;
    if (isIconic == m_isIconic)
        return;
    m_isIconic = isIconic;
    m_isInvalid = m_isVisible && !isIconic;
    m_events.OnMovedOrSized(isIconic);
}

void X11Window::OnExpose() {
    const auto width = static_cast<std::uint32_t>(std::max(m_clientRect.Width(), 0));
    const auto height = static_cast<std::uint32_t>(std::max(m_clientRect.Height(), 0));
    if (m_isInvalid || !m_isVisible || (m_presenter && m_presenter->Repeat(width, height)))
        return;
    m_isInvalid = true;
}

void X11Window::OnFocus(bool hasFocus, X11Window* other) {
    if (hasFocus == m_hasFocus)
        return;
    m_hasFocus = hasFocus;
    m_events.OnActivated(hasFocus);
    m_events.OnFocusChanged(hasFocus, other);
}

void X11Window::OnEnter() {
    // Until then the cursor does not matter, and loading its theme takes time.
    if (m_isCursorApplied)
        return;
    m_isCursorApplied = true;
    XDefineCursor(m_connection.Get(), m_handle, m_system.GetCursor(m_cursor));
}

void X11Window::OnCompletion(const XShmCompletionEvent& event) {
    if (m_presenter)
        m_presenter->OnCompletion(event);
}

void X11Window::Activate() {
    if (!IsUsable() || !m_isVisible)
        return;
    auto* const display = m_connection.Get();
    if (m_system.HasWindowManager()) {
        // The request comes from an application and is made now (Extended Window Manager Hints, _NET_ACTIVE_WINDOW).
        m_connection.AskWindowManager(m_handle, m_connection.GetAtom(X11Atom::NetActiveWindow), {1, CurrentTime});
        return;
    }
    XRaiseWindow(display, m_handle);
    X11ErrorTrap trap(m_connection);
    XSetInputFocus(display, m_handle, RevertToParent, CurrentTime);
    // A window that is not on the screen yet cannot have the focus; it gets it when it is.
    trap.Synchronize();
}

void X11Window::BringToFront() {
    if (!IsUsable())
        return;
    m_above = nullptr;
    XRaiseWindow(m_connection.Get(), m_handle);
}

void X11Window::PlaceBelow(const X11Window& above) {
    if (m_above == &above || !IsUsable())
        return;
    m_above = &above;
    XWindowChanges changes{};
    changes.sibling = above.m_handle;
    changes.stack_mode = Below;
    // Windows in frames are no siblings; this asks the window manager then.
    XReconfigureWMWindow(m_connection.Get(), m_handle, m_connection.GetScreen(), CWSibling | CWStackMode, &changes);
}

void X11Window::SetEnabled(bool isEnabled) {
    if (isEnabled == m_isEnabled || m_isGone)
        return;
    // The home platform takes the mouse away from a window before it becomes deaf.
    if (!isEnabled)
        m_events.OnCancelMode();
    m_isEnabled = isEnabled;
    m_events.OnEnabled(isEnabled);
}

void X11Window::SetTitle(const String& title) {
    m_title = title;
    if (IsUsable())
        ApplyTitle();
}

void X11Window::SetCursor(CursorShape shape) {
    if (shape == m_cursor)
        return;
    m_cursor = shape;
    if (m_isCursorApplied && IsUsable())
        XDefineCursor(m_connection.Get(), m_handle, m_system.GetCursor(shape));
}

void X11Window::SetOwner(IPlatformWindow* owner) {
    m_owner = static_cast<X11Window*>(owner);
    AnnounceOwner();
}

void X11Window::AnnounceOwner() {
    if (!IsUsable())
        return;
    if (m_owner != nullptr)
        XSetTransientForHint(m_connection.Get(), m_handle, m_owner->m_handle);
    else
        XDeleteProperty(m_connection.Get(), m_handle, XA_WM_TRANSIENT_FOR);
}

void X11Window::Forget(const X11Window& window) {
    if (m_owner == &window)
        m_owner = nullptr;
    if (m_above == &window)
        m_above = nullptr;
}

bool X11Window::SetLayered(bool isLayered) {
    if (isLayered == m_isLayered || !IsUsable())
        return isLayered == m_isLayered;
    const auto visual = isLayered ? m_system.FindVisualWithAlpha() : std::optional(m_system.GetOpaqueVisual());
    if (!visual)
        return false;
    // The server fixes the visual when a window is created.
    const bool isVisible = m_isVisible;
    DestroyHandle();
    CreateHandle(*visual);
    m_system.AnnounceOwnerOfPanels(*this);
    m_isLayered = isLayered;
    m_isVisible = false;
    m_isCursorApplied = false;
    m_hasFocus = false;
    if (isVisible)
        Show();
    return true;
}

bool X11Window::Invalidate() {
    // Nothing shows of a hidden or minimised window; it is painted as a whole when it appears.
    m_isInvalid = m_isVisible && !m_isIconic;
    return true;
}

void X11Window::PaintNow() {
    if (!IsUsable())
        return;
    m_isInvalid = false;
    m_events.OnPaint();
}

void X11Window::Post(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) {
    m_system.Post({m_identifier, number, wParam, lParam});
}

} // namespace Quorvex::GUI
