#pragma once

#include "codecs/gif/ColorTable.h"

#include <vector>

namespace ET::Img::Gif {

/// A frame's descriptor (GIF89a section 20), its colours, and where its codes are.
struct Frame {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    bool isInterlaced = false;
    ColorTable colors;
    std::uint8_t codeSize = 0;
    std::uint32_t dataOffset = 0; ///< Of the first sub-block, in bytes from the start of the file.
    std::uint32_t dataBytes = 0;  ///< Of all sub-blocks, without their lengths.

    std::uint32_t GetPixelCount() const { return width * height; }
};

/// Reads a frame from its separator up to the sub-block that ends its data; colours that it does not bring are the
/// file's own. Raises Exception "118 missing image separator", and with empty text where the file ends before.
Frame ReadFrame(Quorvex::StreamBuffer& file, const ColorTable& fileColors);

/// Moves behind the empty sub-block that ends a run of them, and returns the bytes in them. Raises Exception with empty
/// text where the file ends before.
std::uint32_t SkipSubBlocks(Quorvex::StreamBuffer& file);

/// The frame's codes in one piece.
std::vector<std::uint8_t> ReadCodes(Quorvex::StreamBuffer& file, const Frame& frame);

} // namespace ET::Img::Gif
