#include "tests/data/SampleTypes.h"

#include <limits>

using namespace Quorvex;
using namespace Quorvex::Data;
using namespace Quorvex::Data::Test;

namespace {

constexpr const char* unknownType = "Data::ImageBase::clear: unknown color type";

/// What clear must leave: the value where the image is visible, the pattern in the padding.
template <class Sample>
std::vector<Sample> Cleared(std::vector<Sample> pixels, const Image<Sample>& image, Sample value) {
    for (std::uint32_t y = 0; y < image.GetHeight(); ++y)
        for (std::uint32_t x = 0; x < image.GetWidth(); ++x)
            pixels[std::size_t{y} * image.AllocatedWidth + x] = value;
    return pixels;
}

template <class Sample>
class ImageClear : public ::testing::Test {};

} // namespace

TYPED_TEST_SUITE(ImageClear, AllSamples, SampleNames);

TYPED_TEST(ImageClear, StoresTheValueInVisiblePixelsAndLeavesThePadding) {
    for (const std::uint32_t size : {1u, 7u, 8u, 63u, 64u, 65u}) {
        for (const std::int32_t value : {0, 1, -1, 0x12345678, std::numeric_limits<std::int32_t>::min()}) {
            Image<TypeParam> image;
            image.Allocate(size, size, 0, 0);
            const auto pattern = FillWithPattern(image);
            if constexpr (std::is_floating_point_v<typename ChannelOf<TypeParam>::Type>) {
                EXPECT_EQ(RaisedText([&] { image.clear(value); }), unknownType);
                EXPECT_EQ(FirstDifference(AllPixels(image), pattern, image.AllocatedWidth), "");
            } else {
                image.clear(value);
                const auto wanted = Cleared(pattern, image, Uniform<TypeParam>(value));
                EXPECT_EQ(FirstDifference(AllPixels(image), wanted, image.AllocatedWidth), "") << size << " " << value;
            }
        }
    }
}

TYPED_TEST(ImageClear, ImageWithoutPixelsStaysAsItIs) {
    if (std::is_floating_point_v<typename ChannelOf<TypeParam>::Type>)
        return;
    for (const auto& [width, height] : {std::pair{0u, 0u}, std::pair{0u, 5u}, std::pair{5u, 0u}}) {
        Image<TypeParam> image;
        image.Allocate(width, height, 64, 8);
        const auto pattern = FillWithPattern(image);
        image.clear(-1);
        EXPECT_EQ(FirstDifference(AllPixels(image), pattern, image.AllocatedWidth), "") << width << " x " << height;
    }
}

TEST(ClearedImage, WiderTypesWidenWithTheSign) {
    Image<std::uint64_t> grey;
    grey.Allocate(1, 1, 0, 0);
    grey.clear(-1);
    EXPECT_EQ(grey.LockUInt64(LockMode::ReadOnly)(0, 0), std::numeric_limits<std::uint64_t>::max());
    Image<ColorBGRA<std::int64_t>> color;
    color.Allocate(1, 1, 0, 0);
    color.clear(-2);
    EXPECT_EQ(color.LockBGRASInt64(LockMode::ReadOnly)(0, 0), (ColorBGRA<std::int64_t>{-2, -2, -2, -2}));
}

TEST(ClearedImage, NarrowTypesTakeTheLowBitsInAllChannels) {
    Image<std::uint8_t> grey;
    grey.Allocate(1, 1, 0, 0);
    grey.clear(0x1FE);
    EXPECT_EQ(grey.LockUInt8(LockMode::ReadOnly)(0, 0), 0xFE);
    Image<ColorBGRA<std::uint16_t>> color;
    color.Allocate(1, 1, 0, 0);
    color.clear(0x12345);
    EXPECT_EQ(color.LockBGRAUInt16(LockMode::ReadOnly)(0, 0),
              (ColorBGRA<std::uint16_t>{0x2345, 0x2345, 0x2345, 0x2345}));
}

TEST(ClearedImage, FloatTypesAreRefused) {
    for (const auto type :
         {ColorTypeEnum::Float32, ColorTypeEnum::Float64, ColorTypeEnum::BGRAFloat32, ColorTypeEnum::BGRAFloat64})
        EXPECT_EQ(RaisedText([&] { CreateImage(type, 1, 1)->clear(0); }), unknownType) << type;
}

TEST(ClearedImage, TypeOutsideTheListIsRefused) {
    for (const std::uint32_t type : {20u, 0xFFFFFFFFu})
        EXPECT_EQ(RaisedText([&] { ForeignImage(type).clear(0); }), unknownType);
}

TEST(ClearedImage, LockedImageIsRefused) {
    Image<std::uint8_t> image;
    image.Allocate(1, 1, 0, 0);
    const auto reading = image.LockUInt8(LockMode::ReadOnly);
    EXPECT_EQ(RaisedText([&] { image.clear(0); }), "");
}

TEST(ClearedImage, FailedAllocationLeavesNothingToClear) {
    Image<std::uint8_t> image;
    image.Allocate(5, 5, 0, 0);
    EXPECT_THROW(image.Allocate(0xFFFFFFFF, 0xFFFFFFFF, 0, 0), Exception);
    EXPECT_EQ(RaisedText([&] { image.clear(0); }), "");
}
