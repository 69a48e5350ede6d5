#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// How a PNG file ends in libpng's own hands.
struct PngReference {
    bool isDecoded = false;
    bool isWide = false; ///< 16 bits.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint32_t bitsPerPixel = 0;     ///< Of all channels together.
    std::vector<std::uint16_t> samples; ///< Blue, green, red and alpha of each pixel.

    bool operator==(const PngReference&) const = default;
};

/// With its high-level interface, the whole file at once, and without what it knows of colour spaces.
PngReference DecodePngByLibrary(const std::vector<std::uint8_t>& file);
/// With its simplified interface, always 8 bits; what pixels have in the file is not told. That one corrects the
/// colours of files with gamma or 16 bits.
PngReference DecodePngSimplified(const std::vector<std::uint8_t>& file);
