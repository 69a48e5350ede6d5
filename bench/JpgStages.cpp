#include "bench/JpgStages.h"

#include "codecs/jpg/Markers.h"
#include "codecs/jpg/ScanComponents.h"
#include "data/Image.h"
#include "data/MemoryStream.h"
#include "data/StreamBuffer.h"

#include <algorithm>
#include <cstring>

using namespace ET::Img::Jpg;
using namespace Quorvex;

namespace {

/// The headers up to the first scan, whose codes BUFFER then stands at.
struct Headers {
    explicit Headers(StreamBuffer& buffer) {
        buffer.Seek(2);
        for (;;) {
            const std::uint32_t marker = ReadWord(buffer) & 0xFF;
            if (marker == Marker::baselineFrame)
                frame = ReadFrame(buffer, FrameKind::Baseline);
            else if (marker == Marker::huffmanTables)
                ReadHuffmanTables(buffer, tables);
            else if (marker == Marker::quantisationTables)
                ReadQuantisationTables(buffer, tables);
            else if (marker != Marker::startOfScan)
                buffer.Seek(ReadSegmentEnd(buffer));
            else
                break;
        }
        scan = ReadScanHeader(buffer, frame);
    }

    Frame frame;
    Tables tables;
    ScanHeader scan;
};

/// Adds the cycles since the last call.
class Clock {
public:
    void AddTo(double& sum) {
        const std::uint64_t now = __builtin_ia32_rdtsc();
        sum += static_cast<double>(now - m_last);
        m_last = now;
    }

private:
    std::uint64_t m_last = __builtin_ia32_rdtsc();
};

} // namespace

JpgStages MeasureJpgStages(const std::vector<std::uint8_t>& file) {
    const auto size = static_cast<std::uint32_t>(file.size());
    MemoryStream stream(file.data(), size);
    StreamBuffer buffer(stream.lock(size));
    Headers headers(buffer);
    Frame& frame = headers.frame;
    Data::Image<Pixel> image;
    image.Allocate(frame.width, frame.height, frame.allocatedWidth, frame.allocatedHeight);
    image.clear(0);
    const ScanContext context{frame, headers.tables, {}, 0, 1, true, image};
    const std::vector<ScanComponent> components = ComponentsOf(context, headers.scan);
    const ColorConversion conversion(frame, {});
    const auto lock = image.LockBGRAUInt8(Data::LockMode::ReadWrite);

    constexpr std::uint32_t mcusAtOnce = 16;
    std::int16_t blocks[mcusAtOnce * 10 * blockSize];
    std::int32_t predictors[4] = {};
    BitReader reader(buffer.GetData() + buffer.GetPosition(), buffer.GetData() + buffer.GetSize());
    JpgStages stages;
    Clock clock;
    for (std::uint32_t row = 0; row < frame.mcuRows; ++row)
        for (std::uint32_t column = 0; column < frame.mcuColumns; column += mcusAtOnce) {
            McuRun run;
            run.count = std::min(mcusAtOnce, frame.mcuColumns - column);
            std::size_t perMcu = 0;
            for (std::size_t i = 0; i < components.size(); ++i) {
                run.blocks[i] = blocks + perMcu * blockSize;
                perMcu += components[i].blocksPerMcu;
            }
            run.step.fill(perMcu * blockSize);
            std::memset(blocks, 0, run.count * perMcu * blockSize * sizeof(std::int16_t));
            BitReader bits = reader;
            std::int16_t* block = blocks;
            for (std::size_t mcu = 0; mcu < run.count; ++mcu)
                for (std::size_t i = 0; i < components.size(); ++i)
                    for (std::uint32_t left = components[i].blocksPerMcu; left != 0; --left, block += blockSize)
                        DecodeSequential(bits, components[i].tables, predictors[i], block);
            reader = bits;
            clock.AddTo(stages.codes);
            GetInverseDct()(blocks, run.count * perMcu);
            clock.AddTo(stages.transform);
            conversion.Convert(run, lock.Row(row * 8 * frame.largestVertical) + column * 8 * frame.largestHorizontal,
                               lock.AllocatedWidth);
            clock.AddTo(stages.color);
        }
    const double pixels = static_cast<double>(frame.width) * frame.height;
    return {stages.codes / pixels, stages.transform / pixels, stages.color / pixels};
}
