#include "codecs/tif/OldJpeg.h"

#include "codecs/jpg/Markers.h"
#include "codecs/tif/Tags.h"
#include "foundation/Exception.h"

#include <algorithm>

namespace ET::Img::Tif {

namespace {

using Bytes = std::vector<std::uint8_t>;

namespace Marker = Jpg::Marker;

void Append(Bytes& bytes, std::span<const std::uint8_t> more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

void AppendSegment(Bytes& bytes, std::uint8_t marker, std::span<const std::uint8_t> content) {
    const std::size_t length = content.size() + 2;
    Append(bytes, Bytes{0xFF, marker, static_cast<std::uint8_t>(length >> 8), static_cast<std::uint8_t>(length)});
    Append(bytes, content);
}

/// One that stands in the file without a header, behind the byte that names it.
void AppendTable(Bytes& bytes, std::uint8_t marker, std::uint32_t name, std::span<const std::uint8_t> table) {
    Bytes content{static_cast<std::uint8_t>(name)};
    Append(content, table);
    AppendSegment(bytes, marker, content);
}

/// Sixteen counts, and as many values as they make.
std::span<const std::uint8_t> HuffmanTableAt(const Numbers& numbers, std::uint32_t offset) {
    constexpr std::uint32_t lengths = 16;
    std::uint32_t size = lengths;
    for (const std::uint8_t count : numbers.Bytes(offset, lengths))
        size += count;
    return numbers.Bytes(offset, size);
}

std::uint8_t At(const std::array<std::uint8_t, 4>& values, std::size_t component) {
    return values[std::min(component, values.size() - 1)];
}

/// Of the components with these identifiers, which are those from the given one on.
void AppendScanHeader(Bytes& bytes, std::span<const std::uint8_t> identifiers, std::size_t component,
                      const ComponentTables& dc, const ComponentTables& ac, const ScanKind& kind) {
    Bytes content{static_cast<std::uint8_t>(identifiers.size())};
    for (std::size_t i = 0; i < identifiers.size(); ++i)
        Append(content,
               Bytes{identifiers[i], static_cast<std::uint8_t>(At(dc, component + i) << 4 | At(ac, component + i))});
    const std::uint8_t last = kind.isLossless ? 0 : 63;
    Append(content, Bytes{At(kind.first, component), last, At(kind.lowestBit, component)});
    AppendSegment(bytes, Marker::startOfScan, content);
}

void AppendEnd(Bytes& bytes) {
    Append(bytes, Bytes{0xFF, Marker::endOfImage});
}

/// How far the headers of a JPEG file go, whether a scan follows, and what the frame and the tables say.
struct Headers {
    std::size_t size = 0;
    bool hasScan = false;
    Bytes components{};
    std::uint32_t blockSize = 8; ///< Of its smallest unit, in pixels; of a lossless frame that is one.
    std::uint32_t mcuWidth = 0;
    std::uint32_t mcuHeight = 0;
    std::uint8_t lastDc = 0; ///< The highest name of a table.
    std::uint8_t lastAc = 0;
};

/// ITU T.81, B.2.2.
void ReadFrame(std::span<const std::uint8_t> content, Headers& headers) {
    constexpr std::size_t countPlace = 5, componentBytes = 3;
    if (content.size() <= countPlace || content.size() < countPlace + 1 + componentBytes * content[countPlace])
        return;
    for (std::size_t i = 0; i < content[countPlace]; ++i) {
        const std::span<const std::uint8_t> component = content.subspan(countPlace + 1 + i * componentBytes);
        headers.components.push_back(component[0]);
        headers.mcuWidth = std::max(headers.mcuWidth, headers.blockSize * (component[1] >> 4));
        headers.mcuHeight = std::max(headers.mcuHeight, headers.blockSize * (component[1] & 15));
    }
}

/// ITU T.81, B.2.4.2.
void ReadTableNames(std::span<const std::uint8_t> content, Headers& headers) {
    constexpr std::size_t lengths = 16;
    while (content.size() > lengths) {
        const std::uint8_t name = content[0] & 3;
        std::uint8_t& last = content[0] >> 4 == 0 ? headers.lastDc : headers.lastAc;
        last = std::max(last, name);
        std::size_t size = 1 + lengths;
        for (const std::uint8_t count : content.subspan(1, lengths))
            size += count;
        content = content.subspan(std::min(size, content.size()));
    }
}

Headers WalkHeaders(std::span<const std::uint8_t> file) {
    Headers headers;
    std::size_t place = 2;
    while (place + 4 <= file.size() && file[place] == Marker::prefix) {
        const std::uint8_t marker = file[place + 1];
        // Any number of such bytes may stand before a marker.
        if (marker == Marker::prefix) {
            ++place;
            continue;
        }
        headers.hasScan = marker == Marker::startOfScan;
        const std::size_t length = std::size_t{file[place + 2]} << 8 | file[place + 3];
        if (headers.hasScan || marker == Marker::endOfImage || length < 2 || length > file.size() - place - 2)
            break;
        const std::span<const std::uint8_t> content = file.subspan(place + 4, length - 2);
        if (marker == Marker::losslessFrame)
            headers.blockSize = 1;
        if (marker == Marker::baselineFrame || marker == Marker::losslessFrame)
            ReadFrame(content, headers);
        if (marker == Marker::huffmanTables)
            ReadTableNames(content, headers);
        place += 2 + length;
    }
    headers.size = place;
    return headers;
}

/// Each strip begins anew as a restart interval does. 0 where there is one strip alone.
std::uint32_t McusOfStrip(const Directory& directory, const Layout& layout, const Headers& headers) {
    const std::uint32_t rows = directory.Integer(Tag::RowsPerStrip).value_or(0);
    // The units of a component by itself are its blocks.
    const std::uint32_t width = layout.isPlanar ? headers.blockSize : headers.mcuWidth;
    const std::uint32_t height = layout.isPlanar ? headers.blockSize : headers.mcuHeight;
    if (width == 0 || height == 0 || rows >= layout.height)
        return 0;
    const std::uint64_t mcus = (std::uint64_t(layout.width) + width - 1) / width * (rows / height);
    return mcus <= 0xFFFF ? static_cast<std::uint32_t>(mcus) : 0;
}

void AppendRestartInterval(Bytes& bytes, std::uint32_t mcus) {
    AppendSegment(bytes, Marker::restartInterval,
                  Bytes{static_cast<std::uint8_t>(mcus >> 8), static_cast<std::uint8_t>(mcus)});
}

bool StartsWith(std::span<const std::uint8_t> bytes, std::uint8_t marker) {
    return bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == marker;
}

bool EndsWithRestart(const Bytes& bytes) {
    return bytes[bytes.size() - 2] == 0xFF && Marker::IsRestart(bytes.back());
}

/// The bytes of the strips. Those that claim the same ones over and over do not make more than the file has.
std::vector<std::span<const std::uint8_t>> StripsOf(const Directory& directory) {
    const Numbers& numbers = directory.GetNumbers();
    const std::vector<std::uint32_t> offsets = directory.Integers(Tag::StripOffsets);
    const std::vector<std::uint32_t> counts = directory.Integers(Tag::StripByteCounts);
    std::vector<std::span<const std::uint8_t>> strips;
    std::uint64_t left = numbers.GetSize();
    for (std::size_t i = 0; i < std::min(offsets.size(), counts.size()); ++i) {
        const std::uint32_t offset = std::min(numbers.GetSize(), offsets[i]);
        const std::uint64_t size = std::min<std::uint64_t>({counts[i], numbers.GetSize() - offset, left});
        strips.push_back(numbers.Bytes(offset, size));
        left -= size;
    }
    return strips;
}

/// Each component has the table of its own name, or the last one there is.
ComponentTables TablesUpTo(std::uint8_t last) {
    ComponentTables tables{};
    for (std::size_t i = 0; i < tables.size(); ++i)
        tables[i] = static_cast<std::uint8_t>(std::min<std::size_t>(i, last));
    return tables;
}

/// The scan that the headers lack, or one of each component where those lie in planes: the first strip may begin with
/// its header.
void AppendScans(Bytes& file, const Directory& directory, const Layout& layout, const Headers& headers) {
    const std::uint32_t interval = McusOfStrip(directory, layout, headers);
    const std::vector<std::span<const std::uint8_t>> strips = StripsOf(directory);
    const std::span<const std::uint8_t> components = headers.components;
    const std::size_t scans = layout.isPlanar ? std::min(strips.size(), components.size()) : 1;
    if (interval != 0)
        AppendRestartInterval(file, interval);
    for (std::size_t scan = 0; scan < scans; ++scan) {
        const std::size_t first = strips.size() * scan / scans, end = strips.size() * (scan + 1) / scans;
        for (std::size_t i = first; i < end; ++i) {
            if (i == first && !StartsWith(strips[i], Marker::startOfScan))
                AppendScanHeader(file, layout.isPlanar ? components.subspan(scan, 1) : components, scan,
                                 TablesUpTo(headers.lastDc), TablesUpTo(headers.lastAc), ScanKind(directory, layout));
            if (i != first && interval != 0 && !EndsWithRestart(file))
                Append(file, Bytes{0xFF, static_cast<std::uint8_t>(Marker::firstRestart + (i - first - 1) % 8)});
            Append(file, strips[i]);
        }
    }
}

/// Appends the tables that the tag leads to, and gives the names of those of the components: one without a table of its
/// own shares that of the one before.
template <class AppendAt>
ComponentTables AppendTables(const Directory& directory, std::uint16_t tag, const AppendAt& appendAt) {
    const std::vector<std::uint32_t> offsets = directory.Integers(tag);
    ComponentTables names{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto name = static_cast<std::uint8_t>(i);
        const bool isOwn = i < offsets.size() && offsets[i] != 0 && (i == 0 || offsets[i] != offsets[i - 1]);
        if (isOwn)
            appendAt(name, offsets[i]);
        names[i] = isOwn || i == 0 ? name : names[i - 1];
    }
    return names;
}

} // namespace

bool StartsJpeg(std::span<const std::uint8_t> bytes) {
    return StartsWith(bytes, Marker::startOfImage);
}

bool IsLosslessJpeg(std::span<const std::uint8_t> file) {
    return WalkHeaders(file).blockSize == 1;
}

ScanKind::ScanKind(const Directory& directory, const Layout& layout) : isLossless(layout.isOldLossless) {
    if (!isLossless)
        return;
    const auto fill = [&](std::uint16_t tag, std::uint32_t otherwise, std::array<std::uint8_t, 4>& values) {
        const std::vector<std::uint32_t> told = directory.Integers(tag);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = static_cast<std::uint8_t>(i < told.size() ? told[i] : otherwise);
    };
    fill(Tag::JPEGLosslessPredictors, 1, first);
    fill(Tag::JPEGPointTransforms, 0, lowestBit);
}

OldJpegHeaders::OldJpegHeaders(const Directory& directory, const Layout& layout)
    : m_tables{0xFF, Marker::startOfImage}, m_scan(directory, layout), m_samples(layout.SamplesInTile()),
      m_factors(static_cast<std::uint8_t>(
          layout.photometric == Photometric::YCbCr ? layout.chromaHorizontal << 4 | layout.chromaVertical : 0x11)) {
    const Numbers& numbers = directory.GetNumbers();
    m_quantisation = AppendTables(directory, Tag::JPEGQTables, [&](std::uint8_t name, std::uint32_t offset) {
        AppendTable(m_tables, Marker::quantisationTables, name, numbers.Bytes(offset, 64));
    });
    m_dc = AppendTables(directory, Tag::JPEGDCTables, [&](std::uint8_t name, std::uint32_t offset) {
        AppendTable(m_tables, Marker::huffmanTables, name, HuffmanTableAt(numbers, offset));
    });
    m_ac = AppendTables(directory, Tag::JPEGACTables, [&](std::uint8_t name, std::uint32_t offset) {
        AppendTable(m_tables, Marker::huffmanTables, 0x10u | name, HuffmanTableAt(numbers, offset));
    });
}

Bytes OldJpegHeaders::FileOf(std::span<const std::uint8_t> data, std::uint32_t width, std::uint32_t height,
                             std::uint32_t plane) const {
    if (width > 0xFFFF || height > 0xFFFF)
        throw Quorvex::Exception();
    Bytes file = m_tables;
    Bytes frame{8,
                static_cast<std::uint8_t>(height >> 8),
                static_cast<std::uint8_t>(height),
                static_cast<std::uint8_t>(width >> 8),
                static_cast<std::uint8_t>(width),
                static_cast<std::uint8_t>(m_samples)};
    Bytes components;
    for (std::uint32_t i = 0; i < m_samples; ++i) {
        components.push_back(static_cast<std::uint8_t>(i + 1));
        Append(frame, Bytes{components.back(), i == 0 ? m_factors : std::uint8_t{0x11}, At(m_quantisation, plane + i)});
    }
    AppendSegment(file, m_scan.isLossless ? Marker::losslessFrame : Marker::baselineFrame, frame);
    AppendScanHeader(file, components, plane, m_dc, m_ac, m_scan);
    Append(file, data);
    AppendEnd(file);
    return file;
}

std::optional<Bytes> ReadInterchangeFormat(const Directory& directory, const Layout& layout) {
    const Numbers& numbers = directory.GetNumbers();
    const std::uint32_t offset = directory.Integer(Tag::JPEGInterchangeFormat).value_or(0);
    if (offset == 0 || offset > numbers.GetSize())
        return std::nullopt;
    const std::uint32_t left = numbers.GetSize() - offset;
    const std::uint32_t told = directory.Integer(Tag::JPEGInterchangeFormatLength).value_or(0);
    const std::span<const std::uint8_t> file = numbers.Bytes(offset, told != 0 ? std::min(told, left) : left);
    if (!StartsJpeg(file))
        return std::nullopt;
    const Headers headers = WalkHeaders(file);
    Bytes whole(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(headers.hasScan ? file.size() : headers.size));
    if (!headers.hasScan)
        AppendScans(whole, directory, layout, headers);
    AppendEnd(whole);
    return whole;
}

} // namespace ET::Img::Tif
