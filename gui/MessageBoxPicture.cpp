#include "gui/MessageBoxPicture.h"

#include <algorithm>

namespace Quorvex::GUI {

namespace {

// Lengths in pixels at scale 1.
constexpr std::int32_t widestLine = 480;
constexpr std::int32_t margin = 14;
constexpr std::int32_t buttonWidth = 80;
constexpr std::int32_t buttonHeight = 24;

constexpr const char* buttonText = "OK";

// Grey levels.
constexpr std::uint8_t background = 240;
constexpr std::uint8_t buttonFace = 225;
constexpr std::uint8_t buttonEdge = 112;
constexpr std::uint8_t ink = 0;

} // namespace

MessageBoxPicture::MessageBoxPicture(IGlyphSource& glyphs, std::int32_t cellHeight, std::int32_t scale,
                                     const String& text)
    : m_glyphs(glyphs), m_cellHeight(cellHeight), m_scale(scale) {
    const std::string narrow = text.ToANSI().ToStdString();
    for (std::size_t start = 0; start <= narrow.size();) {
        const std::size_t end = std::min(narrow.find('\n', start), narrow.size());
        std::string paragraph = narrow.substr(start, end - start);
        if (paragraph.ends_with('\r'))
            paragraph.pop_back();
        AddParagraph(paragraph, widestLine * scale);
        start = end + 1;
    }
    // The empty lines at the end of a text would only make the window higher.
    while (m_lines.size() > 1 && m_lines.back().empty())
        m_lines.pop_back();
    std::int32_t textWidth = buttonWidth * scale;
    for (const std::string& line : m_lines)
        textWidth = std::max(textWidth, WidthOf(line));
    m_width = textWidth + 2 * margin * scale;
    const std::int32_t textBottom = margin * scale + static_cast<std::int32_t>(m_lines.size()) * m_cellHeight;
    const std::int32_t left = (m_width - buttonWidth * scale) / 2;
    m_button = {left, textBottom + margin * scale, left + buttonWidth * scale,
                textBottom + (margin + buttonHeight) * scale};
    m_height = m_button.bottom + margin * scale;
}

std::int32_t MessageBoxPicture::WidthOf(const std::string& line) const {
    std::int32_t width = 0;
    for (const char character : line) {
        const GlyphWidths& widths = m_glyphs.GetWidths()[static_cast<std::uint8_t>(character)];
        width += widths.a + widths.b + widths.c;
    }
    return width;
}

// Word by word; a word that is too wide for a line of its own stands on one all the same.
void MessageBoxPicture::AddParagraph(const std::string& paragraph, std::int32_t widest) {
    std::string line;
    for (std::size_t start = 0; start <= paragraph.size();) {
        const std::size_t end = std::min(paragraph.find(' ', start), paragraph.size());
        const std::string word = paragraph.substr(start, end - start);
        const std::string longer = start == 0 ? word : line + " " + word;
        if (!line.empty() && WidthOf(longer) > widest) {
            m_lines.push_back(line);
            line = word;
        } else {
            line = longer;
        }
        start = end + 1;
    }
    m_lines.push_back(line);
}

void MessageBoxPicture::DrawLine(const std::string& line, std::int32_t x, std::int32_t y) const {
    for (const char character : line) {
        const auto code = static_cast<std::uint8_t>(character);
        m_glyphs.DrawCharacter(code, x, y);
        const GlyphWidths& widths = m_glyphs.GetWidths()[code];
        x += widths.a + widths.b + widths.c;
    }
}

std::vector<std::uint8_t> MessageBoxPicture::Draw(std::int32_t width, std::int32_t height) const {
    m_glyphs.BeginBitmap(static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height));
    std::int32_t y = margin * m_scale;
    for (const std::string& line : m_lines) {
        DrawLine(line, margin * m_scale, y);
        y += m_cellHeight;
    }
    DrawLine(buttonText, m_button.left + (m_button.Width() - WidthOf(buttonText)) / 2,
             m_button.top + (m_button.Height() - m_cellHeight) / 2);
    // White dots on black: where the dots are comes the ink, elsewhere what lies below it.
    std::vector<std::uint8_t> bits = m_glyphs.ReadBitmap();
    const Rect face{m_button.left + m_scale, m_button.top + m_scale, m_button.right - m_scale,
                    m_button.bottom - m_scale};
    for (std::int32_t row = 0; row < height; ++row)
        for (std::int32_t column = 0; column < width; ++column) {
            auto* const pixel = &bits[static_cast<std::size_t>(row * width + column) * 4];
            const std::uint8_t below = face.Contains(column, row)       ? buttonFace
                                       : m_button.Contains(column, row) ? buttonEdge
                                                                        : background;
            std::fill_n(pixel, 3, pixel[0] != 0 ? ink : below);
            pixel[3] = 255;
        }
    return bits;
}

} // namespace Quorvex::GUI
