#include "gui/DragAction.h"

#include "gui/GUI.h"

namespace Quorvex::GUI {

Control* DragAction::OnMouseLButtonDown(std::int32_t x, std::int32_t y) {
    // An up that went astray leaves the drag going; the next press belongs to it.
    if (m_isDragging)
        return this;
    if (!IsHit(x, y))
        return nullptr;
    BeginDrag(x, y);
    m_dragged = m_panel.SharedPtrFromThis(&m_panel);
    m_isDragging = true;
    GUI& gui = getGUI();
    gui.mouseMoveListeners.Add(*this);
    gui.lButtonUpListeners.Add(*this);
    gui.capture.Add(*this);
    return this;
}

std::int32_t DragAction::OnMouseMoveGlobal(std::int32_t x, std::int32_t y) {
    if (!m_isDragging)
        return 0;
    ContinueDrag(x, y);
    return 1;
}

std::int32_t DragAction::OnMouseLButtonUpGlobal(std::int32_t, std::int32_t) {
    if (!m_isDragging)
        return 0;
    EndDrag();
    return 1;
}

Control* DragAction::OnMouseLeave() {
    if (m_isDragging)
        EndDrag();
    return nullptr;
}

void DragAction::EndDrag() {
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
