#include "codecs/jpg/SingleScan.h"

#include "codecs/SharedWork.h"
#include "foundation/Exception.h"

#include <condition_variable>
#include <cstring>
#include <memory>
#include <mutex>

namespace ET::Img::Jpg {

namespace {

// A frame that can be converted has at most 10 blocks per MCU.
constexpr std::size_t shownBlocks = 128;        ///< Samples that the first cache of a processor holds.
constexpr std::size_t stretchBlocks = 1024;     ///< Enough work to be worth another thread's waking up.
constexpr std::size_t leastSharedStretches = 8; ///< In a segment that is worth starting threads for.
constexpr std::size_t stretchesUnderWay = 6;

} // namespace

/// The codes of a segment, stretch by stretch.
class SingleScanDecoder::Reader {
public:
    Reader(const SingleScanDecoder& decoder, const RestartSegments::Segment& segment, BitReader& bits,
           std::uint64_t& done)
        : m_decoder(decoder), m_segment(segment), m_bits(bits), m_done(done) {}

    bool HasMore() const { return !m_isDamaged && m_done < m_segment.mcuCount; }
    bool IsDamaged() const { return m_isDamaged; }

    /// The coefficients of up to that many MCUs. The one where the data are damaged is the last: what was decoded of it
    /// is still worth seeing.
    Stretch Read(std::int16_t* blocks, std::size_t mcuCount) {
        Stretch stretch{m_segment.firstMcu + m_done, 0, blocks};
        mcuCount = std::min<std::uint64_t>(mcuCount, m_segment.mcuCount - m_done);
        std::memset(blocks, 0, mcuCount * m_decoder.m_blocksPerMcu * blockSize * sizeof(std::int16_t));
        stretch.mcuCount = ReadMcus(blocks, mcuCount);
        m_done += stretch.mcuCount;
        return stretch;
    }

private:
    std::size_t ReadMcus(std::int16_t* block, std::size_t mcuCount) {
        BitReader bits = m_bits;
        std::size_t mcu = 0;
        try {
            for (; mcu < mcuCount; ++mcu)
                for (std::size_t i = 0; i < m_decoder.m_components.size(); ++i) {
                    const ScanComponent& component = m_decoder.m_components[i];
                    for (std::uint32_t left = component.blocksPerMcu; left != 0; --left, block += blockSize) {
                        DecodeSequential(bits, component.tables, m_predictors[i], block);
                        if (bits.IsOverrun()) {
                            // Zeros behind the end of the data look like coefficients.
                            std::memset(block, 0, blockSize * sizeof(std::int16_t));
                            throw Quorvex::Exception();
                        }
                    }
                }
        } catch (const Quorvex::Exception&) {
            ++mcu;
            m_isDamaged = true;
        }
        m_bits = bits;
        return mcu;
    }

    const SingleScanDecoder& m_decoder;
    const RestartSegments::Segment& m_segment;
    BitReader& m_bits;
    std::uint64_t& m_done;
    std::array<std::int32_t, 4> m_predictors{};
    bool m_isDamaged = false;
};

/// Stretches on their way from the thread that reads to those that show. The reading one shows a stretch itself where
/// it would have to wait, and none is shown twice, so that the number of threads makes no difference.
class SingleScanDecoder::Pipeline {
public:
    Pipeline(const SingleScanDecoder& decoder, Reader& reader)
        : m_decoder(decoder), m_reader(reader), m_mcuCount(decoder.McusWithin(stretchBlocks)),
          m_memory(std::make_unique_for_overwrite<std::int16_t[]>(stretchesUnderWay * stretchBlocks * blockSize)) {
        for (std::size_t i = 0; i < stretchesUnderWay; ++i)
            m_free.push_back(m_memory.get() + i * stretchBlocks * blockSize);
        m_read.reserve(stretchesUnderWay);
    }

    /// On each of the threads.
    void Work() {
        std::unique_lock lock(m_mutex);
        if (!m_hasReader) {
            m_hasReader = true;
            ReadAll(lock);
        }
        for (;;) {
            m_isReadOrEnded.wait(lock, [this] { return !m_read.empty() || m_isEnded; });
            if (m_read.empty())
                return;
            ShowOne(lock);
        }
    }

private:
    void ReadAll(std::unique_lock<std::mutex>& lock) {
        while (m_reader.HasMore()) {
            while (m_free.empty())
                WaitOrShow(lock);
            std::int16_t* const blocks = m_free.back();
            m_free.pop_back();
            lock.unlock();
            const Stretch stretch = m_reader.Read(blocks, m_mcuCount);
            lock.lock();
            m_read.push_back(stretch);
            m_isReadOrEnded.notify_one();
        }
        m_isEnded = true;
        m_isReadOrEnded.notify_all();
    }

    void WaitOrShow(std::unique_lock<std::mutex>& lock) {
        if (m_read.empty())
            m_isFreed.wait(lock);
        else
            ShowOne(lock);
    }

    void ShowOne(std::unique_lock<std::mutex>& lock) {
        const Stretch stretch = m_read.front();
        m_read.erase(m_read.begin());
        lock.unlock();
        m_decoder.Show(stretch);
        lock.lock();
        m_free.push_back(stretch.blocks);
        m_isFreed.notify_one();
    }

    const SingleScanDecoder& m_decoder;
    Reader& m_reader;
    std::size_t m_mcuCount; ///< Of a stretch.
    std::unique_ptr<std::int16_t[]> m_memory;
    std::mutex m_mutex; ///< Of all below.
    std::condition_variable m_isReadOrEnded;
    std::condition_variable m_isFreed;
    std::vector<std::int16_t*> m_free;
    std::vector<Stretch> m_read;
    bool m_hasReader = false;
    bool m_isEnded = false;
};

SingleScanDecoder::SingleScanDecoder(const ScanContext& context, const ScanHeader& header, const ScanGeometry& geometry,
                                     const PixelLock& lock, std::uint32_t threadCount)
    : m_components(ComponentsOf(context, header)), m_geometry(geometry), m_conversion(context.frame, context.hints),
      m_lock(lock), m_threadCount(threadCount), m_mcuWidth(8 * context.frame.largestHorizontal),
      m_mcuHeight(8 * context.frame.largestVertical) {
    // The order of a scan is its own, but colours follow the order of the frame.
    for (std::uint32_t place = 0; place < context.frame.componentCount; ++place)
        for (std::size_t i = 0; i < m_components.size(); ++i)
            if (m_components[i].component == &context.frame.At(place))
                m_places[i] = place;
    for (const ScanComponent& component : m_components)
        m_blocksPerMcu += component.blocksPerMcu;
}

void SingleScanDecoder::Decode(const RestartSegments::Segment& segment, BitReader& reader, std::uint64_t& done) const {
    Reader codes(*this, segment, reader, done);
    if (m_threadCount > 1 && segment.mcuCount >= leastSharedStretches * McusWithin(stretchBlocks)) {
        Pipeline pipeline(*this, codes);
        ShareWork(m_threadCount, [&] { pipeline.Work(); });
    } else {
        DecodeAlone(codes);
    }
    if (codes.IsDamaged())
        throw Quorvex::Exception();
}

void SingleScanDecoder::DecodeAlone(Reader& reader) const {
    std::int16_t blocks[shownBlocks * blockSize];
    while (reader.HasMore())
        Show(reader.Read(blocks, McusWithin(shownBlocks)));
}

Pixel* SingleScanDecoder::PixelsOf(std::uint64_t mcu) const {
    const std::uint64_t row = mcu / m_geometry.columns, column = mcu % m_geometry.columns;
    return m_lock.Row(static_cast<std::uint32_t>(row * m_mcuHeight)) + column * m_mcuWidth;
}

void SingleScanDecoder::Show(const Stretch& stretch) const {
    static const InverseDct transform = GetInverseDct();
    std::int16_t* blocks = stretch.blocks;
    const std::uint64_t end = stretch.firstMcu + stretch.mcuCount;
    McuRun run;
    run.step.fill(m_blocksPerMcu * blockSize);
    for (std::uint64_t mcu = stretch.firstMcu; mcu < end; mcu += run.count) {
        const std::uint64_t leftInRow = m_geometry.columns - mcu % m_geometry.columns;
        run.count = static_cast<std::size_t>(std::min({end - mcu, leftInRow, std::uint64_t(McusWithin(shownBlocks))}));
        transform(blocks, run.count * m_blocksPerMcu);
        const std::int16_t* first = blocks;
        for (std::size_t i = 0; i < m_components.size(); ++i) {
            run.blocks[m_places[i]] = first;
            first += m_components[i].blocksPerMcu * blockSize;
        }
        m_conversion.Convert(run, PixelsOf(mcu), m_lock.AllocatedWidth);
        blocks += run.count * m_blocksPerMcu * blockSize;
    }
}

void SingleScanDecoder::FillWithGrey(std::uint64_t firstMcu, std::uint64_t mcuCount) const {
    for (std::uint64_t mcu = firstMcu; mcu < firstMcu + mcuCount;) {
        const std::uint64_t leftInRow = m_geometry.columns - mcu % m_geometry.columns;
        const std::uint64_t count = std::min(leftInRow, firstMcu + mcuCount - mcu);
        Pixel* pixels = PixelsOf(mcu);
        for (std::uint32_t row = 0; row < m_mcuHeight; ++row, pixels += m_lock.AllocatedWidth)
            std::fill_n(pixels, count * m_mcuWidth, Pixel{0x80, 0x80, 0x80, 0x80});
        mcu += count;
    }
}

} // namespace ET::Img::Jpg
