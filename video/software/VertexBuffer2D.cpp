#include "video/software/VertexBuffer2D.h"

namespace Quorvex::Platform::Video::Software {

VertexBuffer2D::VertexBuffer2D(Context* owner, SharedPtr<Context> sharedContext, std::uint32_t quads)
    : Video::VertexBuffer2D(owner, std::move(sharedContext)),
      vertices(new VertexRecord[static_cast<std::size_t>(quads) * verticesPerQuad]()) {
    quadCount = quads;
}

void VertexBuffer2D::SetVertex(std::uint32_t index, float u, float v, float red, float green, float blue, float alpha,
                               std::int32_t x, std::int32_t y, std::int32_t z) {
    if (index / verticesPerQuad >= quadCount)
        throw Exception();
    vertices[index] = MakeRecord(u, v, red, green, blue, alpha, x, y, z);
}

void VertexBuffer2D::Render() {
    for (std::uint32_t quad = 0; quad < quadCount; ++quad)
        RenderRange(quad);
}

void VertexBuffer2D::RenderRange(std::uint32_t quadIndex) {
    GetContext()->RenderVertexBufferRange(*this, quadIndex);
}

void VertexBuffer2D::Destroy() {
    quadCount = 0;
    vertices.reset();
}

std::span<const VertexRecord, verticesPerQuad> VertexBuffer2D::Quad(std::uint32_t quadIndex) const {
    if (quadIndex >= quadCount)
        throw Exception();
    return std::span<const VertexRecord, verticesPerQuad>(
        vertices.get() + static_cast<std::size_t>(quadIndex) * verticesPerQuad, verticesPerQuad);
}

} // namespace Quorvex::Platform::Video::Software
