#pragma once

#include "data/Image.h"
#include "tests/video/RecordingWindow.h"
#include "video/Blend.h"
#include "video/Image2DMeta.h"
#include "video/OffscreenBuffer.h"
#include "video/Renderer.h"
#include "video/software/PixelShaders.h"
#include "video/software/SoftwareContext.h"
#include "video/software/VertexBuffer2D.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quorvex::Data {

/// For messages of failed expectations.
inline void PrintTo(const ColorBGRA<std::uint8_t>& color, std::ostream* stream) {
    *stream << "(" << int{color.blue} << "," << int{color.green} << "," << int{color.red} << "," << int{color.alpha}
            << ")";
}

} // namespace Quorvex::Data

namespace Quorvex::Platform::Video::Software {

/// A software context with a renderer on a window that keeps its frames, in the middle of a frame cleared to 0.
class SoftwareFixture : public testing::Test {
protected:
    /// Corners in target pixels, with the texture coordinates of the left, top, right and bottom side.
    struct Quad {
        std::int32_t x0, y0, x1, y1;
        float u0 = 0.0f, v0 = 0.0f, u1 = 1.0f, v1 = 1.0f;
    };

    SoftwareFixture() {
        context->clearColor = {0.0f, 0.0f, 0.0f, 0.0f};
        renderer->SetSize(64, 48);
        context->SetRenderTarget(renderer);
        renderer->BeginPaint();
    }

    ~SoftwareFixture() override {
        context->ResetTarget();
        context->UnbindShader();
    }

    /// White at straight alpha unless told otherwise; six colours, one per vertex.
    SharedPtr<Video::VertexBuffer2D> MakeBuffer(const Quad& quad, const std::array<Color, 6>& colors) {
        SharedPtr<Video::VertexBuffer2D> buffer = context->CreateVertexBuffer2D(1);
        Video::VertexBuffer2D* const vertices = buffer->Lock();
        const auto set = [&](std::uint32_t index, bool right, bool bottom) {
            // A little more than the level, so that cutting off gives it back.
            const auto level = [](std::uint8_t byte) { return (byte + 0.25f) / 255.0f; };
            const Color& color = colors[index];
            vertices->SetVertex(index, right ? quad.u1 : quad.u0, bottom ? quad.v1 : quad.v0, level(color.red),
                                level(color.green), level(color.blue), level(color.alpha), right ? quad.x1 : quad.x0,
                                bottom ? quad.y1 : quad.y0, 0);
        };
        set(0, false, false);
        set(1, true, false);
        set(2, true, true);
        set(3, false, false);
        set(4, true, true);
        set(5, false, true);
        vertices->Unlock();
        return buffer;
    }

    void Draw(const Quad& quad, const Color& color = {255, 255, 255, 255}) {
        std::array<Color, 6> colors;
        colors.fill(color);
        MakeBuffer(quad, colors)->Render();
    }

    void Bind(const SharedPtr<Data::ImageBase>& image) {
        shown.CreateFromMemory(context, image);
        context->BindImage2D(shown.GetImage2D(context));
    }

    template <class Shader>
    SharedPtr<Shader> BindNew() {
        SharedPtr<Shader> shader(new Shader(context.get(), context));
        SharedPtr<Video::CombinedShader> combined = context->CreateCombinedShader();
        combined->SetPixelShader(shader);
        context->BindShader(combined);
        return shader;
    }

    Color At(std::uint32_t x, std::uint32_t y) const {
        const SharedPtr<Renderer::Lock> lock = renderer->LockColorBuffer();
        return reinterpret_cast<const Color*>(lock->ReadBits())[y * renderer->GetWidth() + x];
    }

    /// Compares each pixel with expected(x, y).
    template <class Expected>
    void ExpectPixels(const Expected& expected) const {
        for (std::uint32_t y = 0; y < renderer->GetHeight(); ++y)
            for (std::uint32_t x = 0; x < renderer->GetWidth(); ++x)
                ASSERT_EQ(At(x, y), expected(x, y)) << "at " << x << ", " << y;
    }

    SharedPtr<RecordingWindow> window{new RecordingWindow()};
    SharedPtr<SoftwareContext> context{new SoftwareContext(window)};
    SharedPtr<Renderer> renderer = context->CreateRenderer(window, {}, {});
    Image2DMeta shown;
};

} // namespace Quorvex::Platform::Video::Software
