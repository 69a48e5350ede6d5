#include "gui/QuadWriter.h"

namespace Quorvex::GUI {

using Platform::Video::verticesPerQuad;

QuadWriter::QuadWriter(Platform::Video::VertexBuffer2D& buffer, std::uint32_t firstQuad)
    : m_buffer(buffer.Lock()), m_nextQuad(firstQuad) {}

QuadWriter::~QuadWriter() {
    m_buffer->Unlock();
}

void QuadWriter::Write(const Rect& rect, const Color& color, const TextureRect& texture) {
    std::uint32_t vertex = m_nextQuad * verticesPerQuad;
    const auto put = [&](bool isRight, bool isBottom) {
        m_buffer->SetVertex(vertex++, isRight ? texture.u1 : texture.u0, isBottom ? texture.v1 : texture.v0, color.red,
                            color.green, color.blue, color.alpha, isRight ? rect.right : rect.left,
                            isBottom ? rect.bottom : rect.top, 0);
    };
    put(false, false);
    put(true, false);
    put(true, true);
    put(false, false);
    put(true, true);
    put(false, true);
    ++m_nextQuad;
}

} // namespace Quorvex::GUI
