#include "tests/gui/x11/X11Fixture.h"

namespace Quorvex::GUI {
namespace {

TEST(X11Dpi, IsReadFromTheResources) {
    EXPECT_EQ(DpiOfResources("Xft.dpi:\t144\n"), 144u);
    EXPECT_EQ(DpiOfResources("Xft.antialias:\t1\nXft.dpi:  191.6\nXft.hinting:\t1\n"), 192u);
    EXPECT_EQ(DpiOfResources("*dpi:\t144\nxft.dpi:\t144"), std::nullopt);
    EXPECT_EQ(DpiOfResources(""), std::nullopt);
}

TEST(X11Dpi, NonsenseInTheResourcesIsIgnored) {
    EXPECT_EQ(DpiOfResources("Xft.dpi:"), std::nullopt);
    EXPECT_EQ(DpiOfResources("Xft.dpi:\tabc\n"), std::nullopt);
    EXPECT_EQ(DpiOfResources("Xft.dpi:\t0\n"), std::nullopt);
    EXPECT_EQ(DpiOfResources("Xft.dpi:\t-96\n"), std::nullopt);
    EXPECT_EQ(DpiOfResources("Xft.dpi:\t1e9\n"), std::nullopt);
}

TEST(X11Dpi, FollowsFromTheSizeOfAMonitor) {
    EXPECT_EQ(DpiOfMonitor(1920, 508, 286), 96u);
    EXPECT_EQ(DpiOfMonitor(3840, 597, 336), 163u);
}

TEST(X11Dpi, AspectRatiosAndEmptySizesTellNothing) {
    EXPECT_EQ(DpiOfMonitor(1920, 0, 0), std::nullopt);
    EXPECT_EQ(DpiOfMonitor(1920, 160, 90), std::nullopt);
    EXPECT_EQ(DpiOfMonitor(1920, 16, 9), std::nullopt);
    EXPECT_EQ(DpiOfMonitor(1920, 160, 100), std::nullopt);
}

using X11MonitorsTest = X11Fixture;

TEST_F(X11MonitorsTest, TheWholeScreenIsTheOneMonitor) {
    EXPECT_EQ(m_system->GetMonitors(), (std::vector<Rect>{{0, 0, 800, 600}}));
    EXPECT_EQ(m_system->GetPrimaryScreen(), (Rect{0, 0, 800, 600}));
    EXPECT_EQ(m_system->GetWorkAreaAtMouse(), (Rect{0, 0, 800, 600}));
}

TEST_F(X11MonitorsTest, TheWorkAreaOfTheCurrentDesktopIsIntersected) {
    const auto root = m_onlooker->GetRoot();
    const unsigned long areas[]{0, 0, 800, 600, 10, 30, 2000, 540};
    const unsigned long desktop[]{1};
    const auto workArea = m_onlooker->Intern("_NET_WORKAREA");
    const auto current = m_onlooker->Intern("_NET_CURRENT_DESKTOP");
    XChangeProperty(m_onlooker->Get(), root, workArea, XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(areas), 8);
    XChangeProperty(m_onlooker->Get(), root, current, XA_CARDINAL, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(desktop), 1);
    XSync(m_onlooker->Get(), 0);
    EXPECT_EQ(m_system->GetWorkAreaNearest({20, 20, 30, 30}), (Rect{10, 30, 800, 570}));
    XDeleteProperty(m_onlooker->Get(), root, workArea);
    XDeleteProperty(m_onlooker->Get(), root, current);
    XSync(m_onlooker->Get(), 0);
    EXPECT_EQ(m_system->GetWorkAreaNearest({20, 20, 30, 30}), (Rect{0, 0, 800, 600}));
}

TEST_F(X11MonitorsTest, TheResolutionOfTheResourcesGoesFirst) {
    const std::string resources = "Xft.dpi:\t288\n";
    XChangeProperty(m_onlooker->Get(), m_onlooker->GetRoot(), XA_RESOURCE_MANAGER, XA_STRING, 8, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(resources.data()), static_cast<int>(resources.size()));
    XSync(m_onlooker->Get(), 0);
    {
        const X11WindowSystem other(VirtualDisplay::Shared().GetName());
        EXPECT_EQ(other.GetScreenDpi(), 288u);
    }
    XDeleteProperty(m_onlooker->Get(), m_onlooker->GetRoot(), XA_RESOURCE_MANAGER);
    XSync(m_onlooker->Get(), 0);
    const X11WindowSystem other(VirtualDisplay::Shared().GetName());
    EXPECT_LT(other.GetScreenDpi(), 288u);
}

} // namespace
} // namespace Quorvex::GUI
