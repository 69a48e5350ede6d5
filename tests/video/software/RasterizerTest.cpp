#include "tests/support/LogCapture.h"
#include "tests/video/FakeContext.h"
#include "tests/video/software/SoftwareFixture.h"

#include <bit>

namespace Quorvex::Platform::Video::Software {

namespace {

constexpr Color clear{};
constexpr Color white{255, 255, 255, 255};
constexpr Color red{0, 0, 255, 255};

/// Keeps the positions it is asked for, by pixel in the order of drawing.
class RecordingShader final : public PixelShaderOfType<RecordingShader> {
public:
    using PixelShaderOfType::PixelShaderOfType;

    template <class Sample>
    Color ShadePixel(const PixelShaderParameter<Sample>& parameter) const {
        positions.emplace_back(parameter.u, parameter.v);
        return {1, 2, 3, 255};
    }

    mutable std::vector<std::pair<double, double>> positions;
};

class RasterizerTest : public SoftwareFixture {
protected:
    /// Every other pixel of a chessboard that no other value is like.
    SharedPtr<Data::ImageBase> MakeImage(std::uint32_t width, std::uint32_t height) {
        SharedPtr<Data::ImageBase> image = context->CreateImageBGRAUInt8(width, height, 0, 0);
        const auto pixels = image->LockBGRAUInt8(Data::LockMode::ReadWrite);
        for (std::uint32_t y = 0; y < height; ++y)
            for (std::uint32_t x = 0; x < width; ++x)
                pixels(x, y) = ImagePixel(x, y);
        return image;
    }
    static Color ImagePixel(std::uint32_t x, std::uint32_t y) {
        return {static_cast<std::uint8_t>(x * 7 + 1), static_cast<std::uint8_t>(y * 5 + 2),
                static_cast<std::uint8_t>(x + y), 255};
    }
    static Quad Whole(const Data::ImageBase& image, std::int32_t x0, std::int32_t y0, std::int32_t x1,
                      std::int32_t y1) {
        return {x0,
                y0,
                x1,
                y1,
                0.0f,
                0.0f,
                static_cast<float>(image.GetWidth()) / static_cast<float>(image.AllocatedWidth),
                static_cast<float>(image.GetHeight()) / static_cast<float>(image.AllocatedHeight)};
    }
};

TEST_F(RasterizerTest, QuadsOfZeroWidthOrHeightWriteNothingAndRaiseNothing) {
    for (const std::int32_t x : {-5, 0, 10, 63, 64, 100})
        for (const std::int32_t y : {-5, 0, 10, 47, 48, 100}) {
            EXPECT_NO_THROW(Draw({x, 5, x, 20}, red));
            EXPECT_NO_THROW(Draw({5, y, 20, y}, red));
            EXPECT_NO_THROW(Draw({-5, y, 100, y}, red));
            EXPECT_NO_THROW(Draw({x, y, x, y}, red));
        }
    ExpectPixels([](auto, auto) { return clear; });
}

TEST_F(RasterizerTest, ATriangleOnOneLineRaises) {
    const SharedPtr<Video::VertexBuffer2D> buffer = context->CreateVertexBuffer2D(1);
    for (std::uint32_t i = 0; i < 6; ++i) {
        const auto position = static_cast<std::int32_t>(i % 3 * 10);
        buffer->SetVertex(i, 0, 0, 1, 1, 1, 1, position, position, 0);
    }
    const Quorvex::Test::LogCapture log;
    EXPECT_THROW(buffer->Render(), Exception);
    Bind(MakeImage(4, 4));
    EXPECT_THROW(buffer->Render(), Exception);
    EXPECT_TRUE(log.HasLineEndingIn("Barycentric::BarycentricDivision by Zero"));
}

TEST_F(RasterizerTest, OnlyThePartInsideIsWritten) {
    const Quad quads[] = {{-10, -10, 5, 6},      {60, 40, 90, 90},     {-7, 10, 3, 12},     {20, -30, 24, 100},
                          {-1000, 30, 1000, 31}, {100, 100, 200, 200}, {-200, -200, -1, -1}};
    renderer->EnableBlending();
    const Color half{10, 200, 90, 100};
    for (const Quad& quad : quads) {
        renderer->BeginPaint();
        Draw(quad, half);
        const Color once = Blend(half, clear);
        SCOPED_TRACE(testing::Message() << quad.x0 << ", " << quad.y0 << ", " << quad.x1 << ", " << quad.y1);
        ExpectPixels([&](auto x, auto y) {
            const auto column = static_cast<std::int32_t>(x);
            const auto row = static_cast<std::int32_t>(y);
            const bool inside = column >= quad.x0 && column < quad.x1 && row >= quad.y0 && row < quad.y1;
            return inside ? once : clear;
        });
    }
}

TEST_F(RasterizerTest, PositionsBeyond32BitsStayAtTheirLimit) {
    context->translateX = 2147483647;
    EXPECT_NO_THROW(Draw({2147483647, 0, -2147483647 - 1, 10}, red));
    context->translateX = 0;
    renderer->BeginPaint();
    Draw({-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647}, red);
    ExpectPixels([](auto, auto) { return red; });
}

TEST_F(RasterizerTest, TheClipCutsAndLeavesThePositionsAlone) {
    Bind(MakeImage(16, 16));
    const SharedPtr<RecordingShader> shader = BindNew<RecordingShader>();
    Draw({10, 20, 30, 21});
    const auto whole = shader->positions;
    ASSERT_EQ(whole.size(), 20u);
    shader->positions.clear();
    renderer->BeginPaint();
    context->clipLeft = 15;
    Draw({10, 20, 30, 21});
    // The two triangles come one after the other: sorted, both draws visit the same columns.
    auto clipped = shader->positions;
    auto expected = whole;
    std::sort(expected.begin(), expected.end());
    std::sort(clipped.begin(), clipped.end());
    ASSERT_EQ(clipped.size(), 15u);
    EXPECT_TRUE(std::equal(clipped.begin(), clipped.end(), expected.begin() + 5));
    ExpectPixels([](auto x, auto y) { return y == 20 && x >= 15 && x < 30 ? Color{1, 2, 3, 255} : clear; });
}

TEST_F(RasterizerTest, EverySideOfTheClipCuts) {
    context->clipLeft = 12;
    context->clipTop = 22;
    context->clipRight = 25;
    context->clipBottom = 33;
    Draw({10, 20, 30, 40}, red);
    ExpectPixels([](auto x, auto y) { return x >= 12 && x < 25 && y >= 22 && y < 33 ? red : clear; });
}

TEST_F(RasterizerTest, AClipBeyondTheTargetIsTheTarget) {
    context->clipLeft = -100;
    context->clipTop = -100;
    context->clipRight = 2147483647;
    context->clipBottom = 2147483647;
    Draw({-50, -50, 1000, 1000}, red);
    ExpectPixels([](auto, auto) { return red; });
}

TEST_F(RasterizerTest, TheResetClipDrawsNothing) {
    context->clipLeft = 0;
    context->clipTop = 0x7FFFFFFF;
    context->clipRight = 0;
    context->clipBottom = 0x7FFFFFFF;
    EXPECT_NO_THROW(Draw({0, 0, 64, 48}, red));
    ExpectPixels([](auto, auto) { return clear; });
}

TEST_F(RasterizerTest, SamplesLieJustBelowThePixelsCentre) {
    Bind(MakeImage(16, 16));
    const SharedPtr<RecordingShader> shader = BindNew<RecordingShader>();
    // One row of 32 columns over u from 0 to 1: the steps are exact in binary.
    Draw({8, 3, 40, 4});
    const double nearHalfReference = std::bit_cast<float>(0x3EFFFFFFu);
    EXPECT_EQ(nearHalf, nearHalfReference);
    ASSERT_EQ(shader->positions.size(), 32u);
    auto positions = shader->positions;
    std::sort(positions.begin(), positions.end());
    for (std::size_t i = 0; i < positions.size(); ++i) {
        EXPECT_NEAR(positions[i].first, (static_cast<double>(i) + nearHalfReference) / 32, 1e-15) << i;
        EXPECT_LT(positions[i].first, (static_cast<double>(i) + 0.5) / 32) << i;
        EXPECT_NEAR(positions[i].second, nearHalfReference, 1e-15) << i;
    }
}

TEST_F(RasterizerTest, WeightsFollowTheFormulas) {
    const Triangle triangle{{{3, 5, {}, 0, 0}, {40, 5, {}, 1, 0}, {40, 29, {}, 1, 1}}};
    Barycentric weights(triangle);
    const double d = (5.0 - 29.0) * (3.0 - 40.0) + (5.0 - 29.0) * (40.0 - 40.0);
    const double i = 1.0 / d;
    EXPECT_EQ(weights.dxl0, (5.0 - 29.0) * i);
    EXPECT_EQ(weights.dxl1, (29.0 - 5.0) * i);
    EXPECT_EQ(weights.dyl0, (40.0 - 40.0) * i);
    EXPECT_EQ(weights.dyl1, (3.0 - 40.0) * i);
    EXPECT_EQ(weights.c0, ((29.0 - 5.0) * 40.0 + (40.0 - 40.0) * 29.0) * i);
    EXPECT_EQ(weights.c1, ((40.0 - 3.0) * 29.0 + (5.0 - 29.0) * 40.0) * i);
    weights.StartRow(7);
    weights.MoveTo(11);
    EXPECT_EQ(weights.l0, (11 + nearHalf) * weights.dxl0 + ((7 + nearHalf) * weights.dyl0 + weights.c0));
    EXPECT_EQ(weights.l1, (11 + nearHalf) * weights.dxl1 + ((7 + nearHalf) * weights.dyl1 + weights.c1));
    EXPECT_EQ(weights.l2, (1.0 - weights.l0) - weights.l1);
    EXPECT_EQ(weights.Interpolate(2.0, 3.0, 5.0), 2.0 * weights.l0 + 3.0 * weights.l1 + 5.0 * weights.l2);
}

TEST_F(RasterizerTest, SortingKeepsTheOrderOfEqualRows) {
    const auto sorted = [](std::int32_t a, std::int32_t b, std::int32_t c) {
        Triangle triangle{{{0, a, {}, 0, 0}, {1, b, {}, 0, 0}, {2, c, {}, 0, 0}}};
        triangle.SortByY();
        return std::array{triangle.vertices[0].x, triangle.vertices[1].x, triangle.vertices[2].x};
    };
    EXPECT_EQ(sorted(1, 1, 1), (std::array{0, 1, 2}));
    EXPECT_EQ(sorted(1, 1, 0), (std::array{2, 0, 1}));
    EXPECT_EQ(sorted(1, 0, 1), (std::array{1, 0, 2}));
    EXPECT_EQ(sorted(2, 1, 0), (std::array{2, 1, 0}));
    EXPECT_EQ(sorted(0, 2, 1), (std::array{0, 2, 1}));
    EXPECT_EQ(sorted(1, 2, 0), (std::array{2, 0, 1}));
    EXPECT_EQ(sorted(2, 0, 1), (std::array{1, 2, 0}));
}

TEST_F(RasterizerTest, EachTriangleTakesTheColourOfItsFirstVertex) {
    const Color second{9, 8, 7, 255};
    MakeBuffer({10, 10, 30, 30}, {red, white, white, second, white, white})->Render();
    ExpectPixels([&](auto x, auto y) {
        if (x < 10 || x >= 30 || y < 10 || y >= 30)
            return clear;
        // The diagonal from top left to bottom right parts the two.
        return x >= y ? red : second;
    });
}

TEST_F(RasterizerTest, TheColourOverrideReplacesAllColours) {
    renderer->SetColorOverride({0.0f, 0.5f, 1.0f, 1.0f});
    Draw({0, 0, 64, 48}, red);
    ExpectPixels([](auto, auto) { return Color{0, 128, 255, 255}; });
    renderer->DisableColorOverride();
    Draw({0, 0, 64, 48}, red);
    ExpectPixels([](auto, auto) { return red; });
}

TEST_F(RasterizerTest, TranslationMovesWhatIsDrawn) {
    renderer->Translate(5, -3);
    Draw({10, 20, 12, 22}, red);
    renderer->Translate(-5, 3);
    Draw({40, 40, 41, 41}, red);
    ExpectPixels([](auto x, auto y) {
        const bool moved = x >= 15 && x < 17 && y >= 17 && y < 19;
        return moved || (x == 40 && y == 40) ? red : clear;
    });
}

TEST_F(RasterizerTest, WithoutBlendingTheFourBytesReplaceTheTargets) {
    Draw({0, 0, 64, 48}, red);
    Draw({0, 0, 64, 48}, {1, 2, 3, 4});
    ExpectPixels([](auto, auto) { return Color{1, 2, 3, 4}; });
}

TEST_F(RasterizerTest, HalfAlphaOverBlackUsesTheTable) {
    context->clearColor = {0.0f, 0.0f, 0.0f, 1.0f};
    renderer->BeginPaint();
    renderer->EnableBlending();
    Draw({0, 0, 1, 1}, {255, 255, 255, 128});
    // round(128 * 65536 / 255) = 32897
    const auto level = static_cast<std::uint8_t>((0 * (65536 - 32897) + 0x8000 + 255 * 32897) >> 16);
    const auto alpha = static_cast<std::uint8_t>((255 * (65536 - 32897) + 0x8000 + 128 * 65536) >> 16);
    EXPECT_EQ(At(0, 0), (Color{level, level, level, alpha}));
}

TEST_F(RasterizerTest, AWhiteQuadShowsTheImageItself) {
    const SharedPtr<Data::ImageBase> image = MakeImage(16, 16);
    Bind(image);
    Draw(Whole(*image, 10, 20, 26, 36));
    ExpectPixels(
        [](auto x, auto y) { return x >= 10 && x < 26 && y >= 20 && y < 36 ? ImagePixel(x - 10, y - 20) : clear; });
}

TEST_F(RasterizerTest, MagnifiedPixelsAllHaveTheSameSize) {
    const SharedPtr<Data::ImageBase> image = MakeImage(15, 11);
    Bind(image);
    for (const std::int32_t zoom : {1, 2, 3, 4}) {
        renderer->BeginPaint();
        Draw(Whole(*image, 0, 0, 15 * zoom, 11 * zoom));
        SCOPED_TRACE(zoom);
        const auto z = static_cast<std::uint32_t>(zoom);
        ExpectPixels([&](auto x, auto y) { return x < 15 * z && y < 11 * z ? ImagePixel(x / z, y / z) : clear; });
    }
}

TEST_F(RasterizerTest, NearlyWhiteTintsAndDarkensByALevel) {
    const SharedPtr<Data::ImageBase> image = MakeImage(16, 16);
    Bind(image);
    Draw(Whole(*image, 0, 0, 16, 16), {255, 255, 255, 254});
    const auto darker = [](std::uint32_t value, std::uint32_t color) {
        return static_cast<std::uint8_t>((value * color) >> 8);
    };
    ExpectPixels([&](auto x, auto y) {
        if (x >= 16 || y >= 16)
            return clear;
        const Color pixel = ImagePixel(x, y);
        return Color{darker(pixel.blue, 255), darker(pixel.green, 255), darker(pixel.red, 255),
                     darker(pixel.alpha, 254)};
    });
}

TEST_F(RasterizerTest, TheOverrideTintsAnImage) {
    const SharedPtr<Data::ImageBase> image = MakeImage(16, 16);
    Bind(image);
    renderer->SetColorOverride({1.0f, 1.0f, 1.0f, 1.0f});
    Draw(Whole(*image, 0, 0, 16, 16), red);
    EXPECT_EQ(At(3, 4), ImagePixel(3, 4)) << "a white override shows the image itself";
    renderer->SetColorOverride({0.0f, 0.0f, 0.5f, 1.0f});
    Draw(Whole(*image, 0, 0, 16, 16));
    EXPECT_EQ(At(3, 4), (Color{0, 0, static_cast<std::uint8_t>((7 * 128) >> 8), (255 * 255) >> 8}));
}

TEST_F(RasterizerTest, ABoundShaderIsAskedForEachPixelOnce) {
    Bind(MakeImage(4, 4));
    const SharedPtr<RecordingShader> shader = BindNew<RecordingShader>();
    Draw({10, 20, 30, 40}, red);
    EXPECT_EQ(shader->positions.size(), 400u);
    ExpectPixels([](auto x, auto y) { return x >= 10 && x < 30 && y >= 20 && y < 40 ? Color{1, 2, 3, 255} : clear; });
    context->UnbindShader();
    Draw(Whole(*shown.source, 10, 20, 30, 40));
    EXPECT_EQ(shader->positions.size(), 400u);
    EXPECT_EQ(At(29, 39), ImagePixel(3, 3));
}

TEST_F(RasterizerTest, WithoutAnImageTheShaderIsNotAsked) {
    const SharedPtr<RecordingShader> shader = BindNew<RecordingShader>();
    Draw({10, 20, 30, 40}, red);
    EXPECT_TRUE(shader->positions.empty());
    EXPECT_EQ(At(10, 20), red);
}

TEST_F(RasterizerTest, UnbindImageGoesBackToFlatColour) {
    Bind(MakeImage(4, 4));
    context->UnbindImage();
    Draw({10, 20, 30, 40}, red);
    EXPECT_EQ(At(10, 20), red);
}

TEST_F(RasterizerTest, OpaquePixelsReplaceTheTargetWhileBlending) {
    context->clearColor = {0.25f, 0.5f, 0.75f, 0.5f};
    renderer->BeginPaint();
    const Color below = At(63, 47);
    const SharedPtr<Data::ImageBase> image = MakeImage(16, 16);
    Bind(image);
    renderer->EnableBlending();
    Draw(Whole(*image, 0, 0, 16, 16));
    ExpectPixels([&](auto x, auto y) { return x < 16 && y < 16 ? ImagePixel(x, y) : below; });
}

TEST_F(RasterizerTest, ShadedPixelsBlendToo) {
    context->clearColor = {0.25f, 0.5f, 0.75f, 1.0f};
    renderer->BeginPaint();
    const Color below = At(0, 0);
    const SharedPtr<Data::ImageBase> image = MakeImage(8, 8);
    Bind(image);
    renderer->EnableBlending();
    Draw(Whole(*image, 0, 0, 8, 8), {255, 255, 255, 77});
    const Color tinted = Colorize({255, 255, 255, 77}, ImagePixel(5, 2));
    EXPECT_EQ(At(5, 2), Blend(tinted, below));
}

} // namespace

} // namespace Quorvex::Platform::Video::Software
