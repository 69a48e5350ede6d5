#pragma once

#include "video/ResamplingMode.h"

namespace Quorvex::Platform::Video {

class Image2DMeta;

/// Where an image lies on screen. Columns and rows are in screen pixels; x1 and y1 are exclusive. The rectangle is not
/// clipped and may lie far outside the window; x0 above x1 shows the image mirrored, and so does y0 above y1.
struct ImageRect {
    std::int32_t x0 = 0;
    std::int32_t x1 = 0;
    std::int32_t y0 = 0;
    std::int32_t y1 = 0;
    std::int32_t rotation = 0; ///< Degrees counterclockwise: 0, 90, 180 or 270.
    EnumResamplingMode mode = EnumResamplingMode::Area;
    const Image2DMeta* source = nullptr; ///< The shown image; not owned.
    bool prepared = false;
    bool unchanged = false; ///< The image is the one of the last paint, so that what was resampled of it still holds.
    // The part of it that may be drawn to, in the order of a context's clip.
    std::int32_t clipX0 = 0;
    std::int32_t clipY0 = 0;
    std::int32_t clipX1 = 0;
    std::int32_t clipY1 = 0;
};

} // namespace Quorvex::Platform::Video
