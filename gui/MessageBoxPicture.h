#pragma once

#include "foundation/String.h"
#include "gui/Rect.h"
#include "gui/window/GlyphSource.h"

#include <string>
#include <vector>

namespace Quorvex::GUI {

/// A text and a button below it, laid out and drawn into a buffer without a renderer: a message box has to work where
/// nothing else does any more.
class MessageBoxPicture {
public:
    /// The glyphs are of that cell height. Lines end at line ends of the text and where they would become too wide.
    MessageBoxPicture(IGlyphSource& glyphs, std::int32_t cellHeight, std::int32_t scale, const String& text);

    /// What text and button need, in pixels.
    std::int32_t GetWidth() const { return m_width; }
    std::int32_t GetHeight() const { return m_height; }
    const Rect& GetButton() const { return m_button; }
    /// In Windows-1252.
    const std::vector<std::string>& GetLines() const { return m_lines; }

    /// The pixels of a window of that size: 32-bit BGRA, opaque, rows top-down. What the text does not need is
    /// background.
    std::vector<std::uint8_t> Draw(std::int32_t width, std::int32_t height) const;

private:
    std::int32_t WidthOf(const std::string& line) const;
    void AddParagraph(const std::string& paragraph, std::int32_t widest);
    void DrawLine(const std::string& line, std::int32_t x, std::int32_t y) const;

    IGlyphSource& m_glyphs;
    std::int32_t m_cellHeight;
    std::int32_t m_scale;
    std::vector<std::string> m_lines;
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    Rect m_button;
};

} // namespace Quorvex::GUI
