#pragma once

#include "gui/PanelSurface.h"

#include <optional>
#include <span>
#include <vector>

namespace Quorvex::GUI {

/// One panel as the decision sees it.
struct StackedPanel {
    Rect rect; ///< Desktop coordinates.
    bool isMain = false;
};

/// How one panel comes to the screen.
struct StackingDecision {
    std::string_view windowType = WindowType::System;
    /// The panel into whose window it is painted; none: a window of its own.
    std::optional<std::size_t> host;
    /// The lower panel that it is tied to.
    std::optional<std::size_t> lower;
};

/// The one rectangle that stands for the desktop where the system tells nothing about its monitors.
inline constexpr Rect unboundedMonitor{INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX};

/// Decides for every panel, given from the lowest to the topmost, whether it is painted into the window of a panel
/// below it or needs one of its own. A panel that lies wholly within a lower one, on one monitor, is painted into its
/// window. One that covers a lower one in part, crosses a monitor's edge, or lies over another own window gets one
/// itself. One that touches nothing stands for itself. On an unbounded desktop all panels are painted into the main
/// window.
std::vector<StackingDecision> DecideStacking(std::span<const StackedPanel> panels, std::span<const Rect> monitors);

/// Panels overlap on the desktop if they do so on a monitor. Reports "GUI::OnGlobalPaint" and answers false where a
/// monitor tells otherwise.
bool AreOverlapTestsConsistent(bool isOverlapOnMonitor, bool isOverlapOnDesktop);

} // namespace Quorvex::GUI
