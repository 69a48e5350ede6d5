#pragma once

#include "foundation/SharedPtr.h"
#include "gui/Control.h"

namespace Quorvex::GUI {

/// A handle of a panel that is dragged with the left button: from the press on it listens to the mouse wherever that is
/// and keeps the panel alive, until the button is up or the mouse is taken away. What the drag changes is the
/// subclass's business. Nothing is drawn. GUI thread.
class DragAction : public Control {
public:
    void Paint() override {}
    bool DeleteContextObjects() override { return true; }
    /// Begins a drag where the handle is hit.
    Control* OnMouseLButtonDown(std::int32_t x, std::int32_t y) override;
    std::int32_t OnMouseMoveGlobal(std::int32_t x, std::int32_t y) override;
    std::int32_t OnMouseLButtonUpGlobal(std::int32_t x, std::int32_t y) override;
    /// The mouse was taken away: a drag ends where it is.
    Control* OnMouseLeave() override;

    bool IsDragging() const { return m_isDragging; }

protected:
    explicit DragAction(Panel& panel) : m_panel(panel) {}

    /// The handle was pressed at that place in panel coordinates.
    virtual void BeginDrag(std::int32_t x, std::int32_t y) = 0;
    /// The mouse is there now, in desktop coordinates.
    virtual void ContinueDrag(std::int32_t x, std::int32_t y) = 0;

    Panel& m_panel;

private:
    void EndDrag();

    bool m_isDragging = false;
    /// Keeps the panel alive during a drag.
    SharedPtr<Panel> m_dragged;
};

} // namespace Quorvex::GUI
