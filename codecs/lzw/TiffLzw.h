#pragma once

#include <cstddef>
#include <cstdint>

namespace ET::Img {

/// Decodes the LZW codes of a TIFF strip or tile (TIFF 6.0 section 13), and the form that writers before TIFF 6.0 used:
/// the low bits of a byte first, and codes that do not grow one early. The first code of the data, which clears the
/// table, tells the two apart. Fills the target, of less than 4 GiB, and returns its size; what the data have beyond it
/// is not read. Raises Exception with empty text where the data end before, or are damaged: all bytes before that are
/// in the target, and up to 32 behind them are 0.
std::size_t DecodeTiffLzw(const std::uint8_t* source, std::size_t sourceSize, std::uint8_t* target,
                          std::size_t targetSize);

} // namespace ET::Img
