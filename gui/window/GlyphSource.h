#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace Quorvex::GUI {

/// Advance parts of one character in pixels: space before (may be negative), width of the black box, space after (may
/// be negative).
struct GlyphWidths {
    std::int32_t a = 0;
    std::int32_t b = 0;
    std::int32_t c = 0;
};

/// Draws the 256 characters of Windows-1252 in one monochrome font: white on black, without anti-aliasing. A failure is
/// reported under the platform call's name and raises Exception. GUI thread.
class IGlyphSource {
public:
    virtual ~IGlyphSource() = default;

    virtual const std::array<GlyphWidths, 256>& GetWidths() const = 0;
    /// Starts a black bitmap of that size in pixels.
    virtual void BeginBitmap(std::uint32_t width, std::uint32_t height) = 0;
    /// Draws a character with its origin at x and the top of its cell at y.
    virtual void DrawCharacter(std::uint8_t character, std::int32_t x, std::int32_t y) = 0;
    /// 32 bits a pixel, blue first, rows top-down, width * height * 4 bytes.
    virtual std::vector<std::uint8_t> ReadBitmap() = 0;
};

} // namespace Quorvex::GUI
