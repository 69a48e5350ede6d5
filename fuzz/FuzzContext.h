#pragma once

#include "foundation/Exception.h"
#include "video/Context.h"

/// Creates images as every context does, but none that is larger than a fuzzer can afford for each of its inputs.
class FuzzContext final : public Quorvex::Platform::Video::Context {
    template <class T>
    using SharedPtr = Quorvex::SharedPtr<T>;
    using Image = Quorvex::Data::ImageBase;

    static constexpr std::uint64_t largestPixelCount = 1 << 14;

public:
    FuzzContext() { hasNonPowerOfTwoTextures = true; }

#define FUZZ_FACTORY(value, name, sample)                                                                              \
    SharedPtr<Image> CreateImage##name(std::uint32_t width, std::uint32_t height, std::uint32_t rowLength,             \
                                       std::uint32_t rows) override {                                                  \
        Check(std::uint64_t(width) + rowLength, std::uint64_t(height) + rows);                                         \
        return Context::CreateImage##name(width, height, rowLength, rows);                                             \
    }
    QUORVEX_SAMPLE_TYPES(FUZZ_FACTORY)
#undef FUZZ_FACTORY

    SharedPtr<Quorvex::Platform::Video::Renderer>
    CreateRenderer(SharedPtr<Quorvex::Platform::Video::IWindowSurface>,
                   std::span<const Quorvex::Platform::Video::BufferFormat>, Quorvex::Function<void>) override {
        return {};
    }
    SharedPtr<Quorvex::Platform::Video::Image2D> CreateImage2D(const Quorvex::Platform::Video::Image2DMeta&,
                                                               Quorvex::Function<void>) override {
        return {};
    }
    void BindImage(Quorvex::Platform::Video::Image2D*) override {}
    void UnbindImage() override {}
    SharedPtr<Quorvex::Platform::Video::PixelShader> CreatePixelShader() override {
        return {};
    }
    SharedPtr<Quorvex::Platform::Video::VertexShader> CreateVertexShader() override {
        return {};
    }
    SharedPtr<Quorvex::Platform::Video::CombinedShader> CreateCombinedShader() override {
        return {};
    }
    void BindShader(const SharedPtr<Quorvex::Platform::Video::CombinedShader>&) override {}
    void UnbindShader() override {}
    SharedPtr<Quorvex::Platform::Video::VertexBuffer2D> CreateVertexBuffer2D(std::uint32_t) override {
        return {};
    }
    void RenderVertexBufferRange(Quorvex::Platform::Video::VertexBuffer2D&, std::uint32_t) override {}
    SharedPtr<Quorvex::Platform::Video::OffscreenBuffer> CreateOffscreenBuffer(std::uint32_t, std::uint32_t) override {
        return {};
    }

private:
    static void Check(std::uint64_t width, std::uint64_t height) {
        if (width > largestPixelCount || height > largestPixelCount || width * height > largestPixelCount)
            throw Quorvex::Exception();
    }
};
