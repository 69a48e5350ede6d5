#include "gui/MoveAction.h"

#include "gui/GUI.h"

namespace Quorvex::GUI {

bool MoveAction::IsHit(std::int32_t, std::int32_t) {
    return m_panel.IsMovable();
}

Control* MoveAction::OnMouseLButtonDown(std::int32_t x, std::int32_t y) {
    if (!m_panel.IsMovable() || m_isDragging)
        return m_isDragging ? this : nullptr;
    m_lastX = x;
    m_lastY = y;
    m_dragged = m_panel.SharedPtrFromThis(&m_panel);
    m_isDragging = true;
    GUI& gui = getGUI();
    gui.mouseMoveListeners.Add(*this);
    gui.lButtonUpListeners.Add(*this);
    gui.capture.Add(*this);
    return this;
}

std::int32_t MoveAction::OnMouseMoveGlobal(std::int32_t x, std::int32_t y) {
    if (!m_isDragging)
        return 0;
    const Rect rect = m_panel.GetRect();
    const Rect moved = rect.Shifted(x - rect.left - m_lastX, y - rect.top - m_lastY);
    m_panel.SetChanged();
    m_panel.SetRect(moved.left, moved.top, moved.right, moved.bottom);
    return 1;
}

std::int32_t MoveAction::OnMouseLButtonUpGlobal(std::int32_t, std::int32_t) {
    if (!m_isDragging)
        return 0;
    EndDrag();
    return 1;
}

Control* MoveAction::OnMouseLeave() {
    if (m_isDragging)
        EndDrag();
    return nullptr;
}

void MoveAction::EndDrag() {
    m_isDragging = false;
    if (GUI* gui = m_panel.GetGUI()) {
        gui->mouseMoveListeners.Remove(*this);
        gui->lButtonUpListeners.Remove(*this);
        gui->capture.Remove(*this);
    }
    // The panel, and this control with it, may end here.
    const SharedPtr<Panel> dragged = std::move(m_dragged);
}

} // namespace Quorvex::GUI
