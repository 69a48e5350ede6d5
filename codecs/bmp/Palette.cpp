#include "codecs/bmp/Palette.h"

#include "codecs/bmp/FileHeader.h"

#include <algorithm>

namespace ET::Img {

namespace {

constexpr std::uint32_t core = 0x0C; // The one header with entries of three bytes.

std::uint32_t EntryBytes(const NormalHeader& header) {
    return header.fields.biSize == core ? 3 : 4;
}

// The differences are meant to wrap: without an offset to the pixels, or with one that lies before the palette, the
// room is boundless; and with no number of colours given there are as many as the depth allows.
std::uint32_t EntryCount(const NormalHeader& header) {
    const std::uint32_t room = (header.offBits - header.headerBytes - BITMAPFILEHEADER::sizeBytes) / EntryBytes(header);
    const std::uint32_t lastOfDepth = (1u << header.fields.biBitCount) - 1;
    const std::uint32_t lastUsed = header.fields.biClrUsed - 1;
    return std::min(room, std::min(lastOfDepth, lastUsed) + 1);
}

} // namespace

Palette ReadPalette(Quorvex::Stream& stream, const NormalHeader& header) {
    Palette palette{};
    if (header.fields.biBitCount > 8)
        return palette;
    const std::uint32_t entryBytes = EntryBytes(header);
    const std::uint32_t count = EntryCount(header);
    std::array<std::uint8_t, 4 * std::tuple_size_v<Palette>> bytes{};
    stream.read(bytes.data(), count * entryBytes);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint8_t* entry = bytes.data() + i * entryBytes;
        palette[i] = {entry[0], entry[1], entry[2], entryBytes == 4 ? entry[3] : std::uint8_t(0)};
    }
    return palette;
}

} // namespace ET::Img
