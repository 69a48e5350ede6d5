// The list of panels, and the ties between them and their windows.

#include "foundation/Report.h"
#include "gui/GUI.h"

#include <algorithm>

namespace Quorvex::GUI {

namespace {

auto Find(std::vector<SharedPtr<Panel>>& panels, const Panel& panel) {
    return std::find_if(panels.begin(), panels.end(), [&](const auto& other) { return other.get() == &panel; });
}

} // namespace

void GUI::AddPanel(const SharedPtr<Panel>& panel) {
    if (!panel)
        throw Exception("GUI::AddPanel: Panel is nullptr");
    if (HoldsPanel(*panel))
        throw Exception("GUI::AddPanel: Panel was already added");
    panels.push_back(panel);
    panel->SetGUI(this);
    panel->Invalidate();
}

void GUI::AddMainPanel(const SharedPtr<Panel>& panel) {
    AddPanel(panel);
    std::rotate(panels.begin(), panels.end() - 1, panels.end());
    mainPanel = panel;
}

bool GUI::HoldsPanel(const Panel& panel) const {
    return panel.GetGUI() == this;
}

void GUI::RaisePanel(const Panel& panel) {
    const auto found = Find(panels, panel);
    if (found == panels.end() || found + 1 == panels.end())
        return;
    std::rotate(found, found + 1, panels.end());
    Invalidate();
}

void GUI::RemovePanel(Panel& panel) {
    const auto found = Find(panels, panel);
    if (found == panels.end())
        return;
    const SharedPtr<Panel> kept = *found;
    ReleaseTiedPanels(panel);
    if (const Win32Window* window = panel.GetSurface().GetOwnWindow().get())
        if (capture.IsHeldBy(window->GetPlatformWindow()))
            capture.Cancel();
    if (hoverPanel == &panel)
        ClearHover();
    panel.EndGestures();
    if (modalPanel == &panel)
        SetModalPanel(nullptr);
    SetKeyboardPanel(panel, false);
    panels.erase(Find(panels, panel));
    if (mainPanel == kept)
        mainPanel.reset();
    panel.GetSurface().Leave();
    panel.SetGUI(nullptr);
    SchedulePaint();
}

void GUI::ReleaseTiedPanels(Panel& panel) {
    for (const SharedPtr<Panel>& other : panels) {
        PanelSurface& surface = other->GetSurface();
        if (surface.GetParent() == &panel) {
            surface.Hide();
            surface.SetParent(nullptr);
        }
        if (surface.GetHost() == &panel)
            surface.SetWindowType(WindowType::System, nullptr);
    }
    if (Win32Window* window = panel.GetSurface().GetOwnWindow().get())
        Win32Window::SetParentOfAllChilds(panels, *window, nullptr);
}

void GUI::SetModalPanel(Panel* panel) {
    modalPanel = panel;
    if (panel != nullptr && hoverPanel != nullptr && IsBlocked(*hoverPanel))
        ClearHover();
}

void GUI::SetKeyboardPanel(Panel& panel, bool hasKeyboard) {
    if (hasKeyboard)
        keyboardPanel = &panel;
    else if (keyboardPanel == &panel)
        keyboardPanel = nullptr;
}

void GUI::RegisterSurface(Panel& panel) {
    if (std::find(surfacePanels.begin(), surfacePanels.end(), &panel) == surfacePanels.end())
        surfacePanels.push_back(&panel);
}

void GUI::ForgetPanel(Panel& panel) {
    std::erase(surfacePanels, &panel);
    for (Panel* other : surfacePanels)
        if (other->GetSurface().GetParent() == &panel)
            other->GetSurface().SetParent(nullptr);
}

void GUI::DetachWindow(Win32Window& window, Win32Window* newParent) {
    IPlatformWindow& platform = window.GetPlatformWindow();
    if (capture.IsHeldBy(platform))
        capture.Cancel();
    Win32Window::SetParentOfAllChilds(panels, window, newParent);
    std::erase_if(messages, [&](const MouseMessage& message) { return message.window == &platform; });
}

void GUI::RetireWindow(SharedPtr<Win32Window> window) {
    retiredWindows.push_back(std::move(window));
}

void GUI::OnWindowMoved(std::int32_t dx, std::int32_t dy) {
    for (const SharedPtr<Panel>& panel : panels) {
        if (!panel->GetSurface().IsTiedTo(*mainPanel))
            continue;
        const Rect rect = panel->GetRect().Shifted(dx, dy);
        const auto& renderer = panel->GetRenderer();
        if (renderer && renderer->GetContext() == context)
            panel->Shift(dx, dy);
        else
            panel->SetRect(rect.left, rect.top, rect.right, rect.bottom);
    }
    SchedulePaint();
}

} // namespace Quorvex::GUI
