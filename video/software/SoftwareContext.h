#pragma once

#include "video/Context.h"
#include "video/VertexBuffer2D.h"
#include "video/software/Image2D.h"
#include "video/software/PixelShader.h"
#include "video/software/Triangle.h"

namespace Quorvex::Platform::Video::Software {

/// The backend without a device: a rasteriser of axis-parallel quads over a 32-bit colour buffer. Images of any size
/// and sample type are drawn from their own samples. A quad has one colour per triangle, that of vertex 0 and of
/// vertex 3. The bound shader keeps its context alive: a user ends its drawing with UnbindShader.
class SoftwareContext final : public Context {
public:
    /// A private context, which has no window and draws into an OffscreenBuffer alone.
    SoftwareContext();
    /// The context of a toolkit whose first window this is. Raises Exception for a null window.
    explicit SoftwareContext(const SharedPtr<IWindowSurface>& firstWindow);

    /// The one format there is, BGRA32, serves every wish. Raises Exception for a null window, and in a private
    /// context.
    SharedPtr<Renderer> CreateRenderer(SharedPtr<IWindowSurface> window, std::span<const BufferFormat> wanted,
                                       Function<void> onRecreate) override;
    SharedPtr<Video::Image2D> CreateImage2D(const Image2DMeta& image, Function<void> repeatUpload) override;
    void BindImage(Video::Image2D* image) override;
    void UnbindImage() override { boundImage = nullptr; }

    /// Report their name and raise Exception: the shaders of this backend are constructed directly.
    SharedPtr<Video::PixelShader> CreatePixelShader() override;
    SharedPtr<VertexShader> CreateVertexShader() override;
    SharedPtr<Video::CombinedShader> CreateCombinedShader() override;
    void BindShader(const SharedPtr<Video::CombinedShader>& shader) override;
    void UnbindShader() override { boundShader.reset(); }

    SharedPtr<Video::VertexBuffer2D> CreateVertexBuffer2D(std::uint32_t quadCount) override;
    /// Without a target reports "RenderVertexBufferRange" and raises Exception. Raises Exception "unknown color type"
    /// for a bound image outside the list of sample types, and with empty text for one that has no pixels or cannot be
    /// locked.
    void RenderVertexBufferRange(Video::VertexBuffer2D& buffer, std::uint32_t quadIndex) override;
    SharedPtr<Video::OffscreenBuffer> CreateOffscreenBuffer(std::uint32_t width, std::uint32_t height) override;

    /// All triangles take this straight colour, channels 0..1.
    void SetColorOverride(const Data::ColorBGRA<float>& color);
    void DisableColorOverride() { colorOverrideEnabled = false; }
    /// Unbinds the image if it is the bound one.
    void ForgetImage(const Image2D* image);

private:
    Triangle MakeTriangle(std::span<const VertexRecord, 3> vertices) const;
    void DrawTriangle(const Triangle& triangle, const RasterTarget& target);
    template <class Sample>
    void DrawImage(const Triangle& triangle, const RasterTarget& target, const Color& flatColor);
    RasterTarget MakeTarget(const Color* readBits, Color* writeBits, std::uint32_t width, std::uint32_t height) const;

    Image2D* boundImage = nullptr;
    bool colorOverrideEnabled = false;
    Color colorOverride;
    SharedPtr<PixelShader> boundShader;
    bool isPrivate;
};

} // namespace Quorvex::Platform::Video::Software
