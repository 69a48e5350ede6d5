#include "codecs/jpg/ScanDecoder.h"

#include "codecs/SharedWork.h"
#include "codecs/jpg/LosslessDecoder.h"
#include "codecs/jpg/ScanRun.h"
#include "codecs/jpg/SingleScan.h"
#include "foundation/Exception.h"
#include "foundation/platform/Processors.h"

#include <algorithm>
#include <cstring>

namespace ET::Img::Jpg {

namespace {

using Quorvex::Data::LockMode;
using PixelLock = SingleScanDecoder::PixelLock;

/// MCUs whose coefficients are kept: progressive ones, and baseline ones of some of the components.
class CoefficientDecoder {
public:
    CoefficientDecoder(const ScanContext& context, const ScanHeader& header, const ScanGeometry& geometry)
        : m_frame(context.frame), m_header(header), m_components(ComponentsOf(context, header)), m_geometry(geometry) {
        for (const ScanComponent& component : m_components)
            if (!component.component->blocks.IsAllocated())
                component.component->blocks.Allocate(
                    component.component->BlocksPerMcu() *
                    (std::uint64_t(context.frame.mcuColumns) * context.frame.mcuRows + 1));
    }

    void Decode(const RestartSegments::Segment& segment, BitReader& reader, std::uint64_t& done) const {
        std::array<std::int32_t, 4> predictors{};
        ProgressiveDecoder progressive(m_header);
        for (; done < segment.mcuCount; ++done) {
            const std::uint64_t mcu = segment.firstMcu + done;
            for (std::size_t place = 0; place < m_components.size(); ++place)
                ForEachBlock(m_components[place], mcu, [&](std::int16_t* block) {
                    if (m_frame.kind == FrameKind::Progressive) {
                        progressive.Decode(reader, m_components[place].tables, predictors[place], block);
                        return;
                    }
                    std::memset(block, 0, blockSize * sizeof(std::int16_t));
                    DecodeSequential(reader, m_components[place].tables, predictors[place], block);
                });
            if (reader.IsOverrun())
                throw Quorvex::Exception();
        }
    }

private:
    template <class Operation>
    void ForEachBlock(const ScanComponent& component, std::uint64_t mcu, const Operation& operation) const {
        const CoefficientBlocks& blocks = component.component->blocks;
        const std::uint32_t perMcu = component.component->BlocksPerMcu();
        if (m_components.size() != 1) {
            for (std::uint32_t i = 0; i < perMcu; ++i)
                operation(blocks.Block(mcu * perMcu + i));
            return;
        }
        // A component by itself goes block by block through its rows, over the borders of MCUs.
        const std::uint32_t h = component.component->horizontal, v = component.component->vertical;
        const std::uint64_t row = mcu / m_geometry.columns, column = mcu % m_geometry.columns;
        const std::uint64_t ofFrame = row / v * m_frame.mcuColumns + column / h;
        operation(blocks.Block(ofFrame * perMcu + row % v * h + column % h));
    }

    const Frame& m_frame;
    const ScanHeader& m_header;
    std::vector<ScanComponent> m_components;
    ScanGeometry m_geometry;
};

/// One thread reads codes, and making pixels of them does not take more than twice its time.
constexpr std::uint32_t largestPipelineThreadCount = 3;

std::uint32_t WorkersOf(const ScanContext& context) {
    const std::uint32_t count = context.workerCount != 0 ? context.workerCount : Quorvex::Platform::GetProcessorCount();
    return std::min(count, largestWorkerCount);
}

/// Threads for the restart intervals of a scan: not more than there are, and none for a scan that is over before it.
std::uint32_t SegmentWorkers(const ScanContext& context, std::uint64_t mcuCount) {
    constexpr std::uint64_t leastMcusPerWorker = 16;
    if (context.restartInterval == 0)
        return 1;
    const std::uint64_t useful =
        std::min(DividedUp(mcuCount, context.restartInterval), DividedUp(mcuCount, leastMcusPerWorker));
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(WorkersOf(context), useful));
}

template <class Decoder>
ScanResult Run(const Decoder& decoder, const ScanContext& context, const ScanGeometry& geometry,
               const Quorvex::StreamBuffer& buffer, bool canShare) {
    ScanRun<Decoder> run(decoder, buffer, context.restartInterval, geometry.McuCount());
    return run.Run(canShare ? SegmentWorkers(context, geometry.McuCount()) : 1);
}

ScanResult DecodeSingleScan(const ScanContext& context, const ScanHeader& header, const ScanGeometry& geometry,
                            const Quorvex::StreamBuffer& buffer) {
    const PixelLock lock = context.target.LockBGRAUInt8(LockMode::ReadWrite);
    const std::uint32_t threads =
        context.restartInterval != 0 ? 1 : std::min(WorkersOf(context), largestPipelineThreadCount);
    const SingleScanDecoder decoder(context, header, geometry, lock, threads);
    ScanRun<SingleScanDecoder> run(decoder, buffer, context.restartInterval, geometry.McuCount());
    const ScanResult result = run.Run(SegmentWorkers(context, geometry.McuCount()));
    if (!context.isTargetSet)
        for (const McuRange& range : run.Missing())
            decoder.FillWithGrey(range.first, range.count);
    return result;
}

template <class Sample>
ScanResult DecodeLossless(const ScanContext& context, const ScanHeader& header, const ScanGeometry& geometry,
                          const Quorvex::StreamBuffer& buffer) {
    const auto lock = Quorvex::Data::SampleTraits<Sample>::LockIn(context.target, LockMode::ReadWrite);
    const LosslessDecoder<Sample> decoder(context.frame, context.tables, header, lock);
    // Intervals of whole rows do not look at each other's samples (ITU T.81 H.1.1).
    return Run(decoder, context, geometry, buffer, context.restartInterval % geometry.columns == 0);
}

[[noreturn]] void Raise(const char* reason) {
    throw Quorvex::Exception(Quorvex::String("JPGDecoder failed, ") + reason);
}

ScanResult DecodeAnyScan(const ScanContext& context, const ScanHeader& header, const Quorvex::StreamBuffer& buffer) {
    const ScanGeometry geometry(context.frame, header);
    const bool isWide = context.frame.precision > 8;
    if (context.frame.kind == FrameKind::Lossless)
        return isWide ? DecodeLossless<Quorvex::Data::ColorBGRA<std::uint16_t>>(context, header, geometry, buffer)
                      : DecodeLossless<Pixel>(context, header, geometry, buffer);
    if (!IsSingleScan(context.frame, header)) {
        const CoefficientDecoder decoder(context, header, geometry);
        return Run(decoder, context, geometry, buffer, true);
    }
    if (isWide)
        throw Quorvex::Exception("ConvertMCUColors with 16bit is currently not supported");
    return DecodeSingleScan(context, header, geometry, buffer);
}

/// Rows of MCUs out of the kept coefficients.
class FrameFinisher {
public:
    FrameFinisher(const ScanContext& context, const PixelLock& lock)
        : m_frame(context.frame), m_conversion(context.frame, context.hints), m_lock(lock) {}

    void FinishRow(std::uint32_t row) const {
        // A frame that can be converted has at most 10 blocks per MCU.
        constexpr std::uint32_t mcusAtOnce = 16;
        std::int16_t samples[mcusAtOnce * 10 * blockSize];
        Pixel* const pixels = m_lock.Row(row * 8 * m_frame.largestVertical);
        for (std::uint32_t column = 0; column < m_frame.mcuColumns; column += mcusAtOnce) {
            McuRun run;
            run.count = std::min(mcusAtOnce, m_frame.mcuColumns - column);
            std::int16_t* next = samples;
            for (std::uint32_t place = 0; place < m_frame.componentCount; ++place) {
                const Component& component = m_frame.At(place);
                run.blocks[place] = next;
                run.step[place] = component.BlocksPerMcu() * blockSize;
                Transform(component, std::uint64_t(row) * m_frame.mcuColumns + column, run.count, next);
                next += run.count * run.step[place];
            }
            m_conversion.Convert(run, pixels + std::size_t(column) * 8 * m_frame.largestHorizontal,
                                 m_lock.AllocatedWidth);
        }
    }

private:
    /// A component that no scan has brought is grey.
    static void Transform(const Component& component, std::uint64_t mcu, std::size_t mcuCount, std::int16_t* samples) {
        static const InverseDct transform = GetInverseDct();
        const std::size_t count = component.BlocksPerMcu() * mcuCount;
        const std::size_t bytes = count * blockSize * sizeof(std::int16_t);
        if (!component.blocks.IsAllocated()) {
            std::memset(samples, 0, bytes);
            return;
        }
        std::memcpy(samples, component.blocks.Block(mcu * component.BlocksPerMcu()), bytes);
        transform(samples, count);
    }

    const Frame& m_frame;
    ColorConversion m_conversion;
    const PixelLock& m_lock;
};

} // namespace

bool IsSingleScan(const Frame& frame, const ScanHeader& header) {
    return frame.kind == FrameKind::Lossless ||
           (frame.kind == FrameKind::Baseline && header.componentCount == frame.componentCount);
}

ScanResult DecodeScan(const ScanContext& context, const ScanHeader& header, const Quorvex::StreamBuffer& buffer) {
    try {
        return DecodeAnyScan(context, header, buffer);
    } catch (const Quorvex::Exception& failure) {
        Raise(failure.what());
    }
}

void FinishFrame(const ScanContext& context) {
    if (context.target.ColorType != Quorvex::Data::ColorTypeEnum::BGRAUInt8)
        return;
    try {
        const PixelLock lock = context.target.LockBGRAUInt8(LockMode::ReadWrite);
        const FrameFinisher finisher(context, lock);
        std::atomic<std::uint32_t> nextRow = 0;
        ShareWork(std::min(WorkersOf(context), context.frame.mcuRows), [&] {
            for (std::uint32_t row = nextRow++; row < context.frame.mcuRows; row = nextRow++)
                finisher.FinishRow(row);
        });
    } catch (const Quorvex::Exception& failure) {
        Raise(failure.what());
    }
}

} // namespace ET::Img::Jpg
