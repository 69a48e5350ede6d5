#pragma once

#include "gui/window/GlyphSource.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <string>

namespace Quorvex::GUI {

/// Where a font lies on the disk, and which of the faces in the file it is.
struct FontFile {
    std::string path;
    int index = 0;
};

/// The scalable font that fontconfig has for a family. Raises Exception "FcFontMatch" where there is no font at all.
FontFile FindFont(const char* family);

/// "Arial" or what stands for it here, drawn by FreeType without anti-aliasing and with the font's own hints. The sizes
/// mean what they mean to the home platform: the height is that of a line's cell, and the letters are narrowed or
/// widened until a text has the mean width.
class FreeTypeGlyphSource final : public IGlyphSource {
public:
    FreeTypeGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth);
    ~FreeTypeGlyphSource() override;
    FreeTypeGlyphSource(const FreeTypeGlyphSource&) = delete;
    FreeTypeGlyphSource& operator=(const FreeTypeGlyphSource&) = delete;

    const std::array<GlyphWidths, 256>& GetWidths() const override { return m_widths; }
    void BeginBitmap(std::uint32_t width, std::uint32_t height) override;
    void DrawCharacter(std::uint8_t character, std::int32_t x, std::int32_t y) override;
    std::vector<std::uint8_t> ReadBitmap() override;

    /// Pixels from the top of the cell to the base line.
    std::int32_t GetAscent() const { return m_ascent; }

private:
    struct Glyph {
        std::int32_t left = 0; ///< Of the black box, from the origin.
        std::int32_t top = 0;  ///< From the top of the cell.
        std::int32_t width = 0;
        std::int32_t height = 0;
        std::vector<bool> dots;

        std::size_t Index(std::int32_t x, std::int32_t y) const {
            return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
        }
    };

    void SetSize(FT_Face face, std::uint32_t cellHeight, std::uint32_t meanWidth);
    void LoadGlyphs(FT_Face face);
    Glyph TakeGlyph(const FT_GlyphSlot slot) const;

    std::int32_t m_ascent = 0;
    std::array<Glyph, 256> m_glyphs;
    std::array<GlyphWidths, 256> m_widths{};
    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
    std::vector<std::uint8_t> m_bits;
};

} // namespace Quorvex::GUI
