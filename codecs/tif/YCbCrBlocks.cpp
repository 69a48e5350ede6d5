#include "codecs/tif/YCbCrBlocks.h"

#include "codecs/RangeTable.h"
#include "codecs/tif/Predictor.h"
#include "foundation/Exception.h"

#include <array>

namespace ET::Img::Tif {

namespace {

/// What chrominance adds to luminance; the sums are rounded by 0.5.
struct ChromaTables {
    std::array<double, 256> blue, greenOfCb, greenOfCr, red;

    ChromaTables() {
        for (int i = 0; i < 256; ++i) {
            const auto place = static_cast<std::size_t>(i);
            blue[place] = 1.772 * (i - 128);
            greenOfCb[place] = 0.344136 * (i - 128);
            greenOfCr[place] = 0.714136 * (i - 128);
            red[place] = 1.402 * (i - 128);
        }
    }
};

std::uint8_t Rounded(double sum) {
    return Ranged(static_cast<std::int32_t>(sum + 0.5));
}

class YCbCrBlocks final : public Decompression {
public:
    YCbCrBlocks(std::unique_ptr<const Decompression> inner, const Layout& layout)
        : m_inner(std::move(inner)), m_horizontal(layout.chromaHorizontal), m_vertical(layout.chromaVertical),
          m_hasDifferences(layout.predictor == 2) {
        if (layout.predictor != 1 && UnitBytes() != 3)
            throw Quorvex::Exception();
    }

    Outcome Decode(std::span<const std::uint8_t> source, const TileShape& shape, TileBuffer& target) const override {
        const TileShape units = UnitsOf(shape);
        const auto rowBytes = static_cast<std::size_t>(units.rowBytes);
        TileBuffer buffer;
        const Outcome outcome = m_inner->Decode(source, units, buffer);
        std::uint8_t* const bytes = buffer.Take(units.Bytes());
        if (m_hasDifferences)
            for (std::uint32_t row = 0; row < units.rows; ++row)
                SumDifferences(bytes + row * rowBytes, rowBytes, 3, 8);
        std::uint8_t* rgb = target.Take(shape.Bytes());
        for (std::uint32_t row = 0; row < shape.rows; ++row, rgb += shape.rowBytes)
            ConvertRow(bytes + row / m_vertical * rowBytes, row % m_vertical, shape.visibleColumns, rgb);
        return outcome;
    }

    std::uint64_t LargestSize(std::uint64_t sourceSize, const TileShape& shape) const override {
        // A unit of luminances and two chrominances makes three bytes of each luminance.
        return 3 * m_inner->LargestSize(sourceSize, UnitsOf(shape));
    }

private:
    std::uint32_t UnitBytes() const { return m_horizontal * m_vertical + 2; }

    TileShape UnitsOf(const TileShape& shape) const {
        const std::uint64_t columns = (std::uint64_t(shape.columns) + m_horizontal - 1) / m_horizontal;
        const auto rows = static_cast<std::uint32_t>((std::uint64_t(shape.rows) + m_vertical - 1) / m_vertical);
        return {shape.columns, shape.visibleColumns, rows, columns * UnitBytes()};
    }

    /// A row of pixels out of a row of units: that one of their rows of luminances.
    void ConvertRow(const std::uint8_t* units, std::uint32_t rowInUnit, std::uint32_t columns,
                    std::uint8_t* rgb) const {
        const std::uint32_t unitBytes = UnitBytes();
        for (std::uint32_t x = 0; x < columns; units += unitBytes) {
            const std::uint8_t cb = units[unitBytes - 2], cr = units[unitBytes - 1];
            for (std::uint32_t i = 0; i < m_horizontal && x < columns; ++i, ++x, rgb += 3)
                ConvertYCbCr(units[rowInUnit * m_horizontal + i], cb, cr, rgb);
        }
    }

    std::unique_ptr<const Decompression> m_inner;
    std::uint32_t m_horizontal;
    std::uint32_t m_vertical;
    bool m_hasDifferences;
};

} // namespace

void ConvertYCbCr(std::uint8_t y, std::uint8_t cb, std::uint8_t cr, std::uint8_t* rgb) {
    static const ChromaTables tables;
    rgb[0] = Rounded(tables.red[cr] + y);
    rgb[1] = Rounded(y - tables.greenOfCb[cb] - tables.greenOfCr[cr]);
    rgb[2] = Rounded(tables.blue[cb] + y);
}

std::unique_ptr<const Decompression> MakeYCbCrBlocks(std::unique_ptr<const Decompression> inner, const Layout& layout) {
    return std::make_unique<YCbCrBlocks>(std::move(inner), layout);
}

} // namespace ET::Img::Tif
