#include "tests/data/AllocationProbe.h"
#include "tests/data/SampleTypes.h"

#include <limits>

using namespace Quorvex;
using namespace Quorvex::Data;
using namespace Quorvex::Data::Test;

template <class Sample>
class ImageAllocate : public ::testing::Test {};
TYPED_TEST_SUITE(ImageAllocate, AllSamples, SampleNames);

TYPED_TEST(ImageAllocate, NewImageHasNoPixels) {
    const Image<TypeParam> image;
    EXPECT_EQ(image.GetWidth(), 0u);
    EXPECT_EQ(image.GetHeight(), 0u);
    EXPECT_EQ(image.AllocatedWidth, 0u);
    EXPECT_EQ(image.AllocatedHeight, 0u);
    const auto pixels = SampleTraits<TypeParam>::LockIn(image, LockMode::ReadOnly);
    EXPECT_EQ(pixels.Data, nullptr);
}

TYPED_TEST(ImageAllocate, RowsAreMultiplesOf64PixelsAndOf8Rows) {
    for (const std::uint32_t size : {1u, 7u, 8u, 9u, 63u, 64u, 65u, 128u}) {
        Image<TypeParam> image;
        image.Allocate(size, size, 0, 0);
        EXPECT_EQ(image.GetWidth(), size);
        EXPECT_EQ(image.GetHeight(), size);
        EXPECT_EQ(image.AllocatedWidth, (size + 63) / 64 * 64) << size;
        EXPECT_EQ(image.AllocatedHeight, (size + 7) / 8 * 8) << size;
    }
}

TYPED_TEST(ImageAllocate, FirstPixelLiesOn16BytesAndAllPixelsAreWritable) {
    for (const std::uint32_t size : {1u, 65u, 200u}) {
        Image<TypeParam> image;
        void* const first = image.Allocate(size, size, 0, 0);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % 16, 0u);
        const auto pixels = SampleTraits<TypeParam>::LockIn(image, LockMode::ReadWrite);
        EXPECT_EQ(static_cast<void*>(pixels.Data), first);
        const std::size_t bytes = sizeof(TypeParam) * pixels.AllocatedWidth * pixels.AllocatedHeight;
        std::memset(static_cast<void*>(pixels.Data), 0xA5, bytes);
        EXPECT_EQ(&pixels(size - 1, size - 1), pixels.Data + (size - 1) * pixels.AllocatedWidth + size - 1);
    }
}

TYPED_TEST(ImageAllocate, RequestedSizesAreRoundedInTheSameWay) {
    Image<TypeParam> image;
    image.Allocate(10, 10, 65, 17);
    EXPECT_EQ(image.GetWidth(), 10u);
    EXPECT_EQ(image.GetHeight(), 10u);
    EXPECT_EQ(image.AllocatedWidth, 128u);
    EXPECT_EQ(image.AllocatedHeight, 24u);
}

TYPED_TEST(ImageAllocate, RequestBelowTheImageDoesNotCutIt) {
    Image<TypeParam> image;
    image.Allocate(100, 50, 10, 9);
    EXPECT_EQ(image.AllocatedWidth, 128u);
    EXPECT_EQ(image.AllocatedHeight, 56u);
}

TYPED_TEST(ImageAllocate, SecondAllocationReplacesTheFirst) {
    Image<TypeParam> image;
    image.Allocate(100, 100, 0, 0);
    image.Allocate(3, 4, 0, 0);
    EXPECT_EQ(image.GetWidth(), 3u);
    EXPECT_EQ(image.GetHeight(), 4u);
    EXPECT_EQ(image.AllocatedWidth, 64u);
    EXPECT_EQ(image.AllocatedHeight, 8u);
    EXPECT_EQ(FillWithPattern(image).size(), 64u * 8);
}

TYPED_TEST(ImageAllocate, OverflowRaisesWithoutTextAndLeavesNoPixels) {
    Image<TypeParam> image;
    image.Allocate(5, 6, 0, 0);
    const std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
    EXPECT_EQ(RaisedText([&] { image.Allocate(most, most, 0, 0); }), "");
    EXPECT_EQ(image.GetWidth(), 5u);
    EXPECT_EQ(image.GetHeight(), 6u);
    {
        const auto pixels = SampleTraits<TypeParam>::LockIn(image, LockMode::ReadWrite);
        EXPECT_EQ(pixels.Data, nullptr);
        EXPECT_THROW(pixels(0, 0), Exception);
    }
    EXPECT_THROW(image.PaintBorder(), Exception);
}

TYPED_TEST(ImageAllocate, MemoryThatRunsOutLeavesNoPixels) {
    Image<TypeParam> image;
    image.Allocate(5, 6, 0, 0);
    {
        const AllocationProbe probe(1024);
        EXPECT_THROW(image.Allocate(1000, 1000, 0, 0), std::bad_alloc);
        EXPECT_EQ(probe.GetLargest(), std::size_t{1024} * 1000 * sizeof(TypeParam) + 15);
    }
    EXPECT_EQ(image.GetWidth(), 5u);
    EXPECT_EQ(image.GetHeight(), 6u);
    const auto pixels = SampleTraits<TypeParam>::LockIn(image, LockMode::ReadOnly);
    EXPECT_EQ(pixels.Data, nullptr);
}

TEST(ComputeAllocation, OneGreyPixel) {
    const Allocation allocation = ComputeAllocation(1, 1, 0, 0, 1);
    EXPECT_EQ(allocation.allocatedWidth, 64u);
    EXPECT_EQ(allocation.allocatedHeight, 8u);
    EXPECT_EQ(allocation.bytes, 64u * 8 + 15);
}

TEST(ComputeAllocation, HundredByFiftyOfTheWidestType) {
    const Allocation allocation = ComputeAllocation(100, 50, 0, 0, sizeof(ColorBGRA<double>));
    EXPECT_EQ(allocation.allocatedWidth, 128u);
    EXPECT_EQ(allocation.allocatedHeight, 56u);
    EXPECT_EQ(allocation.bytes, 128u * 56 * 32 + 15);
}

TEST(ComputeAllocation, WithoutPixelsOnlyTheAlignmentIsLeft) {
    const Allocation allocation = ComputeAllocation(0, 0, 0, 0, 4);
    EXPECT_EQ(allocation.allocatedWidth, 0u);
    EXPECT_EQ(allocation.allocatedHeight, 0u);
    EXPECT_EQ(allocation.bytes, 15u);
}

TEST(ComputeAllocation, EachOf32BitsIsTheLimit) {
    // Eight rows of 2^29 - 64 bytes and 15 more still fit; with one more pixel a row has 2^29.
    EXPECT_EQ(ComputeAllocation(0x1FFFFFC0, 8, 0, 0, 1).bytes, 0xFFFFFE00u + 15);
    EXPECT_EQ(RaisedText([] { ComputeAllocation(0x1FFFFFC1, 8, 0, 0, 1); }), "");
    const std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
    EXPECT_EQ(RaisedText([&] { ComputeAllocation(most, 1, 0, 0, 1); }), "");
    EXPECT_EQ(RaisedText([&] { ComputeAllocation(1, most, 0, 0, 1); }), "");
    EXPECT_EQ(RaisedText([&] { ComputeAllocation(1, 1, most, 0, 1); }), "");
    EXPECT_EQ(RaisedText([&] { ComputeAllocation(1, 1, 0, most, 1); }), "");
    EXPECT_EQ(RaisedText([&] { ComputeAllocation(most, most, most, most, 32); }), "");
    // Rows that fit 32 bits after rounding, and a width of zero, do not hide a row count that does not.
    EXPECT_EQ(RaisedText([&] { ComputeAllocation(0, most, 0, 0, 1); }), "");
}

TEST(CreateImage, MakesAnAllocatedImageOfEachType){
#define QUORVEX_CHECK(value, name, sample)                                                                             \
    {                                                                                                                  \
        const auto image = CreateImage(ColorTypeEnum::name, 65, 7);                                                    \
        EXPECT_TRUE(image.DynamicCast<Image<sample>>()) << #name;                                                      \
        EXPECT_EQ(image->ColorType, ColorTypeEnum::name);                                                              \
        EXPECT_EQ(image->GetWidth(), 65u);                                                                             \
        EXPECT_EQ(image->AllocatedWidth, 128u);                                                                        \
        EXPECT_EQ(image->AllocatedHeight, 8u);                                                                         \
    }
    QUORVEX_SAMPLE_TYPES(QUORVEX_CHECK)
#undef QUORVEX_CHECK
}

TEST(CreateImage, TypeOutsideTheListRaises) {
    EXPECT_EQ(RaisedText([] { CreateImage(static_cast<ColorTypeEnum::Value>(20), 1, 1); }), "unknown color type");
}
