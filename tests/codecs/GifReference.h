#pragma once

#include "tests/codecs/TestStream.h"

#include <cstdint>
#include <string>
#include <vector>

/// A frame as plain code sees it.
struct GifReferenceFrame {
    std::string failure; ///< Why it cannot be shown, or what RaisedText says of what raises nothing.
    bool isWhole = false;
    std::vector<std::uint32_t> pixels{}; ///< AARRGGBB, in an image of the last frame's size.
};

/// A GIF file as plain code sees it: a byte at a time, a table of whole strings, and every pixel by itself.
struct GifReference {
    std::string failure; ///< Of the whole file, as above; there are no frames then.
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<GifReferenceFrame> frames{};
};

GifReference DecodeGifPlainly(const std::vector<std::uint8_t>& file);

/// Which row of an image of that height each row of an interlaced frame is, in the order of the file (GIF89a appendix
/// E); without, they come as they are.
std::vector<std::uint32_t> GifRowOrder(std::uint32_t height, bool isInterlaced);

/// An image of that size, filled with pixels in the order of the file; those that are missing have the other value.
std::vector<std::uint32_t> GifImage(const std::vector<std::uint32_t>& pixels, bool isInterlaced, std::uint32_t width,
                                    std::uint32_t height, std::uint32_t missing);

/// Fails the test where the decoder does not do with every frame of the file what is wanted.
void ExpectGif(const std::vector<std::uint8_t>& file, const GifReference& wanted, TestStream::Manner manner,
               const std::string& what);
