// The events that a panel hands on to its controls.

#include "gui/GUI.h"
#include "gui/WheelWords.h"

namespace Quorvex::GUI {

Control* Panel::OnMouseMove(std::int32_t x, std::int32_t y) {
    m_delivery.MouseMove(x - left, y - top);
    return m_delivery.GetCurrent();
}

Control* Panel::OnMouseLButtonDown(std::int32_t x, std::int32_t y) {
    m_delivery.MouseLButtonDown(x - left, y - top);
    return m_delivery.GetCurrent();
}

Control* Panel::OnMouseLButtonUp(std::int32_t x, std::int32_t y) {
    m_delivery.MouseLButtonUp(x - left, y - top);
    return m_delivery.GetCurrent();
}

Control* Panel::OnMouseLeave() {
    m_delivery.Leave();
    return nullptr;
}

std::int32_t Panel::OnMouseWheel(std::uintptr_t wParam, std::intptr_t lParam) {
    Control* target = m_delivery.WheelTarget(SignedLowHalf(lParam) - left, SignedHighHalf(lParam) - top);
    return target != nullptr ? target->OnMouseWheel(wParam, lParam) : 0;
}

std::int32_t Panel::OnMouseHWheel(std::uintptr_t wParam, std::intptr_t lParam) {
    Control* target = m_delivery.WheelTarget(SignedLowHalf(lParam) - left, SignedHighHalf(lParam) - top);
    return target != nullptr ? target->OnMouseHWheel(wParam, lParam) : 0;
}

bool Panel::OnKeyDown(std::uint32_t key, std::intptr_t repeatData) {
    constexpr std::uint32_t escapeKey = 27;
    if (m_focus != nullptr && m_focus->OnKeyDown(key, repeatData))
        return true;
    return key == escapeKey && OnEscape();
}

bool Panel::OnKeyUp(std::uint32_t key, std::intptr_t repeatData) {
    return m_focus != nullptr && m_focus->OnKeyUp(key, repeatData);
}

void Panel::SetFocus(Control* control) {
    Control* former = m_focus;
    if (former == control)
        return;
    m_focus = control;
    if (m_gui != nullptr)
        m_gui->SetKeyboardPanel(*this, control != nullptr);
    if (former != nullptr)
        former->OnFocusLost();
    if (control != nullptr)
        control->OnFocusGained();
}

} // namespace Quorvex::GUI
