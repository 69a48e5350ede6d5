#include "tests/support/LogCapture.h"
#include "tests/video/software/SampleImages.h"
#include "tests/video/software/SoftwareFixture.h"
#include "video/Resampling.h"
#include "video/software/SoftwareRenderer.h"

#include <cstring>

namespace Quorvex::Platform::Video::Software {

namespace {

using Mode = EnumResamplingMode;
constexpr Color untouched{};

class SoftwareResamplingTest : public SoftwareFixture {
protected:
    static constexpr std::int32_t windowWidth = 64, windowHeight = 48;

    static ImageRect Rect(std::int32_t x0, std::int32_t y0, std::int32_t x1, std::int32_t y1, Mode mode = Mode::Nearest,
                          std::int32_t rotation = 0) {
        ImageRect rect;
        rect.x0 = x0;
        rect.x1 = x1;
        rect.y0 = y0;
        rect.y1 = y1;
        rect.mode = mode;
        rect.rotation = rotation;
        return rect;
    }

    void Show(const SharedPtr<Data::ImageBase>& image) {
        picture = Image2DMeta();
        picture.CreateFromMemory(context, image);
    }
    /// An image of 8-bit pixels that tell where they are.
    void ShowNumbered(std::uint32_t width, std::uint32_t height) {
        Show(MakeImage<Color>(width, height, [](auto x, auto y) { return Numbered(x, y); }));
    }
    static Color Numbered(std::uint32_t x, std::uint32_t y) {
        return {std::uint8_t(x), std::uint8_t(y), std::uint8_t(x * 7 + y), 255};
    }
    /// Draws onto a frame cleared to 0.
    void DrawFrame(const ImageRect& rect) {
        renderer->BeginPaint();
        resampling.Draw(*renderer, picture, rect);
    }
    std::vector<Color> Pixels() const {
        const SharedPtr<Renderer::Lock> lock = renderer->LockColorBuffer();
        const auto* const bits = reinterpret_cast<const Color*>(lock->ReadBits());
        return {bits, bits + windowWidth * windowHeight};
    }
    /// What a resampler without a past draws.
    std::vector<Color> Redrawn(ImageRect rect) {
        Resampling fresh;
        renderer->BeginPaint();
        fresh.Draw(*renderer, picture, rect);
        return Pixels();
    }

    Resampling resampling;
    Image2DMeta picture;
};

} // namespace

TEST_F(SoftwareResamplingTest, OneToOneWithNearestReproducesTheImage) {
    ShowNumbered(30, 20);
    DrawFrame(Rect(7, 9, 37, 29));
    ExpectPixels(
        [](auto x, auto y) { return x >= 7 && x < 37 && y >= 9 && y < 29 ? Numbered(x - 7, y - 9) : untouched; });
}

TEST_F(SoftwareResamplingTest, OneToOneReproducesTheImageInEveryModeAndType) {
    for (const Mode mode : {Mode::Cubic, Mode::Linear, Mode::Nearest, Mode::Area}) {
        SCOPED_TRACE(testing::Message() << "mode " << int(mode));
        ShowNumbered(31, 21);
        DrawFrame(Rect(7, 9, 38, 30, mode));
        ExpectPixels(
            [](auto x, auto y) { return x >= 7 && x < 38 && y >= 9 && y < 30 ? Numbered(x - 7, y - 9) : untouched; });
        Show(MakeImage<std::uint16_t>(31, 21, [](auto x, auto y) { return std::uint16_t((x * 8 + y % 8) * 257); }));
        DrawFrame(Rect(7, 9, 38, 30, mode));
        ExpectPixels([](auto x, auto y) {
            const auto grey = std::uint8_t((x - 7) * 8 + (y - 9) % 8);
            return x >= 7 && x < 38 && y >= 9 && y < 30 ? Color{grey, grey, grey, 255} : untouched;
        });
    }
}

TEST_F(SoftwareResamplingTest, MagnifiedPixelsAllHaveTheSameSize) {
    ShowNumbered(5, 4);
    for (const std::int32_t factor : {2, 3, 4, 7, 8}) {
        DrawFrame(Rect(1, 2, 1 + 5 * factor, 2 + 4 * factor));
        ExpectPixels([factor](auto x, auto y) {
            const bool isInside = x >= 1 && y >= 2 && x < 1u + 5 * factor && y < 2u + 4 * factor;
            return isInside ? Numbered((x - 1) / factor, (y - 2) / factor) : untouched;
        });
    }
}

TEST_F(SoftwareResamplingTest, RotationsTurnThePictureCounterclockwise) {
    ShowNumbered(10, 6);
    DrawFrame(Rect(3, 4, 9, 14, Mode::Nearest, 90));
    ExpectPixels([](auto x, auto y) {
        const bool isInside = x >= 3 && x < 9 && y >= 4 && y < 14;
        return isInside ? Numbered(13 - y, x - 3) : untouched;
    });
    DrawFrame(Rect(3, 4, 13, 10, Mode::Nearest, 180));
    ExpectPixels([](auto x, auto y) {
        const bool isInside = x >= 3 && x < 13 && y >= 4 && y < 10;
        return isInside ? Numbered(12 - x, 9 - y) : untouched;
    });
    DrawFrame(Rect(3, 4, 9, 14, Mode::Nearest, 270));
    ExpectPixels([](auto x, auto y) {
        const bool isInside = x >= 3 && x < 9 && y >= 4 && y < 14;
        return isInside ? Numbered(y - 4, 8 - x) : untouched;
    });
}

TEST_F(SoftwareResamplingTest, ARotationOf90HasTheImagesRightEdgeAtTheTop) {
    ShowNumbered(10, 6);
    DrawFrame(Rect(0, 0, 6, 10, Mode::Nearest, 90));
    for (std::uint32_t x = 0; x < 6; ++x) {
        EXPECT_EQ(At(x, 0), Numbered(9, x));
        EXPECT_EQ(At(x, 9), Numbered(0, x));
    }
}

TEST_F(SoftwareResamplingTest, AnyOtherRotationDrawsNothing) {
    ShowNumbered(10, 6);
    DrawFrame(Rect(0, 0, 6, 10, Mode::Nearest, 45));
    ExpectPixels([](auto, auto) { return untouched; });
}

TEST_F(SoftwareResamplingTest, SwappedSidesMirrorThePicture) {
    ShowNumbered(10, 6);
    DrawFrame(Rect(13, 4, 3, 10));
    ExpectPixels(
        [](auto x, auto y) { return x >= 3 && x < 13 && y >= 4 && y < 10 ? Numbered(12 - x, y - 4) : untouched; });
    DrawFrame(Rect(3, 10, 13, 4));
    ExpectPixels(
        [](auto x, auto y) { return x >= 3 && x < 13 && y >= 4 && y < 10 ? Numbered(x - 3, 9 - y) : untouched; });
}

TEST_F(SoftwareResamplingTest, ARectangleWithoutAreaDrawsNothing) {
    ShowNumbered(10, 6);
    DrawFrame(Rect(5, 5, 5, 20));
    DrawFrame(Rect(5, 5, 20, 5));
    DrawFrame(Rect(100, 100, 120, 120));
    DrawFrame(Rect(-2147483647 - 1, 0, 2147483647, 10));
    ExpectPixels([](auto, auto) { return untouched; });
}

TEST_F(SoftwareResamplingTest, AScrollBy3ColumnsRenders3ColumnsAndKeepsTheRestBitForBit) {
    const auto first = MakeRandomImage(Data::ColorTypeEnum::BGRAUInt8, 400, 300, 1);
    const auto second = MakeRandomImage(Data::ColorTypeEnum::BGRAUInt8, 400, 300, 2);
    Show(first);
    DrawFrame(Rect(-20, -10, 113, 90, Mode::Area));
    const std::vector<Color> before = Pixels();
    // With other samples behind the same view, the pixels tell when they were computed.
    picture.source = second;
    ImageRect rect = Rect(-23, -10, 110, 90, Mode::Area);
    const std::vector<Color> fresh = Redrawn(rect);
    rect.unchanged = true;
    DrawFrame(rect);
    for (std::int32_t y = 0; y < windowHeight; ++y)
        for (std::int32_t x = 0; x < windowWidth; ++x)
            ASSERT_EQ(At(x, y), x < windowWidth - 3 ? before[y * windowWidth + x + 3] : fresh[y * windowWidth + x])
                << x << ", " << y;
}

TEST_F(SoftwareResamplingTest, AScrollInAnyDirectionEqualsARedraw) {
    Show(MakeRandomImage(Data::ColorTypeEnum::BGRAUInt8, 90, 70));
    for (const Mode mode : {Mode::Cubic, Mode::Linear, Mode::Nearest, Mode::Area})
        for (const std::int32_t dx : {-64, -63, -7, -1, 0, 1, 3, 63, 64, 100})
            for (const std::int32_t dy : {-48, -47, -2, 0, 1, 5, 47, 48}) {
                DrawFrame(Rect(-11, 3, 59, 41, mode));
                ImageRect moved = Rect(-11 + dx, 3 + dy, 59 + dx, 41 + dy, mode);
                moved.unchanged = true;
                DrawFrame(moved);
                const std::vector<Color> scrolled = Pixels();
                ASSERT_EQ(scrolled, Redrawn(moved)) << "by " << dx << ", " << dy << " mode " << int(mode);
            }
}

TEST_F(SoftwareResamplingTest, AScrollOfAGratingWhoseMeansAreTiesEqualsARedraw) {
    // Means of 127.5 everywhere: which way each rounds is decided by the last bits of its position.
    Show(MakeImage<std::uint8_t>(401, 301, [](auto x, auto y) { return std::uint8_t((x + y) % 2 ? 255 : 0); }));
    for (const std::int32_t reduction : {2, 4})
        for (const std::int32_t dx : {-31, 1, 7})
            for (const std::int32_t dy : {-13, 0, 3}) {
                const std::int32_t right = 400 / reduction, bottom = 300 / reduction;
                DrawFrame(Rect(-19, -17, right - 19, bottom - 17, Mode::Area));
                ImageRect moved = Rect(-19 + dx, -17 + dy, right - 19 + dx, bottom - 17 + dy, Mode::Area);
                moved.unchanged = true;
                DrawFrame(moved);
                const std::vector<Color> scrolled = Pixels();
                ASSERT_EQ(scrolled, Redrawn(moved)) << "by " << dx << ", " << dy << " at 1:" << reduction;
            }
}

TEST_F(SoftwareResamplingTest, AScrollByAtLeastTheBuffersSizeRendersAll) {
    const auto first = MakeRandomImage(Data::ColorTypeEnum::UInt8, 200, 200, 1);
    const auto second = MakeRandomImage(Data::ColorTypeEnum::UInt8, 200, 200, 2);
    for (const auto& [dx, dy] : {std::pair{windowWidth, 0}, std::pair{-windowWidth, 0}, std::pair{0, windowHeight},
                                 std::pair{0, -windowHeight}}) {
        Show(first);
        DrawFrame(Rect(-70, -70, 130, 130));
        picture.source = second;
        ImageRect rect = Rect(-70 + dx, -70 + dy, 130 + dx, 130 + dy);
        rect.unchanged = true;
        DrawFrame(rect);
        const std::vector<Color> drawn = Pixels();
        EXPECT_EQ(drawn, Redrawn(rect)) << dx << ", " << dy;
    }
}

TEST_F(SoftwareResamplingTest, AZoomChangeNeverScrolls) {
    const auto first = MakeRandomImage(Data::ColorTypeEnum::UInt8, 200, 200, 1);
    const auto second = MakeRandomImage(Data::ColorTypeEnum::UInt8, 200, 200, 2);
    for (ImageRect rect : {Rect(-70, -70, 131, 130), Rect(-70, -70, 130, 131), Rect(-69, -70, 130, 130),
                           Rect(-70, -70, 130, 130, Mode::Linear), Rect(-70, -70, 130, 130, Mode::Nearest, 90)}) {
        Show(first);
        DrawFrame(Rect(-70, -70, 130, 130));
        picture.source = second;
        rect.unchanged = true;
        DrawFrame(rect);
        const std::vector<Color> drawn = Pixels();
        EXPECT_EQ(drawn, Redrawn(rect)) << rect.x1 << ", " << rect.y1;
    }
}

TEST_F(SoftwareResamplingTest, AnUnchangedRectangleIsNotComputedAgainAndAChangedImageIs) {
    Show(MakeRandomImage(Data::ColorTypeEnum::UInt8, 200, 200, 1));
    ImageRect rect = Rect(-70, -70, 130, 130);
    DrawFrame(rect);
    const std::vector<Color> before = Pixels();
    picture.source = MakeRandomImage(Data::ColorTypeEnum::UInt8, 200, 200, 2);
    rect.unchanged = true;
    DrawFrame(rect);
    EXPECT_EQ(Pixels(), before);
    rect.unchanged = false;
    DrawFrame(rect);
    EXPECT_NE(Pixels(), before);
}

TEST_F(SoftwareResamplingTest, AWindowOfAnotherSizeIsDrawnAnew) {
    ShowNumbered(64, 48);
    ImageRect rect = Rect(0, 0, 64, 48);
    rect.unchanged = true;
    renderer->SetSize(20, 10);
    DrawFrame(rect);
    EXPECT_EQ(At(19, 9), Numbered(19, 9));
    renderer->SetSize(64, 48);
    DrawFrame(rect);
    EXPECT_EQ(At(63, 47), Numbered(63, 47));
}

TEST_F(SoftwareResamplingTest, DeletedContextObjectsAreMadeAgain) {
    ShowNumbered(64, 48);
    ImageRect rect = Rect(0, 0, 64, 48);
    rect.unchanged = true;
    DrawFrame(rect);
    EXPECT_TRUE(resampling.DeleteContextObjects());
    DrawFrame(rect);
    EXPECT_EQ(At(63, 47), Numbered(63, 47));
}

TEST_F(SoftwareResamplingTest, AFailedDrawLeavesNothingThatClaimsToBeDrawn) {
    ShowNumbered(64, 48);
    ImageRect rect = Rect(0, 0, 64, 48);
    {
        const auto writeLock = picture.source->LockBGRAUInt8(Data::LockMode::ReadWrite);
        EXPECT_THROW(DrawFrame(rect), Exception);
    }
    rect.unchanged = true;
    DrawFrame(rect);
    EXPECT_EQ(At(63, 47), Numbered(63, 47));
}

TEST_F(SoftwareResamplingTest, BlendingFollowsTheContext) {
    const Color half{200, 100, 50, 128};
    Show(MakeImage<Color>(8, 8, [&](auto, auto) { return half; }));
    DrawFrame(Rect(0, 0, 8, 8));
    EXPECT_EQ(At(3, 3), half);
    renderer->EnableBlending();
    DrawFrame(Rect(0, 0, 8, 8));
    EXPECT_EQ(At(3, 3), Blend(half, untouched));
}

TEST_F(SoftwareResamplingTest, WhatTheRendererMovesByMovesTheImage) {
    ShowNumbered(64, 48);
    renderer->BeginPaint();
    renderer->Translate(5, -3);
    resampling.Draw(*renderer, picture, Rect(0, 0, 64, 48));
    ExpectPixels([](auto x, auto y) { return x >= 5 && y < 45 ? Numbered(x - 5, y + 3) : untouched; });
    // A child window moves its content back by its own position: nothing of the right border may be missing.
    renderer->BeginPaint();
    renderer->Translate(-100, -200);
    resampling.Draw(*renderer, picture, Rect(100, 200, 164, 248));
    ExpectPixels([](auto x, auto y) { return Numbered(x, y); });
}

TEST_F(SoftwareResamplingTest, AnEmptyImageDrawsNothing) {
    DrawFrame(Rect(0, 0, 64, 48));
    ExpectPixels([](auto, auto) { return untouched; });
}

TEST_F(SoftwareResamplingTest, AnImageWithoutRowsOrColumnsDrawsNothingInAnyMode) {
    for (const auto& [width, height] : {std::pair(0u, 0u), std::pair(0u, 9u), std::pair(9u, 0u)}) {
        Show(Data::CreateImage(Data::ColorTypeEnum::BGRAUInt8, width, height));
        for (const Mode mode : {Mode::Cubic, Mode::Linear, Mode::Nearest, Mode::Area}) {
            DrawFrame(Rect(0, 0, 10, 10, mode));
            EXPECT_EQ(Pixels(), std::vector<Color>(windowWidth * windowHeight, untouched)) << width << " x " << height;
        }
    }
}

TEST_F(SoftwareResamplingTest, AnAreaReductionBy4TakesTheMeanOf16) {
    Show(MakeImage<std::uint8_t>(64, 64, [](auto x, auto y) { return std::uint8_t(x % 4 * 16 + y % 4); }));
    DrawFrame(Rect(0, 0, 16, 16, Mode::Area));
    // 24 + 1.5 = 25.5, less 3e-8 of the difference to the neighbouring columns: rounding may go either way by position.
    for (std::uint32_t x = 1; x < 15; ++x)
        EXPECT_NEAR(At(x, 8).blue, 25.5, 0.5);
}

namespace {

/// A surface whose lock tells what a test wants.
class OddRenderer final : public SoftwareRenderer {
public:
    class OddLock final : public Lock {
    public:
        explicit OddLock(const OddRenderer& oddRenderer) : owner(oddRenderer) {}
        const std::uint8_t* ReadBits() const override { return owner.bits; }
        std::int32_t ReadPitch() const override { return owner.pitch; }
        std::uint8_t* WriteBits() const override { return owner.bits; }
        std::int32_t WritePitch() const override { return owner.pitch; }
        BufferFormat Format() const override { return owner.format; }
        std::int32_t Height() const override { return owner.isBottomUp ? -4 : 4; }

    private:
        const OddRenderer& owner;
    };

    OddRenderer(const SharedPtr<SoftwareContext>& owner, const SharedPtr<IWindowSurface>& surface)
        : SoftwareRenderer(owner.get(), owner, surface, {}) {
        SetSize(4, 4);
    }
    SharedPtr<Lock> LockColorBuffer() override { return SharedPtr<Lock>(new OddLock(*this)); }

    alignas(4) std::uint8_t memory[128]{};
    std::uint8_t* bits = memory;
    std::int32_t pitch = 16;
    BufferFormat format = BufferFormat::BGRA32;
    bool isBottomUp = false;
};

class OddSurfaceTest : public SoftwareResamplingTest {
protected:
    OddSurfaceTest() { ShowNumbered(4, 4); }

    void ExpectProblem(const char* problem) {
        const Quorvex::Test::LogCapture log;
        try {
            resampling.Draw(odd, picture, Rect(0, 0, 4, 4));
            ADD_FAILURE() << "no exception, wanted " << problem;
        } catch (const Exception& exception) {
            EXPECT_STREQ(exception.what(), problem);
        }
        EXPECT_TRUE(log.HasLineEndingIn(problem)) << log.Text();
    }

    OddRenderer odd{context, window};
};

} // namespace

TEST_F(OddSurfaceTest, BitsThatAreNotAlignedAreReported) {
    odd.bits = odd.memory + 2;
    ExpectProblem("pBits%4!=0");
    odd.format = BufferFormat::BGRX32;
    ExpectProblem("pBits%4!=0");
    odd.format = BufferFormat::BGR565;
    odd.bits = odd.memory + 1;
    ExpectProblem("pBits%2!=0");
}

TEST_F(OddSurfaceTest, APitchThatIsNotAlignedIsReported) {
    odd.pitch = 18;
    ExpectProblem("Pitch%4!=0");
    odd.format = BufferFormat::BGR565;
    odd.pitch = 17;
    ExpectProblem("Pitch%2!=0");
}

TEST_F(OddSurfaceTest, NothingIsDrawnIntoAnUnknownFormat) {
    for (const std::uint32_t format : {2u, 4u, 17u}) {
        odd.format = static_cast<BufferFormat>(format);
        resampling.Draw(odd, picture, Rect(0, 0, 4, 4));
        for (const std::uint8_t byte : odd.memory)
            EXPECT_EQ(byte, 0);
    }
}

TEST_F(OddSurfaceTest, SixteenBitsTakeTheReducedColors) {
    odd.format = BufferFormat::BGR565;
    odd.pitch = 10;
    Show(MakeImage<Color>(4, 4, [](auto x, auto y) { return Color{255, 128, std::uint8_t(x * 60), std::uint8_t(y)}; }));
    resampling.Draw(odd, picture, Rect(0, 0, 4, 4));
    const auto at = [&](std::size_t x, std::size_t y) {
        std::uint16_t value;
        std::memcpy(&value, odd.memory + y * 10 + x * 2, 2);
        return value;
    };
    EXPECT_EQ(at(3, 2), (180 & 0xF8) << 8 | 128 << 3 | 31);
    odd.EnableBlending();
    resampling.Draw(odd, picture, Rect(0, 0, 4, 4));
    EXPECT_EQ(at(3, 0), (180 & 0xF8) << 8 | 128 << 3 | 31) << "see-through pixels change nothing";
}

TEST_F(OddSurfaceTest, ABottomUpSurfaceIsDrawnUpright) {
    odd.isBottomUp = true;
    resampling.Draw(odd, picture, Rect(0, 0, 4, 4));
    for (std::uint32_t y = 0; y < 4; ++y) {
        Color color;
        std::memcpy(&color, odd.memory + (3 - y) * 16 + 8, 4);
        EXPECT_EQ(color, Numbered(2, y));
    }
}

} // namespace Quorvex::Platform::Video::Software
