#pragma once

#include "gui/window/WindowSystem.h"

#include <functional>
#include <string>
#include <vector>

namespace Quorvex::GUI {

/// Writes down what a window tells, one text an event, such as "moved" or "mouse 512 at 10,20". A test may hang an
/// action of its own to painting, closing and posted messages.
class RecordingEvents final : public IWindowEvents {
public:
    std::vector<std::string> log;
    std::vector<MouseMessage> mouse;
    std::vector<std::intptr_t> keyData;
    std::function<void()> onPaint;
    std::function<void()> onClose;
    std::function<void(bool)> onMovedOrSized;
    std::function<void(std::uint32_t, std::uintptr_t, std::intptr_t)> onUserMessage;

    std::size_t Count(const std::string& text) const;
    bool Has(const std::string& text) const { return Count(text) != 0; }
    void Clear();

    void OnMouseMessage(const MouseMessage& message) noexcept override;
    void OnKeyDown(std::uint32_t key, std::intptr_t repeatData) noexcept override;
    void OnKeyUp(std::uint32_t key, std::intptr_t repeatData) noexcept override;
    void OnMovedOrSized(bool isMinimized) noexcept override;
    void OnPaint() noexcept override;
    void OnClose() noexcept override;
    void OnDestroyed() noexcept override { log.emplace_back("destroyed"); }
    void OnActivated(bool isActive) noexcept override { log.emplace_back(isActive ? "activated" : "deactivated"); }
    void OnFocusChanged(bool hasFocus, IPlatformWindow* other) noexcept override;
    void OnEnabled(bool isEnabled) noexcept override { log.emplace_back(isEnabled ? "enabled" : "disabled"); }
    void OnSystemColorsChanged() noexcept override { log.emplace_back("colors"); }
    void OnCompositionChanged() noexcept override { log.emplace_back("composition"); }
    void OnCancelMode() noexcept override { log.emplace_back("cancel"); }
    void OnMouseActivate() noexcept override { log.emplace_back("mouse activate"); }
    void OnFilesDropped(const std::vector<String>& paths) noexcept override;
    void OnUserMessage(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) noexcept override;
};

} // namespace Quorvex::GUI
