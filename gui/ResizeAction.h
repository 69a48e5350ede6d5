#pragma once

#include "gui/DragAction.h"

namespace Quorvex::GUI {

/// The edges of a panel: a drag of one, or of two at a corner, sizes the panel, while it is resizable. Covers the whole
/// panel and is hit on its edges only.
class ResizeAction final : public DragAction {
public:
    explicit ResizeAction(Panel& panel) : DragAction(panel) {}

    bool IsHit(std::int32_t x, std::int32_t y) override;
    Control* OnMouseMove(std::int32_t x, std::int32_t y) override;
    /// The mouse has left the edge, or was taken away from a drag.
    Control* OnMouseLeave() override;

    /// The smallest panel that a drag leaves, in pixels.
    static std::int32_t SmallestWidth();
    static std::int32_t SmallestHeight();

private:
    /// Which edge lies at a position: -1 left or top, 1 right or bottom, 0 none.
    struct Edges {
        std::int32_t x = 0;
        std::int32_t y = 0;
    };
    Edges EdgesAt(std::int32_t x, std::int32_t y) const;
    void BeginDrag(std::int32_t x, std::int32_t y) override;
    void ContinueDrag(std::int32_t x, std::int32_t y) override;
    void Apply(const Rect& rect);

    std::int32_t m_signX = 0;
    std::int32_t m_signY = 0;
    /// Panel coordinates.
    std::int32_t m_lastX = 0;
    std::int32_t m_lastY = 0;
};

} // namespace Quorvex::GUI
