#include "tests/video/software/PixelProgramsReference.h"

namespace Quorvex::Platform::Video::Software {

using Pixel = Data::ColorBGRA<std::uint8_t>;

namespace {

/// The low 8 bits of a number cut off to an integer, by way of a remainder.
int LowByte(double value) {
    const double rest = std::fmod(std::trunc(value), 256.0);
    return static_cast<int>(rest < 0 ? rest + 256.0 : rest);
}

double Cubic1D(const double p[4], double t) {
    return p[1] +
           0.5 * t *
               (p[2] - p[0] + t * (2 * p[0] - 5 * p[1] + 4 * p[2] - p[3] + t * (3 * (p[1] - p[2]) + p[3] - p[0])));
}

double Clamped(double value, double low, double high) {
    return value < low ? low : value > high ? high : value;
}

} // namespace

std::size_t ReferencePrograms::Place(double x, double y) const {
    const int column = static_cast<int>(Clamped(x, 0, width - 1));
    const int row = static_cast<int>(Clamped(y, 0, height - 1));
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(width) + static_cast<std::size_t>(column);
}

int ReferencePrograms::ExactByte(int c, double x, double y) const {
    if (type.isFloat)
        return LowByte(S(c, x, y) * 255.0 + 0.5);
    const std::uint64_t value = integers[c][Place(x, y)];
    switch (type.bits) {
    case 8:
        return static_cast<int>(value & 0xFF);
    case 16:
        return static_cast<int>((std::min<std::uint64_t>(value & 0xFFFF, 0xFF7F) + 0x80) / 0x101);
    case 32:
        return static_cast<int>((std::min<std::uint64_t>(value & 0xFFFFFFFF, 0xFF7F7F7F) + 0x808080) / 0x1010101);
    default:
        return static_cast<int>((std::min<std::uint64_t>(value, 0xFF7F7F7F7F7F7F7F) + 0x80808080808080) /
                                0x101010101010101);
    }
}

int ReferencePrograms::FilteredByte(double r) const {
    if (type.isFloat)
        return LowByte(r * 255.0 + 0.5);
    double level = 0;
    switch (type.bits) {
    case 8:
        level = (type.isSigned ? r - (-128.0) : r) + 0.5;
        break;
    case 16:
        level = (type.isSigned ? r - (-32768.0) : r) * 0.0038910505836575876 + 0.5;
        break;
    case 32:
        level = (type.isSigned ? r - (-2147483648.0) : r) * 5.937181414556033e-08 + 0.5;
        break;
    default: {
        const double low = type.isSigned ? -9223372036854775808.0 : 0.0;
        const double high = type.isSigned ? 9223372036854775807.0 : 18446744073709551615.0;
        level = (r - low) / (high - low) * 255.0 + 0.5;
    }
    }
    return static_cast<int>(Clamped(level, 0.0, 255.0));
}

double ReferencePrograms::CubicClamp(double r) const {
    if (type.isFloat)
        return type.isColor ? r : Clamped(r, 0.0, 1.0);
    const double span = std::ldexp(1.0, type.bits);
    // 64-bit limits round to the power of two.
    const double last = type.bits == 64 ? 0.0 : 1.0;
    return type.isSigned ? Clamped(r, -span / 2, span / 2 - last) : Clamped(r, 0.0, span - last);
}

template <class Channel>
Pixel ReferencePrograms::Gather(const Channel& channel) const {
    const auto byte = [&](int c) { return static_cast<std::uint8_t>(channel(c)); };
    if (type.isColor)
        return {byte(0), byte(1), byte(2), byte(3)};
    return {byte(0), byte(0), byte(0), 255};
}

Pixel ReferencePrograms::Nearest(double px, double py) const {
    return Gather([&](int c) { return ExactByte(c, std::floor(px), std::floor(py)); });
}

Pixel ReferencePrograms::Colorized(double px, double py, const Pixel& color) const {
    const Pixel value = Nearest(px, py);
    return {static_cast<std::uint8_t>((color.blue * value.blue) >> 8),
            static_cast<std::uint8_t>((color.green * value.green) >> 8),
            static_cast<std::uint8_t>((color.red * value.red) >> 8),
            static_cast<std::uint8_t>((color.alpha * value.alpha) >> 8)};
}

Pixel ReferencePrograms::Linear(double px, double py) const {
    const double x = px - 0.5, y = py - 0.5;
    const double x0 = std::floor(x), y0 = std::floor(y);
    const double fx = x - x0, fy = y - y0;
    return Gather([&](int c) {
        return FilteredByte((1 - fy) * ((1 - fx) * S(c, x0, y0) + fx * S(c, x0 + 1, y0)) +
                            fy * ((1 - fx) * S(c, x0, y0 + 1) + fx * S(c, x0 + 1, y0 + 1)));
    });
}

Pixel ReferencePrograms::Cubic(double px, double py) const {
    const double x = px - 1.5, y = py - 1.5;
    return Gather([&](int c) {
        double down[4];
        for (int j = 0; j < 4; ++j) {
            double across[4];
            for (int i = 0; i < 4; ++i)
                across[i] = S(c, std::floor(x) + i, std::floor(y) + j);
            down[j] = Cubic1D(across, x - std::floor(x));
        }
        return FilteredByte(CubicClamp(Cubic1D(down, y - std::floor(y))));
    });
}

Pixel ReferencePrograms::Area(double px, double py, double sizeX, double sizeY) const {
    const double x0 = px - sizeX * 0.5, x1 = px + sizeX * 0.5;
    const double y0 = py - sizeY * 0.5, y1 = py + sizeY * 0.5;
    const double invArea = 1 / (sizeX * sizeY);
    return Gather([&](int c) {
        const auto rowSum = [&](double y) {
            double sum = std::fmin(1 - (x0 - std::floor(x0)), x1 - x0) * S(c, std::floor(x0), y);
            for (double x = std::floor(x0) + 1; x < x1; x += 1.0)
                sum += Clamped(x1 - x, 0, 1) * S(c, x, y);
            return sum;
        };
        double total = std::fmin(1 - (y0 - std::floor(y0)), y1 - y0) * rowSum(std::floor(y0));
        for (double y = std::floor(y0) + 1; y < y1; y += 1.0)
            total += Clamped(y1 - y, 0, 1) * rowSum(y);
        return FilteredByte(total * invArea);
    });
}

} // namespace Quorvex::Platform::Video::Software
