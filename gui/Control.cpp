#include "gui/Control.h"

#include "gui/Panel.h"

namespace Quorvex::GUI {

Control::~Control() = default;

void Control::CreateContextObjects() {}

void Control::OnCacheReset() {
    cacheValid = false;
}

bool Control::IsHit(std::int32_t, std::int32_t) {
    return true;
}

Control* Control::GetControlAt(std::int32_t, std::int32_t) {
    return this;
}

Control* Control::OnMouseMove(std::int32_t, std::int32_t) {
    return nullptr;
}

std::int32_t Control::OnMouseMoveGlobal(std::int32_t, std::int32_t) {
    return 0;
}

Control* Control::OnMouseLButtonDown(std::int32_t, std::int32_t) {
    return this;
}

std::int32_t Control::OnMouseLButtonDownGlobal(std::int32_t, std::int32_t) {
    return 0;
}

Control* Control::OnMouseLButtonUp(std::int32_t, std::int32_t) {
    return this;
}

std::int32_t Control::OnMouseLButtonUpGlobal(std::int32_t, std::int32_t) {
    return 0;
}

Control* Control::OnMouseReserved() {
    return this;
}

Control* Control::OnMouseLeave() {
    return nullptr;
}

Control* Control::OnFocusGained() {
    return this;
}

Control* Control::OnFocusLost() {
    return nullptr;
}

bool Control::OnKeyDown(std::uint32_t, std::intptr_t) {
    return false;
}

bool Control::OnKeyUp(std::uint32_t, std::intptr_t) {
    return false;
}

std::int32_t Control::OnMouseWheel(std::uintptr_t, std::intptr_t) {
    return 0;
}

std::int32_t Control::OnMouseHWheel(std::uintptr_t, std::intptr_t) {
    return 0;
}

void Control::SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) {
    left = newLeft;
    top = newTop;
    right = newRight;
    bottom = newBottom;
    cacheValid = false;
}

bool Control::IsEnabled() const {
    return enabled;
}

void Control::SetEnabled(bool isEnabled) {
    enabled = isEnabled;
}

void Control::SetVisible(bool isVisible) {
    if (visible == isVisible)
        return;
    visible = isVisible;
    if (visibilityChanged)
        visibilityChanged(*this);
}

bool Control::IsVisible() const {
    return visible;
}

GUI& Control::getGUI() {
    if (parent == nullptr)
        throw Exception("Control::getGUI");
    return parent->getGUI();
}

Panel* Control::GetPanel() {
    return parent != nullptr ? parent->GetPanel() : nullptr;
}

void Control::SetParentControl(Control* newParent) {
    parent = newParent;
}

void Control::InvalidatePanel() {
    if (Panel* panel = GetPanel())
        panel->Invalidate();
}

} // namespace Quorvex::GUI
