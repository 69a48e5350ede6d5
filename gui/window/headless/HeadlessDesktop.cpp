#include "gui/window/headless/HeadlessDesktop.h"

#include "gui/window/Monitors.h"

namespace Quorvex::GUI {

Rect HeadlessDesktop::GetWorkAreaNearest(const Rect& rect) const {
    if (monitors.empty())
        return primaryScreen;
    const auto index = NearestMonitor(monitors, rect);
    return index < workAreas.size() ? workAreas[index] : monitors[index];
}

} // namespace Quorvex::GUI
