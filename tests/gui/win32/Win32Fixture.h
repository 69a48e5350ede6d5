#pragma once

#include "gui/window/win32/Win32WindowSystem.h"
#include "tests/gui/RecordingEvents.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace Quorvex::GUI {

/// A window system of User32. Without a desktop (a service, Wine without a display) the tests are skipped.
class Win32Fixture : public testing::Test {
protected:
    using Log = std::vector<std::string>;

    void SetUp() override {
        if (GetSystemMetrics(SM_CXSCREEN) == 0)
            GTEST_SKIP() << "no desktop: the windows of User32 stay untested";
    }

    std::unique_ptr<Win32PlatformWindow> Create(WindowKind kind, const Rect& rect, RecordingEvents& events,
                                                const String& title = "Title") {
        auto window = m_system.CreatePlatformWindow(kind, rect, title, events);
        return std::unique_ptr<Win32PlatformWindow>(static_cast<Win32PlatformWindow*>(window.release()));
    }

    /// Dispatches until the condition holds; false when that takes longer than a desktop can need.
    bool DispatchUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        // A timer keeps the dispatch from waiting for ever when nothing comes.
        m_system.SetTimer(watchdog, 20);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end ||
                m_system.DispatchNextMessage() == IWindowSystem::Dispatched::Quit)
                return condition();
        }
        m_system.KillTimer(watchdog);
        return true;
    }

    void Settle() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(150);
        DispatchUntil([&] { return std::chrono::steady_clock::now() > end; });
    }

    static constexpr std::uintptr_t watchdog = 12345;
    Win32WindowSystem m_system;
    RecordingEvents m_events;
    RecordingEvents m_panelEvents;
};

} // namespace Quorvex::GUI
