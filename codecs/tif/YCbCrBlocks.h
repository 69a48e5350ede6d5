#pragma once

#include "codecs/tif/Decompression.h"

namespace ET::Img::Tif {

/// Makes red, green and blue out of the data units of YCbCr samples (TIFF 6.0, section 21) that another scheme decodes.
/// Raises Exception without text for differences of units that hold several luminances.
std::unique_ptr<const Decompression> MakeYCbCrBlocks(std::unique_ptr<const Decompression> inner, const Layout& layout);

/// One pixel, as bytes of red, green and blue.
void ConvertYCbCr(std::uint8_t y, std::uint8_t cb, std::uint8_t cr, std::uint8_t* rgb);

} // namespace ET::Img::Tif
