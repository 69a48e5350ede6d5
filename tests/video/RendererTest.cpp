#include "tests/support/LogCapture.h"
#include "tests/video/FakeContext.h"
#include "video/software/SoftwareContext.h"

#include <gtest/gtest.h>

namespace Quorvex::Platform::Video {

namespace {

class RendererTest : public testing::Test {
protected:
    void OnRecreate() { ++recreateCount; }

    SharedPtr<Renderer> MakeRenderer() {
        Function<void> onRecreate;
        onRecreate.Bind(this, &RendererTest::OnRecreate);
        return context->CreateRenderer(window, {}, onRecreate);
    }

    int recreateCount = 0;
    SharedPtr<RecordingWindow> window{new RecordingWindow()};
    SharedPtr<FakeContext> context{new FakeContext()};
    SharedPtr<Renderer> renderer = MakeRenderer();
};

TEST_F(RendererTest, EnableBlendingReturnsWhatWasBefore) {
    EXPECT_FALSE(renderer->EnableBlending());
    EXPECT_TRUE(context->blendingEnabled);
    EXPECT_TRUE(renderer->EnableBlending());
    renderer->DisableBlending();
    EXPECT_FALSE(context->blendingEnabled);
    EXPECT_FALSE(renderer->EnableBlending());
}

TEST_F(RendererTest, TranslateAddsUp) {
    renderer->Translate(3, -4);
    renderer->Translate(10, 1);
    EXPECT_EQ(context->translateX, 13);
    EXPECT_EQ(context->translateY, -3);
}

TEST_F(RendererTest, ANewSizeMustBeBuiltAtTheNextFrame) {
    EXPECT_TRUE(renderer->IsSizeChanged());
    renderer->EndPaint();
    EXPECT_FALSE(renderer->IsSizeChanged());
    renderer->SetSize(7, 9);
    EXPECT_TRUE(renderer->IsSizeChanged());
    EXPECT_EQ(renderer->GetWidth(), 7u);
    EXPECT_EQ(renderer->GetHeight(), 9u);
}

TEST_F(RendererTest, ARebuiltDeviceCallsItsOwner) {
    context->LoseDevice();
    EXPECT_EQ(recreateCount, 0);
    context->ResetDevice();
    EXPECT_EQ(recreateCount, 1);
}

TEST_F(RendererTest, ARebuiltDeviceWithoutAnOwnerIsQuiet) {
    renderer = context->CreateRenderer(window, {}, {});
    context->ResetDevice();
    EXPECT_EQ(recreateCount, 0);
}

TEST_F(RendererTest, DefaultsArePreciseAndWithoutAlpha) {
    EXPECT_TRUE(renderer->IsPixelMappingPrecise());
    EXPECT_FALSE(renderer->HasAlphaChannel());
}

TEST_F(RendererTest, CompositionIsAskedOfTheWindow) {
    EXPECT_FALSE(renderer->IsCompositionEnabled());
    window->isComposed = true;
    EXPECT_TRUE(renderer->IsCompositionEnabled());
    EXPECT_FALSE(context->CreateRenderer({}, {}, {})->IsCompositionEnabled());
}

TEST_F(RendererTest, ItsEndEmptiesTheMessageQueueAndHidesTheWindow) {
    EXPECT_EQ(window->hideCount, 0);
    renderer.reset();
    EXPECT_EQ(window->hideCount, 1);
}

TEST_F(RendererTest, AnExceptionAtItsEndGoesNoFurther) {
    const Quorvex::Test::LogCapture log;
    window->raisesOnHide = true;
    EXPECT_NO_THROW(renderer.reset());
    EXPECT_EQ(window->hideCount, 1);
    EXPECT_EQ(context->GetChildCount(), 0u);
    EXPECT_TRUE(log.HasLineEndingIn("Renderer::~Renderer"));
}

TEST(RendererNames, AreOnePointerPerBackend) {
    SharedPtr<RecordingWindow> window(new RecordingWindow());
    SharedPtr<Context> software(new Software::SoftwareContext(window));
    SharedPtr<Context> fake(new FakeContext());
    const SharedPtr<Renderer> a = software->CreateRenderer(window, {}, {});
    const SharedPtr<Renderer> b = software->CreateRenderer(window, {}, {});
    const SharedPtr<Renderer> c = fake->CreateRenderer(window, {}, {});
    EXPECT_EQ(static_cast<const void*>(a->GetName()), b->GetName());
    EXPECT_EQ(static_cast<const void*>(a->GetName()), RendererTypeName(RendererTypeEnum::Software));
    EXPECT_NE(static_cast<const void*>(a->GetName()), c->GetName());
}

TEST(RendererNames, AreTheWordsOfTheSettings) {
    EXPECT_STREQ(RendererTypeName(RendererTypeEnum::OpenGL), "OpenGL");
    EXPECT_STREQ(RendererTypeName(RendererTypeEnum::Direct3D9), "Direct3D9");
    EXPECT_STREQ(RendererTypeName(RendererTypeEnum::Software), "Software");
    EXPECT_EQ(static_cast<int>(RendererTypeEnum::OpenGL), 0);
    EXPECT_EQ(static_cast<int>(RendererTypeEnum::Direct3D9), 1);
    EXPECT_EQ(static_cast<int>(RendererTypeEnum::Software), 2);
    EXPECT_EQ(ValueText<RendererTypeEnum>::FromText("Direct3D9"), RendererTypeEnum::Direct3D9);
    EXPECT_EQ(RaisedText([] { RendererTypeName(static_cast<RendererTypeEnum>(3)); }), "unknown renderer type");
}

} // namespace

} // namespace Quorvex::Platform::Video
