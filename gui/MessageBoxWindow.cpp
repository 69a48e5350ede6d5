#include "gui/MessageBoxWindow.h"

#include "gui/ExceptionBoundary.h"
#include "gui/MessageBoxPicture.h"
#include "gui/Scale.h"
#include "gui/window/WindowSystem.h"

#include <algorithm>

namespace Quorvex::GUI {

namespace {

/// Virtual-key codes.
constexpr std::uint32_t enterKey = 0x0D;
constexpr std::uint32_t escapeKey = 0x1B;
constexpr std::uint32_t spaceKey = 0x20;

class MessageBoxEvents final : public IWindowEvents {
public:
    explicit MessageBoxEvents(const MessageBoxPicture& shownPicture) : picture(shownPicture) {}

    void OnMouseMessage(const MouseMessage& message) noexcept override {
        const auto x = static_cast<std::int16_t>(message.lParam & 0xFFFF);
        const auto y = static_cast<std::int16_t>((message.lParam >> 16) & 0xFFFF);
        const bool isOnButton = picture.GetButton().Contains(x, y);
        if (message.number == MouseMessageNumber::LeftButtonDown)
            isPressed = isOnButton;
        else if (message.number == MouseMessageNumber::LeftButtonUp && isPressed && isOnButton)
            isRead = true;
    }
    void OnKeyDown(std::uint32_t key, std::intptr_t) noexcept override {
        isRead = isRead || key == enterKey || key == escapeKey || key == spaceKey;
    }
    void OnPaint() noexcept override {
        CallWithinBoundary([this] {
            const Rect client = window->GetClientRect();
            const auto width = static_cast<std::uint32_t>(client.Width());
            window->ShowOpaque(picture.Draw(client.Width(), client.Height()).data(), width,
                               static_cast<std::uint32_t>(client.Height()), width * 4);
        });
    }
    void OnMovedOrSized(bool isMinimized) noexcept override {
        if (!isMinimized && window != nullptr)
            window->Invalidate();
    }
    void OnClose() noexcept override { isRead = true; }
    void OnKeyUp(std::uint32_t, std::intptr_t) noexcept override {}
    void OnDestroyed() noexcept override {}
    void OnActivated(bool) noexcept override {}
    void OnFocusChanged(bool, IPlatformWindow*) noexcept override {}
    void OnEnabled(bool) noexcept override {}
    void OnSystemColorsChanged() noexcept override {}
    void OnCompositionChanged() noexcept override {}
    void OnCancelMode() noexcept override { isPressed = false; }
    void OnMouseActivate() noexcept override {}
    void OnFilesDropped(const std::vector<String>&) noexcept override {}
    void OnUserMessage(std::uint32_t, std::uintptr_t, std::intptr_t) noexcept override {}

    const MessageBoxPicture& picture;
    IPlatformWindow* window = nullptr;
    bool isPressed = false;
    bool isRead = false;
};

Rect Centred(const MessageBoxPicture& picture, const Rect& workArea) {
    const std::int32_t left = workArea.left + std::max(0, (workArea.Width() - picture.GetWidth()) / 2);
    const std::int32_t top = workArea.top + std::max(0, (workArea.Height() - picture.GetHeight()) / 2);
    return {left, top, left + picture.GetWidth(), top + picture.GetHeight()};
}

} // namespace

bool RunMessageBox(IWindowSystem& windowSystem, const String& title, const String& text) {
    const std::int32_t scale = ScaleFromDpi(windowSystem.GetScreenDpi());
    // The size of the toolkit's own font.
    const std::int32_t cellHeight = 14 * scale;
    const auto glyphs =
        windowSystem.CreateGlyphSource(static_cast<std::uint32_t>(cellHeight), static_cast<std::uint32_t>(5 * scale));
    const MessageBoxPicture picture(*glyphs, cellHeight, scale, text);
    MessageBoxEvents events(picture);
    const auto window = windowSystem.CreatePlatformWindow(
        WindowKind::Main, Centred(picture, windowSystem.GetWorkAreaAtMouse()), title, events);
    events.window = window.get();
    window->Show();
    while (!events.isRead && windowSystem.DispatchNextMessage() == IWindowSystem::Dispatched::Message) {
    }
    return events.isRead;
}

} // namespace Quorvex::GUI
