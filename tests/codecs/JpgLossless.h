#pragma once

#include <cstdint>
#include <vector>

/// Lossless JPEG files by an encoder out of ITU T.81 annex H: a code of eight bits for each of the sizes 0 to 16.
namespace JpgLossless {

using Bytes = std::vector<std::uint8_t>;
using Plane = std::vector<std::uint32_t>;

struct Recipe {
    std::uint16_t width = 9;
    std::uint16_t height = 7;
    unsigned precision = 8;
    unsigned components = 1;
    unsigned predictor = 1;
    unsigned pointTransform = 0;
    unsigned restartRows = 0;
    bool isInterleaved = true;
};

/// Noise of the whole range with its ends, in multiples of what the point transform keeps.
std::vector<Plane> RandomPlanes(const Recipe& recipe);

Bytes EncodedFile(const Recipe& recipe, const std::vector<Plane>& planes);

} // namespace JpgLossless
