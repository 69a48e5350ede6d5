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
    const double f = (color.lightness + 16) / 116;
    const double y = LightOf(f), x = LightOf(f + color.a / 500) - y, z = LightOf(f - color.b / 200) - y;
    // The inverse of the colorants of an sRGB profile, times their sum, which is D50 (0.96422, 1, 0.82521): white is 1
    // in all colours, so that only the differences to grey need factors.
    return {y + 0.0693711 * x + 1.1596203 * z, y - 0.9437481 * x + 0.0276066 * z, y + 3.0217267 * x - 0.4048601 * z};
}

double SrgbOf(double linear) {
    const double light = std::clamp(linear, 0.0, 1.0);
    return light <= 0.0031308 ? 12.92 * light : 1.055 * std::pow(light, 1 / 2.4) - 0.055;
}

} // namespace ET::Img::Tif
