#include "codecs/bmp/RowFormat.h"

#include "codecs/bmp/ExpandBgr.h"

#include <cstring>
#include <limits>

namespace ET::Img {

namespace {

std::uint32_t Word16(const std::uint8_t* bytes) {
    return static_cast<std::uint32_t>(bytes[0] | bytes[1] << 8);
}

std::uint32_t Word32(const std::uint8_t* bytes) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof(value));
    return value;
}

// Bits rounded up to 32 and counted in bytes.
std::uint32_t RowBytes(const NormalHeader& header) {
    const std::uint64_t bits = std::uint64_t(header.fields.biBitCount) * header.width;
    const std::uint64_t bytes = ((bits + 31) / 8) & ~std::uint64_t(3);
    if (bytes > std::numeric_limits<std::uint32_t>::max())
        throw Quorvex::Exception();
    return static_cast<std::uint32_t>(bytes);
}

bool IsByteOrNothing(const ChannelMask& channel) {
    return channel.mask == 0 || (channel.mask >> channel.shift == 0xFF && channel.shift % 8 == 0);
}

} // namespace

struct RowFormat::Kernels {
    // 1, 2, 4 and 8 bits: the first pixel of a byte lies in its highest bits.
    template <unsigned bits>
    static void Indexed(const RowFormat& format, const std::uint8_t* row, Pixel* pixels) {
        constexpr unsigned perByte = 8 / bits;
        constexpr unsigned mask = (1u << bits) - 1;
        for (std::uint32_t x = 0; x < format.m_width; ++x) {
            const unsigned shift = 8 - bits - bits * (x % perByte);
            pixels[x] = format.m_palette[(row[x / perByte] >> shift) & mask];
        }
    }

    static void Words16(const RowFormat& format, const std::uint8_t* row, Pixel* pixels) {
        for (std::uint32_t x = 0; x < format.m_width; ++x)
            pixels[x] = format.m_masks.Extract(Word16(row + 2 * std::size_t(x)));
    }

    static void Words16FromTable(const RowFormat& format, const std::uint8_t* row, Pixel* pixels) {
        for (std::uint32_t x = 0; x < format.m_width; ++x)
            pixels[x] = format.m_pixelOfWord[Word16(row + 2 * std::size_t(x))];
    }

    static void Bytes24(const RowFormat& format, const std::uint8_t* row, Pixel* pixels) {
        ExpandBgr(row, pixels, format.m_width);
    }

    static void Words32(const RowFormat& format, const std::uint8_t* row, Pixel* pixels) {
        for (std::uint32_t x = 0; x < format.m_width; ++x)
            pixels[x] = format.m_masks.Extract(Word32(row + 4 * std::size_t(x)));
    }

    // Channels of one whole byte each, or none, have the scale 1 and only move.
    static void Bytes32(const RowFormat& format, const std::uint8_t* row, Pixel* pixels) {
        const PixelMasks& masks = format.m_masks;
        for (std::uint32_t x = 0; x < format.m_width; ++x) {
            const std::uint32_t word = Word32(row + 4 * std::size_t(x));
            const std::uint32_t pixel =
                (word & masks.blue.mask) >> masks.blue.shift | (word & masks.green.mask) >> masks.green.shift << 8 |
                (word & masks.red.mask) >> masks.red.shift << 16 | (word & masks.alpha.mask) >> masks.alpha.shift << 24;
            std::memcpy(static_cast<void*>(pixels + x), &pixel, sizeof(pixel));
        }
    }
};

RowFormat::RowFormat(const NormalHeader& header, const Palette& palette)
    : m_width(header.width), m_rowBytes(RowBytes(header)), m_palette(palette) {
    switch (header.fields.biBitCount) {
    case 1:
        m_kernel = Kernels::Indexed<1>;
        break;
    case 2:
        m_kernel = Kernels::Indexed<2>;
        break;
    case 4:
        m_kernel = Kernels::Indexed<4>;
        break;
    case 8:
        m_kernel = Kernels::Indexed<8>;
        break;
    case 24:
        m_kernel = Kernels::Bytes24;
        break;
    case 16:
    case 32:
        UseMasks(header);
        break;
    default:
        throw Quorvex::Exception();
    }
}

void RowFormat::UseMasks(const NormalHeader& header) {
    m_masks = MasksOf(header);
    const PixelMasks& masks = m_masks;
    if (header.fields.biBitCount == 32) {
        const bool bytes = IsByteOrNothing(masks.blue) && IsByteOrNothing(masks.green) && IsByteOrNothing(masks.red) &&
                           IsByteOrNothing(masks.alpha) && masks.alpha.scale == 1.0f;
        m_kernel = bytes ? Kernels::Bytes32 : Kernels::Words32;
        return;
    }
    constexpr std::uint32_t wordCount = 1 << 16;
    m_kernel = Kernels::Words16;
    if (std::uint64_t(header.width) * header.height >= wordCount) {
        m_pixelOfWord.resize(wordCount);
        for (std::uint32_t word = 0; word < wordCount; ++word)
            m_pixelOfWord[word] = masks.Extract(word);
        m_kernel = Kernels::Words16FromTable;
    }
}

} // namespace ET::Img
