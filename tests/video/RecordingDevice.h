#pragma once

#include "tests/video/FakeContext.h"

#include <sstream>
#include <vector>

namespace Quorvex::Platform::Video {

/// What a device was told, one line per call.
using DeviceRecord = std::vector<std::string>;

template <class... Values>
std::string Line(const Values&... values) {
    std::ostringstream text;
    std::size_t i = 0;
    ((text << (i++ != 0 ? " " : "") << values), ...);
    return text.str();
}

class RecordingPixelShader final : public PixelShader {
public:
    RecordingPixelShader(Context* owner, SharedPtr<Context> shared, DeviceRecord& deviceRecord)
        : PixelShader(owner, std::move(shared)), record(deviceRecord) {}
    bool SupportsGLSL() const override { return true; }
    void CreateFromGLString(const char* source) override {
        if (isBroken)
            throw Exception("does not compile");
        record.push_back("CreateFromGLString");
        text = source;
    }
    void SetFloat(const char* name, float value) override { record.push_back(Line("SetFloat", name, value)); }
    void SetInteger(const char* name, std::int32_t value) override {
        record.push_back(Line("SetInteger", name, value));
    }

    bool isBroken = false;
    std::string text;

private:
    DeviceRecord& record;
};

class RecordingCombinedShader final : public CombinedShader {
public:
    using CombinedShader::CombinedShader;
    void SetPixelShader(SharedPtr<PixelShader> shader) override { pixelShader = std::move(shader); }
    void SetVertexShader(SharedPtr<VertexShader>) override {}
    SharedPtr<PixelShader> GetPixelShader() const override { return pixelShader; }
    SharedPtr<VertexShader> GetVertexShader() const override { return {}; }

private:
    SharedPtr<PixelShader> pixelShader;
};

class RecordingVertexBuffer final : public VertexBuffer2D {
public:
    RecordingVertexBuffer(Context* owner, SharedPtr<Context> shared, DeviceRecord& deviceRecord)
        : VertexBuffer2D(owner, std::move(shared)), record(deviceRecord) {}
    VertexBuffer2D* Lock() override {
        record.push_back("Lock");
        return this;
    }
    void SetVertex(std::uint32_t index, float u, float v, float red, float green, float blue, float alpha,
                   std::int32_t x, std::int32_t y, std::int32_t z) override {
        record.push_back(Line("SetVertex", index, u, v, red, green, blue, alpha, x, y, z));
    }
    void Unlock() override { record.push_back("Unlock"); }
    void Render() override {
        const Context& device = *GetContext();
        record.push_back(Line("Render", device.clipLeft, device.clipTop, device.clipRight, device.clipBottom));
    }
    void RenderRange(std::uint32_t) override {}
    void Destroy() override {}

private:
    DeviceRecord& record;
};

class RecordingImage2D final : public Image2D {
public:
    RecordingImage2D(Context* owner, SharedPtr<Context> shared, DeviceRecord& deviceRecord)
        : Image2D(owner, std::move(shared), {}), record(deviceRecord) {}
    void CreateFromMemory(const Image2DMeta&) override {}
    void SetFilterLinear() override { record.push_back("SetFilterLinear"); }
    void SetFilterNearest() override { record.push_back("SetFilterNearest"); }

private:
    DeviceRecord& record;
};

/// A device that draws nothing and writes down what it is told to do.
class RecordingContext final : public Context {
public:
    SharedPtr<Renderer> CreateRenderer(SharedPtr<IWindowSurface> window, std::span<const BufferFormat>,
                                       Function<void> onRecreate) override {
        return SharedPtr<Renderer>(new FakeRenderer(this, SharedPtrFromThis(), window, onRecreate));
    }
    SharedPtr<Image2D> CreateImage2D(const Image2DMeta&, Function<void>) override {
        return SharedPtr<Image2D>(new RecordingImage2D(this, SharedPtrFromThis(), record));
    }
    void BindImage(Image2D*) override { record.push_back("BindImage"); }
    void UnbindImage() override { record.push_back("UnbindImage"); }
    SharedPtr<PixelShader> CreatePixelShader() override {
        lastProgram = new RecordingPixelShader(this, SharedPtrFromThis(), record);
        lastProgram->isBroken = isBroken;
        return SharedPtr<PixelShader>(lastProgram);
    }
    SharedPtr<VertexShader> CreateVertexShader() override { return {}; }
    SharedPtr<CombinedShader> CreateCombinedShader() override {
        return SharedPtr<CombinedShader>(new RecordingCombinedShader(this, SharedPtrFromThis()));
    }
    void BindShader(const SharedPtr<CombinedShader>&) override { record.push_back("BindShader"); }
    void UnbindShader() override { record.push_back("UnbindShader"); }
    SharedPtr<VertexBuffer2D> CreateVertexBuffer2D(std::uint32_t count) override {
        record.push_back(Line("CreateVertexBuffer2D", count));
        return SharedPtr<VertexBuffer2D>(new RecordingVertexBuffer(this, SharedPtrFromThis(), record));
    }
    void RenderVertexBufferRange(VertexBuffer2D&, std::uint32_t) override {}
    SharedPtr<OffscreenBuffer> CreateOffscreenBuffer(std::uint32_t, std::uint32_t) override { return {}; }

    DeviceRecord record;
    bool isBroken = false;
    RecordingPixelShader* lastProgram = nullptr; ///< Belongs to whoever asked for it.
};

} // namespace Quorvex::Platform::Video
