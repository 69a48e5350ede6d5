#include "gui/EventDelivery.h"

namespace Quorvex::GUI {

Control* EventDelivery::ControlAt(std::int32_t x, std::int32_t y) {
    Control* control = m_root.GetControlAt(x, y);
    return control != &m_root ? control : nullptr;
}

void EventDelivery::Deliver(Operation operation, std::int32_t x, std::int32_t y) {
    if (m_current == nullptr)
        m_current = ControlAt(x, y);
    if (m_current == nullptr)
        return;
    Control* next = (m_current->*operation)(x, y);
    // The call may have ended the hover of the whole tree, and with it the charge.
    if (m_current != nullptr && m_current != next)
        m_current->OnMouseLeave();
    m_current = next != &m_root ? next : nullptr;
}

void EventDelivery::MouseMove(std::int32_t x, std::int32_t y) {
    Deliver(&Control::OnMouseMove, x, y);
    if (m_current != nullptr)
        return;
    m_current = ControlAt(x, y);
    if (m_current != nullptr)
        m_current->OnMouseMove(x, y);
}

void EventDelivery::MouseLButtonDown(std::int32_t x, std::int32_t y) {
    Deliver(&Control::OnMouseLButtonDown, x, y);
    if (m_current == nullptr)
        m_current = ControlAt(x, y);
}

void EventDelivery::MouseLButtonUp(std::int32_t x, std::int32_t y) {
    Deliver(&Control::OnMouseLButtonUp, x, y);
    if (m_current == nullptr)
        m_current = ControlAt(x, y);
}

Control* EventDelivery::WheelTarget(std::int32_t x, std::int32_t y) {
    return m_current != nullptr ? m_current : ControlAt(x, y);
}

void EventDelivery::Leave() {
    if (Control* left = m_current) {
        m_current = nullptr;
        left->OnMouseLeave();
    }
}

} // namespace Quorvex::GUI
