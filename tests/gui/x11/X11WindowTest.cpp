#include "tests/gui/x11/X11Fixture.h"

#include <thread>

namespace Quorvex::GUI {
namespace {

using X11WindowTest = X11Fixture;

TEST_F(X11WindowTest, IsCreatedHiddenAndSilently) {
    const auto window = Create(WindowKind::Main, {40, 50, 141, 171}, m_events);
    Settle();
    EXPECT_FALSE(window->IsVisible());
    EXPECT_EQ(window->GetClientRect(), (Rect{40, 50, 141, 171}));
    EXPECT_TRUE(m_events.log.empty());
    EXPECT_EQ(reinterpret_cast<::Window>(window->GetNativeHandle()), window->GetHandle());
}

TEST_F(X11WindowTest, TheTitleReachesTheServerInUtf8AndInLatin1) {
    const auto window = Create(WindowKind::Main, {0, 0, 100, 100}, m_events, u"\u4E2D \u00FC \U0001F600 \u20AC");
    Settle();
    auto* const handle = window->GetNativeHandle();
    EXPECT_EQ(m_onlooker->GetText(handle, "_NET_WM_NAME", "UTF8_STRING"),
              "\xE4\xB8\xAD \xC3\xBC \xF0\x9F\x98\x80 \xE2\x82\xAC");
    EXPECT_EQ(m_onlooker->GetText(handle, "WM_NAME", "STRING"), "? \xFC ? ?");
    window->SetTitle("Gr\xFC\xDF"
                     "e \x80");
    Settle();
    EXPECT_EQ(m_onlooker->GetText(handle, "_NET_WM_NAME", "UTF8_STRING"), "Gr\xC3\xBC\xC3\x9F"
                                                                          "e \xE2\x82\xAC");
    EXPECT_EQ(m_onlooker->GetText(handle, "WM_NAME", "STRING"), "Gr\xFC\xDF"
                                                                "e ?");
    window->SetTitle("");
    Settle();
    EXPECT_EQ(m_onlooker->GetText(handle, "_NET_WM_NAME", "UTF8_STRING"), "");
}

TEST_F(X11WindowTest, TellsWhatItIs) {
    const auto main = Create(WindowKind::Main, {0, 0, 100, 100}, m_events);
    const auto panel = Create(WindowKind::Panel, {0, 0, 100, 100}, m_panelEvents);
    panel->SetOwner(main.get());
    Settle();
    auto* const handle = main->GetNativeHandle();
    EXPECT_EQ(m_onlooker->GetText(handle, "WM_CLASS", "STRING"), std::string("varnolite\0Varnolite\0", 20));
    EXPECT_EQ(m_onlooker->GetNumbers(handle, "_NET_WM_PID"),
              (std::vector<unsigned long>{static_cast<unsigned long>(getpid())}));
    EXPECT_FALSE(m_onlooker->GetText(handle, "WM_CLIENT_MACHINE", "STRING").empty());
    EXPECT_EQ(m_onlooker->GetNumbers(handle, "_NET_WM_WINDOW_TYPE")[0],
              m_onlooker->Intern("_NET_WM_WINDOW_TYPE_NORMAL"));
    auto* const panelHandle = panel->GetNativeHandle();
    EXPECT_EQ(m_onlooker->GetNumbers(panelHandle, "_NET_WM_WINDOW_TYPE")[0],
              m_onlooker->Intern("_NET_WM_WINDOW_TYPE_UTILITY"));
    EXPECT_EQ(m_onlooker->GetNumbers(panelHandle, "WM_TRANSIENT_FOR")[0], main->GetHandle());
    // Flag "decorations", and none of them.
    EXPECT_EQ(m_onlooker->GetNumbers(panelHandle, "_MOTIF_WM_HINTS"), (std::vector<unsigned long>{2, 0, 0, 0, 0}));
    panel->SetOwner(nullptr);
    Settle();
    EXPECT_TRUE(m_onlooker->GetNumbers(panelHandle, "WM_TRANSIENT_FOR").empty());
}

TEST_F(X11WindowTest, ShowingTheMainWindowActivatesAndPaintsIt) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    EXPECT_TRUE(window->IsVisible());
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("paint") && m_events.Has("focus"); }));
    EXPECT_TRUE(m_events.Has("activated"));
}

TEST_F(X11WindowTest, PlacingItTellsItsOwnerAtOnceAndOnce) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    Settle();
    m_events.Clear();
    window->SetClientRect({30, 20, 131, 141});
    EXPECT_EQ(m_events.log, (Log{"moved"}));
    EXPECT_EQ(window->GetClientRect(), (Rect{30, 20, 131, 141}));
    Settle();
    EXPECT_EQ(m_events.Count("moved"), 1u);
    EXPECT_EQ(window->GetClientRect(), (Rect{30, 20, 131, 141}));
}

TEST_F(X11WindowTest, AStormOfPlacesEndsAtTheLast) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    Settle();
    for (std::int32_t i = 0; i < 200; ++i)
        window->SetClientRect({i, i, i + 50 + i % 7, i + 60});
    Settle();
    EXPECT_EQ(window->GetClientRect(), (Rect{199, 199, 199 + 50 + 199 % 7, 259}));
}

TEST_F(X11WindowTest, BeingMovedAndSizedByAnotherIsTold) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    Settle();
    m_events.Clear();
    XMoveResizeWindow(m_onlooker->Get(), window->GetHandle(), 77, 66, 155, 144);
    XSync(m_onlooker->Get(), 0);
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("moved"); }));
    EXPECT_EQ(window->GetClientRect(), (Rect{77, 66, 77 + 155, 66 + 144}));
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("paint"); }));
}

TEST_F(X11WindowTest, TheWishToCloseIsToldAndNothingElseHappens) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    Settle();
    m_onlooker->SendProtocol(window->GetNativeHandle(), "WM_DELETE_WINDOW");
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("close"); }));
    EXPECT_TRUE(window->IsVisible());
}

TEST_F(X11WindowTest, APingIsAnsweredAtTheRoot) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    Settle();
    XSelectInput(m_onlooker->Get(), m_onlooker->GetRoot(), SubstructureNotifyMask);
    m_onlooker->SendProtocol(window->GetNativeHandle(), "_NET_WM_PING");
    XEvent event{};
    EXPECT_TRUE(DispatchUntil(
        [&] { return XCheckTypedWindowEvent(m_onlooker->Get(), m_onlooker->GetRoot(), ClientMessage, &event) != 0; }));
    EXPECT_EQ(static_cast<Atom>(event.xclient.data.l[0]), m_onlooker->Intern("_NET_WM_PING"));
    XSelectInput(m_onlooker->Get(), m_onlooker->GetRoot(), NoEventMask);
}

TEST_F(X11WindowTest, SeveralWindowsMoveTogetherAndAreRestacked) {
    const auto first = Create(WindowKind::Panel, {10, 10, 60, 60}, m_events);
    const auto second = Create(WindowKind::Panel, {20, 20, 70, 70}, m_panelEvents);
    first->Show();
    second->Show();
    Settle();
    m_events.Clear();
    m_panelEvents.Clear();
    const std::vector<WindowPlacement> placements{{first.get(), {100, 100, 151, 151}, nullptr},
                                                  {second.get(), {110, 110, 161, 161}, first.get()}};
    m_system->MoveWindows(placements);
    EXPECT_EQ(m_events.log, (Log{"moved"}));
    EXPECT_EQ(m_panelEvents.log, (Log{"moved"}));
    Settle();
    const auto stacking = m_onlooker->GetStacking();
    ASSERT_EQ(stacking.size(), 2u);
    EXPECT_EQ(stacking[0], second->GetHandle());
    EXPECT_EQ(stacking[1], first->GetHandle());
    second->BringToFront();
    Settle();
    EXPECT_EQ(m_onlooker->GetStacking()[1], second->GetHandle());
}

TEST_F(X11WindowTest, WindowFromPointFindsTheTopmostOwnWindow) {
    const auto low = Create(WindowKind::Panel, {10, 10, 110, 110}, m_events);
    const auto high = Create(WindowKind::Panel, {50, 50, 150, 150}, m_panelEvents);
    low->Show();
    high->Show();
    Settle();
    EXPECT_EQ(m_system->WindowFromPoint(20, 20), low.get());
    EXPECT_EQ(m_system->WindowFromPoint(60, 60), high.get());
    EXPECT_EQ(m_system->WindowFromPoint(400, 400), nullptr);
}

TEST_F(X11WindowTest, PaintsWaitForPostsAndPaintNowDoesNot) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    Settle();
    m_events.Clear();
    window->Invalidate();
    window->Post(0x400, 1, 2);
    Settle();
    EXPECT_EQ(m_events.log, (Log{"user 1024 1 2", "paint"}));
    window->PaintNow();
    EXPECT_EQ(m_events.Count("paint"), 2u);
}

TEST_F(X11WindowTest, PostsOfFourThreadsAllArriveInOrder) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    constexpr std::uintptr_t threads = 4;
    constexpr std::intptr_t each = 2000;
    std::vector<std::intptr_t> next(threads, 0);
    std::size_t received = 0;
    m_events.onUserMessage = [&](std::uint32_t, std::uintptr_t thread, std::intptr_t index) {
        EXPECT_EQ(index, next[thread]++) << "thread " << thread;
        ++received;
    };
    std::vector<std::jthread> workers;
    for (std::uintptr_t thread = 0; thread < threads; ++thread) {
        workers.emplace_back([&, thread] {
            for (std::intptr_t i = 0; i < each; ++i)
                window->Post(0x400, thread, i);
        });
    }
    // Nothing but the posts themselves wakes the loop.
    while (received < threads * each)
        ASSERT_EQ(m_system->DispatchNextMessage(), IWindowSystem::Dispatched::Message);
}

TEST_F(X11WindowTest, AMessageToAWindowThatHasGoneIsDropped) {
    auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Post(0x400, 1, 2);
    window.reset();
    Settle();
    EXPECT_EQ(m_events.log, (Log{"destroyed"}));
}

TEST_F(X11WindowTest, AWindowDestroyedByAnotherIsHarmlessAfterwards) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    Settle();
    XDestroyWindow(m_onlooker->Get(), window->GetHandle());
    XSync(m_onlooker->Get(), 0);
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("destroyed"); }));
    const std::vector<std::uint8_t> bits(4 * 100 * 100);
    window->ShowOpaque(bits.data(), 100, 100, 400);
    window->SetClientRect({0, 0, 5, 5});
    window->SetTitle("x");
    window->Hide();
    Settle();
    EXPECT_EQ(m_events.Count("destroyed"), 1u);
}

TEST_F(X11WindowTest, HidingTakesItFromTheScreenAndShowingBringsItBack) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Show();
    Settle();
    window->Hide();
    Settle();
    EXPECT_FALSE(window->IsVisible());
    EXPECT_EQ(m_system->WindowFromPoint(20, 20), nullptr);
    m_events.Clear();
    window->Show();
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("paint"); }));
    EXPECT_EQ(m_system->WindowFromPoint(20, 20), window.get());
}

TEST_F(X11WindowTest, AnEmptyClientAreaIsOnePixelToTheServerOnly) {
    const auto window = Create(WindowKind::Panel, {10, 10, 60, 60}, m_events);
    window->Show();
    window->SetClientRect({20, 20, 20, 20});
    Settle();
    EXPECT_EQ(window->GetClientRect(), (Rect{20, 20, 20, 20}));
}

TEST_F(X11WindowTest, TimersReachTheHook) {
    struct Counter {
        void Tick(std::uintptr_t identifier) { ticks += identifier == 7 ? 1 : 0; }
        int ticks = 0;
    } counter;
    Function<std::uintptr_t> hook;
    hook.Bind(&counter, &Counter::Tick);
    m_system->SetTimerHook(hook);
    m_system->SetTimer(7, 10);
    while (counter.ticks < 3)
        ASSERT_EQ(m_system->DispatchNextMessage(), IWindowSystem::Dispatched::Message);
    m_system->KillTimer(7);
    const int former = counter.ticks;
    Settle();
    EXPECT_EQ(counter.ticks, former);
}

TEST_F(X11WindowTest, QuitComesWithItsCodeAfterWhatWasPosted) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    Settle();
    m_system->PostQuit(4);
    window->Post(0x400, 1, 2);
    while (m_system->DispatchNextMessage() == IWindowSystem::Dispatched::Message) {
    }
    EXPECT_EQ(m_system->GetExitCode(), 4);
    EXPECT_TRUE(m_events.Has("user 1024 1 2"));
}

TEST_F(X11WindowTest, DisablingTakesTheMouseAwayFirst) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->SetEnabled(false);
    window->SetEnabled(false);
    window->SetEnabled(true);
    EXPECT_EQ(m_events.log, (Log{"cancel", "disabled", "enabled"}));
}

TEST_F(X11WindowTest, FlashingAsksForAttention) {
    const auto window = Create(WindowKind::Main, {10, 10, 110, 110}, m_events);
    window->Flash(3, 66);
    Settle();
    const auto hints = m_onlooker->GetNumbers(window->GetNativeHandle(), "WM_HINTS");
    ASSERT_FALSE(hints.empty());
    EXPECT_NE(hints[0] & XUrgencyHint, 0u);
}

/// Owns the selection of a compositor without drawing anything.
class FakeCompositor {
public:
    explicit FakeCompositor(const Onlooker& onlooker) : m_onlooker(onlooker) {
        auto* const display = onlooker.Get();
        m_window = XCreateSimpleWindow(display, onlooker.GetRoot(), -10, -10, 1, 1, 0, 0, 0);
        const auto selection = onlooker.Intern("_NET_WM_CM_S0");
        XSetSelectionOwner(display, selection, m_window, CurrentTime);
        XEvent event{};
        event.xclient.type = ClientMessage;
        event.xclient.window = onlooker.GetRoot();
        event.xclient.message_type = onlooker.Intern("MANAGER");
        event.xclient.format = 32;
        event.xclient.data.l[1] = static_cast<long>(selection);
        event.xclient.data.l[2] = static_cast<long>(m_window);
        XSendEvent(display, onlooker.GetRoot(), 0, StructureNotifyMask, &event);
        XSync(display, 0);
    }
    ~FakeCompositor() {
        XDestroyWindow(m_onlooker.Get(), m_window);
        XSync(m_onlooker.Get(), 0);
    }

private:
    const Onlooker& m_onlooker;
    ::Window m_window;
};

TEST_F(X11WindowTest, WithoutACompositorNothingIsLayered) {
    const auto panel = Create(WindowKind::Panel, {10, 10, 60, 60}, m_panelEvents);
    EXPECT_FALSE(panel->IsCompositionEnabled());
    EXPECT_FALSE(panel->SetLayered(true));
    EXPECT_FALSE(panel->IsLayered());
    EXPECT_TRUE(panel->SetLayered(false));
}

TEST_F(X11WindowTest, ALayeredPanelKeepsTheAlphaOfItsPicture) {
    const FakeCompositor compositor(*m_onlooker);
    const auto panel = Create(WindowKind::Panel, {10, 10, 27, 21}, m_panelEvents);
    EXPECT_TRUE(panel->IsCompositionEnabled());
    panel->Show();
    Settle();
    m_panelEvents.Clear();
    ASSERT_TRUE(panel->SetLayered(true));
    EXPECT_TRUE(panel->IsVisible());
    EXPECT_TRUE(DispatchUntil([&] { return m_panelEvents.Has("paint"); }));
    EXPECT_FALSE(m_panelEvents.Has("destroyed"));
    const auto bits = MakePicture(17, 11, 8);
    panel->ShowWithAlpha(bits.data(), 17, 11, 68);
    Settle();
    EXPECT_EQ(m_onlooker->PhotographWindow(panel->GetNativeHandle(), 17, 11), bits);
    panel->ShowOpaque(bits.data(), 17, 11, 68);
    Settle();
    auto opaque = bits;
    for (std::size_t i = 3; i < opaque.size(); i += 4)
        opaque[i] = 255;
    EXPECT_EQ(m_onlooker->PhotographWindow(panel->GetNativeHandle(), 17, 11), opaque);
    EXPECT_TRUE(panel->SetLayered(false));
}

TEST_F(X11WindowTest, ThePanelsOfAReplacedOwnerFollowItsNewHandle) {
    const FakeCompositor compositor(*m_onlooker);
    const auto main = Create(WindowKind::Main, {10, 10, 60, 60}, m_events);
    const auto panel = Create(WindowKind::Panel, {10, 10, 27, 21}, m_panelEvents);
    panel->SetOwner(main.get());
    const auto former = main->GetHandle();
    ASSERT_TRUE(main->SetLayered(true));
    Settle();
    EXPECT_NE(main->GetHandle(), former);
    EXPECT_EQ(m_onlooker->GetNumbers(panel->GetNativeHandle(), "WM_TRANSIENT_FOR")[0], main->GetHandle());
}

TEST_F(X11WindowTest, ComingAndGoingOfACompositorIsTold) {
    const auto panel = Create(WindowKind::Panel, {10, 10, 60, 60}, m_panelEvents);
    EXPECT_FALSE(panel->IsCompositionEnabled());
    {
        const FakeCompositor compositor(*m_onlooker);
        EXPECT_TRUE(DispatchUntil([&] { return m_panelEvents.Count("composition") == 1; }));
        EXPECT_TRUE(panel->IsCompositionEnabled());
    }
    EXPECT_TRUE(DispatchUntil([&] { return m_panelEvents.Count("composition") == 2; }));
    EXPECT_FALSE(panel->IsCompositionEnabled());
}

} // namespace
} // namespace Quorvex::GUI
