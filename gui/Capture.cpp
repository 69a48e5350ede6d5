#include "gui/Capture.h"

#include "foundation/Log.h"
#include "gui/Control.h"

#include <algorithm>

namespace Quorvex::GUI {

void Capture::Take(IPlatformWindow& window) {
    if (m_window != nullptr && m_window != &window)
        Release();
    m_window = &window;
    m_windowSystem.SetCapture(window);
}

void Capture::Add(Control& control) {
    if (std::find(m_controls.begin(), m_controls.end(), &control) == m_controls.end())
        m_controls.push_back(&control);
}

void Capture::Remove(Control& control) {
    std::erase(m_controls, &control);
}

void Capture::Release() {
    if (m_window != nullptr) {
        if (m_windowSystem.GetCapture() != m_window)
            // Another program may take the mouse at any time: a line for the log, no report for the user.
            WriteLogLine(__LINE__, "Capture");
        m_window = nullptr;
        m_windowSystem.ReleaseCapture();
    }
    m_controls.clear();
}

void Capture::Cancel() {
    const std::vector<Control*> controls = m_controls;
    for (Control* control : controls)
        control->OnMouseLeave();
    Release();
}

} // namespace Quorvex::GUI
