#include "codecs/gif/ColorTable.h"

#include <algorithm>

namespace ET::Img::Gif {

void ColorTable::ReadOver(Quorvex::StreamBuffer& file, std::uint8_t packed) {
    const std::uint32_t count = 2u << (packed & sizeMask);
    const std::uint8_t* entry = file.Take(3 * count);
    for (std::uint32_t i = 0; i < count; ++i, entry += 3)
        m_colors[i] = {entry[2], entry[1], entry[0], 255};
    m_size = std::max(m_size, count);
}

} // namespace ET::Img::Gif
