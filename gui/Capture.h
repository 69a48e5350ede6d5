#pragma once

#include "gui/window/WindowSystem.h"

#include <vector>

namespace Quorvex::GUI {

class Control;

/// Holds the mouse for one window while a button is down, and knows the controls whose gestures depend on it.
class Capture {
public:
    explicit Capture(IWindowSystem& windowSystem) : m_windowSystem(windowSystem) {}

    void Take(IPlatformWindow& window);
    /// CONTROL ends its gesture when it is told that the mouse has left.
    void Add(Control& control);
    void Remove(Control& control);
    /// Logs "Capture" if the window has lost the mouse in between.
    void Release();
    /// Release, after all gestures were ended.
    void Cancel();
    bool IsHeldBy(const IPlatformWindow& window) const { return m_window == &window; }

private:
    IWindowSystem& m_windowSystem;
    IPlatformWindow* m_window = nullptr;
    std::vector<Control*> m_controls;
};

} // namespace Quorvex::GUI
