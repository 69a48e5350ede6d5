#pragma once

#include "gui/window/GlyphSource.h"

namespace Quorvex::GUI {

/// Glyphs made by a rule instead of a font: every character has a pattern of its own on a grid of at most 5 by 7 dots,
/// and widths of its own that no two neighbours in the alphabet share, so that tests of measures and of placement mean
/// something. The space and the control characters are empty.
class HeadlessGlyphSource final : public IGlyphSource {
public:
    HeadlessGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth);

    const std::array<GlyphWidths, 256>& GetWidths() const override { return m_widths; }
    void BeginBitmap(std::uint32_t width, std::uint32_t height) override;
    void DrawCharacter(std::uint8_t character, std::int32_t x, std::int32_t y) override;
    std::vector<std::uint8_t> ReadBitmap() override;

    /// Columns of dots in the character's black box, 1 to 5.
    static std::uint32_t CountColumns(std::uint8_t character);
    /// Whether the dot in that column and row (0 to 6) is white.
    static bool IsDotSet(std::uint8_t character, std::uint32_t column, std::uint32_t row);

private:
    void FillDot(std::int32_t left, std::int32_t top);

    std::int32_t m_dotWidth;
    std::int32_t m_dotHeight;
    std::int32_t m_firstRow;
    std::array<GlyphWidths, 256> m_widths;
    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
    std::vector<std::uint8_t> m_bits;
};

} // namespace Quorvex::GUI
