#pragma once

#include <algorithm>
#include <cstdint>

namespace Quorvex::GUI {

/// Pixels from left up to right and top up to bottom, exclusive.
struct Rect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    std::int32_t Width() const { return right - left; }
    std::int32_t Height() const { return bottom - top; }
    bool IsEmpty() const { return right <= left || bottom <= top; }
    bool Contains(std::int32_t x, std::int32_t y) const { return left <= x && x < right && top <= y && y < bottom; }
    Rect Intersected(const Rect& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    Rect Shifted(std::int32_t dx, std::int32_t dy) const { return {left + dx, top + dy, right + dx, bottom + dy}; }

    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace Quorvex::GUI
