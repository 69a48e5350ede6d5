#include "codecs/jpg/ScanDecoder.h"

#include "codecs/SharedWork.h"
#include "codecs/jpg/LosslessDecoder.h"
#include "foundation/Exception.h"
#include "foundation/platform/Processors.h"

#include <algorithm>
#include <cstring>
#include <mutex>

namespace ET::Img::Jpg {

namespace {

using Quorvex::Data::LockMode;
using PixelLock = Quorvex::Data::Lock<Pixel>;

// An MCU has at most 10 blocks in a frame that can be converted to pixels, but its factors are checked later.
constexpr std::size_t largestMcuBlocks = 4 * 16;

struct alignas(16) McuBlocks {
    std::int16_t values[largestMcuBlocks * blockSize];
};

/// The components of a scan as its MCUs hold them.
struct ScanComponent {
    Component* component;
    BlockTables tables;
    std::uint32_t horizontal; ///< Blocks per MCU.
    std::uint32_t vertical;
};

std::vector<ScanComponent> ComponentsOf(const ScanContext& context, const ScanHeader& header) {
    std::vector<ScanComponent> components;
    for (std::uint32_t i = 0; i < header.componentCount; ++i) {
        Component& component = context.frame.Of(header.identifiers[i]);
        const BlockTables tables{context.tables.dc[component.dcTable], context.tables.ac[component.acTable],
                                 context.tables.quantisation[component.quantisation].data()};
        const bool isAlone = header.componentCount == 1;
        components.push_back(
            {&component, tables, isAlone ? 1 : component.horizontal, isAlone ? 1 : component.vertical});
    }
    return components;
}

/// Baseline MCUs with all components of the frame: pixels at once.
class SingleScanDecoder {
public:
    SingleScanDecoder(const ScanContext& context, const ScanHeader& header, const ScanGeometry& geometry,
                      const PixelLock& lock)
        : m_components(ComponentsOf(context, header)), m_geometry(geometry), m_conversion(context.frame, context.hints),
          m_lock(lock), m_mcuWidth(8 * context.frame.largestHorizontal),
          m_mcuHeight(8 * context.frame.largestVertical) {
        // The order of a scan is its own, but colours follow the order of the frame.
        for (std::uint32_t place = 0; place < context.frame.componentCount; ++place)
            for (std::size_t i = 0; i < m_components.size(); ++i)
                if (m_components[i].component == &context.frame.At(place))
                    m_places[i] = place;
    }

    void Decode(const RestartSegments::Segment& segment, BitReader& reader) const {
        McuBlocks blocks;
        std::array<std::int32_t, 4> predictors{};
        for (std::uint64_t i = 0; i < segment.mcuCount; ++i) {
            const std::uint64_t mcu = segment.firstMcu + i;
            try {
                DecodeMcu(reader, predictors, blocks);
            } catch (const std::exception&) {
                // What was decoded of it is still worth seeing.
                Show(mcu, blocks);
                throw;
            }
            Show(mcu, blocks);
        }
    }

private:
    void DecodeMcu(BitReader& reader, std::array<std::int32_t, 4>& predictors, McuBlocks& blocks) const {
        std::size_t count = 0;
        for (const ScanComponent& component : m_components)
            count += std::size_t(component.horizontal) * component.vertical;
        std::memset(blocks.values, 0, count * blockSize * sizeof(std::int16_t));
        std::int16_t* block = blocks.values;
        for (std::size_t i = 0; i < m_components.size(); ++i)
            for (std::uint32_t left = m_components[i].horizontal * m_components[i].vertical; left != 0; --left) {
                DecodeSequential(reader, m_components[i].tables, predictors[i], block);
                if (reader.IsOverrun()) {
                    // Zeros behind the end of the data look like coefficients.
                    std::memset(block, 0, blockSize * sizeof(std::int16_t));
                    throw Quorvex::Exception();
                }
                block += blockSize;
            }
    }

    void Show(std::uint64_t mcu, McuBlocks& blocks) const {
        static const InverseDct transform = GetInverseDct();
        ColorConversion::Blocks byComponent{};
        std::int16_t* block = blocks.values;
        for (std::size_t i = 0; i < m_components.size(); ++i) {
            byComponent[m_places[i]] = block;
            for (std::uint32_t left = m_components[i].horizontal * m_components[i].vertical; left != 0; --left) {
                transform(block);
                block += blockSize;
            }
        }
        const std::uint64_t row = mcu / m_geometry.columns, column = mcu % m_geometry.columns;
        Pixel* const pixels = m_lock.Row(static_cast<std::uint32_t>(row * m_mcuHeight)) + column * m_mcuWidth;
        m_conversion.Convert(byComponent, pixels, m_lock.AllocatedWidth);
    }

    std::vector<ScanComponent> m_components;
    std::array<std::uint32_t, 4> m_places{};
    ScanGeometry m_geometry;
    ColorConversion m_conversion;
    const PixelLock& m_lock;
    std::uint32_t m_mcuWidth; ///< Pixels.
    std::uint32_t m_mcuHeight;
};

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

    void Decode(const RestartSegments::Segment& segment, BitReader& reader) const {
        std::array<std::int32_t, 4> predictors{};
        ProgressiveDecoder progressive(m_header);
        for (std::uint64_t i = 0; i < segment.mcuCount; ++i) {
            const std::uint64_t mcu = segment.firstMcu + i;
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

/// The segments of a scan, taken by any number of workers.
template <class Decoder>
class ScanRun {
public:
    ScanRun(const Decoder& decoder, const Quorvex::StreamBuffer& buffer, std::uint32_t restartInterval,
            std::uint64_t mcuCount)
        : m_decoder(decoder), m_begin(buffer.GetData()), m_hasIntervals(restartInterval != 0),
          m_segments(m_begin + buffer.GetPosition(), m_begin + buffer.GetSize(), restartInterval, mcuCount) {}

    ScanResult Run(std::uint32_t workerCount) {
        ShareWork(workerCount, [this] { Work(); });
        const std::uint8_t* const position = m_hasIntervals ? m_segments.Position() : m_position;
        return {static_cast<std::uint32_t>(position - m_begin), m_isIncomplete || m_segments.IsDamaged()};
    }

private:
    void Work() {
        RestartSegments::Segment segment{};
        while (TakeNext(segment)) {
            BitReader reader(segment.begin, segment.end);
            bool isDamaged = false;
            try {
                m_decoder.Decode(segment, reader);
            } catch (const std::bad_alloc&) {
                throw;
            } catch (const std::exception&) {
                // The interval ends here; those behind it begin anew.
                isDamaged = true;
            }
            const std::lock_guard lock(m_mutex);
            m_isIncomplete = m_isIncomplete || isDamaged;
            m_position = reader.Position();
        }
    }

    bool TakeNext(RestartSegments::Segment& segment) {
        const std::lock_guard lock(m_mutex);
        return m_segments.Next(segment);
    }

    const Decoder& m_decoder;
    const std::uint8_t* m_begin;
    bool m_hasIntervals;
    std::mutex m_mutex; ///< Of all below.
    RestartSegments m_segments;
    const std::uint8_t* m_position = m_begin;
    bool m_isIncomplete = false;
};

std::uint32_t WorkersOf(const ScanContext& context) {
    const std::uint32_t count = context.workerCount != 0 ? context.workerCount : Quorvex::Platform::GetProcessorCount();
    return std::min(count, largestWorkerCount);
}

template <class Decoder>
ScanResult Run(const Decoder& decoder, const ScanContext& context, const ScanGeometry& geometry,
               const Quorvex::StreamBuffer& buffer, bool canShare) {
    ScanRun<Decoder> run(decoder, buffer, context.restartInterval, geometry.McuCount());
    return run.Run(context.restartInterval != 0 && canShare ? WorkersOf(context) : 1);
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
    const PixelLock lock = context.target.LockBGRAUInt8(LockMode::ReadWrite);
    const SingleScanDecoder decoder(context, header, geometry, lock);
    return Run(decoder, context, geometry, buffer, true);
}

/// Rows of MCUs out of the kept coefficients.
class FrameFinisher {
public:
    FrameFinisher(const ScanContext& context, const PixelLock& lock)
        : m_frame(context.frame), m_conversion(context.frame, context.hints), m_lock(lock) {}

    void FinishRow(std::uint32_t row) const {
        McuBlocks blocks;
        Pixel* pixels = m_lock.Row(row * 8 * m_frame.largestVertical);
        for (std::uint32_t column = 0; column < m_frame.mcuColumns; ++column, pixels += 8 * m_frame.largestHorizontal) {
            const std::uint64_t mcu = std::uint64_t(row) * m_frame.mcuColumns + column;
            ColorConversion::Blocks byComponent{};
            std::int16_t* next = blocks.values;
            for (std::uint32_t place = 0; place < m_frame.componentCount; ++place) {
                byComponent[place] = next;
                next = Transform(m_frame.At(place), mcu, next);
            }
            m_conversion.Convert(byComponent, pixels, m_lock.AllocatedWidth);
        }
    }

private:
    /// A component that no scan has brought is grey.
    static std::int16_t* Transform(const Component& component, std::uint64_t mcu, std::int16_t* blocks) {
        static const InverseDct transform = GetInverseDct();
        const std::uint32_t count = component.BlocksPerMcu();
        const std::size_t bytes = count * blockSize * sizeof(std::int16_t);
        if (!component.blocks.IsAllocated()) {
            std::memset(blocks, 0, bytes);
            return blocks + count * blockSize;
        }
        std::memcpy(blocks, component.blocks.Block(mcu * count), bytes);
        for (std::uint32_t i = 0; i < count; ++i, blocks += blockSize)
            transform(blocks);
        return blocks;
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
