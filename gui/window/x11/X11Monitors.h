#pragma once

#include "gui/window/x11/X11Connection.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace Quorvex::GUI {

/// The value of "Xft.dpi" in the text of the server's resources, as desktops write it; empty without a sensible one.
std::optional<std::uint32_t> DpiOfResources(std::string_view resources);
/// From the size of a monitor as it tells it itself; empty where it tells nothing, or an aspect ratio in the place of a
/// size.
std::optional<std::uint32_t> DpiOfMonitor(std::uint32_t pixels, std::uint32_t widthMillimetres,
                                          std::uint32_t heightMillimetres);

/// Monitors, work areas and resolution of the screen. The server is asked at the first use of each and again only after
/// it told of a change. GUI thread.
class X11Monitors {
public:
    explicit X11Monitors(const X11Connection& connection) : m_connection(connection) {}

    /// At least one: without RandR 1.5 the whole screen.
    const std::vector<Rect>& GetMonitors();
    const Rect& GetPrimary();
    /// The part of the nearest monitor that panels of the desktop leave free.
    Rect GetWorkAreaNearest(const Rect& rect);
    std::uint32_t GetDpi();

    /// True if the event was about the monitors.
    bool Handle(XEvent& event);

private:
    void Ask();
    bool AskRandR();
    std::optional<Rect> AskWorkArea() const;

    const X11Connection& m_connection;
    bool m_isKnown = false;
    int m_randrEvents = 0; ///< The first event number of RandR; 0 until it is asked.
    std::vector<Rect> m_monitors;
    std::size_t m_primary = 0;
    std::optional<std::uint32_t> m_monitorDpi;
};

} // namespace Quorvex::GUI
