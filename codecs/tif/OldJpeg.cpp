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

void AppendScanHeader(Bytes& bytes, const Bytes& components) {
    Bytes content{static_cast<std::uint8_t>(components.size())};
    for (std::size_t i = 0; i < components.size(); ++i)
        Append(content, Bytes{components[i], static_cast<std::uint8_t>(i * 0x11)});
    Append(content, Bytes{0, 63, 0});
    AppendSegment(bytes, Marker::startOfScan, content);
}

void AppendEnd(Bytes& bytes) {
    Append(bytes, Bytes{0xFF, Marker::endOfImage});
}

/// How far the headers of a JPEG file go, whether a scan follows, and what the frame says.
struct Headers {
    std::size_t size = 0;
    bool hasScan = false;
    Bytes components{};
    std::uint32_t mcuWidth = 0;
    std::uint32_t mcuHeight = 0;
};

/// ITU T.81, B.2.2.
void ReadFrame(std::span<const std::uint8_t> content, Headers& headers) {
    constexpr std::size_t countPlace = 5, componentBytes = 3;
    if (content.size() <= countPlace || content.size() < countPlace + 1 + componentBytes * content[countPlace])
        return;
    for (std::size_t i = 0; i < content[countPlace]; ++i) {
        const std::span<const std::uint8_t> component = content.subspan(countPlace + 1 + i * componentBytes);
        headers.components.push_back(component[0]);
        headers.mcuWidth = std::max(headers.mcuWidth, 8u * (component[1] >> 4));
        headers.mcuHeight = std::max(headers.mcuHeight, 8u * (component[1] & 15));
    }
}

Headers WalkHeaders(std::span<const std::uint8_t> file) {
    Headers headers;
    std::size_t place = 2;
    while (place + 4 <= file.size() && file[place] == 0xFF) {
        const std::uint8_t marker = file[place + 1];
        headers.hasScan = marker == Marker::startOfScan;
        const std::size_t length = std::size_t{file[place + 2]} << 8 | file[place + 3];
        if (headers.hasScan || marker == Marker::endOfImage || length < 2 || length > file.size() - place - 2)
            break;
        if (marker == Marker::baselineFrame)
            ReadFrame(file.subspan(place + 4, length - 2), headers);
        place += 2 + length;
    }
    headers.size = place;
    return headers;
}

/// Each strip begins anew as a restart interval does. 0 where there is one strip alone.
std::uint32_t McusOfStrip(const Directory& directory, const Headers& headers) {
    const std::uint32_t width = directory.Integer(Tag::ImageWidth).value_or(0);
    const std::uint32_t rows = directory.Integer(Tag::RowsPerStrip).value_or(0);
    if (headers.mcuWidth == 0 || headers.mcuHeight == 0 || rows >= directory.Integer(Tag::ImageLength).value_or(0))
        return 0;
    const std::uint64_t mcus =
        (std::uint64_t(width) + headers.mcuWidth - 1) / headers.mcuWidth * (rows / headers.mcuHeight);
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

/// The scan that the headers lack: the first strip may begin with its header.
void AppendScan(Bytes& file, const Directory& directory, const Headers& headers) {
    const std::uint32_t interval = McusOfStrip(directory, headers);
    const std::vector<std::span<const std::uint8_t>> strips = StripsOf(directory);
    if (interval != 0)
        AppendRestartInterval(file, interval);
    for (std::size_t i = 0; i < strips.size(); ++i) {
        if (i == 0 && !StartsWith(strips[i], Marker::startOfScan))
            AppendScanHeader(file, headers.components);
        if (i != 0 && interval != 0 && !EndsWithRestart(file))
            Append(file, Bytes{0xFF, static_cast<std::uint8_t>(Marker::firstRestart + (i - 1) % 8)});
        Append(file, strips[i]);
    }
}

} // namespace

bool StartsJpeg(std::span<const std::uint8_t> bytes) {
    return StartsWith(bytes, Marker::startOfImage);
}

OldJpegHeaders::OldJpegHeaders(const Directory& directory, const Layout& layout)
    : m_tables{0xFF, Marker::startOfImage}, m_samples(layout.SamplesInTile()),
      m_factors(static_cast<std::uint8_t>(
          layout.photometric == Photometric::YCbCr ? layout.chromaHorizontal << 4 | layout.chromaVertical : 0x11)) {
    const Numbers& numbers = directory.GetNumbers();
    const auto forEach = [&](std::uint16_t tag, const auto& append) {
        const std::vector<std::uint32_t> offsets = directory.Integers(tag);
        for (std::uint32_t i = 0; i < std::min<std::size_t>(offsets.size(), 4); ++i)
            append(i, offsets[i]);
    };
    forEach(Tag::JPEGQTables, [&](std::uint32_t i, std::uint32_t offset) {
        AppendTable(m_tables, Marker::quantisationTables, i, numbers.Bytes(offset, 64));
    });
    forEach(Tag::JPEGDCTables, [&](std::uint32_t i, std::uint32_t offset) {
        AppendTable(m_tables, Marker::huffmanTables, i, HuffmanTableAt(numbers, offset));
    });
    forEach(Tag::JPEGACTables, [&](std::uint32_t i, std::uint32_t offset) {
        AppendTable(m_tables, Marker::huffmanTables, 0x10 | i, HuffmanTableAt(numbers, offset));
    });
}

Bytes OldJpegHeaders::FileOf(std::span<const std::uint8_t> data, std::uint32_t width, std::uint32_t height) const {
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
        Append(frame, Bytes{components.back(), i == 0 ? m_factors : std::uint8_t{0x11}, static_cast<std::uint8_t>(i)});
    }
    AppendSegment(file, Marker::baselineFrame, frame);
    AppendScanHeader(file, components);
    Append(file, data);
    AppendEnd(file);
    return file;
}

std::optional<Bytes> ReadInterchangeFormat(const Directory& directory) {
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
        AppendScan(whole, directory, headers);
    AppendEnd(whole);
    return whole;
}

} // namespace ET::Img::Tif
