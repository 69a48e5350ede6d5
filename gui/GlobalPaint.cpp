// The one paint of all panels.

#include "foundation/Report.h"
#include "gui/GUI.h"

namespace Quorvex::GUI {

namespace {

bool isPainting = false;

class PaintScope {
public:
    PaintScope() { isPainting = true; }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    ~PaintScope() { isPainting = false; }
};

} // namespace

void GUI::Invalidate() {
    for (const SharedPtr<Panel>& panel : panels)
        panel->GetSurface().MarkDirty();
    SchedulePaint();
}

void GUI::SchedulePaint() {
    Win32Window* window = GetMainWindow();
    if (isDrawing || window == nullptr)
        return;
    if (isHandlingMessages || !messages.empty())
        paintPending = true;
    else
        window->GetPlatformWindow().Invalidate();
}

bool GUI::OnGlobalPaint() {
    if (isPainting)
        return true;
    if (!mainPanel || isShutDown)
        return false;
    {
        const PaintScope scope;
        PaintAll();
    }
    if (!wasPainted) {
        wasPainted = true;
        OnFirstPaint();
    }
    return false;
}

void GUI::PaintAll() {
    EnterMainPanel();
    RebuildMonitors();
    DecideWindowTypes();
    EnterOtherPanels();
    MoveOwnWindows();
    RedrawPanels();
    PresentPanels();
    ShowNewWindows();
    FlushComposition();
}

void GUI::EnterMainPanel() {
    mainPanel->GetSurface().SetWindowType(WindowType::System, nullptr);
    mainPanel->EnterPaint();
}

void GUI::RebuildMonitors() {
    monitors = windowSystem.GetMonitors();
    if (!monitors.empty())
        return;
    const Rect screen = windowSystem.GetPrimaryScreen();
    monitors.push_back(screen.IsEmpty() ? unboundedMonitor : screen);
}

void GUI::DecideWindowTypes() {
    // Panels that do not show take no part.
    std::vector<Panel*> shown;
    std::vector<StackedPanel> stack;
    for (const SharedPtr<Panel>& panel : panels) {
        if (panel != mainPanel && !panel->IsVisible())
            continue;
        shown.push_back(panel.get());
        stack.push_back({panel->GetRect(), panel == mainPanel});
    }
    const std::vector<StackingDecision> decisions = DecideStacking(stack, monitors);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (stack[i].isMain)
            continue;
        const StackingDecision& decision = decisions[i];
        shown[i]->GetSurface().SetWindowType(decision.windowType, decision.host ? shown[*decision.host] : nullptr);
        if (decision.lower)
            shown[i]->SetParent(shown[*decision.lower]);
    }
}

void GUI::EnterOtherPanels() {
    const std::vector<SharedPtr<Panel>> present = panels;
    for (const SharedPtr<Panel>& panel : present)
        if (panel != mainPanel && panel->IsVisible())
            panel->EnterPaint();
}

void GUI::MoveOwnWindows() {
    std::vector<WindowPlacement> placements;
    IPlatformWindow* above = nullptr;
    for (auto panel = panels.rbegin(); panel != panels.rend(); ++panel) {
        if (*panel == mainPanel || !(*panel)->IsVisible() || !(*panel)->GetSurface().HasOwnWindow())
            continue;
        IPlatformWindow& window = (*panel)->GetSurface().GetOwnWindow()->GetPlatformWindow();
        placements.push_back({&window, (*panel)->GetRect(), above});
        above = &window;
    }
    if (!placements.empty())
        windowSystem.MoveWindows(placements);
}

void GUI::RedrawPanels() {
    const std::vector<SharedPtr<Panel>> present = panels;
    for (const SharedPtr<Panel>& panel : present)
        if (panel->IsVisible())
            panel->GetSurface().Redraw(*this);
}

void GUI::PresentPanels() {
    const std::vector<SharedPtr<Panel>> present = panels;
    for (auto panel = present.rbegin(); panel != present.rend(); ++panel)
        if ((*panel)->IsVisible())
            (*panel)->GetSurface().Present(*this);
}

void GUI::ShowNewWindows() {
    const std::vector<SharedPtr<Panel>> present = panels;
    for (const SharedPtr<Panel>& panel : present) {
        const SharedPtr<Win32Window> window = panel->GetSurface().GetOwnWindow();
        if (window && panel->IsVisible() && !window->GetPlatformWindow().IsVisible())
            window->GetPlatformWindow().Show();
    }
}

void GUI::FlushComposition() {
    const Win32Window* window = GetMainWindow();
    if (window != nullptr && !window->GetPlatformWindow().IsIconic())
        windowSystem.FlushComposition();
}

void GUI::PresentNested(Panel& panel) {
    if (Win32Window* window = panel.GetSurface().GetOwnWindow().get()) {
        window->GetPlatformWindow().Invalidate();
        panel.GetSurface().Present(*this);
    }
}

} // namespace Quorvex::GUI
