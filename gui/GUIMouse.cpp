// From the queue of mouse messages to the panel under the mouse.

#include "foundation/Log.h"
#include "foundation/Report.h"
#include "gui/ExceptionBoundary.h"
#include "gui/GUI.h"
#include "gui/WheelWords.h"

namespace Quorvex::GUI {

void GUI::QueueMouseMessage(const MouseMessage& message) {
    messages.push_back(message);
}

void GUI::HandleGUIMessages() {
    // A handler may run a loop of its own, which takes what is left.
    while (!messages.empty()) {
        const MouseMessage message = messages.front();
        messages.pop_front();
        isHandlingMessages = true;
        CallWithinBoundary([&] { HandleMouseMessage(message); });
        isHandlingMessages = false;
    }
    if (paintPending) {
        paintPending = false;
        if (Win32Window* window = GetMainWindow())
            window->GetPlatformWindow().PaintNow();
    }
    retiredWindows.clear();
}

void GUI::HandleMouseMessage(const MouseMessage& message) {
    const std::int32_t x = message.screenX;
    const std::int32_t y = message.screenY;
    if (message.window != nullptr && IsBlocked(*message.window))
        return;
    switch (message.number) {
    case MouseMessageNumber::Move:
        OnMouseMoveFiltered(x, y);
        break;
    case MouseMessageNumber::LeftButtonDown:
    case MouseMessageNumber::LeftButtonDoubleClick:
        OnMouseMoveFiltered(x, y);
        lButtonDown = 1;
        OnMouseLButtonDown(x, y);
        break;
    case MouseMessageNumber::LeftButtonUp:
        OnMouseMoveFiltered(x, y);
        lButtonDown = 0;
        OnMouseLButtonUp(x, y);
        break;
    case MouseMessageNumber::Wheel:
        OnMouseMoveFiltered(SignedLowHalf(message.lParam), SignedHighHalf(message.lParam));
        OnMouseWheel(message.wParam, message.lParam);
        break;
    case MouseMessageNumber::HorizontalWheel:
        OnMouseMoveFiltered(SignedLowHalf(message.lParam), SignedHighHalf(message.lParam));
        OnMouseHWheel(message.wParam, message.lParam);
        break;
    case MouseMessageNumber::Leave:
        OnMouseLeave(x, y);
        break;
    default:
        ReportProblem(__LINE__, "HandleGUIMessages");
    }
}

bool GUI::IsBlocked(const Panel& panel) const {
    return modalPanel != nullptr && &panel != modalPanel && !panel.GetSurface().IsTiedTo(*modalPanel);
}

bool GUI::IsBlocked(const IPlatformWindow& window) const {
    if (modalPanel == nullptr)
        return false;
    for (const SharedPtr<Panel>& panel : panels) {
        const Win32Window* own = panel->GetSurface().GetWindow();
        if (own != nullptr && &own->GetPlatformWindow() == &window && !IsBlocked(*panel))
            return false;
    }
    return true;
}

SharedPtr<Panel> GUI::FindPanelAt(std::int32_t x, std::int32_t y) {
    const IPlatformWindow* window = windowSystem.WindowFromPoint(x, y);
    if (window == nullptr)
        return {};
    for (auto panel = panels.rbegin(); panel != panels.rend(); ++panel) {
        const Win32Window* own = (*panel)->GetSurface().GetWindow();
        if (own == nullptr || &own->GetPlatformWindow() != window || !(*panel)->IsVisible())
            continue;
        const Rect rect = (*panel)->GetRect();
        if (rect.Contains(x, y) && (*panel)->IsHit(x - rect.left, y - rect.top))
            return IsBlocked(**panel) ? SharedPtr<Panel>() : *panel;
    }
    return {};
}

void GUI::OnMouseMoveFiltered(std::int32_t x, std::int32_t y) {
    if (x == mouseX && y == mouseY && FindPanelAt(x, y))
        return;
    OnMouseMove(x, y);
}

void GUI::OnMouseMove(std::int32_t x, std::int32_t y) {
    mouseX = static_cast<std::int16_t>(x);
    mouseY = static_cast<std::int16_t>(y);
    if (mouseMoveListeners.CallAll([=](Control& listener) { return listener.OnMouseMoveGlobal(x, y); }) != 0)
        return;
    const SharedPtr<Panel> panel = FindPanelAt(x, y);
    SetHoverPanel(panel.get());
    if (panel)
        panel->OnMouseMove(x, y);
}

void GUI::SetHoverPanel(Panel* panel) {
    // A gesture keeps its panel until the button is up.
    if (panel == hoverPanel || lButtonDown != 0)
        return;
    ClearHover();
    hoverPanel = panel;
}

void GUI::ClearHover() {
    if (Panel* panel = hoverPanel) {
        hoverPanel = nullptr;
        panel->OnMouseLeave();
    }
}

void GUI::OnMouseLeave(std::int32_t x, std::int32_t y) {
    if (!FindPanelAt(x, y))
        ClearHover();
}

void GUI::OnMouseLButtonDown(std::int32_t x, std::int32_t y) {
    const SharedPtr<Panel> panel = FindPanelAt(x, y);
    if (!panel)
        return;
    capture.Take(panel->GetSurface().GetWindow()->GetPlatformWindow());
    hoverPanel = panel.get();
    panel->OnMouseLButtonDown(x, y);
}

void GUI::OnMouseLButtonUp(std::int32_t x, std::int32_t y) {
    capture.Release();
    if (lButtonUpListeners.CallAll([=](Control& listener) { return listener.OnMouseLButtonUpGlobal(x, y); }) != 0)
        return;
    if (const SharedPtr<Panel> panel = FindPanelAt(x, y))
        panel->OnMouseLButtonUp(x, y);
    else
        // No fault of the program, so no report for the user: only a line for the reader of the log.
        WriteLogLine(__LINE__, "OnMouseLButtonUp");
}

std::int32_t GUI::OnMouseWheel(std::uintptr_t wParam, std::intptr_t lParam) {
    const std::int32_t result =
        wheelListeners.CallAll([=](Control& listener) { return listener.OnMouseWheel(wParam, lParam); });
    if (result != 0)
        return result;
    const SharedPtr<Panel> panel = FindPanelAt(SignedLowHalf(lParam), SignedHighHalf(lParam));
    return panel ? panel->OnMouseWheel(wParam, lParam) : 0;
}

std::int32_t GUI::OnMouseHWheel(std::uintptr_t, std::intptr_t) {
    return 0;
}

} // namespace Quorvex::GUI
