#include "codecs/ClearMemory.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace ET::Img {

void ClearMemory(void* memory, std::size_t bytes) {
    // Bytes that are looked at together: as many as a page of memory.
    static constexpr std::uint8_t zeros[4096] = {};
    auto* place = static_cast<std::uint8_t*>(memory);
    for (std::uint8_t* const end = place + bytes; place != end;) {
        const std::size_t span = std::min(sizeof(zeros), static_cast<std::size_t>(end - place));
        if (std::memcmp(place, zeros, span) != 0)
            std::memset(place, 0, span);
        place += span;
    }
}

} // namespace ET::Img
