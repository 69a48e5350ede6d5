#pragma once

#include "data/ColorTypeEnum.h"

namespace ET::Img {

/// Says what image to create for a file before a pixel of it is decoded. Plain 32-bit fields in this order: the record
/// crosses the plug-in interface as it lies in memory.
struct ImageInfo {
    std::uint32_t Width = 0;           ///< Pixels.
    std::uint32_t Height = 0;          ///< Pixels.
    std::uint32_t BitsPerPixel = 0;    ///< Depth as stored in the file, for display only.
    std::uint32_t AllocatedWidth = 0;  ///< Row length that the decoder wants; 0: the image's own.
    std::uint32_t AllocatedHeight = 0; ///< Rows that the decoder wants; 0: the image's own.
    /// Sample type of the image to create. Whoever reads it checks it: a plug-in can put any number here.
    Quorvex::Data::ColorTypeEnum::Value ColorType = Quorvex::Data::ColorTypeEnum::SInt8;
};
static_assert(sizeof(ImageInfo) == 24);

} // namespace ET::Img
