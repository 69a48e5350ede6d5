#include "app/WindowRectangle.h"

#include "gui/window/headless/HeadlessWindowSystem.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace Quorvex::App;
using GUI::Rect;

TEST(WindowRectangle, IsCentredInTheWorkArea) {
    EXPECT_EQ(CentredWindowRectangle({0, 0, 1920, 1040}, 1), (Rect{448, 136, 1472, 904}));
    EXPECT_EQ(CentredWindowRectangle({-3840, 0, 0, 2100}, 2), (Rect{-2944, 282, -896, 1818}));
}

TEST(WindowRectangle, IsNoLargerThanTheWorkArea) {
    EXPECT_EQ(CentredWindowRectangle({0, 0, 800, 600}, 1), (Rect{0, 0, 800, 600}));
}

TEST(WindowRectangle, IsNotRestoredOnAFirstRun) {
    GUI::HeadlessWindowSystem system;
    EXPECT_FALSE(RestoredWindowRectangle({0, 0, 0, 0}, system));
    EXPECT_FALSE(RestoredWindowRectangle({5, 10, 5, 400}, system));
    EXPECT_FALSE(RestoredWindowRectangle({5, 10, 300, 10}, system));
}

TEST(WindowRectangle, IsRestoredWhereItStood) {
    GUI::HeadlessWindowSystem system;
    EXPECT_EQ(RestoredWindowRectangle({100, 50, 700, 500}, system), (Rect{100, 50, 700, 500}));
}

TEST(WindowRectangle, IsCutToTheWorkAreaOfTheNearestMonitor) {
    GUI::HeadlessWindowSystem system;
    system.Desktop().monitors = {{0, 0, 1920, 1080}, {1920, 0, 2920, 1000}};
    system.Desktop().workAreas = {{0, 0, 1920, 1040}, {1920, 0, 2920, 960}};
    EXPECT_EQ(RestoredWindowRectangle({2000, 500, 3000, 1100}, system), (Rect{2000, 500, 2920, 960}));
}

TEST(WindowRectangle, IsNotRestoredOffEveryMonitor) {
    GUI::HeadlessWindowSystem system;
    EXPECT_FALSE(RestoredWindowRectangle({5000, 5000, 5600, 5400}, system));
}
