#include "gui/window/headless/HeadlessUser.h"

#include "gui/window/MessageWords.h"

#include <algorithm>

namespace Quorvex::GUI {

HeadlessWindow* HeadlessUser::WindowAtMouse() const {
    if (auto* const capture = m_system.GetCapture())
        return static_cast<HeadlessWindow*>(capture);
    const auto& desktop = m_system.Desktop();
    return static_cast<HeadlessWindow*>(m_system.WindowFromPoint(desktop.mouseX, desktop.mouseY));
}

HeadlessWindow* HeadlessUser::Find(std::uint64_t identifier) const {
    const auto& windows = m_system.GetWindows();
    const auto found = std::ranges::find(windows, identifier, &HeadlessWindow::GetIdentifier);
    return found != windows.end() ? *found : nullptr;
}

void HeadlessUser::SendMouse(HeadlessWindow* window, MouseMessageNumber number, std::int32_t wheelDelta) {
    if (window == nullptr || !window->IsEnabled())
        return;
    const auto& desktop = m_system.Desktop();
    const std::uint32_t keys = m_isLeftDown ? MouseKey::LeftButton : 0;
    window->GetEvents().OnMouseMessage(
        MakeMouseMessage(*window, number, desktop.mouseX, desktop.mouseY, window->GetClientRect(), keys, wheelDelta));
}

void HeadlessUser::MoveMouse(std::int32_t x, std::int32_t y) {
    m_system.EnqueueMouse([=, this] { MoveNow(x, y); });
}

void HeadlessUser::MoveNow(std::int32_t x, std::int32_t y) {
    m_system.Desktop().mouseX = x;
    m_system.Desktop().mouseY = y;
    auto* const window = WindowAtMouse();
    const auto identifier = window != nullptr ? window->GetIdentifier() : 0;
    if (m_hovered != identifier)
        SendMouse(Find(m_hovered), MouseMessageNumber::Leave);
    m_hovered = identifier;
    SendMouse(window, MouseMessageNumber::Move);
}

void HeadlessUser::PressLeft() {
    m_system.EnqueueMouse([this] { PressLeftNow(MouseMessageNumber::LeftButtonDown); });
}

void HeadlessUser::PressLeftNow(MouseMessageNumber number) {
    m_isLeftDown = true;
    auto* const window = WindowAtMouse();
    if (window != nullptr && window != m_system.GetActiveWindow() && window->IsEnabled())
        ActivateByMouse(*window);
    SendMouse(window, number);
}

void HeadlessUser::ActivateByMouse(HeadlessWindow& window) {
    window.GetEvents().OnMouseActivate();
    // A panel leaves it to its owner what a click on it activates.
    if (window.GetKind() == WindowKind::Main)
        window.Activate();
}

void HeadlessUser::ReleaseLeft() {
    m_system.EnqueueMouse([this] {
        m_isLeftDown = false;
        SendMouse(WindowAtMouse(), MouseMessageNumber::LeftButtonUp);
    });
}

void HeadlessUser::DoubleClick() {
    PressLeft();
    ReleaseLeft();
    m_system.EnqueueMouse([this] { PressLeftNow(MouseMessageNumber::LeftButtonDoubleClick); });
    ReleaseLeft();
}

void HeadlessUser::Drag(std::int32_t fromX, std::int32_t fromY, std::int32_t toX, std::int32_t toY,
                        std::int32_t steps) {
    MoveMouse(fromX, fromY);
    PressLeft();
    for (std::int32_t i = 1; i <= steps; ++i)
        MoveMouse(fromX + (toX - fromX) * i / steps, fromY + (toY - fromY) * i / steps);
    ReleaseLeft();
}

void HeadlessUser::TurnWheel(std::int32_t delta) {
    m_system.EnqueueMouse([=, this] { SendMouse(WindowAtMouse(), MouseMessageNumber::Wheel, delta); });
}

void HeadlessUser::TiltWheel(std::int32_t delta) {
    m_system.EnqueueMouse([=, this] { SendMouse(WindowAtMouse(), MouseMessageNumber::HorizontalWheel, delta); });
}

void HeadlessUser::PressKey(std::uint32_t key, bool isRepeated) {
    m_system.EnqueueAction([=, this] {
        m_system.SetKeyDown(key, true);
        if (auto* const window = m_system.GetActiveWindow())
            window->GetEvents().OnKeyDown(key, MakeKeyData(0, isRepeated, false));
    });
}

void HeadlessUser::ReleaseKey(std::uint32_t key) {
    m_system.EnqueueAction([=, this] {
        m_system.SetKeyDown(key, false);
        if (auto* const window = m_system.GetActiveWindow())
            window->GetEvents().OnKeyUp(key, MakeKeyData(0, true, true));
    });
}

void HeadlessUser::Close(HeadlessWindow& window) {
    m_system.Enqueue(window.GetIdentifier(), [](auto& target) { target.GetEvents().OnClose(); });
}

void HeadlessUser::Place(HeadlessWindow& window, const Rect& clientRect) {
    m_system.Enqueue(window.GetIdentifier(), [=](auto& target) { target.SetClientRect(clientRect); });
}

void HeadlessUser::Minimize(HeadlessWindow& window) {
    m_system.Enqueue(window.GetIdentifier(), [this](auto& target) {
        target.SetIconic(true);
        if (m_system.GetActiveWindow() == &target)
            m_system.SetActiveWindow(nullptr);
    });
}

void HeadlessUser::Restore(HeadlessWindow& window) {
    m_system.Enqueue(window.GetIdentifier(), [](auto& target) {
        target.SetIconic(false);
        target.Activate();
    });
}

void HeadlessUser::SwitchTo(HeadlessWindow* window) {
    if (window == nullptr)
        m_system.EnqueueAction([this] { m_system.SetActiveWindow(nullptr); });
    else
        m_system.Enqueue(window->GetIdentifier(), [](auto& target) { target.Activate(); });
}

void HeadlessUser::DropFiles(HeadlessWindow& window, const std::vector<String>& paths) {
    m_system.Enqueue(window.GetIdentifier(), [paths](auto& target) { target.GetEvents().OnFilesDropped(paths); });
}

void HeadlessUser::Uncover(HeadlessWindow& window) {
    m_system.Enqueue(window.GetIdentifier(), [](auto& target) { target.Invalidate(); });
}

void HeadlessUser::CancelMode(HeadlessWindow& window) {
    m_system.Enqueue(window.GetIdentifier(), [](auto& target) { target.GetEvents().OnCancelMode(); });
}

void HeadlessUser::SendToAll(void (IWindowEvents::*event)()) {
    for (auto* window : m_system.GetWindows())
        m_system.Enqueue(window->GetIdentifier(), [=](auto& target) { (target.GetEvents().*event)(); });
}

void HeadlessUser::ChangeColors() {
    SendToAll(&IWindowEvents::OnSystemColorsChanged);
}

void HeadlessUser::ChangeComposition(bool isEnabled) {
    m_system.Desktop().isCompositionEnabled = isEnabled;
    SendToAll(&IWindowEvents::OnCompositionChanged);
}

} // namespace Quorvex::GUI
