#pragma once

#include "data/ImageBase.h"
#include "data/MemoryStream.h"

namespace ET::Img::Ico {

/// Reads the mask that lies at the stream's position into the image's alpha: rows of one bit a pixel, most significant
/// first, filled up to 32 bits, the lowest row first. A set bit makes its pixel transparent. The other pixels keep
/// their alpha, but where it is 0 they become opaque, since most bitmaps in icons have none. Marks the image where any
/// pixel is less than opaque then. False, and nothing changed, where the stream ends before the mask does, or the image
/// is not BGRA of 8 or 16 bits.
bool ReadMask(Quorvex::MemoryStream& stream, Quorvex::Data::ImageBase& image);

} // namespace ET::Img::Ico
