#pragma once

#include <cstdint>
#include <vector>

/// Which components share a scan of a sequential file.
enum class JpgScans { Interleaved, Apart, LuminanceApart };

/// How libjpeg is asked to encode a test picture.
struct JpgRecipe {
    std::uint32_t width = 33;
    std::uint32_t height = 17;
    int components = 3; ///< 1 grey, 3 YCbCr, 4 CMYK as Adobe's programs store it
    int horizontal = 1; ///< Sampling factors of the first component, and of the fourth of YCCK.
    int vertical = 1;
    int quality = 90;
    bool isProgressive = false;
    unsigned restartInterval = 0; ///< MCUs
    JpgScans scans = JpgScans::Interleaved;
    bool isYcck = false; ///< With four components.
    bool isRgb = false;  ///< With three components, which are then stored as they are.
    unsigned seed = 1;
};

/// A smooth picture with noise, and its file.
std::vector<std::uint8_t> EncodeJpg(const JpgRecipe& recipe);

/// The samples as libjpeg decodes them, with its exact integer transform and replicated chrominance: blue, green, red
/// per pixel for one and three components, the four planes as stored for four. Empty where it refuses the file.
std::vector<std::uint8_t> DecodeJpgByLibrary(const std::vector<std::uint8_t>& file);

/// Whether this build has libjpeg; without, encoding gives nothing.
bool HasJpgLibrary();
