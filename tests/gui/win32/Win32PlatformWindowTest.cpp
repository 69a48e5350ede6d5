#include "tests/gui/win32/Win32Fixture.h"

#include "foundation/Version.h"
#include "foundation/platform/win32/WideText.h"
#include "tests/support/LogCapture.h"

#include <thread>

namespace Quorvex::GUI {
namespace {

using Win32PlatformWindowTest = Win32Fixture;
using Dispatched = IWindowSystem::Dispatched;

/// A picture in which every pixel differs from its neighbours.
std::vector<std::uint8_t> MakePicture(std::uint32_t width, std::uint32_t height) {
    std::vector<std::uint8_t> bits(std::size_t{width} * height * 4);
    std::uint32_t state = width * 2654435761u + height;
    for (auto& byte : bits) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return bits;
}

/// What the window's area of the screen shows, blue first, alpha cleared.
std::vector<std::uint8_t> Photograph(HWND window, std::uint32_t width, std::uint32_t height) {
    std::vector<std::uint8_t> pixels(std::size_t{width} * height * 4);
    BITMAPINFO info{};
    info.bmiHeader = {
        sizeof(info.bmiHeader), static_cast<LONG>(width), -static_cast<LONG>(height), 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC source = GetDC(window);
    const HDC copy = CreateCompatibleDC(source);
    const HBITMAP bitmap = CreateCompatibleBitmap(source, static_cast<int>(width), static_cast<int>(height));
    const HGDIOBJ former = SelectObject(copy, bitmap);
    BitBlt(copy, 0, 0, static_cast<int>(width), static_cast<int>(height), source, 0, 0, SRCCOPY);
    SelectObject(copy, former);
    GetDIBits(source, bitmap, 0, height, pixels.data(), &info, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(copy);
    ReleaseDC(window, source);
    for (std::size_t i = 3; i < pixels.size(); i += 4)
        pixels[i] = 0;
    return pixels;
}

TEST_F(Win32PlatformWindowTest, IsCreatedHiddenAndSilentlyWithItsClientArea) {
    const auto window = Create(WindowKind::Main, {100, 120, 401, 353}, m_events);
    EXPECT_FALSE(window->IsVisible());
    EXPECT_TRUE(m_events.log.empty());
    EXPECT_EQ(window->GetClientRect(), (Rect{100, 120, 401, 353}));
    EXPECT_EQ(window->GetNativeHandle(), window->GetHandle());
}

TEST_F(Win32PlatformWindowTest, TheTitleSurvivesBothForms) {
    const auto window = Create(WindowKind::Main, {0, 0, 300, 200}, m_events, u"Bild \u4E2D\u00FC");
    wchar_t text[64]{};
    GetWindowTextW(window->GetHandle(), text, 64);
    EXPECT_EQ(Platform::FromWideUnits(text), String(u"Bild \u4E2D\u00FC"));
    window->SetTitle("Gr\xFC\xDF"
                     "e");
    GetWindowTextW(window->GetHandle(), text, 64);
    EXPECT_EQ(Platform::FromWideUnits(text), String(u"Gr\u00FC\u00DFe"));
}

TEST(Win32NarrowWindow, IsCreatedAndNamedByTheNarrowCalls) {
    if (GetSystemMetrics(SM_CXSCREEN) == 0)
        GTEST_SKIP() << "no desktop: the windows of User32 stay untested";
    const ScopedSystemVersion oldSystem({4, 0, 0});
    RecordingEvents events;
    Win32WindowSystem system;
    const auto window = system.CreatePlatformWindow(WindowKind::Main, {50, 50, 250, 150},
                                                    "Gr\xFC\xDF"
                                                    "e",
                                                    events);
    const auto handle = static_cast<HWND>(window->GetNativeHandle());
    EXPECT_FALSE(IsWindowUnicode(handle));
    char text[64]{};
    GetWindowTextA(handle, text, 64);
    EXPECT_STREQ(text, "Gr\xFC\xDF"
                       "e");
    EXPECT_FALSE(window->IsCompositionEnabled());
    window->Post(UserMessage::LoadFinished, 1, 2);
    while (!events.Has("user 1024 1 2"))
        ASSERT_EQ(system.DispatchNextMessage(), Dispatched::Message);
}

TEST_F(Win32PlatformWindowTest, ShowingTheMainWindowActivatesAndPaintsIt) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    window->Show();
    EXPECT_TRUE(window->IsVisible());
    EXPECT_TRUE(DispatchUntil([&] { return m_events.Has("paint") && m_events.Has("activated"); }));
}

TEST_F(Win32PlatformWindowTest, PlacingItTellsItsOwnerAtOnce) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    window->Show();
    Settle();
    m_events.Clear();
    window->SetClientRect({110, 130, 351, 271});
    EXPECT_TRUE(m_events.Has("moved"));
    EXPECT_EQ(window->GetClientRect(), (Rect{110, 130, 351, 271}));
}

TEST_F(Win32PlatformWindowTest, TheScreenEqualsTheBufferAtOddSizes) {
    for (const auto& [width, height] : {std::pair{1u, 1u}, {7u, 3u}, {63u, 65u}, {201u, 149u}}) {
        const Rect rect{100, 100, 100 + static_cast<std::int32_t>(width), 100 + static_cast<std::int32_t>(height)};
        const auto window = Create(WindowKind::Panel, rect, m_events);
        window->Show();
        Settle();
        auto bits = MakePicture(width, height);
        window->ShowOpaque(bits.data(), width, height, width * 4);
        for (std::size_t i = 3; i < bits.size(); i += 4)
            bits[i] = 0;
        EXPECT_EQ(Photograph(window->GetHandle(), width, height), bits) << width << " x " << height;
    }
}

TEST_F(Win32PlatformWindowTest, RowsWithGapsAreShownWithoutThem) {
    const auto window = Create(WindowKind::Panel, {100, 100, 103, 102}, m_events);
    window->Show();
    Settle();
    std::vector<std::uint8_t> bits(2 * 20, 0x40);
    bits[0] = 200;
    bits[20] = 100;
    window->ShowOpaque(bits.data(), 3, 2, 20);
    const auto seen = Photograph(window->GetHandle(), 3, 2);
    EXPECT_EQ(seen[0], 200);
    EXPECT_EQ(seen[12], 100);
}

TEST_F(Win32PlatformWindowTest, ALayeredPanelTakesPicturesWithAlpha) {
    const auto panel = Create(WindowKind::Panel, {100, 100, 109, 107}, m_panelEvents);
    EXPECT_TRUE(panel->SetLayered(true));
    EXPECT_TRUE(panel->IsLayered());
    EXPECT_NE(GetWindowLongA(panel->GetHandle(), GWL_EXSTYLE) & WS_EX_LAYERED, 0);
    panel->Show();
    const std::vector<std::uint8_t> bits(9 * 7 * 4, 255);
    panel->ShowWithAlpha(bits.data(), 9, 7, 36);
    EXPECT_TRUE(panel->SetLayered(false));
    EXPECT_EQ(GetWindowLongA(panel->GetHandle(), GWL_EXSTYLE) & WS_EX_LAYERED, 0);
}

TEST_F(Win32PlatformWindowTest, APictureThatCannotBeShownIsReportedUnderItsCallAndTheRestGoesOn) {
    const Quorvex::Test::LogCapture log;
    const auto panel = Create(WindowKind::Panel, {100, 100, 109, 107}, m_panelEvents);
    const std::vector<std::uint8_t> bits(9 * 7 * 4, 255);
    // A window without the layered style takes no alpha.
    panel->ShowWithAlpha(bits.data(), 9, 7, 36);
    EXPECT_TRUE(log.Text().ends_with("UpdateLayeredWindow failed with error code 87\r\n"))
        << "bitmap and context are deleted all the same: " << log.Text();
}

TEST_F(Win32PlatformWindowTest, TheMainWindowKeepsItsFrameAndIsNeverLayered) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    EXPECT_FALSE(window->SetLayered(true));
    EXPECT_FALSE(window->IsLayered());
}

TEST_F(Win32PlatformWindowTest, SeveralWindowsMoveInOneStep) {
    const auto main = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    const auto panel = Create(WindowKind::Panel, {120, 120, 160, 160}, m_panelEvents);
    panel->SetOwner(main.get());
    main->Show();
    panel->Show();
    Settle();
    const std::vector<WindowPlacement> placements{{panel.get(), {140, 150, 181, 191}, nullptr},
                                                  {main.get(), {110, 130, 311, 231}, panel.get()}};
    m_system.MoveWindows(placements);
    EXPECT_EQ(panel->GetClientRect(), (Rect{140, 150, 181, 191}));
    EXPECT_EQ(main->GetClientRect(), (Rect{110, 130, 311, 231}));
    EXPECT_EQ(GetWindow(panel->GetHandle(), GW_HWNDNEXT), main->GetHandle());
}

TEST_F(Win32PlatformWindowTest, MouseMessagesCarryDesktopCoordinates) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    SendMessageA(window->GetHandle(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 20));
    SendMessageA(window->GetHandle(), WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(-120)), MAKELPARAM(150, 160));
    EXPECT_EQ(m_events.log, (Log{"mouse 513 at 110,120", "mouse 522 at 150,160"}));
    ASSERT_EQ(m_events.mouse.size(), 2u);
    EXPECT_EQ(m_events.mouse[0].window, window.get());
    EXPECT_EQ(static_cast<std::int16_t>(m_events.mouse[1].wParam >> 16), -120);
}

TEST_F(Win32PlatformWindowTest, MessagesReachTheirHandlers) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    const HWND handle = window->GetHandle();
    SendMessageA(handle, WM_KEYDOWN, VK_RIGHT, 1);
    SendMessageA(handle, WM_KEYUP, VK_RIGHT, 1);
    SendMessageA(handle, WM_SYSCOLORCHANGE, 0, 0);
    SendMessageA(handle, WM_DWMCOMPOSITIONCHANGED, 0, 0);
    SendMessageA(handle, WM_CANCELMODE, 0, 0);
    SendMessageA(handle, WM_MOUSELEAVE, 0, 0);
    SendMessageA(handle, WM_CLOSE, 0, 0);
    EXPECT_EQ(SendMessageA(handle, WM_ERASEBKGND, 0, 0), 1);
    ASSERT_EQ(m_events.log.size(), 7u);
    EXPECT_EQ(m_events.log[0], "key down 39");
    EXPECT_EQ(m_events.log[1], "key up 39");
    EXPECT_EQ(m_events.log[2], "colors");
    EXPECT_EQ(m_events.log[3], "composition");
    EXPECT_EQ(m_events.log[4], "cancel");
    EXPECT_EQ(m_events.log[5].substr(0, 9), "mouse 675");
    EXPECT_EQ(m_events.log[6], "close");
    EXPECT_TRUE(IsWindow(handle));
}

TEST_F(Win32PlatformWindowTest, AClickOnAPanelActivatesNothingByItself) {
    const auto panel = Create(WindowKind::Panel, {100, 100, 200, 200}, m_panelEvents);
    EXPECT_EQ(SendMessageA(panel->GetHandle(), WM_MOUSEACTIVATE, 0, MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN)),
              MA_NOACTIVATE);
    EXPECT_EQ(m_panelEvents.log, (Log{"mouse activate"}));
}

TEST_F(Win32PlatformWindowTest, FocusBetweenTwoWindowsNamesTheOther) {
    const auto main = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    const auto panel = Create(WindowKind::Panel, {320, 100, 400, 200}, m_panelEvents);
    main->Show();
    panel->Show();
    Settle();
    panel->Activate();
    EXPECT_TRUE(DispatchUntil([&] { return m_panelEvents.Has("focus from another"); }));
    EXPECT_TRUE(m_events.Has("no focus from another"));
}

TEST_F(Win32PlatformWindowTest, MinimisingEmptiesTheClientArea) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    window->Show();
    Settle();
    m_events.Clear();
    ShowWindow(window->GetHandle(), SW_MINIMIZE);
    EXPECT_TRUE(window->IsIconic());
    EXPECT_TRUE(m_events.Has("minimized"));
    EXPECT_TRUE(window->GetClientRect().IsEmpty());
    ShowWindow(window->GetHandle(), SW_RESTORE);
    EXPECT_TRUE(m_events.Has("moved"));
    EXPECT_EQ(window->GetClientRect(), (Rect{100, 100, 300, 200}));
}

TEST_F(Win32PlatformWindowTest, PaintNowCallsBackAtOnceAndValidates) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    window->Show();
    Settle();
    m_events.Clear();
    EXPECT_TRUE(window->Invalidate());
    window->PaintNow();
    EXPECT_EQ(m_events.Count("paint"), 1u);
    EXPECT_FALSE(GetUpdateRect(window->GetHandle(), nullptr, FALSE));
}

TEST_F(Win32PlatformWindowTest, DisablingIsTold) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    window->SetEnabled(false);
    EXPECT_TRUE(m_events.Has("disabled"));
    window->SetEnabled(true);
    EXPECT_TRUE(m_events.Has("enabled"));
}

TEST_F(Win32PlatformWindowTest, TheOwnersEndIsToldOnce) {
    auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    window.reset();
    EXPECT_EQ(m_events.log, (Log{"destroyed"}));
}

TEST_F(Win32PlatformWindowTest, AWindowDestroyedByTheSystemIsHarmlessAfterwards) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    DestroyWindow(window->GetHandle());
    EXPECT_EQ(m_events.log, (Log{"destroyed"}));
    window->Post(UserMessage::LoadFinished, 1, 2);
    EXPECT_TRUE(window->GetClientRect().IsEmpty());
    EXPECT_FALSE(window->IsVisible());
}

TEST_F(Win32PlatformWindowTest, PostsOfFourThreadsAllArriveInOrder) {
    const auto window = Create(WindowKind::Main, {100, 100, 300, 200}, m_events);
    constexpr std::uintptr_t threads = 4;
    constexpr std::intptr_t each = 500;
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
                window->Post(UserMessage::LoadFinished, thread, i);
        });
    }
    EXPECT_TRUE(DispatchUntil([&] { return received == threads * each; })) << received;
}

} // namespace
} // namespace Quorvex::GUI
