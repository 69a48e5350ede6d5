#pragma once

#include "video/software/kernels/FilterRows.h"
#include "video/software/kernels/SourceLines.h"

namespace Quorvex::Platform::Video::Software {

/// How filtered values in a sample's own scale become levels of 0 to 255: (value + offset) * scale. FilteredLevel says
/// the same, with a half added and some of it rounded otherwise.
template <class Channel>
struct LevelScale {
    static constexpr bool isFloat = std::is_floating_point_v<Channel>;
    static constexpr double offset = isFloat ? 0.0 : -static_cast<double>(std::numeric_limits<Channel>::min());
    static constexpr double scale = isFloat ? 255.0
                                            : 255.0 / (static_cast<double>(std::numeric_limits<Channel>::max()) -
                                                       static_cast<double>(std::numeric_limits<Channel>::min()));
};

/// Linear, cubic and area resampling. All three are a weighted sum over neighbouring source rows and then over
/// neighbouring columns, in 64-bit floats. The order of the operations differs from the plain program's, and positions
/// differ in their last bits; what that can amount to is bounded, and pixels within the bound of a rounding edge are
/// left to the plain program.
template <class Sample>
class FilterKernel {
public:
    FilterKernel(const ResamplingJob<Sample>& resamplingJob, InstructionSet instructions, std::uint32_t workerCount)
        : job(resamplingJob), loops(GetFilterRows<Sample>(instructions)) {
        MakeTaps();
        const AxisSampling& rowAxis = job.sampling.Rows();
        rowsPerBand = SourceLines<Sample>::RowsPerBand(rowAxis, rows.TapsPerPixel(), job.sampling.IsTurned(),
                                                       columns.SourceEnd() - columns.SourceBegin());
        MakeOffsets();
        scratches.reserve(workerCount);
        for (std::uint32_t i = 0; i < workerCount; ++i)
            scratches.push_back(MakeScratch(rowAxis));
    }

    std::uint32_t UnitCount() const { return (job.DrawnHeight() + rowsPerBand - 1) / rowsPerBand; }

    void RenderUnit(std::uint32_t worker, std::uint32_t unit) {
        const RowBand band(unit, rowsPerBand, job.DrawnHeight());
        Scratch& scratch = scratches[worker];
        scratch.lines.Prepare(rows, band);
        if (!job.sampling.IsTurned() && SumCount() * sizeof(Channel) <= stripBytes)
            FetchAhead(scratch, band);
        for (std::uint32_t row = band.begin; row < band.end; ++row)
            RenderRow(scratch, row);
    }

private:
    using Channel = ChannelType<Sample>;
    static constexpr std::uint32_t channels = channelCount<Sample>;
    static constexpr bool isFloat = std::is_floating_point_v<Channel>;

    struct Scratch {
        SourceLines<Sample> lines;
        std::vector<const Channel*> linePointers;
        std::vector<double> sums;
        std::vector<std::uint32_t> uncertainGroups;
    };

    /// Lines shorter than this end before the processor has noticed that they will be read: a strip of columns that a
    /// scroll brings into view jumps from one page of memory to the next.
    static constexpr std::size_t stripBytes = 256;

    void FetchAhead(const Scratch& scratch, const RowBand& band) const {
        constexpr std::size_t cacheLine = 64;
        for (std::uint32_t row = band.begin; row < band.end; ++row)
            for (std::uint32_t tap = 0; tap < rows.TapsPerPixel(); ++tap) {
                const std::uint32_t line = std::min(rows.FirstTap(row) + tap, rows.SourceEnd() - 1);
                const auto* const bytes = reinterpret_cast<const std::byte*>(scratch.lines.Line(line));
                for (std::size_t i = 0; i < SumCount() * sizeof(Channel) + cacheLine; i += cacheLine)
                    __builtin_prefetch(bytes + i);
            }
    }

    void MakeTaps() {
        const AxisSampling& columnAxis = job.sampling.Columns();
        const AxisSampling& rowAxis = job.sampling.Rows();
        const std::int64_t left = job.drawn.left - job.origin.left, right = left + job.DrawnWidth();
        const std::int64_t top = job.drawn.top - job.origin.top, bottom = top + job.DrawnHeight();
        if (job.mode == EnumResamplingMode::Area) {
            const AreaFootprint& footprint = job.sampling.Footprint();
            const bool isTurned = job.sampling.IsTurned();
            columns.MakeArea(columnAxis, isTurned ? footprint.sizeY : footprint.sizeX, left, right);
            rows.MakeArea(rowAxis, isTurned ? footprint.sizeX : footprint.sizeY, top, bottom);
        } else if (job.mode == EnumResamplingMode::Linear) {
            columns.MakeLinear(columnAxis, left, right);
            rows.MakeLinear(rowAxis, top, bottom);
        } else {
            columns.MakeCubic(columnAxis, left, right);
            rows.MakeCubic(rowAxis, top, bottom);
        }
        columns.Scale(LevelScale<Channel>::scale);
        if (job.mode == EnumResamplingMode::Cubic)
            overshoot = isFloat && channels == 4 ? Overshoot::Wrap : Overshoot::Clamp;
        else
            overshoot = isFloat ? Overshoot::Wrap : Overshoot::None;
        // The cubic kernel in Horner form rounds values of up to 12 times the range some 50 times.
        relativeError = columns.Error() + rows.Error() + 0x1p-43;
    }

    void MakeOffsets() {
        offsets.resize(columns.FirstTaps().size());
        for (std::size_t i = 0; i < offsets.size(); ++i)
            offsets[i] = (columns.FirstTaps()[i] - columns.SourceBegin()) * channels;
    }

    Scratch MakeScratch(const AxisSampling& rowAxis) const {
        Scratch scratch{
            SourceLines<Sample>(job.image, job.sampling.IsTurned(), columns.SourceBegin(), columns.SourceEnd()),
            std::vector<const Channel*>(rows.TapsPerPixel()),
            // Superfluous taps read zeros behind the end.
            std::vector<double>(SumCount() + std::size_t(columns.TapsPerPixel()) * channels),
            std::vector<std::uint32_t>((job.DrawnWidth() + pixelsPerGroup - 1) / pixelsPerGroup)};
        scratch.lines.Reserve(rowAxis, rows.TapsPerPixel(), rowsPerBand);
        return scratch;
    }

    std::size_t SumCount() const { return std::size_t(columns.SourceEnd() - columns.SourceBegin()) * channels; }

    /// How far a level of a row can lie from the plain program's; MAGNITUDE is the largest one of a float sample.
    double LevelError(double magnitude) const {
        const double range = isFloat ? 2.0 * 255.0 * magnitude : 256.0;
        return range * relativeError;
    }

    void RenderRow(Scratch& scratch, std::uint32_t row) const {
        const std::uint32_t taps = SourceLines<Sample>::UsedTaps(rows, row);
        for (std::uint32_t tap = 0; tap < taps; ++tap)
            scratch.linePointers[tap] = reinterpret_cast<const Channel*>(scratch.lines.Line(rows.FirstTap(row) + tap));
        const double magnitude = loops.sum(scratch.linePointers.data(), rows.Weights(row), taps,
                                           LevelScale<Channel>::offset, scratch.sums.data(), SumCount());
        const double certainDeviation = 0.5 - LevelError(magnitude);
        // Floats that are not finite, or so large that all their levels are uncertain.
        if (!(certainDeviation > 0.25))
            return job.ShadePlainly(row, 0, job.DrawnWidth());
        const RowToResample line{scratch.sums.data(), offsets.data(),   columns.Weights(0), columns.TapsPerPixel(),
                                 job.DrawnWidth(),    certainDeviation, overshoot};
        const std::size_t uncertain = loops.resample(line, job.RowPixels(row), scratch.uncertainGroups.data());
        for (std::size_t i = 0; i < uncertain; ++i) {
            const std::uint32_t begin = scratch.uncertainGroups[i] * pixelsPerGroup;
            job.ShadePlainly(row, begin, std::min(begin + pixelsPerGroup, job.DrawnWidth()));
        }
    }

    const ResamplingJob<Sample>& job;
    const FilterRows<Sample>& loops;
    TapTable columns;
    TapTable rows;
    std::vector<std::uint32_t> offsets; ///< Per column, of its first tap in the sums.
    std::uint32_t rowsPerBand = 1;
    Overshoot overshoot = Overshoot::None;
    double relativeError = 0.0;
    std::vector<Scratch> scratches;
};

} // namespace Quorvex::Platform::Video::Software
