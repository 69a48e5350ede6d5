#pragma once

#include "codecs/tif/Layout.h"

#include <map>
#include <set>
#include <vector>

/// A TIFF file, written by plain loops of its own. What is not given has the value that an ordinary file has.
struct TifRecipe {
    using Bytes = std::vector<std::uint8_t>;
    using ByteOrder = ET::Img::Tif::ByteOrder;

    /// A tag with numbers; type 3 is for 16 bits, 4 and 13 for 32, 5 for pairs of 32.
    struct Entry {
        std::uint16_t type = 3;
        std::vector<std::uint32_t> values{};
    };

    std::uint32_t width = 1;
    std::uint32_t height = 1;
    std::uint32_t bits = 8;
    std::uint32_t samples = 1;
    std::uint32_t format = 1; ///< 1 unsigned, 2 signed, 3 floating point.
    std::uint32_t photometric = 1;
    std::uint32_t compression = 1; ///< 1 or 32773 (PackBits); others are told and not done.
    std::uint32_t predictor = 1;
    bool isPlanar = false;
    std::uint32_t tileWidth = 0; ///< 0: strips.
    std::uint32_t tileHeight = 0;
    std::uint32_t rowsPerStrip = 0; ///< 0: one strip.
    bool isFillReversed = false;
    bool isDirectoryFirst = false; ///< The data follow the directory, so that whoever cuts the file meets them first.
    ByteOrder order = ByteOrder::Little;
    /// The bits of each sample: row by row, pixel by pixel.
    std::vector<std::uint64_t> values{};
    /// In place of what the values make: the bytes of each strip or tile.
    std::vector<Bytes> tiles{};
    std::map<std::uint16_t, Entry> tags{}; ///< Added, or in place of those that the rest makes.
    std::set<std::uint16_t> without{};     ///< Tags that are left out.

    Bytes Build() const;
    /// Several images in one file, each behind the one before it.
    static Bytes Build(const std::vector<TifRecipe>& images);

    /// The bytes of each strip or tile.
    std::vector<Bytes> TileData() const;
    /// Where each of them lies in a file of this image alone.
    std::vector<std::uint32_t> TileOffsets() const;

    /// Values that differ everywhere and use all bits.
    TifRecipe& Fill(std::uint32_t seed = 1);
    std::uint64_t At(std::uint32_t x, std::uint32_t y, std::uint32_t sample) const {
        return values[(std::size_t(y) * width + x) * samples + sample];
    }

private:
    std::map<std::uint16_t, Entry> Tags(const std::vector<Bytes>& data, std::uint32_t firstOffset) const;
    Bytes PackedTile(std::uint32_t left, std::uint32_t top, std::uint32_t plane) const;
    Bytes PackedRow(std::vector<std::uint64_t> row) const;
    std::uint32_t TileColumns() const { return tileWidth != 0 ? tileWidth : width; }
    std::uint32_t TileRows() const;
};

/// Bytes in the order of a file.
void PutNumber(TifRecipe::Bytes& bytes, TifRecipe::ByteOrder order, std::uint64_t number, unsigned byteCount);
