#pragma once

#include "data/ColorBGRA.h"
#include "foundation/SharedPtr.h"
#include "gui/Rect.h"
#include "video/VertexBuffer2D.h"

namespace Quorvex::GUI {

/// Writes axis-parallel quads into a vertex buffer, one after the other, in the order of vertices that every renderer
/// fills exactly: top left, top right, bottom right, and top left, bottom right, bottom left. The buffer is locked
/// while the writer lives.
class QuadWriter {
public:
    using Color = Data::ColorBGRA<float>;

    /// Texture coordinates of the corners.
    struct TextureRect {
        float u0 = 0.0f;
        float v0 = 0.0f;
        float u1 = 0.0f;
        float v1 = 0.0f;
    };

    explicit QuadWriter(Platform::Video::VertexBuffer2D& buffer, std::uint32_t firstQuad = 0);
    QuadWriter(const QuadWriter&) = delete;
    QuadWriter& operator=(const QuadWriter&) = delete;
    ~QuadWriter();

    /// Straight colour, channels 0 to 1. Raises Exception with empty text past the last quad of the buffer.
    void Write(const Rect& rect, const Color& color) { Write(rect, color, TextureRect{}); }
    void Write(const Rect& rect, const Color& color, const TextureRect& texture);
    /// The quad that the next Write fills.
    std::uint32_t GetNextQuad() const { return m_nextQuad; }

private:
    Platform::Video::VertexBuffer2D* m_buffer;
    std::uint32_t m_nextQuad;
};

} // namespace Quorvex::GUI
