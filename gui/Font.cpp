#include "gui/Font.h"

#include "data/Image.h"
#include "gui/QuadWriter.h"
#include "gui/Scale.h"
#include "gui/window/WindowSystem.h"

#include <algorithm>

namespace Quorvex::GUI {

namespace {
constexpr std::uint32_t charactersPerRow = 16;
constexpr std::uint32_t rowCount = 16;
constexpr std::uint32_t characterCount = charactersPerRow * rowCount;

std::int32_t CellHeight() {
    return 14 * GetScale();
}

/// A narrow, hard font.
std::unique_ptr<IGlyphSource> CreateGlyphs(IWindowSystem& windowSystem) {
    const auto height = static_cast<std::uint32_t>(CellHeight());
    return windowSystem.CreateGlyphSource(height, height * 5 / 14);
}

} // namespace

Font::Font(IWindowSystem& windowSystem, const SharedPtr<Platform::Video::Context>& context)
    : Font(*CreateGlyphs(windowSystem), CellHeight(), context) {}

Font::Font(IGlyphSource& glyphs, std::int32_t height, const SharedPtr<Platform::Video::Context>& context)
    : m_height(height), m_widths(glyphs.GetWidths()) {
    const std::uint32_t atlasWidth = AtlasWidth();
    // The height holds the scale already; with the scale once more, the lower part of a scaled atlas stays empty.
    const auto atlasHeight = rowCount * static_cast<std::uint32_t>(m_height * GetScale());
    glyphs.BeginBitmap(atlasWidth, atlasHeight);
    DrawAtlas(glyphs);
    UploadAtlas(context, glyphs.ReadBitmap(), atlasWidth, atlasHeight);
    PlaceQuads(context);
}

std::uint32_t Font::AtlasWidth() const {
    std::int32_t widest = 1;
    for (std::uint32_t row = 0; row < rowCount; ++row) {
        std::int32_t width = 0;
        for (std::uint32_t column = 0; column < charactersPerRow; ++column)
            width += m_widths[row * charactersPerRow + column].b;
        widest = std::max(widest, width);
    }
    return static_cast<std::uint32_t>(widest);
}

void Font::DrawAtlas(IGlyphSource& glyphs) {
    std::int32_t x = 0;
    for (std::uint32_t character = 0; character < characterCount; ++character) {
        if (character % charactersPerRow == 0)
            x = 0;
        const std::int32_t top = static_cast<std::int32_t>(character / charactersPerRow) * m_height;
        const GlyphWidths& widths = m_widths[character];
        glyphs.DrawCharacter(static_cast<std::uint8_t>(character), x - widths.a, top);
        m_places[character] = {x, top, x + widths.b, top + m_height};
        x += widths.b;
    }
}

void Font::UploadAtlas(const SharedPtr<Platform::Video::Context>& context, const std::vector<std::uint8_t>& bitmap,
                       std::uint32_t atlasWidth, std::uint32_t atlasHeight) {
    using Pixel = Data::ColorBGRA<std::uint8_t>;
    const auto image = context->CreateImage(Data::ColorTypeEnum::BGRAUInt8, atlasWidth, atlasHeight);
    {
        const auto lock = image->LockBGRAUInt8(Data::LockMode::ReadWrite);
        const std::uint8_t* source = bitmap.data();
        for (std::uint32_t y = 0; y < atlasHeight; ++y)
            for (Pixel* pixel = lock.Row(y); pixel != lock.Row(y) + atlasWidth; ++pixel, source += 4) {
                // Coverage becomes opacity: all channels of a white glyph are the same.
                const auto mean = static_cast<std::uint8_t>((source[0] + source[1] + source[2]) / 3);
                *pixel = {source[0], source[1], source[2], mean};
            }
    }
    image->HasAlpha = 1;
    m_atlas.CreateFromMemory(context, image);
}

void Font::PlaceQuads(const SharedPtr<Platform::Video::Context>& context) {
    const Data::ImageBase& image = *m_atlas.source;
    // Texture coordinates are fractions of the texture, which may be larger than the image in it.
    const auto width = static_cast<float>(image.GetWidth());
    const auto height = static_cast<float>(image.GetHeight());
    const float usedX = width / static_cast<float>(image.AllocatedWidth);
    const float usedY = height / static_cast<float>(image.AllocatedHeight);
    m_quads = context->CreateVertexBuffer2D(characterCount);
    QuadWriter writer(*m_quads);
    for (std::uint32_t character = 0; character < characterCount; ++character) {
        const Rect& place = m_places[character];
        m_textureRects[character] = {
            static_cast<float>(place.left) / width * usedX, static_cast<float>(place.top) / height * usedY,
            static_cast<float>(place.right) / width * usedX, static_cast<float>(place.bottom) / height * usedY};
        writer.Write({0, 0, place.Width(), m_height}, {1.0f, 1.0f, 1.0f, 1.0f}, m_textureRects[character]);
    }
}

std::int32_t Font::GetAdvance(std::uint8_t character, std::uint8_t next) const {
    return m_widths[character].b + std::max(m_widths[character].c, m_widths[next].a);
}

std::int32_t Font::GetTextWidth(const String& text) const {
    const String characters = text.ToANSI();
    if (characters.IsEmpty())
        return 0;
    const auto* codes = reinterpret_cast<const std::uint8_t*>(characters.Narrow());
    const std::uint32_t last = characters.length() - 1;
    std::int32_t width = m_widths[codes[last]].b;
    for (std::uint32_t i = 0; i < last; ++i)
        width += GetAdvance(codes[i], codes[i + 1]);
    return width;
}

} // namespace Quorvex::GUI
