#pragma once

#include "data/Stream.h"

#include <vector>

namespace ET::Img::Ico {

/// What an icon or cursor file says about one of its images.
struct Entry {
    std::uint8_t width = 0;     ///< Pixels; 0 where one byte does not suffice.
    std::uint8_t height = 0;    ///< Likewise.
    std::uint16_t bitCount = 0; ///< Bits per pixel; in a cursor the row of its hotspot.
    std::uint32_t size = 0;     ///< Bytes.
    std::uint32_t offset = 0;   ///< Bytes from the start of the file.

    /// Whether the size in pixels is told here. A cursor's hotspot can look like a depth, and counts as one.
    bool TellsSize() const { return width != 0 && height != 0 && bitCount <= 32; }
};

/// Reads header and directory from the stream's position. Raises Exception "not an icon or cursor file", "empty
/// container!", and with empty text where the stream ends before the directory does.
std::vector<Entry> ReadDirectory(Quorvex::Stream& stream);

} // namespace ET::Img::Ico
