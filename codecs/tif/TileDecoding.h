#pragma once

#include "codecs/tif/Layout.h"
#include "data/ImageBase.h"
#include "foundation/String.h"

namespace ET::Img::Tif {

/// What came of the tiles of an image.
struct TileOutcome {
    bool isWhole = true;
    Quorvex::String reason{}; ///< Why the first one that is damaged is so; empty where nothing is known.
};

/// Decodes all tiles of the image into the target, whose size and type are those of the layout, on that many threads
/// (0: one for each processor); the result does not depend on their number. Tiles that are missing or damaged are 0.
/// Raises Exception with the reason where the scheme is not supported, and std::bad_alloc.
TileOutcome DecodeTiles(const Directory& directory, const Layout& layout, Quorvex::Data::ImageBase& target,
                        std::uint32_t workerCount);

} // namespace ET::Img::Tif
