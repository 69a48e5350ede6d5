#include "codecs/jpg/JPGDecoder.h"

#include "codecs/TargetCheck.h"
#include "codecs/jpg/Markers.h"
#include "codecs/tif/TiffDirectory.h"
#include "foundation/Exception.h"

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

void SkipSegment(Quorvex::StreamBuffer& buffer) {
    buffer.Seek(ReadSegmentEnd(buffer));
}

} // namespace

SharedPtr<ImageBase> JPGDecoderImpl::Load(const SharedPtr<ImageBase>& target, std::uint32_t) {
    m_frame = Frame();
    m_hasScan = m_keepsCoefficients = false;
    m_orientation = 1;
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
    CheckTarget(*target, Info);
    ClearToGrey(*target);
    return Next::Continue;
}

ScanContext JPGDecoderImpl::ContextFor(ImageBase& target) {
    return {m_frame, m_tables, m_hints, m_restartInterval, m_workerCount, target};
}

JPGDecoderImpl::Next JPGDecoderImpl::ReadScan(Quorvex::StreamBuffer& buffer, const SharedPtr<ImageBase>& target) {
    if (!target || !m_frame.IsRead())
        throw Quorvex::Exception("Missing Start Of Frame!");
    const ScanHeader header = ReadScanHeader(buffer, m_frame);
    const ScanResult result = DecodeScan(ContextFor(*target), header, buffer);
    m_hasScan = true;
    m_keepsCoefficients = !IsSingleScan(m_frame, header);
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
