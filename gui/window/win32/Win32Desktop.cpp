#include "foundation/Report.h"
#include "foundation/Version.h"
#include "foundation/platform/win32/SystemCalls.h"
#include "gui/window/win32/DwmCalls.h"
#include "gui/window/win32/Win32Calls.h"
#include "gui/window/win32/Win32WindowSystem.h"

// What the system tells about the desktop: monitors, resolution, composition, colours.

namespace Quorvex::GUI {

namespace {

BOOL CALLBACK MonitorEnumProc(HMONITOR, HDC, LPRECT rect, LPARAM argument) {
    reinterpret_cast<std::vector<Rect>*>(argument)->push_back(FromSystem(*rect));
    return TRUE;
}

/// A number under the desktop's key of the registry; empty where it is missing.
std::optional<std::uint32_t> ReadDwmValue(const char* name) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\DWM", 0, KEY_QUERY_VALUE, &key) !=
        ERROR_SUCCESS)
        return std::nullopt;
    DWORD value = 0;
    DWORD size = sizeof(value);
    DWORD type = 0;
    const auto result = RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<LPBYTE>(&value), &size);
    RegCloseKey(key);
    if (result != ERROR_SUCCESS || type != REG_DWORD || size != sizeof(value))
        return std::nullopt;
    return value;
}

bool IsHighContrast() {
    HIGHCONTRASTA contrast{};
    contrast.cbSize = sizeof(contrast);
    if (!SystemParametersInfoA(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0)) {
        ReportFailure(__LINE__, "SystemParametersInfoA");
        return false;
    }
    return (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

} // namespace

std::vector<Rect> Win32WindowSystem::GetMonitors() const {
    std::vector<Rect> monitors;
    const auto enumerate = Platform::GetUserCalls().enumDisplayMonitors;
    if (enumerate == nullptr)
        return monitors;
    if (!enumerate(nullptr, nullptr, &MonitorEnumProc, reinterpret_cast<LPARAM>(&monitors)))
        ReportFailure(__LINE__, "EnumDisplayMonitors");
    return monitors;
}

Rect Win32WindowSystem::GetPrimaryScreen() const {
    return {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

Rect Win32WindowSystem::GetWorkAreaNearest(const Rect& rect) const {
    const auto& calls = Platform::GetUserCalls();
    if (calls.monitorFromRect == nullptr || calls.getMonitorInfoA == nullptr)
        return GetPrimaryScreen();
    const auto wanted = ToSystem(rect);
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    if (calls.getMonitorInfoA(calls.monitorFromRect(&wanted, MONITOR_DEFAULTTONEAREST), &info))
        return FromSystem(info.rcWork);
    ReportFailure(__LINE__, "GetMonitorInfoA");
    return GetPrimaryScreen();
}

Rect Win32WindowSystem::GetWorkAreaAtMouse() const {
    POINT mouse{};
    if (!GetCursorPos(&mouse))
        ReportFailure(__LINE__, "GetCursorPos");
    return GetWorkAreaNearest(FromSystem({mouse.x, mouse.y, mouse.x + 1, mouse.y + 1}));
}

std::uint32_t Win32WindowSystem::GetScreenDpi() const {
    constexpr std::uint32_t usualDpi = 96;
    const HDC screen = GetDC(nullptr);
    if (screen == nullptr) {
        ReportFailure(__LINE__, "GetDC");
        return usualDpi;
    }
    const auto dpi = static_cast<std::uint32_t>(GetDeviceCaps(screen, LOGPIXELSX));
    ReleaseDC(nullptr, screen);
    return dpi;
}

bool Win32WindowSystem::IsCompositionEnabled() const {
    if (IsVersionAtLeast(6, 2, 0))
        return true;
    const auto ask = GetDwmCalls().isCompositionEnabled;
    if (!IsVistaOrLater() || ask == nullptr)
        return false;
    BOOL isEnabled = FALSE;
    const HRESULT result = ask(&isEnabled);
    if (FAILED(result))
        ReportFailure(__LINE__, "DwmIsCompositionEnabled", static_cast<std::uint32_t>(result));
    return SUCCEEDED(result) && isEnabled != FALSE;
}

void Win32WindowSystem::FlushComposition() {
    if (const auto flush = GetDwmCalls().flush)
        ReportDwmFailure(__LINE__, "DwmFlush", flush());
}

std::optional<bool> Win32WindowSystem::HasGradientCaptions() const {
    // Captions with a gradient came with version 4.10.
    if (!IsVersionAtLeast(4, 10, 0))
        return std::nullopt;
    BOOL hasGradients = FALSE;
    if (SystemParametersInfoA(SPI_GETGRADIENTCAPTIONS, 0, &hasGradients, 0))
        return hasGradients != FALSE;
    ReportFailure(__LINE__, "SystemParametersInfoA");
    return std::nullopt;
}

std::optional<IWindowSystem::Colorization> Win32WindowSystem::GetColorization() const {
    // Later systems tint captions in another way, earlier ones through the compositor's glass.
    const bool isWindows8 = IsVersionAtLeast(6, 2, 0) && !IsVersionAtLeast(10, 0, 0);
    if (!isWindows8 || IsHighContrast())
        return std::nullopt;
    const auto color = ReadDwmValue("ColorizationColor");
    const auto balance = ReadDwmValue("ColorizationColorBalance");
    if (!color || !balance)
        return std::nullopt;
    return Colorization{*color & 0xFFFFFF, *balance};
}

std::uint32_t Win32WindowSystem::GetForegroundFlashCount() const {
    constexpr std::uint32_t usualCount = 3;
    DWORD count = 0;
    if (SystemParametersInfoA(SPI_GETFOREGROUNDFLASHCOUNT, 0, &count, 0))
        return count;
    return usualCount;
}

std::uint32_t Win32WindowSystem::GetCaretBlinkMilliseconds() const {
    constexpr std::uint32_t usualTime = 530;
    const UINT time = GetCaretBlinkTime();
    return time == 0 || time == INFINITE ? usualTime : time;
}

} // namespace Quorvex::GUI
