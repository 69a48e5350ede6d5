#include "tests/codecs/BmpRecipe.h"

ByteWriter& ByteWriter::Append(const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
    return *this;
}

ByteWriter& ByteWriter::PadTo(std::size_t size) {
    bytes.resize(size);
    return *this;
}

ByteWriter& ByteWriter::Put(std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::uint8_t>(value >> 8 * i));
    return *this;
}

namespace {

bool IsWindows(std::uint32_t headerSize) {
    return headerSize == 0x28 || headerSize == 0x34 || headerSize == 0x38 || headerSize == 0x6C || headerSize == 0x7C;
}

} // namespace

Bytes BmpRecipe::PixelData() const {
    if (rows.empty())
        return data;
    ByteWriter out;
    for (const Bytes& row : rows) {
        out.Append(row);
        out.PadTo((out.bytes.size() + 3) / 4 * 4);
    }
    return out.bytes;
}

void BmpRecipe::PutOs2Header(ByteWriter& out, std::size_t pixelBytes) const {
    const std::size_t start = out.bytes.size();
    out.U32(headerSize);
    if (headerSize == 0x0C) {
        out.U16(static_cast<std::uint32_t>(width)).U16(static_cast<std::uint32_t>(height)).U16(1).U16(bits);
        return;
    }
    out.I32(width).I32(height).U16(1).U16(bits);
    out.U32(compression).U32(sizeImage.value_or(static_cast<std::uint32_t>(pixelBytes)));
    out.I32(xResolution).I32(yResolution).U32(colorsUsed).U32(7); // cclrImportant
    out.U16(1).U16(2).U16(3).U16(4);                              // usUnits to usRendering
    out.U32(0x11).U32(0x22).U32(0x33).U32(0x44);                  // cSize1 to ulIdentifier
    out.PadTo(start + headerSize);                                // A shorter header ends early.
}

void BmpRecipe::PutWindowsHeader(ByteWriter& out, std::size_t pixelBytes) const {
    out.U32(headerSize).I32(width).I32(height).U16(1).U16(bits).U32(compression);
    out.U32(sizeImage.value_or(static_cast<std::uint32_t>(pixelBytes)));
    out.I32(xResolution).I32(yResolution).U32(colorsUsed).U32(7); // biClrImportant
    if (headerSize >= 0x34)
        out.U32(masks.red).U32(masks.green).U32(masks.blue);
    if (headerSize >= 0x38)
        out.U32(masks.alpha);
    if (headerSize < 0x6C)
        return;
    out.U32(0x73524742); // LCS_sRGB
    for (std::uint32_t coordinate = 1; coordinate <= 9; ++coordinate)
        out.U32(coordinate * 0x08000000); // eighths of 1 in 2.30
    out.U32(0x101).U32(0x102).U32(0x103); // gamma
    if (headerSize >= 0x7C)
        out.U32(4).U32(0x201).U32(0x202).U32(0x203); // intent, profile data and size, reserved
}

void BmpRecipe::PutMasksBehind(ByteWriter& out) const {
    const bool three = headerSize == 0x28 && (compression == 3 || compression == 6);
    const bool alpha = (headerSize == 0x28 || headerSize == 0x34) && compression == 6;
    if (three)
        out.U32(masks.red).U32(masks.green).U32(masks.blue);
    if (alpha)
        out.U32(masks.alpha);
}

void BmpRecipe::PutPalette(ByteWriter& out) const {
    for (const std::uint32_t color : palette) {
        if (headerSize == 0x0C)
            out.U8(color & 0xFF).U8(color >> 8 & 0xFF).U8(color >> 16 & 0xFF);
        else
            out.U32(color);
    }
}

ByteWriter BmpRecipe::Header(std::size_t pixelBytes) const {
    ByteWriter out;
    if (IsWindows(headerSize))
        PutWindowsHeader(out, pixelBytes);
    else
        PutOs2Header(out, pixelBytes);
    PutMasksBehind(out);
    PutPalette(out);
    return out;
}

std::size_t BmpRecipe::PixelOffset() const {
    return Header(0).bytes.size() + (hasFileHeader ? 14 : 0);
}

Bytes BmpRecipe::Build() const {
    const Bytes pixels = PixelData();
    const ByteWriter header = Header(pixels.size());
    ByteWriter out;
    if (hasFileHeader) {
        const auto offset = static_cast<std::uint32_t>(PixelOffset());
        out.U16(0x4D42).U32(offset + static_cast<std::uint32_t>(pixels.size())); // "BM", size of the file
        out.U16(0xFFFF).U16(5);                                                  // hot spot -1, 5
        out.U32(offBits.value_or(offset));
    }
    return out.Append(header.bytes).Append(pixels).bytes;
}
