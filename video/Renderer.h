#pragma once

#include "video/Context.h"
#include "video/WindowSurface.h"

namespace Quorvex::Platform::Video {

/// The drawing surface of one window. One unit is one pixel, the origin lies top left, y runs downward, and the colour
/// buffer holds premultiplied colour. Drawing a frame (BeginPaint to EndPaint, while this is the context's target) and
/// showing it (Present) are separate steps: a finished frame can be shown again. GUI thread only.
class Renderer : public Context::ContextChild {
public:
    /// A view of the colour buffer's pixels, valid until the next SetSize.
    class Lock {
    public:
        virtual const std::uint8_t* ReadBits() const = 0;
        virtual std::int32_t ReadPitch() const = 0; ///< Bytes per row.
        virtual std::uint8_t* WriteBits() const = 0;
        virtual std::int32_t WritePitch() const = 0; ///< Bytes per row.
        virtual BufferFormat Format() const = 0;
        virtual std::int32_t Height() const = 0; ///< Rows; negative where they lie bottom-up.
        virtual ~Lock() = default;
    };

    Renderer(Context* owner, SharedPtr<Context> sharedContext, SharedPtr<IWindowSurface> surface,
             Function<void> recreate);
    /// Takes the window's queued mouse messages out of the queue and hides the window.
    ~Renderer() override;

    void OnDeviceLost() override {}
    /// Tells the owner that the device was rebuilt.
    void OnDeviceReset() override;

    /// Source-over: colour weighs with the source's alpha, alpha adds up as premultiplied colour wants it. Returns
    /// whether blending was on before.
    virtual bool EnableBlending();
    virtual void DisableBlending();
    /// In pixels.
    virtual void SetSize(std::uint32_t newWidth, std::uint32_t newHeight);
    /// Clears the surface to the context's clearColor, with the origin at the top left pixel.
    virtual void BeginPaint() = 0;
    virtual void EndPaint() = 0;
    /// Moves all that is drawn from here on by that many pixels; adds up.
    virtual void Translate(std::int32_t dx, std::int32_t dy);
    /// Back to the colours of the vertices.
    virtual void DisableColorOverride() = 0;
    /// All vertices take this straight colour, channels 0..1.
    virtual void SetColorOverride(const Data::ColorBGRA<float>& color) = 0;
    /// RendererTypeName of the backend. Callers compare the pointer.
    virtual const char* GetName() const = 0;
    /// Waits until the device has drawn everything; failures are reported, and the answer is false.
    virtual bool Finish() = 0;
    /// Shows the finished frame. False: the device is lost and the frame must be drawn again.
    virtual bool Present() = 0;
    /// Whether a pixel of the surface takes exactly the value drawn: a driver can force anti-aliasing on.
    virtual bool IsPixelMappingPrecise() { return true; }
    /// Whether the surface carries 8 bits of alpha at bit 24, so that its window can be see-through.
    virtual bool HasAlphaChannel() const { return false; }
    virtual SharedPtr<Lock> LockColorBuffer() = 0;
    /// Whether the desktop composes windows with alpha.
    virtual bool IsCompositionEnabled();

    const SharedPtr<IWindowSurface>& GetWindow() const { return window; }
    std::uint32_t GetWidth() const { return width; }   ///< Pixels.
    std::uint32_t GetHeight() const { return height; } ///< Pixels.
    /// The surface must be rebuilt at the next BeginPaint.
    bool IsSizeChanged() const { return sizeChanged; }

protected:
    bool sizeChanged = true;
    SharedPtr<IWindowSurface> window;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    Function<void> onRecreate;
};

} // namespace Quorvex::Platform::Video
