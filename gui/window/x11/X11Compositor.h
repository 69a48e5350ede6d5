#pragma once

#include "gui/window/x11/X11Connection.h"

namespace Quorvex::GUI {

/// Whether a compositing manager runs: it owns the selection _NET_WM_CM_Sn. Asked once, then kept up to date by events.
/// GUI thread.
class X11Compositor {
public:
    explicit X11Compositor(const X11Connection& connection) : m_connection(connection) {}

    bool IsRunning();
    /// True if the event tells that a compositor came or went.
    bool Handle(const XEvent& event);

private:
    void Ask();

    const X11Connection& m_connection;
    bool m_isKnown = false;
    ::Window m_owner = noXid;
};

} // namespace Quorvex::GUI
