#pragma once

#include "codecs/jpg/BlockDecoding.h"
#include "data/Dispatch.h"
#include "foundation/Exception.h"

#include <limits>
#include <vector>

namespace ET::Img::Jpg {

/// The prediction from the samples to the left, above, and left above (ITU T.81 table H.1).
inline std::int32_t Predicted(std::uint32_t predictor, std::int32_t left, std::int32_t above, std::int32_t leftAbove) {
    switch (predictor) {
    case 1:
        return left;
    case 2:
        return above;
    case 3:
        return leftAbove;
    case 4:
        return left + above - leftAbove;
    case 5:
        return left + ((above - leftAbove) >> 1);
    case 6:
        return above + ((left - leftAbove) >> 1);
    case 7:
        return (left + above) >> 1;
    default:
        return 0;
    }
}

/// The samples of a lossless frame, as they are stored in the file, straight to the target: the first component to red,
/// then green, blue and alpha; a single one to all three colours. Neighbours are read back from there.
template <class Sample>
class LosslessDecoder {
    using Channel = typename Quorvex::Data::ChannelOf<Sample>::Type;
    using Lock = Quorvex::Data::Lock<Sample>;

public:
    /// Raises Exception where a component has more than one sample per MCU.
    LosslessDecoder(const Frame& frame, const Tables& tables, const ScanHeader& header, const Lock& lock)
        : m_lock(lock), m_columns(frame.mcuColumns), m_predictor(header.spectralStart), m_pointTransform(header.bitLow),
          m_isGrey(frame.componentCount == 1), m_hasAlpha(frame.componentCount == 4) {
        RequireFactorsOfOne(frame, 1, frame.componentCount);
        const std::uint32_t bits = frame.precision > header.bitLow + 1 ? frame.precision - header.bitLow - 1 : 0;
        m_default = std::int32_t{1} << bits;
        for (std::uint32_t i = 0; i < header.componentCount; ++i)
            for (std::uint32_t place = 0; place < frame.componentCount; ++place)
                if (frame.identifiers[place] == header.identifiers[i]) {
                    m_components.push_back({&tables.dc[frame.At(place).dcTable], ChannelAt(place)});
                    break;
                }
    }

    void Decode(const RestartSegments::Segment& segment, BitReader& reader, std::uint64_t& done) const {
        auto row = static_cast<std::uint32_t>(segment.firstMcu / m_columns);
        auto column = static_cast<std::uint32_t>(segment.firstMcu % m_columns);
        bool isFirstRow = true, isFirstSample = true;
        for (; done < segment.mcuCount; ++done) {
            Sample* const pixel = m_lock.Row(row) + column;
            for (const ScanComponent& component : m_components) {
                const std::int32_t prediction =
                    isFirstSample ? m_default : Prediction(pixel, component.channel, isFirstRow, column == 0);
                const std::int32_t value = prediction + DecodeDifference(reader, *component.table);
                // Modulo 2^16, of which the channel keeps what it has room for.
                pixel->*component.channel =
                    static_cast<Channel>((static_cast<std::uint32_t>(value) & 0xFFFF) << m_pointTransform);
            }
            Complete(*pixel);
            if (reader.IsOverrun())
                throw Quorvex::Exception();
            isFirstSample = false;
            if (++column == m_columns) {
                column = 0;
                ++row;
                isFirstRow = false;
            }
        }
    }

private:
    using ChannelPointer = Channel Sample::*;
    struct ScanComponent {
        const HuffmanTable* table;
        ChannelPointer channel;
    };

    static ChannelPointer ChannelAt(std::uint32_t place) {
        constexpr ChannelPointer channels[] = {&Sample::red, &Sample::green, &Sample::blue, &Sample::alpha};
        return channels[place];
    }

    std::int32_t Prediction(const Sample* pixel, ChannelPointer channel, bool isFirstRow, bool isFirstColumn) const {
        const Sample* const above = pixel - m_lock.AllocatedWidth;
        const auto valueOf = [&](const Sample* at) { return std::int32_t(at->*channel >> m_pointTransform); };
        if (isFirstRow)
            return isFirstColumn ? m_default : valueOf(pixel - 1);
        if (isFirstColumn)
            return valueOf(above);
        return Predicted(m_predictor, valueOf(pixel - 1), valueOf(above), valueOf(above - 1));
    }

    void Complete(Sample& pixel) const {
        if (m_isGrey)
            pixel.blue = pixel.green = pixel.red;
        if (!m_hasAlpha)
            pixel.alpha = std::numeric_limits<Channel>::max();
    }

    const Lock& m_lock;
    std::uint32_t m_columns;
    std::uint32_t m_predictor;
    std::uint32_t m_pointTransform;
    bool m_isGrey;
    bool m_hasAlpha;
    std::int32_t m_default = 0;
    std::vector<ScanComponent> m_components;
};

} // namespace ET::Img::Jpg
