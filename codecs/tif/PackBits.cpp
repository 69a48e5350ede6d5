#include "codecs/tif/PackBits.h"

#include "foundation/Exception.h"

#include <algorithm>
#include <cstring>

namespace ET::Img::Tif {

void DecodePackBits(const std::uint8_t* source, std::size_t sourceSize, std::uint8_t* target, std::size_t targetSize) {
    const std::uint8_t* const end = source + sourceSize;
    std::uint8_t* const targetEnd = target + targetSize;
    while (target != targetEnd) {
        if (source == end)
            throw Quorvex::Exception();
        const auto code = static_cast<std::int8_t>(*source++);
        // A run that is longer than the tile ends with it.
        const auto left = static_cast<std::size_t>(targetEnd - target);
        if (code >= 0) {
            const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(code) + 1, left);
            const std::size_t available = std::min(length, static_cast<std::size_t>(end - source));
            if (available != 0)
                std::memcpy(target, source, available);
            if (available < length)
                throw Quorvex::Exception();
            source += length;
            target += length;
        } else if (code != -128) {
            if (source == end)
                throw Quorvex::Exception();
            const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(1 - code), left);
            std::memset(target, *source++, length);
            target += length;
        }
    }
}

} // namespace ET::Img::Tif
