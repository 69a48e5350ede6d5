#pragma once

#include "data/ColorBGRA.h"

#include <array>
#include <cstdint>

namespace Quorvex::Platform::Video {

/// Alpha of 0 to 255 as a weight of 0 to 65536, rounded to nearest: opaque gives the source exactly.
inline constexpr std::array<std::uint32_t, 256> BlendWeights = [] {
    std::array<std::uint32_t, 256> weights{};
    for (std::uint32_t alpha = 0; alpha < weights.size(); ++alpha)
        weights[alpha] = (alpha * 65536 + 127) / 255;
    return weights;
}();

/// Straight colour over a premultiplied target. Alpha adds up instead of being weighted, as premultiplied colour needs.
constexpr Data::ColorBGRA<std::uint8_t> Blend(Data::ColorBGRA<std::uint8_t> source,
                                              Data::ColorBGRA<std::uint8_t> target) {
    const std::uint32_t sourceWeight = BlendWeights[source.alpha];
    const std::uint32_t targetWeight = 65536 - sourceWeight;
    const auto mixed = [targetWeight](std::uint32_t from, std::uint32_t weight, std::uint32_t to) {
        return static_cast<std::uint8_t>((to * targetWeight + 0x8000 + from * weight) >> 16);
    };
    return {mixed(source.blue, sourceWeight, target.blue), mixed(source.green, sourceWeight, target.green),
            mixed(source.red, sourceWeight, target.red), mixed(source.alpha, 65536, target.alpha)};
}

} // namespace Quorvex::Platform::Video
