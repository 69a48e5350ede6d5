#include "tests/data/SampleTypes.h"

using namespace Quorvex;
using namespace Quorvex::Data;
using namespace Quorvex::Data::Test;

namespace {

/// The border pixel by pixel, as its description reads: columns first, in every row in memory, then rows over the whole
/// row length.
template <class Sample>
std::vector<Sample> Bordered(std::vector<Sample> pixels, const Image<Sample>& image) {
    const std::uint32_t width = image.GetWidth(), height = image.GetHeight();
    const std::uint32_t rowLength = image.AllocatedWidth, rows = image.AllocatedHeight;
    const auto at = [&](std::uint32_t x, std::uint32_t y) -> Sample& { return pixels[std::size_t{y} * rowLength + x]; };
    for (std::uint32_t x = width; x < width + 2 && x < rowLength; ++x)
        for (std::uint32_t y = 0; y < rows; ++y)
            at(x, y) = at(width - 1, y);
    for (std::uint32_t y = height; y < height + 2 && y < rows; ++y)
        for (std::uint32_t x = 0; x < rowLength; ++x)
            at(x, y) = at(x, height - 1);
    return pixels;
}

template <class Sample>
class ImagePaintBorder : public ::testing::Test {};

} // namespace

TYPED_TEST_SUITE(ImagePaintBorder, AllSamples, SampleNames);

TYPED_TEST(ImagePaintBorder, ReplicatesTheEdgeAndNothingElse) {
    for (const std::uint32_t width : {1u, 7u, 62u, 63u, 64u, 65u}) {
        for (const std::uint32_t height : {1u, 6u, 7u, 8u, 9u}) {
            Image<TypeParam> image;
            image.Allocate(width, height, 0, 0);
            const auto pattern = FillWithPattern(image);
            image.PaintBorder();
            EXPECT_EQ(FirstDifference(AllPixels(image), Bordered(pattern, image), image.AllocatedWidth), "")
                << width << " x " << height;
        }
    }
}

TYPED_TEST(ImagePaintBorder, CornerRepeatsTheLastPixel) {
    Image<TypeParam> image;
    image.Allocate(3, 2, 0, 0);
    const auto pattern = FillWithPattern(image);
    image.PaintBorder();
    const auto pixels = AllPixels(image);
    for (const std::uint32_t y : {2u, 3u})
        for (const std::uint32_t x : {3u, 4u})
            EXPECT_EQ(pixels[y * 64 + x], pattern[1 * 64 + 2]);
}

TYPED_TEST(ImagePaintBorder, ImageWithoutPixelsHasNoEdge) {
    Image<TypeParam> image;
    EXPECT_NO_THROW(image.PaintBorder());
    image.Allocate(0, 0, 0, 0);
    EXPECT_NO_THROW(image.PaintBorder());
    image.Allocate(0, 0, 64, 8);
    EXPECT_EQ(RaisedText([&] { image.PaintBorder(); }), "");
}

TEST(BorderedImage, Width64HasNoColumnPadding) {
    Image<std::uint8_t> image;
    image.Allocate(64, 3, 0, 0);
    const auto pattern = FillWithPattern(image);
    image.PaintBorder();
    const auto pixels = AllPixels(image);
    EXPECT_TRUE(std::equal(pixels.begin(), pixels.begin() + 3 * 64, pattern.begin()));
}

TEST(BorderedImage, Width65WritesTwoOf63PaddingPixels) {
    Image<std::uint8_t> image;
    image.Allocate(65, 8, 0, 0);
    ASSERT_EQ(image.AllocatedWidth, 128u);
    const auto pattern = FillWithPattern(image);
    image.PaintBorder();
    const auto pixels = AllPixels(image);
    EXPECT_EQ(pixels[65], pattern[64]);
    EXPECT_EQ(pixels[66], pattern[64]);
    EXPECT_TRUE(std::equal(pixels.begin() + 67, pixels.begin() + 128, pattern.begin() + 67));
}

TEST(BorderedImage, Height7HasOnePaddingRowAndHeight8None) {
    Image<std::uint8_t> image;
    image.Allocate(64, 7, 0, 0);
    ASSERT_EQ(image.AllocatedHeight, 8u);
    auto pattern = FillWithPattern(image);
    image.PaintBorder();
    const auto pixels = AllPixels(image);
    EXPECT_TRUE(std::equal(pixels.begin() + 7 * 64, pixels.end(), pattern.begin() + 6 * 64));
    image.Allocate(64, 8, 0, 0);
    pattern = FillWithPattern(image);
    image.PaintBorder();
    EXPECT_EQ(AllPixels(image), pattern);
}

TEST(BorderedImage, FloatImageHasABorderToo) {
    Image<float> image;
    image.Allocate(1, 1, 0, 0);
    image.LockFloat32(LockMode::ReadWrite)(0, 0) = 0.25f;
    image.PaintBorder();
    EXPECT_EQ(image.LockFloat32(LockMode::ReadOnly)(2, 2), 0.25f);
}

TEST(BorderedImage, TypeOutsideTheListIsRefused) {
    for (const std::uint32_t type : {20u, 0xFFFFFFFFu})
        EXPECT_EQ(RaisedText([&] { ForeignImage(type).PaintBorder(); }),
                  "Data::ImageBase::PaintBorder: unknown color type");
}

TEST(BorderedImage, LockedImageIsRefused) {
    Image<std::uint8_t> image;
    image.Allocate(1, 1, 0, 0);
    const auto reading = image.LockUInt8(LockMode::ReadOnly);
    EXPECT_EQ(RaisedText([&] { image.PaintBorder(); }), "");
}
