#include "video/HardwareResampling.h"

#include "video/Image2DMeta.h"
#include "video/ImageQuad.h"
#include "video/ResamplingPrograms.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace Quorvex::Platform::Video {

namespace {

/// Whether the object is there and of this context. After a change of backend it is not.
template <class Child>
bool IsOf(const SharedPtr<Child>& child, const Context& context) {
    return child && child->GetContext().get() == &context;
}

void MakeProgram(SharedPtr<CombinedShader>& shader, Context& context, const std::string& text) {
    if (IsOf(shader, context))
        return;
    const SharedPtr<PixelShader> program = context.CreatePixelShader();
    program->CreateFromGLString(text.c_str());
    SharedPtr<CombinedShader> combined = context.CreateCombinedShader();
    combined->SetPixelShader(program);
    shader = std::move(combined);
}

/// Binds a program for the time of a draw.
class BoundShader {
public:
    BoundShader(Context& shaderContext, const SharedPtr<CombinedShader>& shader) : context(shaderContext) {
        context.BindShader(shader);
    }
    BoundShader(const BoundShader&) = delete;
    BoundShader& operator=(const BoundShader&) = delete;
    ~BoundShader() { context.UnbindShader(); }

private:
    Context& context;
};

void SetTextureUniforms(PixelShader& program, const Data::ImageBase& source) {
    program.SetInteger("image", 0);
    program.SetFloat("bufSizeX", static_cast<float>(source.AllocatedWidth));
    program.SetFloat("bufSizeY", static_cast<float>(source.AllocatedHeight));
}

/// The rectangle's size in pixels along the image's own axes.
struct ShownSize {
    double width;
    double height;

    explicit ShownSize(const ImageRect& rect)
        : width(std::abs(double(rect.x1) - rect.x0)), height(std::abs(double(rect.y1) - rect.y0)) {
        if (rect.rotation == 90 || rect.rotation == 270)
            std::swap(width, height);
    }
};

} // namespace

void HardwareResampling::Draw(Renderer& renderer, Image2DMeta& image, const ImageRect& rect) {
    Context& context = *renderer.GetContext();
    const SharedPtr<Image2D> texture = image.GetImage2D(renderer.GetContext());
    const ShownSize size(rect);
    if (!texture || size.width == 0.0 || size.height == 0.0)
        return;
    switch (rect.mode) {
    case EnumResamplingMode::Cubic:
        return DrawCubic(context, image, rect);
    case EnumResamplingMode::Linear:
        texture->SetFilterLinear();
        return DrawQuad(context, image, rect);
    case EnumResamplingMode::Nearest:
        texture->SetFilterNearest();
        return DrawQuad(context, image, rect);
    case EnumResamplingMode::Area:
        return DrawArea(context, image, rect);
    }
}

void HardwareResampling::DeleteContextObjects() {
    unrolledAreaShaders.fill({});
    quad.reset();
    areaShader.reset();
    cubicShader.reset();
}

std::uint32_t HardwareResampling::UnrolledRounds(double sourcePixelsX, double sourcePixelsY) {
    const double largest = std::max(sourcePixelsX, sourcePixelsY);
    double rounds = std::trunc(largest);
    if (rounds == largest)
        rounds -= 1.0;
    if (!(rounds <= 19.0))
        throw Exception();
    return static_cast<std::uint32_t>(std::max(rounds, 0.0));
}

const SharedPtr<CombinedShader>& HardwareResampling::AreaProgram(Context& context, double sourcePixelsX,
                                                                 double sourcePixelsY) {
    if constexpr (useLoopShaders) {
        MakeProgram(areaShader, context, AreaProgramText());
        return areaShader;
    } else {
        const std::uint32_t rounds = UnrolledRounds(sourcePixelsX, sourcePixelsY);
        MakeProgram(unrolledAreaShaders[rounds], context, UnrolledAreaProgramText(rounds));
        return unrolledAreaShaders[rounds];
    }
}

void HardwareResampling::DrawArea(Context& context, Image2DMeta& image, const ImageRect& rect) {
    const Data::ImageBase& source = *image.source;
    const ShownSize size(rect);
    const double width = source.GetWidth(), height = source.GetHeight();
    const SharedPtr<CombinedShader>& shader = AreaProgram(context, width / size.width, height / size.height);
    const BoundShader bound(context, shader);
    PixelShader& program = *shader->GetPixelShader();
    SetTextureUniforms(program, source);
    program.SetFloat("TCOffsetX", static_cast<float>(width / (2.0 * source.AllocatedWidth * size.width)));
    program.SetFloat("TCOffsetY", static_cast<float>(height / (2.0 * source.AllocatedHeight * size.height)));
    DrawQuad(context, image, rect);
}

void HardwareResampling::DrawCubic(Context& context, Image2DMeta& image, const ImageRect& rect) {
    MakeProgram(cubicShader, context, CubicProgramText());
    const BoundShader bound(context, cubicShader);
    SetTextureUniforms(*cubicShader->GetPixelShader(), *image.source);
    DrawQuad(context, image, rect);
}

void HardwareResampling::DrawQuad(Context& context, Image2DMeta& image, const ImageRect& rect) {
    const Data::ImageBase& source = *image.source;
    context.BindImage2D(image.texture);
    context.clipLeft = rect.clipX0;
    context.clipTop = rect.clipY0;
    context.clipRight = rect.clipX1;
    context.clipBottom = rect.clipY1;
    if (!IsOf(quad, context))
        quad = context.CreateVertexBuffer2D(1);
    const auto vertices = MakeImageQuad(rect, EdgeTextureCoordinate(source.GetWidth(), source.AllocatedWidth),
                                        EdgeTextureCoordinate(source.GetHeight(), source.AllocatedHeight));
    VertexBuffer2D* const locked = quad->Lock();
    for (std::uint32_t i = 0; vertices && i < vertices->size(); ++i) {
        const ImageQuadVertex& vertex = (*vertices)[i];
        locked->SetVertex(i, vertex.u, vertex.v, 1.0f, 1.0f, 1.0f, 1.0f, vertex.x, vertex.y, 0);
    }
    locked->Unlock();
    quad->Render();
    // A clip that no frame has: BeginPaint sets the next one.
    context.clipLeft = 0;
    context.clipTop = 0x7FFFFFFF;
    context.clipRight = 0;
    context.clipBottom = 0x7FFFFFFF;
    context.UnbindImage();
}

} // namespace Quorvex::Platform::Video
