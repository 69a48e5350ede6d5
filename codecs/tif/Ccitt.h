#pragma once

#include <cstddef>
#include <cstdint>

namespace ET::Img {

/// How the rows of a strip or tile are coded.
struct CcittParameters {
    std::uint32_t width = 0; ///< Pixels.
    std::uint32_t rows = 0;
    std::uint32_t t4Options = 0;      ///< The TIFF tag of that name.
    bool isFillOrderReversed = false; ///< The lowest bit of each byte is the first.
    bool isModifiedHuffman = false;   ///< TIFF's compression 2; else compression 3.
};

/// Bits of the tag T4Options (TIFF 6.0 section 11). What the third one says of the ends of lines holds for rows without
/// them too: they begin with a byte.
namespace T4Options {
constexpr std::uint32_t twoDimensional = 1, uncompressedMode = 2, fillBits = 4;
}

/// Decodes rows of black and white pixels: modified Huffman (TIFF 6.0 section 10), or Group 3 in one dimension or two
/// (section 11, ITU T.4), with codes for the end of line or without. Writes them packed, the highest bit first, black
/// as 1, and returns the bytes written, which are those of all rows. Where a row is damaged the rest of it is white,
/// and decoding goes on at the next end of line, or at the next byte for modified Huffman. Raises Exception with empty
/// text where the target has no room, and at the end, where the data ended before the rows or any row was damaged; rows
/// behind the end of the data stay as they are. Uncompressed mode counts as damage.
std::size_t DecodeCcitt(const std::uint8_t* source, std::size_t sourceSize, std::uint8_t* target,
                        std::size_t targetSize, const CcittParameters& parameters);

} // namespace ET::Img
