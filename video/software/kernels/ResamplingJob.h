#pragma once

#include "video/software/PlainResampling.h"

namespace Quorvex::Platform::Video::Software {

/// One draw of an image rectangle, as the kernels get it. The image is locked for reading.
template <class Sample>
struct ResamplingJob {
    PixelTarget target;
    ImageView<Sample> image;
    const QuadSampling& sampling;
    EnumResamplingMode mode;
    PixelRegion origin; ///< The image rectangle, which the sampling counts from.
    PixelRegion drawn;  ///< The part of it to draw, within the target.

    std::uint32_t DrawnWidth() const { return static_cast<std::uint32_t>(drawn.right - drawn.left); }
    std::uint32_t DrawnHeight() const { return static_cast<std::uint32_t>(drawn.bottom - drawn.top); }
    Color* RowPixels(std::uint32_t row) const {
        return target.At(drawn.left, drawn.top + static_cast<std::int32_t>(row));
    }

    /// Draws pixels of a row with the plain program; all numbers count within what is drawn.
    void ShadePlainly(std::uint32_t row, std::uint32_t begin, std::uint32_t end) const {
        QuadSampling::Row positions(sampling, drawn.top - origin.top + static_cast<std::int32_t>(row));
        const std::int32_t left = drawn.left - origin.left;
        Color* const pixels = RowPixels(row);
        for (std::uint32_t i = begin; i < end; ++i)
            pixels[i] =
                ShadePlain(mode, positions.At(left + static_cast<std::int32_t>(i)), image, sampling.Footprint());
    }
};

/// A unit of work for one worker: neighbouring rows of what is drawn, since they share much of what they read.
struct RowBand {
    std::uint32_t begin;
    std::uint32_t end;

    RowBand(std::uint32_t unit, std::uint32_t rowsPerBand, std::uint32_t rowCount)
        : begin(unit * rowsPerBand), end(std::min(begin + rowsPerBand, rowCount)) {}
};

} // namespace Quorvex::Platform::Video::Software
