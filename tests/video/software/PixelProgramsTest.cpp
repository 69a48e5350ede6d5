#include "tests/video/software/PixelProgramsReference.h"
#include "tests/video/software/SoftwareFixture.h"

namespace Quorvex::Platform::Video::Software {

namespace {

constexpr std::uint32_t awkwardSizes[][2] = {{1, 1}, {1, 9}, {7, 1}, {8, 7}, {9, 8}, {63, 5}, {64, 3}, {65, 2}};

template <class Sample>
class PixelProgramsTest : public testing::Test {
protected:
    /// Calls compare(view, reference) for images of awkward sizes.
    template <class Compare>
    static void ForEachImage(const Compare& compare) {
        for (const auto& [width, height] : awkwardSizes) {
            const SharedPtr<Data::ImageBase> image = MakeRandomImage<Sample>(width, height, width * 100 + height);
            const auto pixels = Data::SampleTraits<Sample>::LockIn(std::as_const(*image), Data::LockMode::ReadOnly);
            const ImageView<Sample> view{pixels.Data, pixels.AllocatedWidth, width, height};
            SCOPED_TRACE(testing::Message() << Data::SampleTraits<Sample>::typeName << " " << width << " x " << height);
            compare(view, ReferencePrograms::Of<Sample>(*image));
            if (testing::Test::HasFatalFailure())
                return;
        }
    }

    /// Positions from MARGIN source pixels before the image to as many behind it, on and off the edges of pixels.
    template <class Visit>
    static void ForEachPosition(const ImageView<Sample>& view, double margin, const Visit& visit) {
        const double stepX = view.width > 20 ? 1.37 : 0.43;
        for (double y = -margin; y < view.height + margin; y += 0.47)
            for (double x = -margin; x < view.width + margin; x += stepX) {
                visit(x, y);
                visit(std::floor(x) + nearHalf, std::floor(y) + nearHalf);
            }
        visit(0.0, 0.0);
        visit(view.width - 1e-9, view.height - 1e-9);
    }
};

#define QUORVEX_COMMA_TYPE(value, name, sample) , sample
template <class First, class... Rest>
testing::Types<Rest...> WithoutFirst();
using AllSamples = decltype(WithoutFirst<void QUORVEX_SAMPLE_TYPES(QUORVEX_COMMA_TYPE)>());
#undef QUORVEX_COMMA_TYPE
TYPED_TEST_SUITE(PixelProgramsTest, AllSamples);

TYPED_TEST(PixelProgramsTest, NearestIsTheReference) {
    this->ForEachImage([&](const auto& view, const ReferencePrograms& reference) {
        this->ForEachPosition(view, 0.0, [&](double x, double y) {
            ASSERT_EQ(ShadeNearest(x, y, view), reference.Nearest(x, y)) << x << ", " << y;
        });
    });
}

TYPED_TEST(PixelProgramsTest, ColorizationIsTheReference) {
    const Color colors[] = {{255, 255, 255, 254}, {0, 1, 128, 200}, {17, 255, 3, 0}};
    this->ForEachImage([&](const auto& view, const ReferencePrograms& reference) {
        this->ForEachPosition(view, 0.0, [&](double x, double y) {
            for (const Color& color : colors)
                ASSERT_EQ(ShadeNearestWithColorization(x, y, view, color), reference.Colorized(x, y, color))
                    << x << ", " << y;
        });
    });
}

TYPED_TEST(PixelProgramsTest, LinearIsTheReference) {
    this->ForEachImage([&](const auto& view, const ReferencePrograms& reference) {
        this->ForEachPosition(view, 3.0, [&](double x, double y) {
            ASSERT_EQ(ShadeLinear(x, y, view), reference.Linear(x, y)) << x << ", " << y;
        });
    });
}

TYPED_TEST(PixelProgramsTest, CubicIsTheReference) {
    this->ForEachImage([&](const auto& view, const ReferencePrograms& reference) {
        this->ForEachPosition(view, 3.0, [&](double x, double y) {
            ASSERT_EQ(ShadeCubic(x, y, view), reference.Cubic(x, y)) << x << ", " << y;
        });
    });
}

TYPED_TEST(PixelProgramsTest, AreaIsTheReference) {
    const double sizes[][2] = {{1.0, 1.0}, {0.25, 0.3}, {2.0, 2.0}, {3.7, 1.1}, {1.0, 5.5}, {9.3, 0.01}};
    this->ForEachImage([&](const auto& view, const ReferencePrograms& reference) {
        for (const auto& [sizeX, sizeY] : sizes) {
            const AreaFootprint footprint{sizeX, sizeY, 1 / (sizeX * sizeY)};
            this->ForEachPosition(view, 3.0, [&](double x, double y) {
                ASSERT_EQ(ShadeArea(x, y, view, footprint), reference.Area(x, y, sizeX, sizeY))
                    << x << ", " << y << ", footprint " << sizeX << " x " << sizeY;
            });
        }
    });
}

TYPED_TEST(PixelProgramsTest, LinearAtTheCentreOfAPixelIsThatPixel) {
    const SharedPtr<Data::ImageBase> image = MakeRandomImage<TypeParam>(9, 8, 1);
    const auto pixels = Data::SampleTraits<TypeParam>::LockIn(std::as_const(*image), Data::LockMode::ReadOnly);
    const ImageView<TypeParam> view{pixels.Data, pixels.AllocatedWidth, 9, 8};
    EXPECT_EQ(ShadeLinear(3.5, 4.5, view), FilteredToColor<TypeParam>(ReadChannels(pixels(3, 4))));
}

TYPED_TEST(PixelProgramsTest, AreaAtFullSizeIsTheNearestPixel) {
    const SharedPtr<Data::ImageBase> image = MakeRandomImage<TypeParam>(9, 8, 2);
    const auto pixels = Data::SampleTraits<TypeParam>::LockIn(std::as_const(*image), Data::LockMode::ReadOnly);
    const ImageView<TypeParam> view{pixels.Data, pixels.AllocatedWidth, 9, 8};
    using Channel = ChannelType<TypeParam>;
    for (std::uint32_t y = 0; y < 8; ++y)
        for (std::uint32_t x = 0; x < 9; ++x) {
            // Wider samples and floats may lie so near to an edge between levels that the neighbour's 3e-8 counts.
            const Color color = ShadeArea(x + nearHalf, y + nearHalf, view, AreaFootprint());
            const Color exact = FilteredToColor<TypeParam>(ReadChannels(pixels(x, y)));
            if constexpr (sizeof(Channel) == 1)
                ASSERT_EQ(color, exact) << x << ", " << y;
            else
                ASSERT_LE(std::abs(color.green - exact.green), 1) << x << ", " << y;
        }
}

TYPED_TEST(PixelProgramsTest, CornersReadTheBorderAndNoPadding) {
    using Channel = ChannelType<TypeParam>;
    const SharedPtr<Data::ImageBase> image = MakeRandomImage<TypeParam>(3, 3, 3);
    const auto pixels = Data::SampleTraits<TypeParam>::LockIn(*image, Data::LockMode::ReadWrite);
    constexpr auto bright =
        static_cast<Channel>(std::is_floating_point_v<Channel> ? Channel(1) : std::numeric_limits<Channel>::max());
    constexpr Channel dark = std::is_floating_point_v<Channel> ? Channel(0) : std::numeric_limits<Channel>::min();
    for (std::uint32_t y = 0; y < pixels.AllocatedHeight; ++y)
        for (std::uint32_t x = 0; x < pixels.AllocatedWidth; ++x) {
            const Channel value = x < 3 && y < 3 ? bright : dark;
            if constexpr (Data::SampleTraits<TypeParam>::isColor)
                pixels(x, y) = {value, value, value, value};
            else
                pixels(x, y) = value;
        }
    const ImageView<TypeParam> view{pixels.Data, pixels.AllocatedWidth, 3, 3};
    constexpr Color white{255, 255, 255, 255};
    for (const double x : {0.0, 0.1, 2.6, 2.9999, 3.0})
        for (const double y : {0.0, 0.1, 2.6, 2.9999, 3.0}) {
            EXPECT_EQ(ShadeLinear(x, y, view), white) << x << ", " << y;
            EXPECT_EQ(ShadeCubic(x, y, view), white) << x << ", " << y;
            EXPECT_EQ(ShadeArea(x, y, view, {1.5, 1.5, 1 / 2.25}), white) << x << ", " << y;
        }
}

TEST(CubicProgram, ClampsTheOvershootOfAHardEdge) {
    std::uint8_t samples[64];
    for (std::size_t x = 0; x < 64; ++x)
        samples[x] = x < 32 ? 0 : 255;
    const ImageView<std::uint8_t> view{samples, 64, 64, 1};
    bool hasGrey = false;
    int before = 0;
    for (double x = 28.0; x < 36.0; x += 0.01) {
        const int level = ShadeCubic(x, 0.5, view).green;
        EXPECT_GE(level, before) << "a wrapped overshoot falls at " << x;
        before = level;
        hasGrey = hasGrey || (level > 0 && level < 255);
    }
    EXPECT_EQ(before, 255);
    EXPECT_TRUE(hasGrey);
    // The kernel itself does leave the range on both sides.
    EXPECT_LT(CubicKernel(0, 0, 0, 255, 0.5), 0.0);
    EXPECT_GT(CubicKernel(0, 255, 255, 255, 0.5), 255.0);
}

TEST(CubicProgram, GoesThroughItsPoints) {
    EXPECT_EQ(CubicKernel(3, 5, 11, 2, 0.0), 5.0);
    EXPECT_EQ(CubicKernel(3, 5, 11, 2, 1.0), 11.0);
    EXPECT_EQ(CubicKernel(1, 2, 3, 4, 0.25), 2.25);
}

TEST(NearestIndex, IsAFloorThatForgivesTheTenthDecimal) {
    EXPECT_EQ(NearestIndex(0.0), 0);
    EXPECT_EQ(NearestIndex(2.999), 2);
    EXPECT_EQ(NearestIndex(3.0), 3);
    EXPECT_EQ(NearestIndex(-1e-11), 0) << "rounding just below 0 still finds pixel 0";
    EXPECT_EQ(NearestIndex(-1e-9), -1);
    EXPECT_EQ(NearestIndex(-0.5), -1);
    EXPECT_EQ(NearestIndex(-1.0), -1);
    EXPECT_EQ(NearestIndex(-1.5), -2);
}

TEST(ClampedIndex, StaysInsideForEveryPosition) {
    EXPECT_EQ(ClampedIndex(-1e300, 5), 0u);
    EXPECT_EQ(ClampedIndex(-1.0, 5), 0u);
    EXPECT_EQ(ClampedIndex(0.0, 5), 0u);
    EXPECT_EQ(ClampedIndex(4.0, 5), 4u);
    EXPECT_EQ(ClampedIndex(5.0, 5), 4u);
    EXPECT_EQ(ClampedIndex(1e300, 5), 4u);
    EXPECT_EQ(ClampedIndex(std::nan(""), 5), 0u);
    EXPECT_EQ(ClampedIndex(7.0, 1), 0u);
}

} // namespace

} // namespace Quorvex::Platform::Video::Software
