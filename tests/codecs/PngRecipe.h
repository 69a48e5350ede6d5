#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A PNG file to be made, with pixels drawn by lot. Plain code, one sample after the other, that shares nothing with
/// the decoder but zlib.
struct PngRecipe {
    using Bytes = std::vector<std::uint8_t>;

    std::uint32_t width = 1;
    std::uint32_t height = 1;
    std::uint32_t depth = 8;     ///< Bits of a sample: 1, 2, 4, 8 or 16.
    std::uint32_t colorType = 0; ///< 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGBA.
    bool isInterlaced = false;
    bool hasTransparency = false; ///< A tRNS chunk: the colour of the first pixel, or alphas of half the palette.
    std::uint32_t seed = 1;       ///< Of the pixels.
    Bytes extraChunks = {};       ///< Put in front of the image data.
    std::uint32_t idatBytes = 0;  ///< Of each chunk of image data; 0: all in one.

    std::uint32_t GetChannels() const;
    /// As stored, row after row, all channels of a pixel side by side.
    std::vector<std::uint32_t> Samples() const;
    /// Red, green and blue of each colour; all that the depth allows.
    Bytes Palette() const;
    /// What the tRNS chunk holds; empty without.
    Bytes Transparency() const;

    Bytes Build() const;
    /// What a viewer must make of it: blue, green, red and alpha of each pixel, of 8 bits, or of 16 where the file has
    /// them.
    std::vector<std::uint16_t> Expected() const;
    std::string Describe() const;
};

namespace PngChunks {

using Bytes = PngRecipe::Bytes;

extern const Bytes signature;
/// With its length and its checksum.
Bytes Chunk(const std::string& name, const Bytes& data);
Bytes Header(std::uint32_t width, std::uint32_t height, std::uint32_t depth, std::uint32_t colorType,
             bool isInterlaced = false);
Bytes Deflated(const Bytes& data);
/// The file with the checksums of all its chunks made right again, as far as its lengths lead.
Bytes WithRightChecksums(Bytes file);
/// Where the chunk of that name begins, at its length.
std::size_t PositionOf(const Bytes& file, const std::string& name);
/// The parts one after the other.
Bytes Joined(std::initializer_list<Bytes> parts);

} // namespace PngChunks

/// One of each colour type and depth, and all of them with what else the recipe can have.
std::vector<PngRecipe> AllPngRecipes(std::uint32_t width, std::uint32_t height);
