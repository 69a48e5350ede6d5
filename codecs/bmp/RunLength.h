#pragma once

#include "codecs/bmp/Palette.h"
#include "data/Lock.h"

namespace ET::Img {

/// Decodes the run-length encoded pixels (RLE4 and RLE8 of the Windows SDK) that the stream stands at, always from the
/// lowest row upwards. The image must be clear before: what the data skip stays as it is. Raises Exception with empty
/// text where the data end before the image does.
void DecodeRunLength(Quorvex::Stream& stream, const NormalHeader& header, const Palette& palette,
                     const Quorvex::Data::Lock<Pixel>& lock);

} // namespace ET::Img
