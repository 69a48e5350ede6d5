#include "app/WindowRectangle.h"

#include <algorithm>

namespace Quorvex::App {

GUI::Rect CentredWindowRectangle(const GUI::Rect& workArea, std::int32_t scale) {
    constexpr std::int32_t width = 1024;
    constexpr std::int32_t height = 768;
    const std::int32_t columns = std::min(width * scale, workArea.Width());
    const std::int32_t rows = std::min(height * scale, workArea.Height());
    const std::int32_t left = workArea.left + (workArea.Width() - columns) / 2;
    const std::int32_t top = workArea.top + (workArea.Height() - rows) / 2;
    return {left, top, left + columns, top + rows};
}

std::optional<GUI::Rect> RestoredWindowRectangle(const GUI::Rect& stored, const GUI::IWindowSystem& system) {
    if (stored.left == stored.right || stored.top == stored.bottom)
        return std::nullopt;
    const GUI::Rect inside = stored.Intersected(system.GetWorkAreaNearest(stored));
    if (inside.IsEmpty())
        return std::nullopt;
    return inside;
}

} // namespace Quorvex::App
