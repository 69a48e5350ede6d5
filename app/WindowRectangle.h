#pragma once

#include "gui/window/WindowSystem.h"

#include <optional>

namespace Quorvex::App {

/// Where a window opens that has no stored place: 1024 x 768 times the scale, centred in the work area and no larger
/// than it.
GUI::Rect CentredWindowRectangle(const GUI::Rect& workArea, std::int32_t scale);

/// Where a window with a stored place opens: the part of it inside the work area of the monitor nearest to it. Empty
/// where nothing is stored (an edge pair is equal), or where no part of it lies there any more.
std::optional<GUI::Rect> RestoredWindowRectangle(const GUI::Rect& stored, const GUI::IWindowSystem& system);

} // namespace Quorvex::App
