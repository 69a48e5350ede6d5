#include "gui/window/headless/HeadlessGlyphSource.h"

#include <algorithm>
#include <utility>

namespace Quorvex::GUI {

namespace {

constexpr std::uint32_t rows = 7;
constexpr std::uint32_t meanColumns = 5;

/// Spreads the bits of the code over a word (the finaliser of MurmurHash3), one dot a bit.
std::uint64_t PatternOf(std::uint8_t character) {
    std::uint64_t bits = character + 1u;
    bits = (bits ^ (bits >> 33)) * 0xFF51AFD7ED558CCDu;
    bits = (bits ^ (bits >> 33)) * 0xC4CEB9FE1A85EC53u;
    return bits ^ (bits >> 33);
}

bool IsBlank(std::uint8_t character) {
    return character <= 32;
}

} // namespace

HeadlessGlyphSource::HeadlessGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth)
    : m_dotWidth(static_cast<std::int32_t>(std::max(meanWidth / meanColumns, 1u))),
      m_dotHeight(static_cast<std::int32_t>(std::max(cellHeight / (rows + 3), 1u))), m_firstRow(2 * m_dotHeight) {
    for (std::uint32_t i = 0; i < 256; ++i) {
        const auto columns = static_cast<std::int32_t>(CountColumns(static_cast<std::uint8_t>(i)));
        const auto before = static_cast<std::int32_t>(i % 7 == 3 ? 1 : 0) - (i % 11 == 5 ? 1 : 0);
        m_widths[i] = {before * m_dotWidth, columns * m_dotWidth, m_dotWidth};
    }
}

std::uint32_t HeadlessGlyphSource::CountColumns(std::uint8_t character) {
    return 1 + (character * 3u + 2) % 5;
}

bool HeadlessGlyphSource::IsDotSet(std::uint8_t character, std::uint32_t column, std::uint32_t row) {
    if (IsBlank(character) || column >= CountColumns(character) || row >= rows)
        return false;
    // The base line is always whole, so that a glyph's black box shows its full width.
    return row == rows - 1 || ((PatternOf(character) >> (row * meanColumns + column)) & 1) != 0;
}

void HeadlessGlyphSource::BeginBitmap(std::uint32_t width, std::uint32_t height) {
    m_width = width;
    m_height = height;
    m_bits.assign(std::size_t{width} * height * 4, 0);
}

void HeadlessGlyphSource::DrawCharacter(std::uint8_t character, std::int32_t x, std::int32_t y) {
    for (std::uint32_t row = 0; row < rows; ++row) {
        for (std::uint32_t column = 0; column < CountColumns(character); ++column) {
            if (IsDotSet(character, column, row))
                FillDot(x + m_widths[character].a + static_cast<std::int32_t>(column) * m_dotWidth,
                        y + m_firstRow + static_cast<std::int32_t>(row) * m_dotHeight);
        }
    }
}

void HeadlessGlyphSource::FillDot(std::int32_t left, std::int32_t top) {
    const auto right = std::min(left + m_dotWidth, static_cast<std::int32_t>(m_width));
    const auto bottom = std::min(top + m_dotHeight, static_cast<std::int32_t>(m_height));
    for (auto y = std::max(top, 0); y < bottom; ++y) {
        for (auto x = std::max(left, 0); x < right; ++x) {
            auto* const pixel = &m_bits[(static_cast<std::size_t>(y) * m_width + static_cast<std::size_t>(x)) * 4];
            std::fill_n(pixel, 3, std::uint8_t{255});
        }
    }
}

std::vector<std::uint8_t> HeadlessGlyphSource::ReadBitmap() {
    return std::exchange(m_bits, {});
}

} // namespace Quorvex::GUI
