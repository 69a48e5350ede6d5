#include "gui/window/x11/X11WindowSystem.h"

#include "gui/window/x11/FreeTypeGlyphSource.h"

#include <X11/cursorfont.h>

#include <algorithm>

namespace Quorvex::GUI {

namespace {

/// In the order of CursorShape. The core font has no slanted double arrows; its corners show the same directions, and
/// cursor themes replace them with arrows.
constexpr std::array<unsigned int, 7> cursorFontShapes{
    XC_left_ptr, XC_sb_h_double_arrow, XC_sb_v_double_arrow, XC_bottom_right_corner, XC_bottom_left_corner, XC_hand2,
    XC_watch};

} // namespace

X11WindowSystem::X11WindowSystem(const char* displayName)
    : m_connection(displayName), m_opaqueVisual(X11Visual::FindOpaque(m_connection.Get(), m_connection.GetScreen())) {
    // The root window tells of compositors that start and of a screen that changes its size.
    XSelectInput(m_connection.Get(), m_connection.GetRoot(), StructureNotifyMask);
}

X11WindowSystem::~X11WindowSystem() = default;

std::unique_ptr<IPlatformWindow> X11WindowSystem::CreatePlatformWindow(WindowKind kind, const Rect& clientRect,
                                                                       const String& title, IWindowEvents& events) {
    return std::make_unique<X11Window>(*this, kind, clientRect, title, events);
}

std::uint64_t X11WindowSystem::Register(X11Window& window) {
    m_windows.push_back(&window);
    return ++m_lastIdentifier;
}

void X11WindowSystem::Unregister(X11Window& window) {
    std::erase(m_windows, &window);
    m_pointer.Forget(window);
    if (m_focusSource == &window)
        m_focusSource = nullptr;
    for (auto* other : m_windows)
        other->Forget(window);
}

void X11WindowSystem::AnnounceOwnerOfPanels(const X11Window& owner) {
    for (auto* window : m_windows) {
        if (window->GetOwner() == &owner)
            window->AnnounceOwner();
    }
}

X11Window* X11WindowSystem::Find(::Window handle) const {
    const auto found = std::ranges::find(m_windows, handle, &X11Window::GetHandle);
    return found != m_windows.end() ? *found : nullptr;
}

void X11WindowSystem::PostQuit(int exitCode) {
    m_exitCode = exitCode;
    m_hasQuit = true;
}

bool X11WindowSystem::IsKeyDown(std::uint32_t key) const {
    return m_keyboard.IsKeyDown(key);
}

IPlatformWindow* X11WindowSystem::WindowFromPoint(std::int32_t x, std::int32_t y) const {
    // The last mouse message answers for its own place.
    if (auto* const hovered = m_pointer.FindHovered(x, y))
        return hovered;
    auto* const display = m_connection.Get();
    auto current = m_connection.GetRoot();
    while (!m_connection.IsGone()) {
        int localX = 0;
        int localY = 0;
        ::Window child = noXid;
        if (XTranslateCoordinates(display, m_connection.GetRoot(), current, x, y, &localX, &localY, &child) == 0 ||
            child == noXid)
            break;
        // A window of this program lies inside the frame that the window manager gave it.
        if (auto* const window = Find(child))
            return window;
        current = child;
    }
    return nullptr;
}

Rect X11WindowSystem::GetWorkAreaAtMouse() const {
    ::Window root = noXid;
    ::Window child = noXid;
    int x = 0;
    int y = 0;
    int windowX = 0;
    int windowY = 0;
    unsigned int state = 0;
    if (!m_connection.IsGone())
        XQueryPointer(m_connection.Get(), m_connection.GetRoot(), &root, &child, &x, &y, &windowX, &windowY, &state);
    return m_monitors.GetWorkAreaNearest({x, y, x + 1, y + 1});
}

void X11WindowSystem::MoveWindows(std::span<const WindowPlacement> placements) {
    std::vector<X11Window*> moved;
    for (const auto& placement : placements) {
        auto& window = static_cast<X11Window&>(*placement.window);
        if (window.Place(placement.clientRect))
            moved.push_back(&window);
        if (placement.below != nullptr)
            window.PlaceBelow(static_cast<X11Window&>(*placement.below));
    }
    // All requests of one step reach the server together.
    m_connection.Flush();
    for (auto* window : moved) {
        if (!window->IsIconic())
            window->GetEvents().OnMovedOrSized(false);
    }
}

void X11WindowSystem::FlushComposition() {
    // Compositors do not say when they have drawn; at least the picture is on its way to them.
    m_connection.Flush();
}

std::uint32_t X11WindowSystem::GetSystemColor(SystemColor role) const {
    // Desktops have no common place for these; neutral colours go with all of them.
    switch (role) {
    case SystemColor::ActiveCaption:
    case SystemColor::GradientActiveCaption:
        return 0x00D8B48A;
    case SystemColor::InactiveCaption:
    case SystemColor::GradientInactiveCaption:
        return 0x00DCDCDC;
    case SystemColor::CaptionText:
        return 0x00000000;
    case SystemColor::InactiveCaptionText:
        return 0x00606060;
    }
    return 0;
}

void X11WindowSystem::SetTimer(std::uintptr_t identifier, std::uint32_t milliseconds) {
    m_timers.Set(identifier, milliseconds, Now());
}

std::unique_ptr<IGlyphSource> X11WindowSystem::CreateGlyphSource(std::uint32_t cellHeight, std::uint32_t meanWidth) {
    return std::make_unique<FreeTypeGlyphSource>(cellHeight, meanWidth);
}

std::optional<X11Visual> X11WindowSystem::FindVisualWithAlpha() {
    if (!m_compositor.IsRunning())
        return std::nullopt;
    return X11Visual::FindWithAlpha(m_connection.Get(), m_connection.GetScreen());
}

bool X11WindowSystem::HasWindowManager() const {
    return !m_connection
                .GetNumbers(m_connection.GetRoot(), m_connection.GetAtom(X11Atom::NetSupportingWmCheck), XA_WINDOW, 1)
                .empty();
}

Cursor X11WindowSystem::GetCursor(CursorShape shape) {
    const auto index = static_cast<std::size_t>(shape);
    if (m_cursors[index] == noXid)
        m_cursors[index] = XCreateFontCursor(m_connection.Get(), cursorFontShapes[index]);
    return m_cursors[index];
}

} // namespace Quorvex::GUI
