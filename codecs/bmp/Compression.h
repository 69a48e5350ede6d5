#pragma once

#include <cstdint>

namespace ET::Img {

struct NormalHeader;

/// The values of biCompression that can be decoded, as the Windows SDK's wingdi.h numbers them.
namespace Compression {
inline constexpr std::uint32_t None = 0;
inline constexpr std::uint32_t RunLength8 = 1;
inline constexpr std::uint32_t RunLength4 = 2;
inline constexpr std::uint32_t BitFields = 3; // Huffman in a header of OS/2, where it has one bit per pixel.
inline constexpr std::uint32_t JpegOrRunLength24 = 4;
inline constexpr std::uint32_t Png = 5;
inline constexpr std::uint32_t AlphaBitFields = 6;
} // namespace Compression

/// Raises Exception with the reason for a compression that cannot be decoded.
void CheckCompression(const NormalHeader& header);

} // namespace ET::Img
