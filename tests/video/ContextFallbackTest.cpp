#include "video/ContextFallback.h"
#include "tests/video/FakeContext.h"
#include "video/Backends.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace Quorvex::Platform::Video {

namespace {

using enum RendererTypeEnum;

class ContextFallbackTest : public testing::Test {
protected:
    /// Attempts that note their name and the current type; each leaves a half-made context behind and raises what
    /// failures holds for it.
    ContextAttempts MakeAttempts() {
        ContextAttempts attempts;
        for (std::uint32_t i = 0; i < rendererTypeCount; ++i)
            attempts[i] = [this, i](SharedPtr<Context>& made) {
                tried += std::string(RendererTypeName(static_cast<RendererTypeEnum>(i))) + " ";
                EXPECT_EQ(current, static_cast<RendererTypeEnum>(i)) << "written before the attempt";
                EXPECT_FALSE(made) << "the half-made context was dropped";
                made = SharedPtr<Context>(new FakeContext());
                if (failures[i])
                    failures[i]();
            };
        return attempts;
    }

    void Create(RendererTypeEnum wanted) { CreateContextWithFallback(wanted, MakeAttempts(), current, context); }

    static void Fail() { throw Exception("cannot start"); }

    std::function<void()> failures[rendererTypeCount];
    std::string tried;
    RendererTypeEnum current = Software;
    SharedPtr<Context> context;
};

TEST_F(ContextFallbackTest, TheWantedBackendIsEnoughIfItStarts) {
    for (const RendererTypeEnum wanted : {OpenGL, Direct3D9, Software}) {
        tried.clear();
        context.reset();
        Create(wanted);
        EXPECT_EQ(tried, std::string(RendererTypeName(wanted)) + " ");
        EXPECT_EQ(current, wanted);
        EXPECT_TRUE(context);
    }
}

TEST_F(ContextFallbackTest, OpenGLFallsBackToDirect3D9) {
    failures[0] = Fail;
    Create(OpenGL);
    EXPECT_EQ(tried, "OpenGL Direct3D9 ");
    EXPECT_EQ(current, Direct3D9);
    EXPECT_TRUE(context);
}

TEST_F(ContextFallbackTest, OpenGLFallsBackToSoftwareInTheEnd) {
    failures[0] = failures[1] = Fail;
    Create(OpenGL);
    EXPECT_EQ(tried, "OpenGL Direct3D9 Software ");
    EXPECT_EQ(current, Software);
}

TEST_F(ContextFallbackTest, Direct3D9FallsBackToOpenGLFirst) {
    failures[1] = Fail;
    Create(Direct3D9);
    EXPECT_EQ(tried, "Direct3D9 OpenGL ");
    EXPECT_EQ(current, OpenGL);
    failures[0] = Fail;
    tried.clear();
    context.reset();
    Create(Direct3D9);
    EXPECT_EQ(tried, "Direct3D9 OpenGL Software ");
    EXPECT_EQ(current, Software);
}

TEST_F(ContextFallbackTest, AFailureOfSoftwareGoesUp) {
    failures[0] = failures[1] = failures[2] = Fail;
    for (const RendererTypeEnum wanted : {OpenGL, Direct3D9, Software}) {
        EXPECT_EQ(RaisedText([&] { Create(wanted); }), "cannot start");
        EXPECT_EQ(current, Software);
        EXPECT_FALSE(context);
    }
}

TEST_F(ContextFallbackTest, SoftwareHasNothingBehindIt) {
    failures[2] = [] { throw std::bad_alloc(); };
    EXPECT_THROW(Create(Software), std::bad_alloc);
    EXPECT_EQ(tried, "Software ");
}

TEST_F(ContextFallbackTest, EveryStandardExceptionMakesWayForTheNext) {
    failures[0] = [] { throw std::bad_alloc(); };
    failures[1] = [] { throw std::runtime_error("driver"); };
    Create(OpenGL);
    EXPECT_EQ(current, Software);
}

TEST_F(ContextFallbackTest, OtherExceptionsAreNotHeld) {
    failures[0] = [] { throw 1; };
    EXPECT_THROW(Create(OpenGL), int);
    EXPECT_EQ(tried, "OpenGL ");
}

TEST_F(ContextFallbackTest, AnUnknownWishGetsSoftware) {
    Create(static_cast<RendererTypeEnum>(7));
    EXPECT_EQ(tried, "Software ");
}

TEST(Backends, TheProgramStartsWithSoftwareWhateverIsWanted) {
    SharedPtr<IWindowSurface> window(new RecordingWindow());
    const ContextAttempts attempts = {
        [&](SharedPtr<Context>& context) { context = CreateOpenGLContext(window); },
        [&](SharedPtr<Context>& context) { context = CreateDirect3D9Context(window); },
        [&](SharedPtr<Context>& context) { context = CreateSoftwareContext(window); },
    };
    for (const RendererTypeEnum wanted : {OpenGL, Direct3D9, Software}) {
        RendererTypeEnum current = wanted;
        SharedPtr<Context> context;
        CreateContextWithFallback(wanted, attempts, current, context);
        EXPECT_EQ(current, Software);
        EXPECT_EQ(context->CreateRenderer(window, {}, {})->GetName(), RendererTypeName(Software));
    }
}

} // namespace

} // namespace Quorvex::Platform::Video
