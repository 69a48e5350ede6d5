#include "data/Image.h"
#include "tests/support/LogCapture.h"
#include "tests/video/FakeContext.h"

#include <gtest/gtest.h>

#include <memory>

namespace Quorvex::Platform::Video {

namespace {

using Child = std::unique_ptr<RecordingChild>;

TEST(Context, StartsAsTheTableSays) {
    FakeContext context;
    EXPECT_FALSE(context.renderTarget);
    EXPECT_FALSE(context.offscreenTarget);
    EXPECT_FALSE(context.blendingEnabled);
    EXPECT_FALSE(context.hasEdgeClamp);
    EXPECT_FALSE(context.hasVertexBufferObjects);
    EXPECT_FALSE(context.hasNonPowerOfTwoTextures);
    EXPECT_FALSE(context.hasConditionalNonPowerOfTwoTextures);
    EXPECT_EQ(context.clearColor, (Data::ColorBGRA<float>{1.0f, 1.0f, 1.0f, 1.0f}));
    EXPECT_EQ(context.translateX, 0);
    EXPECT_EQ(context.translateY, 0);
    EXPECT_EQ(context.GetChildCount(), 0u);
}

TEST(Context, CountsItsLiveChildren) {
    FakeContext context;
    std::string events;
    Child a(new RecordingChild(context, "a", events));
    Child b(new RecordingChild(context, "b", events));
    Child c(new RecordingChild(context, "c", events));
    EXPECT_EQ(context.GetChildCount(), 3u);
    b.reset();
    EXPECT_EQ(context.GetChildCount(), 2u);
    a.reset();
    c.reset();
    EXPECT_EQ(context.GetChildCount(), 0u);
}

TEST(Context, WalksItsChildrenFromHeadToTailWhenTheDeviceIsLost) {
    FakeContext context;
    std::string events;
    Child a(new RecordingChild(context, "a", events));
    Child b(new RecordingChild(context, "b", events));
    Child c(new RecordingChild(context, "c", events));
    b.reset();
    Child d(new RecordingChild(context, "d", events));
    context.LoseDevice();
    context.ResetDevice();
    EXPECT_EQ(events, "a lost; c lost; d lost; a reset; c reset; d reset; ");
}

TEST(Context, AChildMayEndItselfOrOthersWithinTheWalk) {
    for (const char* ended : {"a", "b", "c", "bc", "abc", "c a"}) {
        FakeContext context;
        std::string events;
        Child a(new RecordingChild(context, "a", events));
        Child b(new RecordingChild(context, "b", events));
        Child c(new RecordingChild(context, "c", events));
        a->action = [&] {
            for (const char name : std::string(ended)) {
                if (name == 'a')
                    a.reset();
                if (name == 'b')
                    b.reset();
                if (name == 'c')
                    c.reset();
            }
        };
        context.LoseDevice();
        std::string expected = "a lost; ";
        for (const char name : {'b', 'c'})
            if (std::string(ended).find(name) == std::string::npos)
                expected += std::string(1, name) + " lost; ";
        EXPECT_EQ(events, expected) << ended;
    }
}

TEST(Context, AChildMadeWithinTheWalkIsNotVisitedByIt) {
    FakeContext context;
    std::string events;
    Child a(new RecordingChild(context, "a", events));
    Child b(new RecordingChild(context, "b", events));
    Child late;
    b->action = [&] { late.reset(new RecordingChild(context, "late", events)); };
    context.LoseDevice();
    EXPECT_EQ(events, "a lost; b lost; ");
    b->action = nullptr;
    context.ResetDevice();
    EXPECT_EQ(events, "a lost; b lost; a reset; b reset; late reset; ");
}

TEST(Context, TheLastChildMayMakeWayForANewOneWithinTheWalk) {
    FakeContext context;
    std::string events;
    Child a(new RecordingChild(context, "a", events));
    Child b(new RecordingChild(context, "b", events));
    a->action = [&] { b.reset(new RecordingChild(context, "new", events)); };
    context.LoseDevice();
    EXPECT_EQ(events, "a lost; ");
}

TEST(Context, AChildMadeInPlaceOfAnEndedLastOneIsNotVisited) {
    FakeContext context;
    std::string events;
    Child a(new RecordingChild(context, "a", events));
    Child b(new RecordingChild(context, "b", events));
    Child c(new RecordingChild(context, "c", events));
    Child late;
    a->action = [&] {
        c.reset();
        late.reset(new RecordingChild(context, "late", events));
    };
    context.LoseDevice();
    EXPECT_EQ(events, "a lost; b lost; ");
}

TEST(Context, AChildKeepsItsContextAlive) {
    SharedPtr<FakeContext> context(new FakeContext());
    FakeContext* const raw = context.get();
    SharedPtr<OffscreenBuffer> child = context->CreateOffscreenBuffer(1, 1);
    EXPECT_EQ(child->GetContext(), context);
    context.reset();
    EXPECT_EQ(child->GetContext().get(), raw);
    EXPECT_EQ(raw->GetChildCount(), 1u);
}

TEST(Context, AChildOfAContextThatNoPointerHoldsCannotBeMade) {
    const Quorvex::Test::LogCapture log;
    FakeContext context;
    EXPECT_THROW(context.CreateOffscreenBuffer(1, 1), std::exception);
}

TEST(Context, EndingWithALiveChildReportsAndRaisesNothing) {
    const Quorvex::Test::LogCapture log;
    std::string events;
    Child survivor;
    {
        FakeContext context;
        survivor.reset(new RecordingChild(context, "survivor", events));
    }
    EXPECT_TRUE(log.HasLineEndingIn("Context::~Context"));
    EXPECT_NO_THROW(survivor.reset()) << "the child no longer knows the context";
}

TEST(Context, EndingWithoutChildrenReportsNothing) {
    const Quorvex::Test::LogCapture log;
    std::string events;
    {
        FakeContext context;
        const RecordingChild child(context, "child", events);
    }
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST(Context, OneOfTheTwoTargetsIsSetAtMost) {
    SharedPtr<FakeContext> context(new FakeContext());
    SharedPtr<RecordingWindow> window(new RecordingWindow());
    const SharedPtr<Renderer> renderer = context->CreateRenderer(window, {}, {});
    const SharedPtr<OffscreenBuffer> buffer = context->CreateOffscreenBuffer(1, 1);
    context->SetRenderTarget(renderer);
    EXPECT_EQ(context->renderTarget, renderer);
    EXPECT_FALSE(context->offscreenTarget);
    context->SetOffscreenTarget(buffer);
    EXPECT_FALSE(context->renderTarget);
    EXPECT_EQ(context->offscreenTarget, buffer);
    context->SetRenderTarget(renderer);
    EXPECT_EQ(context->renderTarget, renderer);
    EXPECT_FALSE(context->offscreenTarget);
    context->ResetTarget();
    EXPECT_FALSE(context->renderTarget);
    context->SetOffscreenTarget(buffer);
    context->ResetTarget();
    EXPECT_FALSE(context->offscreenTarget);
}

TEST(Context, BindImage2DForwardsTheRawPointer) {
    SharedPtr<FakeContext> context(new FakeContext());
    const SharedPtr<Image2D> image = context->CreateImage2D({}, {});
    context->BindImage2D(image);
    EXPECT_EQ(context->boundImage, image.get());
}

TEST(Context, ADeviceDrawsAQuadFromItsBuffer) {
    SharedPtr<FakeContext> context(new FakeContext());
    FakeVertexBuffer2D buffer(context.get(), context);
    context->RenderVertexBufferRange(buffer, 3);
    EXPECT_EQ(buffer.drawnQuads, std::vector<std::uint32_t>{3});
}

TEST(ContextImages, EachFactoryMakesItsSampleType) {
    FakeContext context;
    context.hasNonPowerOfTwoTextures = true;
#define QUORVEX_EXPECT(value, name, sample)                                                                            \
    {                                                                                                                  \
        const SharedPtr<Data::ImageBase> image = context.CreateImage##name(65, 9, 0, 0);                               \
        EXPECT_EQ(image->ColorType, Data::ColorTypeEnum::name);                                                        \
        EXPECT_EQ(image->GetWidth(), 65u);                                                                             \
        EXPECT_EQ(image->GetHeight(), 9u);                                                                             \
        EXPECT_EQ(image->AllocatedWidth, 128u);                                                                        \
        EXPECT_EQ(image->AllocatedHeight, 16u);                                                                        \
        EXPECT_EQ(context.CreateImage(Data::ColorTypeEnum::name, 1, 1)->ColorType, Data::ColorTypeEnum::name);         \
    }
    QUORVEX_SAMPLE_TYPES(QUORVEX_EXPECT)
#undef QUORVEX_EXPECT
}

TEST(ContextImages, RequestedSizesAreRaisedToTheImage) {
    FakeContext context;
    context.hasNonPowerOfTwoTextures = true;
    const SharedPtr<Data::ImageBase> small = context.CreateImageUInt8(100, 50, 10, 10);
    EXPECT_EQ(small->AllocatedWidth, 128u);
    EXPECT_EQ(small->AllocatedHeight, 56u);
    const SharedPtr<Data::ImageBase> large = context.CreateImageUInt8(100, 50, 200, 70);
    EXPECT_EQ(large->GetWidth(), 100u);
    EXPECT_EQ(large->GetHeight(), 50u);
    EXPECT_EQ(large->AllocatedWidth, 256u);
    EXPECT_EQ(large->AllocatedHeight, 72u);
}

TEST(ContextImages, ATypeOutsideTheListIsRefused) {
    FakeContext context;
    for (const std::uint32_t type : {20u, 0xFFFFFFFFu})
        EXPECT_EQ(RaisedText([&] { context.CreateImage(static_cast<Data::ColorTypeEnum::Value>(type), 1, 1); }),
                  "unknown color type");
}

TEST(ContextTextures, AHundredByAHundredGetsTheNextPowerOfTwo) {
    FakeContext context;
    const SharedPtr<Data::ImageBase> image = context.CreateImageBGRAUInt8(100, 100, 0, 0);
    EXPECT_EQ(image->AllocatedWidth, 128u);
    EXPECT_EQ(image->AllocatedHeight, 128u);
    EXPECT_EQ(image->GetWidth(), 100u);
    EXPECT_EQ(static_cast<double>(image->GetWidth()) / image->AllocatedWidth, 100.0 / 128.0);
    EXPECT_EQ(static_cast<double>(image->GetHeight()) / image->AllocatedHeight, 100.0 / 128.0);
}

TEST(ContextTextures, SidesAreRoundedIndependently) {
    FakeContext context;
    const SharedPtr<Data::ImageBase> image = context.CreateImageUInt8(129, 64, 0, 0);
    EXPECT_EQ(image->AllocatedWidth, 256u);
    EXPECT_EQ(image->AllocatedHeight, 64u);
}

TEST(ContextTextures, APowerOfTwoStays) {
    FakeContext context;
    for (std::uint32_t length = 1; length != 0; length <<= 1) {
        EXPECT_EQ(context.TextureSideLength(length), length);
        if (length > 2) {
            EXPECT_EQ(context.TextureSideLength(length - 1), length);
        }
    }
    EXPECT_EQ(RaisedText([&] { context.TextureSideLength(0x80000001); }), "");
}

TEST(ContextTextures, EitherAbilityLeavesSizesAlone) {
    FakeContext context;
    context.hasNonPowerOfTwoTextures = true;
    EXPECT_EQ(context.TextureSideLength(100), 100u);
    context.hasNonPowerOfTwoTextures = false;
    context.hasConditionalNonPowerOfTwoTextures = true;
    EXPECT_EQ(context.TextureSideLength(100), 100u);
    EXPECT_EQ(context.TextureSideLength(0xFFFFFFFF), 0xFFFFFFFFu);
}

} // namespace

} // namespace Quorvex::Platform::Video
