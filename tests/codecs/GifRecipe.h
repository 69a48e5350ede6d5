#pragma once

#include "tests/codecs/LzwWriter.h"

#include <optional>
#include <string>

/// A frame of a GIF file. What is not given has the value that an ordinary frame has.
struct GifFrame {
    using Bytes = std::vector<std::uint8_t>;

    std::uint32_t width = 1;
    std::uint32_t height = 1;
    bool isInterlaced = false;
    std::vector<std::uint32_t> colors{}; ///< Of its own, as hexadecimal RRGGBB; a power of 2 of them from 2, or none.
    std::uint32_t codeSize = 8;
    Bytes indexes{};              ///< In the order of the file.
    LzwStyle style{};             ///< How they are encoded.
    std::optional<Bytes> codes{}; ///< In place of the indexes: encoded, taken as they are.
    std::uint32_t blockSize = 255;
};

/// A GIF file, field by field.
struct GifRecipe {
    using Bytes = std::vector<std::uint8_t>;

    std::string signature = "GIF89a";
    std::vector<std::uint32_t> colors{}; ///< As hexadecimal RRGGBB; a power of 2 of them from 2, or none.
    Bytes beforeFrames{};                ///< Extensions, for instance.
    std::vector<GifFrame> frames{};
    Bytes trailer{0x3B};

    Bytes Build() const;
};

/// As many different colours.
std::vector<std::uint32_t> GifColors(std::uint32_t count, std::uint32_t seed = 0);
/// The bytes in sub-blocks with the empty one that ends them.
std::vector<std::uint8_t> SubBlocks(const std::vector<std::uint8_t>& bytes, std::uint32_t blockSize = 255);
