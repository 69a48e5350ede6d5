#include "codecs/jpg/CoefficientTable.h"

#include <algorithm>

namespace ET::Img::Jpg {

void CoefficientTable::Load(const std::uint8_t* counts, const std::uint8_t* symbols) {
    m_codes.fill({});
    std::uint32_t code = 0;
    for (unsigned length = 1; length <= bits; ++length, code <<= 1) {
        const std::uint32_t end = std::min(code + counts[length - 1], std::uint32_t{1} << length);
        for (; code < end; ++code)
            Add(code, length, *symbols++);
    }
}

void CoefficientTable::Add(std::uint32_t code, unsigned length, std::uint8_t symbol) {
    constexpr std::uint8_t sixteenZeros = 0xF0;
    const unsigned size = symbol & 0xF;
    if (length + size > bits || symbol == sixteenZeros)
        return;
    const unsigned rest = bits - length - size;
    const auto step = static_cast<std::uint8_t>(size == 0 ? endOfBlock : (symbol >> 4) + 1);
    for (std::uint32_t extra = 0; extra < std::uint32_t{1} << size; ++extra) {
        const CoefficientCode whole{static_cast<std::int16_t>(size == 0 ? 0 : Extend(extra, size)), step,
                                    static_cast<std::uint8_t>(length + size)};
        std::fill_n(m_codes.begin() + ((code << size | extra) << rest), std::size_t{1} << rest, whole);
    }
}

} // namespace ET::Img::Jpg
