#include "gui/window/x11/FreeTypeGlyphSource.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/String.h"

#include FT_TRUETYPE_TABLES_H
#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace Quorvex::GUI {

namespace {

template <auto destroy>
struct Destroy {
    template <class T>
    void operator()(T* object) const {
        destroy(object);
    }
};

using Pattern = std::unique_ptr<FcPattern, Destroy<&FcPatternDestroy>>;
using Library = std::unique_ptr<FT_LibraryRec_, Destroy<&FT_Done_FreeType>>;
using Face = std::unique_ptr<FT_FaceRec_, Destroy<&FT_Done_Face>>;

void Check(FT_Error error, int line, const char* name) {
    if (error == 0)
        return;
    ReportFailure(line, name, static_cast<std::uint32_t>(error));
    throw Exception(line, name);
}

/// How often each letter comes in a thousand characters of text, by the definition of xAvgCharWidth in the OpenType
/// table OS/2 up to version 2. Later versions count every glyph of the font instead, which says nothing about texts.
constexpr std::uint32_t spaceWeight = 166;
constexpr std::array<std::uint32_t, 26> letterWeights{64, 14, 27, 35, 100, 20, 14, 42, 63, 3,  6, 35, 20,
                                                      56, 56, 17, 4,  49,  56, 71, 31, 10, 18, 3, 18, 2};

/// In font units.
double MeanAdvance(FT_Face face) {
    const auto advance = [&](FT_ULong character) {
        Check(FT_Load_Char(face, character, FT_LOAD_NO_SCALE), __LINE__, "FT_Load_Char");
        return static_cast<double>(face->glyph->metrics.horiAdvance);
    };
    double sum = spaceWeight * advance(' ');
    for (std::size_t i = 0; i < letterWeights.size(); ++i)
        sum += letterWeights[i] * advance('a' + i);
    return sum / 1000;
}

std::int32_t Scale(std::int64_t units, std::int64_t pixelsPerEm, std::int64_t unitsPerEm) {
    return static_cast<std::int32_t>((2 * units * pixelsPerEm + unitsPerEm) / (2 * unitsPerEm));
}

} // namespace

FontFile FindFont(const char* family) {
    const Pattern wanted(FcNameParse(reinterpret_cast<const FcChar8*>(family)));
    if (!wanted)
        throw std::bad_alloc();
    FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultMatch;
    const Pattern found(FcFontMatch(nullptr, wanted.get(), &result));
    FcChar8* path = nullptr;
    FontFile file;
    if (!found || FcPatternGetString(found.get(), FC_FILE, 0, &path) != FcResultMatch) {
        ReportFailure(__LINE__, "FcFontMatch", static_cast<std::uint32_t>(result));
        throw Exception(__LINE__, "FcFontMatch");
    }
    file.path = reinterpret_cast<const char*>(path);
    FcPatternGetInteger(found.get(), FC_INDEX, 0, &file.index);
    return file;
}

FreeTypeGlyphSource::FreeTypeGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth) {
    const auto file = FindFont("Arial");
    FT_Library rawLibrary = nullptr;
    Check(FT_Init_FreeType(&rawLibrary), __LINE__, "FT_Init_FreeType");
    const Library library(rawLibrary);
    FT_Face rawFace = nullptr;
    Check(FT_New_Face(rawLibrary, file.path.c_str(), file.index, &rawFace), __LINE__, "FT_New_Face");
    const Face face(rawFace);
    SetSize(rawFace, cellHeight, meanWidth);
    LoadGlyphs(rawFace);
}

FreeTypeGlyphSource::~FreeTypeGlyphSource() = default;

void FreeTypeGlyphSource::SetSize(FT_Face face, std::uint32_t cellHeight, std::uint32_t meanWidth) {
    std::int64_t ascent = face->ascender;
    std::int64_t descent = -face->descender;
    const auto* const os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
    if (os2 != nullptr && os2->usWinAscent + os2->usWinDescent != 0) {
        ascent = os2->usWinAscent;
        descent = os2->usWinDescent;
    }
    const std::int64_t unitsPerEm = face->units_per_EM;
    const auto height = static_cast<std::int64_t>(cellHeight);
    auto pixelsPerEm = Scale(unitsPerEm, height, ascent + descent);
    // A cell never is higher than what was asked for.
    if (pixelsPerEm > 1 && Scale(ascent + descent, pixelsPerEm, unitsPerEm) > height)
        --pixelsPerEm;
    m_ascent = Scale(ascent, pixelsPerEm, unitsPerEm);
    const auto horizontal = meanWidth * static_cast<double>(unitsPerEm) / MeanAdvance(face);
    Check(FT_Set_Pixel_Sizes(face, static_cast<FT_UInt>(std::max(std::lround(horizontal), 1l)),
                             static_cast<FT_UInt>(std::max(pixelsPerEm, 1))),
          __LINE__, "FT_Set_Pixel_Sizes");
}

void FreeTypeGlyphSource::LoadGlyphs(FT_Face face) {
    for (std::size_t i = 0; i < m_glyphs.size(); ++i) {
        const auto character = static_cast<FT_ULong>(Internal::windows1252[i]);
        Check(FT_Load_Char(face, character, FT_LOAD_RENDER | FT_LOAD_TARGET_MONO), __LINE__, "FT_Load_Char");
        const auto* const slot = face->glyph;
        auto& glyph = m_glyphs[i] = TakeGlyph(face->glyph);
        const auto advance = static_cast<std::int32_t>(slot->advance.x / 64);
        m_widths[i] = {glyph.left, glyph.width, advance - glyph.left - glyph.width};
    }
}

FreeTypeGlyphSource::Glyph FreeTypeGlyphSource::TakeGlyph(const FT_GlyphSlot slot) const {
    const auto& bitmap = slot->bitmap;
    Glyph glyph{slot->bitmap_left,
                m_ascent - slot->bitmap_top,
                static_cast<std::int32_t>(bitmap.width),
                static_cast<std::int32_t>(bitmap.rows),
                {}};
    if (glyph.width == 0)
        glyph.left = 0;
    glyph.dots.reserve(std::size_t{bitmap.width} * bitmap.rows);
    for (unsigned int y = 0; y < bitmap.rows; ++y) {
        const auto* const row = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
        for (unsigned int x = 0; x < bitmap.width; ++x)
            glyph.dots.push_back((row[x / 8] & (0x80 >> (x % 8))) != 0);
    }
    return glyph;
}

void FreeTypeGlyphSource::BeginBitmap(std::uint32_t width, std::uint32_t height) {
    m_width = width;
    m_height = height;
    m_bits.assign(std::size_t{width} * height * 4, 0);
}

void FreeTypeGlyphSource::DrawCharacter(std::uint8_t character, std::int32_t x, std::int32_t y) {
    const auto& glyph = m_glyphs[character];
    for (std::int32_t row = 0; row < glyph.height; ++row) {
        for (std::int32_t column = 0; column < glyph.width; ++column) {
            const auto left = x + glyph.left + column;
            const auto top = y + glyph.top + row;
            const bool isInside = left >= 0 && top >= 0 && left < static_cast<std::int32_t>(m_width) &&
                                  top < static_cast<std::int32_t>(m_height);
            if (!isInside || !glyph.dots[glyph.Index(column, row)])
                continue;
            const auto offset = (static_cast<std::size_t>(top) * m_width + static_cast<std::size_t>(left)) * 4;
            std::fill_n(m_bits.begin() + static_cast<std::ptrdiff_t>(offset), 3, std::uint8_t{255});
        }
    }
}

std::vector<std::uint8_t> FreeTypeGlyphSource::ReadBitmap() {
    return std::exchange(m_bits, {});
}

} // namespace Quorvex::GUI
