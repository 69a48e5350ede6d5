#include "codecs/jpg/JPGDecoder.h"

#include "codecs/TargetCheck.h"
#include "codecs/jpg/Markers.h"
#include "codecs/tif/TiffDirectory.h"
#include "foundation/Exception.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace ET::Img {

using namespace Jpg;

namespace {

/// What no scan reaches is grey.
void ClearToGrey(ImageBase& target) {
    const bool isWide = target.ColorType == Quorvex::Data::ColorTypeEnum::BGRAUInt16;
    target.clear(isWide ? 0x8000 : 0x80);
}

// A file may claim any frame and repeat its scans, so that a few bytes could ask for gigabytes and minutes. Two bounds
// keep what is spent in proportion to the file and to the picture in it.

// No complete picture has more than 512 pixels per byte: each block of 64 takes at least a bit. Of a frame that is
// eight times as large not an eighth can be there; it is refused, unless it is small enough to be no burden (256 MB of
// 8-bit pixels).
constexpr std::uint64_t largestPixelsPerByte = 8 * 512;
constexpr std::uint64_t largestBurden = std::uint64_t{1} << 26;

// Scans go over a block again and again: ten times in the usual progressive files, once for each bit of each
// coefficient at worst. They may do so 32 times on average, and for each byte of the file over 128 blocks more, as the
// end of a band can be told for thousands of blocks in two bytes.
constexpr std::uint64_t passesPerBlock = 32;
constexpr std::uint64_t blocksPerByte = 128;

/// Blocks of all components, or samples where there are no blocks.
std::uint64_t BlockCount(const Frame& frame) {
    std::uint64_t perMcu = 0;
    for (std::uint32_t place = 0; place < frame.componentCount; ++place)
        perMcu += frame.At(place).BlocksPerMcu();
    return perMcu * frame.mcuColumns * frame.mcuRows;
}

/// What a scan goes over of them.
std::uint64_t BlockCount(const Frame& frame, const ScanHeader& header) {
    std::uint64_t perMcu = 0;
    for (std::uint32_t i = 0; i < header.componentCount; ++i)
        perMcu += frame.Of(header.identifiers[i]).BlocksPerMcu();
    return (header.componentCount == 1 ? 1 : perMcu) * ScanGeometry(frame, header).McuCount();
}

void SkipSegment(Quorvex::StreamBuffer& buffer) {
    buffer.Seek(ReadSegmentEnd(buffer));
}

} // namespace

/// Nothing that an earlier pass has read may show in this one.
void JPGDecoderImpl::Reset() {
    m_frame = Frame();
    m_tables = Tables();
    m_hints.adobe = ColorHints::Adobe::Unknown;
    m_restartInterval = m_outerRestartInterval;
    m_hasScan = m_keepsCoefficients = m_isTargetSet = false;
    m_orientation = 1;
}

SharedPtr<ImageBase> JPGDecoderImpl::Load(const SharedPtr<ImageBase>& target, std::uint32_t) {
    Reset();
    m_stream->seek(0);
    if (m_stream->size() > std::numeric_limits<std::uint32_t>::max())
        throw Quorvex::Exception();
    Quorvex::StreamBuffer buffer(m_stream->lock(static_cast<std::uint32_t>(m_stream->size())));
    if (buffer.GetSize() < 2 || ReadWord(buffer) != (Marker::prefix << 8 | Marker::startOfImage))
        throw Quorvex::Exception("Missing Start Of Image");
    const bool isComplete = WalkScans(buffer, target);
    if (!m_frame.IsRead())
        throw Quorvex::Exception("Missing Start Of Frame!");
    if (!target)
        return {};
    if (m_keepsCoefficients)
        FinishFrame(ContextFor(*target));
    else if (!m_isTargetSet)
        ClearToGrey(*target);
    if (!isComplete || !m_hasScan)
        *Incomplete = true;
    return target;
}

/// False where the file is damaged behind the beginning of a scan: what came before is worth showing.
bool JPGDecoderImpl::WalkScans(Quorvex::StreamBuffer& buffer, const SharedPtr<ImageBase>& target) {
    try {
        while (buffer.GetRemaining() != 0) {
            const Next next = ReadMarker(buffer, target);
            if (next == Next::EndOfHeaders)
                return true;
            if (next == Next::EndOfFile)
                return !*Incomplete;
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        if (!m_hasScan)
            throw;
        return false;
    }
    // Without an end of image the file has been cut.
    return false;
}

JPGDecoderImpl::Next JPGDecoderImpl::ReadMarker(Quorvex::StreamBuffer& buffer, const SharedPtr<ImageBase>& target) {
    const std::uint8_t prefix = buffer.ReadByte();
    if (prefix != Marker::prefix)
        throw Quorvex::Exception(Marker::ExpectedText(buffer.GetPosition() - 1));
    const std::uint8_t marker = buffer.ReadByte();
    Marker::RefuseUnsupported(marker, buffer.GetPosition() - 2);
    switch (marker) {
    case Marker::baselineFrame:
        return ReadFrameHeader(buffer, FrameKind::Baseline, target);
    case Marker::progressiveFrame:
        return ReadFrameHeader(buffer, FrameKind::Progressive, target);
    case Marker::losslessFrame:
        return ReadFrameHeader(buffer, FrameKind::Lossless, target);
    case Marker::huffmanTables:
        ReadHuffmanTables(buffer, m_tables);
        break;
    case Marker::quantisationTables:
        ReadQuantisationTables(buffer, m_tables);
        break;
    case Marker::restartInterval: {
        const std::uint32_t end = ReadSegmentEnd(buffer);
        m_restartInterval = static_cast<std::uint16_t>(ReadWord(buffer));
        buffer.Seek(end);
        break;
    }
    case Marker::endOfImage:
        return Next::EndOfFile;
    case Marker::startOfScan:
        return ReadScan(buffer, target);
    case Marker::exif:
        ReadExif(buffer);
        break;
    case Marker::adobe:
        ReadAdobe(buffer);
        break;
    case Marker::prefix:
        buffer.Seek(buffer.GetPosition() - 1);
        break;
    default:
        SkipSegment(buffer);
        break;
    }
    return Next::Continue;
}

JPGDecoderImpl::Next JPGDecoderImpl::ReadFrameHeader(Quorvex::StreamBuffer& buffer, FrameKind kind,
                                                     const SharedPtr<ImageBase>& target) {
    // One frame is one image; another one would not fit the target.
    if (m_frame.IsRead())
        throw Quorvex::Exception();
    m_frame = ReadFrame(buffer, kind);
    Info = m_frame.GetImageInfo();
    if (!target)
        return Next::EndOfHeaders;
    AdmitFrame(buffer.GetSize());
    CheckTarget(*target, Info);
    // MCUs cover whatever is visible; where they are missing, pixels of 8 bits are set behind them.
    m_isTargetSet = kind == FrameKind::Lossless || m_frame.precision > 8;
    if (m_isTargetSet)
        ClearToGrey(*target);
    return Next::Continue;
}

/// Raises Exception for a frame that the file cannot fill.
void JPGDecoderImpl::AdmitFrame(std::uint32_t fileBytes) {
    const std::uint64_t pixels = std::uint64_t(m_frame.width) * m_frame.height;
    if (pixels > std::max(largestBurden, largestPixelsPerByte * fileBytes))
        throw Quorvex::Exception();
    m_blocksLeft = passesPerBlock * BlockCount(m_frame) + blocksPerByte * fileBytes;
}

/// Whether the scans up to this one go over more blocks than such a file may.
bool JPGDecoderImpl::TakesTooLong(const ScanHeader& header) {
    const std::uint64_t blocks = BlockCount(m_frame, header);
    if (blocks > m_blocksLeft)
        return true;
    m_blocksLeft -= blocks;
    return false;
}

ScanContext JPGDecoderImpl::ContextFor(ImageBase& target) {
    return {m_frame, m_tables, m_hints, m_restartInterval, m_workerCount, m_isTargetSet, target};
}

JPGDecoderImpl::Next JPGDecoderImpl::ReadScan(Quorvex::StreamBuffer& buffer, const SharedPtr<ImageBase>& target) {
    if (!target || !m_frame.IsRead())
        throw Quorvex::Exception("Missing Start Of Frame!");
    const ScanHeader header = ReadScanHeader(buffer, m_frame);
    if (TakesTooLong(header)) {
        *Incomplete = true;
        return Next::EndOfFile;
    }
    const ScanResult result = DecodeScan(ContextFor(*target), header, buffer);
    m_hasScan = true;
    m_keepsCoefficients = !IsSingleScan(m_frame, header);
    m_isTargetSet = m_isTargetSet || !m_keepsCoefficients;
    buffer.Seek(result.position);
    const bool isMarkerNext = buffer.GetRemaining() != 0 && buffer.GetData()[result.position] == Marker::prefix;
    if (!result.isIncomplete && isMarkerNext)
        return Next::Continue;
    *Incomplete = true;
    return Next::EndOfFile;
}

/// A block that cannot be read is no reason not to show the picture.
void JPGDecoderImpl::ReadExif(Quorvex::StreamBuffer& buffer) {
    static constexpr char name[] = "Exif\0";
    const std::uint32_t end = ReadSegmentEnd(buffer);
    if (end - buffer.GetPosition() > sizeof(name) && std::memcmp(buffer.Take(sizeof(name)), name, 4) == 0) {
        try {
            Quorvex::MemoryStream stream(buffer.GetData() + buffer.GetPosition(), end - buffer.GetPosition());
            m_orientation = Tif::ReadOrientation(stream);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception&) {
        }
    }
    buffer.Seek(end);
}

void JPGDecoderImpl::ReadAdobe(Quorvex::StreamBuffer& buffer) {
    constexpr std::uint32_t lengthWithTransform = 14;
    const std::uint32_t start = buffer.GetPosition();
    const std::uint32_t end = ReadSegmentEnd(buffer);
    if (end - start >= lengthWithTransform) {
        // A tag of five bytes and three words.
        buffer.Take(5 + 3 * 2);
        const std::uint8_t transform = buffer.ReadByte();
        if (transform == 0)
            m_hints.adobe = ColorHints::Adobe::Cmyk;
        else if (transform == 2)
            m_hints.adobe = ColorHints::Adobe::Ycck;
    }
    buffer.Seek(end);
}

SharedPtr<ImageBase> JPGDecoder::Load(const SharedPtr<ImageBase>& target, std::uint32_t index) {
    SharedPtr<ImageBase> image = CheckedImpl().Load(target, index);
    m_orientation = CheckedImpl().GetOrientation();
    return image;
}

} // namespace ET::Img
