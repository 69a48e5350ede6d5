#pragma once

#include "codecs/tif/Layout.h"

#include <algorithm>

namespace ET::Img::Tif {

/// The tiles of an image, left to right and top to bottom, plane by plane; strips are tiles as wide as the image
/// (TIFF 6.0, sections 3 and 15).
class TileGrid {
public:
    /// The part of a tile that lies in the image, in pixels.
    struct Place {
        std::uint32_t x, y;
        std::uint32_t columns, rows;
    };

    /// Raises Exception without text where the file has no tiles, and where their borders hang over the image so far
    /// that neither the image nor the file is a reason for it.
    TileGrid(const Directory& directory, const Layout& layout);
    /// One tile that is the image, with these bytes, which must outlive the grid.
    TileGrid(const Directory& directory, const Layout& layout, std::span<const std::uint8_t> source);

    std::uint32_t GetTileWidth() const { return m_tileWidth; }
    std::uint32_t GetTileHeight() const { return m_tileHeight; }
    /// Tiles of one plane.
    std::uint64_t GetCount() const { return std::uint64_t(m_across) * m_down; }
    Place GetPlace(std::uint64_t tile) const;

    /// How many tiles of a plane the file has at most. Those behind have no offset, or so many before them claim the
    /// same bytes that reading on would take longer than the size of the file is a reason for.
    std::uint64_t GetStoredCount() const { return std::min<std::uint64_t>(GetCount(), m_storedCount); }
    /// The bytes of the file from the tile's offset up to its end; where the file tells no end or one that lies beyond
    /// it, up to what follows in the file. Empty where the tile has no offset inside the file.
    std::span<const std::uint8_t> GetSource(std::uint64_t tile, std::uint32_t plane) const;
    /// The bytes from the tile's offset to the end of the file, for a scheme whose size is known beforehand.
    std::span<const std::uint8_t> GetSourceUpToEnd(std::uint64_t tile, std::uint32_t plane) const;

private:
    void CheckOverhang(const Layout& layout) const;
    void CountStored(const Layout& layout);
    std::optional<std::uint64_t> IndexOf(std::uint64_t tile, std::uint32_t plane) const;

    Numbers m_numbers;
    std::uint32_t m_width, m_height;
    std::uint32_t m_tileWidth, m_tileHeight;
    std::uint32_t m_across, m_down;
    std::vector<std::uint32_t> m_offsets;
    std::vector<std::uint32_t> m_byteCounts;
    std::vector<std::uint32_t> m_sortedOffsets;
    std::uint64_t m_storedCount = 0; ///< Of all planes together.
    std::optional<std::span<const std::uint8_t>> m_onlySource;
};

} // namespace ET::Img::Tif
