#include "tests/codecs/GifRecipe.h"

#include <algorithm>
#include <bit>

namespace {

using Bytes = std::vector<std::uint8_t>;

void Put(Bytes& out, const Bytes& more) {
    out.insert(out.end(), more.begin(), more.end());
}

void Put16(Bytes& out, std::uint32_t value) {
    Put(out, {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8)});
}

std::uint8_t TableFlags(const std::vector<std::uint32_t>& colors) {
    return colors.empty() ? 0 : static_cast<std::uint8_t>(0x80 | (std::countr_zero(colors.size()) - 1));
}

void PutColors(Bytes& out, const std::vector<std::uint32_t>& colors) {
    for (const std::uint32_t color : colors)
        for (const int shift : {16, 8, 0})
            out.push_back(static_cast<std::uint8_t>(color >> shift));
}

void PutFrame(Bytes& out, const GifFrame& frame) {
    out.push_back(0x2C);
    Put16(out, 7); // Its place on the screen, which no reader of single frames looks at.
    Put16(out, 9);
    Put16(out, frame.width);
    Put16(out, frame.height);
    out.push_back(static_cast<std::uint8_t>(TableFlags(frame.colors) | (frame.isInterlaced ? 0x40 : 0)));
    PutColors(out, frame.colors);
    out.push_back(static_cast<std::uint8_t>(frame.codeSize));
    Put(out,
        SubBlocks(frame.codes ? *frame.codes : WriteLzw(frame.indexes, frame.codeSize, frame.style), frame.blockSize));
}

} // namespace

Bytes GifRecipe::Build() const {
    Bytes out(signature.begin(), signature.end());
    Put16(out, 1000); // The screen.
    Put16(out, 2000);
    Put(out, {TableFlags(colors), 1, 0});
    PutColors(out, colors);
    Put(out, beforeFrames);
    for (const GifFrame& frame : frames)
        PutFrame(out, frame);
    Put(out, trailer);
    return out;
}

std::vector<std::uint32_t> GifColors(std::uint32_t count, std::uint32_t seed) {
    std::vector<std::uint32_t> colors;
    for (std::uint32_t i = 0; i < count; ++i)
        colors.push_back((seed + i + 1) * 0x9E3779 & 0xFFFFFF);
    return colors;
}

Bytes SubBlocks(const Bytes& bytes, std::uint32_t blockSize) {
    Bytes blocks;
    for (std::size_t i = 0; i < bytes.size(); i += blockSize) {
        const auto length = static_cast<std::uint8_t>(std::min<std::size_t>(blockSize, bytes.size() - i));
        blocks.push_back(length);
        const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(i);
        blocks.insert(blocks.end(), begin, begin + length);
    }
    blocks.push_back(0);
    return blocks;
}
