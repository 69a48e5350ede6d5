#include "gui/Font.h"

#include "data/Image.h"
#include "gui/window/headless/HeadlessGlyphSource.h"
#include "tests/gui/GuiFixture.h"
#include "video/software/SoftwareContext.h"

namespace Quorvex::GUI::Test {
namespace {

class FontTest : public testing::Test {
protected:
    ~FontTest() override { SetScale(1); }

    Font MakeFont() { return Font(system, context); }
    static std::array<GlyphWidths, 256> Widths(std::uint32_t height) {
        return HeadlessGlyphSource(height, height * 5 / 14).GetWidths();
    }
    /// Columns of the atlas left of a character.
    static std::uint32_t LeftOf(const std::array<GlyphWidths, 256>& widths, std::uint32_t character) {
        std::int32_t left = 0;
        for (std::uint32_t i = character & ~15u; i < character; ++i)
            left += widths[i].b;
        return static_cast<std::uint32_t>(left);
    }

    HeadlessWindowSystem system;
    SharedPtr<Platform::Video::Context> context{new Platform::Video::Software::SoftwareContext()};
};

TEST_F(FontTest, TheCellIsFourteenPixelsHigh) {
    EXPECT_EQ(MakeFont().GetHeight(), 14);
    SetScale(2);
    EXPECT_EQ(MakeFont().GetHeight(), 28);
    SetScale(4);
    EXPECT_EQ(MakeFont().GetHeight(), 56);
}

TEST_F(FontTest, AsksForANarrowFont) {
    SetScale(4);
    const Font font = MakeFont();
    const auto widths = HeadlessGlyphSource(56, 20).GetWidths();
    for (int i = 0; i < 256; ++i)
        EXPECT_EQ(font.GetWidths(static_cast<std::uint8_t>(i)).b, widths[i].b) << i;
}

TEST_F(FontTest, TheAtlasIsAsWideAsItsWidestRow) {
    const auto widths = Widths(14);
    std::uint32_t widest = 0;
    for (std::uint32_t row = 0; row < 16; ++row)
        widest = std::max(widest, LeftOf(widths, row * 16 + 15) + static_cast<std::uint32_t>(widths[row * 16 + 15].b));
    const Font font = MakeFont();
    EXPECT_EQ(font.GetAtlasImage()->GetWidth(), widest);
    EXPECT_EQ(font.GetAtlasImage()->GetHeight(), 16u * 14u);
}

TEST_F(FontTest, AScaledAtlasIsHigherThanItsRows) {
    SetScale(2);
    const Font font = MakeFont();
    EXPECT_EQ(font.GetAtlasImage()->GetHeight(), 16u * 28u * 2u);
}

TEST_F(FontTest, EveryGlyphStandsInItsCellInWhiteWithItsCoverageAsAlpha) {
    for (const std::int32_t scale : {1, 2, 4}) {
        SetScale(scale);
        const Font font = MakeFont();
        const auto height = static_cast<std::uint32_t>(14 * scale);
        const auto widths = Widths(height);
        // What the source draws when it is asked for a glyph on its own.
        for (std::uint32_t character = 0; character < 256; ++character) {
            HeadlessGlyphSource source(height, height * 5 / 14);
            const auto width = static_cast<std::uint32_t>(widths[character].b);
            source.BeginBitmap(width, height);
            source.DrawCharacter(static_cast<std::uint8_t>(character), -widths[character].a, 0);
            const auto bits = source.ReadBitmap();
            const auto lock = font.GetAtlasImage()->LockBGRAUInt8(Data::LockMode::ReadOnly);
            const std::uint32_t left = LeftOf(widths, character);
            for (std::uint32_t y = 0; y < height; ++y)
                for (std::uint32_t x = 0; x < width; ++x) {
                    const std::uint8_t value = bits[(y * width + x) * 4];
                    ASSERT_EQ(lock(left + x, (character >> 4) * height + y), (Pixel{value, value, value, value}))
                        << "character " << character << " at " << x << "," << y << " scale " << scale;
                }
        }
    }
}

TEST_F(FontTest, TheQuadsShowTheirCells) {
    const Font font = MakeFont();
    const auto widths = Widths(14);
    const Data::ImageBase& image = *font.GetAtlasImage();
    const auto allocatedWidth = static_cast<double>(image.AllocatedWidth);
    const auto allocatedHeight = static_cast<double>(image.AllocatedHeight);
    EXPECT_EQ(font.GetQuads()->GetQuadCount(), 256u);
    for (const std::uint32_t character : {0u, 65u, 66u, 127u, 228u, 255u}) {
        const QuadWriter::TextureRect& rect = font.GetTextureRect(static_cast<std::uint8_t>(character));
        const std::uint32_t left = LeftOf(widths, character);
        const std::uint32_t row = character >> 4;
        EXPECT_NEAR(rect.u0 * allocatedWidth, left, 1e-3) << character;
        EXPECT_NEAR(rect.u1 * allocatedWidth, left + static_cast<std::uint32_t>(widths[character].b), 1e-3)
            << character;
        EXPECT_NEAR(rect.v0 * allocatedHeight, row * 14, 1e-3) << character;
        EXPECT_NEAR(rect.v1 * allocatedHeight, (row + 1) * 14, 1e-3) << character;
    }
}

TEST_F(FontTest, AnEmptyTextMeasuresNothing) {
    EXPECT_EQ(MakeFont().GetTextWidth(""), 0);
    EXPECT_EQ(MakeFont().GetTextWidth(String()), 0);
}

TEST_F(FontTest, OneCharacterMeasuresItsBlackBoxAlone) {
    const Font font = MakeFont();
    EXPECT_EQ(font.GetTextWidth("A"), Widths(14)['A'].b);
}

TEST_F(FontTest, BetweenTwoCharactersTheLargerOfTheirSpacesCounts) {
    const Font font = MakeFont();
    const auto widths = Widths(14);
    const char text[] = "Varnolite";
    std::int32_t expected = widths[static_cast<unsigned char>('e')].b;
    for (int i = 0; i < 8; ++i)
        expected +=
            widths[static_cast<unsigned char>(text[i])].b +
            std::max(widths[static_cast<unsigned char>(text[i])].c, widths[static_cast<unsigned char>(text[i + 1])].a);
    EXPECT_EQ(font.GetTextWidth(text), expected);
}

TEST_F(FontTest, CharactersAbove127AreMeasuredByTheirCode) {
    const Font font = MakeFont();
    EXPECT_EQ(font.GetTextWidth("ä"_t), Widths(14)[0xE4].b);
    EXPECT_EQ(font.GetTextWidth(u"\u20AC"), Widths(14)[0x80].b);
    EXPECT_EQ(font.GetTextWidth(u"\u4E2D"), Widths(14)['?'].b) << "what the code page does not hold";
}

TEST_F(FontTest, AFailingPlatformRaises) {
    class Failing : public IGlyphSource {
    public:
        const std::array<GlyphWidths, 256>& GetWidths() const override { return widths; }
        void BeginBitmap(std::uint32_t, std::uint32_t) override { throw Exception("CreateDIBSection"); }
        void DrawCharacter(std::uint8_t, std::int32_t, std::int32_t) override {}
        std::vector<std::uint8_t> ReadBitmap() override { return {}; }
        std::array<GlyphWidths, 256> widths{};
    } glyphs;
    EXPECT_THROW(Font(glyphs, 14, context), Exception);
}

TEST_F(FontTest, AFontOfEmptyGlyphsHasAnAtlasAllTheSame) {
    class Empty : public IGlyphSource {
    public:
        const std::array<GlyphWidths, 256>& GetWidths() const override { return widths; }
        void BeginBitmap(std::uint32_t width, std::uint32_t height) override { size = width * height; }
        void DrawCharacter(std::uint8_t, std::int32_t, std::int32_t) override {}
        std::vector<std::uint8_t> ReadBitmap() override { return std::vector<std::uint8_t>(size * 4); }
        std::array<GlyphWidths, 256> widths{};
        std::size_t size = 0;
    } glyphs;
    const Font font(glyphs, 14, context);
    EXPECT_EQ(font.GetTextWidth("abc"), 0);
    EXPECT_EQ(font.GetAtlasImage()->GetWidth(), 1u) << "a texture has a size";
}

} // namespace
} // namespace Quorvex::GUI::Test
