#pragma once

#include "codecs/bmp/Palette.h"

namespace ET::Img {

/// Where a channel lies in a stored pixel, and how its value becomes 0 to 255.
struct ChannelMask {
    std::uint32_t mask = 0;
    std::uint32_t shift = 0; ///< Trailing zero bits of the mask.
    float scale = 1.0f;

    std::uint8_t Extract(std::uint32_t pixel) const {
        const float scaled = static_cast<float>((pixel & mask) >> shift) * scale;
        const double raised = scaled + 0.5; // Exact: a float has few enough bits.
        // Alpha can exceed 255, as its scale is another channel's; its low 8 bits are what remains.
        return static_cast<std::uint8_t>(static_cast<std::int64_t>(raised));
    }
};

/// The masks of pixels of 16 and 32 bits.
struct PixelMasks {
    ChannelMask blue;
    ChannelMask green;
    ChannelMask red;
    ChannelMask alpha; ///< Has the scale of red: an alpha field is taken to be as wide as the red one.
    /// The file itself names the alpha mask that is used, so that its alpha is meant as such.
    bool hasExplicitAlpha = false;

    Pixel Extract(std::uint32_t pixel) const {
        return {blue.Extract(pixel), green.Extract(pixel), red.Extract(pixel), alpha.Extract(pixel)};
    }
};

/// The masks that hold for the header's depth and compression.
PixelMasks MasksOf(const NormalHeader& header);

} // namespace ET::Img
