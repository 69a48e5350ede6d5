#include "gui/WindowProcedure.h"

#include "gui/ExceptionBoundary.h"
#include "gui/GUI.h"

namespace Quorvex::GUI {

void WindowProcedure::OnMouseMessage(const MouseMessage& message) noexcept {
    CallWithinBoundary([&] { m_gui.QueueMouseMessage(message); });
}

void WindowProcedure::OnKeyDown(std::uint32_t key, std::intptr_t repeatData) noexcept {
    CallWithinBoundary([&] { m_gui.HandleKeyDown(m_window, key, repeatData); });
}

void WindowProcedure::OnKeyUp(std::uint32_t key, std::intptr_t repeatData) noexcept {
    CallWithinBoundary([&] { m_gui.HandleKeyUp(m_window, key, repeatData); });
}

void WindowProcedure::OnMovedOrSized(bool isMinimized) noexcept {
    CallWithinBoundary([&] { m_gui.HandleMovedOrSized(m_window, isMinimized); });
}

void WindowProcedure::OnPaint() noexcept {
    CallWithinBoundary([&] { m_gui.HandlePaint(m_window); });
}

void WindowProcedure::OnClose() noexcept {
    CallWithinBoundary([&] { m_gui.HandleClose(m_window); });
}

void WindowProcedure::OnDestroyed() noexcept {
    CallWithinBoundary([&] { m_gui.HandleDestroyed(m_window); });
}

void WindowProcedure::OnActivated(bool isActive) noexcept {
    CallWithinBoundary([&] { m_gui.HandleActivated(m_window, isActive); });
}

void WindowProcedure::OnFocusChanged(bool hasFocus, IPlatformWindow* other) noexcept {
    CallWithinBoundary([&] { m_gui.HandleFocusChanged(m_window, hasFocus, other); });
}

void WindowProcedure::OnEnabled(bool isEnabled) noexcept {
    CallWithinBoundary([&] { m_gui.HandleEnabled(m_window, isEnabled); });
}

void WindowProcedure::OnSystemColorsChanged() noexcept {
    CallWithinBoundary([&] { m_gui.HandleSystemColorsChanged(); });
}

void WindowProcedure::OnCompositionChanged() noexcept {
    CallWithinBoundary([&] { m_gui.HandleCompositionChanged(m_window); });
}

void WindowProcedure::OnCancelMode() noexcept {
    CallWithinBoundary([&] { m_gui.HandleCancelMode(); });
}

void WindowProcedure::OnMouseActivate() noexcept {
    CallWithinBoundary([&] { m_gui.HandleMouseActivate(m_window); });
}

void WindowProcedure::OnFilesDropped(const std::vector<String>& paths) noexcept {
    CallWithinBoundary([&] { m_gui.OnFilesDropped(paths); });
}

void WindowProcedure::OnUserMessage(std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) noexcept {
    CallWithinBoundary([&] { m_gui.HandleUserMessage(m_window, number, wParam, lParam); });
}

} // namespace Quorvex::GUI
