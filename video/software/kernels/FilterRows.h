#pragma once

#include "video/software/SampleConversion.h"

#include <cstddef>

namespace Quorvex::Platform::Video::Software {

/// What the inner loops are compiled for.
enum class InstructionSet { Baseline, Avx2 };

/// The best one that this build and this processor have.
InstructionSet BestInstructionSet();

/// What becomes of a filtered level outside 0 to 255.
enum class Overshoot {
    None,  ///< There is none, but for rounding: a mean of integers.
    Clamp, ///< It is cut off.
    Wrap,  ///< The low 8 bits count: floats.
};

/// Pixels are resampled in groups of this size.
inline constexpr std::uint32_t pixelsPerGroup = 4;

/// One destination row, out of sums over source rows. Levels are those of FilteredLevel without its 0.5, so that a byte
/// is the level rounded to nearest. The arrays per pixel are filled up to a whole group.
struct RowToResample {
    const double* sums;           ///< Channel values along the row.
    const std::uint32_t* offsets; ///< Per pixel, of its first tap in SUMS.
    const double* weights;        ///< Per pixel, TAPS of them, scaled to levels.
    std::uint32_t taps;
    std::uint32_t pixelCount;
    /// A level further than this from the nearest integer is not certain to give the plain program's byte.
    double certainDeviation;
    Overshoot overshoot;
};

/// The inner loops of the linear, cubic and area kernels. Any thread.
template <class Sample>
struct FilterRows {
    using Channel = ChannelType<Sample>;

    /// sums[i] = offset + the sum of weights[j] * rows[j][i], for i below count. Returns the largest magnitude met for
    /// floats, infinity if one is not finite; 0 for integers, whose range is known.
    double (*sum)(const Channel* const* rows, const double* weights, std::size_t rowCount, double offset, double* sums,
                  std::size_t count);
    /// Writes the row's pixels, and the numbers of the groups with an uncertain pixel; returns how many groups these
    /// are. UNCERTAIN has room for all.
    std::size_t (*resample)(const RowToResample& row, Color* pixels, std::uint32_t* uncertain);
};

/// The same loops, compiled for each instruction set.
template <class Sample>
struct BaselineFilterRows {
    static const FilterRows<Sample>& Rows();
};
template <class Sample>
struct Avx2FilterRows {
    static const FilterRows<Sample>& Rows();
};

template <class Sample>
const FilterRows<Sample>& GetFilterRows(InstructionSet instructions) {
#if defined(__x86_64__)
    if (instructions == InstructionSet::Avx2)
        return Avx2FilterRows<Sample>::Rows();
#endif
    static_cast<void>(instructions);
    return BaselineFilterRows<Sample>::Rows();
}

} // namespace Quorvex::Platform::Video::Software
