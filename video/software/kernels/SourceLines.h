#pragma once

#include "video/software/PixelPrograms.h"
#include "video/software/kernels/ResamplingJob.h"
#include "video/software/kernels/TapTable.h"

#include <cstring>

namespace Quorvex::Platform::Video::Software {

/// The lines of an image that run along the destination's rows: its own rows, or, where the picture is turned, its
/// columns, copied so that their samples lie side by side. Each worker has one.
template <class Sample>
class SourceLines {
public:
    /// Of each line the samples from BEGIN up to END, exclusive.
    SourceLines(const ImageView<Sample>& source, bool isTurned, std::uint32_t begin, std::uint32_t end)
        : image(source), isCopied(isTurned), sampleBegin(begin), sampleCount(end - begin),
          // Lines an odd number of cache lines apart do not fall into the same few sets of a cache.
          lineLength((end - begin + 127) / 64 * 64 | 64) {}

    /// How many rows a band should have: few enough that copied lines stay within a second-level cache.
    static std::uint32_t RowsPerBand(const AxisSampling& rows, std::uint32_t taps, bool isTurned,
                                     std::uint32_t length) {
        constexpr std::uint32_t largest = 16;
        constexpr double cacheBytes = 262144.0;
        if (!isTurned)
            return largest;
        std::uint32_t count = largest;
        while (count > 1 && double(LineCapacity(rows, taps, count)) * length * sizeof(Sample) > cacheBytes)
            count /= 2;
        return count;
    }

    /// Takes the memory for bands of that many rows.
    void Reserve(const AxisSampling& rows, std::uint32_t taps, std::uint32_t rowsPerBand) {
        if (!isCopied)
            return;
        capacity = LineCapacity(rows, taps, rowsPerBand);
        copies.resize(std::size_t(capacity) * lineLength);
        slots.resize(LargestSpan(rows, taps, rowsPerBand));
    }

    /// Makes the lines ready that the rows of the band take anything from.
    void Prepare(const TapTable& rows, const RowBand& band) {
        if (!isCopied)
            return;
        std::uint32_t begin = ~std::uint32_t{0}, end = 0;
        for (std::uint32_t row = band.begin; row < band.end; ++row) {
            begin = std::min(begin, rows.FirstTap(row));
            end = std::max(end, rows.FirstTap(row) + UsedTaps(rows, row));
        }
        firstLine = begin;
        std::fill_n(slots.begin(), end - begin, unused);
        std::uint32_t count = 0;
        for (std::uint32_t row = band.begin; row < band.end; ++row)
            for (std::uint32_t tap = 0; tap < UsedTaps(rows, row); ++tap)
                if (std::uint32_t& slot = slots[rows.FirstTap(row) + tap - begin]; slot == unused)
                    slot = count++;
        CopyColumns(end - begin);
    }

    /// The first of the line's samples.
    const Sample* Line(std::uint32_t index) const {
        if (isCopied)
            return copies.data() + std::size_t(slots[index - firstLine]) * lineLength;
        return image.bits + std::size_t(index) * image.allocatedWidth + sampleBegin;
    }

    /// Taps up to the last one that weighs anything.
    static std::uint32_t UsedTaps(const TapTable& rows, std::uint32_t row) {
        const double* const weights = rows.Weights(row);
        std::uint32_t used = rows.TapsPerPixel();
        while (used > 1 && weights[used - 1] == 0.0)
            --used;
        return used;
    }

private:
    static constexpr std::uint32_t unused = ~std::uint32_t{0};

    static std::uint32_t LargestSpan(const AxisSampling& rows, std::uint32_t taps, std::uint32_t rowsPerBand) {
        const double span = rowsPerBand * (rows.sourceLength / rows.extent) + taps + 2.0;
        return static_cast<std::uint32_t>(std::min(span, double(rows.visibleLength)));
    }
    static std::uint32_t LineCapacity(const AxisSampling& rows, std::uint32_t taps, std::uint32_t rowsPerBand) {
        return std::min(LargestSpan(rows, taps, rowsPerBand), rowsPerBand * taps);
    }

    /// Row by row of the image, so that each of its cache lines is read once for the whole band.
    void CopyColumns(std::uint32_t span) {
        for (std::uint32_t i = 0; i < sampleCount; ++i) {
            const Sample* const samples = image.bits + std::size_t(sampleBegin + i) * image.allocatedWidth + firstLine;
            for (std::uint32_t column = 0; column < span; ++column)
                if (slots[column] != unused)
                    copies[std::size_t(slots[column]) * lineLength + i] = samples[column];
        }
    }

    ImageView<Sample> image;
    bool isCopied;
    std::uint32_t sampleBegin;
    std::uint32_t sampleCount;
    std::size_t lineLength;
    std::uint32_t capacity = 0;
    std::vector<Sample> copies;
    std::vector<std::uint32_t> slots; ///< Of the lines from firstLine on, within the copies.
    std::uint32_t firstLine = 0;
};

} // namespace Quorvex::Platform::Video::Software
