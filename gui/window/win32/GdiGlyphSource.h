#pragma once

#include "gui/window/GlyphSource.h"

#include <windows.h>

namespace Quorvex::GUI {

/// "Arial" drawn by GDI without anti-aliasing. GUI thread.
class GdiGlyphSource final : public IGlyphSource {
public:
    GdiGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth);
    ~GdiGlyphSource() override;
    GdiGlyphSource(const GdiGlyphSource&) = delete;
    GdiGlyphSource& operator=(const GdiGlyphSource&) = delete;

    const std::array<GlyphWidths, 256>& GetWidths() const override { return m_widths; }
    void BeginBitmap(std::uint32_t width, std::uint32_t height) override;
    void DrawCharacter(std::uint8_t character, std::int32_t x, std::int32_t y) override;
    std::vector<std::uint8_t> ReadBitmap() override;

private:
    void Create(std::uint32_t cellHeight, std::uint32_t meanWidth);
    void AskWidths();
    void Release();
    BITMAPINFO Describe() const;

    HDC m_context = nullptr;
    HFONT m_font = nullptr;
    HBITMAP m_bitmap = nullptr;
    HGDIOBJ m_formerFont = nullptr;
    HGDIOBJ m_formerBitmap = nullptr;
    std::array<GlyphWidths, 256> m_widths{};
    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
};

} // namespace Quorvex::GUI
