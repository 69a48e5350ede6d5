#include "codecs/jpg/HuffmanTable.h"

#include "foundation/Exception.h"

#include <algorithm>

namespace ET::Img::Jpg {

void HuffmanTable::Load(const std::uint8_t* counts, const std::uint8_t* symbols) {
    m_fast.fill(0);
    std::uint32_t code = 0;
    std::uint32_t index = 0;
    for (unsigned length = 1; length <= lengthCount; ++length) {
        const std::uint32_t room = (std::uint32_t{1} << length) - code;
        const std::uint32_t count = std::min<std::uint32_t>(counts[length - 1], room);
        m_offset[length] = static_cast<std::int32_t>(index) - static_cast<std::int32_t>(code);
        for (std::uint32_t i = 0; i < count; ++i, ++code, ++index) {
            m_symbols[index] = symbols[index];
            if (length > fastBits)
                continue;
            const unsigned rest = fastBits - length;
            const auto entry = static_cast<std::uint16_t>(symbols[index] << 8 | length);
            std::fill_n(m_fast.begin() + (code << rest), std::size_t{1} << rest, entry);
        }
        m_limit[length] = code << (lengthCount - length);
        code <<= 1;
    }
}

std::uint16_t HuffmanTable::FindLong(std::uint32_t bits) const {
    for (unsigned length = fastBits + 1; length <= lengthCount; ++length) {
        if (bits >= m_limit[length])
            continue;
        const std::uint32_t code = bits >> (lengthCount - length);
        const std::uint8_t symbol =
            m_symbols[static_cast<std::size_t>(static_cast<std::int32_t>(code) + m_offset[length])];
        return static_cast<std::uint16_t>(symbol << 8 | length);
    }
    throw Quorvex::Exception();
}

} // namespace ET::Img::Jpg
