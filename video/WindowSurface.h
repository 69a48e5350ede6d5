#pragma once

#include <cstdint>

namespace Quorvex::Platform::Video {

/// What a renderer needs of a window; the window layer implements it. GUI thread only.
class IWindowSurface {
public:
    virtual ~IWindowSurface() = default;

    /// The platform's handle of the window: HWND, X11 window id, null for a window in memory.
    virtual void* GetNativeHandle() const = 0;
    /// True if the window is shown with per-pixel alpha.
    virtual bool IsLayered() const = 0;
    /// Shows width x height pixels of 32-bit BGRA, rows top-down and pitchBytes apart, in the window's client area;
    /// alpha is ignored. Failures are reported under the platform call's name, and the program goes on.
    virtual void ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                            std::uint32_t pitchBytes) = 0;
    /// The same with premultiplied per-pixel alpha over what lies behind the window.
    virtual void ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                               std::uint32_t pitchBytes) = 0;
    /// Takes pending mouse messages of the thread out of the queue by dispatching them, then hides the window: a
    /// surface can be destroyed while a message for it is still queued.
    virtual void DispatchMouseMessagesAndHide() = 0;
    /// Whether the desktop composes windows with alpha.
    virtual bool IsCompositionEnabled() const = 0;
};

} // namespace Quorvex::Platform::Video
