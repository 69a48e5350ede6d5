#pragma once

#include <cstdint>
#include <optional>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// Little-endian fields, one after the other.
class ByteWriter {
public:
    ByteWriter& U8(std::uint32_t value) { return Put(value, 1); }
    ByteWriter& U16(std::uint32_t value) { return Put(value, 2); }
    ByteWriter& U32(std::uint32_t value) { return Put(value, 4); }
    ByteWriter& I32(std::int32_t value) { return Put(static_cast<std::uint32_t>(value), 4); }
    ByteWriter& Append(const Bytes& more);
    ByteWriter& PadTo(std::size_t size);

    Bytes bytes;

private:
    ByteWriter& Put(std::uint32_t value, int count);
};

/// The red, green, blue and alpha masks, in the order of the file.
struct RecipeMasks {
    std::uint32_t red = 0, green = 0, blue = 0, alpha = 0;
};

/// A bitmap file, field by field. What is not given has the value that an ordinary file of the kind has.
struct BmpRecipe {
    std::uint32_t headerSize = 0x28; ///< Chooses the generation of the header.
    std::int32_t width = 1;
    std::int32_t height = 1;
    std::uint32_t bits = 24;
    std::uint32_t compression = 0;
    std::optional<std::uint32_t> sizeImage{}; ///< Default: the length of the pixel data.
    std::int32_t xResolution = 0;             ///< Pixels per metre.
    std::int32_t yResolution = 0;
    std::uint32_t colorsUsed = 0;
    RecipeMasks masks{};                  ///< In the header where it has room, else behind it as the compression asks.
    std::vector<std::uint32_t> palette{}; ///< As hexadecimal AARRGGBB; alpha is lost in the 12-byte header.
    std::vector<Bytes> rows{};            ///< In file order; each is filled up to a multiple of 4 bytes.
    Bytes data{};                         ///< In place of the rows: run-length encoded pixels, taken as they are.
    bool hasFileHeader = true;
    std::optional<std::uint32_t> offBits{}; ///< Default: right behind the palette.

    Bytes Build() const;
    /// Bytes before the pixel data.
    std::size_t PixelOffset() const;

private:
    ByteWriter Header(std::size_t pixelBytes) const;
    void PutOs2Header(ByteWriter& out, std::size_t pixelBytes) const;
    void PutWindowsHeader(ByteWriter& out, std::size_t pixelBytes) const;
    void PutMasksBehind(ByteWriter& out) const;
    void PutPalette(ByteWriter& out) const;
    Bytes PixelData() const;
};
