#include "gui/PanelStacking.h"

#include "foundation/Report.h"

#include <algorithm>

namespace Quorvex::GUI {

namespace {

bool Overlap(const Rect& a, const Rect& b) {
    return !a.Intersected(b).IsEmpty();
}

bool OverlapOnMonitor(const Rect& a, const Rect& b, std::span<const Rect> monitors) {
    return std::any_of(monitors.begin(), monitors.end(),
                       [&](const Rect& monitor) { return Overlap(a.Intersected(monitor), b.Intersected(monitor)); });
}

bool Contains(const Rect& outer, const Rect& inner) {
    return outer.Intersected(inner) == inner;
}

bool CrossesMonitorEdge(const Rect& rect, std::span<const Rect> monitors) {
    return std::none_of(monitors.begin(), monitors.end(), [&](const Rect& monitor) { return Contains(monitor, rect); });
}

bool IsUnbounded(std::span<const Rect> monitors) {
    return monitors.size() == 1 && monitors[0] == unboundedMonitor;
}

/// Nothing is known of the desktop, so nothing can be said about a window's place on it.
std::vector<StackingDecision> StackWithinMain(std::span<const StackedPanel> panels) {
    std::vector<StackingDecision> decisions(panels.size());
    const auto main =
        std::find_if(panels.begin(), panels.end(), [](const StackedPanel& panel) { return panel.isMain; });
    if (main == panels.end())
        return decisions;
    const auto mainIndex = static_cast<std::size_t>(main - panels.begin());
    for (std::size_t i = 0; i < panels.size(); ++i)
        if (i != mainIndex)
            decisions[i] = {WindowType::System, mainIndex, mainIndex};
    return decisions;
}

class Stack {
public:
    Stack(std::span<const StackedPanel> panels, std::span<const Rect> monitors)
        : m_panels(panels), m_monitors(monitors), m_decisions(panels.size()) {}

    std::vector<StackingDecision> Decide() {
        for (std::size_t i = 0; i < m_panels.size(); ++i)
            if (!m_panels[i].isMain)
                m_decisions[i] = Decide(i);
        return std::move(m_decisions);
    }

private:
    /// The lower panels with a window of their own that the panel lies over, from the topmost down. A panel painted
    /// into another's window is covered by the test against that one.
    std::vector<std::size_t> WindowsBelow(std::size_t index) const {
        std::vector<std::size_t> below;
        const Rect& rect = m_panels[index].rect;
        for (std::size_t lower = index; lower-- > 0;) {
            const Rect& other = m_panels[lower].rect;
            const bool isOnMonitor = OverlapOnMonitor(rect, other, m_monitors);
            AreOverlapTestsConsistent(isOnMonitor, Overlap(rect, other));
            if (isOnMonitor && !m_decisions[lower].host)
                below.push_back(lower);
        }
        return below;
    }

    StackingDecision Decide(std::size_t index) const {
        const std::vector<std::size_t> below = WindowsBelow(index);
        if (below.empty())
            return {};
        const auto system = std::find_if(below.begin(), below.end(), [&](std::size_t lower) {
            return m_decisions[lower].windowType == WindowType::System;
        });
        const std::size_t lower = system != below.end() ? *system : below.front();
        const Rect& rect = m_panels[index].rect;
        // With another window in between, the host's would lie below that one.
        const bool canBeHosted = below.size() == 1 && system != below.end();
        if (canBeHosted && Contains(m_panels[lower].rect, rect) && !CrossesMonitorEdge(rect, m_monitors))
            return {WindowType::System, lower, lower};
        return {WindowType::Own, std::nullopt, lower};
    }

    std::span<const StackedPanel> m_panels;
    std::span<const Rect> m_monitors;
    std::vector<StackingDecision> m_decisions;
};

} // namespace

bool AreOverlapTestsConsistent(bool isOverlapOnMonitor, bool isOverlapOnDesktop) {
    if (!isOverlapOnMonitor || isOverlapOnDesktop)
        return true;
    ReportProblem(__LINE__, "GUI::OnGlobalPaint");
    return false;
}

std::vector<StackingDecision> DecideStacking(std::span<const StackedPanel> panels, std::span<const Rect> monitors) {
    return IsUnbounded(monitors) ? StackWithinMain(panels) : Stack(panels, monitors).Decide();
}

} // namespace Quorvex::GUI
