#include "gui/window/win32/Win32PlatformWindow.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/platform/win32/SystemCalls.h"
#include "gui/window/win32/DwmCalls.h"
#include "gui/window/win32/Win32Calls.h"
#include "gui/window/win32/Win32Presenter.h"
#include "gui/window/win32/Win32WindowSystem.h"

namespace Quorvex::GUI {

Win32PlatformWindow::Win32PlatformWindow(Win32WindowSystem& system, WindowKind kind, const Rect& clientRect,
                                         const String& title, IWindowEvents& events)
    : m_system(system), m_kind(kind), m_events(events) {
    m_system.RegisterWindowClass();
    // The procedure stores the handle with the first message already.
    if (CreateHandle(clientRect, title) == nullptr) {
        const char* const name = IsUnicodeSystem() ? "CreateWindowExW" : "CreateWindowExA";
        ReportFailure(__LINE__, name);
        throw Exception(__LINE__, name);
    }
    m_system.Add(*this);
    m_isReady = true;
}

Win32PlatformWindow::~Win32PlatformWindow() {
    if (m_handle != nullptr && !DestroyWindow(m_handle))
        ReportFailure(__LINE__, "DestroyWindow");
    m_system.Remove(*this);
}

DWORD Win32PlatformWindow::GetStyle() const {
    return m_kind == WindowKind::Main ? WS_OVERLAPPEDWINDOW : WS_POPUP;
}

DWORD Win32PlatformWindow::GetExtendedStyle() const {
    // A tool window has no button in the task bar.
    return m_kind == WindowKind::Main ? 0 : WS_EX_TOOLWINDOW;
}

HWND Win32PlatformWindow::CreateHandle(const Rect& clientRect, const String& title) {
    const auto around = FromSystem(WindowRectAround(clientRect));
    if (IsUnicodeSystem())
        return CreateWindowExW(GetExtendedStyle(), L"Quorvex", Platform::WideUnits(title.ToWide()), GetStyle(),
                               around.left, around.top, around.Width(), around.Height(), nullptr, nullptr,
                               GetModuleHandleA(nullptr), this);
    return CreateWindowExA(GetExtendedStyle(), "Quorvex", title.ToANSI().Narrow(), GetStyle(), around.left, around.top,
                           around.Width(), around.Height(), nullptr, nullptr, GetModuleHandleA(nullptr), this);
}

RECT Win32PlatformWindow::WindowRectAround(const Rect& clientRect) const {
    auto rect = ToSystem(clientRect);
    if (!AdjustWindowRectEx(&rect, GetStyle(), FALSE, GetExtendedStyle()))
        ReportFailure(__LINE__, "AdjustWindowRect");
    return rect;
}

void Win32PlatformWindow::ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                                     std::uint32_t pitchBytes) {
    if (m_handle != nullptr)
        ShowBuffer(m_handle, bits, width, height, pitchBytes);
}

void Win32PlatformWindow::ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                                        std::uint32_t pitchBytes) {
    if (m_handle != nullptr)
        ShowBufferWithAlpha(m_handle, bits, width, height, pitchBytes);
}

void Win32PlatformWindow::DispatchMouseMessagesAndHide() {
    constexpr UINT firstMouseMessage = 0x200;
    constexpr UINT lastMouseMessage = 0x20E;
    MSG message;
    while (PeekMessageA(&message, nullptr, firstMouseMessage, lastMouseMessage, PM_REMOVE))
        DispatchMessageA(&message);
    Hide();
}

bool Win32PlatformWindow::IsCompositionEnabled() const {
    return m_system.IsCompositionEnabled();
}

Rect Win32PlatformWindow::GetClientRect() const {
    RECT rect{};
    if (m_handle == nullptr)
        return {};
    if (!::GetClientRect(m_handle, &rect)) {
        ReportFailure(__LINE__, "GetClientRect");
        return {};
    }
    POINT first{rect.left, rect.top};
    POINT last{rect.right, rect.bottom};
    if (!ClientToScreen(m_handle, &first) || !ClientToScreen(m_handle, &last))
        ReportFailure(__LINE__, "ClientToScreen");
    return FromSystem({first.x, first.y, last.x, last.y});
}

void Win32PlatformWindow::SetClientRect(const Rect& rect) {
    const auto around = FromSystem(WindowRectAround(rect));
    if (!SetWindowPos(m_handle, nullptr, around.left, around.top, around.Width(), around.Height(),
                      SWP_NOACTIVATE | SWP_NOZORDER))
        ReportFailure(__LINE__, "SetWindowPos");
}

void Win32PlatformWindow::Show() {
    ShowWindow(m_handle, m_kind == WindowKind::Main ? SW_SHOW : SW_SHOWNOACTIVATE);
}

void Win32PlatformWindow::Hide() {
    ShowWindow(m_handle, SW_HIDE);
}

void Win32PlatformWindow::Activate() {
    SetLastError(0);
    // Null is an answer too: no window of this thread was active.
    if (SetActiveWindow(m_handle) == nullptr && GetLastError() != 0)
        ReportFailure(__LINE__, "SetActiveWindow");
}

void Win32PlatformWindow::BringToFront() {
    if (!SetWindowPos(m_handle, HWND_TOP, 0, 0, 0, 0, SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE))
        ReportFailure(__LINE__, "SetWindowPos");
}

void Win32PlatformWindow::SetTitle(const String& title) {
    const bool isDone = IsUnicodeSystem() ? SetWindowTextW(m_handle, Platform::WideUnits(title.ToWide())) != 0
                                          : SetWindowTextA(m_handle, title.ToANSI().Narrow()) != 0;
    if (!isDone)
        ReportFailure(__LINE__, IsUnicodeSystem() ? "SetWindowTextW" : "SetWindowTextA");
}

HCURSOR Win32PlatformWindow::LoadShape() const {
    // In the order of CursorShape.
    const LPSTR names[]{reinterpret_cast<LPSTR>(IDC_ARROW),    reinterpret_cast<LPSTR>(IDC_SIZEWE),
                        reinterpret_cast<LPSTR>(IDC_SIZENS),   reinterpret_cast<LPSTR>(IDC_SIZENWSE),
                        reinterpret_cast<LPSTR>(IDC_SIZENESW), reinterpret_cast<LPSTR>(IDC_HAND),
                        reinterpret_cast<LPSTR>(IDC_WAIT)};
    return LoadCursorA(nullptr, names[static_cast<std::size_t>(m_cursor)]);
}

void Win32PlatformWindow::SetCursor(CursorShape shape) {
    if (shape == m_cursor)
        return;
    m_cursor = shape;
    // Only over the window; elsewhere the cursor is somebody else's until the mouse comes back.
    if (m_isTracking)
        ::SetCursor(LoadShape());
}

void Win32PlatformWindow::SetOwner(IPlatformWindow* owner) {
    const auto handle = owner != nullptr ? reinterpret_cast<LONG_PTR>(owner->GetNativeHandle()) : 0;
    SetLastError(0);
    if (SetWindowField(m_handle, GWLP_HWNDPARENT, handle) == 0 && GetLastError() != 0)
        ReportFailure(__LINE__, IsUnicodeSystem() ? "SetWindowLongPtrW" : "SetWindowLongPtrA");
}

void Win32PlatformWindow::SetExtendedStyle(DWORD style, bool isSet) {
    const auto current = GetWindowField(m_handle, GWL_EXSTYLE);
    const auto bits = static_cast<LONG_PTR>(style);
    SetWindowField(m_handle, GWL_EXSTYLE, isSet ? current | bits : current & ~bits);
}

bool Win32PlatformWindow::SetLayered(bool isLayered) {
    // A layered window is all content: the system draws no frame around it.
    const bool canBeLayered = m_kind == WindowKind::Panel && Platform::GetUserCalls().updateLayeredWindow != nullptr;
    m_isLayered = isLayered && canBeLayered;
    SetExtendedStyle(WS_EX_LAYERED, m_isLayered);
    SetSeeThrough(m_isLayered);
    return m_isLayered == isLayered;
}

/// Has the compositor take the alpha of what is drawn, without blurring what lies behind, and draw no frame of its own.
void Win32PlatformWindow::SetSeeThrough(bool isSeeThrough) {
    const auto& calls = GetDwmCalls();
    if (!IsCompositionEnabled())
        return;
    if (calls.enableBlurBehindWindow != nullptr) {
        // An empty region: the blur is on, which brings the alpha, but nowhere.
        const HRGN nowhere = CreateRectRgn(0, 0, -1, -1);
        DWM_BLURBEHIND blur{DWM_BB_ENABLE | DWM_BB_BLURREGION, isSeeThrough, nowhere, FALSE};
        ReportDwmFailure(__LINE__, "DwmEnableBlurBehindWindow", calls.enableBlurBehindWindow(m_handle, &blur));
        if (nowhere != nullptr)
            DeleteObject(nowhere);
    }
    if (calls.setWindowAttribute != nullptr) {
        const DWORD policy = isSeeThrough ? DWMNCRP_DISABLED : DWMNCRP_USEWINDOWSTYLE;
        ReportDwmFailure(__LINE__, "DwmSetWindowAttribute",
                         calls.setWindowAttribute(m_handle, DWMWA_NCRENDERING_POLICY, &policy, sizeof(policy)));
    }
}

void Win32PlatformWindow::Flash(std::uint32_t count, std::uint32_t timeoutMilliseconds) {
    const auto flash = Platform::GetUserCalls().flashWindowEx;
    if (flash == nullptr)
        return;
    FLASHWINFO info{sizeof(info), m_handle, FLASHW_ALL, count, timeoutMilliseconds};
    flash(&info);
}

bool Win32PlatformWindow::Invalidate() {
    if (InvalidateRect(m_handle, nullptr, FALSE))
        return true;
    ReportFailure(__LINE__, "InvalidateRect");
    return false;
}

void Win32PlatformWindow::Post(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) {
    const HWND handle = m_handle;
    if (handle == nullptr)
        return;
    const bool isDone = IsUnicodeSystem() ? PostMessageW(handle, number, wParam, lParam) != 0
                                          : PostMessageA(handle, number, wParam, lParam) != 0;
    if (!isDone)
        ReportFailure(__LINE__, IsUnicodeSystem() ? "PostMessageW" : "PostMessageA");
}

} // namespace Quorvex::GUI
