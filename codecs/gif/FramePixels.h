#pragma once

#include "codecs/gif/Frame.h"
#include "data/Lock.h"

namespace ET::Img::Gif {

/// Decodes a frame from its codes into an image, which may have another size: the indexes follow one another in the
/// image's rows, those that it has no room for are left out, and those that are missing are 0. Returns whether all data
/// of the frame were there. Raises Exception "CodeSize>LZ_BITS" for a code size above 11, and "invalid vector<T>
/// subscript" for an index without a colour.
bool DecodeFrame(const Frame& frame, const std::vector<std::uint8_t>& codes, const Quorvex::Data::Lock<Pixel>& lock);

/// Makes all visible pixels black and opaque.
void FillWithBlack(const Quorvex::Data::Lock<Pixel>& lock);

} // namespace ET::Img::Gif
