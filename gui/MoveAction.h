#pragma once

#include "foundation/SharedPtr.h"
#include "gui/Control.h"

namespace Quorvex::GUI {

/// The title strip of a panel: a drag of it moves the panel, while the panel is movable. Nothing is drawn.
class MoveAction final : public Control {
public:
    explicit MoveAction(Panel& panel) : m_panel(panel) {}

    void Paint() override {}
    bool DeleteContextObjects() override { return true; }
    bool IsHit(std::int32_t x, std::int32_t y) override;
    Control* OnMouseLButtonDown(std::int32_t x, std::int32_t y) override;
    std::int32_t OnMouseMoveGlobal(std::int32_t x, std::int32_t y) override;
    std::int32_t OnMouseLButtonUpGlobal(std::int32_t x, std::int32_t y) override;
    /// The mouse was taken away: the drag ends where it is.
    Control* OnMouseLeave() override;

    bool IsDragging() const { return m_isDragging; }

private:
    void EndDrag();

    Panel& m_panel;
    bool m_isDragging = false;
    /// Where the panel was taken, in its own coordinates: it stays under the mouse there.
    std::int32_t m_lastX = 0;
    std::int32_t m_lastY = 0;
    /// Keeps the panel alive during a drag.
    SharedPtr<Panel> m_dragged;
};

} // namespace Quorvex::GUI
