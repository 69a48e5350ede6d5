#pragma once

#include "data/Dispatch.h"
#include "video/Truncation.h"

#include <array>
#include <limits>
#include <type_traits>

namespace Quorvex::Platform::Video::Software {

/// What the software backend draws with.
using Color = Data::ColorBGRA<std::uint8_t>;

/// Channels of 0..1, rounded.
constexpr Color ToColor(const Data::ColorBGRA<float>& color) {
    return {ChannelToByte(color.blue), ChannelToByte(color.green), ChannelToByte(color.red),
            ChannelToByte(color.alpha)};
}

template <class Sample>
inline constexpr std::size_t channelCount = Data::SampleTraits<Sample>::isColor ? 4 : 1;

template <class Sample>
using ChannelType = typename Data::ChannelOf<Sample>::Type;

/// The channels of one sample as 64-bit floats in the sample's own scale: grey, or blue, green, red, alpha.
template <class Sample>
using Channels = std::array<double, channelCount<Sample>>;

template <class Sample>
Channels<Sample> ReadChannels(const Sample& sample) {
    if constexpr (Data::SampleTraits<Sample>::isColor)
        return {static_cast<double>(sample.blue), static_cast<double>(sample.green), static_cast<double>(sample.red),
                static_cast<double>(sample.alpha)};
    else
        return {static_cast<double>(sample)};
}

/// A channel as it stands in the image to a byte, for programs that do not filter. Integers round to the nearest level
/// in integer arithmetic: the constant added is half the divisor, and the limit keeps the sum within the type. Floats
/// are not clamped: 1.5 wraps around.
template <class Channel>
constexpr std::uint8_t SampleToByte(Channel channel) {
    if constexpr (std::is_floating_point_v<Channel>) {
        return TruncateToLowByte(channel * 255.0 + 0.5);
    } else {
        using Unsigned = std::make_unsigned_t<Channel>;
        constexpr auto maximum = std::numeric_limits<Unsigned>::max();
        constexpr auto halfRange = static_cast<Unsigned>(maximum / 2 + 1);
        auto value = static_cast<Unsigned>(channel);
        if constexpr (std::is_signed_v<Channel>)
            value = static_cast<Unsigned>(value + halfRange);
        if constexpr (sizeof(Channel) == 1) {
            return value;
        } else {
            // 0x101, 0x1010101 and 0x101010101010101: the levels of 8 bits in the wider type.
            constexpr auto divisor = static_cast<Unsigned>(maximum / 255);
            constexpr auto half = static_cast<Unsigned>(divisor / 2);
            constexpr auto limit = static_cast<Unsigned>(maximum - half);
            return static_cast<std::uint8_t>(((value < limit ? value : limit) + half) / divisor);
        }
    }
}

/// The level of a filtered integer channel before it is clamped and cut off. The factors are the 64-bit floats nearest
/// to 255/65535 and 255/4294967295.
template <class Channel>
constexpr double FilteredLevel(double filtered) {
    constexpr auto minimum = static_cast<double>(std::numeric_limits<Channel>::min());
    constexpr auto maximum = static_cast<double>(std::numeric_limits<Channel>::max());
    if constexpr (sizeof(Channel) == 1)
        return (filtered - minimum) + 0.5;
    else if constexpr (sizeof(Channel) == 2)
        return (filtered - minimum) * 0.0038910505836575876 + 0.5;
    else if constexpr (sizeof(Channel) == 4)
        return (filtered - minimum) * 5.937181414556033e-08 + 0.5;
    else
        return (filtered - minimum) / (maximum - minimum) * 255.0 + 0.5;
}

/// A channel that linear, cubic and area programs have computed, in the sample's own scale, to a byte. Everything is a
/// 64-bit float: wider ones depend on a mode of the processor that differs between threads on some systems.
template <class Channel>
constexpr std::uint8_t FilteredToByte(double filtered) {
    if constexpr (std::is_floating_point_v<Channel>) {
        return TruncateToLowByte(filtered * 255.0 + 0.5);
    } else {
        const double level = FilteredLevel<Channel>(filtered);
        return level > 0.0 ? static_cast<std::uint8_t>(level < 255.0 ? level : 255.0) : std::uint8_t{0};
    }
}

/// Brings what the cubic kernel overshot back into the sample's range. Grey floats go to 0..1; colour floats stay.
template <class Sample>
constexpr double ClampOvershoot(double filtered) {
    using Channel = ChannelType<Sample>;
    using Limits = std::numeric_limits<Channel>;
    constexpr bool isFloat = std::is_floating_point_v<Channel>;
    if constexpr (isFloat && Data::SampleTraits<Sample>::isColor) {
        return filtered;
    } else {
        constexpr double minimum = isFloat ? 0.0 : static_cast<double>(Limits::min());
        constexpr double maximum = isFloat ? 1.0 : static_cast<double>(Limits::max());
        return filtered < minimum ? minimum : filtered > maximum ? maximum : filtered;
    }
}

/// A grey byte fills three channels and is opaque.
template <class Sample>
Color FilteredToColor(const Channels<Sample>& filtered) {
    using Channel = ChannelType<Sample>;
    if constexpr (Data::SampleTraits<Sample>::isColor) {
        return {FilteredToByte<Channel>(filtered[0]), FilteredToByte<Channel>(filtered[1]),
                FilteredToByte<Channel>(filtered[2]), FilteredToByte<Channel>(filtered[3])};
    } else {
        const std::uint8_t grey = FilteredToByte<Channel>(filtered[0]);
        return {grey, grey, grey, 255};
    }
}

template <class Sample>
constexpr Color SampleToColor(const Sample& sample) {
    if constexpr (Data::SampleTraits<Sample>::isColor) {
        return {SampleToByte(sample.blue), SampleToByte(sample.green), SampleToByte(sample.red),
                SampleToByte(sample.alpha)};
    } else {
        const std::uint8_t grey = SampleToByte(sample);
        return {grey, grey, grey, 255};
    }
}

} // namespace Quorvex::Platform::Video::Software
