#pragma once

#include "codecs/tif/Layout.h"
#include "data/ImageBase.h"

namespace ET::Img::Tif {

/// Decodes all tiles of the image into the target, whose size and type are those of the layout, on that many threads
/// (0: one for each processor); the result does not depend on their number. Returns whether all tiles were there: those
/// that are missing or damaged are 0. Raises Exception with the reason where the scheme is not supported, and
/// std::bad_alloc.
bool DecodeTiles(const Directory& directory, const Layout& layout, Quorvex::Data::ImageBase& target,
                 std::uint32_t workerCount);

} // namespace ET::Img::Tif
