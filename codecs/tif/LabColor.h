#pragma once

#include <cstdint>

namespace ET::Img::Tif {

/// A colour of CIE 1976: lightness from 0 to 100, a* and b* around 0.
struct LabColor {
    double lightness, a, b;
};

/// Light of the primaries of sRGB (IEC 61966-2-1), 1 for white.
struct LinearColor {
    double blue, green, red;
};

/// Samples of 8 and of 16 bits: lightness takes their whole range, a* and b* have a sign (TIFF 6.0, section 23).
LabColor LabOf(std::uint8_t lightness, std::uint8_t a, std::uint8_t b);
LabColor LabOf(std::uint16_t lightness, std::uint16_t a, std::uint16_t b);

/// White is that of D50 there and that of sRGB here: what has no colour stays grey.
LinearColor LinearColorOf(const LabColor& color);

/// The sRGB curve, with light beyond its range limited to 0 and 1.
double SrgbOf(double linear);

} // namespace ET::Img::Tif
