#pragma once

#include "codecs/tif/PixelConversion.h"
#include "codecs/tif/SampleReader.h"
#include "codecs/tif/TileGrid.h"
#include "data/Lock.h"

namespace ET::Img::Tif {

/// Indices to the colours of a palette.
template <class Sample>
class PaletteConversion {
    using Channel = typename Quorvex::Data::ChannelOf<Sample>::Type;

public:
    /// Samples come in the range of 16 bits.
    using Source = std::uint16_t;

    PaletteConversion(const Directory& directory, const Layout& layout)
        : m_alpha(layout), m_indexShift(16 - layout.bits) {
        for (const auto& color : ReadColorMap(directory, layout.bits).colors)
            m_colors.push_back({static_cast<Channel>(color.blue), static_cast<Channel>(color.green),
                                static_cast<Channel>(color.red), static_cast<Channel>(color.alpha)});
    }

    bool IsCopy() const { return false; }

    void Convert(const SampleRow<Source>& row, Sample* pixels, std::size_t count) const {
        for (std::size_t i = 0; i < count; ++i)
            pixels[i] = m_colors[row.colors[0][i * row.stride] >> m_indexShift];
        if (row.alpha == nullptr)
            return;
        for (std::size_t i = 0; i < count; ++i)
            pixels[i].alpha = static_cast<Channel>(row.alpha[i * row.stride] >> (16 - 8 * sizeof(Channel)));
        m_alpha.DivideByAlpha(pixels, count);
    }

private:
    PixelConversion<Sample> m_alpha;
    std::uint32_t m_indexShift;
    std::vector<Sample> m_colors;
};

/// The conversion of samples that are channels of the image.
template <class Sample>
class DirectConversion : public PixelConversion<Sample> {
public:
    using Source = typename Quorvex::Data::ChannelOf<Sample>::Type;
    DirectConversion(const Directory&, const Layout& layout) : PixelConversion<Sample>(layout) {}
};

/// Which samples of a tile are of use, and where their rows lie.
struct PlaneList {
    explicit PlaneList(const Layout& layout) {
        if (!layout.isPlanar) {
            planes = {0};
            return;
        }
        for (std::uint32_t i = 0; i < layout.colorSamples; ++i)
            planes.push_back(i);
        if (layout.alphaSample)
            planes.push_back(*layout.alphaSample);
    }
    std::vector<std::uint32_t> planes; ///< The colours first.
};

/// Writes decoded tiles to their places in the image. One thread; several may paint different tiles.
template <class Sample, class Conversion>
class TilePainter {
    using Source = typename Conversion::Source;

public:
    TilePainter(const Layout& layout, const RowFormat& format, std::uint32_t largestColumns,
                const Conversion& conversion, const Quorvex::Data::Lock<Sample>& lock)
        : m_layout(layout), m_format(format), m_conversion(conversion), m_lock(lock), m_reader(format, largestColumns),
          m_channels(PlaneList(layout).planes.size(), std::vector<Source>(m_reader.GetCount())) {}

    /// The rows of each plane of use, null for one that could not be decoded: its samples are 0.
    void Paint(const TileGrid::Place& place, const std::vector<const std::uint8_t*>& planes) {
        const auto rowBytes = static_cast<std::size_t>(m_format.RowBytes());
        const bool isCopy = m_conversion.IsCopy() && m_format.samples == 1 && m_channels.size() == 1;
        for (std::uint32_t y = 0; y < place.rows; ++y) {
            Sample* const pixels = m_lock.Row(place.y + y) + place.x;
            if constexpr (std::is_same_v<Sample, Source>)
                if (isCopy) {
                    m_reader.Read(planes[0] + y * rowBytes, pixels, place.columns);
                    continue;
                }
            for (std::size_t plane = 0; plane < m_channels.size(); ++plane)
                if (planes[plane] != nullptr)
                    m_reader.Read(planes[plane] + y * rowBytes, m_channels[plane].data(), place.columns);
                else
                    std::fill(m_channels[plane].begin(), m_channels[plane].end(), Source{});
            m_conversion.Convert(Row(), pixels, place.columns);
        }
    }

private:
    SampleRow<Source> Row() const {
        SampleRow<Source> row{};
        row.stride = m_format.samples;
        for (std::uint32_t i = 0; i < m_layout.colorSamples; ++i)
            row.colors[i] = m_layout.isPlanar ? m_channels[i].data() : m_channels[0].data() + i;
        if (m_layout.alphaSample)
            row.alpha = m_layout.isPlanar ? m_channels.back().data() : m_channels[0].data() + *m_layout.alphaSample;
        return row;
    }

    const Layout& m_layout;
    const RowFormat& m_format;
    const Conversion& m_conversion;
    const Quorvex::Data::Lock<Sample>& m_lock;
    SampleReader<Source> m_reader;
    std::vector<std::vector<Source>> m_channels; ///< A row of each plane of use.
};

} // namespace ET::Img::Tif
