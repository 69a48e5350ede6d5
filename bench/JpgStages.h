#pragma once

#include <cstdint>
#include <vector>

/// What the stages of a baseline JPEG file cost on one thread, in cycles of the time stamp counter per pixel.
struct JpgStages {
    double codes = 0.0;     ///< Reading the entropy-coded data.
    double transform = 0.0; ///< The inverse cosine transform.
    double color = 0.0;     ///< To BGRA in the memory of an image.
};

/// FILE must be an interleaved baseline file without restart markers.
JpgStages MeasureJpgStages(const std::vector<std::uint8_t>& file);
