#pragma once

#include "video/software/kernels/AxisSampling.h"

#include <span>
#include <vector>

namespace Quorvex::Platform::Video::Software {

/// What the destination pixels along one axis take from the source: each the weighted sum of TapsPerPixel()
/// neighbouring source pixels. Indices outside the visible image have been clamped, and their weights added to the
/// border's.
class TapTable {
public:
    /// For the destination pixels from BEGIN up to END, exclusive. Each replaces the former content and keeps its
    /// memory. Weights of one pixel sum up to 1.
    void MakeLinear(const AxisSampling& axis, std::int64_t begin, std::int64_t end);
    void MakeCubic(const AxisSampling& axis, std::int64_t begin, std::int64_t end);
    /// The footprint of one destination pixel is SIZE source pixels long.
    void MakeArea(const AxisSampling& axis, double size, std::int64_t begin, std::int64_t end);
    /// Multiplies all weights.
    void Scale(double factor);

    std::uint32_t PixelCount() const { return pixelCount; }
    /// The same for all pixels; superfluous taps weigh 0.
    std::uint32_t TapsPerPixel() const { return tapsPerPixel; }
    /// Source index of a pixel's first tap. The last taps of a pixel may lie past SourceEnd: there they weigh 0.
    std::uint32_t FirstTap(std::uint32_t pixel) const { return firstTaps[pixel]; }
    /// Filled up to a whole group of pixels, like the weights: what is superfluous takes nothing.
    std::span<const std::uint32_t> FirstTaps() const { return firstTaps; }
    const double* Weights(std::uint32_t pixel) const { return weights.data() + std::size_t(pixel) * tapsPerPixel; }
    /// The source indices that weigh anything lie from here up to SourceEnd, exclusive.
    std::uint32_t SourceBegin() const { return sourceBegin; }
    std::uint32_t SourceEnd() const { return sourceEnd; }
    /// Bound of what this axis adds to the difference from the plain program's result, as a fraction of the range that
    /// the samples span (of twice the largest magnitude where it is not bounded).
    double Error() const { return error; }

private:
    void Start(std::int64_t begin, std::int64_t end, std::uint32_t taps);
    void AddTap(std::uint32_t pixel, double index, double weight, std::uint32_t length);
    void Finish();

    std::uint32_t pixelCount = 0;
    std::uint32_t tapsPerPixel = 0;
    std::vector<std::uint32_t> firstTaps;
    std::vector<double> weights;
    std::uint32_t sourceBegin = 0;
    std::uint32_t sourceEnd = 0;
    double error = 0.0;
};

} // namespace Quorvex::Platform::Video::Software
