#pragma once

#include "gui/window/WindowSystem.h"

#include <cstdint>
#include <vector>

namespace Quorvex::GUI {

class HeadlessWindowSystem;

/// What a window in memory shows: BGRA, rows top-down and without gaps.
struct ShownPicture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool hasAlpha = false;
    std::vector<std::uint8_t> bits;
};

/// A window that exists in memory only. Its behaviour, down to which events come synchronously, follows the home
/// platform; its frame has no thickness. Tests read here what a user would see. GUI thread only, but for Post.
class HeadlessWindow final : public IPlatformWindow {
public:
    HeadlessWindow(HeadlessWindowSystem& system, WindowKind kind, const Rect& clientRect, const String& title,
                   IWindowEvents& events);
    ~HeadlessWindow() override;

    void* GetNativeHandle() const override { return nullptr; }
    bool IsLayered() const override { return m_isLayered; }
    void ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                    std::uint32_t pitchBytes) override;
    void ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                       std::uint32_t pitchBytes) override;
    void DispatchMouseMessagesAndHide() override;
    bool IsCompositionEnabled() const override;

    Rect GetClientRect() const override { return m_isIconic ? Rect{} : m_clientRect; }
    void SetClientRect(const Rect& rect) override;
    void Show() override;
    void Hide() override;
    bool IsVisible() const override { return m_isVisible; }
    bool IsIconic() const override { return m_isIconic; }
    void Activate() override;
    void BringToFront() override;
    void SetEnabled(bool isEnabled) override;
    void SetTitle(const String& title) override { m_title = title; }
    void SetCursor(CursorShape shape) override { m_cursor = shape; }
    void SetOwner(IPlatformWindow* owner) override;
    bool SetLayered(bool isLayered) override;
    void Flash(std::uint32_t count, std::uint32_t timeoutMilliseconds) override;
    bool Invalidate() override;
    void PaintNow() override;
    void Post(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) override;

    // What tests look at.
    WindowKind GetKind() const { return m_kind; }
    const String& GetTitle() const { return m_title; }
    CursorShape GetCursor() const { return m_cursor; }
    HeadlessWindow* GetOwner() const { return m_owner; }
    bool IsEnabled() const { return m_isEnabled; }
    bool IsInvalid() const { return m_isInvalid; }
    /// The last picture shown; empty before the first.
    const ShownPicture& GetPicture() const { return m_picture; }
    /// How often a picture was shown.
    std::uint32_t GetShowCount() const { return m_showCount; }
    /// The counts of all calls to Flash.
    const std::vector<std::uint32_t>& GetFlashes() const { return m_flashes; }

    // What the system and the user do to the window.
    IWindowEvents& GetEvents() const { return m_events; }
    std::uint64_t GetIdentifier() const { return m_identifier; }
    /// A shown window that lies under the position and is not minimised.
    bool IsHit(std::int32_t x, std::int32_t y) const;
    void SetIconic(bool isIconic);
    /// The window goes, with its owner's object or with the display; the second time does nothing.
    void Destroy();
    void ForgetOwner(const HeadlessWindow& owner);

private:
    void Keep(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height, std::uint32_t pitchBytes,
              bool hasAlpha);

    HeadlessWindowSystem& m_system;
    WindowKind m_kind;
    Rect m_clientRect;
    String m_title;
    IWindowEvents& m_events;
    std::uint64_t m_identifier;
    HeadlessWindow* m_owner = nullptr;
    CursorShape m_cursor = CursorShape::Arrow;
    bool m_isVisible = false;
    bool m_isIconic = false;
    bool m_isEnabled = true;
    bool m_isLayered = false;
    bool m_isInvalid = false;
    bool m_isDestroyed = false;
    ShownPicture m_picture;
    std::uint32_t m_showCount = 0;
    std::vector<std::uint32_t> m_flashes;
};

} // namespace Quorvex::GUI
