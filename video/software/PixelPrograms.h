#pragma once

#include "video/software/SampleConversion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Quorvex::Platform::Video::Software {

// The pixel programs: one colour for a position (px, py) in source pixels, with pixel (0, 0) from 0 to 1. These forms
// define the picture; whatever is faster has to give the same bytes. They read through the view without further checks:
// the caller holds a read lock, the image has pixels, and nearest positions lie inside the image. Any thread.

/// Locked samples and their sizes in pixels.
template <class Sample>
struct ImageView {
    const Sample* bits;
    std::uint32_t allocatedWidth; ///< Row stride.
    std::uint32_t width;
    std::uint32_t height;

    const Sample& At(std::int64_t x, std::int64_t y) const {
        return bits[static_cast<std::ptrdiff_t>(y * allocatedWidth + x)];
    }
};

/// What one destination pixel covers of the source, in source pixels.
struct AreaFootprint {
    double sizeX = 1.0;
    double sizeY = 1.0;
    double invArea = 1.0; ///< 1 / (sizeX * sizeY)
};

/// A floor for every position that does not lie closer than 1e-10 above a negative whole number. A position that
/// rounding brought just below 0 thereby still finds pixel 0.
inline std::int64_t NearestIndex(double position) {
    return static_cast<std::int64_t>(position < 0 ? position - 0.9999999999 : position);
}

/// A whole position outside the visible image repeats its border; padding is never read. LENGTH is above 0.
inline std::uint32_t ClampedIndex(double position, std::uint32_t length) {
    const std::uint32_t last = length - 1;
    if (!(position > 0.0))
        return 0;
    return position < last ? static_cast<std::uint32_t>(position) : last;
}

template <class Sample>
Color ShadeNearest(double px, double py, const ImageView<Sample>& image) {
    return SampleToColor(image.At(NearestIndex(px), NearestIndex(py)));
}

/// A shift, no division by 255: a colour of 255 darkens by up to one level.
inline Color Colorize(const Color& color, const Color& value) {
    const auto product = [](std::uint32_t a, std::uint32_t b) { return static_cast<std::uint8_t>((a * b) >> 8); };
    return {product(color.blue, value.blue), product(color.green, value.green), product(color.red, value.red),
            product(color.alpha, value.alpha)};
}

template <class Sample>
Color ShadeNearestWithColorization(double px, double py, const ImageView<Sample>& image, const Color& color) {
    return Colorize(color, ShadeNearest(px, py, image));
}

template <class Sample>
Color ShadeLinear(double px, double py, const ImageView<Sample>& image) {
    // Samples stand at the centres of source pixels.
    const double x = px - 0.5;
    const double y = py - 0.5;
    const double left = std::floor(x);
    const double top = std::floor(y);
    const double fx = x - left;
    const double fy = y - top;
    const std::uint32_t x0 = ClampedIndex(left, image.width);
    const std::uint32_t x1 = ClampedIndex(left + 1.0, image.width);
    const std::uint32_t y0 = ClampedIndex(top, image.height);
    const std::uint32_t y1 = ClampedIndex(top + 1.0, image.height);
    const Channels<Sample> s00 = ReadChannels(image.At(x0, y0));
    const Channels<Sample> s10 = ReadChannels(image.At(x1, y0));
    const Channels<Sample> s01 = ReadChannels(image.At(x0, y1));
    const Channels<Sample> s11 = ReadChannels(image.At(x1, y1));
    Channels<Sample> result;
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = (1 - fy) * ((1 - fx) * s00[i] + fx * s10[i]) + fy * ((1 - fx) * s01[i] + fx * s11[i]);
    return FilteredToColor<Sample>(result);
}

/// The Catmull-Rom spline through p1 (t = 0) and p2 (t = 1) in Horner form.
inline double CubicKernel(double p0, double p1, double p2, double p3, double t) {
    return p1 + 0.5 * t * (p2 - p0 + t * (2 * p0 - 5 * p1 + 4 * p2 - p3 + t * (3 * (p1 - p2) + p3 - p0)));
}

template <class Sample>
Color ShadeCubic(double px, double py, const ImageView<Sample>& image) {
    const double x = px - 1.5;
    const double y = py - 1.5;
    const double left = std::floor(x);
    const double top = std::floor(y);
    const double fx = x - left;
    const double fy = y - top;
    Channels<Sample> rows[4];
    for (int j = 0; j < 4; ++j) {
        const std::uint32_t row = ClampedIndex(top + j, image.height);
        Channels<Sample> p[4];
        for (int i = 0; i < 4; ++i)
            p[i] = ReadChannels(image.At(ClampedIndex(left + i, image.width), row));
        for (std::size_t c = 0; c < rows[j].size(); ++c)
            rows[j][c] = CubicKernel(p[0][c], p[1][c], p[2][c], p[3][c], fx);
    }
    Channels<Sample> result;
    for (std::size_t c = 0; c < result.size(); ++c)
        result[c] = ClampOvershoot<Sample>(CubicKernel(rows[0][c], rows[1][c], rows[2][c], rows[3][c], fy));
    return FilteredToColor<Sample>(result);
}

/// Calls visit(index, weight) for each source index that the footprint from START to END meets, in rising order, with
/// the exact share of it that is met.
template <class Visit>
void VisitFootprint(double start, double end, std::uint32_t length, const Visit& visit) {
    const double first = std::floor(start);
    visit(ClampedIndex(first, length), std::min(1 - (start - first), end - start));
    for (double position = first + 1.0; position < end; position += 1.0)
        visit(ClampedIndex(position, length), std::clamp(end - position, 0.0, 1.0));
}

/// The mean of the source over the footprint; what of it lies outside counts the border again.
template <class Sample>
Color ShadeArea(double px, double py, const ImageView<Sample>& image, const AreaFootprint& footprint) {
    const double x0 = px - footprint.sizeX * 0.5;
    const double x1 = px + footprint.sizeX * 0.5;
    const double y0 = py - footprint.sizeY * 0.5;
    const double y1 = py + footprint.sizeY * 0.5;
    Channels<Sample> total{};
    VisitFootprint(y0, y1, image.height, [&](std::uint32_t row, double rowWeight) {
        Channels<Sample> sum{};
        VisitFootprint(x0, x1, image.width, [&](std::uint32_t column, double weight) {
            const Channels<Sample> sample = ReadChannels(image.At(column, row));
            for (std::size_t c = 0; c < sum.size(); ++c)
                sum[c] += weight * sample[c];
        });
        for (std::size_t c = 0; c < total.size(); ++c)
            total[c] += rowWeight * sum[c];
    });
    for (double& channel : total)
        channel *= footprint.invArea;
    return FilteredToColor<Sample>(total);
}

} // namespace Quorvex::Platform::Video::Software
