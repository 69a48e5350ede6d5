#pragma once

#include "codecs/bmp/Masks.h"

#include <vector>

namespace ET::Img {

/// How the rows of an uncompressed bitmap are stored: turns one of them into pixels.
class RowFormat {
public:
    /// Raises Exception with empty text for a depth that no bitmap has, and for rows of 4 GB and more.
    RowFormat(const NormalHeader& header, const Palette& palette);

    /// Bytes of a stored row, a multiple of 4.
    std::uint32_t GetRowBytes() const { return m_rowBytes; }
    /// Reads one stored row and writes as many pixels as the header is wide.
    void Convert(const std::uint8_t* row, Pixel* pixels) const { m_kernel(*this, row, pixels); }
    bool HasExplicitAlpha() const { return m_masks.hasExplicitAlpha; }

private:
    using Kernel = void (*)(const RowFormat& format, const std::uint8_t* row, Pixel* pixels);
    struct Kernels;

    void UseMasks(const NormalHeader& header);

    std::uint32_t m_width;
    std::uint32_t m_rowBytes;
    Kernel m_kernel = nullptr;
    Palette m_palette;
    PixelMasks m_masks;
    /// The pixel of each 16-bit word, where the image is large enough to pay for it.
    std::vector<Pixel> m_pixelOfWord;
};

} // namespace ET::Img
