#include "gui/window/Monitors.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace Quorvex::GUI {
namespace {

const std::vector<Rect> sideBySide{{0, 0, 100, 100}, {100, 0, 300, 100}};

TEST(Monitors, TheLargestSharedAreaWins) {
    EXPECT_EQ(NearestMonitor(sideBySide, {60, 10, 150, 20}), 1u);
    EXPECT_EQ(NearestMonitor(sideBySide, {40, 10, 150, 20}), 0u);
}

TEST(Monitors, EqualSharesGoToTheFirst) {
    EXPECT_EQ(NearestMonitor(sideBySide, {50, 10, 150, 20}), 0u);
}

TEST(Monitors, OutsideOfAllTheNearestWins) {
    EXPECT_EQ(NearestMonitor(sideBySide, {-50, 10, -40, 20}), 0u);
    EXPECT_EQ(NearestMonitor(sideBySide, {320, 10, 330, 20}), 1u);
    EXPECT_EQ(NearestMonitor(sideBySide, {250, 500, 260, 510}), 1u);
}

TEST(Monitors, AnEmptyRectangleFindsTheMonitorAroundIt) {
    EXPECT_EQ(NearestMonitor(sideBySide, {150, 50, 150, 50}), 1u);
}

TEST(Monitors, OneThatSpansTheWholeRangeDoesNotOverflow) {
    constexpr auto low = std::numeric_limits<std::int32_t>::min();
    constexpr auto high = std::numeric_limits<std::int32_t>::max();
    const std::vector<Rect> monitors{{0, 0, 10, 10}, {low, low, high, high}};
    EXPECT_EQ(NearestMonitor(monitors, {low, low, high, high}), 1u);
}

} // namespace
} // namespace Quorvex::GUI
