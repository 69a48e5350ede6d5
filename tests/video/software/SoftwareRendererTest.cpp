#include "tests/video/software/SoftwareFixture.h"

#include <limits>
#include <new>

namespace Quorvex::Platform::Video::Software {

namespace {

constexpr Color red{0, 0, 255, 255};

class SoftwareRendererTest : public SoftwareFixture {
protected:
    Color Cleared(const Data::ColorBGRA<float>& color) {
        context->clearColor = color;
        renderer->BeginPaint();
        const Color result = At(0, 0);
        ExpectPixels([&](auto, auto) { return result; });
        return result;
    }
};

TEST_F(SoftwareRendererTest, BeginPaintClearsToThePremultipliedColour) {
    EXPECT_EQ(Cleared({1.0f, 1.0f, 1.0f, 1.0f}), (Color{255, 255, 255, 255}));
    EXPECT_EQ(Cleared({0.0f, 0.0f, 0.0f, 0.0f}), (Color{0, 0, 0, 0}));
    EXPECT_EQ(Cleared({0.0f, 0.5f, 1.0f, 1.0f}), (Color{0, 128, 255, 255}));
    // 0.5 becomes 128; 255 * 128 / 255 = 128, 128 * 128 / 255 = 64
    EXPECT_EQ(Cleared({1.0f, 0.5f, 0.25f, 0.5f}), (Color{128, 64, 64 * 128 / 255, 128}));
    // 0.75 becomes 191, and 191 * 128 / 255 = 95.87 is cut off.
    EXPECT_EQ(Cleared({0.75f, 0.0f, 0.0f, 0.5f}), (Color{95, 0, 0, 128}));
    EXPECT_EQ(Cleared({0.5f, 0.5f, 0.5f, 0.0f}), (Color{0, 0, 0, 0}));
}

TEST_F(SoftwareRendererTest, BeginPaintSetsTheClipAndTheOrigin) {
    context->clipLeft = 5;
    context->clipBottom = 7;
    renderer->Translate(3, 4);
    renderer->BeginPaint();
    EXPECT_EQ(context->clipLeft, 0);
    EXPECT_EQ(context->clipTop, 0);
    EXPECT_EQ(context->clipRight, 64);
    EXPECT_EQ(context->clipBottom, 48);
    EXPECT_EQ(context->translateX, 0);
    EXPECT_EQ(context->translateY, 0);
}

TEST_F(SoftwareRendererTest, EndPaintSettlesTheSize) {
    EXPECT_TRUE(renderer->IsSizeChanged());
    renderer->EndPaint();
    EXPECT_FALSE(renderer->IsSizeChanged());
    renderer->SetSize(64, 48);
    EXPECT_FALSE(renderer->IsSizeChanged()) << "the same size again";
    renderer->SetSize(64, 49);
    EXPECT_TRUE(renderer->IsSizeChanged());
}

TEST_F(SoftwareRendererTest, TheSameSizeKeepsTheBufferAndAnotherDiscardsIt) {
    Draw({0, 0, 64, 48}, red);
    const std::uint8_t* const bits = renderer->LockColorBuffer()->ReadBits();
    renderer->SetSize(64, 48);
    EXPECT_EQ(renderer->LockColorBuffer()->ReadBits(), bits);
    EXPECT_EQ(At(63, 47), red);
    renderer->SetSize(65, 48);
    ExpectPixels([](auto, auto) { return Color{}; });
}

TEST_F(SoftwareRendererTest, ASizeThatCannotBeHadKeepsTheOldOne) {
    Draw({0, 0, 64, 48}, red);
    constexpr std::uint32_t huge = std::numeric_limits<std::uint32_t>::max();
    EXPECT_THROW(renderer->SetSize(huge, huge), std::bad_alloc);
    EXPECT_THROW(renderer->SetSize(huge, 1), std::bad_alloc);
    EXPECT_EQ(renderer->GetWidth(), 64u);
    EXPECT_EQ(At(63, 47), red);
}

TEST_F(SoftwareRendererTest, TheLockPointsStraightAtTheBuffer) {
    const SharedPtr<Renderer::Lock> lock = renderer->LockColorBuffer();
    EXPECT_EQ(lock->ReadBits(), lock->WriteBits());
    EXPECT_EQ(lock->ReadPitch(), 64 * 4);
    EXPECT_EQ(lock->WritePitch(), 64 * 4);
    EXPECT_EQ(lock->Format(), BufferFormat::BGRA32);
    EXPECT_EQ(lock->Height(), 48);
    lock->WriteBits()[(47 * 64 + 63) * 4 + 2] = 99;
    EXPECT_EQ(At(63, 47), (Color{0, 0, 99, 0}));
}

TEST_F(SoftwareRendererTest, TwoPresentsWithoutARedrawShowTheSameFrame) {
    Draw({10, 20, 30, 40}, red);
    renderer->EndPaint();
    EXPECT_TRUE(renderer->Present());
    EXPECT_TRUE(renderer->Present());
    ASSERT_EQ(window->frames.size(), 2u);
    EXPECT_EQ(window->frames[0], window->frames[1]);
}

TEST_F(SoftwareRendererTest, AnOrdinaryWindowIsShownOpaqueAndALayeredOneWithAlpha) {
    Draw({0, 0, 1, 1}, {1, 2, 3, 4});
    renderer->Present();
    window->isLayered = true;
    renderer->Present();
    ASSERT_EQ(window->frames.size(), 2u);
    EXPECT_FALSE(window->frames[0].hasAlpha);
    EXPECT_TRUE(window->frames[1].hasAlpha);
    for (const RecordingWindow::Frame& frame : window->frames) {
        EXPECT_EQ(frame.width, 64u);
        EXPECT_EQ(frame.height, 48u);
        EXPECT_EQ(frame.pitchBytes, 64u * 4);
        EXPECT_EQ(frame.bytes.size(), 64u * 48 * 4);
        EXPECT_EQ(std::vector<std::uint8_t>(frame.bytes.begin(), frame.bytes.begin() + 4),
                  (std::vector<std::uint8_t>{1, 2, 3, 4}));
    }
}

TEST_F(SoftwareRendererTest, AnEmptyWindowIsNotShown) {
    renderer->SetSize(0, 48);
    EXPECT_NO_THROW(renderer->BeginPaint());
    EXPECT_NO_THROW(Draw({0, 0, 10, 10}, red));
    renderer->EndPaint();
    EXPECT_TRUE(renderer->Present());
    EXPECT_TRUE(window->frames.empty());
}

TEST_F(SoftwareRendererTest, IsPreciseAndHasAlpha) {
    EXPECT_TRUE(renderer->IsPixelMappingPrecise());
    EXPECT_TRUE(renderer->HasAlphaChannel());
    EXPECT_TRUE(renderer->Finish());
}

TEST_F(SoftwareRendererTest, KnowsNoLoss) {
    struct Owner {
        void OnRecreate() { ++count; }
        int count = 0;
    } owner;
    Function<void> onRecreate;
    onRecreate.Bind(&owner, &Owner::OnRecreate);
    const SharedPtr<Renderer> watched = context->CreateRenderer(window, {}, onRecreate);
    watched->OnDeviceLost();
    watched->OnDeviceReset();
    EXPECT_EQ(owner.count, 0);
}

} // namespace

} // namespace Quorvex::Platform::Video::Software
