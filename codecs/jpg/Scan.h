#pragma once

#include "codecs/jpg/Frame.h"

namespace ET::Img::Jpg {

/// What a scan header (ITU T.81 B.2.3) says.
struct ScanHeader {
    std::uint32_t componentCount = 0;
    std::array<std::uint8_t, 4> identifiers{};
    std::uint32_t spectralStart = 0; ///< Ss: in a lossless frame the predictor.
    std::uint32_t spectralEnd = 0;   ///< Se
    std::uint32_t bitHigh = 0;       ///< Ah
    std::uint32_t bitLow = 0;        ///< Al: in a lossless frame the point transform.
};

/// Reads a scan header behind its marker, and gives the components of the frame their tables of entropy codes. Raises
/// Exception with the reason for a header that does not fit the frame.
ScanHeader ReadScanHeader(Quorvex::StreamBuffer& buffer, Frame& frame);

/// How the MCUs of a scan lie in the image.
struct ScanGeometry {
    std::uint32_t columns; ///< MCUs
    std::uint32_t rows;

    ScanGeometry(const Frame& frame, const ScanHeader& header);
    std::uint64_t McuCount() const { return std::uint64_t(columns) * rows; }
};

/// Where the entropy-coded segments of a scan begin, and which MCUs they hold (ITU T.81 B.1.1.2 and E.2.4). Restart
/// markers are looked for byte by byte and not decoded up to, so that several threads may decode what has been found.
/// One thread at a time calls Next.
class RestartSegments {
public:
    struct Segment {
        const std::uint8_t* begin;
        const std::uint8_t* end; ///< Without a restart interval, of the file.
        std::uint64_t firstMcu;
        std::uint64_t mcuCount;
    };

    RestartSegments(const std::uint8_t* begin, const std::uint8_t* end, std::uint32_t restartInterval,
                    std::uint64_t mcuCount)
        : m_next(begin), m_end(end), m_interval(restartInterval), m_mcuCount(mcuCount) {}

    /// The next segment; false where no MCUs or no segments remain.
    bool Next(Segment& segment);
    /// Whether a marker was lost, doubled or wrong, or the data end too early.
    bool IsDamaged() const { return m_isDamaged; }
    /// Behind the last segment that was found; only with a restart interval.
    const std::uint8_t* Position() const { return m_next; }

private:
    bool PassMarker();
    bool FindLostMarker();
    const std::uint8_t* FindSegmentEnd() const;

    const std::uint8_t* m_next;
    const std::uint8_t* m_end;
    std::uint32_t m_interval;
    std::uint64_t m_mcuCount;
    std::uint64_t m_mcuCounter = 0;
    std::uint32_t m_nextRestart = 0;
    bool m_isDamaged = false;
};

} // namespace ET::Img::Jpg
