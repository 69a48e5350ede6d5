#pragma once

#include "gui/QuadWriter.h"
#include "gui/window/GlyphSource.h"
#include "video/Image2DMeta.h"

namespace Quorvex::GUI {

class IWindowSystem;

/// The toolkit's one font, as a texture with the 256 characters of Windows-1252 side by side, made once through the
/// platform's font drawing: text then goes through the same renderer as everything else, and every pixel of a glyph is
/// either drawn or not. GUI thread.
class Font {
public:
    /// Draws the atlas and uploads it. Raises Exception where the platform cannot draw.
    Font(IWindowSystem& windowSystem, const SharedPtr<Platform::Video::Context>& context);
    /// The same from glyphs of that cell height in pixels.
    Font(IGlyphSource& glyphs, std::int32_t height, const SharedPtr<Platform::Video::Context>& context);

    /// The height of a character cell in pixels.
    std::int32_t GetHeight() const { return m_height; }
    /// In pixels, of the text in Windows-1252.
    std::int32_t GetTextWidth(const String& text) const;
    /// From the left edge of one character to that of the next one.
    std::int32_t GetAdvance(std::uint8_t character, std::uint8_t next) const;
    const GlyphWidths& GetWidths(std::uint8_t character) const { return m_widths[character]; }

    /// The part of the texture that a character takes.
    const QuadWriter::TextureRect& GetTextureRect(std::uint8_t character) const { return m_textureRects[character]; }
    SharedPtr<Platform::Video::Image2D> GetAtlas(const SharedPtr<Platform::Video::Context>& context) {
        return m_atlas.GetImage2D(context);
    }
    /// One quad a character, at the origin, quad number = character code, in white.
    const SharedPtr<Platform::Video::VertexBuffer2D>& GetQuads() const { return m_quads; }
    /// The image of the atlas, white with coverage as alpha.
    const SharedPtr<Data::ImageBase>& GetAtlasImage() const { return m_atlas.source; }

private:
    std::uint32_t AtlasWidth() const;
    void DrawAtlas(IGlyphSource& glyphs);
    void UploadAtlas(const SharedPtr<Platform::Video::Context>& context, const std::vector<std::uint8_t>& bitmap,
                     std::uint32_t atlasWidth, std::uint32_t atlasHeight);
    void PlaceQuads(const SharedPtr<Platform::Video::Context>& context);

    std::int32_t m_height;
    std::array<GlyphWidths, 256> m_widths{};
    std::array<Rect, 256> m_places{}; ///< In the atlas, in pixels.
    std::array<QuadWriter::TextureRect, 256> m_textureRects{};
    Platform::Video::Image2DMeta m_atlas;
    SharedPtr<Platform::Video::VertexBuffer2D> m_quads;
};

} // namespace Quorvex::GUI
