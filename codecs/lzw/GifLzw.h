#pragma once

#include <cstddef>
#include <cstdint>

namespace ET::Img {

/// The code size that follows a frame's descriptor. Raises Exception "CodeSize>LZ_BITS" where it is above 11.
void CheckGifCodeSize(std::uint32_t codeSize);

/// Decodes the codes of a GIF frame (GIF89a appendix F), which are given without the lengths of their sub-blocks and
/// with a code size of up to 11. Only the first targetSize of pixelCount indexes are kept, but all are decoded. Raises
/// Exception with empty text where the data end before, or are damaged: all indexes before that are in the target, and
/// up to 32 bytes behind them are 0.
void DecodeGifLzw(const std::uint8_t* source, std::size_t sourceSize, std::uint32_t codeSize, std::uint32_t pixelCount,
                  std::uint8_t* target, std::uint32_t targetSize);

} // namespace ET::Img
