#pragma once

#include "video/VertexBuffer2D.h"

#include <memory>

namespace Quorvex::Platform::Video::Software {

/// Vertices in plain memory, all 0 at first.
class VertexBuffer2D final : public Video::VertexBuffer2D {
public:
    VertexBuffer2D(Context* owner, SharedPtr<Context> sharedContext, std::uint32_t quads);

    Video::VertexBuffer2D* Lock() override { return this; }
    void SetVertex(std::uint32_t index, float u, float v, float red, float green, float blue, float alpha,
                   std::int32_t x, std::int32_t y, std::int32_t z) override;
    void Unlock() override {}
    void Render() override;
    void RenderRange(std::uint32_t quadIndex) override;
    void Destroy() override;

    /// The six vertices of a quad. Raises Exception with empty text for a quad that is not there.
    std::span<const VertexRecord, verticesPerQuad> Quad(std::uint32_t quadIndex) const;

private:
    std::unique_ptr<VertexRecord[]> vertices;
};

} // namespace Quorvex::Platform::Video::Software
