#include "tests/gui/headless/HeadlessFixture.h"

#include "gui/window/headless/HeadlessGlyphSource.h"

#include <algorithm>
#include <set>

namespace Quorvex::GUI {
namespace {

using HeadlessDesktopTest = HeadlessFixture;

TEST_F(HeadlessDesktopTest, WindowFromPointFindsTheTopmostVisibleWindow) {
    EXPECT_EQ(m_system.WindowFromPoint(260, 130), nullptr);
    ShowBoth();
    EXPECT_EQ(m_system.WindowFromPoint(260, 130), m_panel.get());
    EXPECT_EQ(m_system.WindowFromPoint(110, 130), m_main.get());
    EXPECT_EQ(m_system.WindowFromPoint(900, 900), nullptr);
    m_panel->Hide();
    EXPECT_EQ(m_system.WindowFromPoint(260, 130), m_main.get());
}

TEST_F(HeadlessDesktopTest, AWindowNeverCoversThoseThatItOwns) {
    ShowBoth();
    m_main->BringToFront();
    EXPECT_EQ(m_system.WindowFromPoint(260, 130), m_panel.get());
    m_panel->SetOwner(nullptr);
    m_main->BringToFront();
    EXPECT_EQ(m_system.WindowFromPoint(260, 130), m_main.get());
}

TEST_F(HeadlessDesktopTest, SeveralWindowsMoveInOrderAndAreRestacked) {
    ShowBoth();
    const std::vector<WindowPlacement> placements{{m_panel.get(), {0, 0, 10, 10}, nullptr},
                                                  {m_main.get(), {5, 5, 15, 15}, m_panel.get()}};
    m_system.MoveWindows(placements);
    EXPECT_EQ(m_panel->GetClientRect(), (Rect{0, 0, 10, 10}));
    EXPECT_EQ(m_main->GetClientRect(), (Rect{5, 5, 15, 15}));
    EXPECT_EQ(m_system.GetWindows(), (std::vector<HeadlessWindow*>{m_panel.get(), m_main.get()}));
    const std::vector<WindowPlacement> reversed{{m_panel.get(), {0, 0, 10, 10}, m_main.get()}};
    m_system.MoveWindows(reversed);
    EXPECT_EQ(m_system.GetWindows(), (std::vector<HeadlessWindow*>{m_main.get(), m_panel.get()}));
}

TEST_F(HeadlessDesktopTest, WorkAreasBelongToTheNearestMonitor) {
    auto& desktop = m_system.Desktop();
    desktop.monitors = {{0, 0, 1000, 800}, {1000, 0, 2000, 800}};
    desktop.workAreas = {{0, 0, 1000, 760}};
    EXPECT_EQ(m_system.GetWorkAreaNearest({10, 10, 20, 20}), (Rect{0, 0, 1000, 760}));
    EXPECT_EQ(m_system.GetWorkAreaNearest({1500, 10, 1600, 20}), (Rect{1000, 0, 2000, 800}));
    desktop.mouseX = 1200;
    EXPECT_EQ(m_system.GetWorkAreaAtMouse(), (Rect{1000, 0, 2000, 800}));
}

TEST_F(HeadlessDesktopTest, WithoutMonitorsTheWorkAreaIsThePrimaryScreen) {
    m_system.Desktop().monitors.clear();
    EXPECT_TRUE(m_system.GetMonitors().empty());
    EXPECT_EQ(m_system.GetWorkAreaNearest({10, 10, 20, 20}), (Rect{0, 0, 1920, 1080}));
}

TEST_F(HeadlessDesktopTest, AnswersWhatTheTestSets) {
    auto& desktop = m_system.Desktop();
    desktop.dpi = 144;
    desktop.colors[SystemColor::CaptionText] = 0x123456;
    desktop.colorization = IWindowSystem::Colorization{0xABCDEF, 60};
    desktop.hasGradientCaptions = std::nullopt;
    EXPECT_EQ(m_system.GetScreenDpi(), 144u);
    EXPECT_EQ(m_system.GetSystemColor(SystemColor::CaptionText), 0x123456u);
    EXPECT_EQ(m_system.GetColorization()->balancePercent, 60u);
    EXPECT_FALSE(m_system.HasGradientCaptions());
    EXPECT_EQ(m_system.GetForegroundFlashCount(), 3u);
    EXPECT_EQ(m_system.GetCaretBlinkMilliseconds(), 530u);
}

TEST(HeadlessGlyphs, NeighboursDifferInWidth) {
    HeadlessGlyphSource glyphs(14, 5);
    for (std::uint32_t c = 33; c < 256; ++c)
        EXPECT_NE(glyphs.GetWidths()[c].b, glyphs.GetWidths()[c - 1].b) << c;
}

TEST(HeadlessGlyphs, NoTwoCharactersLookAlike) {
    std::set<std::vector<bool>> patterns;
    for (std::uint32_t c = 33; c < 256; ++c) {
        std::vector<bool> dots{HeadlessGlyphSource::CountColumns(static_cast<std::uint8_t>(c)) > 2};
        for (std::uint32_t i = 0; i < 35; ++i)
            dots.push_back(HeadlessGlyphSource::IsDotSet(static_cast<std::uint8_t>(c), i % 5, i / 5));
        patterns.insert(dots);
    }
    // A box one column wide holds six free dots only, so that a few of those must look alike.
    EXPECT_GT(patterns.size(), 200u);
}

TEST(HeadlessGlyphs, DrawWhiteOnBlackWithinTheirBox) {
    HeadlessGlyphSource glyphs(28, 10);
    glyphs.BeginBitmap(40, 28);
    glyphs.DrawCharacter('E', 8, 0);
    const auto bits = glyphs.ReadBitmap();
    ASSERT_EQ(bits.size(), 40u * 28 * 4);
    const auto left = 8 + glyphs.GetWidths()['E'].a;
    std::size_t white = 0;
    for (std::int32_t i = 0; i < 40 * 28; ++i) {
        const auto blue = bits[static_cast<std::size_t>(i) * 4];
        EXPECT_TRUE(blue == 0 || blue == 255);
        if (blue == 0)
            continue;
        ++white;
        EXPECT_GE(i % 40, left);
        EXPECT_LT(i % 40, left + glyphs.GetWidths()['E'].b);
    }
    EXPECT_GT(white, 0u);
}

TEST(HeadlessGlyphs, AreClippedByTheBitmap) {
    HeadlessGlyphSource glyphs(14, 5);
    glyphs.BeginBitmap(3, 3);
    glyphs.DrawCharacter('M', -2, -5);
    EXPECT_EQ(glyphs.ReadBitmap().size(), 36u);
}

TEST(HeadlessGlyphs, TheSpaceIsEmpty) {
    HeadlessGlyphSource glyphs(14, 5);
    glyphs.BeginBitmap(10, 14);
    glyphs.DrawCharacter(' ', 0, 0);
    EXPECT_EQ(std::ranges::count(glyphs.ReadBitmap(), 0), 10 * 14 * 4);
}

} // namespace
} // namespace Quorvex::GUI
