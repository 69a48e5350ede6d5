#include "gui/window/x11/ProgramIcon.h"
#include "tests/gui/x11/X11Fixture.h"

// What a window tells its window manager and asks of it, by the Inter-Client Communication Conventions Manual and the
// Extended Window Manager Hints.

namespace Quorvex::GUI {
namespace {

class X11WindowManager : public X11Fixture {
protected:
    void TearDown() override {
        if (m_onlooker)
            XSelectInput(m_onlooker->Get(), m_onlooker->GetRoot(), NoEventMask);
        if (m_checkWindow != noXid) {
            XDeleteProperty(m_onlooker->Get(), m_onlooker->GetRoot(), m_onlooker->Intern("_NET_SUPPORTING_WM_CHECK"));
            XDestroyWindow(m_onlooker->Get(), m_checkWindow);
            XSync(m_onlooker->Get(), 0);
        }
    }
    /// The onlooker tells that it manages windows, as far as a window of this program asks for that, and listens.
    void Manage() {
        auto* const display = m_onlooker->Get();
        m_checkWindow = XCreateSimpleWindow(display, m_onlooker->GetRoot(), -10, -10, 1, 1, 0, 0, 0);
        XChangeProperty(display, m_onlooker->GetRoot(), m_onlooker->Intern("_NET_SUPPORTING_WM_CHECK"), XA_WINDOW, 32,
                        PropModeReplace, reinterpret_cast<const unsigned char*>(&m_checkWindow), 1);
        XSelectInput(display, m_onlooker->GetRoot(), SubstructureNotifyMask);
        XSync(display, 0);
    }
    /// The five numbers of the next message of that type about a window; empty when none comes.
    std::vector<long> TakeRequest(const char* type, const X11Window& window) {
        std::vector<long> data;
        DispatchUntil([&] {
            XEvent event{};
            while (data.empty() && XCheckTypedEvent(m_onlooker->Get(), ClientMessage, &event) != 0)
                if (event.xclient.message_type == m_onlooker->Intern(type) &&
                    event.xclient.window == window.GetHandle())
                    data.assign(std::begin(event.xclient.data.l), std::end(event.xclient.data.l));
            return !data.empty();
        });
        return data;
    }
    std::vector<unsigned long> Atoms(std::initializer_list<const char*> names) const {
        std::vector<unsigned long> atoms;
        for (const char* name : names)
            atoms.push_back(m_onlooker->Intern(name));
        return atoms;
    }
    long InputHintOf(const X11Window& window) const {
        auto* const hints = XGetWMHints(m_onlooker->Get(), window.GetHandle());
        const long input = hints != nullptr && (hints->flags & InputHint) != 0 ? hints->input : -1;
        if (hints != nullptr)
            XFree(hints);
        return input;
    }
    /// As a window manager that minimises or restores.
    void SetState(const X11Window& window, unsigned long state) {
        const unsigned long numbers[]{state, noXid};
        const auto property = m_onlooker->Intern("WM_STATE");
        XChangeProperty(m_onlooker->Get(), window.GetHandle(), property, property, 32, PropModeReplace,
                        reinterpret_cast<const unsigned char*>(numbers), 2);
        XSync(m_onlooker->Get(), 0);
    }

    ::Window m_checkWindow = noXid;
};

TEST_F(X11WindowManager, TheWantedPlaceIsTheClientAreasWhateverTheFrame) {
    const auto window = Create(WindowKind::Main, {40, 50, 241, 171}, m_events);
    Settle();
    XSizeHints hints{};
    long supplied = 0;
    ASSERT_NE(XGetWMNormalHints(m_onlooker->Get(), window->GetHandle(), &hints, &supplied), 0);
    EXPECT_EQ(hints.flags, USPosition | USSize | PWinGravity | PMinSize);
    EXPECT_EQ(hints.x, 40);
    EXPECT_EQ(hints.y, 50);
    EXPECT_EQ(hints.width, 201);
    EXPECT_EQ(hints.height, 121);
    EXPECT_EQ(hints.min_width, 1);
    EXPECT_EQ(hints.min_height, 1);
    EXPECT_EQ(hints.win_gravity, StaticGravity);
}

TEST_F(X11WindowManager, TheMainWindowAloneTakesTheFocus) {
    const auto window = Create(WindowKind::Main, {0, 0, 100, 100}, m_events);
    const auto panel = Create(WindowKind::Panel, {0, 0, 100, 100}, m_panelEvents);
    Settle();
    EXPECT_EQ(InputHintOf(*window), 1);
    EXPECT_EQ(InputHintOf(*panel), 0);
    EXPECT_EQ(m_onlooker->GetNumbers(panel->GetNativeHandle(), "_NET_WM_USER_TIME"), (std::vector<unsigned long>{0}));
    EXPECT_TRUE(m_onlooker->GetNumbers(window->GetNativeHandle(), "_NET_WM_USER_TIME").empty());
}

TEST_F(X11WindowManager, APanelStaysOutOfTaskBarAndPager) {
    const auto window = Create(WindowKind::Main, {0, 0, 100, 100}, m_events);
    const auto panel = Create(WindowKind::Panel, {0, 0, 100, 100}, m_panelEvents);
    Settle();
    EXPECT_EQ(m_onlooker->GetNumbers(panel->GetNativeHandle(), "_NET_WM_STATE"),
              Atoms({"_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"}));
    EXPECT_TRUE(m_onlooker->GetNumbers(window->GetNativeHandle(), "_NET_WM_STATE").empty());
    EXPECT_TRUE(m_onlooker->GetNumbers(window->GetNativeHandle(), "_MOTIF_WM_HINTS").empty()) << "it keeps its frame";
}

TEST_F(X11WindowManager, EveryWindowAnswersToClosingAndPings) {
    const auto window = Create(WindowKind::Main, {0, 0, 100, 100}, m_events);
    const auto panel = Create(WindowKind::Panel, {0, 0, 100, 100}, m_panelEvents);
    Settle();
    for (const auto* each : {window.get(), panel.get()})
        EXPECT_EQ(m_onlooker->GetNumbers(each->GetNativeHandle(), "WM_PROTOCOLS"),
                  Atoms({"WM_DELETE_WINDOW", "_NET_WM_PING"}));
}

TEST_F(X11WindowManager, TheMainWindowCarriesTheProgramsIcon) {
    const auto window = Create(WindowKind::Main, {0, 0, 100, 100}, m_events);
    const auto panel = Create(WindowKind::Panel, {0, 0, 100, 100}, m_panelEvents);
    Settle();
    auto icon = m_onlooker->GetNumbers(window->GetNativeHandle(), "_NET_WM_ICON");
    // Xlib hands numbers of 32 bits out with their sign.
    for (unsigned long& number : icon)
        number &= 0xFFFFFFFF;
    const auto wanted = GetProgramIcon();
    ASSERT_GT(icon.size(), 2u + 16 * 16);
    EXPECT_TRUE(std::equal(icon.begin(), icon.end(), wanted.begin()));
    EXPECT_EQ(icon[0], 16u);
    EXPECT_EQ(icon[1], 16u);
    EXPECT_TRUE(m_onlooker->GetNumbers(panel->GetNativeHandle(), "_NET_WM_ICON").empty());
}

TEST_F(X11WindowManager, ActivationIsAskedForWhereSomebodyManages) {
    Manage();
    const auto window = Create(WindowKind::Main, {0, 0, 100, 100}, m_events);
    window->Show();
    window->Activate();
    // From an application, at no known time, no window of it active before.
    EXPECT_EQ(TakeRequest("_NET_ACTIVE_WINDOW", *window), (std::vector<long>{1, CurrentTime, 0, 0, 0}));
}

TEST_F(X11WindowManager, FlashingAsksForAttentionWhereSomebodyManages) {
    Manage();
    const auto window = Create(WindowKind::Main, {0, 0, 100, 100}, m_events);
    window->Show();
    Settle();
    window->Flash(3, 66);
    const auto attention = static_cast<long>(m_onlooker->Intern("_NET_WM_STATE_DEMANDS_ATTENTION"));
    EXPECT_EQ(TakeRequest("_NET_WM_STATE", *window), (std::vector<long>{1, attention, 0, 0, 0})) << "1 adds";
}

TEST_F(X11WindowManager, BeingMinimisedAndRestoredIsTold) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    SetState(*window, NormalState);
    Settle();
    m_events.Clear();
    SetState(*window, IconicState);
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("minimized"); }));
    EXPECT_TRUE(window->IsIconic());
    EXPECT_TRUE(window->GetClientRect().IsEmpty());
    window->Invalidate();
    Settle();
    EXPECT_EQ(m_events.log, (Log{"minimized"})) << "nothing shows, so nothing is painted";
    m_events.Clear();
    SetState(*window, NormalState);
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("paint"); }));
    EXPECT_EQ(m_events.log.front(), "moved");
    EXPECT_FALSE(window->IsIconic());
    EXPECT_EQ(window->GetClientRect(), (Rect{10, 10, 110, 110}));
}

TEST_F(X11WindowManager, AWindowInAFrameKnowsItsPlaceOnTheDesktop) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    Settle();
    m_events.Clear();
    auto* const display = m_onlooker->Get();
    const auto frame = XCreateSimpleWindow(display, m_onlooker->GetRoot(), 200, 150, 300, 300, 0, 0, 0);
    XReparentWindow(display, window->GetHandle(), frame, 5, 25);
    XMapWindow(display, frame);
    XMoveResizeWindow(display, window->GetHandle(), 5, 25, 120, 90);
    XSync(display, 0);
    EXPECT_TRUE(DispatchUntil([&] { return window->GetClientRect() == Rect{205, 175, 325, 265}; }));
    EXPECT_EQ(m_system->WindowFromPoint(210, 180), window.get());
    EXPECT_EQ(m_system->WindowFromPoint(202, 152), nullptr) << "the frame is somebody else's";
    XReparentWindow(display, window->GetHandle(), m_onlooker->GetRoot(), 10, 10);
    XDestroyWindow(display, frame);
    XSync(display, 0);
}

} // namespace
} // namespace Quorvex::GUI
