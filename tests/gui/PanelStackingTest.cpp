#include "gui/PanelStacking.h"

#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI::Test {
namespace {

constexpr Rect mainRect{100, 100, 700, 500};

class PanelStackingTest : public testing::Test {
protected:
    /// How each decision reads: the type, h and the host, l and the lower panel.
    std::vector<std::string> Decide(const std::vector<Rect>& others) {
        std::vector<StackedPanel> panels{{mainRect, true}};
        for (const Rect& rect : others)
            panels.push_back({rect, false});
        std::vector<std::string> texts;
        for (const StackingDecision& decision : DecideStacking(panels, monitors))
            texts.push_back(std::string(decision.windowType) +
                            (decision.host ? " h" + std::to_string(*decision.host) : "") +
                            (decision.lower ? " l" + std::to_string(*decision.lower) : ""));
        texts.erase(texts.begin());
        return texts;
    }
    using Texts = std::vector<std::string>;

    std::vector<Rect> monitors{{0, 0, 1000, 600}, {1000, 0, 2000, 600}};
};

TEST_F(PanelStackingTest, TheMainPanelIsASystemWindow) {
    const StackedPanel panel{mainRect, true};
    const auto decisions = DecideStacking({&panel, 1}, monitors);
    EXPECT_EQ(decisions.at(0).windowType, WindowType::System);
    EXPECT_FALSE(decisions.at(0).host);
}

TEST_F(PanelStackingTest, APanelThatTouchesNothingStandsForItself) {
    EXPECT_EQ(Decide({{750, 100, 900, 200}}), (Texts{"SystemWindow"}));
}

TEST_F(PanelStackingTest, SharedEdgesAreNoOverlap) {
    EXPECT_EQ(Decide({{700, 100, 900, 200}}), (Texts{"SystemWindow"}));
    EXPECT_EQ(Decide({{200, 500, 300, 600}}), (Texts{"SystemWindow"}));
}

TEST_F(PanelStackingTest, APanelWithinTheMainOneIsPaintedIntoItsWindow) {
    EXPECT_EQ(Decide({{200, 200, 300, 300}}), (Texts{"SystemWindow h0 l0"}));
    EXPECT_EQ(Decide({mainRect}), (Texts{"SystemWindow h0 l0"}));
}

TEST_F(PanelStackingTest, APanelThatCoversTheMainOneInPartGetsAWindow) {
    EXPECT_EQ(Decide({{600, 200, 701, 300}}), (Texts{"OwnGUIWindow l0"}));
    EXPECT_EQ(Decide({{50, 50, 900, 550}}), (Texts{"OwnGUIWindow l0"}));
}

TEST_F(PanelStackingTest, APanelOverAMonitorsEdgeGetsAWindow) {
    monitors = {{0, 0, 400, 600}, {400, 0, 1000, 600}};
    EXPECT_EQ(Decide({{350, 200, 450, 300}}), (Texts{"OwnGUIWindow l0"}));
    EXPECT_EQ(Decide({{300, 200, 400, 300}, {400, 200, 500, 300}}),
              (Texts{"SystemWindow h0 l0", "SystemWindow h0 l0"}));
}

TEST_F(PanelStackingTest, AnOverlapThatNoMonitorShowsIsNone) {
    monitors = {{0, 0, 600, 600}};
    EXPECT_EQ(Decide({{650, 200, 800, 300}}), (Texts{"SystemWindow"}));
}

TEST_F(PanelStackingTest, PanelsWithinTheMainOneMayOverlap) {
    EXPECT_EQ(Decide({{200, 200, 300, 300}, {250, 250, 350, 350}}),
              (Texts{"SystemWindow h0 l0", "SystemWindow h0 l0"}));
}

TEST_F(PanelStackingTest, APanelOverAnotherWindowGetsOneItself) {
    // Painted into the main window it would lie below the first panel's.
    EXPECT_EQ(Decide({{600, 200, 800, 300}, {620, 220, 680, 280}}), (Texts{"OwnGUIWindow l0", "OwnGUIWindow l0"}));
}

TEST_F(PanelStackingTest, APanelOverAFloatingOneAloneIsTiedToThat) {
    EXPECT_EQ(Decide({{600, 200, 800, 300}, {750, 250, 900, 350}}), (Texts{"OwnGUIWindow l0", "OwnGUIWindow l1"}));
    EXPECT_EQ(Decide({{750, 200, 900, 300}, {760, 220, 860, 280}}), (Texts{"SystemWindow", "SystemWindow h1 l1"}));
    EXPECT_EQ(Decide({{750, 200, 900, 300}, {760, 220, 960, 280}}), (Texts{"SystemWindow", "OwnGUIWindow l1"}));
}

TEST_F(PanelStackingTest, OnAnUnboundedDesktopNoPanelGetsAWindow) {
    monitors = {unboundedMonitor};
    EXPECT_EQ(Decide({{600, 200, 800, 300}, {750, 100, 900, 200}, {200, 200, 300, 300}}),
              (Texts{"SystemWindow h0 l0", "SystemWindow h0 l0", "SystemWindow h0 l0"}));
}

TEST_F(PanelStackingTest, WithoutPanelsThereIsNothingToDecide) {
    EXPECT_TRUE(DecideStacking({}, monitors).empty());
}

TEST_F(PanelStackingTest, DisagreeingOverlapTestsAreLogged) {
    const Quorvex::Test::LogCapture log;
    EXPECT_TRUE(AreOverlapTestsConsistent(true, true));
    EXPECT_TRUE(AreOverlapTestsConsistent(false, true)) << "the overlap may lie off all monitors";
    EXPECT_TRUE(AreOverlapTestsConsistent(false, false));
    EXPECT_TRUE(log.IsEmpty());
    EXPECT_FALSE(AreOverlapTestsConsistent(true, false));
    EXPECT_TRUE(log.HasLineEndingIn("GUI::OnGlobalPaint")) << log.Text();
}

} // namespace
} // namespace Quorvex::GUI::Test
