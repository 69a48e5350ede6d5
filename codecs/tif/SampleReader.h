#pragma once

#include "codecs/tif/Predictor.h"
#include "codecs/tif/SampleFinish.h"
#include "codecs/tif/SampleLoad.h"

namespace ET::Img::Tif {

/// How the samples of a row of a tile lie there.
struct RowFormat {
    ByteOrder order;
    SampleFormat format;
    std::uint32_t bits;
    std::uint32_t predictor;
    std::uint32_t samples;     ///< Of a pixel that lie together.
    std::uint32_t tileColumns; ///< Pixels of a whole row.

    std::uint64_t RowBytes() const { return (std::uint64_t(tileColumns) * samples * bits + 7) / 8; }
};

/// Rows of a tile to channels: bytes to words, differences to samples, samples to channels. One thread.
template <class Channel>
class SampleReader {
public:
    /// For rows of which no more than so many pixels are read.
    SampleReader(const RowFormat& format, std::uint32_t largestColumns)
        : m_format(format), m_count(std::size_t(largestColumns) * format.samples),
          m_load(GetSampleLoad<Word>(format.bits, format.order)), m_finish(format.format, format.bits) {
        const bool isWhole = format.predictor == floatPredictor;
        const std::size_t rowSamples = std::size_t(format.tileColumns) * format.samples;
        m_words.resize(isWhole ? rowSamples : m_count);
        if (isWhole)
            m_bytes.resize(rowSamples * (format.bits / 8));
    }

    /// Whether the bytes of the file are channels as they stand.
    bool IsCopy() const {
        return m_format.predictor == 1 && m_finish.IsIdentity() && m_load == GetSampleLoad<Word>(m_format.bits, native);
    }
    /// The most channels that a row has.
    std::size_t GetCount() const { return m_count; }

    void Read(const std::uint8_t* row, Channel* channels, std::uint32_t columns) {
        const std::size_t count = std::size_t(columns) * m_format.samples;
        if (IsCopy()) {
            std::memcpy(channels, row, count * sizeof(Channel));
            return;
        }
        if (m_format.predictor == floatPredictor) {
            std::memcpy(m_bytes.data(), row, m_bytes.size());
            SumFloatDifferences(m_bytes.data(), m_words.data(), m_words.size(), m_format.samples, m_format.bits);
        } else {
            m_load(row, m_words.data(), count, m_format.bits);
            if (m_format.predictor == 2)
                SumDifferences(m_words.data(), count, m_format.samples, m_format.bits);
        }
        m_finish.Run(m_words.data(), channels, count);
    }

private:
    using Word = WordOf<Channel>;
    static constexpr std::uint32_t floatPredictor = 3;
    static constexpr ByteOrder native = std::endian::native == std::endian::little ? ByteOrder::Little : ByteOrder::Big;

    RowFormat m_format;
    std::size_t m_count;
    SampleLoad<Word> m_load;
    SampleFinish<Channel> m_finish;
    std::vector<Word> m_words;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace ET::Img::Tif
