#include "gui/MoveAction.h"

#include "gui/Panel.h"

namespace Quorvex::GUI {

bool MoveAction::IsHit(std::int32_t, std::int32_t) {
    return m_panel.IsMovable();
}

void MoveAction::BeginDrag(std::int32_t x, std::int32_t y) {
    m_lastX = x;
    m_lastY = y;
}

void MoveAction::ContinueDrag(std::int32_t x, std::int32_t y) {
    const Rect rect = m_panel.GetRect();
    const Rect moved = rect.Shifted(x - rect.left - m_lastX, y - rect.top - m_lastY);
    m_panel.SetChanged();
    m_panel.SetRect(moved.left, moved.top, moved.right, moved.bottom);
}

} // namespace Quorvex::GUI
