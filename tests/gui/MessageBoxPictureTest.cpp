#include "gui/MessageBoxPicture.h"

#include "gui/window/headless/HeadlessGlyphSource.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace Quorvex::GUI {
namespace {

using testing::ElementsAre;

constexpr std::int32_t cellHeight = 14;

/// A picture at scale 1 with its glyphs.
struct Drawn {
    explicit Drawn(const char* text) : picture(glyphs, cellHeight, 1, text) {}

    std::int32_t WidthOf(const std::string& line) const {
        std::int32_t width = 0;
        for (const char character : line) {
            const GlyphWidths& widths = glyphs.GetWidths()[static_cast<std::uint8_t>(character)];
            width += widths.a + widths.b + widths.c;
        }
        return width;
    }

    HeadlessGlyphSource glyphs{cellHeight, 5};
    MessageBoxPicture picture;
};

std::uint8_t GreyAt(const std::vector<std::uint8_t>& bits, std::int32_t width, std::int32_t x, std::int32_t y) {
    const std::uint8_t* const pixel = &bits.at(static_cast<std::size_t>(y * width + x) * 4);
    EXPECT_EQ(pixel[0], pixel[1]);
    EXPECT_EQ(pixel[0], pixel[2]);
    EXPECT_EQ(pixel[3], 255);
    return pixel[0];
}

std::ptrdiff_t CountInk(const std::vector<std::uint8_t>& bits) {
    std::ptrdiff_t count = 0;
    for (std::size_t i = 0; i < bits.size(); i += 4)
        count += bits[i] == 0 ? 1 : 0;
    return count;
}

} // namespace

TEST(MessageBoxPicture, BreaksLinesWhereTheTextDoes) {
    EXPECT_THAT(Drawn("one\r\ntwo\n\nthree four").picture.GetLines(), ElementsAre("one", "two", "", "three four"));
}

TEST(MessageBoxPicture, LeavesOutEmptyLinesAtTheEnd) {
    EXPECT_THAT(Drawn("one\r\n\r\n").picture.GetLines(), ElementsAre("one"));
    EXPECT_THAT(Drawn("").picture.GetLines(), ElementsAre(""));
}

TEST(MessageBoxPicture, BreaksALineThatIsTooWideBetweenItsWords) {
    std::string text;
    for (int i = 0; i < 60; ++i)
        text += (i == 0 ? "word" : " word") + std::to_string(i);
    const Drawn drawn(text.c_str());
    const auto& lines = drawn.picture.GetLines();
    ASSERT_GT(lines.size(), 2u);
    std::string joined = lines[0];
    for (std::size_t i = 1; i < lines.size(); ++i)
        joined += " " + lines[i];
    EXPECT_EQ(joined, text);
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        EXPECT_LE(drawn.WidthOf(lines[i]), 480) << lines[i];
        const std::string nextWord = lines[i + 1].substr(0, lines[i + 1].find(' '));
        EXPECT_GT(drawn.WidthOf(lines[i] + " " + nextWord), 480) << "the line had room for a word more";
    }
}

TEST(MessageBoxPicture, HasRoomForAWordThatIsTooWideForALine) {
    const std::string word(300, 'w');
    const Drawn drawn(("a " + word + " b").c_str());
    EXPECT_THAT(drawn.picture.GetLines(), ElementsAre("a", word, "b"));
    EXPECT_GT(drawn.picture.GetWidth(), drawn.WidthOf(word));
}

TEST(MessageBoxPicture, HoldsEveryDotOfTextAndButton) {
    for (const char* text : {"x",
                             "Gr\xFC\xDF"
                             "e\nand more",
                             ""}) {
        const Drawn drawn(text);
        const std::int32_t width = drawn.picture.GetWidth();
        const std::int32_t height = drawn.picture.GetHeight();
        const auto ink = CountInk(drawn.picture.Draw(width, height));
        EXPECT_GT(ink, 0) << text;
        EXPECT_EQ(ink, CountInk(drawn.picture.Draw(width + 50, height + 50))) << text;
    }
}

TEST(MessageBoxPicture, DrawsTheButtonBelowTheTextInTheMiddle) {
    const Drawn drawn("text");
    const std::int32_t width = drawn.picture.GetWidth();
    const std::int32_t height = drawn.picture.GetHeight();
    const Rect& button = drawn.picture.GetButton();
    EXPECT_EQ(button.left, width - button.right);
    EXPECT_GT(button.top, 14 + cellHeight);
    const auto bits = drawn.picture.Draw(width, height);
    EXPECT_EQ(GreyAt(bits, width, 0, 0), 240);
    EXPECT_EQ(GreyAt(bits, width, width - 1, height - 1), 240);
    EXPECT_EQ(GreyAt(bits, width, button.left, button.top), 112);
    EXPECT_EQ(GreyAt(bits, width, button.right - 1, button.bottom - 1), 112);
    EXPECT_EQ(GreyAt(bits, width, button.left + 1, button.top + 1), 225);
    EXPECT_EQ(GreyAt(bits, width, button.left - 1, button.top), 240);
}

TEST(MessageBoxPicture, DrawsTheTextFromTheMargin) {
    const Drawn drawn("text");
    const std::int32_t width = drawn.picture.GetWidth();
    const auto bits = drawn.picture.Draw(width, drawn.picture.GetHeight());
    HeadlessGlyphSource plain(cellHeight, 5);
    plain.BeginBitmap(static_cast<std::uint32_t>(width), cellHeight);
    std::int32_t x = 14;
    for (const char character : std::string("text")) {
        plain.DrawCharacter(static_cast<std::uint8_t>(character), x, 0);
        x += drawn.WidthOf(std::string(1, character));
    }
    const auto dots = plain.ReadBitmap();
    for (std::int32_t row = 0; row < cellHeight; ++row)
        for (std::int32_t column = 0; column < width; ++column)
            ASSERT_EQ(GreyAt(bits, width, column, 14 + row) == 0,
                      dots.at(static_cast<std::size_t>(row * width + column) * 4) != 0)
                << column << "," << row;
}

TEST(MessageBoxPicture, GrowsWithTheScale) {
    HeadlessGlyphSource glyphs(2 * cellHeight, 10);
    const MessageBoxPicture doubled(glyphs, 2 * cellHeight, 2, "text");
    const Drawn drawn("text");
    EXPECT_EQ(doubled.GetButton().Width(), 2 * drawn.picture.GetButton().Width());
    EXPECT_EQ(doubled.GetHeight(), 2 * drawn.picture.GetHeight());
}

} // namespace Quorvex::GUI
