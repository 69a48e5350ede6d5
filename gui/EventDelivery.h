#pragma once

#include "gui/Control.h"

namespace Quorvex::GUI {

/// Decides which control of one tree gets a mouse event: the one that the last event left in charge, else the one under
/// the mouse. Positions are in the coordinates of the tree's panel.
class EventDelivery {
public:
    /// ROOT is asked for the control at a position and never receives an event itself.
    explicit EventDelivery(Control& root) : m_root(root) {}

    void MouseMove(std::int32_t x, std::int32_t y);
    void MouseLButtonDown(std::int32_t x, std::int32_t y);
    void MouseLButtonUp(std::int32_t x, std::int32_t y);
    /// The control that gets a wheel event, or null.
    Control* WheelTarget(std::int32_t x, std::int32_t y);
    /// The mouse is taken away from the tree: the control in charge is told that it has left.
    void Leave();

    Control* GetCurrent() const { return m_current; }

private:
    using Operation = Control* (Control::*)(std::int32_t, std::int32_t);
    void Deliver(Operation operation, std::int32_t x, std::int32_t y);
    Control* ControlAt(std::int32_t x, std::int32_t y);

    Control& m_root;
    Control* m_current = nullptr;
};

} // namespace Quorvex::GUI
