#pragma once

#include "codecs/tif/Layout.h"

#include <memory>

namespace ET::Img::Tif {

/// What a tile becomes: rows of samples, as they are packed without compression.
struct TileShape {
    std::uint32_t columns;        ///< Pixels of a row of the tile.
    std::uint32_t visibleColumns; ///< Those of them that lie in the image.
    std::uint32_t rows;           ///< That lie in the image; the others are of no use.
    std::uint64_t rowBytes;
    std::uint64_t tileCount = 1; ///< Of the image.
    std::uint32_t plane = 0;     ///< That the tile is of.

    std::uint64_t Bytes() const { return rowBytes * rows; }
};

/// Memory for the rows of a tile, which serves again for the next one.
class TileBuffer {
public:
    /// Room for so many bytes of any content. Raises std::bad_alloc.
    std::uint8_t* Take(std::uint64_t size);
    const std::uint8_t* Get() const { return m_bytes.get(); }

private:
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::uint64_t m_size = 0;
};

/// A way in which tiles are compressed. Any number of threads.
class Decompression {
public:
    Decompression() = default;
    Decompression(const Decompression&) = delete;
    Decompression& operator=(const Decompression&) = delete;
    virtual ~Decompression() = default;

    enum class Outcome { Whole, Damaged };

    /// Takes shape.Bytes() bytes of the target and fills them. Raises Exception where the bytes of the file are damaged
    /// or too few, and std::bad_alloc. A scheme that finds its way back behind damage gives what it has instead.
    virtual Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const = 0;
    /// No source of that many bytes stands for more than this, so that a few of them cannot ask for gigabytes.
    virtual std::uint64_t LargestSize(std::uint64_t sourceSize, const TileShape& shape) const = 0;
};

/// The one that the directory names; an interchange file is whole by itself. Raises Exception with the reason where
/// there is none.
std::unique_ptr<const Decompression> MakeDecompression(const Directory& directory, const Layout& layout,
                                                       bool isInterchange);

/// Whether tiles become bytes whatever the file has: JPEG, and YCbCr, of which red, green and blue are made.
bool MakesPlainBytes(const Layout& layout);

} // namespace ET::Img::Tif
