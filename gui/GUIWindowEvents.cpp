// What the windows report, one operation an event.

#include "foundation/Report.h"
#include "gui/ExceptionBoundary.h"
#include "gui/GUI.h"
#include "gui/Style.h"

namespace Quorvex::GUI {

void GUI::HandleKeyDown(Win32Window& window, std::uint32_t key, std::intptr_t repeatData) {
    if (Panel* panel = window.GetPanel())
        OnKeyDown(*panel, key, repeatData);
}

void GUI::HandleKeyUp(Win32Window& window, std::uint32_t key, std::intptr_t repeatData) {
    if (Panel* panel = window.GetPanel())
        OnKeyUp(*panel, key, repeatData);
}

bool GUI::OnKeyDown(Panel& panel, std::uint32_t key, std::intptr_t repeatData) {
    if (keyboardPanel != nullptr && keyboardPanel != &panel && keyboardPanel->OnKeyDown(key, repeatData))
        return true;
    return panel.OnKeyDown(key, repeatData);
}

bool GUI::OnKeyUp(Panel& panel, std::uint32_t key, std::intptr_t repeatData) {
    if (keyboardPanel != nullptr && keyboardPanel != &panel && keyboardPanel->OnKeyUp(key, repeatData))
        return true;
    return panel.OnKeyUp(key, repeatData);
}

void GUI::HandleMovedOrSized(Win32Window& window, bool isMinimized) {
    const Rect rect = window.GetPlatformWindow().GetClientRect();
    if (isMinimized) {
        if (!rect.IsEmpty())
            ReportProblem(__LINE__, "WM_SIZE");
        return;
    }
    Panel* panel = window.GetPanel();
    if (panel == nullptr || rect.IsEmpty())
        return;
    const Rect former = panel->GetRect();
    if (rect == former)
        return;
    panel->SetRect(rect.left, rect.top, rect.right, rect.bottom);
    if (panel == mainPanel.get())
        OnWindowMoved(rect.left - former.left, rect.top - former.top);
}

void GUI::HandlePaint(Win32Window& window) {
    if (window.GetPlatformWindow().IsIconic())
        return;
    const bool isRunning = OnGlobalPaint();
    Panel* panel = window.GetPanel();
    if (isRunning && panel != nullptr)
        PresentNested(*panel);
}

void GUI::HandleClose(Win32Window& window) {
    Panel* panel = window.GetPanel();
    if (panel == mainPanel.get())
        OnClose();
    else if (panel != nullptr)
        panel->Close();
}

void GUI::HandleDestroyed(Win32Window& window) {
    Panel* panel = window.GetPanel();
    if (panel == nullptr)
        return;
    panel->DeleteContextObjects();
    DetachWindow(window, nullptr);
    lostWindows.push_back(panel->GetSurface().TakeDeadWindow());
    // Nobody could see or end the program any more.
    if (panel == mainPanel.get())
        windowSystem.PostQuit(0);
}

void GUI::HandleActivated(Win32Window& window, bool isActive) {
    if (Panel* panel = window.GetPanel())
        panel->SetActive(isActive);
}

void GUI::HandleFocusChanged(Win32Window& window, bool isGained, const IPlatformWindow* other) {
    if (other != nullptr)
        return;
    hasFocus = isGained;
    Panel* focused = window.GetPanel();
    if (focused != nullptr && isGained)
        focused->OnFocusGained();
    else if (focused != nullptr)
        focused->OnFocusLost();
    for (const SharedPtr<Panel>& panel : panels)
        if (panel.get() != focused && panel->IsVisible() && panel->DrawsFocusState())
            panel->Invalidate();
}

void GUI::HandleEnabled(Win32Window& window, bool isEnabled) {
    Win32Window* modal = modalPanel != nullptr ? modalPanel->GetSurface().GetWindow() : nullptr;
    if (!isEnabled && modal != nullptr && modal != &window)
        modal->GetPlatformWindow().BringToFront();
}

void GUI::HandleSystemColorsChanged() {
    SetCaptionColors(ReadCaptionColors(windowSystem));
    for (const SharedPtr<Panel>& panel : panels)
        panel->TakeCaptionColors();
    style->ReadSystemColors();
    Invalidate();
}

void GUI::HandleCompositionChanged(Win32Window& window) {
    if (Panel* panel = window.GetPanel())
        panel->OnCompositionChanged();
}

void GUI::HandleCancelMode() {
    capture.Cancel();
    lButtonDown = 0;
    ClearHover();
}

void GUI::HandleMouseActivate(Win32Window& window) {
    if (modalPanel != nullptr) {
        if (Win32Window* modal = modalPanel->GetSurface().GetWindow())
            FlashModalWindow(*modal);
        return;
    }
    Win32Window* mainWindow = GetMainWindow();
    if (mainWindow != nullptr && mainWindow != &window)
        mainWindow->GetPlatformWindow().Activate();
}

std::uint32_t FlashTimeoutMilliseconds(std::uint32_t caretBlinkMilliseconds) {
    constexpr std::uint32_t usualBlinkMilliseconds = 530;
    const bool isKnown = caretBlinkMilliseconds != 0 && caretBlinkMilliseconds != UINT32_MAX;
    return (isKnown ? caretBlinkMilliseconds : usualBlinkMilliseconds) / 8;
}

void GUI::FlashModalWindow(Win32Window& modal) {
    modal.GetPlatformWindow().Flash(windowSystem.GetForegroundFlashCount(),
                                    FlashTimeoutMilliseconds(windowSystem.GetCaretBlinkMilliseconds()));
}

void GUI::HandleUserMessage(Win32Window& window, std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) {
    Panel* panel = window.GetPanel();
    // Posted to a window that was lost meanwhile: there is nothing left to show a result in.
    if (panel == nullptr)
        return;
    if (number == UserMessage::LoadFinished)
        OnUserMessage(wParam, lParam);
    else if (number == UserMessage::Invalidate)
        panel->Invalidate();
}

} // namespace Quorvex::GUI
