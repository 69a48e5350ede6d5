#pragma once

#include "codecs/SharedWork.h"
#include "codecs/jpg/ScanDecoder.h"

#include <mutex>
#include <vector>

namespace ET::Img::Jpg {

struct McuRange {
    std::uint64_t first;
    std::uint64_t count;
};

/// The segments of a scan, taken by any number of workers. A Decoder has
///   void Decode(const RestartSegments::Segment& segment, BitReader& reader, std::uint64_t& done) const
/// which counts the MCUs that it has delivered, and raises where the data are damaged.
template <class Decoder>
class ScanRun {
public:
    ScanRun(const Decoder& decoder, const Quorvex::StreamBuffer& buffer, std::uint32_t restartInterval,
            std::uint64_t mcuCount)
        : m_decoder(decoder), m_begin(buffer.GetData()), m_hasIntervals(restartInterval != 0), m_mcuCount(mcuCount),
          m_segments(m_begin + buffer.GetPosition(), m_begin + buffer.GetSize(), restartInterval, mcuCount) {}

    ScanResult Run(std::uint32_t workerCount) {
        ShareWork(workerCount, [this] { Work(); });
        AddMissing(m_nextMcu, m_mcuCount);
        const std::uint8_t* const position = m_hasIntervals ? m_segments.Position() : m_position;
        return {static_cast<std::uint32_t>(position - m_begin), m_isIncomplete || m_segments.IsDamaged()};
    }

    /// After Run: the MCUs that were not delivered.
    const std::vector<McuRange>& Missing() const { return m_missing; }

private:
    void Work() {
        RestartSegments::Segment segment{};
        while (TakeNext(segment)) {
            BitReader reader(segment.begin, segment.end);
            bool isDamaged = false;
            std::uint64_t done = 0;
            try {
                m_decoder.Decode(segment, reader, done);
            } catch (const std::bad_alloc&) {
                throw;
            } catch (const std::exception&) {
                // The interval ends here; those behind it begin anew.
                isDamaged = true;
            }
            const std::lock_guard lock(m_mutex);
            m_isIncomplete = m_isIncomplete || isDamaged;
            m_position = reader.Position();
            AddMissing(segment.firstMcu + done, segment.firstMcu + segment.mcuCount);
        }
    }

    bool TakeNext(RestartSegments::Segment& segment) {
        const std::lock_guard lock(m_mutex);
        if (!m_segments.Next(segment))
            return false;
        AddMissing(m_nextMcu, segment.firstMcu);
        m_nextMcu = segment.firstMcu + segment.mcuCount;
        return true;
    }

    void AddMissing(std::uint64_t begin, std::uint64_t end) {
        if (begin < end)
            m_missing.push_back({begin, end - begin});
    }

    const Decoder& m_decoder;
    const std::uint8_t* m_begin;
    bool m_hasIntervals;
    std::uint64_t m_mcuCount;
    std::mutex m_mutex; ///< Of all below.
    RestartSegments m_segments;
    std::uint64_t m_nextMcu = 0; ///< Behind the last segment that was taken.
    const std::uint8_t* m_position = m_begin;
    bool m_isIncomplete = false;
    std::vector<McuRange> m_missing;
};

} // namespace ET::Img::Jpg
