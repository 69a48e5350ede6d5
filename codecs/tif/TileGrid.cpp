#include "codecs/tif/TileGrid.h"

#include "codecs/tif/Tags.h"
#include "foundation/Exception.h"

#include <algorithm>

namespace ET::Img::Tif {

namespace {

std::vector<std::uint32_t> FirstPresent(const Directory& directory, std::uint16_t tag, std::uint16_t otherwise) {
    std::vector<std::uint32_t> values = directory.Integers(tag);
    return !values.empty() ? values : directory.Integers(otherwise);
}

// 0 says nothing, and 2^32 - 1 that there is one strip.
std::uint32_t RowsPerStrip(const Directory& directory, std::uint32_t height) {
    const std::uint32_t rows = directory.Integer(Tag::RowsPerStrip).value_or(0);
    return rows == 0 ? height : std::min(rows, height);
}

std::uint32_t NotZero(const std::optional<std::uint32_t>& value, std::uint32_t otherwise) {
    return value.value_or(0) != 0 ? *value : otherwise;
}

std::uint32_t Quotient(std::uint32_t dividend, std::uint32_t divisor) {
    return dividend / divisor + (dividend % divisor != 0 ? 1 : 0);
}

} // namespace

TileGrid::TileGrid(const Directory& directory, const Layout& layout)
    : m_numbers(directory.GetNumbers()), m_width(layout.width), m_height(layout.height),
      m_tileWidth(NotZero(directory.Integer(Tag::TileWidth), layout.width)),
      m_tileHeight(NotZero(directory.Integer(Tag::TileLength), RowsPerStrip(directory, layout.height))),
      m_across(Quotient(layout.width, m_tileWidth)), m_down(Quotient(layout.height, m_tileHeight)),
      m_offsets(FirstPresent(directory, Tag::TileOffsets, Tag::StripOffsets)),
      m_byteCounts(FirstPresent(directory, Tag::TileByteCounts, Tag::StripByteCounts)) {
    if (m_offsets.empty())
        throw Quorvex::Exception();
    CheckOverhang(layout);
    m_sortedOffsets = m_offsets;
    std::sort(m_sortedOffsets.begin(), m_sortedOffsets.end());
    CountStored(layout);
}

TileGrid::TileGrid(const Directory& directory, const Layout& layout, std::span<const std::uint8_t> source)
    : m_numbers(directory.GetNumbers()), m_width(layout.width), m_height(layout.height), m_tileWidth(layout.width),
      m_tileHeight(layout.height), m_across(1), m_down(1), m_storedCount(1), m_onlySource(source) {}

// A few bytes of a compressed tile can stand for any number of samples that nobody sees.
void TileGrid::CheckOverhang(const Layout& layout) const {
    constexpr double tolerance = 64 << 20, imageFactor = 16, fileFactor = 256;
    // As many bytes as a sample takes when it is unpacked.
    const double sampleBytes = layout.ChannelBits() / 8;
    const double image = double(m_width) * m_height * (layout.isColor ? 4 : 1) * sampleBytes;
    const double padded = double(m_across) * m_tileWidth * m_height * layout.SamplesInTile() * sampleBytes;
    if (padded > tolerance + imageFactor * image + fileFactor * m_numbers.GetSize())
        throw Quorvex::Exception();
}

void TileGrid::CountStored(const Layout& layout) {
    m_storedCount = m_offsets.size();
    if (layout.compression == Compression::None)
        return;
    constexpr std::uint64_t tolerance = 64 << 20, factor = 16;
    std::uint64_t left = tolerance + factor * m_numbers.GetSize();
    for (std::uint64_t index = 0; index < m_offsets.size(); ++index) {
        const std::uint64_t bytes = GetSource(index, 0).size();
        if (bytes > left) {
            m_storedCount = index;
            return;
        }
        left -= bytes;
    }
}

TileGrid::Place TileGrid::GetPlace(std::uint64_t tile) const {
    Place place{};
    place.x = static_cast<std::uint32_t>(tile % m_across) * m_tileWidth;
    place.y = static_cast<std::uint32_t>(tile / m_across) * m_tileHeight;
    place.columns = std::min(m_tileWidth, m_width - place.x);
    place.rows = std::min(m_tileHeight, m_height - place.y);
    return place;
}

std::optional<std::uint64_t> TileGrid::IndexOf(std::uint64_t tile, std::uint32_t plane) const {
    const std::uint64_t index = plane * GetCount() + tile;
    if (index >= m_storedCount || m_offsets[index] > m_numbers.GetSize())
        return std::nullopt;
    return index;
}

std::span<const std::uint8_t> TileGrid::GetSource(std::uint64_t tile, std::uint32_t plane) const {
    if (m_onlySource)
        return *m_onlySource;
    const std::optional<std::uint64_t> index = IndexOf(tile, plane);
    if (!index)
        return {};
    const std::uint32_t offset = m_offsets[*index];
    const std::uint32_t byteCount = *index < m_byteCounts.size() ? m_byteCounts[*index] : 0;
    const std::uint32_t left = m_numbers.GetSize() - offset;
    if (byteCount != 0 && byteCount <= left)
        return m_numbers.Bytes(offset, byteCount);
    const auto next = std::upper_bound(m_sortedOffsets.begin(), m_sortedOffsets.end(), offset);
    return m_numbers.Bytes(offset, next != m_sortedOffsets.end() ? std::min(*next - offset, left) : left);
}

std::span<const std::uint8_t> TileGrid::GetSourceUpToEnd(std::uint64_t tile, std::uint32_t plane) const {
    const std::optional<std::uint64_t> index = IndexOf(tile, plane);
    if (!index)
        return {};
    return m_numbers.Bytes(m_offsets[*index], m_numbers.GetSize() - m_offsets[*index]);
}

} // namespace ET::Img::Tif
