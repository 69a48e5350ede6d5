#pragma once

#include <cstdint>
#include <vector>

/// An image of an icon as plain code sees it, one pixel after the other: a PNG file through libpng, or a bitmap that is
/// not compressed, with its mask.
struct IcoReference {
    bool isDecoded = false;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint16_t> samples; ///< Blue, green, red and alpha of each pixel.
};

IcoReference DecodeIconImage(const std::vector<std::uint8_t>& image);
/// The bytes of the image with that number in an icon file; empty where they are not all there.
std::vector<std::uint8_t> IconImageBytes(const std::vector<std::uint8_t>& file, std::uint32_t index);
std::uint32_t IconImageCount(const std::vector<std::uint8_t>& file);
