#pragma once

#include "codecs/tif/ColorMap.h"
#include "codecs/tif/LabColor.h"
#include "codecs/tif/Layout.h"
#include "codecs/tif/SampleFinish.h"
#include "data/Dispatch.h"

#include <algorithm>
#include <cmath>

namespace ET::Img::Tif {

/// The channels of a row as they come out of the file: those of one sample lie stride apart.
template <class Channel>
struct SampleRow {
    const Channel* colors[4];
    const Channel* alpha;
    std::size_t stride;
};

/// Full strength of a colour, and an alpha that hides what is behind.
template <class Channel>
constexpr Channel FullOf() {
    if constexpr (std::is_floating_point_v<Channel>)
        return 1;
    else
        return std::numeric_limits<Channel>::max();
}

/// value x factor / divisor, rounded and limited to the channel's range; the divisor is above 0.
template <class Channel>
Channel Scaled(Channel value, Channel factor, Channel divisor) {
    if constexpr (std::is_floating_point_v<Channel>) {
        return value * factor / divisor;
    } else if constexpr (std::is_unsigned_v<Channel> && sizeof(Channel) < 8) {
        const std::uint64_t scaled = (std::uint64_t{value} * factor + divisor / 2) / divisor;
        return static_cast<Channel>(std::min<std::uint64_t>(scaled, FullOf<Channel>()));
    } else {
        using Limits = std::numeric_limits<Channel>;
        const long double scaled = std::round(static_cast<long double>(value) * factor / divisor);
        return scaled >= static_cast<long double>(Limits::max())   ? Limits::max()
               : scaled <= static_cast<long double>(Limits::min()) ? Limits::min()
                                                                   : static_cast<Channel>(scaled);
    }
}

/// Rows of samples to pixels of the image. Any thread.
template <class Sample>
class PixelConversion {
    using Channel = typename Quorvex::Data::ChannelOf<Sample>::Type;

public:
    explicit PixelConversion(const Layout& layout)
        : m_kernel(KernelFor(layout)),
          m_isInverted(layout.photometric == Photometric::WhiteIsZero && !std::is_floating_point_v<Channel>),
          m_isPremultiplied(layout.isPremultiplied) {}

    void Convert(const SampleRow<Channel>& row, Sample* pixels, std::size_t count) const {
        m_kernel(row, pixels, count);
        if constexpr (!std::is_floating_point_v<Channel>)
            if (m_isInverted)
                Invert(pixels, count);
        if constexpr (isColor)
            if (row.alpha != nullptr)
                ApplyAlpha(row, pixels, count);
    }

    /// Colours that the file has multiplied by their alpha become straight; one without any alpha stays as it is.
    void DivideByAlpha(Sample* pixels, std::size_t count) const {
        if constexpr (isColor)
            if (m_isPremultiplied)
                for (std::size_t i = 0; i < count; ++i)
                    Divide(pixels[i]);
    }

    /// Whether samples are pixels as they stand.
    bool IsCopy() const { return !isColor && !m_isInverted; }

private:
    static constexpr bool isColor = Quorvex::Data::SampleTraits<Sample>::isColor;
    using Kernel = void (*)(const SampleRow<Channel>& row, Sample* pixels, std::size_t count);

    static Kernel KernelFor(const Layout& layout) {
        if constexpr (isColor) {
            if (layout.photometric == Photometric::Cmyk)
                return Cmyk;
            if constexpr (std::is_same_v<Channel, std::uint8_t> || std::is_same_v<Channel, std::uint16_t>)
                if (layout.photometric == Photometric::CieLab)
                    return Lab;
            return layout.colorSamples == 3 ? Rgb : GreyAsColor;
        } else {
            return Grey;
        }
    }

    static void Grey(const SampleRow<Channel>& row, Sample* pixels, std::size_t count) {
        if constexpr (!isColor)
            for (std::size_t i = 0; i < count; ++i)
                pixels[i] = row.colors[0][i * row.stride];
    }

    static void GreyAsColor(const SampleRow<Channel>& row, Sample* pixels, std::size_t count) {
        if constexpr (isColor)
            for (std::size_t i = 0; i < count; ++i) {
                const Channel grey = row.colors[0][i * row.stride];
                pixels[i] = {grey, grey, grey, FullOf<Channel>()};
            }
    }

    static void Rgb(const SampleRow<Channel>& row, Sample* pixels, std::size_t count) {
        if constexpr (isColor)
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t place = i * row.stride;
                pixels[i] = {row.colors[2][place], row.colors[1][place], row.colors[0][place], FullOf<Channel>()};
            }
    }

    /// What the inks leave of the light: 0 is no ink.
    static void Cmyk(const SampleRow<Channel>& row, Sample* pixels, std::size_t count) {
        constexpr Channel full = FullOf<Channel>();
        if constexpr (isColor)
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t place = i * row.stride;
                const auto left = [&](std::size_t ink) { return static_cast<Channel>(full - row.colors[ink][place]); };
                const Channel black = left(3);
                pixels[i] = {Scaled(left(2), black, full), Scaled(left(1), black, full), Scaled(left(0), black, full),
                             full};
            }
    }

    static void Lab(const SampleRow<Channel>& row, Sample* pixels, std::size_t count) {
        if constexpr (std::is_same_v<Channel, std::uint8_t> || std::is_same_v<Channel, std::uint16_t>)
            for (std::size_t i = 0; i < count; ++i) {
                const std::size_t place = i * row.stride;
                const LinearColor color =
                    LinearColorOf(LabOf(row.colors[0][place], row.colors[1][place], row.colors[2][place]));
                constexpr double full = FullOf<Channel>();
                const auto stored = [](double linear) {
                    return static_cast<Channel>(std::lround(SrgbOf(linear) * full));
                };
                pixels[i] = {stored(color.blue), stored(color.green), stored(color.red), FullOf<Channel>()};
            }
    }

    static void Invert(Sample* pixels, std::size_t count) {
        const auto inverse = [](Channel value) { return static_cast<Channel>(~value); };
        for (std::size_t i = 0; i < count; ++i) {
            if constexpr (isColor)
                pixels[i] = {inverse(pixels[i].blue), inverse(pixels[i].green), inverse(pixels[i].red),
                             pixels[i].alpha};
            else
                pixels[i] = inverse(pixels[i]);
        }
    }

    void ApplyAlpha(const SampleRow<Channel>& row, Sample* pixels, std::size_t count) const {
        for (std::size_t i = 0; i < count; ++i)
            pixels[i].alpha = row.alpha[i * row.stride];
        DivideByAlpha(pixels, count);
    }

    static void Divide(Sample& pixel) {
        if (!(pixel.alpha > 0) || pixel.alpha == FullOf<Channel>())
            return;
        for (Channel Sample::*const color : {&Sample::blue, &Sample::green, &Sample::red})
            pixel.*color = Scaled(pixel.*color, FullOf<Channel>(), pixel.alpha);
    }

    Kernel m_kernel;
    bool m_isInverted;
    bool m_isPremultiplied;
};

} // namespace ET::Img::Tif
