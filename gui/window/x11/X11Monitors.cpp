#include "gui/window/x11/X11Monitors.h"

#include "gui/window/Monitors.h"

#include <charconv>
#include <cmath>

namespace Quorvex::GUI {

namespace {

constexpr std::uint32_t usualDpi = 96;

std::optional<std::uint32_t> Sensible(double dpi) {
    if (dpi < 20 || dpi > 2000)
        return std::nullopt;
    return static_cast<std::uint32_t>(std::lround(dpi));
}

} // namespace

std::optional<std::uint32_t> DpiOfResources(std::string_view resources) {
    constexpr std::string_view name = "Xft.dpi:";
    while (!resources.empty()) {
        const auto end = resources.find('\n');
        auto line = resources.substr(0, end);
        resources.remove_prefix(end == std::string_view::npos ? resources.size() : end + 1);
        if (!line.starts_with(name))
            continue;
        line.remove_prefix(name.size());
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        double dpi = 0;
        std::from_chars(line.data(), line.data() + line.size(), dpi);
        return Sensible(dpi);
    }
    return std::nullopt;
}

std::optional<std::uint32_t> DpiOfMonitor(std::uint32_t pixels, std::uint32_t widthMillimetres,
                                          std::uint32_t heightMillimetres) {
    // Some monitors and projectors write their aspect ratio where the size belongs, in millimetres or centimetres.
    constexpr std::uint32_t ratios[][2]{{16, 9}, {16, 10}, {160, 90}, {160, 100}};
    for (const auto& [width, height] : ratios) {
        if (widthMillimetres == width && heightMillimetres == height)
            return std::nullopt;
    }
    if (widthMillimetres == 0)
        return std::nullopt;
    constexpr double millimetresPerInch = 25.4;
    return Sensible(pixels * millimetresPerInch / widthMillimetres);
}

void X11Monitors::Ask() {
    if (m_isKnown)
        return;
    m_isKnown = true;
    m_monitors.clear();
    m_primary = 0;
    m_monitorDpi.reset();
    if (!m_connection.IsGone() && AskRandR())
        return;
    auto* const display = m_connection.Get();
    const auto screen = m_connection.GetScreen();
    m_monitors.push_back({0, 0, DisplayWidth(display, screen), DisplayHeight(display, screen)});
}

bool X11Monitors::AskRandR() {
    auto* const display = m_connection.Get();
    int events = 0;
    int errors = 0;
    int major = 0;
    int minor = 0;
    if (XRRQueryExtension(display, &events, &errors) == 0 || XRRQueryVersion(display, &major, &minor) == 0)
        return false;
    if (m_randrEvents == 0) {
        m_randrEvents = events;
        XRRSelectInput(display, m_connection.GetRoot(), RRScreenChangeNotifyMask);
    }
    // The list of monitors came with version 1.5.
    if (major < 1 || (major == 1 && minor < 5))
        return false;
    int count = 0;
    auto* const found = XRRGetMonitors(display, m_connection.GetRoot(), 1, &count);
    for (int i = 0; i < count; ++i) {
        const auto& monitor = found[i];
        if (monitor.primary != 0 || i == 0) {
            m_primary = m_monitors.size();
            m_monitorDpi =
                DpiOfMonitor(static_cast<std::uint32_t>(monitor.width), static_cast<std::uint32_t>(monitor.mwidth),
                             static_cast<std::uint32_t>(monitor.mheight));
        }
        m_monitors.push_back({monitor.x, monitor.y, monitor.x + monitor.width, monitor.y + monitor.height});
    }
    if (found != nullptr)
        XRRFreeMonitors(found);
    return !m_monitors.empty();
}

const std::vector<Rect>& X11Monitors::GetMonitors() {
    Ask();
    return m_monitors;
}

const Rect& X11Monitors::GetPrimary() {
    Ask();
    return m_monitors[m_primary];
}

std::optional<Rect> X11Monitors::AskWorkArea() const {
    // One rectangle of four numbers for each virtual desktop (Extended Window Manager Hints, _NET_WORKAREA).
    constexpr long mostDesktops = 64;
    const auto root = m_connection.GetRoot();
    const auto areas =
        m_connection.GetNumbers(root, m_connection.GetAtom(X11Atom::NetWorkArea), XA_CARDINAL, 4 * mostDesktops);
    if (areas.size() < 4)
        return std::nullopt;
    const auto desktop =
        m_connection.GetNumbers(root, m_connection.GetAtom(X11Atom::NetCurrentDesktop), XA_CARDINAL, 1);
    auto first = desktop.empty() ? 0 : desktop[0] * 4;
    if (first + 4 > areas.size())
        first = 0;
    const auto left = static_cast<std::int32_t>(areas[first]);
    const auto top = static_cast<std::int32_t>(areas[first + 1]);
    return Rect{left, top, left + static_cast<std::int32_t>(areas[first + 2]),
                top + static_cast<std::int32_t>(areas[first + 3])};
}

Rect X11Monitors::GetWorkAreaNearest(const Rect& rect) {
    const auto& monitors = GetMonitors();
    const auto monitor = monitors[NearestMonitor(monitors, rect)];
    const auto free = AskWorkArea();
    // The hint covers all monitors together, so it may miss this one.
    const auto area = free ? monitor.Intersected(*free) : monitor;
    return area.IsEmpty() ? monitor : area;
}

std::uint32_t X11Monitors::GetDpi() {
    const char* const resources = XResourceManagerString(m_connection.Get());
    if (const auto dpi = DpiOfResources(resources != nullptr ? resources : ""))
        return *dpi;
    Ask();
    return m_monitorDpi.value_or(usualDpi);
}

bool X11Monitors::Handle(XEvent& event) {
    const bool isRandR = m_randrEvents != 0 && event.type == m_randrEvents + RRScreenChangeNotify;
    const bool isRoot = event.type == ConfigureNotify && event.xconfigure.window == m_connection.GetRoot();
    if (!isRandR && !isRoot)
        return false;
    XRRUpdateConfiguration(&event);
    m_isKnown = false;
    return true;
}

} // namespace Quorvex::GUI
