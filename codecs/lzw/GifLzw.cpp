#include "codecs/lzw/GifLzw.h"

#include "codecs/lzw/LzwDecoder.h"

namespace ET::Img {

void CheckGifCodeSize(std::uint32_t codeSize) {
    constexpr std::uint32_t largest = 11;
    if (codeSize > largest)
        throw Quorvex::Exception("CodeSize>LZ_BITS");
}

void DecodeGifLzw(const std::uint8_t* source, std::size_t sourceSize, std::uint32_t codeSize, std::uint32_t pixelCount,
                  std::uint8_t* target, std::uint32_t targetSize) {
    Lzw::Output output(target, targetSize, pixelCount);
    Lzw::Decoder<Lzw::Format{BitOrder::LowFirst, 0}>(source, sourceSize, codeSize).Decode(output);
}

} // namespace ET::Img
