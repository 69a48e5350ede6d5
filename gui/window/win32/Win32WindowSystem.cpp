#include "gui/window/win32/Win32WindowSystem.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/platform/win32/SystemCalls.h"
#include "gui/window/win32/DwmCalls.h"
#include "gui/window/win32/GdiGlyphSource.h"
#include "gui/window/win32/Win32Calls.h"

#include <ole2.h>

#include <algorithm>

namespace Quorvex::GUI {

namespace {

/// The icon's number in the program's resources.
LPCSTR ProgramIcon() {
    return reinterpret_cast<LPCSTR>(MAKEINTRESOURCE(1));
}

void AskForRealPixels() {
    const auto& dwm = GetDwmCalls();
    const auto& user = Platform::GetUserCalls();
    constexpr int perMonitor = 2;
    if (dwm.setProcessDpiAwareness != nullptr) {
        // Denied: the manifest has asked already.
        const HRESULT result = dwm.setProcessDpiAwareness(perMonitor);
        if (FAILED(result) && result != E_ACCESSDENIED)
            ReportFailure(__LINE__, "SetProcessDpiAwareness", static_cast<std::uint32_t>(result));
    } else if (user.setProcessDPIAware != nullptr && !user.setProcessDPIAware()) {
        ReportFailure(__LINE__, "SetProcessDPIAware");
    }
}

template <class Class>
void FillClass(Class& description, HICON icon) {
    description.style = CS_DBLCLKS;
    description.lpfnWndProc = &Win32PlatformWindow::Procedure;
    description.hInstance = GetModuleHandleA(nullptr);
    description.hIcon = icon;
    description.hCursor = LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
    // Seen for the moment before the first picture only.
    description.hbrBackground = CreateSolidBrush(GetSysColor(COLOR_BTNFACE));
}

} // namespace

Win32WindowSystem::Win32WindowSystem() {
    const HRESULT result = OleInitialize(nullptr);
    m_isOleInitialized = SUCCEEDED(result);
    if (!m_isOleInitialized)
        ReportFailure(__LINE__, "OleInitialize", static_cast<std::uint32_t>(result));
    AskForRealPixels();
}

Win32WindowSystem::~Win32WindowSystem() {
    UnregisterWindowClass();
    if (m_isOleInitialized)
        OleUninitialize();
}

std::unique_ptr<IPlatformWindow> Win32WindowSystem::CreatePlatformWindow(WindowKind kind, const Rect& clientRect,
                                                                         const String& title, IWindowEvents& events) {
    return std::make_unique<Win32PlatformWindow>(*this, kind, clientRect, title, events);
}

void Win32WindowSystem::RegisterWindowClass() {
    if (m_isClassRegistered)
        return;
    HICON icon = LoadIconA(GetModuleHandleA(nullptr), ProgramIcon());
    if (icon == nullptr) {
        ReportFailure(__LINE__, "LoadIconA");
        icon = LoadIconA(nullptr, reinterpret_cast<LPCSTR>(IDI_APPLICATION));
    }
    WNDCLASSW wide{};
    wide.lpszClassName = L"Quorvex";
    WNDCLASSA narrow{};
    narrow.lpszClassName = "Quorvex";
    const bool isUnicode = IsUnicodeSystem();
    isUnicode ? FillClass(wide, icon) : FillClass(narrow, icon);
    if ((isUnicode ? RegisterClassW(&wide) : RegisterClassA(&narrow)) == 0) {
        const char* const name = isUnicode ? "RegisterClassW" : "RegisterClassA";
        ReportFailure(__LINE__, name);
        throw Exception(__LINE__, name);
    }
    m_isClassRegistered = true;
}

void Win32WindowSystem::UnregisterWindowClass() {
    // With a window left the class cannot go; the destructor tries again.
    if (!m_isClassRegistered || !m_windows.empty())
        return;
    m_isClassRegistered = false;
    const bool isDone = IsUnicodeSystem() ? UnregisterClassW(L"Quorvex", GetModuleHandleA(nullptr)) != 0
                                          : UnregisterClassA("Quorvex", GetModuleHandleA(nullptr)) != 0;
    if (!isDone)
        ReportFailure(__LINE__, IsUnicodeSystem() ? "UnregisterClassW" : "UnregisterClassA");
}

IWindowSystem::Dispatched Win32WindowSystem::DispatchNextMessage() {
    const bool isUnicode = IsUnicodeSystem();
    MSG message{};
    const int result = isUnicode ? GetMessageW(&message, nullptr, 0, 0) : GetMessageA(&message, nullptr, 0, 0);
    if (result == -1) {
        ReportFailure(__LINE__, isUnicode ? "GetMessageW" : "GetMessageA");
        return Dispatched::Message;
    }
    if (result == 0) {
        m_exitCode = static_cast<int>(message.wParam);
        UnregisterWindowClass();
        return Dispatched::Quit;
    }
    if (message.message == WM_TIMER && message.hwnd == nullptr)
        DispatchToHook(message);
    isUnicode ? DispatchMessageW(&message) : DispatchMessageA(&message);
    return Dispatched::Message;
}

void Win32WindowSystem::DispatchToHook(const MSG& message) {
    const auto timer = std::ranges::find(m_timers, message.wParam, &Timer::systemIdentifier);
    if (timer != m_timers.end() && m_timerHook)
        m_timerHook(timer->identifier);
}

Win32PlatformWindow* Win32WindowSystem::Find(HWND handle) const {
    const auto found = std::ranges::find(m_windows, handle, &Win32PlatformWindow::GetHandle);
    return handle != nullptr && found != m_windows.end() ? *found : nullptr;
}

void Win32WindowSystem::SetCapture(IPlatformWindow& window) {
    ::SetCapture(static_cast<HWND>(window.GetNativeHandle()));
}

void Win32WindowSystem::ReleaseCapture() {
    if (!::ReleaseCapture())
        ReportFailure(__LINE__, "ReleaseCapture");
}

IPlatformWindow* Win32WindowSystem::WindowFromPoint(std::int32_t x, std::int32_t y) const {
    return Find(::WindowFromPoint({x, y}));
}

HDWP Win32WindowSystem::Defer(HDWP deferred, const WindowPlacement& placement) const {
    auto& window = static_cast<Win32PlatformWindow&>(*placement.window);
    const auto rect = FromSystem(window.WindowRectAround(placement.clientRect));
    const auto above = placement.below != nullptr ? static_cast<HWND>(placement.below->GetNativeHandle()) : nullptr;
    const UINT flags = SWP_NOACTIVATE | (above == nullptr ? SWP_NOZORDER : 0u);
    if (deferred != nullptr) {
        const HDWP next = DeferWindowPos(deferred, window.GetHandle(), above, rect.left, rect.top, rect.Width(),
                                         rect.Height(), flags);
        if (next != nullptr)
            return next;
        ReportFailure(__LINE__, "DeferWindowPos");
    }
    // The common step has failed; the window still belongs there.
    if (!SetWindowPos(window.GetHandle(), above, rect.left, rect.top, rect.Width(), rect.Height(), flags))
        ReportFailure(__LINE__, "SetWindowPos");
    return nullptr;
}

void Win32WindowSystem::MoveWindows(std::span<const WindowPlacement> placements) {
    if (placements.empty())
        return;
    HDWP deferred = BeginDeferWindowPos(static_cast<int>(placements.size()));
    if (deferred == nullptr)
        ReportFailure(__LINE__, "BeginDeferWindowPos");
    for (const auto& placement : placements)
        deferred = Defer(deferred, placement);
    if (deferred != nullptr && !EndDeferWindowPos(deferred))
        ReportFailure(__LINE__, "EndDeferWindowPos");
}

void Win32WindowSystem::SetTimer(std::uintptr_t identifier, std::uint32_t milliseconds) {
    KillTimer(identifier);
    // Without a window the system chooses the number.
    const auto systemIdentifier = ::SetTimer(nullptr, 0, milliseconds, nullptr);
    if (systemIdentifier == 0)
        ReportFailure(__LINE__, "SetTimer");
    else
        m_timers.push_back({identifier, systemIdentifier});
}

void Win32WindowSystem::KillTimer(std::uintptr_t identifier) {
    const auto timer = std::ranges::find(m_timers, identifier, &Timer::identifier);
    if (timer == m_timers.end())
        return;
    if (!::KillTimer(nullptr, timer->systemIdentifier))
        ReportFailure(__LINE__, "KillTimer");
    m_timers.erase(timer);
}

std::unique_ptr<IGlyphSource> Win32WindowSystem::CreateGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth) {
    return std::make_unique<GdiGlyphSource>(cellHeight, meanWidth);
}

} // namespace Quorvex::GUI
