#pragma once

#include "gui/window/x11/X11WindowSystem.h"
#include "tests/gui/RecordingEvents.h"
#include "tests/gui/x11/Onlooker.h"
#include "tests/gui/x11/VirtualDisplay.h"

#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Quorvex::GUI {

/// A picture in which every pixel differs from its neighbours.
inline std::vector<std::uint8_t> MakePicture(std::uint32_t width, std::uint32_t height, std::uint32_t seed) {
    std::vector<std::uint8_t> bits(std::size_t{width} * height * 4);
    std::uint32_t state = seed * 2654435761u + 1;
    for (auto& byte : bits) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(state >> 24);
    }
    return bits;
}

inline std::vector<std::uint8_t> WithoutAlpha(const std::vector<std::uint8_t>& bgra) {
    std::vector<std::uint8_t> bgr;
    for (std::size_t i = 0; i < bgra.size(); ++i) {
        if (i % 4 != 3)
            bgr.push_back(bgra[i]);
    }
    return bgr;
}

/// A window system on the shared display in memory, and someone who looks on.
class X11Fixture : public testing::Test {
protected:
    using Log = std::vector<std::string>;

    void SetUp() override {
        if (!VirtualDisplay::Shared().IsRunning())
            GTEST_SKIP() << "no Xvfb on this machine: the X11 windows stay untested";
        Connect(VirtualDisplay::Shared());
    }

    void Connect(const VirtualDisplay& display) {
        m_system.emplace(display.GetName());
        m_onlooker.emplace(display.GetName());
        m_onlooker->MoveMouse(0, 0);
    }

    std::unique_ptr<X11Window> Create(WindowKind kind, const Rect& rect, RecordingEvents& events,
                                      const String& title = "Title") {
        auto window = m_system->CreatePlatformWindow(kind, rect, title, events);
        return std::unique_ptr<X11Window>(static_cast<X11Window*>(window.release()));
    }

    /// Dispatches until the condition holds; false when that takes longer than a server can need.
    bool DispatchUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        // A timer keeps the dispatch from waiting for ever when nothing comes.
        m_system->SetTimer(watchdog, 20);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end ||
                m_system->DispatchNextMessage() == IWindowSystem::Dispatched::Quit)
                return condition();
        }
        m_system->KillTimer(watchdog);
        return true;
    }

    /// Dispatches what the server has sent so far and what follows from it.
    void Settle() {
        for (int i = 0; i < 3; ++i) {
            XSync(m_system->GetConnection().Get(), 0);
            int ticks = 0;
            DispatchUntil([&] { return ++ticks > 3 && XPending(m_system->GetConnection().Get()) == 0; });
        }
    }

    static constexpr std::uintptr_t watchdog = 12345;
    std::optional<X11WindowSystem> m_system;
    std::optional<Onlooker> m_onlooker;
    RecordingEvents m_events;
    RecordingEvents m_panelEvents;
};

} // namespace Quorvex::GUI
