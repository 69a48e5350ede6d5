#pragma once

#include "foundation/platform/win32/LoadableLibrary.h"

#include <windows.h>

#include <dwmapi.h>

namespace Quorvex::GUI {

/// Calls of the desktop's compositor and of DPI awareness, which older systems lack. A null pointer means that this
/// system lacks the call, and every caller tests for it; tests put pointers of their own in. GUI thread.
struct DwmCalls {
    DwmCalls();

    Platform::LoadableLibrary library;
    HRESULT(WINAPI* isCompositionEnabled)(BOOL*) = nullptr;
    HRESULT(WINAPI* enableBlurBehindWindow)(HWND, const DWM_BLURBEHIND*) = nullptr;
    HRESULT(WINAPI* flush)() = nullptr;
    HRESULT(WINAPI* setWindowAttribute)(HWND, DWORD, LPCVOID, DWORD) = nullptr;

    Platform::LoadableLibrary scalingLibrary;
    HRESULT(WINAPI* setProcessDpiAwareness)(int) = nullptr;
};

DwmCalls& GetDwmCalls();

/// Reports the failure of a call of the compositor by its name; that composition is off is none.
void ReportDwmFailure(int line, const char* name, HRESULT result);

} // namespace Quorvex::GUI
