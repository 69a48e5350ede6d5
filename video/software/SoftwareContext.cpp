#include "video/software/SoftwareContext.h"

#include "foundation/Report.h"
#include "video/Image2DMeta.h"
#include "video/software/CombinedShader.h"
#include "video/software/OffscreenBuffer.h"
#include "video/software/Rasterizer.h"
#include "video/software/SoftwareRenderer.h"
#include "video/software/VertexBuffer2D.h"

#include <limits>

namespace Quorvex::Platform::Video::Software {

SoftwareContext::SoftwareContext() : isPrivate(true) {
    hasNonPowerOfTwoTextures = true;
}

SoftwareContext::SoftwareContext(const SharedPtr<IWindowSurface>& firstWindow) : isPrivate(false) {
    hasNonPowerOfTwoTextures = true;
    if (!firstWindow)
        throw Exception("SoftwareContext: window==nullptr");
}

SharedPtr<Renderer> SoftwareContext::CreateRenderer(SharedPtr<IWindowSurface> window, std::span<const BufferFormat>,
                                                    Function<void> onRecreate) {
    if (isPrivate || !window)
        throw Exception("CreateRenderer: window==nullptr");
    return SharedPtr<Renderer>(new SoftwareRenderer(this, SharedPtrFromThis(), std::move(window), onRecreate));
}

SharedPtr<Video::Image2D> SoftwareContext::CreateImage2D(const Image2DMeta&, Function<void> repeatUpload) {
    return SharedPtr<Video::Image2D>(new Image2D(this, SharedPtrFromThis(), repeatUpload));
}

void SoftwareContext::BindImage(Video::Image2D* image) {
    auto* const softwareImage = dynamic_cast<Image2D*>(image);
    if (softwareImage == nullptr && image != nullptr)
        throw Exception("BindImage: texture of another backend");
    boundImage = softwareImage;
}

void SoftwareContext::ForgetImage(const Image2D* image) {
    if (boundImage == image)
        boundImage = nullptr;
}

SharedPtr<Video::PixelShader> SoftwareContext::CreatePixelShader() {
    ReportProblem(__LINE__, "CreatePixelShader");
    throw Exception(__LINE__, "CreatePixelShader");
}

SharedPtr<VertexShader> SoftwareContext::CreateVertexShader() {
    ReportProblem(__LINE__, "CreateVertexShader");
    throw Exception(__LINE__, "CreateVertexShader");
}

SharedPtr<Video::CombinedShader> SoftwareContext::CreateCombinedShader() {
    return SharedPtr<Video::CombinedShader>(new CombinedShader(this, SharedPtrFromThis()));
}

void SoftwareContext::BindShader(const SharedPtr<Video::CombinedShader>& shader) {
    if (!shader)
        throw Exception("SoftwareRenderer::BindShader(...) -> shader==nullptr");
    SharedPtr<PixelShader> program = shader->GetPixelShader().DynamicCast<PixelShader>();
    if (!program)
        throw Exception("SoftwareRenderer::BindShader(...) -> shader->data->sp==0");
    boundShader = std::move(program);
}

SharedPtr<Video::VertexBuffer2D> SoftwareContext::CreateVertexBuffer2D(std::uint32_t quadCount) {
    return SharedPtr<Video::VertexBuffer2D>(new VertexBuffer2D(this, SharedPtrFromThis(), quadCount));
}

SharedPtr<Video::OffscreenBuffer> SoftwareContext::CreateOffscreenBuffer(std::uint32_t width, std::uint32_t height) {
    return SharedPtr<Video::OffscreenBuffer>(new OffscreenBuffer(this, SharedPtrFromThis(), width, height));
}

void SoftwareContext::SetColorOverride(const Data::ColorBGRA<float>& color) {
    colorOverrideEnabled = true;
    colorOverride = ToColor(color);
}

void SoftwareContext::RenderVertexBufferRange(Video::VertexBuffer2D& buffer, std::uint32_t quadIndex) {
    if (!renderTarget && !offscreenTarget) {
        ReportProblem(__LINE__, "RenderVertexBufferRange");
        throw Exception(__LINE__, "RenderVertexBufferRange");
    }
    const auto* const vertexBuffer = dynamic_cast<const VertexBuffer2D*>(&buffer);
    if (vertexBuffer == nullptr)
        throw Exception("RenderVertexBufferRange: buffer of another backend");
    const auto quad = vertexBuffer->Quad(quadIndex);

    SharedPtr<Renderer::Lock> lock;
    RasterTarget target;
    if (renderTarget) {
        lock = renderTarget->LockColorBuffer();
        target =
            MakeTarget(reinterpret_cast<const Color*>(lock->ReadBits()), reinterpret_cast<Color*>(lock->WriteBits()),
                       renderTarget->GetWidth(), renderTarget->GetHeight());
    } else {
        target = MakeTarget(offscreenTarget->GetBits(), offscreenTarget->GetBits(), offscreenTarget->GetWidth(),
                            offscreenTarget->GetHeight());
    }
    DrawTriangle(MakeTriangle(quad.first<3>()), target);
    DrawTriangle(MakeTriangle(quad.last<3>()), target);
}

RasterTarget SoftwareContext::MakeTarget(const Color* readBits, Color* writeBits, std::uint32_t width,
                                         std::uint32_t height) const {
    const auto limited = [](std::int32_t clip, std::uint32_t size) {
        const auto largest = static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max());
        return std::min(clip, static_cast<std::int32_t>(std::min(size, largest)));
    };
    return {readBits,
            writeBits,
            width,
            std::max(clipLeft, 0),
            std::max(clipTop, 0),
            limited(clipRight, width),
            limited(clipBottom, height),
            blendingEnabled};
}

Triangle SoftwareContext::MakeTriangle(std::span<const VertexRecord, 3> vertices) const {
    Triangle triangle;
    for (std::size_t i = 0; i < 3; ++i) {
        const VertexRecord& vertex = vertices[i];
        // Positions are cut off before they move, and stay at the last number there is instead of wrapping around.
        triangle.vertices[i] = {TruncateToInt32(static_cast<double>(TruncateToInt32(vertex.x)) + translateX),
                                TruncateToInt32(static_cast<double>(TruncateToInt32(vertex.y)) + translateY),
                                {vertex.b, vertex.g, vertex.r, vertex.a},
                                vertex.u,
                                vertex.v};
    }
    return triangle;
}

void SoftwareContext::DrawTriangle(const Triangle& triangle, const RasterTarget& target) {
    const Color flatColor = colorOverrideEnabled ? colorOverride : triangle.vertices[0].color;
    if (boundImage == nullptr)
        return RasterizeFlat(triangle, target, {flatColor});
    if (!boundImage->GetSource())
        throw Exception();
    Data::Dispatch(boundImage->GetSource()->ColorType, "unknown color type",
                   [&](auto tag) { DrawImage<typename decltype(tag)::Sample>(triangle, target, flatColor); });
}

namespace {

template <class Sample>
Data::Lock<const Sample> LockForReading(const Data::ImageBase& image) {
    try {
        return Data::SampleTraits<Sample>::LockIn(image, Data::LockMode::ReadOnly);
    } catch (const Exception&) {
        throw Exception();
    }
}

} // namespace

template <class Sample>
void SoftwareContext::DrawImage(const Triangle& triangle, const RasterTarget& target, const Color& flatColor) {
    const SharedPtr<Data::ImageBase>& source = boundImage->GetSource();
    const auto pixels = LockForReading<Sample>(*source);
    if (pixels.Data == nullptr || pixels.Width == 0 || pixels.Height == 0)
        throw Exception();
    PixelShaderParameter<Sample> parameter(flatColor, pixels.Data, source);
    if (boundShader)
        RasterizeShader(triangle, target, parameter, *boundShader);
    else if (flatColor == Color{255, 255, 255, 255})
        RasterizeNearest(triangle, target, parameter);
    else
        RasterizeNearestWithColorization(triangle, target, parameter);
}

} // namespace Quorvex::Platform::Video::Software
