#include "gui/window/Monitors.h"

#include <limits>

namespace Quorvex::GUI {

namespace {

// Floating point throughout: a side may span the whole 32-bit range.

double SharedArea(const Rect& a, const Rect& b) {
    const auto shared = a.Intersected(b);
    if (shared.IsEmpty())
        return 0;
    return (static_cast<double>(shared.right) - shared.left) * (static_cast<double>(shared.bottom) - shared.top);
}

double Gap(double firstStart, double firstEnd, double secondStart, double secondEnd) {
    return std::max({0.0, secondStart - firstEnd, firstStart - secondEnd});
}

double SquaredDistance(const Rect& a, const Rect& b) {
    const auto dx = Gap(a.left, a.right, b.left, b.right);
    const auto dy = Gap(a.top, a.bottom, b.top, b.bottom);
    return dx * dx + dy * dy;
}

} // namespace

std::size_t NearestMonitor(std::span<const Rect> monitors, const Rect& rect) {
    std::size_t best = 0;
    double bestArea = 0;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < monitors.size(); ++i) {
        const auto area = SharedArea(monitors[i], rect);
        const auto distance = SquaredDistance(monitors[i], rect);
        if (area > bestArea || (bestArea == 0 && distance < bestDistance)) {
            best = i;
            bestArea = area;
            bestDistance = distance;
        }
    }
    return best;
}

} // namespace Quorvex::GUI
