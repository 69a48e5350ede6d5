#pragma once

#include "foundation/SharedPtr.h"
#include "gui/Win32Window.h"
#include "video/Renderer.h"

#include <string_view>

namespace Quorvex::GUI {

class GUI;
class Panel;

/// How a panel comes to the screen.
namespace WindowType {
/// On a surface that needs nobody below it: the main window's, or a free window where nothing lies below the panel.
inline constexpr std::string_view System = "SystemWindow";
/// In a top-level window of its own, tied to the panel that it partly covers.
inline constexpr std::string_view Own = "OwnGUIWindow";
} // namespace WindowType

/// The part of a panel that knows where it is painted: into the window of another panel, its host, or into a window and
/// with a renderer of its own. GUI thread.
class PanelSurface {
public:
    explicit PanelSurface(Panel& panel) : m_panel(panel) {}
    PanelSurface(const PanelSurface&) = delete;
    PanelSurface& operator=(const PanelSurface&) = delete;
    ~PanelSurface();

    std::string_view GetWindowType() const { return m_windowType; }
    /// HOST is the panel into whose window this one is painted, null for a window of its own.
    void SetWindowType(std::string_view windowType, Panel* host);

    /// Makes or gives up the window and the renderer, as the type wants it. Reports "Panel::EnterPaint" and raises
    /// Exception for an unknown type.
    void Enter(GUI& gui);
    /// Gives up renderer and window.
    void Release();
    /// Gives up the renderer alone; the next Enter makes it again.
    void ReleaseRenderer();
    /// Decides again whether the window is see-through: the desktop's composition or the panel's colour has changed.
    void ConfigureWindow();
    void Hide();
    /// The panel leaves its GUI: the window is hidden and tied to nobody, and kept for the next time.
    void Leave();
    /// The platform has destroyed the window: hands its object out, to end later than the event that tells of it.
    SharedPtr<Win32Window> TakeDeadWindow();

    /// Draws the panel, and those that it hosts, in one frame, if it is dirty and has a window and a size.
    void Redraw(GUI& gui);
    /// Shows the last frame; draws it again as often as the device was lost. A failure is reported and ends the try.
    void Present(GUI& gui);

    /// The panel whose window this one is painted into: itself, or its host. Null before it is decided.
    Panel* GetWindowPanel();
    bool HasOwnWindow() const { return m_window.get() != nullptr; }
    const SharedPtr<Win32Window>& GetOwnWindow() const { return m_window; }
    /// The window that the panel is painted into, or null.
    Win32Window* GetWindow();
    const SharedPtr<Platform::Video::Renderer>& GetRenderer() const { return m_renderer; }
    Panel* GetHost() const { return m_host; }
    /// The panel that this one is tied to, or null.
    Panel* GetParent() const { return m_parent; }
    void SetParent(Panel* parent) { m_parent = parent; }
    bool IsTiedTo(const Panel& other) const;

    void MarkDirty() { m_isDirty = true; }
    bool IsDirty() const { return m_isDirty; }
    /// The window lets what lies behind it through.
    bool IsSeeThrough() const { return m_isSeeThrough; }
    /// The panel's colour asks for it, whether the desktop can show it or not.
    bool WantsTransparency() const;
    /// Whether the frame begins with the panel's own colour, so that it need not be painted.
    bool IsClearedToBackground() const { return HasOwnWindow() && !m_isSeeThrough; }

private:
    void EnterOwnWindow(GUI& gui);
    void EnterHost();
    /// The windows that float above this one go to NEW_PARENT.
    void ReleaseWindow(Win32Window* newParent);
    void UpdateOwner(GUI& gui);
    void UpdateSize();
    void DrawFrame(GUI& gui);

    Panel& m_panel;
    /// The GUI that knows of window and renderer, also after the panel has left it.
    GUI* m_gui = nullptr;
    std::string_view m_windowType = WindowType::System;
    Panel* m_host = nullptr;
    Panel* m_parent = nullptr;
    SharedPtr<Win32Window> m_window;
    SharedPtr<Platform::Video::Renderer> m_renderer;
    bool m_isDirty = true;
    bool m_isSeeThrough = false;
    bool m_isConfigured = false;
};

} // namespace Quorvex::GUI
