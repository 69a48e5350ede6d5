#pragma once

#include "foundation/Exception.h"
#include "video/Context.h"

#include <new>

/// A context that draws nothing: it creates images as every context does, counts them, and can run out of memory.
class TestContext : public Quorvex::Platform::Video::Context {
    template <class T>
    using SharedPtr = Quorvex::SharedPtr<T>;
    using String = Quorvex::String;

public:
    TestContext() { hasNonPowerOfTwoTextures = true; }

    bool isOutOfMemory = false;
    int colorImages = 0;

    SharedPtr<Quorvex::Data::ImageBase> CreateImageBGRAUInt8(std::uint32_t width, std::uint32_t height,
                                                             std::uint32_t rowLength, std::uint32_t rows) override {
        ++colorImages;
        if (isOutOfMemory)
            throw std::bad_alloc();
        return Context::CreateImageBGRAUInt8(width, height, rowLength, rows);
    }

    SharedPtr<Quorvex::Platform::Video::Renderer>
    CreateRenderer(SharedPtr<Quorvex::Platform::Video::IWindowSurface>,
                   std::span<const Quorvex::Platform::Video::BufferFormat>, Quorvex::Function<void>) override {
        throw Quorvex::Exception();
    }
    SharedPtr<Quorvex::Platform::Video::Image2D> CreateImage2D(const Quorvex::Platform::Video::Image2DMeta&,
                                                               Quorvex::Function<void>) override {
        throw Quorvex::Exception();
    }
    void BindImage(Quorvex::Platform::Video::Image2D*) override {}
    void UnbindImage() override {}
    SharedPtr<Quorvex::Platform::Video::PixelShader> CreatePixelShader() override { throw Quorvex::Exception(); }
    SharedPtr<Quorvex::Platform::Video::VertexShader> CreateVertexShader() override { throw Quorvex::Exception(); }
    SharedPtr<Quorvex::Platform::Video::CombinedShader> CreateCombinedShader() override { throw Quorvex::Exception(); }
    void BindShader(const SharedPtr<Quorvex::Platform::Video::CombinedShader>&) override {}
    void UnbindShader() override {}
    SharedPtr<Quorvex::Platform::Video::VertexBuffer2D> CreateVertexBuffer2D(std::uint32_t) override {
        throw Quorvex::Exception();
    }
    void RenderVertexBufferRange(Quorvex::Platform::Video::VertexBuffer2D&, std::uint32_t) override {}
    SharedPtr<Quorvex::Platform::Video::OffscreenBuffer> CreateOffscreenBuffer(std::uint32_t, std::uint32_t) override {
        throw Quorvex::Exception();
    }
};
