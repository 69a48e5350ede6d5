#pragma once

#include "gui/window/x11/Xlib.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace Quorvex::GUI {

/// How a visual stores a pixel, and the conversion of 32-bit BGRA into it. The usual screen stores BGRA itself, which
/// costs a plain copy; others (10 bits a channel, 5-6-5, other orders of channels or bytes) are packed by table.
class X11PixelFormat {
public:
    /// bitsPerPixel is 8, 16, 24 or 32; the masks are those of a visual with true colour, the alpha mask 0 without
    /// alpha.
    X11PixelFormat(std::uint32_t bitsPerPixel, bool isMostSignificantByteFirst, std::uint32_t redMask,
                   std::uint32_t greenMask, std::uint32_t blueMask, std::uint32_t alphaMask);

    std::uint32_t GetBitsPerPixel() const { return m_bytesPerPixel * 8; }
    bool HasAlpha() const { return m_alphaMask != 0; }
    /// Whether pixels can be shown as they are, without conversion.
    bool IsBgra() const { return m_isBgra; }

    enum class Alpha { Keep, Opaque };
    /// Converts one row. Opaque makes every pixel fully opaque where the format has alpha.
    void ConvertRow(const std::uint8_t* bgra, std::uint8_t* target, std::size_t width, Alpha alpha) const;

private:
    using Table = std::array<std::uint32_t, 256>;
    static Table MakeTable(std::uint32_t mask);
    void PackRow(const std::uint8_t* bgra, std::uint8_t* target, std::size_t width, std::uint8_t alphaFloor) const;

    std::uint32_t m_bytesPerPixel;
    bool m_isMostSignificantByteFirst;
    std::uint32_t m_alphaMask;
    bool m_isBgra;
    Table m_blue;
    Table m_green;
    Table m_red;
    Table m_alpha;
};

/// A visual of the screen together with its depth and format.
struct X11Visual {
    Visual* visual;
    int depth;
    X11PixelFormat format;

    /// The screen's own visual, else another with true colour; raises Exception "XMatchVisualInfo" where there is none.
    static X11Visual FindOpaque(Display* display, int screen);
    /// One of 32 bits with alpha; empty where the screen has none.
    static std::optional<X11Visual> FindWithAlpha(Display* display, int screen);

private:
    static X11Visual FromInfo(Display* display, const XVisualInfo& info, std::uint32_t alphaMask);
};

} // namespace Quorvex::GUI
