#pragma once

#include "gui/window/x11/X11Presenter.h"

#include <memory>
#include <string>

namespace Quorvex::GUI {

class X11WindowSystem;

/// A top-level window. The main window has the window manager's frame; a panel has none and is a utility window of its
/// owner, which takes no focus. What the program asks for counts at once, as on the home platform; where the window
/// manager decides otherwise its answer corrects that later. GUI thread only, but for Post.
class X11Window final : public IPlatformWindow {
public:
    X11Window(X11WindowSystem& system, WindowKind kind, const Rect& clientRect, const String& title,
              IWindowEvents& events);
    ~X11Window() override;

    void* GetNativeHandle() const override { return reinterpret_cast<void*>(m_handle); }
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
    void SetTitle(const String& title) override;
    void SetCursor(CursorShape shape) override;
    void SetOwner(IPlatformWindow* owner) override;
    bool SetLayered(bool isLayered) override;
    void Flash(std::uint32_t count, std::uint32_t timeoutMilliseconds) override;
    bool Invalidate() override;
    void PaintNow() override;
    void Post(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) override;

    ::Window GetHandle() const { return m_handle; }
    std::uint64_t GetIdentifier() const { return m_identifier; }
    IWindowEvents& GetEvents() const { return m_events; }
    WindowKind GetKind() const { return m_kind; }
    bool IsEnabled() const { return m_isEnabled; }
    bool IsInvalid() const { return m_isInvalid; }
    bool HasFocus() const { return m_hasFocus; }
    X11Window* GetOwner() const { return m_owner; }
    /// Places the window without telling the events object, and tells whether it moved.
    bool Place(const Rect& rect);
    void PlaceBelow(const X11Window& above);

    // What the event loop hands over.
    void OnConfigure(const XConfigureEvent& event);
    void OnReparent(const XReparentEvent& event) { m_parent = event.parent; }
    void OnMap();
    void OnExpose();
    void OnStateChange();
    void OnFocus(bool hasFocus, X11Window* other);
    void OnEnter();
    void OnCompletion(const XShmCompletionEvent& event);
    /// Somebody else has destroyed the window.
    void OnHandleDestroyed();
    /// The platform's window has gone, with its owner's object or with the display; the second time does nothing.
    void OnGone();
    /// Another window has gone.
    void Forget(const X11Window& window);
    /// Tells the window manager above which window this one floats.
    void AnnounceOwner();

private:
    void CreateHandle(const X11Visual& visual);
    void DestroyHandle();
    bool IsUsable() const;
    void SetHints();
    void SetGeometryHints();
    void SetInputHints(bool isUrgent);
    void SetIdentity();
    void SetPanelHints();
    void ApplyTitle();
    Rect TranslateToDesktop(const XConfigureEvent& event) const;
    X11Presenter& GetPresenter();

    X11WindowSystem& m_system;
    const X11Connection& m_connection;
    WindowKind m_kind;
    Rect m_clientRect;
    String m_title;
    IWindowEvents& m_events;
    std::uint64_t m_identifier = 0;
    ::Window m_handle = noXid;
    ::Window m_parent = noXid;
    Colormap m_colormap = noXid;
    X11Visual m_visual;
    std::unique_ptr<X11Presenter> m_presenter;
    X11Window* m_owner = nullptr;
    const X11Window* m_above = nullptr;
    unsigned long m_placeSerial = 0; ///< The last request of a place; what the server told before is out of date.
    CursorShape m_cursor = CursorShape::Arrow;
    bool m_isCursorApplied = false;
    bool m_isVisible = false;
    bool m_isIconic = false;
    bool m_isEnabled = true;
    bool m_isLayered = false;
    bool m_isInvalid = false;
    bool m_hasFocus = false;
    bool m_isGone = false;
};

} // namespace Quorvex::GUI
