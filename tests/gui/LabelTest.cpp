#include "gui/window/headless/HeadlessGlyphSource.h"
#include "tests/gui/GuiFixture.h"

namespace Quorvex::GUI::Test {
namespace {

/// A label on a black main panel, from (20, 30) to (220, 50).
class LabelTest : public GuiFixture {
protected:
    class CountingLabel : public Label {
    public:
        CountingLabel(const std::string&, Calls&) {}
        void CreateContextObjects() override {
            ++buildCount;
            Label::CreateContextObjects();
        }
        int buildCount = 0;
    };

    LabelTest() {
        main->SetBackgroundColor(opaqueBlack);
        main->quad.SetVisible(false);
        Show();
    }
    ~LabelTest() override { SetLanguage(Locale::EnumLanguage::Automatic); }

    /// The window as it must look with the text's first cell at a place.
    void ExpectText(const String& text, std::int32_t left, std::int32_t top, const Pixel& color) {
        std::vector<Pixel> wanted(400u * 300u, blackPixel);
        const HeadlessGlyphSource source(14, 5);
        const auto& widths = source.GetWidths();
        const String characters = text.ToANSI();
        std::int32_t x = left;
        for (std::uint32_t i = 0; i < characters.length(); ++i) {
            const auto code = static_cast<std::uint8_t>(characters.Narrow()[i]);
            HeadlessGlyphSource glyph(14, 5);
            const auto width = static_cast<std::uint32_t>(widths[code].b);
            glyph.BeginBitmap(width, 14);
            glyph.DrawCharacter(code, -widths[code].a, 0);
            const auto bits = glyph.ReadBitmap();
            for (std::uint32_t y = 0; y < 14; ++y)
                for (std::uint32_t column = 0; column < width; ++column)
                    if (bits[(y * width + column) * 4] != 0)
                        wanted[(static_cast<std::uint32_t>(top) + y) * 400 + static_cast<std::uint32_t>(x) + column] =
                            color;
            if (i + 1 < characters.length())
                x += widths[code].b +
                     std::max(widths[code].c, widths[static_cast<std::uint8_t>(characters.Narrow()[i + 1])].a);
        }
        for (std::uint32_t y = 0; y < 300; ++y)
            for (std::uint32_t column = 0; column < 400; ++column)
                ASSERT_EQ(PixelAt(MainWindow(), column, y), wanted[y * 400 + column]) << column << "," << y;
    }

    CountingLabel& label = AddTo<CountingLabel>(*main, "label", {20, 30, 220, 50});
};

TEST_F(LabelTest, ShowsItsTextExactlyCentredInHeight) {
    label.SetText("Varnolite 100 %");
    Settle();
    ExpectText("Varnolite 100 %", 20, 33, {255, 255, 255, 255});
}

TEST_F(LabelTest, UmlautsReachTheScreen) {
    label.SetText("Größe äöüÄÖÜß"_t);
    Settle();
    ExpectText("Größe äöüÄÖÜß"_t, 20, 33, {255, 255, 255, 255});
}

TEST_F(LabelTest, WideTextsGoThroughTheCodePage) {
    label.SetText(u"a\u20AC\u4E2D");
    Settle();
    ExpectText("a\x80?", 20, 33, {255, 255, 255, 255});
}

TEST_F(LabelTest, IsAlignedAsItIsTold) {
    label.SetText("abc");
    const std::int32_t width = main->GetFont().GetTextWidth("abc");
    label.SetAlignment(Label::Alignment::Right);
    Settle();
    ExpectText("abc", 220 - width, 33, {255, 255, 255, 255});
    label.SetAlignment(Label::Alignment::Centered);
    Settle();
    ExpectText("abc", 20 + (200 - width) / 2, 33, {255, 255, 255, 255});
    EXPECT_EQ(static_cast<int>(Label::Alignment::Centered), 2);
}

TEST_F(LabelTest, TakesItsColours) {
    label.SetText("x");
    label.SetForegroundColor({1.0f, 0.0f, 0.0f, 1.0f});
    label.SetBackgroundColor({0.0f, 0.0f, 1.0f, 1.0f});
    Settle();
    EXPECT_EQ(PixelAt(MainWindow(), 20, 30), redPixel);
    EXPECT_EQ(PixelAt(MainWindow(), 219, 49), redPixel);
    EXPECT_EQ(PixelAt(MainWindow(), 220, 49), blackPixel);
    // The base line of a glyph in memory is whole: the last of seven dots below two rows of air.
    const Pixel text = PixelAt(MainWindow(), 20, 33 + 2 + 6);
    EXPECT_GT(text.blue, 250);
    EXPECT_LT(text.red, 5);
}

TEST_F(LabelTest, AnEqualColourChangesNothing) {
    label.SetText("x");
    Settle();
    const int built = label.buildCount;
    label.SetForegroundColor({1.0f, 1.0f, 1.0f, 1.0f});
    label.SetBackgroundColor({0.0f, 0.0f, 0.0f, 0.0f});
    EXPECT_FALSE(MainWindow().IsInvalid());
    Settle();
    EXPECT_EQ(label.buildCount, built);
}

TEST_F(LabelTest, EachChannelMakesADifferentColour) {
    label.SetText("x");
    for (const Color& color : {Color{0.5f, 1.0f, 1.0f, 1.0f}, Color{0.5f, 0.5f, 1.0f, 1.0f},
                               Color{0.5f, 0.5f, 0.5f, 1.0f}, Color{0.5f, 0.5f, 0.5f, 0.5f}}) {
        Settle();
        const int built = label.buildCount;
        label.SetForegroundColor(color);
        EXPECT_TRUE(MainWindow().IsInvalid());
        Settle();
        EXPECT_EQ(label.buildCount, built + 1);
    }
}

TEST_F(LabelTest, ALabelWithoutPanelTakesColoursAndTexts) {
    Label free;
    free.SetForegroundColor({0.0f, 0.0f, 0.0f, 1.0f});
    free.SetText("x");
    EXPECT_EQ(free.GetForegroundColor(), opaqueBlack);
    EXPECT_EQ(free.GetText(), String("x"));
}

TEST_F(LabelTest, KeepsItsQuadsUntilSomethingChanges) {
    label.SetText("x");
    Settle();
    EXPECT_EQ(label.buildCount, 1);
    main->Invalidate();
    Settle();
    label.SetRect(20, 30, 220, 50);
    main->Invalidate();
    Settle();
    EXPECT_EQ(label.buildCount, 1);
    label.SetRect(20, 40, 220, 60);
    main->Invalidate();
    Settle();
    EXPECT_EQ(label.buildCount, 2);
    ExpectText("x", 20, 43, {255, 255, 255, 255});
}

TEST_F(LabelTest, AnEmptyLabelNeedsNoFont) {
    EXPECT_EQ(label.buildCount, 0);
    main->Invalidate();
    Settle();
    EXPECT_EQ(label.buildCount, 0);
}

TEST_F(LabelTest, ShowsTheTextOfTheLanguage) {
    label.SetText("deutsch", "english");
    SetLanguage(Locale::EnumLanguage::German);
    EXPECT_EQ(label.GetText(), String("deutsch"));
    main->OnCacheReset();
    Settle();
    ExpectText("deutsch", 20, 33, {255, 255, 255, 255});
    SetLanguage(Locale::EnumLanguage::English);
    EXPECT_EQ(label.GetText(), String("english"));
    main->OnCacheReset();
    main->Invalidate();
    Settle();
    ExpectText("english", 20, 33, {255, 255, 255, 255});
}

TEST_F(LabelTest, SubclassesMayAnswerForTheColours) {
    class Red : public CountingLabel {
    public:
        using CountingLabel::CountingLabel;
        Color GetBackgroundColor() override { return opaqueRed; }
    };
    AddTo<Red>(*main, "red", {20, 100, 60, 120});
    main->Invalidate();
    Settle();
    EXPECT_EQ(PixelAt(MainWindow(), 20, 100), redPixel);
}

TEST_F(LabelTest, ComesBackAfterALossOfItsObjects) {
    label.SetText("x");
    Settle();
    main->DeleteContextObjects();
    gui.ShowMainWindow();
    EXPECT_EQ(label.buildCount, 2);
    ExpectText("x", 20, 33, {255, 255, 255, 255});
}

TEST_F(LabelTest, TheFontNeedsARenderer) {
    Panel panel;
    try {
        panel.GetFont();
        FAIL() << "nothing was raised";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "GetFont");
    }
    EXPECT_TRUE(log.HasLineEndingIn("GetFont")) << log.Text();
}

TEST_F(LabelTest, APanelMakesItsFontOnce) {
    EXPECT_EQ(&main->GetFont(), &main->GetFont());
    EXPECT_EQ(&gui.GetFont(), &main->GetFont());
}

} // namespace
} // namespace Quorvex::GUI::Test
