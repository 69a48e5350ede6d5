#include "tests/gui/RecordingEvents.h"

#include <algorithm>

namespace Quorvex::GUI {

std::size_t RecordingEvents::Count(const std::string& text) const {
    return static_cast<std::size_t>(std::ranges::count(log, text));
}

void RecordingEvents::Clear() {
    log.clear();
    mouse.clear();
    keyData.clear();
}

void RecordingEvents::OnMouseMessage(const MouseMessage& message) noexcept {
    mouse.push_back(message);
    log.push_back("mouse " + std::to_string(static_cast<std::uint32_t>(message.number)) + " at " +
                  std::to_string(message.screenX) + "," + std::to_string(message.screenY));
}

void RecordingEvents::OnKeyDown(std::uint32_t key, std::intptr_t repeatData) noexcept {
    log.push_back("key down " + std::to_string(key));
    keyData.push_back(repeatData);
}

void RecordingEvents::OnKeyUp(std::uint32_t key, std::intptr_t repeatData) noexcept {
    log.push_back("key up " + std::to_string(key));
    keyData.push_back(repeatData);
}

void RecordingEvents::OnMovedOrSized(bool isMinimized) noexcept {
    log.emplace_back(isMinimized ? "minimized" : "moved");
    if (onMovedOrSized)
        onMovedOrSized(isMinimized);
}

void RecordingEvents::OnPaint() noexcept {
    log.emplace_back("paint");
    if (onPaint)
        onPaint();
}

void RecordingEvents::OnClose() noexcept {
    log.emplace_back("close");
    if (onClose)
        onClose();
}

void RecordingEvents::OnFocusChanged(bool hasFocus, IPlatformWindow* other) noexcept {
    log.emplace_back(std::string(hasFocus ? "focus" : "no focus") + (other != nullptr ? " from another" : ""));
}

void RecordingEvents::OnFilesDropped(const std::vector<String>& paths) noexcept {
    log.push_back("dropped " + std::to_string(paths.size()));
}

void RecordingEvents::OnUserMessage(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) noexcept {
    log.push_back("user " + std::to_string(number) + " " + std::to_string(wParam) + " " + std::to_string(lParam));
    if (onUserMessage)
        onUserMessage(number, wParam, lParam);
}

} // namespace Quorvex::GUI
