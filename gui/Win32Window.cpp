#include "gui/Win32Window.h"

#include "gui/GUI.h"

namespace Quorvex::GUI {

SharedPtr<Win32Window> Win32Window::Create(GUI& gui, WindowKind kind, const Rect& clientRect, const String& title,
                                           Panel& panel) {
    SharedPtr<Win32Window> window(new Win32Window(gui, panel));
    window->m_raw =
        std::make_unique<Win32WindowRAW>(gui.GetWindowSystem(), kind, clientRect, title, window->m_procedure);
    window->m_raw->SetUserData(window.get());
    return window;
}

Win32Window::Win32Window(GUI& gui, Panel& panel) : m_gui(gui), m_procedure(gui, *this), m_panel(&panel) {
    m_gui.CountWindow(1);
}

Win32Window::~Win32Window() {
    m_gui.CountWindow(-1);
    // The platform tells of the window's end while it goes; by then it belongs to nobody.
    m_panel = nullptr;
    m_raw.reset();
}

SharedPtr<Win32Window> Win32Window::SmartPointerFromWin32WindowRAW(const Win32WindowRAW* raw) {
    Win32Window* window = raw != nullptr ? raw->GetUserData() : nullptr;
    if (window == nullptr)
        throw Exception("Win32Window::SmartPointerFromWin32WindowRAW");
    return window->SharedPtrFromThis(window);
}

void Win32Window::SetParentOfAllChilds(std::span<const SharedPtr<Panel>> panels, const Win32Window& parent,
                                       Win32Window* newParent) {
    for (const SharedPtr<Panel>& panel : panels) {
        Win32Window* window = panel->GetSurface().GetOwnWindow().get();
        if (window != nullptr && window != newParent && window->m_parent == &parent)
            window->SetParent(newParent);
    }
}

void Win32Window::SetParent(Win32Window* parent) {
    if (m_parent == parent)
        return;
    m_raw->SetParent(parent != nullptr ? parent->m_raw.get() : nullptr);
    m_parent = parent;
}

void* Win32Window::GetNativeHandle() const {
    return GetPlatformWindow().GetNativeHandle();
}

bool Win32Window::IsLayered() const {
    return GetPlatformWindow().IsLayered();
}

void Win32Window::ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                             std::uint32_t pitchBytes) {
    GetPlatformWindow().ShowOpaque(bits, width, height, pitchBytes);
}

void Win32Window::ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                                std::uint32_t pitchBytes) {
    GetPlatformWindow().ShowWithAlpha(bits, width, height, pitchBytes);
}

void Win32Window::DispatchMouseMessagesAndHide() {
    GetPlatformWindow().DispatchMouseMessagesAndHide();
}

bool Win32Window::IsCompositionEnabled() const {
    return GetPlatformWindow().IsCompositionEnabled();
}

} // namespace Quorvex::GUI
