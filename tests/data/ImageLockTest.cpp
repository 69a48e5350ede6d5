#include "tests/data/SampleTypes.h"
#include "tests/support/LogCapture.h"

#include <utility>

using namespace Quorvex;
using namespace Quorvex::Data;
using namespace Quorvex::Data::Test;

namespace {

/// An image that counts how often its last view has gone.
class HookedImage final : public ImageBase {
public:
    HookedImage() : ImageBase(ColorTypeEnum::UInt8) {}
    std::uint32_t GetWidth() const override { return 3; }
    std::uint32_t GetHeight() const override { return 2; }
    void* Allocate(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) override { return nullptr; }
    bool DeleteContextObjects() override { return true; }
    Lock<const std::uint8_t> LockUInt8(LockMode mode) const override { return {*this, mode, nullptr}; }
    Lock<std::uint8_t> LockUInt8(LockMode mode) override { return {*this, mode, nullptr}; }
    void OnUnlocked() const override { ++unlocked; }

    std::uint32_t GetLockCount() const { return LockCount; }
    std::uint32_t GetWriteLockCount() const { return WriteLockCount; }

    mutable int unlocked = 0;
};

constexpr auto anyOtherMode = static_cast<LockMode>(2);

template <class Sample>
class ImageLock : public ::testing::Test {};

} // namespace

TYPED_TEST_SUITE(ImageLock, AllSamples, SampleNames);

TYPED_TEST(ImageLock, ViewCarriesTheSizesOfItsImage) {
    Image<TypeParam> image;
    image.Allocate(65, 9, 0, 0);
    const auto view = SampleTraits<TypeParam>::LockIn(image, LockMode::ReadWrite);
    EXPECT_EQ(view.Mode, LockMode::ReadWrite);
    EXPECT_EQ(view.Owner, &image);
    EXPECT_EQ(view.Width, 65u);
    EXPECT_EQ(view.Height, 9u);
    EXPECT_EQ(view.AllocatedWidth, 128u);
    EXPECT_EQ(view.AllocatedHeight, 16u);
}

TYPED_TEST(ImageLock, AccessorIsCheckedAgainstTheAllocatedSize) {
    Image<TypeParam> image;
    image.Allocate(3, 2, 0, 0);
    const auto view = SampleTraits<TypeParam>::LockIn(image, LockMode::ReadWrite);
    EXPECT_NO_THROW(view(63, 7));
    EXPECT_EQ(&view(63, 7), view.Data + 64 * 8 - 1);
    EXPECT_EQ(RaisedText([&] { view(64, 0); }), "");
    EXPECT_EQ(RaisedText([&] { view(0, 8); }), "");
    EXPECT_EQ(RaisedText([&] { view(0xFFFFFFFF, 0); }), "");
    EXPECT_EQ(RaisedText([&] { view(0, 0xFFFFFFFF); }), "");
}

TYPED_TEST(ImageLock, EveryLockOfTheKindOfSampleSucceedsAndTheOthersNameThemselves) {
    Image<TypeParam> image;
    const void* const data = image.Allocate(1, 1, 0, 0);
    const ImageBase& constant = image;
    for (std::uint32_t type = 0; type < ColorTypeEnum::Count; ++type)
        Dispatch(static_cast<ColorTypeEnum::Value>(type), "outside", [&](auto tag) {
            using Traits = typename decltype(tag)::Traits;
            if (Traits::isColor == SampleTraits<TypeParam>::isColor) {
                EXPECT_EQ(static_cast<const void*>(Traits::LockIn(constant, LockMode::ReadOnly).Data), data);
                EXPECT_EQ(
                    static_cast<const void*>(Traits::LockIn(static_cast<ImageBase&>(image), LockMode::ReadWrite).Data),
                    data);
                return;
            }
            const std::string name = std::string("Lock") + Traits::typeName;
            const std::string constName = name + (Traits::isColor ? " const" : "");
            EXPECT_EQ(RaisedText([&] { Traits::LockIn(constant, LockMode::ReadOnly); }),
                      constName + " is not implemented");
            EXPECT_EQ(RaisedText([&] { Traits::LockIn(static_cast<ImageBase&>(image), LockMode::ReadWrite); }),
                      name + " is not implemented");
        });
}

TEST(LockView, TextsOfTheFailuresAsTheyAreWritten) {
    Image<std::uint8_t> grey;
    Image<ColorBGRA<std::uint8_t>> color;
    const ImageBase& constantGrey = grey;
    const ImageBase& constantColor = color;
    EXPECT_EQ(RaisedText([&] { grey.LockBGRAUInt8(LockMode::ReadOnly); }), "LockBGRAUInt8 is not implemented");
    EXPECT_EQ(RaisedText([&] { constantGrey.LockBGRAUInt8(LockMode::ReadOnly); }),
              "LockBGRAUInt8 const is not implemented");
    EXPECT_EQ(RaisedText([&] { color.LockUInt8(LockMode::ReadOnly); }), "LockUInt8 is not implemented");
    EXPECT_EQ(RaisedText([&] { constantColor.LockUInt8(LockMode::ReadOnly); }), "LockUInt8 is not implemented");
}

TEST(LockView, AnotherSampleTypeOfTheSameKindIsReinterpreted) {
    Image<std::int8_t> image;
    image.Allocate(2, 1, 0, 0);
    {
        const auto bytes = image.LockSInt8(LockMode::ReadWrite);
        bytes(0, 0) = -1;
    }
    EXPECT_EQ(image.LockUInt8(LockMode::ReadOnly)(0, 0), 255);
}

TEST(LockView, ManyReadViewsMayLiveAtOnce) {
    HookedImage image;
    const auto first = image.LockUInt8(LockMode::ReadOnly);
    const auto second = std::as_const(image).LockUInt8(LockMode::ReadOnly);
    EXPECT_EQ(image.GetLockCount(), 2u);
    EXPECT_EQ(image.GetWriteLockCount(), 0u);
}

TEST(LockView, WriteViewDuringAReadViewIsReportedAndLeavesTheCounters) {
    const Quorvex::Test::LogCapture log;
    HookedImage image;
    const auto reading = image.LockUInt8(LockMode::ReadOnly);
    EXPECT_EQ(RaisedText([&] { image.LockUInt8(LockMode::ReadWrite); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("Image::Lock")) << log.Text();
    EXPECT_EQ(image.GetLockCount(), 1u);
    EXPECT_EQ(image.GetWriteLockCount(), 0u);
}

TEST(LockView, WriteViewExcludesReadersAndWriters) {
    const Quorvex::Test::LogCapture log;
    HookedImage image;
    const auto writing = image.LockUInt8(LockMode::ReadWrite);
    EXPECT_EQ(image.GetLockCount(), 1u);
    EXPECT_EQ(image.GetWriteLockCount(), 1u);
    EXPECT_EQ(RaisedText([&] { image.LockUInt8(LockMode::ReadOnly); }), "");
    EXPECT_TRUE(log.HasLineEndingIn("Image::Lock")) << log.Text();
    EXPECT_EQ(RaisedText([&] { std::as_const(image).LockUInt8(LockMode::ReadOnly); }), "");
    EXPECT_EQ(RaisedText([&] { image.LockUInt8(LockMode::ReadWrite); }), "");
    EXPECT_EQ(image.GetLockCount(), 1u);
    EXPECT_EQ(image.GetWriteLockCount(), 1u);
}

TEST(LockView, AnyModeOtherThanReadOnlyIsAWriteLock) {
    HookedImage image;
    {
        const auto writing = image.LockUInt8(anyOtherMode);
        EXPECT_EQ(image.GetWriteLockCount(), 1u);
        EXPECT_THROW(image.LockUInt8(LockMode::ReadOnly), Exception);
    }
    EXPECT_EQ(image.GetWriteLockCount(), 0u);
    const auto reading = image.LockUInt8(LockMode::ReadOnly);
    EXPECT_THROW(image.LockUInt8(anyOtherMode), Exception);
}

TEST(LockView, HookRunsOnlyWhenTheLastViewGoes) {
    HookedImage image;
    {
        const auto first = image.LockUInt8(LockMode::ReadOnly);
        { const auto second = image.LockUInt8(LockMode::ReadOnly); }
        EXPECT_EQ(image.unlocked, 0);
    }
    EXPECT_EQ(image.unlocked, 1);
    { const auto writing = image.LockUInt8(LockMode::ReadWrite); }
    EXPECT_EQ(image.unlocked, 2);
    EXPECT_EQ(image.GetLockCount(), 0u);
    EXPECT_EQ(image.GetWriteLockCount(), 0u);
}

TEST(LockView, RefusedViewDoesNotRunTheHook) {
    HookedImage image;
    {
        const auto reading = image.LockUInt8(LockMode::ReadOnly);
        EXPECT_THROW(image.LockUInt8(LockMode::ReadWrite), Exception);
        EXPECT_EQ(image.unlocked, 0);
    }
    EXPECT_EQ(image.unlocked, 1);
}
