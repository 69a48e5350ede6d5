#pragma once

#include "tests/gui/RecordingControl.h"
#include "video/OffscreenBuffer.h"
#include "video/Renderer.h"
#include "video/Shader.h"
#include "video/VertexBuffer2D.h"

namespace Quorvex::GUI::Test {

/// A renderer that draws nothing and writes down the frame.
class RecordingRenderer final : public Platform::Video::Renderer {
public:
    RecordingRenderer(Platform::Video::Context* device, SharedPtr<Platform::Video::IWindowSurface> surface,
                      Calls& record)
        : Renderer(device, device->SharedPtrFromThis(), std::move(surface), {}), calls(record) {}

    bool EnableBlending() override {
        calls.push_back("EnableBlending");
        return Renderer::EnableBlending();
    }
    void DisableBlending() override {
        calls.push_back("DisableBlending");
        Renderer::DisableBlending();
    }
    void BeginPaint() override {
        const auto alpha = static_cast<int>(GetContext()->clearColor.alpha * 100);
        calls.push_back("BeginPaint " + std::to_string(alpha) + (IsTarget() ? "" : " without target"));
    }
    void EndPaint() override { calls.push_back("EndPaint"); }
    void Translate(std::int32_t dx, std::int32_t dy) override {
        calls.push_back("Translate " + std::to_string(dx) + "," + std::to_string(dy));
        Renderer::Translate(dx, dy);
    }
    void DisableColorOverride() override {}
    void SetColorOverride(const Data::ColorBGRA<float>&) override {}
    const char* GetName() const override { return "Recording"; }
    bool Finish() override { return true; }
    bool Present() override {
        calls.push_back("Present");
        if (raisesOnPresent)
            throw Exception("cannot present");
        return lostPresents == 0 || --lostPresents == 0;
    }
    bool HasAlphaChannel() const override { return hasAlpha; }
    SharedPtr<Lock> LockColorBuffer() override { return {}; }

    Calls& calls;
    /// How many calls of Present find the device lost, and one more.
    int lostPresents = 0;
    bool raisesOnPresent = false;
    bool hasAlpha = true;

private:
    bool IsTarget() const { return GetContext()->renderTarget.get() == this; }
};

class RecordingVertexBuffer final : public Platform::Video::VertexBuffer2D {
public:
    RecordingVertexBuffer(Platform::Video::Context* device, std::uint32_t count)
        : VertexBuffer2D(device, device->SharedPtrFromThis()) {
        quadCount = count;
        vertices.resize(std::size_t{count} * Platform::Video::verticesPerQuad);
    }

    VertexBuffer2D* Lock() override { return this; }
    void SetVertex(std::uint32_t index, float u, float v, float red, float green, float blue, float alpha,
                   std::int32_t x, std::int32_t y, std::int32_t z) override {
        vertices.at(index) = MakeRecord(u, v, red, green, blue, alpha, x, y, z);
    }
    void Unlock() override { ++unlockCount; }
    void Render() override {}
    void RenderRange(std::uint32_t) override {}
    void Destroy() override {}

    std::vector<Platform::Video::VertexRecord> vertices;
    int unlockCount = 0;
};

/// A device that makes the two above.
class RecordingContext final : public Platform::Video::Context {
public:
    explicit RecordingContext(Calls& record) : calls(record) {}

    SharedPtr<Platform::Video::Renderer> CreateRenderer(SharedPtr<Platform::Video::IWindowSurface> window,
                                                        std::span<const Platform::Video::BufferFormat> wanted,
                                                        Function<void>) override {
        wantedFormats.assign(wanted.begin(), wanted.end());
        if (refusesRenderer)
            throw Exception("No renderer!");
        auto* made = new RecordingRenderer(this, std::move(window), calls);
        renderers.push_back(made);
        return SharedPtr<Platform::Video::Renderer>(made);
    }
    SharedPtr<Platform::Video::Image2D> CreateImage2D(const Platform::Video::Image2DMeta&, Function<void>) override {
        return {};
    }
    void BindImage(Platform::Video::Image2D*) override {}
    void UnbindImage() override {}
    SharedPtr<Platform::Video::PixelShader> CreatePixelShader() override { return {}; }
    SharedPtr<Platform::Video::VertexShader> CreateVertexShader() override { return {}; }
    SharedPtr<Platform::Video::CombinedShader> CreateCombinedShader() override { return {}; }
    void BindShader(const SharedPtr<Platform::Video::CombinedShader>&) override {}
    void UnbindShader() override {}
    SharedPtr<Platform::Video::VertexBuffer2D> CreateVertexBuffer2D(std::uint32_t count) override {
        return SharedPtr<Platform::Video::VertexBuffer2D>(new RecordingVertexBuffer(this, count));
    }
    void RenderVertexBufferRange(Platform::Video::VertexBuffer2D&, std::uint32_t) override {}
    SharedPtr<Platform::Video::OffscreenBuffer> CreateOffscreenBuffer(std::uint32_t, std::uint32_t) override {
        return {};
    }

    Calls& calls;
    std::vector<Platform::Video::BufferFormat> wantedFormats;
    std::vector<RecordingRenderer*> renderers; ///< Not owned; those that still live.
    bool refusesRenderer = false;
};

} // namespace Quorvex::GUI::Test
