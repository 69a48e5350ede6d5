#pragma once

#include "foundation/SharedPtr.h"
#include "gui/Control.h"

namespace Quorvex::GUI {

/// The edges of a panel: a drag of one, or of two at a corner, sizes the panel, while it is resizable. Covers the whole
/// panel and is hit on its edges only. Nothing is drawn.
class ResizeAction final : public Control {
public:
    explicit ResizeAction(Panel& panel) : m_panel(panel) {}

    void Paint() override {}
    bool DeleteContextObjects() override { return true; }
    bool IsHit(std::int32_t x, std::int32_t y) override;
    Control* OnMouseMove(std::int32_t x, std::int32_t y) override;
    Control* OnMouseLButtonDown(std::int32_t x, std::int32_t y) override;
    std::int32_t OnMouseMoveGlobal(std::int32_t x, std::int32_t y) override;
    std::int32_t OnMouseLButtonUpGlobal(std::int32_t x, std::int32_t y) override;
    /// The mouse has left the edge, or was taken away from a drag.
    Control* OnMouseLeave() override;

    bool IsDragging() const { return m_isDragging; }
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
    void MoveEdges(std::int32_t x, std::int32_t y);
    void Apply(const Rect& rect);
    void EndDrag();

    Panel& m_panel;
    bool m_isDragging = false;
    std::int32_t m_signX = 0;
    std::int32_t m_signY = 0;
    /// Panel coordinates.
    std::int32_t m_lastX = 0;
    std::int32_t m_lastY = 0;
    SharedPtr<Panel> m_dragged;
};

} // namespace Quorvex::GUI
