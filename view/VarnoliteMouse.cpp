#include "gui/GUI.h"
#include "gui/Panel.h"
#include "view/Varnolite.h"

// Mouse and wheel of the view: a drag scrolls, also outside the view and outside the window; the wheel zooms about the
// mouse.
namespace Quorvex::View {

namespace {

std::int32_t SignedLowHalf(std::uintptr_t word) {
    return static_cast<std::int16_t>(word & 0xFFFF);
}
std::int32_t SignedHighHalf(std::uintptr_t word) {
    return static_cast<std::int16_t>((word >> 16) & 0xFFFF);
}

} // namespace

GUI::Control* Varnolite::GetControlAt(std::int32_t, std::int32_t) {
    return this;
}

GUI::Control* Varnolite::OnMouseLButtonDown(std::int32_t x, std::int32_t y) {
    if (!IsEnabled())
        return nullptr;
    dragX = x;
    dragY = y;
    if (!dragging)
        EnterListeners();
    dragging = true;
    return this;
}

GUI::Control* Varnolite::OnMouseMove(std::int32_t x, std::int32_t y) {
    if (!dragging)
        return nullptr;
    ScrollBy(x - dragX, y - dragY);
    dragX = x;
    dragY = y;
    return this;
}

std::int32_t Varnolite::OnMouseMoveGlobal(std::int32_t x, std::int32_t y) {
    const GUI::Rect panel = GetPanel()->GetRect();
    // Non-zero while the drag lasts: the same move must not come a second time through the hit test.
    return OnMouseMove(x - panel.left, y - panel.top) != nullptr ? 1 : 0;
}

GUI::Control* Varnolite::OnMouseLButtonUp(std::int32_t, std::int32_t) {
    EndDrag();
    return nullptr;
}

std::int32_t Varnolite::OnMouseLButtonUpGlobal(std::int32_t x, std::int32_t y) {
    const GUI::Rect panel = GetPanel()->GetRect();
    OnMouseLButtonUp(x - panel.left, y - panel.top);
    return 0;
}

GUI::Control* Varnolite::OnMouseLeave() {
    EndDrag();
    return nullptr;
}

void Varnolite::EndDrag() {
    if (!dragging)
        return;
    dragging = false;
    LeaveListeners();
    ClampStoredScroll();
}

void Varnolite::EnterListeners() {
    GUI::GUI& gui = getGUI();
    gui.mouseMoveListeners.Add(*this);
    gui.lButtonUpListeners.Add(*this);
    gui.wheelListeners.Add(*this);
}

void Varnolite::LeaveListeners() {
    GUI::GUI& gui = getGUI();
    gui.mouseMoveListeners.Remove(*this);
    gui.lButtonUpListeners.Remove(*this);
    gui.wheelListeners.Remove(*this);
}

std::int32_t Varnolite::OnMouseWheel(std::uintptr_t wParam, std::intptr_t lParam) {
    if (!IsEnabled() || !HasImage())
        return 0;
    constexpr double notch = 0.008333333333333333; // One step for the 120 of a notch.
    const double steps = SignedHighHalf(wParam) * notch;
    const auto position = static_cast<std::uintptr_t>(lParam);
    // The centre of the panel in screen coordinates, which is the view's wherever the view fills its panel.
    const GUI::Rect panel = GetPanel()->GetRect();
    const double centreX = (area.marginLeft - area.marginRight + panel.left + panel.right) * 0.5;
    const double centreY = (area.toolbarHeight + area.marginTop - area.marginBottom + panel.top + panel.bottom) * 0.5;
    ZoomStepAt(steps, SignedLowHalf(position) - centreX, SignedHighHalf(position) - centreY);
    return 1;
}

} // namespace Quorvex::View
