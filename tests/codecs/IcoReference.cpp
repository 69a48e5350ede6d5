#include "tests/codecs/IcoReference.h"

#include "tests/codecs/PngReference.h"

#include <algorithm>
#include <cmath>

using Bytes = std::vector<std::uint8_t>;

namespace {

/// Little-endian; 0 behind the end.
std::uint32_t Number(const Bytes& bytes, std::size_t position, std::size_t byteCount) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < byteCount && position + i < bytes.size(); ++i)
        value |= std::uint32_t{bytes[position + i]} << 8 * i;
    return value;
}

struct Bitmap {
    explicit Bitmap(const Bytes& image)
        : bytes(image), headerBytes(Number(image, 0, 4)), bits(Number(image, 14, 2)), colors(Number(image, 32, 4)) {
        const double columns = static_cast<std::int32_t>(Number(image, 4, 4));
        width = static_cast<std::uint32_t>(std::abs(columns));
        // Half of the rows are the mask's. A shift rounds down, also below 0.
        const double rows = std::floor(static_cast<std::int32_t>(Number(image, 8, 4)) / 2.0);
        isTopDown = rows < 0;
        height = static_cast<std::uint32_t>(std::abs(rows));
        if (bits <= 8)
            colors = colors == 0 ? 1u << bits : std::min(colors, 1u << bits);
    }

    std::size_t RowBytes(std::size_t depth) const { return (width * depth + 31) / 32 * 4; }
    std::size_t PixelOffset() const { return headerBytes + 4 * std::size_t{colors}; }
    std::size_t MaskOffset() const { return PixelOffset() + RowBytes(bits) * height; }
    bool HasMask() const { return MaskOffset() + RowBytes(1) * height <= bytes.size(); }

    std::uint32_t Stored(std::uint32_t x, std::uint32_t y) const {
        const std::size_t row = PixelOffset() + RowBytes(bits) * (isTopDown ? y : height - 1 - y);
        if (bits >= 8)
            return Number(bytes, row + x * bits / 8, bits / 8);
        const std::size_t bit = std::size_t{x} * bits;
        return Number(bytes, row + bit / 8, 1) >> (8 - bits - bit % 8) & ((1u << bits) - 1);
    }
    /// The lowest row of the mask comes first in any case.
    bool IsMasked(std::uint32_t x, std::uint32_t y) const {
        const std::size_t row = MaskOffset() + RowBytes(1) * (height - 1 - y);
        return (Number(bytes, row + x / 8, 1) >> (7 - x % 8) & 1) != 0;
    }

    /// AARRGGBB.
    std::uint32_t Pixel(std::uint32_t x, std::uint32_t y) const {
        const std::uint32_t stored = Stored(x, y);
        if (bits <= 8)
            return stored < colors ? Number(bytes, headerBytes + 4 * std::size_t{stored}, 4) : 0;
        if (bits == 16) {
            const auto wide = [stored](int shift) {
                return static_cast<std::uint32_t>(std::floor((stored >> shift & 31) * 255.0 / 31 + 0.5));
            };
            return wide(10) << 16 | wide(5) << 8 | wide(0);
        }
        return bits == 24 ? stored | 0xFF000000 : stored;
    }

    const Bytes& bytes;
    std::uint32_t headerBytes, bits, colors, width = 0, height = 0;
    bool isTopDown = false;
};

} // namespace

IcoReference DecodeIconImage(const Bytes& image) {
    const PngReference png = DecodePngByLibrary(image);
    if (png.isDecoded)
        return {true, png.width, png.height, png.samples};
    const Bitmap bitmap(image);
    constexpr std::uint32_t depths[] = {1, 2, 4, 8, 16, 24, 32};
    if (bitmap.headerBytes != 40 || Number(image, 16, 4) != 0 || bitmap.width == 0 || bitmap.height == 0 ||
        std::find(std::begin(depths), std::end(depths), bitmap.bits) == std::end(depths) ||
        bitmap.MaskOffset() > image.size())
        return {};
    IcoReference result{true, bitmap.width, bitmap.height, {}};
    for (std::uint32_t y = 0; y < bitmap.height; ++y) {
        for (std::uint32_t x = 0; x < bitmap.width; ++x) {
            const std::uint32_t pixel = bitmap.Pixel(x, y);
            std::uint32_t alpha = pixel >> 24;
            if (bitmap.HasMask() && bitmap.IsMasked(x, y))
                alpha = 0;
            else if (bitmap.HasMask() && alpha == 0)
                alpha = 255;
            for (const std::uint32_t sample : {pixel & 255, pixel >> 8 & 255, pixel >> 16 & 255, alpha})
                result.samples.push_back(static_cast<std::uint16_t>(sample));
        }
    }
    return result;
}

Bytes IconImageBytes(const Bytes& file, std::uint32_t index) {
    const std::size_t entry = 6 + 16 * std::size_t{index};
    const std::size_t size = Number(file, entry + 8, 4), offset = Number(file, entry + 12, 4);
    if (offset > file.size() || size > file.size() - offset)
        return {};
    const auto from = file.begin() + static_cast<std::ptrdiff_t>(offset);
    return Bytes(from, from + static_cast<std::ptrdiff_t>(size));
}

std::uint32_t IconImageCount(const Bytes& file) {
    return Number(file, 4, 2);
}
