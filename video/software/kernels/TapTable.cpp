#include "video/software/kernels/TapTable.h"

#include "video/software/PixelPrograms.h"
#include "video/software/kernels/FilterRows.h"

namespace Quorvex::Platform::Video::Software {

namespace {

/// How far an edge or a fraction of a source pixel that a program derives from its position can lie from the same value
/// derived from the tables' position: the subtraction of a constant rounds once more on either side.
double EdgeError(const AxisSampling& axis) {
    return 1.25 * axis.PositionError();
}

} // namespace

void TapTable::Start(std::int64_t begin, std::int64_t end, std::uint32_t taps) {
    pixelCount = static_cast<std::uint32_t>(end - begin);
    tapsPerPixel = taps;
    const std::size_t filledUp = (std::size_t(pixelCount) + pixelsPerGroup - 1) / pixelsPerGroup * pixelsPerGroup;
    firstTaps.assign(filledUp, 0);
    weights.assign(filledUp * taps, 0.0);
}

void TapTable::MakeLinear(const AxisSampling& axis, std::int64_t begin, std::int64_t end) {
    Start(begin, end, 2);
    for (std::uint32_t i = 0; i < pixelCount; ++i) {
        const double position = axis.Position(begin + i) - 0.5;
        const double first = std::floor(position);
        const double t = position - first;
        firstTaps[i] = ClampedIndex(first, axis.visibleLength);
        AddTap(i, first, 1.0 - t, axis.visibleLength);
        AddTap(i, first + 1.0, t, axis.visibleLength);
    }
    // The result moves with t by at most the difference of the two samples.
    error = EdgeError(axis);
    Finish();
}

void TapTable::MakeCubic(const AxisSampling& axis, std::int64_t begin, std::int64_t end) {
    Start(begin, end, 4);
    for (std::uint32_t i = 0; i < pixelCount; ++i) {
        const double position = axis.Position(begin + i) - 1.5;
        const double first = std::floor(position);
        const double t = position - first;
        // The Catmull-Rom polynomials, each the kernel's value for one sample of 1 among zeros.
        const double w[] = {0.5 * t * (-1.0 + t * (2.0 - t)), 1.0 + 0.5 * t * t * (-5.0 + 3.0 * t),
                            0.5 * t * (1.0 + t * (4.0 - 3.0 * t)), 0.5 * t * t * (t - 1.0)};
        firstTaps[i] = ClampedIndex(first, axis.visibleLength);
        for (int k = 0; k < 4; ++k)
            AddTap(i, first + k, w[k], axis.visibleLength);
    }
    // The magnitudes of the polynomials' slopes sum up to at most 3, and the other axis can amplify by 1.25.
    error = 4.0 * EdgeError(axis);
    Finish();
}

void TapTable::MakeArea(const AxisSampling& axis, double size, std::int64_t begin, std::int64_t end) {
    const auto taps = static_cast<std::uint32_t>(std::ceil(std::min(size, 4294967000.0))) + 1;
    Start(begin, end, taps);
    const double perSize = 1.0 / size;
    for (std::uint32_t i = 0; i < pixelCount; ++i) {
        const double center = axis.Position(begin + i);
        const double start = center - size * 0.5;
        const double stop = center + size * 0.5;
        const double first = std::floor(start);
        firstTaps[i] = ClampedIndex(first, axis.visibleLength);
        AddTap(i, first, std::min(1.0 - (start - first), stop - start) * perSize, axis.visibleLength);
        for (double index = first + 1.0; index < stop; index += 1.0)
            AddTap(i, index, std::min(stop - index, 1.0) * perSize, axis.visibleLength);
    }
    // Each of the two edges takes or gives one sample's share of the mean; sums of many terms round once a term.
    error = 2.0 * EdgeError(axis) * perSize + taps * 0x1p-51;
    Finish();
}

void TapTable::AddTap(std::uint32_t pixel, double index, double weight, std::uint32_t length) {
    // Rounding may put the end of a footprint just past the last tap that fits; its weight is next to nothing.
    const std::uint32_t tap = std::min(ClampedIndex(index, length) - firstTaps[pixel], tapsPerPixel - 1);
    weights[std::size_t(pixel) * tapsPerPixel + tap] += weight;
}

void TapTable::Finish() {
    sourceBegin = pixelCount != 0 ? ~std::uint32_t{0} : 0;
    sourceEnd = 0;
    for (std::uint32_t i = 0; i < pixelCount; ++i) {
        std::uint32_t used = tapsPerPixel;
        while (used > 1 && Weights(i)[used - 1] == 0.0)
            --used;
        sourceBegin = std::min(sourceBegin, firstTaps[i]);
        sourceEnd = std::max(sourceEnd, firstTaps[i] + used);
    }
    std::fill(firstTaps.begin() + pixelCount, firstTaps.end(), sourceBegin);
}

void TapTable::Scale(double factor) {
    for (double& weight : weights)
        weight *= factor;
}

} // namespace Quorvex::Platform::Video::Software
