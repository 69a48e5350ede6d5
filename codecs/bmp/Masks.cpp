#include "codecs/bmp/Masks.h"

#include "codecs/bmp/Compression.h"

#include <bit>

namespace ET::Img {

namespace {

struct RawMasks {
    std::uint32_t blue, green, red, alpha;
};

RawMasks RawMasksOf(const NormalHeader& header) {
    const BITMAPV3INFOHEADER& fields = header.fields;
    if (fields.biCompression != Compression::None)
        return {fields.biBlueMask, fields.biGreenMask, fields.biRedMask, fields.biAlphaMask};
    if (fields.biBitCount == 16)
        return {0x1F, 0x3E0, 0x7C00, 0};
    return {0xFF, 0xFF00, 0xFF0000, 0xFF000000};
}

ChannelMask WithoutScale(std::uint32_t mask) {
    ChannelMask result;
    result.mask = mask;
    result.shift = mask != 0 ? static_cast<std::uint32_t>(std::countr_zero(mask)) : 0;
    return result;
}

ChannelMask WithScale(std::uint32_t mask) {
    ChannelMask result = WithoutScale(mask);
    if (mask != 0)
        result.scale = static_cast<float>(255.0 / (mask >> result.shift));
    return result;
}

} // namespace

PixelMasks MasksOf(const NormalHeader& header) {
    const RawMasks raw = RawMasksOf(header);
    PixelMasks result;
    result.blue = WithScale(raw.blue);
    result.green = WithScale(raw.green);
    result.red = WithScale(raw.red);
    result.alpha = WithoutScale(raw.alpha);
    result.alpha.scale = result.red.scale;
    // The default of 32-bit pixels names a byte that most writers leave at any value: no statement about transparency.
    result.hasExplicitAlpha = raw.alpha != 0 && raw.alpha == header.fields.biAlphaMask;
    return result;
}

} // namespace ET::Img
