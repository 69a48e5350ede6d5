#include "tests/support/LogCapture.h"
#include "tests/video/FakeContext.h"
#include "tests/video/software/SoftwareFixture.h"

namespace Quorvex::Platform::Video::Software {

namespace {

constexpr Color red{0, 0, 255, 255};

class SoftwareContextTest : public SoftwareFixture {
protected:
    /// An image of the test's own whose type and lock it decides.
    class StrangeImage final : public Data::ImageBase {
    public:
        explicit StrangeImage(Value type) : ImageBase(type) {}
        std::uint32_t GetWidth() const override { return 1; }
        std::uint32_t GetHeight() const override { return 1; }
        void* Allocate(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) override { return nullptr; }
        bool DeleteContextObjects() override { return true; }
    };

    std::string DrawStrange(Data::ColorTypeEnum::Value type) {
        Bind(SharedPtr<Data::ImageBase>(new StrangeImage(type)));
        return RaisedText([&] { Draw({0, 0, 4, 4}); });
    }
};

TEST_F(SoftwareContextTest, TexturesOfAnySizeAreAllowed) {
    EXPECT_TRUE(context->hasNonPowerOfTwoTextures);
    EXPECT_TRUE(SoftwareContext().hasNonPowerOfTwoTextures);
    EXPECT_EQ(context->CreateImageUInt8(100, 100, 0, 0)->AllocatedHeight, 104u);
}

TEST_F(SoftwareContextTest, DrawingWithoutATargetRaises) {
    const Quorvex::Test::LogCapture log;
    context->ResetTarget();
    EXPECT_THROW(Draw({0, 0, 4, 4}, red), Exception);
    EXPECT_TRUE(log.HasLineEndingIn("RenderVertexBufferRange"));
}

TEST_F(SoftwareContextTest, AnUnknownSampleTypeIsNamed) {
    EXPECT_EQ(DrawStrange(static_cast<Data::ColorTypeEnum::Value>(20)), "unknown color type");
}

TEST_F(SoftwareContextTest, AnImageThatCannotBeLockedRaisesWithoutText) {
    EXPECT_EQ(DrawStrange(Data::ColorTypeEnum::UInt8), "");
    EXPECT_EQ(DrawStrange(Data::ColorTypeEnum::BGRAFloat64), "");
}

TEST_F(SoftwareContextTest, AnImageUnderAWriteLockRaisesWithoutText) {
    const Quorvex::Test::LogCapture log;
    const SharedPtr<Data::ImageBase> image = context->CreateImageUInt8(4, 4, 0, 0);
    Bind(image);
    const auto pixels = image->LockUInt8(Data::LockMode::ReadWrite);
    EXPECT_EQ(RaisedText([&] { Draw({0, 0, 4, 4}); }), "");
}

TEST_F(SoftwareContextTest, AnImageWithoutPixelsRaisesWithoutText) {
    Bind(SharedPtr<Data::ImageBase>(new Data::Image<std::uint8_t>()));
    EXPECT_EQ(RaisedText([&] { Draw({0, 0, 4, 4}); }), "");
    Bind(context->CreateImageUInt8(0, 4, 0, 0));
    EXPECT_EQ(RaisedText([&] { Draw({0, 0, 4, 4}); }), "");
}

TEST_F(SoftwareContextTest, AnImageWithoutASourceRaisesWithoutText) {
    const SharedPtr<Video::Image2D> image = context->CreateImage2D({}, {});
    context->BindImage2D(image);
    EXPECT_EQ(RaisedText([&] { Draw({0, 0, 4, 4}); }), "");
}

TEST_F(SoftwareContextTest, ABoundImageThatEndsIsUnbound) {
    Bind(context->CreateImageUInt8(4, 4, 0, 0));
    shown = Image2DMeta();
    Draw({0, 0, 4, 4}, red);
    EXPECT_EQ(At(0, 0), red);
}

TEST_F(SoftwareContextTest, TheLockIsGivenBackAfterADraw) {
    const SharedPtr<Data::ImageBase> image = context->CreateImageUInt8(4, 4, 0, 0);
    Bind(image);
    Draw({0, 0, 4, 4});
    EXPECT_NO_THROW(image->LockUInt8(Data::LockMode::ReadWrite));
}

TEST_F(SoftwareContextTest, ThereAreNoShadersToCreate) {
    const Quorvex::Test::LogCapture log;
    EXPECT_THROW(context->CreatePixelShader(), Exception);
    EXPECT_TRUE(log.HasLineEndingIn("CreatePixelShader"));
    EXPECT_THROW(context->CreateVertexShader(), Exception);
    EXPECT_TRUE(context->CreateCombinedShader());
}

TEST_F(SoftwareContextTest, BindShaderRefusesNothingToBind) {
    EXPECT_EQ(RaisedText([&] { context->BindShader({}); }), "SoftwareRenderer::BindShader(...) -> shader==nullptr");
    EXPECT_EQ(RaisedText([&] { context->BindShader(context->CreateCombinedShader()); }),
              "SoftwareRenderer::BindShader(...) -> shader->data->sp==0");
}

TEST_F(SoftwareContextTest, CombinedShadersCarryTheirShader) {
    const SharedPtr<PixelShaderLinear> shader(new PixelShaderLinear(context.get(), context));
    const SharedPtr<Video::CombinedShader> combined = context->CreateCombinedShader();
    EXPECT_FALSE(combined->GetPixelShader());
    combined->SetPixelShader(shader);
    EXPECT_EQ(combined->GetPixelShader(), shader);
    EXPECT_FALSE(combined->GetVertexShader());
}

TEST_F(SoftwareContextTest, ObjectsOfAnotherBackendAreRefused) {
    SharedPtr<FakeContext> other(new FakeContext());
    EXPECT_THROW(context->BindImage2D(other->CreateImage2D({}, {})), Exception);
    FakeVertexBuffer2D buffer(other.get(), other);
    EXPECT_THROW(context->RenderVertexBufferRange(buffer, 0), Exception);
}

TEST_F(SoftwareContextTest, AWindowIsNeededForARenderer) {
    EXPECT_THROW(context->CreateRenderer({}, {}, {}), Exception);
    EXPECT_THROW(SoftwareContext(SharedPtr<IWindowSurface>()), Exception);
    const SharedPtr<SoftwareContext> hidden(new SoftwareContext());
    EXPECT_THROW(hidden->CreateRenderer(window, {}, {}), Exception);
}

TEST_F(SoftwareContextTest, OneContextServesSeveralWindows) {
    const SharedPtr<RecordingWindow> second(new RecordingWindow());
    const SharedPtr<Renderer> other = context->CreateRenderer(second, {}, {});
    other->SetSize(3, 3);
    context->SetRenderTarget(other);
    other->BeginPaint();
    Draw({0, 0, 3, 3}, red);
    context->ResetTarget();
    other->Present();
    renderer->Present();
    EXPECT_EQ(second->frames.at(0).bytes[2], 255);
    EXPECT_EQ(window->frames.at(0).bytes[2], 0);
}

TEST(PrivateSoftwareContext, DrawsIntoAnOffscreenBuffer) {
    const SharedPtr<SoftwareContext> hidden(new SoftwareContext());
    const SharedPtr<Video::OffscreenBuffer> buffer = hidden->CreateOffscreenBuffer(70, 5);
    EXPECT_EQ(buffer->GetWidth(), 70u);
    EXPECT_EQ(buffer->GetHeight(), 5u);
    hidden->SetOffscreenTarget(buffer);
    hidden->clipRight = 70;
    hidden->clipBottom = 5;
    const SharedPtr<Video::VertexBuffer2D> quad = hidden->CreateVertexBuffer2D(1);
    const std::int32_t corners[6][2] = {{60, 1}, {90, 1}, {90, 3}, {60, 1}, {90, 3}, {60, 3}};
    for (std::uint32_t i = 0; i < 6; ++i)
        quad->SetVertex(i, 0, 0, 1, 0, 0, 1, corners[i][0], corners[i][1], 0);
    quad->Render();
    hidden->ResetTarget();
    for (std::uint32_t y = 0; y < 5; ++y)
        for (std::uint32_t x = 0; x < 70; ++x)
            ASSERT_EQ(buffer->GetBits()[y * 70 + x], (y == 1 || y == 2) && x >= 60 ? red : Color{}) << x << ", " << y;
}

TEST(SoftwareVertexBuffer, StoresWhatItIsGiven) {
    const SharedPtr<SoftwareContext> context(new SoftwareContext());
    Software::VertexBuffer2D buffer(context.get(), context, 2);
    EXPECT_EQ(buffer.Lock(), &buffer);
    buffer.SetVertex(7, 0.25f, 0.75f, 0.0f, 1.0f, 0.5f, 0.999f, -3, 4, 5);
    buffer.Unlock();
    const VertexRecord& vertex = buffer.Quad(1)[1];
    EXPECT_EQ(vertex.u, 0.25f);
    EXPECT_EQ(vertex.v, 0.75f);
    EXPECT_EQ(vertex.r, 0);
    EXPECT_EQ(vertex.g, 255);
    EXPECT_EQ(vertex.b, 127) << "127.5 is cut off";
    EXPECT_EQ(vertex.a, 254) << "254.745 is cut off";
    EXPECT_EQ(vertex.x, -3.0f);
    EXPECT_EQ(vertex.y, 4.0f);
    EXPECT_EQ(vertex.z, 5.0f);
    EXPECT_EQ(buffer.GetQuadCount(), 2u);
}

TEST(SoftwareVertexBuffer, AnIndexPastTheLastVertexRaisesWithoutText) {
    const SharedPtr<SoftwareContext> context(new SoftwareContext());
    const SharedPtr<Video::VertexBuffer2D> buffer = context->CreateVertexBuffer2D(2);
    const auto set = [&](std::uint32_t index) {
        return RaisedText([&] { buffer->SetVertex(index, 0, 0, 1, 1, 1, 1, 0, 0, 0); });
    };
    EXPECT_EQ(set(11), "nothing raised");
    EXPECT_EQ(set(12), "");
    EXPECT_EQ(set(0xFFFFFFFF), "");
}

TEST(SoftwareVertexBuffer, IsEmptyOnceDestroyed) {
    const SharedPtr<SoftwareContext> context(new SoftwareContext());
    const SharedPtr<Video::VertexBuffer2D> buffer = context->CreateVertexBuffer2D(2);
    buffer->Destroy();
    EXPECT_EQ(RaisedText([&] { buffer->SetVertex(0, 0, 0, 1, 1, 1, 1, 0, 0, 0); }), "");
    EXPECT_NO_THROW(buffer->Render());
}

TEST_F(SoftwareContextTest, RenderDrawsAllQuadsAndRenderRangeOne) {
    const SharedPtr<Video::VertexBuffer2D> buffer = context->CreateVertexBuffer2D(3);
    for (std::uint32_t quad = 0; quad < 3; ++quad) {
        const auto x = static_cast<std::int32_t>(quad * 2);
        const std::int32_t corners[6][2] = {{x, 0}, {x + 1, 0}, {x + 1, 1}, {x, 0}, {x + 1, 1}, {x, 1}};
        for (std::uint32_t i = 0; i < 6; ++i)
            buffer->SetVertex(quad * 6 + i, 0, 0, 1, 0, 0, 1, corners[i][0], corners[i][1], 0);
    }
    buffer->RenderRange(1);
    ExpectPixels([](auto x, auto y) { return x == 2 && y == 0 ? red : Color{}; });
    buffer->Render();
    ExpectPixels([](auto x, auto y) { return x < 6 && x % 2 == 0 && y == 0 ? red : Color{}; });
    EXPECT_EQ(RaisedText([&] { buffer->RenderRange(3); }), "");
}

} // namespace

} // namespace Quorvex::Platform::Video::Software
