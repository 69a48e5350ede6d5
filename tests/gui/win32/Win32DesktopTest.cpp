#include "tests/gui/win32/Win32Fixture.h"

#include "foundation/Version.h"
#include "foundation/platform/win32/SystemCalls.h"
#include "gui/window/win32/DwmCalls.h"
#include "gui/window/win32/GdiGlyphSource.h"
#include "tests/support/LogCapture.h"

#include <algorithm>

namespace Quorvex::GUI {
namespace {

using Win32DesktopTest = Win32Fixture;
using Dispatched = IWindowSystem::Dispatched;

/// Puts another pointer into a table of calls for a while.
template <class Pointer>
class Replaced {
public:
    Replaced(Pointer& place, Pointer pointer) : m_place(place), m_former(place) { place = pointer; }
    ~Replaced() { m_place = m_former; }
    Replaced(const Replaced&) = delete;
    Replaced& operator=(const Replaced&) = delete;

private:
    Pointer& m_place;
    Pointer m_former;
};

TEST_F(Win32DesktopTest, MonitorsHoldThePrimaryScreen) {
    const auto monitors = m_system.GetMonitors();
    EXPECT_NE(std::ranges::find(monitors, m_system.GetPrimaryScreen()), monitors.end());
}

TEST_F(Win32DesktopTest, WithoutEnumerationThereAreNoMonitors) {
    const Replaced lacking(Platform::GetUserCalls().enumDisplayMonitors, {});
    EXPECT_TRUE(m_system.GetMonitors().empty());
}

TEST_F(Win32DesktopTest, WorkAreasLieOnTheirMonitor) {
    const auto screen = m_system.GetPrimaryScreen();
    const auto area = m_system.GetWorkAreaNearest({10, 10, 20, 20});
    EXPECT_FALSE(area.IsEmpty());
    EXPECT_EQ(area.Intersected(screen), area);
    EXPECT_FALSE(m_system.GetWorkAreaAtMouse().IsEmpty());
}

TEST_F(Win32DesktopTest, AnOldSystemHasTheScreenAsItsWorkArea) {
    const Replaced lacking(Platform::GetUserCalls().monitorFromRect, {});
    EXPECT_EQ(m_system.GetWorkAreaNearest({10, 10, 20, 20}), m_system.GetPrimaryScreen());
}

TEST_F(Win32DesktopTest, TheResolutionIsThatOfTheScreen) {
    const HDC screen = GetDC(nullptr);
    EXPECT_EQ(m_system.GetScreenDpi(), static_cast<std::uint32_t>(GetDeviceCaps(screen, LOGPIXELSX)));
    ReleaseDC(nullptr, screen);
}

HRESULT WINAPI CompositionIsOff(BOOL* isEnabled) {
    *isEnabled = FALSE;
    return S_OK;
}

HRESULT WINAPI CompositionIsOn(BOOL* isEnabled) {
    *isEnabled = TRUE;
    return S_OK;
}

HRESULT WINAPI CompositionFails(BOOL*) {
    return E_FAIL;
}

TEST_F(Win32DesktopTest, CompositionFollowsTheVersionAndThenTheSystem) {
    auto& place = GetDwmCalls().isCompositionEnabled;
    {
        const ScopedSystemVersion newest({6, 2, 0});
        const Replaced off(place, &CompositionIsOff);
        EXPECT_TRUE(m_system.IsCompositionEnabled());
    }
    {
        const ScopedSystemVersion middle({6, 1, 0});
        const Replaced on(place, &CompositionIsOn);
        EXPECT_TRUE(m_system.IsCompositionEnabled());
        const Replaced off(place, &CompositionIsOff);
        EXPECT_FALSE(m_system.IsCompositionEnabled());
        const Replaced failing(place, &CompositionFails);
        EXPECT_FALSE(m_system.IsCompositionEnabled());
    }
    const ScopedSystemVersion old({5, 1, 0});
    const Replaced on(place, &CompositionIsOn);
    EXPECT_FALSE(m_system.IsCompositionEnabled());
}

TEST_F(Win32DesktopTest, OnlyWindowsEightTintsCaptionsByTheRegistry) {
    HKEY key = nullptr;
    ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\DWM", 0, nullptr, 0, KEY_ALL_ACCESS,
                              nullptr, &key, nullptr),
              ERROR_SUCCESS);
    const DWORD color = 0xC4123456;
    const DWORD balance = 78;
    RegSetValueExA(key, "ColorizationColor", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&color), 4);
    RegSetValueExA(key, "ColorizationColorBalance", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&balance), 4);
    for (const SystemVersion version : {SystemVersion{6, 1, 0}, SystemVersion{10, 0, 0}}) {
        const ScopedSystemVersion other(version);
        EXPECT_FALSE(m_system.GetColorization()) << version.major << '.' << version.minor;
    }
    for (const SystemVersion version : {SystemVersion{6, 2, 0}, SystemVersion{6, 3, 0}}) {
        const ScopedSystemVersion eight(version);
        const auto tint = m_system.GetColorization();
        ASSERT_TRUE(tint) << version.minor;
        EXPECT_EQ(tint->color, 0x123456u);
        EXPECT_EQ(tint->balancePercent, 78u);
    }
    RegDeleteValueA(key, "ColorizationColorBalance");
    const ScopedSystemVersion eight({6, 2, 0});
    EXPECT_FALSE(m_system.GetColorization());
    RegDeleteValueA(key, "ColorizationColor");
    RegCloseKey(key);
}

TEST_F(Win32DesktopTest, OldSystemsHaveNoGradientCaptions) {
    EXPECT_TRUE(m_system.HasGradientCaptions().has_value());
    const ScopedSystemVersion old({4, 0, 0});
    EXPECT_FALSE(m_system.HasGradientCaptions().has_value());
}

TEST_F(Win32DesktopTest, ColoursAndTimesAreTheSystems) {
    EXPECT_EQ(m_system.GetSystemColor(SystemColor::CaptionText), GetSysColor(COLOR_CAPTIONTEXT));
    EXPECT_GT(m_system.GetForegroundFlashCount(), 0u);
    EXPECT_GT(m_system.GetCaretBlinkMilliseconds(), 0u);
    EXPECT_LT(m_system.GetCaretBlinkMilliseconds(), 100000u);
}

TEST_F(Win32DesktopTest, WindowFromPointKnowsItsOwnWindowsOnly) {
    const auto window = Create(WindowKind::Panel, {100, 100, 200, 200}, m_events);
    window->Show();
    Settle();
    EXPECT_EQ(m_system.WindowFromPoint(150, 150), window.get());
    EXPECT_EQ(m_system.WindowFromPoint(600, 600), nullptr);
}

TEST_F(Win32DesktopTest, TheCaptureIsTheSystems) {
    const auto window = Create(WindowKind::Panel, {100, 100, 200, 200}, m_events);
    window->Show();
    Settle();
    m_system.SetCapture(*window);
    EXPECT_EQ(m_system.GetCapture(), window.get());
    m_system.ReleaseCapture();
    EXPECT_EQ(m_system.GetCapture(), nullptr);
}

class Counter {
public:
    void Tick(std::uintptr_t identifier) { ticks.push_back(identifier); }
    std::vector<std::uintptr_t> ticks;
};

TEST_F(Win32DesktopTest, TimersReachTheHookUnderTheirOwnNumbers) {
    Counter counter;
    Function<std::uintptr_t> hook;
    hook.Bind(&counter, &Counter::Tick);
    m_system.SetTimerHook(hook);
    m_system.SetTimer(7, 20);
    while (counter.ticks.size() < 2)
        ASSERT_EQ(m_system.DispatchNextMessage(), Dispatched::Message);
    EXPECT_EQ(counter.ticks[0], 7u);
    m_system.KillTimer(7);
    const auto count = counter.ticks.size();
    Settle();
    EXPECT_EQ(std::ranges::count(counter.ticks, 7u), static_cast<std::ptrdiff_t>(count));
}

TEST_F(Win32DesktopTest, QuitComesWithItsCode) {
    m_system.PostQuit(5);
    while (m_system.DispatchNextMessage() == Dispatched::Message) {
    }
    EXPECT_EQ(m_system.GetExitCode(), 5);
}

TEST_F(Win32DesktopTest, APanelIsShownWithoutLayersWhereTheCallIsMissing) {
    const Replaced lacking(Platform::GetUserCalls().updateLayeredWindow, {});
    const auto panel = Create(WindowKind::Panel, {100, 100, 200, 200}, m_panelEvents);
    EXPECT_FALSE(panel->SetLayered(true));
}

constexpr auto compositionDisabled = static_cast<HRESULT>(0x80263001);
HRESULT blurResult = S_OK;
HRESULT attributeResult = S_OK;

HRESULT WINAPI BlurAnswers(HWND, const DWM_BLURBEHIND*) {
    return blurResult;
}

HRESULT WINAPI AttributeAnswers(HWND, DWORD, LPCVOID, DWORD) {
    return attributeResult;
}

TEST_F(Win32DesktopTest, FailuresOfTheCompositorAreReportedUnlessItIsOff) {
    const Replaced blur(GetDwmCalls().enableBlurBehindWindow, &BlurAnswers);
    const Replaced attribute(GetDwmCalls().setWindowAttribute, &AttributeAnswers);
    const ScopedSystemVersion version({6, 2, 0});
    const auto panel = Create(WindowKind::Panel, {100, 100, 200, 200}, m_panelEvents);
    const Quorvex::Test::LogCapture log;
    blurResult = attributeResult = compositionDisabled;
    panel->SetLayered(true);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
    blurResult = attributeResult = E_FAIL;
    panel->SetLayered(false);
    EXPECT_TRUE(log.HasLineEndingIn("DwmEnableBlurBehindWindow failed with error code 2147500037")) << log.Text();
    EXPECT_TRUE(log.HasLineEndingIn("DwmSetWindowAttribute failed with error code 2147500037")) << log.Text();
}

HRESULT WINAPI FlushFails() {
    return E_FAIL;
}

HRESULT WINAPI FlushFindsNoComposition() {
    return compositionDisabled;
}

TEST_F(Win32DesktopTest, AFailingFlushIsReportedByName) {
    const Quorvex::Test::LogCapture log;
    {
        const Replaced off(GetDwmCalls().flush, &FlushFindsNoComposition);
        m_system.FlushComposition();
        const Replaced lacking(GetDwmCalls().flush, {});
        m_system.FlushComposition();
        EXPECT_TRUE(log.IsEmpty()) << log.Text();
    }
    const Replaced failing(GetDwmCalls().flush, &FlushFails);
    m_system.FlushComposition();
    EXPECT_TRUE(log.HasLineEndingIn("DwmFlush failed with error code 2147500037")) << log.Text();
}

BOOL WINAPI EnumerationFails(HDC, LPCRECT, MONITORENUMPROC, LPARAM) {
    return FALSE;
}

TEST_F(Win32DesktopTest, AFailingEnumerationIsReportedByName) {
    const Quorvex::Test::LogCapture log;
    const Replaced failing(Platform::GetUserCalls().enumDisplayMonitors, &EnumerationFails);
    EXPECT_TRUE(m_system.GetMonitors().empty());
    EXPECT_NE(log.Text().find("EnumDisplayMonitors failed with error code "), std::string::npos) << log.Text();
}

TEST(GdiGlyphs, ABitmapThatCannotBeMadeIsReportedByName) {
    GdiGlyphSource glyphs(14, 5);
    const Quorvex::Test::LogCapture log;
    EXPECT_THROW(glyphs.BeginBitmap(0x40000000, 0x40000000), Exception);
    EXPECT_NE(log.Text().find("CreateDIBSection failed with error code "), std::string::npos) << log.Text();
}

TEST(GdiGlyphs, LettersHaveBoxesAndDotsInsideThem) {
    GdiGlyphSource glyphs(14, 5);
    const auto& widths = glyphs.GetWidths()['E'];
    EXPECT_GT(widths.b, 1);
    glyphs.BeginBitmap(20, 14);
    glyphs.DrawCharacter('E', 4 - widths.a, 0);
    const auto bits = glyphs.ReadBitmap();
    ASSERT_EQ(bits.size(), 20u * 14 * 4);
    std::int32_t first = 20;
    std::int32_t last = -1;
    for (std::int32_t i = 0; i < 20 * 14; ++i) {
        const auto offset = static_cast<std::size_t>(i) * 4;
        EXPECT_TRUE(bits[offset] == 0 || bits[offset] == 255) << "anti-aliased";
        if (bits[offset] != 0) {
            first = std::min(first, i % 20);
            last = std::max(last, i % 20);
        }
    }
    // Hinting may leave the outermost columns of the box empty, but nothing lies outside.
    EXPECT_GE(first, 4);
    EXPECT_LT(last, 4 + widths.b);
    EXPECT_GE(last - first, 2);
}

TEST(GdiGlyphs, RowsComeTopDown) {
    GdiGlyphSource glyphs(28, 10);
    glyphs.BeginBitmap(30, 28);
    glyphs.DrawCharacter('_', 5, 0);
    const auto bits = glyphs.ReadBitmap();
    const auto middle = bits.begin() + static_cast<std::ptrdiff_t>(bits.size() / 2);
    EXPECT_EQ(std::ranges::count(bits.begin(), middle, 255), 0);
    EXPECT_GT(std::ranges::count(middle, bits.end(), 255), 0);
}

TEST(GdiGlyphs, UmlautsHaveGlyphsOfTheirOwn) {
    GdiGlyphSource glyphs(28, 10);
    std::vector<std::vector<std::uint8_t>> pictures;
    for (const int character : {0x75, 0xFC}) {
        glyphs.BeginBitmap(30, 28);
        glyphs.DrawCharacter(static_cast<std::uint8_t>(character), 5, 0);
        pictures.push_back(glyphs.ReadBitmap());
    }
    EXPECT_NE(pictures[0], pictures[1]);
}

} // namespace
} // namespace Quorvex::GUI
