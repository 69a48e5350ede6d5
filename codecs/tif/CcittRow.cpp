#include "codecs/tif/CcittRow.h"

#include <algorithm>

namespace ET::Img::Ccitt {

namespace {

void Blacken(std::uint8_t* target, std::uint32_t begin, std::uint32_t end) {
    if (begin >= end)
        return;
    std::uint8_t* const first = target + begin / 8;
    std::uint8_t* const last = target + (end - 1) / 8;
    const auto fromBegin = static_cast<std::uint8_t>(0xFF >> begin % 8);
    const auto upToEnd = static_cast<std::uint8_t>(0xFF << (7 - (end - 1) % 8));
    if (first == last) {
        *first |= fromBegin & upToEnd;
        return;
    }
    *first |= fromBegin;
    std::fill(first + 1, last, std::uint8_t(0xFF));
    *last |= upToEnd;
}

} // namespace

void Row::Write(std::uint8_t* target) const {
    std::fill_n(target, GetRowBytes(m_width), std::uint8_t(0));
    for (std::size_t i = 0; i < m_changes.size(); i += 2)
        Blacken(target, (*this)[i], (*this)[i + 1]);
}

} // namespace ET::Img::Ccitt
