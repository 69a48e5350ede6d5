#pragma once

#include "gui/window/headless/HeadlessUser.h"
#include "tests/gui/RecordingEvents.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace Quorvex::GUI {

/// A main window at 100,100 of 200 by 150 pixels and a panel that overlaps its right edge, both still hidden.
class HeadlessFixture : public testing::Test {
protected:
    using Log = std::vector<std::string>;

    std::unique_ptr<HeadlessWindow> Create(WindowKind kind, const Rect& rect, RecordingEvents& events) {
        auto window = m_system.CreatePlatformWindow(kind, rect, "Title", events);
        return std::unique_ptr<HeadlessWindow>(static_cast<HeadlessWindow*>(window.release()));
    }

    void ShowBoth() {
        m_main->Show();
        m_panel->SetOwner(m_main.get());
        m_panel->Show();
        m_system.RunUntilIdle();
        m_mainEvents.Clear();
        m_panelEvents.Clear();
    }

    RecordingEvents m_mainEvents;
    RecordingEvents m_panelEvents;
    HeadlessWindowSystem m_system;
    HeadlessUser m_user{m_system};
    std::unique_ptr<HeadlessWindow> m_main = Create(WindowKind::Main, {100, 100, 300, 250}, m_mainEvents);
    std::unique_ptr<HeadlessWindow> m_panel = Create(WindowKind::Panel, {250, 120, 350, 180}, m_panelEvents);
};

} // namespace Quorvex::GUI
