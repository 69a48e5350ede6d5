#include "tests/video/software/SampleImages.h"
#include "video/software/PlainResampling.h"

#include <gtest/gtest.h>

#include <functional>

namespace Quorvex::Platform::Video::Software {

namespace {

using Mode = EnumResamplingMode;
using Real = long double;

// The four methods written down once more from their definitions, with nothing of the program: positions by proportion,
// kernels by the polynomials of the textbook, means by clipping each source pixel to the footprint. Only where a level
// lies close to a rounding edge may the program differ from this.

struct Axis {
    Real length; ///< Source pixels that the side shows.
    Real extent; ///< Destination pixels.
    bool reversed;
    std::int64_t count; ///< Visible source pixels.

    Real At(std::int32_t pixel) const {
        const Real share = (pixel + Real(0x1.fffffep-2)) / extent;
        return length * (reversed ? 1 - share : share);
    }
    std::int64_t Clamped(Real index) const {
        return std::clamp(static_cast<std::int64_t>(index), std::int64_t{0}, count - 1);
    }
};

struct Tap {
    std::int64_t index;
    Real weight;
};

Real CatmullRom(Real distance) {
    const Real d = std::abs(distance);
    if (d < 1)
        return (Real(1.5) * d - Real(2.5)) * d * d + 1;
    return d < 2 ? ((Real(-0.5) * d + Real(2.5)) * d - 4) * d + 2 : 0;
}

std::vector<Tap> Taps(Mode mode, const Axis& axis, std::int32_t pixel) {
    const Real position = axis.At(pixel);
    std::vector<Tap> taps;
    const Real footprint = axis.count / axis.extent;
    const Real reach = mode == Mode::Area ? footprint / 2 + 1 : 3;
    for (Real index = std::floor(position - reach); index <= position + reach; index += 1) {
        Real weight = 0;
        if (mode == Mode::Nearest)
            weight = std::floor(position) == index ? 1 : 0;
        else if (mode == Mode::Linear)
            weight = std::max(Real(0), 1 - std::abs(index + Real(0.5) - position));
        else if (mode == Mode::Cubic)
            weight = CatmullRom(index + Real(0.5) - position);
        else
            weight = std::max(Real(0), std::min(index + 1, position + footprint / 2) -
                                           std::max(index, position - footprint / 2)) /
                     footprint;
        if (weight != 0)
            taps.push_back({axis.Clamped(index), weight});
    }
    return taps;
}

/// A value of a sample's range as a level from 0 to 255, not yet rounded.
template <class Channel>
Real Level(Real value, Mode mode, bool isColor) {
    if constexpr (std::is_floating_point_v<Channel>) {
        return 255 * (mode == Mode::Cubic && !isColor ? std::clamp(value, Real(0), Real(1)) : value);
    } else {
        const Real low = std::numeric_limits<Channel>::min(), high = std::numeric_limits<Channel>::max();
        return std::clamp((value - low) / (high - low) * 255, Real(0), Real(255));
    }
}

template <class Sample>
class Reference {
public:
    Reference(const SharedPtr<Data::ImageBase>& image, const ImageRect& imageRect)
        : rect(imageRect), pixels(Data::SampleTraits<Sample>::LockIn(std::as_const(*image), Data::LockMode::ReadOnly)) {
        const bool isTurned = rect.rotation == 90 || rect.rotation == 270;
        const Axis across{pixels.AllocatedWidth * Real(float(double(pixels.Width) / pixels.AllocatedWidth)), 0, false,
                          pixels.Width};
        const Axis down{pixels.AllocatedHeight * Real(float(double(pixels.Height) / pixels.AllocatedHeight)), 0, false,
                        pixels.Height};
        x = isTurned ? down : across;
        y = isTurned ? across : down;
        x.extent = std::abs(rect.x1 - rect.x0);
        y.extent = std::abs(rect.y1 - rect.y0);
        x.reversed = (rect.rotation == 180 || rect.rotation == 270) != (rect.x0 > rect.x1);
        y.reversed = (rect.rotation == 180 || rect.rotation == 90) != (rect.y0 > rect.y1);
    }

    /// Whether the color is right for the pixel, given from the rectangle's corner.
    testing::AssertionResult Accepts(const Color& had, std::int32_t column, std::int32_t row) const {
        const std::uint8_t bytes[] = {had.blue, had.green, had.red, had.alpha};
        constexpr bool isColor = Data::SampleTraits<Sample>::isColor;
        if (!isColor && had.alpha != 255)
            return testing::AssertionFailure() << "alpha " << int(had.alpha);
        for (std::size_t channel = 0; channel < (isColor ? 4 : 3); ++channel) {
            const Real level = LevelAt(channel, column, row);
            // Colour floats that the cubic kernel carries past the ends wrap around.
            if (level < 0 || level > 255)
                continue;
            if (std::abs(bytes[channel] - level) > Real(0.5) + tolerance)
                return testing::AssertionFailure()
                       << "channel " << channel << " has " << int(bytes[channel]) << ", level " << double(level);
        }
        return testing::AssertionSuccess();
    }

private:
    // The programs work with 53 bits; positions up to 200 with a relative error of 32 roundings, times 255 levels.
    static constexpr Real tolerance = 1e-9L;

    Real LevelAt(std::size_t channel, std::int32_t column, std::int32_t row) const {
        using Channel = typename Data::ChannelOf<Sample>::Type;
        Real sum = 0;
        for (const Tap& down : Taps(rect.mode, y, row))
            for (const Tap& across : Taps(rect.mode, x, column)) {
                const bool isTurned = rect.rotation == 90 || rect.rotation == 270;
                const Sample& sample = isTurned ? pixels.Row(std::uint32_t(across.index))[down.index]
                                                : pixels.Row(std::uint32_t(down.index))[across.index];
                sum += down.weight * across.weight * Read(sample, channel);
            }
        return Level<Channel>(sum, rect.mode, Data::SampleTraits<Sample>::isColor);
    }

    static Real Read(const Sample& sample, std::size_t channel) {
        if constexpr (Data::SampleTraits<Sample>::isColor)
            return channel == 0 ? sample.blue : channel == 1 ? sample.green : channel == 2 ? sample.red : sample.alpha;
        else
            return sample;
    }

    ImageRect rect;
    Data::Lock<const Sample> pixels;
    Axis x{};
    Axis y{};
};

} // namespace

TEST(ReferenceResampling, ThePlainProgramsGiveTheTextbooksLevels) {
    RandomSamples random(12);
    for (std::uint32_t round = 0; round < 400; ++round) {
        const auto type = Data::ColorTypeEnum::Value(round % Data::ColorTypeEnum::Count);
        const auto image = MakeRandomImage(type, 1 + random.Below(60), 1 + random.Below(60), round);
        ImageRect rect;
        const std::int32_t width = 1 + static_cast<std::int32_t>(random.Below(70)),
                           height = 1 + static_cast<std::int32_t>(random.Below(70));
        (random.Below(2) != 0 ? rect.x0 : rect.x1) = width;
        (random.Below(2) != 0 ? rect.y0 : rect.y1) = height;
        rect.rotation = static_cast<std::int32_t>(random.Below(4) * 90);
        rect.mode = static_cast<Mode>(round / Data::ColorTypeEnum::Count % 4);
        std::vector<Color> drawn(std::size_t(width) * std::size_t(height));
        RenderPlain({drawn.data(), std::uint32_t(width), std::uint32_t(height)}, *image, rect, {0, 0, width, height});
        Data::Dispatch(type, "unknown color type", [&](auto tag) {
            const Reference<typename decltype(tag)::Sample> reference(image, rect);
            for (std::int32_t i = 0; i < 40; ++i) {
                const auto x = static_cast<std::int32_t>(random.Below(std::uint32_t(width)));
                const auto y = static_cast<std::int32_t>(random.Below(std::uint32_t(height)));
                ASSERT_TRUE(reference.Accepts(drawn[std::size_t(y * width + x)], x, y))
                    << "round " << round << " type " << type << " mode " << int(rect.mode) << " rotation "
                    << rect.rotation << " at " << x << ", " << y;
            }
        });
    }
}

namespace {

/// The area program of the devices, with the precision of their floats, on a texture that is clamped at its edges.
class FloatAreaProgram {
public:
    FloatAreaProgram(const SharedPtr<Data::ImageBase>& image, float destinationWidth, float destinationHeight)
        : pixels(image->LockUInt8(Data::LockMode::ReadOnly)), bufSizeX(float(pixels.AllocatedWidth)),
          bufSizeY(float(pixels.AllocatedHeight)),
          TCOffsetX(float(pixels.Width) / (2.0f * bufSizeX * destinationWidth)),
          TCOffsetY(float(pixels.Height) / (2.0f * bufSizeY * destinationHeight)) {}

    float At(float u, float v) const {
        const float x0 = (u - TCOffsetX) * bufSizeX, x1 = (u + TCOffsetX) * bufSizeX;
        const float y0 = (v - TCOffsetY) * bufSizeY, y1 = (v + TCOffsetY) * bufSizeY;
        float y = y0;
        float color = std::min(1.0f - (y - std::floor(y)), y1 - y) * ProcessRow(x0, x1, std::floor(y));
        for (y = std::floor(y) + 1.0f; y < y1; y++)
            color += std::clamp(y1 - y, 0.0f, 1.0f) * ProcessRow(x0, x1, y);
        return color / ((y1 - y0) * (x1 - x0));
    }

private:
    float ProcessRow(float x0, float x1, float y) const {
        float color = std::min(1.0f - (x0 - std::floor(x0)), x1 - x0) * Fetch(std::floor(x0), y);
        for (x0 = std::floor(x0) + 1.0f; x0 < x1; x0++)
            color += std::clamp(x1 - x0, 0.0f, 1.0f) * Fetch(x0, y);
        return color;
    }
    float Fetch(float x, float y) const {
        const auto column = static_cast<std::uint32_t>(std::clamp(x, 0.0f, bufSizeX - 1.0f));
        const auto row = static_cast<std::uint32_t>(std::clamp(y, 0.0f, bufSizeY - 1.0f));
        return float(pixels.Row(row)[column]) / 255.0f;
    }

    Data::Lock<std::uint8_t> pixels;
    float bufSizeX, bufSizeY, TCOffsetX, TCOffsetY;
};

} // namespace

TEST(ReferenceResampling, TheDevicesAreaProgramDiffersByRoundingOnly) {
    const auto image = MakeRandomImage(Data::ColorTypeEnum::UInt8, 256, 128);
    ImageRect rect;
    rect.x1 = 64;
    rect.y1 = 32;
    rect.mode = Mode::Area;
    std::vector<Color> drawn(64 * 32);
    RenderPlain({drawn.data(), 64, 32}, *image, rect, {0, 0, 64, 32});
    const FloatAreaProgram program(image, 64.0f, 32.0f);
    for (std::uint32_t y = 0; y < 32; ++y)
        for (std::uint32_t x = 0; x < 64; ++x) {
            const float level = program.At((float(x) + 0.5f) / 64.0f, (float(y) + 0.5f) / 32.0f) * 255.0f;
            EXPECT_NEAR(drawn[y * 64 + x].blue, level, 0.5 + 1e-3) << x << ", " << y;
        }
}

} // namespace Quorvex::Platform::Video::Software
