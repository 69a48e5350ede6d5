#pragma once

#include <cstddef>
#include <cstdint>

namespace ET::Img::Tif {

/// Run-length compression of bytes (TIFF 6.0, section 9): decodes until the target is full. Runs may cross rows. Raises
/// Exception without text where the data end before; what was decoded until then is in the target.
void DecodePackBits(const std::uint8_t* source, std::size_t sourceSize, std::uint8_t* target, std::size_t targetSize);

} // namespace ET::Img::Tif
