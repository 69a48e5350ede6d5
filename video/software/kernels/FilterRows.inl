// The inner loops of the linear, cubic and area kernels. Included by one source file per instruction set, after the
// lanes of that set and with LANES_SET naming it.

#include "video/software/kernels/FilterRows.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Quorvex::Platform::Video::Software {
namespace {

template <class Channel>
LANES_FUNCTION WideLanes WidenOneByOne(const Channel* channels) {
    double wide[8];
    for (int i = 0; i < 8; ++i)
        wide[i] = static_cast<double>(channels[i]);
    return {Load(wide), Load(wide + 4)};
}
LANES_FUNCTION WideLanes WidenChannels(const std::uint32_t* channels) {
    return WidenOneByOne(channels);
}
LANES_FUNCTION WideLanes WidenChannels(const std::uint64_t* channels) {
    return WidenOneByOne(channels);
}
LANES_FUNCTION WideLanes WidenChannels(const std::int64_t* channels) {
    return WidenOneByOne(channels);
}
LANES_FUNCTION WideLanes WidenChannels(const double* channels) {
    return {Load(channels), Load(channels + 4)};
}
template <class Channel>
LANES_FUNCTION WideLanes WidenChannels(const Channel* channels) {
    return Widen(channels);
}

/// The largest magnitude among the samples of a float image. What is not finite turns poison into not-a-number.
struct FloatRange {
    Lanes largest;
    Lanes poison;
};

LANES_FUNCTION void Extend(FloatRange& range, Lanes samples) {
    range.largest = Maximum(range.largest, Magnitude(samples));
    range.poison = Add(range.poison, Subtract(samples, samples));
}

LANES_FUNCTION double LargestMagnitude(const FloatRange& range) {
    double largest[4];
    double poison[4];
    Store(largest, range.largest);
    Store(poison, range.poison);
    if (poison[0] + poison[1] + poison[2] + poison[3] != 0.0)
        return std::numeric_limits<double>::infinity();
    return std::max({largest[0], largest[1], largest[2], largest[3]});
}

constexpr std::size_t channelsPerStep = 8;

/// Adds ROW_COUNT weighted rows to the sums from BEGIN up to END, a multiple of the step apart. The first rows of all
/// start from the offset instead of what the sums hold.
template <int rowCount, class Channel>
LANES_TARGET void AddRows(const Channel* const* rows, const double* weights, bool isFirst, double offset, double* sums,
                          std::size_t begin, std::size_t end, FloatRange& range) {
    Lanes weight[rowCount];
    for (int row = 0; row < rowCount; ++row)
        weight[row] = Broadcast(weights[row]);
    const Lanes start = Broadcast(offset);
    for (std::size_t i = begin; i < end; i += channelsPerStep) {
        WideLanes sum = isFirst ? WideLanes{start, start} : WideLanes{Load(sums + i), Load(sums + i + 4)};
        for (int row = 0; row < rowCount; ++row) {
            const WideLanes samples = WidenChannels(rows[row] + i);
            if constexpr (std::is_floating_point_v<Channel>) {
                Extend(range, samples.low);
                Extend(range, samples.high);
            }
            sum.low = Add(sum.low, Multiply(samples.low, weight[row]));
            sum.high = Add(sum.high, Multiply(samples.high, weight[row]));
        }
        Store(sums + i, sum.low);
        Store(sums + i + 4, sum.high);
    }
}

/// The channels past the last whole step. Returns the largest magnitude of floats, infinity for what is not finite.
template <class Channel>
double AddRemainder(const Channel* const* rows, const double* weights, std::size_t rowCount, double offset,
                    double* sums, std::size_t begin, std::size_t end) {
    double largest = 0.0;
    for (std::size_t i = begin; i < end; ++i) {
        double sum = offset;
        for (std::size_t row = 0; row < rowCount; ++row) {
            const auto sample = static_cast<double>(rows[row][i]);
            if constexpr (std::is_floating_point_v<Channel>) {
                const double magnitude = std::abs(sample);
                if (!(magnitude <= largest))
                    largest = std::isfinite(sample) ? magnitude : std::numeric_limits<double>::infinity();
            }
            sum += sample * weights[row];
        }
        sums[i] = sum;
    }
    return largest;
}

/// SUMS stays within the first-level cache while rows are added to it a few at a time: fewer passes than one per row,
/// and no more streams than a processor fetches ahead.
template <class Channel>
LANES_TARGET double SumRows(const Channel* const* rows, const double* weights, std::size_t rowCount, double offset,
                            double* sums, std::size_t count) {
    constexpr std::size_t block = 1024;
    const std::size_t whole = count - count % channelsPerStep;
    FloatRange range{Broadcast(0.0), Broadcast(0.0)};
    for (std::size_t begin = 0; begin < whole; begin += block) {
        const std::size_t end = std::min(begin + block, whole);
        std::size_t row = 0;
        for (; rowCount - row > 5 || rowCount - row == 4; row += 4)
            AddRows<4>(rows + row, weights + row, row == 0, offset, sums, begin, end, range);
        switch (rowCount - row) {
        case 5:
            AddRows<5>(rows + row, weights + row, row == 0, offset, sums, begin, end, range);
            break;
        case 3:
            AddRows<3>(rows + row, weights + row, row == 0, offset, sums, begin, end, range);
            break;
        case 2:
            AddRows<2>(rows + row, weights + row, row == 0, offset, sums, begin, end, range);
            break;
        case 1:
            AddRows<1>(rows + row, weights + row, row == 0, offset, sums, begin, end, range);
            break;
        default:
            break;
        }
    }
    const double remainder = AddRemainder(rows, weights, rowCount, offset, sums, whole, count);
    return std::max(remainder, LargestMagnitude(range));
}

/// The filtered levels of one pixel's four channels, or of four grey pixels.
template <bool isColor, int fixedTaps>
LANES_FUNCTION Lanes Levels(const RowToResample& row, std::uint32_t pixel) {
    const std::uint32_t taps = fixedTaps != 0 ? fixedTaps : row.taps;
    if constexpr (isColor) {
        const double* const sums = row.sums + row.offsets[pixel];
        const double* const weights = row.weights + std::size_t(pixel) * taps;
        Lanes level = Multiply(Load(sums), Broadcast(weights[0]));
        for (std::uint32_t tap = 1; tap < taps; ++tap)
            level = Add(level, Multiply(Load(sums + std::size_t(tap) * 4), Broadcast(weights[tap])));
        return level;
    } else {
        double levels[4];
        for (std::uint32_t i = 0; i < 4; ++i) {
            const double* const sums = row.sums + row.offsets[pixel + i];
            const double* const weights = row.weights + std::size_t(pixel + i) * taps;
            levels[i] = sums[0] * weights[0];
            for (std::uint32_t tap = 1; tap < taps; ++tap)
                levels[i] += sums[tap] * weights[tap];
        }
        return Load(levels);
    }
}

/// Rounds levels to bytes and keeps what speaks against their certainty.
template <Overshoot overshoot>
LANES_FUNCTION IntLanes Round(Lanes level, Lanes& deviation) {
    if constexpr (overshoot == Overshoot::Clamp)
        level = Minimum(Maximum(level, Broadcast(0.0)), Broadcast(255.0));
    const RoundedLanes nearest = RoundToNearest(level);
    deviation = Maximum(deviation, Magnitude(Subtract(level, nearest.values)));
    if constexpr (overshoot == Overshoot::Wrap) {
        // Below 0 the plain program cuts off upward: a negative level, by its magnitude, is uncertain as a whole. So is
        // one beyond 32 bits, where the plain program's conversion ends and the rounding here may not.
        deviation = Maximum(deviation, Subtract(Broadcast(0.0), level));
        deviation = Maximum(deviation, Multiply(level, Broadcast(0x1p-32)));
        return LowBytes(nearest.integers);
    }
    return nearest.integers;
}

template <bool isColor, int fixedTaps, Overshoot overshoot>
LANES_FUNCTION bool ResampleGroup(const RowToResample& row, std::uint32_t pixel, Color* pixels) {
    Lanes deviation = Broadcast(0.0);
    if constexpr (isColor) {
        const IntLanes a = Round<overshoot>(Levels<true, fixedTaps>(row, pixel), deviation);
        const IntLanes b = Round<overshoot>(Levels<true, fixedTaps>(row, pixel + 1), deviation);
        const IntLanes c = Round<overshoot>(Levels<true, fixedTaps>(row, pixel + 2), deviation);
        const IntLanes d = Round<overshoot>(Levels<true, fixedTaps>(row, pixel + 3), deviation);
        StoreColors(pixels, a, b, c, d);
    } else {
        StoreGreys(pixels, Round<overshoot>(Levels<false, fixedTaps>(row, pixel), deviation));
    }
    return !IsAnyAbove(deviation, Broadcast(row.certainDeviation));
}

template <bool isColor, int fixedTaps, Overshoot overshoot>
LANES_TARGET std::size_t ResampleGroups(const RowToResample& row, Color* pixels, std::uint32_t* uncertain) {
    std::size_t uncertainCount = 0;
    const std::uint32_t wholeGroups = row.pixelCount / pixelsPerGroup;
    for (std::uint32_t group = 0; group < wholeGroups; ++group) {
        const std::uint32_t pixel = group * pixelsPerGroup;
        if (!ResampleGroup<isColor, fixedTaps, overshoot>(row, pixel, pixels + pixel))
            uncertain[uncertainCount++] = group;
    }
    const std::uint32_t done = wholeGroups * pixelsPerGroup;
    if (done < row.pixelCount) {
        Color last[pixelsPerGroup];
        if (!ResampleGroup<isColor, fixedTaps, overshoot>(row, done, last))
            uncertain[uncertainCount++] = wholeGroups;
        std::copy_n(last, row.pixelCount - done, pixels + done);
    }
    return uncertainCount;
}

template <bool isColor, Overshoot overshoot>
std::size_t ResampleRow(const RowToResample& row, Color* pixels, std::uint32_t* uncertain) {
    switch (row.taps) {
    case 2:
        return ResampleGroups<isColor, 2, overshoot>(row, pixels, uncertain);
    case 4:
        return ResampleGroups<isColor, 4, overshoot>(row, pixels, uncertain);
    default:
        return ResampleGroups<isColor, 0, overshoot>(row, pixels, uncertain);
    }
}

template <bool isColor>
std::size_t ResampleRow(const RowToResample& row, Color* pixels, std::uint32_t* uncertain) {
    switch (row.overshoot) {
    case Overshoot::None:
        return ResampleRow<isColor, Overshoot::None>(row, pixels, uncertain);
    case Overshoot::Clamp:
        return ResampleRow<isColor, Overshoot::Clamp>(row, pixels, uncertain);
    case Overshoot::Wrap:
        break;
    }
    return ResampleRow<isColor, Overshoot::Wrap>(row, pixels, uncertain);
}

} // namespace

template <class Sample>
const FilterRows<Sample>& LANES_SET<Sample>::Rows() {
    static constexpr FilterRows<Sample> rows{SumRows<ChannelType<Sample>>,
                                             ResampleRow<Data::SampleTraits<Sample>::isColor>};
    return rows;
}

#define QUORVEX_INSTANCE(value, name, sample) template struct LANES_SET<sample>;
QUORVEX_SAMPLE_TYPES(QUORVEX_INSTANCE)
#undef QUORVEX_INSTANCE

} // namespace Quorvex::Platform::Video::Software
