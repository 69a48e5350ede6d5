#pragma once

#include <array>
#include <cstdint>

namespace ET::Img {

/// Sums of a sample and its differences in colour count modulo 512: up to 383 what is above 255 is 255, and the rest,
/// which stands for numbers below 0, is 0.
inline std::uint8_t Ranged(std::int32_t value) {
    static constexpr std::array<std::uint8_t, 512> table = [] {
        std::array<std::uint8_t, 512> made{};
        for (std::size_t i = 0; i < 512; ++i)
            made[i] = static_cast<std::uint8_t>(i < 256 ? i : i < 384 ? 255 : 0);
        return made;
    }();
    return table[static_cast<std::uint32_t>(value) & 511];
}

} // namespace ET::Img
