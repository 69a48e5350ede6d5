#include "video/ImageQuad.h"

namespace Quorvex::Platform::Video {

namespace {

/// A corner of the image: whether it lies at its right and at its bottom edge.
struct ImageCorner {
    bool isRight;
    bool isBottom;
};

constexpr ImageCorner topLeft{false, false}, topRight{true, false}, bottomRight{true, true}, bottomLeft{false, true};

/// The corners of the image that come to lie at the rectangle's corners.
struct Turn {
    std::int32_t rotation;
    ImageCorner atTopLeft, atTopRight, atBottomRight, atBottomLeft;
};

constexpr Turn turns[] = {
    {0, topLeft, topRight, bottomRight, bottomLeft},
    {90, topRight, bottomRight, bottomLeft, topLeft},
    {180, bottomRight, bottomLeft, topLeft, topRight},
    {270, bottomLeft, topLeft, topRight, bottomRight},
};

} // namespace

std::optional<ImageQuad> MakeImageQuad(const ImageRect& rect, float u, float v) {
    for (const Turn& turn : turns) {
        if (turn.rotation != rect.rotation)
            continue;
        const auto vertex = [u, v](ImageCorner corner, std::int32_t x, std::int32_t y) {
            return ImageQuadVertex{corner.isRight ? u : 0.0f, corner.isBottom ? v : 0.0f, x, y};
        };
        const ImageQuadVertex first = vertex(turn.atTopLeft, rect.x0, rect.y0);
        const ImageQuadVertex opposite = vertex(turn.atBottomRight, rect.x1, rect.y1);
        return ImageQuad{first,    vertex(turn.atTopRight, rect.x1, rect.y0),  opposite, first,
                         opposite, vertex(turn.atBottomLeft, rect.x0, rect.y1)};
    }
    return std::nullopt;
}

} // namespace Quorvex::Platform::Video
