#pragma once

#include "codecs/tif/TiffDirectory.h"
#include "data/ColorBGRA.h"

namespace ET::Img::Tif {

/// The colours of a palette (TIFF 6.0, section 5).
struct ColorMap {
    std::vector<Quorvex::Data::ColorBGRA<std::uint16_t>> colors; ///< One for each index; their alpha is full.
    std::uint32_t channelBits; ///< 8 where the map has no more to tell, otherwise 16; the colours are in that range.
};

/// Raises Exception without text where the map is missing or too short for samples of so many bits, up to 16.
ColorMap ReadColorMap(const Directory& directory, std::uint32_t bits);

} // namespace ET::Img::Tif
