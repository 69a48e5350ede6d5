#pragma once

#include "video/software/kernels/ResamplingJob.h"

#include <cstring>
#include <vector>

namespace Quorvex::Platform::Video::Software {

/// Which source index each destination pixel along an axis takes, where that does not depend on rounding.
class NearestIndices {
public:
    NearestIndices(const AxisSampling& axis, std::int64_t begin, std::uint32_t count) {
        indices.resize(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            const double position = axis.Position(begin + i);
            indices[i] = static_cast<std::uint32_t>(position);
            if (std::abs(position - std::round(position)) <= axis.PositionError()) {
                uncertain.push_back(i);
                indices[i] = ClampedIndex(position, axis.visibleLength);
            }
        }
    }

    const std::uint32_t* Data() const { return indices.data(); }
    std::uint32_t operator[](std::uint32_t pixel) const { return indices[pixel]; }
    /// Pixels so near to a source pixel's edge that the plain program has to tell the side, rising.
    const std::vector<std::uint32_t>& Uncertain() const { return uncertain; }
    bool IsUncertain(std::uint32_t pixel) const {
        return std::binary_search(uncertain.begin(), uncertain.end(), pixel);
    }

private:
    std::vector<std::uint32_t> indices;
    std::vector<std::uint32_t> uncertain;
};

/// Nearest-neighbour resampling: indices once per column and row, and a row that shows the same source row as the one
/// before is copied from it.
template <class Sample>
class NearestKernel {
public:
    explicit NearestKernel(const ResamplingJob<Sample>& resamplingJob)
        : job(resamplingJob), columns(job.sampling.Columns(), job.drawn.left - job.origin.left, job.DrawnWidth()),
          rows(job.sampling.Rows(), job.drawn.top - job.origin.top, job.DrawnHeight()) {}

    std::uint32_t UnitCount() const { return (job.DrawnHeight() + rowsPerBand - 1) / rowsPerBand; }

    void RenderUnit(std::uint32_t, std::uint32_t unit) const {
        const RowBand band(unit, rowsPerBand, job.DrawnHeight());
        std::uint32_t drawnRows[rowsPerBand];
        std::uint32_t count = 0;
        for (std::uint32_t row = band.begin; row < band.end; ++row)
            if (row == band.begin || rows[row] != rows[row - 1])
                drawnRows[count++] = row;
        if (job.sampling.IsTurned())
            FetchTurned(drawnRows, count);
        else
            for (std::uint32_t i = 0; i < count; ++i)
                Fetch(drawnRows[i]);
        for (std::uint32_t row = band.begin; row < band.end; ++row)
            if (row != band.begin && rows[row] == rows[row - 1])
                std::memcpy(job.RowPixels(row), job.RowPixels(row - 1), job.DrawnWidth() * sizeof(Color));
        for (std::uint32_t row = band.begin; row < band.end; ++row)
            ShadeUncertain(row);
    }

private:
    static constexpr std::uint32_t rowsPerBand = 16;

    void Fetch(std::uint32_t row) const {
        const Sample* const samples = job.image.bits + std::size_t(rows[row]) * job.image.allocatedWidth;
        const std::uint32_t* const indices = columns.Data();
        Color* const pixels = job.RowPixels(row);
        const std::uint32_t width = job.DrawnWidth();
        if constexpr (std::is_same_v<Sample, Color>) {
            for (std::uint32_t i = 0; i < width; ++i)
                pixels[i] = samples[indices[i]];
        } else {
            // Magnified, a source pixel is converted once for all that show it.
            std::uint32_t converted = indices[0];
            Color color = SampleToColor(samples[converted]);
            for (std::uint32_t i = 0; i < width; ++i) {
                if (indices[i] != converted) {
                    converted = indices[i];
                    color = SampleToColor(samples[converted]);
                }
                pixels[i] = color;
            }
        }
    }

    /// A source row runs down the screen: each is read once for all rows of the band.
    void FetchTurned(const std::uint32_t* drawnRows, std::uint32_t count) const {
        Color* pixels[rowsPerBand];
        std::uint32_t sources[rowsPerBand];
        for (std::uint32_t i = 0; i < count; ++i) {
            pixels[i] = job.RowPixels(drawnRows[i]);
            sources[i] = rows[drawnRows[i]];
        }
        for (std::uint32_t column = 0; column < job.DrawnWidth(); ++column) {
            const Sample* const samples = job.image.bits + std::size_t(columns[column]) * job.image.allocatedWidth;
            for (std::uint32_t i = 0; i < count; ++i)
                pixels[i][column] = SampleToColor(samples[sources[i]]);
        }
    }

    void ShadeUncertain(std::uint32_t row) const {
        if (rows.IsUncertain(row))
            return job.ShadePlainly(row, 0, job.DrawnWidth());
        for (const std::uint32_t column : columns.Uncertain())
            job.ShadePlainly(row, column, column + 1);
    }

    const ResamplingJob<Sample>& job;
    NearestIndices columns;
    NearestIndices rows;
};

} // namespace Quorvex::Platform::Video::Software
