#include "gui/window/x11/X11PixelFormat.h"

#include "foundation/Exception.h"

#include <bit>
#include <cstring>

namespace Quorvex::GUI {

X11PixelFormat::X11PixelFormat(std::uint32_t bitsPerPixel, bool isMostSignificantByteFirst, std::uint32_t redMask,
                               std::uint32_t greenMask, std::uint32_t blueMask, std::uint32_t alphaMask)
    : m_bytesPerPixel(bitsPerPixel / 8), m_isMostSignificantByteFirst(isMostSignificantByteFirst),
      m_alphaMask(alphaMask), m_isBgra(bitsPerPixel == 32 && !isMostSignificantByteFirst && redMask == 0xFF0000 &&
                                       greenMask == 0xFF00 && blueMask == 0xFF),
      m_blue(MakeTable(blueMask)), m_green(MakeTable(greenMask)), m_red(MakeTable(redMask)),
      m_alpha(MakeTable(alphaMask)) {}

/// Spreads the 256 levels over the field of the mask, so that 0 gives no bit and 255 gives all.
X11PixelFormat::Table X11PixelFormat::MakeTable(std::uint32_t mask) {
    Table table{};
    if (mask == 0)
        return table;
    const auto shift = std::countr_zero(mask);
    const std::uint64_t highest = mask >> shift;
    for (std::uint32_t level = 0; level < 256; ++level)
        table[level] = static_cast<std::uint32_t>((level * highest + 127) / 255) << shift;
    return table;
}

void X11PixelFormat::ConvertRow(const std::uint8_t* bgra, std::uint8_t* target, std::size_t width, Alpha alpha) const {
    const bool makesOpaque = alpha == Alpha::Opaque && HasAlpha();
    if (m_isBgra && !makesOpaque) {
        std::memcpy(target, bgra, width * 4);
        return;
    }
    if (!m_isBgra) {
        PackRow(bgra, target, width, makesOpaque ? 255 : 0);
        return;
    }
    for (std::size_t x = 0; x < width * 4; x += 4) {
        std::memcpy(target + x, bgra + x, 3);
        target[x + 3] = 255;
    }
}

void X11PixelFormat::PackRow(const std::uint8_t* bgra, std::uint8_t* target, std::size_t width,
                             std::uint8_t alphaFloor) const {
    for (std::size_t x = 0; x < width; ++x, bgra += 4, target += m_bytesPerPixel) {
        const auto pixel = m_blue[bgra[0]] | m_green[bgra[1]] | m_red[bgra[2]] | m_alpha[bgra[3] | alphaFloor];
        for (std::uint32_t i = 0; i < m_bytesPerPixel; ++i) {
            const auto place = m_isMostSignificantByteFirst ? m_bytesPerPixel - 1 - i : i;
            target[place] = static_cast<std::uint8_t>(pixel >> (8 * i));
        }
    }
}

namespace {

std::uint32_t BitsPerPixelOfDepth(Display* display, int depth) {
    int count = 0;
    std::uint32_t bits = 32;
    auto* const formats = XListPixmapFormats(display, &count);
    for (int i = 0; i < count; ++i) {
        if (formats[i].depth == depth)
            bits = static_cast<std::uint32_t>(formats[i].bits_per_pixel);
    }
    if (formats != nullptr)
        XFree(formats);
    return bits;
}

bool HasTrueColor(const Visual& visual) {
    return visual.c_class == TrueColor;
}

} // namespace

X11Visual X11Visual::FromInfo(Display* display, const XVisualInfo& info, std::uint32_t alphaMask) {
    const X11PixelFormat format(BitsPerPixelOfDepth(display, info.depth), ImageByteOrder(display) == MSBFirst,
                                static_cast<std::uint32_t>(info.red_mask), static_cast<std::uint32_t>(info.green_mask),
                                static_cast<std::uint32_t>(info.blue_mask), alphaMask);
    return {info.visual, info.depth, format};
}

X11Visual X11Visual::FindOpaque(Display* display, int screen) {
    XVisualInfo info{};
    auto* const own = DefaultVisual(display, screen);
    if (HasTrueColor(*own)) {
        info.visual = own;
        info.depth = DefaultDepth(display, screen);
        info.red_mask = own->red_mask;
        info.green_mask = own->green_mask;
        info.blue_mask = own->blue_mask;
        return FromInfo(display, info, 0);
    }
    for (const int depth : {24, 30, 16, 15}) {
        if (XMatchVisualInfo(display, screen, depth, TrueColor, &info) != 0)
            return FromInfo(display, info, 0);
    }
    throw Exception(__LINE__, "XMatchVisualInfo");
}

std::optional<X11Visual> X11Visual::FindWithAlpha(Display* display, int screen) {
    XVisualInfo info{};
    if (XMatchVisualInfo(display, screen, 32, TrueColor, &info) == 0)
        return std::nullopt;
    // What the three colours leave over is alpha.
    return FromInfo(display, info, static_cast<std::uint32_t>(~(info.red_mask | info.green_mask | info.blue_mask)));
}

} // namespace Quorvex::GUI
