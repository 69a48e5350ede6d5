#include "codecs/jpg/Scan.h"

#include "codecs/jpg/Markers.h"
#include "foundation/Exception.h"

#include <algorithm>
#include <cstring>

namespace ET::Img::Jpg {

namespace {

bool IsInFrame(const Frame& frame, std::uint8_t identifier) {
    const auto end = frame.identifiers.begin() + frame.componentCount;
    return std::find(frame.identifiers.begin(), end, identifier) != end;
}

// ITU T.81 tables B.3, G.1 and H.1.
void CheckParameters(const Frame& frame, const ScanHeader& header) {
    const bool isProgressive = frame.kind == FrameKind::Progressive;
    const bool isBand = header.spectralStart != 0;
    const bool isWrong = frame.kind == FrameKind::Lossless
                             ? header.spectralStart > 7 || header.bitLow > 15
                             : isProgressive && (header.spectralEnd > 63 || header.spectralStart > header.spectralEnd ||
                                                 (!isBand && header.spectralEnd != 0) ||
                                                 (isBand && header.componentCount != 1) || header.bitLow > 13);
    if (isWrong)
        throw Quorvex::Exception();
}

} // namespace

ScanHeader ReadScanHeader(Quorvex::StreamBuffer& buffer, Frame& frame) {
    const std::uint32_t end = ReadSegmentEnd(buffer);
    ScanHeader header;
    header.componentCount = buffer.ReadByte();
    if (header.componentCount > frame.componentCount)
        throw Quorvex::Exception("number of image components in scan > number of image components in frame");
    for (std::uint32_t i = 0; i < header.componentCount; ++i) {
        header.identifiers[i] = buffer.ReadByte();
        const std::uint8_t selectors = buffer.ReadByte();
        if (selectors >> 4 > 3)
            throw Quorvex::Exception("invalid DC huffman table selector");
        if ((selectors & 0xF) > 3)
            throw Quorvex::Exception("invalid AC huffman table selector");
        const auto present = header.identifiers.begin() + i;
        const bool isRepeated = std::find(header.identifiers.begin(), present, *present) != present;
        if (isRepeated || !IsInFrame(frame, *present))
            throw Quorvex::Exception();
        frame.Of(header.identifiers[i]).dcTable = selectors >> 4;
        frame.Of(header.identifiers[i]).acTable = selectors & 0xF;
    }
    header.spectralStart = buffer.ReadByte();
    header.spectralEnd = buffer.ReadByte();
    const std::uint8_t bits = buffer.ReadByte();
    header.bitHigh = bits >> 4;
    header.bitLow = bits & 0xF;
    if (header.componentCount == 0)
        throw Quorvex::Exception();
    CheckParameters(frame, header);
    buffer.Seek(end);
    return header;
}

ScanGeometry::ScanGeometry(const Frame& frame, const ScanHeader& header)
    : columns(frame.mcuColumns), rows(frame.mcuRows) {
    if (header.componentCount != 1)
        return;
    const Component& component = frame.Of(header.identifiers[0]);
    const std::uint32_t samples = frame.kind == FrameKind::Lossless ? 1 : 8;
    columns = DividedUp(DividedUp(std::uint64_t(component.horizontal) * frame.width, frame.largestHorizontal), samples);
    rows = DividedUp(DividedUp(std::uint64_t(component.vertical) * frame.height, frame.largestVertical), samples);
}

bool RestartSegments::Next(Segment& segment) {
    if (m_mcuCounter >= m_mcuCount)
        return false;
    if (m_interval == 0) {
        segment = {m_next, m_end, 0, m_mcuCount};
        m_mcuCounter = m_mcuCount;
        return true;
    }
    if (m_mcuCounter != 0 && !PassMarker() && !FindLostMarker())
        return false;
    if (m_mcuCounter >= m_mcuCount)
        return false;
    segment.begin = m_next;
    segment.firstMcu = m_mcuCounter;
    segment.mcuCount = std::min<std::uint64_t>(m_interval, m_mcuCount - m_mcuCounter);
    segment.end = m_next = FindSegmentEnd();
    m_mcuCounter += m_interval;
    if (m_next == m_end) {
        m_isDamaged = true;
        m_mcuCounter = m_mcuCount;
    }
    return true;
}

/// The marker that has to follow, with its number; FF may be repeated before it (ITU T.81 B.1.1.2).
bool RestartSegments::PassMarker() {
    while (m_end - m_next >= 2 && m_next[0] == 0xFF && m_next[1] == 0xFF)
        ++m_next;
    if (m_end - m_next < 2 || m_next[0] != 0xFF || m_next[1] != Marker::firstRestart + m_nextRestart)
        return false;
    m_next += 2;
    m_nextRestart = (m_nextRestart + 1) % 8;
    return true;
}

/// Any restart marker further on; its number tells how many intervals are lost.
bool RestartSegments::FindLostMarker() {
    m_isDamaged = true;
    for (const std::uint8_t* place = m_next; m_end - place >= 2; ++place) {
        if (place[0] != 0xFF || !Marker::IsRestart(place[1]))
            continue;
        const std::uint32_t found = place[1] - Marker::firstRestart;
        m_mcuCounter += std::uint64_t((found - m_nextRestart) % 8) * m_interval;
        m_nextRestart = (found + 1) % 8;
        m_next = place + 2;
        return true;
    }
    return false;
}

/// The next marker; FF 00 is a data byte.
const std::uint8_t* RestartSegments::FindSegmentEnd() const {
    for (const std::uint8_t* place = m_next; place != m_end;) {
        place = static_cast<const std::uint8_t*>(std::memchr(place, 0xFF, static_cast<std::size_t>(m_end - place)));
        if (place == nullptr || m_end - place < 2)
            break;
        if (place[1] != 0)
            return place;
        place += 2;
    }
    return m_end;
}

} // namespace ET::Img::Jpg
