#include "foundation/Report.h"
#include "foundation/platform/win32/SystemCalls.h"
#include "gui/window/MessageWords.h"
#include "gui/window/win32/Win32Calls.h"
#include "gui/window/win32/Win32PlatformWindow.h"
#include "gui/window/win32/Win32WindowSystem.h"

#include <windowsx.h>

// The half of a window that translates the system's messages. What a message means is the owner's business.

#ifndef WM_DWMCOLORIZATIONCOLORCHANGED
#define WM_DWMCOLORIZATIONCOLORCHANGED 0x0320
#endif

namespace Quorvex::GUI {

LRESULT CALLBACK Win32PlatformWindow::Procedure(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    // The first message of all brings the object along, which the window's user word keeps.
    if (message == WM_NCCREATE) {
        const auto* const created = reinterpret_cast<const CREATESTRUCTW*>(lParam);
        auto* const object = static_cast<Win32PlatformWindow*>(created->lpCreateParams);
        object->m_handle = handle;
        SetWindowField(handle, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(object));
    }
    auto* const window = reinterpret_cast<Win32PlatformWindow*>(GetWindowField(handle, GWLP_USERDATA));
    if (window == nullptr || !window->m_isReady || window->m_handle == nullptr)
        return CallDefaultProcedure(handle, message, wParam, lParam);
    return window->Handle(message, wParam, lParam);
}

LRESULT Win32PlatformWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return 0;
    case WM_PAINT:
        return HandlePaint(wParam, lParam);
    case WM_ERASEBKGND:
        return 1;
    case WM_CLOSE:
        m_events.OnClose();
        return 0;
    case WM_DESTROY:
        m_events.OnDestroyed();
        m_handle = nullptr;
        return 0;
    case UserMessage::LoadFinished:
        m_events.OnUserMessage(message, wParam, lParam);
        return 0;
    case UserMessage::Invalidate:
        Invalidate();
        return 0;
    default:
        return HandleState(message, wParam, lParam);
    }
}

LRESULT Win32PlatformWindow::HandleState(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_MOVE:
    case WM_SIZE:
        m_events.OnMovedOrSized(message == WM_SIZE && wParam == SIZE_MINIMIZED);
        return 0;
    case WM_ACTIVATE:
        m_events.OnActivated(LOWORD(wParam) != WA_INACTIVE);
        // The default handling gives the focus to the window.
        return CallDefaultProcedure(m_handle, message, wParam, lParam);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        m_events.OnFocusChanged(message == WM_SETFOCUS, m_system.Find(reinterpret_cast<HWND>(wParam)));
        return 0;
    case WM_ENABLE:
        m_events.OnEnabled(wParam != 0);
        return 0;
    case WM_CANCELMODE:
        m_events.OnCancelMode();
        return CallDefaultProcedure(m_handle, message, wParam, lParam);
    case WM_MOUSEACTIVATE:
        m_events.OnMouseActivate();
        // What a click on a panel activates is decided above.
        return m_kind == WindowKind::Panel ? MA_NOACTIVATE : CallDefaultProcedure(m_handle, message, wParam, lParam);
    default:
        return HandleDesktop(message, wParam, lParam);
    }
}

LRESULT Win32PlatformWindow::HandleDesktop(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SYSCOLORCHANGE:
    case WM_DWMCOLORIZATIONCOLORCHANGED:
        m_events.OnSystemColorsChanged();
        return 0;
    case WM_DWMCOMPOSITIONCHANGED:
        SetSeeThrough(m_isLayered);
        m_events.OnCompositionChanged();
        return 0;
    case WM_DROPFILES:
        HandleDrop(reinterpret_cast<HANDLE>(wParam));
        return 0;
    case WM_SETCURSOR:
        if (LOWORD(lParam) != HTCLIENT)
            return CallDefaultProcedure(m_handle, message, wParam, lParam);
        ::SetCursor(LoadShape());
        return TRUE;
    default:
        return HandleInput(message, wParam, lParam);
    }
}

LRESULT Win32PlatformWindow::HandleInput(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN:
        m_events.OnKeyDown(static_cast<std::uint32_t>(wParam), lParam);
        return 0;
    case WM_KEYUP:
        m_events.OnKeyUp(static_cast<std::uint32_t>(wParam), lParam);
        return 0;
    case WM_MOUSEMOVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
        return HandleMouse(message, wParam, lParam);
    case WM_MOUSELEAVE:
        HandleLeave();
        return 0;
    default:
        return CallDefaultProcedure(m_handle, message, wParam, lParam);
    }
}

LRESULT Win32PlatformWindow::HandlePaint(WPARAM wParam, LPARAM lParam) {
    if (IsIconic())
        return CallDefaultProcedure(m_handle, WM_PAINT, wParam, lParam);
    // Before the paint, so that an invalidation during it leads to another one.
    if (!ValidateRect(m_handle, nullptr))
        ReportFailure(__LINE__, "ValidateRect");
    m_events.OnPaint();
    return 0;
}

LRESULT Win32PlatformWindow::HandleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    StartTracking();
    POINT position{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const bool isWheel = message == WM_MOUSEWHEEL || message == WM_MOUSEHWHEEL;
    if (!isWheel && !ClientToScreen(m_handle, &position))
        ReportFailure(__LINE__, "ClientToScreen");
    m_events.OnMouseMessage({static_cast<MouseMessageNumber>(message), wParam, lParam,
                             static_cast<std::int32_t>(position.x), static_cast<std::int32_t>(position.y), this});
    return 0;
}

void Win32PlatformWindow::HandleLeave() {
    m_isTracking = false;
    const auto position = static_cast<LPARAM>(GetMessagePos());
    m_events.OnMouseMessage({MouseMessageNumber::Leave, 0, 0, GET_X_LPARAM(position), GET_Y_LPARAM(position), this});
}

void Win32PlatformWindow::StartTracking() {
    if (m_isTracking)
        return;
    auto track = Platform::GetUserCalls().trackMouseEvent;
    if (track == nullptr)
        track = Platform::GetCommonControlCalls().trackMouseEvent;
    if (track == nullptr)
        return;
    TRACKMOUSEEVENT request{sizeof(request), TME_LEAVE, m_handle, 0};
    m_isTracking = track(&request) != 0;
    if (!m_isTracking)
        ReportFailure(__LINE__, "TrackMouseEvent");
}

void Win32PlatformWindow::HandleDrop(HANDLE handle) {
    const auto drop = static_cast<HDROP>(handle);
    constexpr UINT askForCount = 0xFFFFFFFF;
    const UINT count = DragQueryFileA(drop, askForCount, nullptr, 0);
    std::vector<String> paths;
    for (UINT i = 0; i < count; ++i) {
        if (IsUnicodeSystem()) {
            std::u16string path(DragQueryFileW(drop, i, nullptr, 0) + 1, u'\0');
            DragQueryFileW(drop, i, reinterpret_cast<wchar_t*>(path.data()), static_cast<UINT>(path.size()));
            paths.emplace_back(path.c_str());
        } else {
            std::string path(DragQueryFileA(drop, i, nullptr, 0) + 1, '\0');
            DragQueryFileA(drop, i, path.data(), static_cast<UINT>(path.size()));
            paths.emplace_back(path.c_str());
        }
    }
    DragFinish(drop);
    m_events.OnFilesDropped(paths);
}

} // namespace Quorvex::GUI
