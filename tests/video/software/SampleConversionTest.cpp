#include "video/software/SampleConversion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Quorvex::Platform::Video::Software {

namespace {

__extension__ using Int128 = __int128;

/// The nearest of 256 levels that lie STEP apart, by the width's limit and half step.
int NearestLevel(Int128 value, Int128 limit, Int128 half, Int128 step) {
    return static_cast<int>(((value < limit ? value : limit) + half) / step);
}

int NearestLevel16(std::int64_t value) {
    return NearestLevel(value, 0xFF7F, 0x80, 0x101);
}
int NearestLevel32(std::int64_t value) {
    return NearestLevel(value, 0xFF7F7F7F, 0x808080, 0x1010101);
}
int NearestLevel64(std::uint64_t value) {
    return NearestLevel(value, 0xFF7F7F7F7F7F7F7F, 0x80808080808080, 0x101010101010101);
}

TEST(SampleToByte, EightBitsStandAsTheyAre) {
    for (int i = 0; i < 256; ++i) {
        ASSERT_EQ(SampleToByte(static_cast<std::uint8_t>(i)), i);
        ASSERT_EQ(SampleToByte(static_cast<std::int8_t>(i - 128)), i);
    }
}

TEST(SampleToByte, SignedEightBitLimitsAreTheLimitsOfAByte) {
    EXPECT_EQ(SampleToByte(std::int8_t{-128}), 0);
    EXPECT_EQ(SampleToByte(std::int8_t{127}), 255);
    EXPECT_EQ(FilteredToByte<std::int8_t>(-128.0), 0);
    EXPECT_EQ(FilteredToByte<std::int8_t>(127.0), 255);
}

TEST(SampleToByte, SixteenBitsFollowTheFormulaOverTheWholeRange) {
    for (int i = 0; i < 65536; ++i) {
        ASSERT_EQ(SampleToByte(static_cast<std::uint16_t>(i)), NearestLevel16(i)) << i;
        ASSERT_EQ(SampleToByte(static_cast<std::int16_t>(i - 32768)), NearestLevel16(i)) << i;
    }
}

// Half of the step of 0x101 is 128.5: 0x80 is nearer to level 0, 0x81 to level 1.
TEST(SampleToByte, GreySixteenBitSamplesRoundToTheNearestLevel) {
    EXPECT_EQ(SampleToByte(std::uint16_t{0xFFFF}), 255);
    EXPECT_EQ(SampleToByte(std::uint16_t{0x0081}), 1);
    EXPECT_EQ(SampleToByte(std::uint16_t{0x0080}), 0);
    EXPECT_EQ(SampleToByte(std::uint16_t{0x007F}), 0);
    for (int i = 0; i < 65536; ++i)
        ASSERT_EQ(SampleToByte(static_cast<std::uint16_t>(i)), std::lround(i * 255.0 / 65535.0)) << i;
}

TEST(SampleToByte, ThirtyTwoBitsFollowTheFormulaAtEveryEdge) {
    for (std::int64_t level = 0; level < 256; ++level)
        for (const std::int64_t around : {std::int64_t{0}, std::int64_t{0x808080}})
            for (std::int64_t step = -2; step <= 2; ++step) {
                const std::int64_t value = level * 0x1010101 + around + step;
                if (value < 0 || value > 0xFFFFFFFF)
                    continue;
                ASSERT_EQ(SampleToByte(static_cast<std::uint32_t>(value)), NearestLevel32(value)) << value;
                ASSERT_EQ(SampleToByte(static_cast<std::int32_t>(value - 0x80000000)), NearestLevel32(value)) << value;
            }
    EXPECT_EQ(SampleToByte(std::numeric_limits<std::uint32_t>::max()), 255);
    EXPECT_EQ(SampleToByte(std::numeric_limits<std::int32_t>::max()), 255);
    EXPECT_EQ(SampleToByte(std::numeric_limits<std::int32_t>::min()), 0);
}

TEST(SampleToByte, SixtyFourBitsFollowTheFormulaAtEveryEdge) {
    for (std::uint64_t level = 0; level < 256; ++level)
        for (const std::uint64_t around : {std::uint64_t{0}, std::uint64_t{0x80808080808080}})
            for (std::int64_t step = -2; step <= 2; ++step) {
                const Int128 exact = static_cast<Int128>(level) * 0x101010101010101 + around + step;
                if (exact < 0 || exact > std::numeric_limits<std::uint64_t>::max())
                    continue;
                const auto value = static_cast<std::uint64_t>(exact);
                ASSERT_EQ(SampleToByte(value), NearestLevel64(value)) << value;
                const auto asSigned = static_cast<std::int64_t>(value ^ 0x8000000000000000);
                ASSERT_EQ(SampleToByte(asSigned), NearestLevel64(value)) << value;
            }
    EXPECT_EQ(SampleToByte(std::numeric_limits<std::uint64_t>::max()), 255);
    EXPECT_EQ(SampleToByte(std::numeric_limits<std::int64_t>::max()), 255);
    EXPECT_EQ(SampleToByte(std::numeric_limits<std::int64_t>::min()), 0);
}

TEST(SampleToByte, AFloatOfOneHalfIs128) {
    EXPECT_EQ(SampleToByte(0.5f), 128);
    EXPECT_EQ(SampleToByte(0.5), 128);
}

TEST(SampleToByte, FloatsOutsideZeroToOneWrapAround) {
    EXPECT_EQ(SampleToByte(1.5f), 383 & 0xFF);
    EXPECT_EQ(SampleToByte(-0.1), static_cast<std::uint8_t>(-25));
    EXPECT_EQ(SampleToByte(1.0f), 255);
    EXPECT_EQ(SampleToByte(0.0), 0);
    EXPECT_EQ(SampleToByte(std::numeric_limits<float>::infinity()), 0);
    EXPECT_EQ(SampleToByte(std::nan("")), 0);
}

/// The table of floating conversions, before the clamp.
template <class Channel>
double TableLevel(double r) {
    using Limits = std::numeric_limits<Channel>;
    const auto minimum = static_cast<double>(Limits::min());
    const double offset = std::is_signed_v<Channel> ? minimum : 0.0;
    switch (sizeof(Channel)) {
    case 1:
        return (r - offset) + 0.5;
    case 2:
        return (r - offset) * 0.0038910505836575876 + 0.5;
    case 4:
        return (r - offset) * 5.937181414556033e-08 + 0.5;
    default:
        return (r - minimum) / (static_cast<double>(Limits::max()) - minimum) * 255.0 + 0.5;
    }
}

template <class Channel>
class FilteredToByteTest : public testing::Test {};
using Integers = testing::Types<std::int8_t, std::int16_t, std::int32_t, std::int64_t, std::uint8_t, std::uint16_t,
                                std::uint32_t, std::uint64_t>;
TYPED_TEST_SUITE(FilteredToByteTest, Integers);

TYPED_TEST(FilteredToByteTest, FollowsTheTableAndClamps) {
    const auto minimum = static_cast<double>(std::numeric_limits<TypeParam>::min());
    const auto maximum = static_cast<double>(std::numeric_limits<TypeParam>::max());
    for (int i = -2000; i <= 67000; ++i) {
        const double value = minimum + (maximum - minimum) * (i / 65000.0);
        const double level = TableLevel<TypeParam>(value);
        const int expected = level < 0 ? 0 : level > 255 ? 255 : static_cast<int>(level);
        ASSERT_EQ(FilteredToByte<TypeParam>(value), expected) << i;
    }
    EXPECT_EQ(FilteredToByte<TypeParam>(minimum), 0);
    EXPECT_EQ(FilteredToByte<TypeParam>(maximum), 255);
    EXPECT_EQ(FilteredToByte<TypeParam>(-1e30), 0);
    EXPECT_EQ(FilteredToByte<TypeParam>(1e30), 255);
}

TEST(FilteredToByte, FloatsKeepTheLowByte) {
    EXPECT_EQ(FilteredToByte<float>(0.5), 128);
    EXPECT_EQ(FilteredToByte<double>(1.0), 255);
    EXPECT_EQ(FilteredToByte<float>(1.5), 383 & 0xFF);
    EXPECT_EQ(FilteredToByte<double>(-1.0), static_cast<std::uint8_t>(-254));
}

TYPED_TEST(FilteredToByteTest, OvershootGoesBackIntoTheRange) {
    using Colour = Data::ColorBGRA<TypeParam>;
    const auto minimum = static_cast<double>(std::numeric_limits<TypeParam>::min());
    const auto maximum = static_cast<double>(std::numeric_limits<TypeParam>::max());
    EXPECT_EQ(ClampOvershoot<TypeParam>(minimum - 1e20), minimum);
    EXPECT_EQ(ClampOvershoot<TypeParam>(maximum + 1e20), maximum);
    EXPECT_EQ(ClampOvershoot<TypeParam>(5.25), 5.25);
    EXPECT_EQ(ClampOvershoot<Colour>(minimum - 1e20), minimum);
    EXPECT_EQ(ClampOvershoot<Colour>(maximum + 1e20), maximum);
}

TEST(ClampOvershoot, GreyFloatsGoToZeroToOneAndColourFloatsStay) {
    EXPECT_EQ(ClampOvershoot<float>(-0.25), 0.0);
    EXPECT_EQ(ClampOvershoot<double>(1.25), 1.0);
    EXPECT_EQ(ClampOvershoot<float>(0.75), 0.75);
    EXPECT_EQ(ClampOvershoot<Data::ColorBGRA<float>>(-0.25), -0.25);
    EXPECT_EQ(ClampOvershoot<Data::ColorBGRA<double>>(1.25), 1.25);
}

TEST(SampleToColor, GreyFillsThreeChannelsAndIsOpaque) {
    EXPECT_EQ(SampleToColor(std::uint8_t{7}), (Color{7, 7, 7, 255}));
    EXPECT_EQ(FilteredToColor<std::uint8_t>({7.0}), (Color{7, 7, 7, 255}));
}

TEST(SampleToColor, EachChannelIsConvertedOnItsOwn) {
    const Data::ColorBGRA<std::int16_t> sample{-32768, 32767, 0, -1};
    EXPECT_EQ(SampleToColor(sample), (Color{0, 255, 128, 127}));
    EXPECT_EQ(FilteredToColor<Data::ColorBGRA<std::uint8_t>>({0.4, 0.5, 300.0, -7.0}), (Color{0, 1, 255, 0}));
}

TEST(ChannelToByte, RoundsAndLeavesTheLimits) {
    EXPECT_EQ(ToColor({0.0f, 1.0f, 0.5f, 0.25f}), (Color{0, 255, 128, 64}));
}

} // namespace

} // namespace Quorvex::Platform::Video::Software
