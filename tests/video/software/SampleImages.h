#pragma once

#include "data/Image.h"

#include <cmath>
#include <random>

namespace Quorvex::Platform::Video::Software {

/// Samples of any type from random numbers: the whole range of integers, with its ends more often than chance would
/// have them, and floats of 0 to 1.
class RandomSamples {
public:
    explicit RandomSamples(std::uint32_t seed) : random(seed) {}

    template <class Channel>
    Channel Next() {
        const std::uint64_t bits = random();
        if constexpr (std::is_floating_point_v<Channel>) {
            return static_cast<Channel>(static_cast<double>(bits >> 12) * 0x1p-52);
        } else {
            using Limits = std::numeric_limits<Channel>;
            if (bits % 16 == 0)
                return bits & 16 ? Limits::min() : Limits::max();
            return static_cast<Channel>(bits >> 8);
        }
    }

    template <class Sample>
    Sample NextSample() {
        if constexpr (Data::SampleTraits<Sample>::isColor) {
            using Channel = typename Data::ChannelOf<Sample>::Type;
            return {Next<Channel>(), Next<Channel>(), Next<Channel>(), Next<Channel>()};
        } else {
            return Next<Sample>();
        }
    }

    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); }

private:
    std::mt19937_64 random;
};

/// An image whose samples are make(x, y); padding holds the same, so that reading it shows.
template <class Sample, class Make>
SharedPtr<Data::ImageBase> MakeImage(std::uint32_t width, std::uint32_t height, const Make& make) {
    SharedPtr<Data::ImageBase> image(new Data::Image<Sample>());
    image->Allocate(width, height, 0, 0);
    const auto pixels = Data::SampleTraits<Sample>::LockIn(*image, Data::LockMode::ReadWrite);
    for (std::uint32_t y = 0; y < pixels.AllocatedHeight; ++y)
        for (std::uint32_t x = 0; x < pixels.AllocatedWidth; ++x)
            pixels(x, y) = make(x, y);
    return image;
}

inline SharedPtr<Data::ImageBase> MakeRandomImage(Data::ColorTypeEnum::Value type, std::uint32_t width,
                                                  std::uint32_t height, std::uint32_t seed = 1) {
    RandomSamples random(seed);
    return Data::Dispatch(type, "unknown color type", [&](auto tag) {
        using Sample = typename decltype(tag)::Sample;
        return MakeImage<Sample>(width, height, [&](auto, auto) { return random.template NextSample<Sample>(); });
    });
}

} // namespace Quorvex::Platform::Video::Software
