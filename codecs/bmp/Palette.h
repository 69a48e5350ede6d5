#pragma once

#include "codecs/bmp/NormalHeader.h"

#include <array>

namespace ET::Img {

using Pixel = Quorvex::Data::ColorBGRA<std::uint8_t>;

/// As many colours as an index of 8 bits can name; those that the file does not have are 0, so no index leads outside.
using Palette = std::array<Pixel, 256>;

/// Reads the palette that the stream stands at. Above 8 bits per pixel there is none: all 0, and the stream stays.
/// Raises Exception with empty text where the stream ends too early.
Palette ReadPalette(Quorvex::Stream& stream, const NormalHeader& header);

} // namespace ET::Img
