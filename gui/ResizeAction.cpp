#include "gui/ResizeAction.h"

#include "gui/Panel.h"
#include "gui/Scale.h"

namespace Quorvex::GUI {

namespace {

// The title strip begins where the edges end.
std::int32_t EdgeWidth() {
    return 5 * GetScale();
}

// Along an edge, a corner reaches further than the edges are wide: it would be hard to hit otherwise.
std::int32_t CornerLength() {
    return 12 * GetScale();
}

std::int32_t SideAt(std::int32_t position, std::int32_t length, std::int32_t reach) {
    if (position < reach)
        return -1;
    return position >= length - reach ? 1 : 0;
}

CursorShape CursorFor(std::int32_t signX, std::int32_t signY) {
    if (signX == 0)
        return signY == 0 ? CursorShape::Arrow : CursorShape::SizeVertical;
    if (signY == 0)
        return CursorShape::SizeHorizontal;
    // "Falling" goes from the top left to the bottom right.
    return signX == signY ? CursorShape::SizeFalling : CursorShape::SizeRising;
}

} // namespace

std::int32_t ResizeAction::SmallestWidth() {
    return 266 * GetScale();
}

std::int32_t ResizeAction::SmallestHeight() {
    return 158 * GetScale();
}

ResizeAction::Edges ResizeAction::EdgesAt(std::int32_t x, std::int32_t y) const {
    const std::int32_t width = right - left;
    const std::int32_t height = bottom - top;
    Edges edges{SideAt(x, width, EdgeWidth()), SideAt(y, height, EdgeWidth())};
    if (edges.x == 0 && edges.y != 0)
        edges.x = SideAt(x, width, CornerLength());
    else if (edges.y == 0 && edges.x != 0)
        edges.y = SideAt(y, height, CornerLength());
    return edges;
}

bool ResizeAction::IsHit(std::int32_t x, std::int32_t y) {
    const Edges edges = EdgesAt(x, y);
    return m_panel.IsResizable() && (edges.x != 0 || edges.y != 0);
}

Control* ResizeAction::OnMouseMove(std::int32_t x, std::int32_t y) {
    // A control that lies on the edge takes the mouse when it gets there.
    if (m_panel.GetControlAt(x, y) != this)
        return nullptr;
    const Edges edges = EdgesAt(x, y);
    m_panel.SetCursor(CursorFor(edges.x, edges.y));
    return this;
}

void ResizeAction::BeginDrag(std::int32_t x, std::int32_t y) {
    const Edges edges = EdgesAt(x, y);
    m_signX = edges.x;
    m_signY = edges.y;
    m_lastX = x;
    m_lastY = y;
}

// A left or top edge carries the panel's origin along, so the place where it was taken stays the same in the panel's
// coordinates. A right or bottom edge moves away from the origin, and the place with it.
void ResizeAction::ContinueDrag(std::int32_t x, std::int32_t y) {
    Rect rect = m_panel.GetRect();
    const std::int32_t panelX = x - rect.left;
    const std::int32_t panelY = y - rect.top;
    if (m_signX == -1) {
        rect.left = std::min(rect.left + panelX - m_lastX, rect.right - SmallestWidth());
        Apply(rect);
    } else if (m_signX == 1) {
        rect.right = std::max(rect.right + panelX - m_lastX, rect.left + SmallestWidth());
        m_lastX = panelX;
        Apply(rect);
    }
    if (m_signY == -1) {
        rect.top = std::min(rect.top + panelY - m_lastY, rect.bottom - SmallestHeight());
        Apply(rect);
    } else if (m_signY == 1) {
        rect.bottom = std::max(rect.bottom + panelY - m_lastY, rect.top + SmallestHeight());
        m_lastY = panelY;
        Apply(rect);
    }
}

void ResizeAction::Apply(const Rect& rect) {
    m_panel.SetChanged();
    m_panel.SetRect(rect.left, rect.top, rect.right, rect.bottom);
    m_panel.Invalidate();
}

Control* ResizeAction::OnMouseLeave() {
    m_panel.SetCursor(CursorShape::Arrow);
    return DragAction::OnMouseLeave();
}

} // namespace Quorvex::GUI
