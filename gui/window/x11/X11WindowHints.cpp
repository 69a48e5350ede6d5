#include "gui/window/x11/ProgramIcon.h"
#include "gui/window/x11/X11Text.h"
#include "gui/window/x11/X11Window.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>

// What a window tells its window manager: Inter-Client Communication Conventions Manual, section 4.1, and Extended
// Window Manager Hints.

namespace Quorvex::GUI {

void X11Window::SetHints() {
    ApplyTitle();
    SetIdentity();
    SetGeometryHints();
    SetInputHints(false);
    std::array protocols{m_connection.GetAtom(X11Atom::WmDeleteWindow), m_connection.GetAtom(X11Atom::NetWmPing)};
    XSetWMProtocols(m_connection.Get(), m_handle, protocols.data(), static_cast<int>(protocols.size()));
    const auto type = m_kind == WindowKind::Main ? X11Atom::NetWmWindowTypeNormal : X11Atom::NetWmWindowTypeUtility;
    m_connection.SetNumbers(m_handle, m_connection.GetAtom(X11Atom::NetWmWindowType), XA_ATOM,
                            {m_connection.GetAtom(type)});
    if (m_kind == WindowKind::Panel)
        SetPanelHints();
    else
        m_connection.SetNumbers(m_handle, m_connection.GetAtom(X11Atom::NetWmIcon), XA_CARDINAL, GetProgramIcon());
    if (m_owner != nullptr)
        AnnounceOwner();
}

void X11Window::SetIdentity() {
    // Instance and class, by which desktops find the program's icon and settings; the terminators are part of it.
    constexpr std::string_view classHint("varnolite\0Varnolite\0", 20);
    m_connection.SetBytes(m_handle, XA_WM_CLASS, XA_STRING, classHint.data(), classHint.size());
    m_connection.SetNumbers(m_handle, m_connection.GetAtom(X11Atom::NetWmPid), XA_CARDINAL,
                            {static_cast<unsigned long>(getpid())});
    // The number of the process means something on its own machine only.
    std::array<char, 256> machine{};
    if (gethostname(machine.data(), machine.size() - 1) == 0)
        m_connection.SetBytes(m_handle, XA_WM_CLIENT_MACHINE, XA_STRING, machine.data(),
                              std::string_view(machine.data()).size());
}

void X11Window::SetGeometryHints() {
    XSizeHints hints{};
    // The place is the user's own, from the last time, so the window manager shall keep it; and it is that of the
    // client area, whatever frame comes around it.
    hints.flags = USPosition | USSize | PWinGravity | PMinSize;
    hints.x = m_clientRect.left;
    hints.y = m_clientRect.top;
    hints.width = std::max(m_clientRect.Width(), 1);
    hints.height = std::max(m_clientRect.Height(), 1);
    hints.min_width = 1;
    hints.min_height = 1;
    hints.win_gravity = StaticGravity;
    XSetWMNormalHints(m_connection.Get(), m_handle, &hints);
}

void X11Window::SetInputHints(bool isUrgent) {
    XWMHints hints{};
    hints.flags = InputHint | StateHint | (isUrgent ? XUrgencyHint : 0);
    hints.input = m_kind == WindowKind::Main ? 1 : 0;
    hints.initial_state = NormalState;
    XSetWMHints(m_connection.Get(), m_handle, &hints);
}

void X11Window::SetPanelHints() {
    // Field "decorations" present and empty: no frame. The layout is that of the Motif window manager's MwmHints.
    constexpr unsigned long hasDecorations = 2;
    const auto motif = m_connection.GetAtom(X11Atom::MotifWmHints);
    m_connection.SetNumbers(m_handle, motif, motif, {hasDecorations, 0, 0, 0, 0});
    m_connection.SetNumbers(
        m_handle, m_connection.GetAtom(X11Atom::NetWmState), XA_ATOM,
        {m_connection.GetAtom(X11Atom::NetWmStateSkipTaskbar), m_connection.GetAtom(X11Atom::NetWmStateSkipPager)});
    // Time 0: the window does not take the focus when it appears.
    m_connection.SetNumbers(m_handle, m_connection.GetAtom(X11Atom::NetWmUserTime), XA_CARDINAL, {0});
}

void X11Window::ApplyTitle() {
    const auto utf8 = ToUtf8(m_title);
    const auto latin1 = ToLatin1(m_title);
    m_connection.SetBytes(m_handle, m_connection.GetAtom(X11Atom::NetWmName), m_connection.GetAtom(X11Atom::Utf8String),
                          utf8.data(), utf8.size());
    m_connection.SetBytes(m_handle, XA_WM_NAME, XA_STRING, latin1.data(), latin1.size());
}

void X11Window::Flash(std::uint32_t, std::uint32_t) {
    if (!IsUsable())
        return;
    // How often and how fast is up to the window manager.
    SetInputHints(true);
    constexpr long add = 1;
    m_connection.AskWindowManager(m_handle, m_connection.GetAtom(X11Atom::NetWmState),
                                  {add, static_cast<long>(m_connection.GetAtom(X11Atom::NetWmStateDemandsAttention))});
}

} // namespace Quorvex::GUI
