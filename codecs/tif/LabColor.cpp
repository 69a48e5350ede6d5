#include "codecs/tif/LabColor.h"

#include <algorithm>
#include <cmath>

namespace ET::Img::Tif {

namespace {

/// CIE 15, 8.2.1: back from the function of lightness to the share of white's light.
double LightOf(double f) {
    constexpr double threshold = 6.0 / 29.0;
    return f > threshold ? f * f * f : 3 * threshold * threshold * (f - 4.0 / 29.0);
}

} // namespace

LabColor LabOf(std::uint8_t lightness, std::uint8_t a, std::uint8_t b) {
    return {lightness * (100.0 / 255), double(static_cast<std::int8_t>(a)), double(static_cast<std::int8_t>(b))};
}

LabColor LabOf(std::uint16_t lightness, std::uint16_t a, std::uint16_t b) {
    return {lightness * (100.0 / 65535), static_cast<std::int16_t>(a) / 256.0, static_cast<std::int16_t>(b) / 256.0};
}

LinearColor LinearColorOf(const LabColor& color) {
    // The light of D50 with a luminance of 1 (ISO 15076-1, 6.3.4.3).
    constexpr double whiteX = 0.9642, whiteZ = 0.8249;
    const double f = (color.lightness + 16) / 116;
    const double x = whiteX * LightOf(f + color.a / 500), y = LightOf(f), z = whiteZ * LightOf(f - color.b / 200);
    // The inverse of the primaries of sRGB in D50 (the columns of its ICC profile).
    return {0.0719453 * x - 0.2289914 * y + 1.4052427 * z, -0.9787684 * x + 1.9161415 * y + 0.0334540 * z,
            3.1338561 * x - 1.6168667 * y - 0.4906146 * z};
}

double SrgbOf(double linear) {
    const double light = std::clamp(linear, 0.0, 1.0);
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

} // namespace ET::Img::Tif
