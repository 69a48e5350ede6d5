#pragma once

#include "video/ImageRect.h"

#include <array>
#include <optional>

namespace Quorvex::Platform::Video {

struct ImageQuadVertex {
    float u; ///< Fractions of the allocated image.
    float v;
    std::int32_t x; ///< Pixels.
    std::int32_t y;
};

/// Two triangles: top left, top right, bottom right, and top left, bottom right, bottom left.
using ImageQuad = std::array<ImageQuadVertex, 6>;

/// The quad that shows an image in the rectangle. U and V are the texture coordinates of the image's right and bottom
/// edge. Nothing for a rotation other than 0, 90, 180 and 270.
std::optional<ImageQuad> MakeImageQuad(const ImageRect& rect, float u, float v);

/// The texture coordinate of the edge of an image with LENGTH visible of ALLOCATED pixels.
inline float EdgeTextureCoordinate(std::uint32_t length, std::uint32_t allocated) {
    return static_cast<float>(static_cast<double>(length) / allocated);
}

} // namespace Quorvex::Platform::Video
