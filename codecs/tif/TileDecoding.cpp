#include "codecs/tif/TileDecoding.h"

#include "codecs/ClearMemory.h"
#include "codecs/SharedWork.h"
#include "codecs/tif/Decompression.h"
#include "codecs/tif/OldJpeg.h"
#include "codecs/tif/TilePainter.h"
#include "foundation/platform/Processors.h"

#include <atomic>
#include <limits>
#include <mutex>
#include <optional>

namespace ET::Img::Tif {

namespace {

constexpr std::uint32_t largestWorkerCount = 8;
/// A thread is worth its start from so many samples of the image on.
constexpr std::uint64_t samplesPerWorker = 1 << 17;

std::uint32_t WorkersFor(const Layout& layout, const TileGrid& grid, std::uint32_t workerCount) {
    const std::uint64_t useful =
        std::min<std::uint64_t>(grid.GetStoredCount(), 1 + std::uint64_t(layout.width) * layout.height *
                                                               layout.colorSamples / samplesPerWorker);
    if (workerCount == 0)
        workerCount = static_cast<std::uint32_t>(
            std::min<std::uint64_t>(Quorvex::Platform::GetProcessorCount(), std::max<std::uint64_t>(useful, 1)));
    return std::min(workerCount, largestWorkerCount);
}

RowFormat RowFormatOf(const Layout& layout, const TileGrid& grid) {
    RowFormat format{layout.order,     layout.format,          layout.bits,
                     layout.predictor, layout.SamplesInTile(), grid.GetTileWidth()};
    if (MakesPlainBytes(layout)) {
        format.bits = 8;
        format.predictor = 1;
    }
    return format;
}

/// The rows of the planes of a tile: in the file itself where they lie there as they are, or decoded. One thread.
class TileBytes {
public:
    TileBytes(const TileGrid& grid, const Layout& layout, const RowFormat& format, const Decompression& decompression)
        : m_grid(grid), m_format(format), m_decompression(decompression),
          m_isStored(layout.compression == Compression::None && !layout.isFillReversed && !MakesPlainBytes(layout)),
          m_isFullyStored(layout.compression == Compression::None), m_planes(PlaneList(layout).planes),
          m_buffers(m_planes.size()) {}

    /// Whether what was decoded until now lacks anything, besides planes that could not be decoded at all.
    bool IsDamaged() const { return m_isDamaged; }

    /// Null for a plane that cannot be decoded.
    std::vector<const std::uint8_t*> Decode(std::uint64_t tile, const TileGrid::Place& place) {
        TileShape shape{m_grid.GetTileWidth(), place.columns, place.rows, m_format.RowBytes(), m_grid.GetCount()};
        m_reason = {};
        std::vector<const std::uint8_t*> rows(m_planes.size());
        for (std::size_t i = 0; i < m_planes.size(); ++i) {
            shape.plane = m_planes[i];
            rows[i] = DecodePlane(tile, i, shape);
        }
        return rows;
    }

    /// Why a plane of the last tile could not be decoded; empty where nothing is known.
    const Quorvex::String& GetReason() const { return m_reason; }

private:
    const std::uint8_t* DecodePlane(std::uint64_t tile, std::size_t i, const TileShape& shape) {
        const std::span<const std::uint8_t> source =
            m_isFullyStored ? m_grid.GetSourceUpToEnd(tile, m_planes[i]) : m_grid.GetSource(tile, m_planes[i]);
        if (source.empty())
            return nullptr;
        if (m_isStored)
            return source.size() >= shape.Bytes() ? source.data() : nullptr;
        if (m_decompression.LargestSize(source.size(), shape) < shape.Bytes())
            return nullptr;
        try {
            if (m_decompression.Decode(source, shape, m_buffers[i]) == Decompression::Outcome::Damaged)
                m_isDamaged = true;
            return m_buffers[i].Get();
        } catch (const Quorvex::Exception& failure) {
            if (m_reason.IsEmpty())
                m_reason = failure.what();
            return nullptr;
        }
    }

    const TileGrid& m_grid;
    const RowFormat& m_format;
    const Decompression& m_decompression;
    bool m_isStored;      ///< Rows lie in the file as they are.
    bool m_isFullyStored; ///< The size of a tile follows from the image; what the file says of it does not matter.
    std::vector<std::uint32_t> m_planes;
    std::vector<TileBuffer> m_buffers;
    bool m_isDamaged = false;
    Quorvex::String m_reason;
};

/// All tiles, taken by any number of threads.
template <class Sample, class Conversion>
class TileRun {
public:
    TileRun(const Directory& directory, const Layout& layout, const TileGrid& grid, const Decompression& decompression,
            Quorvex::Data::ImageBase& target)
        : m_layout(layout), m_grid(grid), m_decompression(decompression), m_format(RowFormatOf(layout, grid)),
          m_conversion(directory, layout),
          m_lock(Quorvex::Data::SampleTraits<Sample>::LockIn(target, Quorvex::Data::LockMode::ReadWrite)) {}

    TileOutcome Run(std::uint32_t workerCount) {
        if (m_grid.GetStoredCount() < m_grid.GetCount()) {
            m_isIncomplete = true;
            Clear({0, 0, m_lock.Width, m_lock.Height});
        }
        ShareWork(workerCount, [this] { Work(); });
        return {!m_isIncomplete, m_reason};
    }

private:
    void Work() {
        TileBytes bytes(m_grid, m_layout, m_format, m_decompression);
        // Its rows take memory, which a file without any tile is no reason for.
        std::optional<TilePainter<Sample, Conversion>> painter;
        for (std::uint64_t tile = m_next++; tile < m_grid.GetStoredCount(); tile = m_next++) {
            const TileGrid::Place place = m_grid.GetPlace(tile);
            const std::vector<const std::uint8_t*> planes = bytes.Decode(tile, place);
            const auto missing = static_cast<std::size_t>(std::count(planes.begin(), planes.end(), nullptr));
            if (missing != 0 || bytes.IsDamaged())
                m_isIncomplete = true;
            if (!bytes.GetReason().IsEmpty())
                Keep(bytes.GetReason(), tile);
            if (missing == planes.size()) {
                Clear(place);
                continue;
            }
            if (!painter)
                painter.emplace(m_layout, m_format, std::min(m_grid.GetTileWidth(), m_layout.width), m_conversion,
                                m_lock);
            painter->Paint(place, planes);
        }
    }

    /// That of the first tile, whoever meets it.
    void Keep(const Quorvex::String& reason, std::uint64_t tile) {
        const std::lock_guard lock(m_mutex);
        if (tile < m_reasonTile) {
            m_reason = reason;
            m_reasonTile = tile;
        }
    }

    void Clear(const TileGrid::Place& place) const {
        for (std::uint32_t y = 0; y < place.rows; ++y)
            ClearMemory(m_lock.Row(place.y + y) + place.x, place.columns * sizeof(Sample));
    }

    const Layout& m_layout;
    const TileGrid& m_grid;
    const Decompression& m_decompression;
    const RowFormat m_format;
    const Conversion m_conversion;
    const Quorvex::Data::Lock<Sample> m_lock;
    std::atomic<std::uint64_t> m_next = 0;
    std::atomic<bool> m_isIncomplete = false;
    std::mutex m_mutex;
    Quorvex::String m_reason;
    std::uint64_t m_reasonTile = std::numeric_limits<std::uint64_t>::max();
};

template <class Sample>
TileOutcome DecodeAs(const Directory& directory, const Layout& layout, const TileGrid& grid,
                     const Decompression& decompression, Quorvex::Data::ImageBase& target, std::uint32_t workerCount) {
    using Channel = typename Quorvex::Data::ChannelOf<Sample>::Type;
    const std::uint32_t workers = WorkersFor(layout, grid, workerCount);
    if constexpr (Quorvex::Data::SampleTraits<Sample>::isColor &&
                  (std::is_same_v<Channel, std::uint8_t> || std::is_same_v<Channel, std::uint16_t>))
        if (layout.photometric == Photometric::Palette)
            return TileRun<Sample, PaletteConversion<Sample>>(directory, layout, grid, decompression, target)
                .Run(workers);
    return TileRun<Sample, DirectConversion<Sample>>(directory, layout, grid, decompression, target).Run(workers);
}

} // namespace

TileOutcome DecodeTiles(const Directory& directory, const Layout& layout, Quorvex::Data::ImageBase& target,
                        std::uint32_t workerCount) {
    std::optional<std::vector<std::uint8_t>> interchange;
    if (layout.compression == Compression::OldJpeg)
        interchange = ReadInterchangeFormat(directory, layout);
    // Such a file has all components, however the strips lie. Planes of YCbCr are refused either way.
    Layout stored = layout;
    if (interchange && layout.photometric != Photometric::YCbCr)
        stored.isPlanar = false;
    const std::unique_ptr<const Decompression> decompression =
        MakeDecompression(directory, stored, interchange.has_value());
    const TileGrid grid = interchange ? TileGrid(directory, stored, *interchange) : TileGrid(directory, stored);
    return Quorvex::Data::Dispatch(target.ColorType, "unknown color type", [&](auto tag) {
        return DecodeAs<typename decltype(tag)::Sample>(directory, stored, grid, *decompression, target, workerCount);
    });
}

} // namespace ET::Img::Tif
