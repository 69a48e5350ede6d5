#pragma once

#include "tests/video/RecordingWindow.h"
#include "video/Image2DMeta.h"
#include "video/OffscreenBuffer.h"
#include "video/Renderer.h"
#include "video/Shader.h"
#include "video/VertexBuffer2D.h"

#include <functional>
#include <string>

namespace Quorvex::Platform::Video {

/// A texture that counts its uploads and can refuse them.
class FakeImage2D final : public Image2D {
public:
    using Image2D::Image2D;
    void CreateFromMemory(const Image2DMeta& image) override {
        CheckTextureUpload(*image.source, largestSide);
        if (isMemoryExhausted)
            throw OutOfDeviceMemory();
        ++uploadCount;
        uploaded = image.source;
    }
    void SetFilterLinear() override {}
    void SetFilterNearest() override {}

    std::uint32_t largestSide = 0xFFFFFFFF;
    bool isMemoryExhausted = false;
    int uploadCount = 0;
    SharedPtr<Data::ImageBase> uploaded;
};

/// The defaults of the base, and nothing behind the rest.
class FakeRenderer final : public Renderer {
public:
    using Renderer::Renderer;
    void BeginPaint() override {}
    void EndPaint() override { sizeChanged = false; }
    void DisableColorOverride() override {}
    void SetColorOverride(const Data::ColorBGRA<float>&) override {}
    const char* GetName() const override { return RendererTypeName(RendererTypeEnum::OpenGL); }
    bool Finish() override { return true; }
    bool Present() override { return true; }
    SharedPtr<Lock> LockColorBuffer() override { return {}; }
};

/// Stores nothing, and remembers which quads were drawn.
class FakeVertexBuffer2D final : public VertexBuffer2D {
public:
    using VertexBuffer2D::VertexBuffer2D;
    VertexBuffer2D* Lock() override { return this; }
    void SetVertex(std::uint32_t, float, float, float, float, float, float, std::int32_t, std::int32_t,
                   std::int32_t) override {}
    void Unlock() override {}
    void Render() override {}
    void RenderRange(std::uint32_t quadIndex) override { drawnQuads.push_back(quadIndex); }
    void Destroy() override {}

    std::vector<std::uint32_t> drawnQuads;
};

class FakeOffscreenBuffer final : public OffscreenBuffer {
public:
    using OffscreenBuffer::OffscreenBuffer;
    Data::ColorBGRA<std::uint8_t>* GetBits() override { return nullptr; }
    std::uint32_t GetWidth() const override { return 0; }
    std::uint32_t GetHeight() const override { return 0; }
};

/// A device that draws nothing, whose abilities and losses a test decides.
class FakeContext final : public Context {
public:
    SharedPtr<Renderer> CreateRenderer(SharedPtr<IWindowSurface> window, std::span<const BufferFormat>,
                                       Function<void> onRecreate) override {
        return SharedPtr<Renderer>(new FakeRenderer(this, SharedPtrFromThis(), window, onRecreate));
    }
    SharedPtr<Image2D> CreateImage2D(const Image2DMeta&, Function<void> repeatUpload) override {
        SharedPtr<FakeImage2D> image(new FakeImage2D(this, SharedPtrFromThis(), repeatUpload));
        image->largestSide = largestSide;
        image->isMemoryExhausted = isMemoryExhausted;
        return image;
    }
    void BindImage(Image2D* image) override { boundImage = image; }
    void UnbindImage() override { boundImage = nullptr; }
    SharedPtr<PixelShader> CreatePixelShader() override { return {}; }
    SharedPtr<VertexShader> CreateVertexShader() override { return {}; }
    SharedPtr<CombinedShader> CreateCombinedShader() override { return {}; }
    void BindShader(const SharedPtr<CombinedShader>&) override {}
    void UnbindShader() override {}
    SharedPtr<VertexBuffer2D> CreateVertexBuffer2D(std::uint32_t) override {
        return SharedPtr<VertexBuffer2D>(new FakeVertexBuffer2D(this, SharedPtrFromThis()));
    }
    SharedPtr<OffscreenBuffer> CreateOffscreenBuffer(std::uint32_t, std::uint32_t) override {
        return SharedPtr<OffscreenBuffer>(new FakeOffscreenBuffer(this, SharedPtrFromThis()));
    }

    using Context::LoseDevice;
    using Context::ResetDevice;

    Image2D* boundImage = nullptr;
    std::uint32_t largestSide = 0xFFFFFFFF;
    bool isMemoryExhausted = false;
};

/// Writes its name and the event into a text that the test reads.
class RecordingChild final : public Context::ContextChild {
public:
    RecordingChild(FakeContext& owner, std::string childName, std::string& record)
        : ContextChild(&owner, {}), name(std::move(childName)), events(record) {}
    void OnDeviceLost() override { Tell("lost"); }
    void OnDeviceReset() override { Tell("reset"); }

    std::function<void()> action; ///< Done within each call.

private:
    void Tell(const char* event) {
        events += name + " " + event + "; ";
        // The action may end this child.
        const std::function<void()> copy = action;
        if (copy)
            copy();
    }

    std::string name;
    std::string& events;
};

/// The text of the exception that the action raises; "nothing raised" if none comes.
template <class Action>
std::string RaisedText(const Action& action) {
    try {
        action();
    } catch (const Exception& exception) {
        return exception.what();
    }
    return "nothing raised";
}

} // namespace Quorvex::Platform::Video
