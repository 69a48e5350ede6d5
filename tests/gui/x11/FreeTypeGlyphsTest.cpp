#include "gui/window/x11/FreeTypeGlyphSource.h"

#include "tests/support/LogCapture.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace Quorvex::GUI {
namespace {

/// The dots of one character, drawn with its origin at ORIGIN in a bitmap as high as its cell.
struct Drawn {
    std::int32_t width;
    std::vector<std::uint8_t> bits;

    bool Has(std::int32_t x, std::int32_t y) const {
        return bits[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) *
                    4] != 0;
    }
    std::int32_t CountInColumn(std::int32_t x) const {
        std::int32_t count = 0;
        for (std::int32_t y = 0; y < Height(); ++y)
            count += Has(x, y) ? 1 : 0;
        return count;
    }
    std::int32_t CountInRow(std::int32_t y) const {
        std::int32_t count = 0;
        for (std::int32_t x = 0; x < width; ++x)
            count += Has(x, y) ? 1 : 0;
        return count;
    }
    std::int32_t Height() const { return static_cast<std::int32_t>(bits.size()) / 4 / width; }
};

Drawn Draw(FreeTypeGlyphSource& glyphs, int character, std::int32_t origin, std::uint32_t height) {
    constexpr std::uint32_t width = 120;
    glyphs.BeginBitmap(width, height);
    glyphs.DrawCharacter(static_cast<std::uint8_t>(character), origin, 0);
    return {width, glyphs.ReadBitmap()};
}

TEST(FreeTypeGlyphs, EveryBlackBoxIsFilledToItsEdgesAndNothingLiesOutside) {
    for (const std::uint32_t height : {14u, 28u, 56u}) {
        FreeTypeGlyphSource glyphs(height, height * 5 / 14);
        for (int character = 33; character < 127; ++character) {
            const GlyphWidths& widths = glyphs.GetWidths()[static_cast<std::size_t>(character)];
            const Drawn drawn = Draw(glyphs, character, 40 - widths.a, height);
            ASSERT_GT(widths.b, 0) << character;
            EXPECT_GT(drawn.CountInColumn(40), 0) << character;
            EXPECT_GT(drawn.CountInColumn(40 + widths.b - 1), 0) << character;
            EXPECT_EQ(drawn.CountInColumn(39), 0) << character;
            EXPECT_EQ(drawn.CountInColumn(40 + widths.b), 0) << character;
        }
    }
}

TEST(FreeTypeGlyphs, DotsAreWhiteOrNotThere) {
    FreeTypeGlyphSource glyphs(28, 10);
    const Drawn drawn = Draw(glyphs, 'S', 5, 28);
    EXPECT_TRUE(std::ranges::all_of(drawn.bits, [](std::uint8_t value) { return value == 0 || value == 255; }));
    EXPECT_GT(std::ranges::count(drawn.bits, 255), 0);
    for (std::size_t i = 0; i < drawn.bits.size(); i += 4)
        ASSERT_TRUE(drawn.bits[i] == drawn.bits[i + 1] && drawn.bits[i] == drawn.bits[i + 2]) << i;
}

TEST(FreeTypeGlyphs, LettersStandOnTheBaseLineWithinTheirCell) {
    for (const std::uint32_t height : {14u, 28u, 56u}) {
        FreeTypeGlyphSource glyphs(height, height * 5 / 14);
        const std::int32_t ascent = glyphs.GetAscent();
        ASSERT_GT(ascent, 0);
        ASSERT_LT(ascent, static_cast<std::int32_t>(height));
        for (const int letter : {'E', 'H', 'x', 'l', '1'}) {
            const Drawn drawn = Draw(glyphs, letter, 10, height);
            EXPECT_GT(drawn.CountInRow(ascent - 1), 0) << height << " " << letter;
            EXPECT_EQ(drawn.CountInRow(ascent), 0) << height << " " << letter;
        }
        EXPECT_GT(Draw(glyphs, 'g', 10, height).CountInRow(ascent), 0) << "a descender reaches below";
    }
}

TEST(FreeTypeGlyphs, TheMeanWidthStretchesLettersInOneDirectionOnly) {
    FreeTypeGlyphSource narrow(56, 20);
    FreeTypeGlyphSource wide(56, 40);
    std::int32_t narrowSum = 0;
    std::int32_t wideSum = 0;
    for (std::size_t letter = 'a'; letter <= 'z'; ++letter) {
        const GlyphWidths& a = narrow.GetWidths()[letter];
        const GlyphWidths& b = wide.GetWidths()[letter];
        narrowSum += a.a + a.b + a.c;
        wideSum += b.a + b.b + b.c;
    }
    EXPECT_EQ(narrow.GetAscent(), wide.GetAscent());
    // Each advance is rounded to whole pixels.
    EXPECT_NEAR(wideSum, 2 * narrowSum, 26);
    EXPECT_NEAR(narrowSum / 26.0, 20, 3) << "the mean of texts, in which narrow letters are more frequent";
}

TEST(FreeTypeGlyphs, ABlankAdvancesWithoutADot) {
    FreeTypeGlyphSource glyphs(28, 10);
    const GlyphWidths& blank = glyphs.GetWidths()[' '];
    EXPECT_EQ(blank.a, 0);
    EXPECT_GT(blank.a + blank.b + blank.c, 2);
    const Drawn drawn = Draw(glyphs, ' ', 10, 28);
    EXPECT_EQ(std::ranges::count(drawn.bits, 255), 0);
}

TEST(FreeTypeGlyphs, CharactersAreThoseOfWindows1252) {
    FreeTypeGlyphSource glyphs(28, 10);
    const auto plain = Draw(glyphs, 'u', 10, 28);
    const auto umlaut = Draw(glyphs, 0xFC, 10, 28);
    EXPECT_NE(plain.bits, umlaut.bits);
    // The lower half of both letters is the same: the dots stand above.
    const std::int32_t ascent = glyphs.GetAscent();
    for (std::int32_t y = ascent - 4; y < ascent; ++y)
        EXPECT_EQ(plain.CountInRow(y), umlaut.CountInRow(y)) << y;
    // The euro sign and the bullet are in the part that Latin-1 leaves to control codes.
    EXPECT_NE(Draw(glyphs, 0x80, 10, 28).bits, Draw(glyphs, 0x95, 10, 28).bits);
    EXPECT_GT(glyphs.GetWidths()[0x80].b, 3);
}

TEST(FreeTypeGlyphs, DrawingIsClippedByTheBitmap) {
    FreeTypeGlyphSource glyphs(28, 10);
    const std::pair<std::int32_t, std::int32_t> places[] = {{-4, 0}, {7, 0}, {0, -15}, {0, 4}, {-100, 0}, {0, 100}};
    for (const auto& [x, y] : places) {
        glyphs.BeginBitmap(9, 11);
        glyphs.DrawCharacter('W', x, y);
        EXPECT_EQ(glyphs.ReadBitmap().size(), 9u * 11 * 4) << x << ", " << y;
    }
}

TEST(FreeTypeGlyphs, AFontIsFoundForEveryName) {
    const Quorvex::Test::LogCapture log;
    for (const char* family : {"Arial", "No Such Family"})
        EXPECT_TRUE(std::filesystem::exists(FindFont(family).path)) << family;
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

} // namespace
} // namespace Quorvex::GUI
