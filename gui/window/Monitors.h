#pragma once

#include "gui/Rect.h"

#include <cstddef>
#include <span>

namespace Quorvex::GUI {

/// The index of the monitor that shares the largest area with the rectangle; where none does, of the one that lies
/// nearest to it. The list must not be empty.
std::size_t NearestMonitor(std::span<const Rect> monitors, const Rect& rect);

} // namespace Quorvex::GUI
