#pragma once

#include "codecs/tif/Decompression.h"

namespace ET::Img::Tif {

/// Tiles that are JPEG files, with tables that stand apart (TIFF Technical Note 2), or whose headers have to be put
/// together from tags (TIFF 6.0, section 22). Raises Exception "JPEG compression with BitsPerSample!=8 is not
/// supported", and without text where the tags of the headers lie outside the file.
std::unique_ptr<const Decompression> MakeJpegDecompression(const Directory& directory, const Layout& layout,
                                                           bool isInterchange);

} // namespace ET::Img::Tif
