#include "codecs/lzw/TiffLzw.h"

#include "codecs/lzw/LzwDecoder.h"

#include <limits>

namespace ET::Img {

namespace {

using Lzw::Format;

constexpr Format usual{BitOrder::HighFirst, 1};
constexpr Format old{BitOrder::LowFirst, 0};

// 256 in nine bits with the lowest first. As the first code of the usual form these bits are 0 or 1: data without the
// code that the standard asks for.
bool IsOldForm(const std::uint8_t* source, std::size_t sourceSize) {
    return sourceSize >= 2 && source[0] == 0 && (source[1] & 1) != 0;
}

template <Format format>
void Decode(const std::uint8_t* source, std::size_t sourceSize, Lzw::Output& output) {
    constexpr std::uint32_t codeSize = 8;
    Lzw::Decoder<format>(source, sourceSize, codeSize).Decode(output);
}

} // namespace

std::size_t DecodeTiffLzw(const std::uint8_t* source, std::size_t sourceSize, std::uint8_t* target,
                          std::size_t targetSize) {
    if (targetSize > std::numeric_limits<std::uint32_t>::max())
        throw Quorvex::Exception();
    const auto size = static_cast<std::uint32_t>(targetSize);
    Lzw::Output output(target, size, size);
    (IsOldForm(source, sourceSize) ? Decode<old> : Decode<usual>)(source, sourceSize, output);
    return size;
}

} // namespace ET::Img
