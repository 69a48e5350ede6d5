#pragma once

#include "gui/DragAction.h"

namespace Quorvex::GUI {

/// The title strip of a panel: a drag of it moves the panel, while the panel is movable.
class MoveAction final : public DragAction {
public:
    explicit MoveAction(Panel& panel) : DragAction(panel) {}

    bool IsHit(std::int32_t x, std::int32_t y) override;

private:
    void BeginDrag(std::int32_t x, std::int32_t y) override;
    void ContinueDrag(std::int32_t x, std::int32_t y) override;

    /// Where the panel was taken, in its own coordinates: it stays under the mouse there.
    std::int32_t m_lastX = 0;
    std::int32_t m_lastY = 0;
};

} // namespace Quorvex::GUI
