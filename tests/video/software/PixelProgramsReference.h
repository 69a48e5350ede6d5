#pragma once

#include "data/Image.h"
#include "video/Context.h"

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace Quorvex::Platform::Video::Software {

/// An image of a type: random pixels, and padding of another kind that no program may read.
template <class Sample>
SharedPtr<Data::ImageBase> MakeRandomImage(std::uint32_t width, std::uint32_t height, std::uint32_t seed) {
    using Channel = typename Data::ChannelOf<Sample>::Type;
    std::mt19937_64 random(seed);
    const auto channel = [&] {
        if constexpr (std::is_floating_point_v<Channel>)
            return static_cast<Channel>(static_cast<double>(random() >> 11) / 9007199254740992.0);
        else if (random() % 8 == 0)
            return random() % 2 ? std::numeric_limits<Channel>::max() : std::numeric_limits<Channel>::min();
        else
            return static_cast<Channel>(random());
    };
    SharedPtr<Data::ImageBase> image(new Data::Image<Sample>());
    image->Allocate(width, height, 0, 0);
    const auto pixels = Data::SampleTraits<Sample>::LockIn(*image, Data::LockMode::ReadWrite);
    for (std::uint32_t y = 0; y < pixels.AllocatedHeight; ++y)
        for (std::uint32_t x = 0; x < pixels.AllocatedWidth; ++x) {
            const bool isPadding = x >= width || y >= height;
            const auto value = [&] { return isPadding ? static_cast<Channel>(77) : channel(); };
            if constexpr (Data::SampleTraits<Sample>::isColor)
                pixels(x, y) = {value(), value(), value(), value()};
            else
                pixels(x, y) = value();
        }
    return image;
}

/// The pixel programs once more, one channel at a time, in the words of their definitions: a double per sample, and
/// loops without any sharing.
class ReferencePrograms {
public:
    /// What a channel's type is: its conversions go by these.
    struct Type {
        int bits;
        bool isSigned;
        bool isFloat;
        bool isColor;
    };

    template <class Sample>
    static ReferencePrograms Of(const Data::ImageBase& image) {
        using Channel = typename Data::ChannelOf<Sample>::Type;
        ReferencePrograms result;
        result.type = {static_cast<int>(sizeof(Channel)) * 8, std::is_signed_v<Channel>,
                       std::is_floating_point_v<Channel>, Data::SampleTraits<Sample>::isColor};
        const auto pixels = Data::SampleTraits<Sample>::LockIn(image, Data::LockMode::ReadOnly);
        result.width = static_cast<int>(pixels.Width);
        result.height = static_cast<int>(pixels.Height);
        for (int c = 0; c < (result.type.isColor ? 4 : 1); ++c)
            for (std::uint32_t y = 0; y < pixels.Height; ++y)
                for (std::uint32_t x = 0; x < pixels.Width; ++x)
                    result.Append(c, pixels(x, y));
        return result;
    }

    Data::ColorBGRA<std::uint8_t> Nearest(double px, double py) const;
    Data::ColorBGRA<std::uint8_t> Colorized(double px, double py, const Data::ColorBGRA<std::uint8_t>& color) const;
    Data::ColorBGRA<std::uint8_t> Linear(double px, double py) const;
    Data::ColorBGRA<std::uint8_t> Cubic(double px, double py) const;
    Data::ColorBGRA<std::uint8_t> Area(double px, double py, double sizeX, double sizeY) const;

private:
    template <class Sample>
    void Append(int c, const Sample& sample) {
        if constexpr (Data::SampleTraits<Sample>::isColor) {
            const auto values = {sample.blue, sample.green, sample.red, sample.alpha};
            AppendChannel(c, values.begin()[c]);
        } else {
            AppendChannel(c, sample);
        }
    }
    template <class Channel>
    void AppendChannel(int c, Channel value) {
        samples[c].push_back(static_cast<double>(value));
        if constexpr (!std::is_floating_point_v<Channel>)
            // Signed values count from the lowest one.
            integers[c].push_back(static_cast<std::uint64_t>(value) -
                                  static_cast<std::uint64_t>(std::numeric_limits<Channel>::min()));
    }

    std::size_t Place(double x, double y) const;
    double S(int c, double x, double y) const { return samples[c][Place(x, y)]; }
    int ExactByte(int c, double x, double y) const;
    int FilteredByte(double r) const;
    double CubicClamp(double r) const;
    template <class Channel>
    Data::ColorBGRA<std::uint8_t> Gather(const Channel& channel) const;

    Type type{};
    int width = 0;
    int height = 0;
    std::vector<double> samples[4];
    std::vector<std::uint64_t> integers[4];
};

} // namespace Quorvex::Platform::Video::Software
