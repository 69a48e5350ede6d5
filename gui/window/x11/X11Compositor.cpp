#include "gui/window/x11/X11Compositor.h"

namespace Quorvex::GUI {

bool X11Compositor::IsRunning() {
    Ask();
    return m_owner != noXid;
}

void X11Compositor::Ask() {
    if (m_isKnown || m_connection.IsGone())
        return;
    m_isKnown = true;
    auto* const display = m_connection.Get();
    m_owner = XGetSelectionOwner(display, m_connection.GetAtom(X11Atom::CompositorSelection));
    if (m_owner == noXid)
        return;
    // The owner's window tells of its end.
    X11ErrorTrap trap(m_connection);
    XSelectInput(display, m_owner, StructureNotifyMask);
    if (trap.Synchronize() != 0)
        m_owner = noXid;
}

bool X11Compositor::Handle(const XEvent& event) {
    const bool hasCome =
        event.type == ClientMessage && event.xclient.window == m_connection.GetRoot() &&
        event.xclient.message_type == m_connection.GetAtom(X11Atom::Manager) &&
        static_cast<Atom>(event.xclient.data.l[1]) == m_connection.GetAtom(X11Atom::CompositorSelection);
    const bool hasGone = event.type == DestroyNotify && m_owner != noXid && event.xdestroywindow.window == m_owner;
    if (hasCome || hasGone)
        m_isKnown = false;
    return hasCome || hasGone;
}

} // namespace Quorvex::GUI
