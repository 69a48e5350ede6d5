#include "gui/CaptionColors.h"

#include "foundation/Version.h"
#include "gui/window/headless/HeadlessWindowSystem.h"
#include "tests/gui/GuiFixture.h"

namespace Quorvex::GUI::Test {
namespace {

float Channel(int value) {
    return static_cast<float>(value) * 0.003921569f;
}

class CaptionColorsTest : public testing::Test {
protected:
    CaptionColorsTest() {
        system.Desktop().colors = {
            {SystemColor::ActiveCaption, 0x00102030},         {SystemColor::CaptionText, 0x00010203},
            {SystemColor::InactiveCaption, 0x00405060},       {SystemColor::InactiveCaptionText, 0x00FFFEFD},
            {SystemColor::GradientActiveCaption, 0x00213141}, {SystemColor::GradientInactiveCaption, 0x00000000}};
        system.Desktop().hasGradientCaptions = false;
        system.Desktop().colorization = {{0xC0336699, 40}};
    }
    CaptionColors ReadAs(std::uint32_t major, std::uint32_t minor) {
        const ScopedSystemVersion version({major, minor, 0});
        return ReadCaptionColors(system);
    }
    static constexpr Color active{0x10 * 0.003921569f, 0x20 * 0.003921569f, 0x30 * 0.003921569f, 1.0f};
    static constexpr Color inactive{0x40 * 0.003921569f, 0x50 * 0.003921569f, 0x60 * 0.003921569f, 1.0f};

    HeadlessWindowSystem system;
};

TEST_F(CaptionColorsTest, AreTheSystemsColours) {
    const CaptionColors colors = ReadAs(10, 0);
    EXPECT_EQ(colors.active, active);
    EXPECT_EQ(colors.activeText, (Color{Channel(1), Channel(2), Channel(3), 1.0f}));
    EXPECT_EQ(colors.inactive, inactive);
    EXPECT_EQ(colors.inactiveText, (Color{Channel(255), Channel(254), Channel(253), 1.0f}));
}

TEST_F(CaptionColorsTest, GradientCaptionsCountWithTheMeanOfTheirEnds) {
    system.Desktop().hasGradientCaptions = true;
    const CaptionColors colors = ReadAs(6, 1);
    EXPECT_EQ(colors.active, (Color{Channel(0x18), Channel(0x28), Channel(0x38), 1.0f}));
    EXPECT_EQ(colors.inactive, (Color{Channel(0x20), Channel(0x28), Channel(0x30), 1.0f}));
}

TEST_F(CaptionColorsTest, ASystemWithoutGradientsHasPlainOnes) {
    system.Desktop().hasGradientCaptions.reset();
    EXPECT_EQ(ReadAs(4, 0).active, active);
}

TEST_F(CaptionColorsTest, TheTintCountsOn62And63) {
    for (const std::uint32_t minor : {2u, 3u}) {
        const CaptionColors colors = ReadAs(6, minor);
        const float b = 40 * 0.01f;
        EXPECT_EQ(colors.active.blue, b * Channel(0x99) + (1.0f - b) * 0.8509804f) << minor;
        EXPECT_EQ(colors.active.green, b * Channel(0x66) + (1.0f - b) * 0.8509804f) << minor;
        EXPECT_EQ(colors.active.red, b * Channel(0x33) + (1.0f - b) * 0.8509804f) << minor;
        EXPECT_EQ(colors.active.alpha, 1.0f) << minor;
        EXPECT_EQ(colors.inactive, (Color{0.92156863f, 0.92156863f, 0.92156863f, 1.0f})) << minor;
        EXPECT_EQ(colors.activeText, (Color{Channel(1), Channel(2), Channel(3), 1.0f})) << minor;
    }
}

TEST_F(CaptionColorsTest, TheTintCountsOnNoOtherSystem) {
    for (const auto& [major, minor] : {std::pair{5u, 1u}, {6u, 0u}, {6u, 1u}, {10u, 0u}, {11u, 0u}})
        EXPECT_EQ(ReadAs(major, minor).active, active) << major << "." << minor;
}

TEST_F(CaptionColorsTest, WithoutATintNothingChanges) {
    system.Desktop().colorization.reset();
    EXPECT_EQ(ReadAs(6, 2).active, active);
    EXPECT_EQ(ReadAs(6, 3).inactive, inactive);
}

TEST_F(CaptionColorsTest, ABalanceAboveAllGoesBeyondTheTint) {
    system.Desktop().colorization = {{0xFFFFFFFF, 100}};
    EXPECT_EQ(ReadAs(6, 2).active.red, 1.0f * Channel(255) + (1.0f - 100 * 0.01f) * 0.8509804f);
}

TEST_F(CaptionColorsTest, APanelTakesThemWhenItIsBuilt) {
    Calls calls;
    TestGUI gui(system, calls);
    TestPanel panel("panel", calls, opaqueRed);
    EXPECT_EQ(panel.TitleColor(), ReadCaptionColors(system).active);
}

} // namespace
} // namespace Quorvex::GUI::Test
