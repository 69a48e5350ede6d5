#pragma once

#include "video/Context.h"

#include <cstddef>

namespace Quorvex::Platform::Video {

/// One vertex as every backend stores it: texture coordinates, colour, position. The layout is the one that OpenGL
/// calls GL_T2F_C4UB_V3F.
struct VertexRecord {
    float u, v;
    std::uint8_t r, g, b, a;
    float x, y, z; ///< Pixels.
};
static_assert(sizeof(VertexRecord) == 24 && offsetof(VertexRecord, r) == 8 && offsetof(VertexRecord, x) == 12);

inline constexpr std::uint32_t verticesPerQuad = 6;

/// A fixed number of quads. Each has six vertices, which make two triangles: 0, 1, 2 and 3, 4, 5.
class VertexBuffer2D : public Context::ContextChild {
public:
    using ContextChild::ContextChild;

    /// The object on which SetVertex and Unlock are called.
    virtual VertexBuffer2D* Lock() = 0;
    /// INDEX counts vertices from 0; one past the last raises Exception with empty text. Texture coordinates are
    /// fractions of the allocated texture, colours go from 0 to 1, positions are in pixels.
    virtual void SetVertex(std::uint32_t index, float u, float v, float red, float green, float blue, float alpha,
                           std::int32_t x, std::int32_t y, std::int32_t z) = 0;
    virtual void Unlock() = 0;
    /// Draws all quads in order.
    virtual void Render() = 0;
    /// Draws one quad.
    virtual void RenderRange(std::uint32_t quadIndex) = 0;
    /// Releases the storage; the buffer is empty from here on.
    virtual void Destroy() = 0;

    std::uint32_t GetQuadCount() const { return quadCount; }

protected:
    /// The record of SetVertex's arguments: colours are cut off to whole levels, not rounded.
    static VertexRecord MakeRecord(float u, float v, float red, float green, float blue, float alpha, std::int32_t x,
                                   std::int32_t y, std::int32_t z);

    std::uint32_t quadCount = 0;
};

} // namespace Quorvex::Platform::Video
