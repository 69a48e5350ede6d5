#include "video/software/FastResampling.h"
#include "tests/video/software/SampleImages.h"

#include <gtest/gtest.h>

#include <cstring>

namespace Quorvex::Platform::Video::Software {

namespace {

using Mode = EnumResamplingMode;
using Data::ColorTypeEnum;

constexpr Mode modes[] = {Mode::Cubic, Mode::Linear, Mode::Nearest, Mode::Area};
constexpr std::int32_t rotations[] = {0, 90, 180, 270};

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool isSlowBuild = true;
#else
constexpr bool isSlowBuild = false;
#endif

std::vector<InstructionSet> InstructionSets() {
    if (BestInstructionSet() == InstructionSet::Baseline)
        return {InstructionSet::Baseline};
    return {InstructionSet::Baseline, BestInstructionSet()};
}

/// A target between two bands of bytes that must stay as they are.
class GuardedTarget {
public:
    GuardedTarget(std::uint32_t targetWidth, std::uint32_t targetHeight)
        : width(targetWidth), height(targetHeight), memory(guard * 2 + std::size_t(width) * height, filling) {}

    PixelTarget Get() { return {memory.data() + guard, width, height}; }
    bool operator==(const GuardedTarget& other) const { return memory == other.memory; }
    bool IsGuardWhole() const {
        return std::all_of(memory.begin(), memory.begin() + guard, [](Color color) { return color == filling; }) &&
               std::all_of(memory.end() - guard, memory.end(), [](Color color) { return color == filling; });
    }
    std::string FirstDifference(const GuardedTarget& other) const {
        for (std::size_t i = 0; i < memory.size(); ++i)
            if (!(memory[i] == other.memory[i])) {
                std::ostringstream text;
                const auto at = static_cast<std::ptrdiff_t>(i - guard);
                text << "pixel " << at % std::ptrdiff_t(width) << ", " << at / std::ptrdiff_t(width) << ":";
                for (const Color& color : {memory[i], other.memory[i]})
                    text << " (" << int(color.blue) << "," << int(color.green) << "," << int(color.red) << ","
                         << int(color.alpha) << ")";
                return text.str();
            }
        return "none";
    }

private:
    static constexpr std::size_t guard = 64;
    static constexpr Color filling{0xA5, 0x5A, 0xC3, 0x3C};
    std::uint32_t width;
    std::uint32_t height;
    std::vector<Color> memory;
};

std::string Description(const Data::ImageBase& image, const ImageRect& rect, const PixelRegion& region) {
    std::ostringstream text;
    text << "type " << image.ColorType << " image " << image.GetWidth() << "x" << image.GetHeight() << " mode "
         << int(rect.mode) << " rotation " << rect.rotation << " rect " << rect.x0 << "," << rect.y0 << " - " << rect.x1
         << "," << rect.y1 << " region " << region.left << "," << region.top << " - " << region.right << ","
         << region.bottom;
    return text.str();
}

class FastResamplingTest : public testing::Test {
protected:
    FastResamplingTest() {
        for (const InstructionSet instructions : InstructionSets())
            kernels.push_back(std::make_unique<FastResampling>(instructions));
    }

    /// Whether every instruction set gives the plain program's bytes and writes nothing else.
    void Compare(const Data::ImageBase& image, const ImageRect& rect, const PixelRegion& region, std::uint32_t width,
                 std::uint32_t height) {
        GuardedTarget plain(width, height);
        RenderPlain(plain.Get(), image, rect, region);
        for (const auto& kernel : kernels) {
            GuardedTarget fast(width, height);
            kernel->Render(fast.Get(), image, rect, region);
            ASSERT_TRUE(fast.IsGuardWhole()) << Description(image, rect, region);
            ASSERT_TRUE(fast == plain) << Description(image, rect, region) << "\nfast and plain differ first at "
                                       << fast.FirstDifference(plain);
        }
    }

    std::vector<std::unique_ptr<FastResampling>> kernels;
};

/// One of a matrix of cases: the sizes of image and rectangle, and what of the target is drawn.
struct Placement {
    std::uint32_t imageWidth, imageHeight;
    std::int32_t x0, y0, x1, y1;
    PixelRegion region;
};

constexpr std::uint32_t targetWidth = 29, targetHeight = 23;
constexpr PixelRegion whole{0, 0, targetWidth, targetHeight};

constexpr Placement placements[] = {
    {7, 9, 3, 2, 10, 11, whole},                        // 1:1
    {9, 7, 0, 0, 27, 21, whole},                        // 1:3
    {13, 11, -60, -40, 148, 136, whole},                // 1:16, mostly outside
    {63, 65, 1, 1, 24, 20, {5, 3, 17, 19}},             // reduced by an odd factor, clipped
    {64, 64, 4, 3, 20, 19, whole},                      // 4:1
    {65, 63, -7, 5, 26, 36, {0, 0, 29, 11}},            // about 2:1, partly outside
    {1, 1, 2, 3, 25, 19, whole},                        // a single pixel
    {1, 8, 5, 0, 8, 23, whole},                         // a single column
    {8, 2, 0, 4, 29, 9, {1, 5, 28, 8}},                 // two rows
    {130, 5, 2, 2, 3, 22, whole},                       // all columns into one
    {31, 40, 6, 4, 18, 5, whole},                       // all rows into one
    {127, 129, -3000, -3000, 3001, 3003, {2, 2, 3, 3}}, // a single pixel of the target
};

} // namespace

TEST_F(FastResamplingTest, EqualsThePlainProgramsForAllTypesModesTurnsAndMirrorings) {
    for (const Placement& place : placements)
        for (std::uint32_t type = 0; type < ColorTypeEnum::Count; ++type) {
            const auto image =
                MakeRandomImage(ColorTypeEnum::Value(type), place.imageWidth, place.imageHeight, type + 1);
            for (const Mode mode : modes)
                for (const std::int32_t rotation : rotations)
                    for (std::uint32_t mirror = 0; mirror < 4; ++mirror) {
                        ImageRect rect;
                        rect.x0 = mirror & 1 ? place.x1 : place.x0;
                        rect.x1 = mirror & 1 ? place.x0 : place.x1;
                        rect.y0 = mirror & 2 ? place.y1 : place.y0;
                        rect.y1 = mirror & 2 ? place.y0 : place.y1;
                        rect.rotation = rotation;
                        rect.mode = mode;
                        ASSERT_NO_FATAL_FAILURE(Compare(*image, rect, place.region, targetWidth, targetHeight));
                    }
        }
}

TEST_F(FastResamplingTest, EqualsThePlainProgramsAtRandomPlaces) {
    RandomSamples random(20);
    const std::uint32_t rounds = isSlowBuild ? 300 : 5000;
    for (std::uint32_t round = 0; round < rounds; ++round) {
        const auto type = ColorTypeEnum::Value(random.Below(ColorTypeEnum::Count));
        const auto image = MakeRandomImage(type, 1 + random.Below(200), 1 + random.Below(200), round);
        const std::uint32_t width = 1 + random.Below(100), height = 1 + random.Below(40);
        const auto coordinate = [&random](std::uint32_t range) {
            return static_cast<std::int32_t>(random.Below(range * 3)) - static_cast<std::int32_t>(range);
        };
        ImageRect rect;
        rect.x0 = coordinate(width);
        rect.x1 = coordinate(width);
        rect.y0 = coordinate(height);
        rect.y1 = coordinate(height);
        rect.rotation = rotations[random.Below(4)];
        rect.mode = modes[random.Below(4)];
        const PixelRegion region{coordinate(width / 2 + 1), coordinate(height / 2 + 1),
                                 coordinate(width) + std::int32_t(width), coordinate(height) + std::int32_t(height)};
        ASSERT_NO_FATAL_FAILURE(Compare(*image, rect, region, width, height));
    }
}

TEST_F(FastResamplingTest, EqualsThePlainProgramsWhereEveryMeanIsATie) {
    // 0 and 255 in turn: half of the levels, to the last bit, lie between two bytes at whole reductions.
    const auto grating = MakeImage<Color>(96, 64, [](auto x, auto y) {
        return Color{std::uint8_t(x % 2 ? 255 : 0), std::uint8_t(y % 2), std::uint8_t((x + y) % 2 ? 254 : 1), 7};
    });
    for (const Mode mode : modes)
        for (const std::int32_t rotation : rotations)
            for (const std::int32_t size : {12, 16, 24, 32, 48, 64, 96, 128, 192, 384}) {
                ImageRect rect;
                rect.x1 = size;
                rect.y1 = size * 2 / 3;
                rect.mode = mode;
                rect.rotation = rotation;
                ASSERT_NO_FATAL_FAILURE(Compare(*grating, rect, {0, 0, 100, 70}, 100, 70));
            }
}

TEST_F(FastResamplingTest, EqualsThePlainProgramsForFloatsOfAnyValue) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const float values[] = {0.5f,
                            -0.25f,
                            1.5f,
                            -3.0f,
                            255.0f,
                            1e6f,
                            -1e9f,
                            3e38f,
                            infinity,
                            -infinity,
                            std::numeric_limits<float>::quiet_NaN(),
                            0.0f,
                            -0.0f,
                            1e-40f,
                            1.0f,
                            0.25f};
    RandomSamples random(3);
    for (std::uint32_t round = 0; round < 60; ++round) {
        // Ever more of the values are unusual ones, so that some rows have none.
        const auto pick = [&] {
            return random.Below(60) < round ? values[random.Below(std::size(values))] : random.Next<float>();
        };
        const auto grey = MakeImage<float>(40, 30, [&](auto, auto) { return pick(); });
        const auto color = MakeImage<Data::ColorBGRA<double>>(40, 30, [&](auto, auto) {
            return Data::ColorBGRA<double>{pick(), pick(), pick() * 1e300, pick()};
        });
        for (const Mode mode : modes) {
            ImageRect rect;
            rect.x1 = 20 + static_cast<std::int32_t>(random.Below(60));
            rect.y1 = 15 + static_cast<std::int32_t>(random.Below(30));
            rect.mode = mode;
            rect.rotation = rotations[random.Below(4)];
            ASSERT_NO_FATAL_FAILURE(Compare(*grey, rect, {0, 0, 50, 40}, 50, 40));
            ASSERT_NO_FATAL_FAILURE(Compare(*color, rect, {0, 0, 50, 40}, 50, 40));
        }
    }
}

TEST_F(FastResamplingTest, LargePicturesEqualThePlainProgramsOnSeveralThreads) {
    for (const auto type : {ColorTypeEnum::BGRAUInt8, ColorTypeEnum::UInt16, ColorTypeEnum::BGRAFloat32}) {
        const auto image = MakeRandomImage(type, 701, 503, 5);
        for (const Mode mode : modes)
            for (const std::int32_t rotation : {0, 90}) {
                ImageRect rect;
                rect.x0 = -13;
                rect.y0 = -11;
                rect.x1 = 324;
                rect.y1 = 295;
                rect.mode = mode;
                rect.rotation = rotation;
                ASSERT_NO_FATAL_FAILURE(Compare(*image, rect, {0, 0, 331, 301}, 331, 301));
            }
    }
}

TEST_F(FastResamplingTest, AnImageThatCannotBeReadRaises) {
    const auto image = MakeRandomImage(ColorTypeEnum::BGRAUInt8, 8, 8);
    GuardedTarget target(8, 8);
    ImageRect rect;
    rect.x1 = rect.y1 = 8;
    const auto lock = image->LockBGRAUInt8(Data::LockMode::ReadWrite);
    EXPECT_THROW(kernels[0]->Render(target.Get(), *image, rect, {0, 0, 8, 8}), Exception);
    const Data::Image<Color> withoutPixels;
    EXPECT_THROW(kernels[0]->Render(target.Get(), withoutPixels, rect, {0, 0, 8, 8}), Exception);
    EXPECT_THROW(RenderPlain(target.Get(), withoutPixels, rect, {0, 0, 8, 8}), Exception);
}

} // namespace Quorvex::Platform::Video::Software
