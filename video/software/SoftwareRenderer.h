#pragma once

#include "video/Renderer.h"
#include "video/software/SampleConversion.h"

#include <memory>

namespace Quorvex::Platform::Video::Software {

/// A colour buffer for one window. Its content stays until the size changes: a frame can be shown again.
class SoftwareRenderer : public Renderer {
public:
    using Renderer::Renderer;

    // There is no device to lose.
    void OnDeviceReset() override {}
    /// Replaces the colour buffer, all 0 at first, if the size differs. Raises std::bad_alloc and keeps the old one.
    void SetSize(std::uint32_t newWidth, std::uint32_t newHeight) override;
    void BeginPaint() override;
    void EndPaint() override { sizeChanged = false; }
    void DisableColorOverride() override;
    void SetColorOverride(const Data::ColorBGRA<float>& color) override;
    const char* GetName() const override { return RendererTypeName(RendererTypeEnum::Software); }
    bool Finish() override { return true; }
    bool Present() override;
    bool HasAlphaChannel() const override { return true; }
    SharedPtr<Lock> LockColorBuffer() override;
    /// Hands the buffer over as the window wants it, opaque or with alpha.
    virtual void PresentToWindow(IWindowSurface& surface);

private:
    std::unique_ptr<Color[]> colorBuffer;
};

} // namespace Quorvex::Platform::Video::Software
