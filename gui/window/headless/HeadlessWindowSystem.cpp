#include "gui/window/headless/HeadlessWindowSystem.h"

#include "foundation/Exception.h"
#include "gui/window/headless/HeadlessGlyphSource.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace Quorvex::GUI {

HeadlessWindowSystem::~HeadlessWindowSystem() = default;

std::unique_ptr<IPlatformWindow> HeadlessWindowSystem::CreatePlatformWindow(WindowKind kind, const Rect& clientRect,
                                                                            const String& title,
                                                                            IWindowEvents& events) {
    if (m_desktop.refusesWindows)
        throw Exception(__LINE__, "CreateWindowExW");
    return std::make_unique<HeadlessWindow>(*this, kind, clientRect, title, events);
}

std::uint64_t HeadlessWindowSystem::Register(HeadlessWindow& window) {
    m_windows.insert(m_windows.begin(), &window);
    return ++m_lastIdentifier;
}

void HeadlessWindowSystem::Unregister(HeadlessWindow& window) {
    std::erase(m_windows, &window);
    for (auto* other : m_windows)
        other->ForgetOwner(window);
    if (m_capture == &window)
        m_capture = nullptr;
    if (m_active == &window)
        m_active = nullptr;
}

HeadlessWindow* HeadlessWindowSystem::Find(std::uint64_t identifier) const {
    const auto found = std::ranges::find(m_windows, identifier, &HeadlessWindow::GetIdentifier);
    return found != m_windows.end() ? *found : nullptr;
}

IWindowSystem::Dispatched HeadlessWindowSystem::DispatchNextMessage() {
    for (;;) {
        if (m_hasLostDisplay)
            return Dispatched::Quit;
        if (DispatchWaiting())
            return Dispatched::Message;
        if (TakeQuit())
            return Dispatched::Quit;
        if (DispatchPaint())
            return Dispatched::Message;
        if (RunIdleHook())
            continue;
        if (m_whenIdle == WhenIdle::Quit)
            return Dispatched::Quit;
        WaitForPost();
    }
}

bool HeadlessWindowSystem::DispatchWaiting() {
    return DispatchTimer() || DispatchQueued();
}

bool HeadlessWindowSystem::DispatchQueued() {
    Message message;
    {
        std::lock_guard guard(m_mutex);
        if (m_queue.empty())
            return false;
        message = std::move(m_queue.front());
        m_queue.pop_front();
    }
    message.dispatch();
    return true;
}

bool HeadlessWindowSystem::DispatchTimer() {
    const auto identifier = m_timers.TakeDue(m_now);
    if (!identifier)
        return false;
    if (m_timerHook)
        m_timerHook(*identifier);
    return true;
}

bool HeadlessWindowSystem::DispatchPaint() {
    const auto invalid = std::ranges::find_if(m_windows, &HeadlessWindow::IsInvalid);
    if (invalid == m_windows.end())
        return false;
    (*invalid)->PaintNow();
    return true;
}

bool HeadlessWindowSystem::RunIdleHook() {
    if (!m_idleHook)
        return false;
    m_idleHook();
    const auto nextTimer = m_timers.GetNextDue();
    return m_hasQuit || m_hasLostDisplay || (nextTimer && *nextTimer <= m_now) ||
           std::ranges::any_of(m_windows, &HeadlessWindow::IsInvalid) || HasQueued();
}

bool HeadlessWindowSystem::HasQueued() {
    std::lock_guard guard(m_mutex);
    return !m_queue.empty();
}

bool HeadlessWindowSystem::TakeQuit() {
    return std::exchange(m_hasQuit, false);
}

void HeadlessWindowSystem::WaitForPost() {
    std::unique_lock lock(m_mutex);
    if (!m_arrived.wait_for(lock, m_longestWait, [&] { return !m_queue.empty(); }))
        throw Exception("No message came within the longest wait");
}

std::size_t HeadlessWindowSystem::RunUntilIdle(const std::function<void()>& afterEach) {
    std::size_t count = 0;
    while (DispatchWaiting() || DispatchPaint()) {
        ++count;
        if (afterEach)
            afterEach();
    }
    return count;
}

void HeadlessWindowSystem::PostQuit(int exitCode) {
    m_exitCode = exitCode;
    m_hasQuit = true;
}

void HeadlessWindowSystem::Push(Message message) {
    {
        std::lock_guard guard(m_mutex);
        m_queue.push_back(std::move(message));
    }
    m_arrived.notify_one();
}

void HeadlessWindowSystem::Enqueue(std::uint64_t window, Delivery delivery) {
    Push({false, [this, window, delivery = std::move(delivery)] {
              if (auto* const target = Find(window))
                  delivery(*target);
          }});
}

void HeadlessWindowSystem::EnqueueMouse(std::function<void()> action) {
    Push({true, std::move(action)});
}

void HeadlessWindowSystem::EnqueueAction(std::function<void()> action) {
    Push({false, std::move(action)});
}

void HeadlessWindowSystem::DispatchMouseMessages() {
    std::vector<Message> taken;
    {
        std::lock_guard guard(m_mutex);
        const auto isOther = [](const Message& message) { return !message.isMouse; };
        const auto rest = std::stable_partition(m_queue.begin(), m_queue.end(), isOther);
        taken.assign(std::make_move_iterator(rest), std::make_move_iterator(m_queue.end()));
        m_queue.erase(rest, m_queue.end());
    }
    for (const auto& message : taken)
        message.dispatch();
}

void HeadlessWindowSystem::SetCapture(IPlatformWindow& window) {
    m_capture = static_cast<HeadlessWindow*>(&window);
}

IPlatformWindow* HeadlessWindowSystem::WindowFromPoint(std::int32_t x, std::int32_t y) const {
    const auto hit = std::ranges::find_if(m_windows, [&](auto* window) { return window->IsHit(x, y); });
    return hit != m_windows.end() ? *hit : nullptr;
}

Rect HeadlessWindowSystem::GetWorkAreaAtMouse() const {
    return m_desktop.GetWorkAreaNearest(
        {m_desktop.mouseX, m_desktop.mouseY, m_desktop.mouseX + 1, m_desktop.mouseY + 1});
}

void HeadlessWindowSystem::MoveWindows(std::span<const WindowPlacement> placements) {
    for (const auto& placement : placements) {
        auto& window = static_cast<HeadlessWindow&>(*placement.window);
        window.SetClientRect(placement.clientRect);
        if (placement.below != nullptr)
            PlaceBelow(window, static_cast<HeadlessWindow&>(*placement.below));
    }
}

void HeadlessWindowSystem::PlaceBelow(HeadlessWindow& window, const HeadlessWindow& above) {
    std::erase(m_windows, &window);
    m_windows.insert(std::next(std::ranges::find(m_windows, &above)), &window);
}

void HeadlessWindowSystem::BringToFront(HeadlessWindow& window) {
    std::erase(m_windows, &window);
    // A window never covers those that it owns: they come along.
    const auto isOwned = [&](auto* other) { return other->GetOwner() == &window; };
    m_windows.insert(std::stable_partition(m_windows.begin(), m_windows.end(), isOwned), &window);
}

void HeadlessWindowSystem::SetActiveWindow(HeadlessWindow* window) {
    auto* const former = m_active;
    if (former == window)
        return;
    m_active = window;
    if (former != nullptr)
        former->GetEvents().OnActivated(false);
    if (window != nullptr)
        window->GetEvents().OnActivated(true);
    if (former != nullptr)
        former->GetEvents().OnFocusChanged(false, window);
    if (window != nullptr)
        window->GetEvents().OnFocusChanged(true, former);
}

void HeadlessWindowSystem::SetKeyDown(std::uint32_t key, bool isDown) {
    if (isDown)
        m_keysDown.insert(key);
    else
        m_keysDown.erase(key);
}

void HeadlessWindowSystem::SetTimer(std::uintptr_t identifier, std::uint32_t milliseconds) {
    m_timers.Set(identifier, milliseconds, m_now);
}

void HeadlessWindowSystem::LoseDisplay() {
    m_hasLostDisplay = true;
    m_capture = nullptr;
    m_active = nullptr;
    const auto windows = m_windows;
    for (auto* window : windows) {
        if (std::ranges::find(m_windows, window) != m_windows.end())
            window->Destroy();
    }
}

std::unique_ptr<IGlyphSource> HeadlessWindowSystem::CreateGlyphSource(std::uint32_t cellHeight,
                                                                      std::uint32_t meanWidth) {
    return std::make_unique<HeadlessGlyphSource>(cellHeight, meanWidth);
}

} // namespace Quorvex::GUI
