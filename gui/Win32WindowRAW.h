#pragma once

#include "gui/window/WindowSystem.h"

namespace Quorvex::GUI {

class Win32Window;

/// The thin wrapper of one platform window. Its user-data word leads to the object that shares it. GUI thread.
class Win32WindowRAW {
public:
    Win32WindowRAW(IWindowSystem& windowSystem, WindowKind kind, const Rect& clientRect, const String& title,
                   IWindowEvents& events)
        : m_platform(windowSystem.CreatePlatformWindow(kind, clientRect, title, events)) {}

    IPlatformWindow& GetPlatformWindow() const { return *m_platform; }
    /// The window that this one floats above; null for none.
    void SetParent(Win32WindowRAW* parent) {
        m_platform->SetOwner(parent != nullptr ? parent->m_platform.get() : nullptr);
    }

    Win32Window* GetUserData() const { return m_userData; }
    void SetUserData(Win32Window* userData) { m_userData = userData; }

private:
    std::unique_ptr<IPlatformWindow> m_platform;
    Win32Window* m_userData = nullptr;
};

} // namespace Quorvex::GUI
