#pragma once

#include "foundation/Version.h"
#include "foundation/platform/win32/WideText.h"
#include "gui/Rect.h"

#include <windows.h>

namespace Quorvex::GUI {

/// The forms, wide and narrow, of the calls that exist in both; which one is used is decided at run time, once for the
/// whole program.

inline LRESULT CallDefaultProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return IsUnicodeSystem() ? DefWindowProcW(window, message, wParam, lParam)
                             : DefWindowProcA(window, message, wParam, lParam);
}

inline LONG_PTR SetWindowField(HWND window, int index, LONG_PTR value) {
    return IsUnicodeSystem() ? SetWindowLongPtrW(window, index, value) : SetWindowLongPtrA(window, index, value);
}

inline LONG_PTR GetWindowField(HWND window, int index) {
    return IsUnicodeSystem() ? GetWindowLongPtrW(window, index) : GetWindowLongPtrA(window, index);
}

inline RECT ToSystem(const Rect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

inline Rect FromSystem(const RECT& rect) {
    return {static_cast<std::int32_t>(rect.left), static_cast<std::int32_t>(rect.top),
            static_cast<std::int32_t>(rect.right), static_cast<std::int32_t>(rect.bottom)};
}

} // namespace Quorvex::GUI
