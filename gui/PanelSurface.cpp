#include "gui/PanelSurface.h"

#include "foundation/Report.h"
#include "gui/GUI.h"

namespace Quorvex::GUI {

namespace {

/// The state of the context that a frame uses. A frame can fall into another one, when a system call of the paint
/// delivers a message that paints; it leaves the outer one's state as it found it.
class FrameScope {
public:
    FrameScope(GUI& gui, Platform::Video::Context& context)
        : m_gui(gui), m_context(context), m_outerTarget(context.renderTarget), m_outerBlending(context.blendingEnabled),
          m_outerX(context.translateX), m_outerY(context.translateY) {
        m_gui.SetDrawing(true);
    }
    FrameScope(const FrameScope&) = delete;
    FrameScope& operator=(const FrameScope&) = delete;
    ~FrameScope() {
        m_context.ResetTarget();
        m_gui.SetDrawing(m_outerTarget.get() != nullptr);
        if (!m_outerTarget)
            return;
        m_context.SetRenderTarget(m_outerTarget);
        if (m_outerBlending)
            m_outerTarget->EnableBlending();
        else
            m_outerTarget->DisableBlending();
        m_outerTarget->Translate(m_outerX - m_context.translateX, m_outerY - m_context.translateY);
    }

private:
    GUI& m_gui;
    Platform::Video::Context& m_context;
    SharedPtr<Platform::Video::Renderer> m_outerTarget;
    bool m_outerBlending;
    std::int32_t m_outerX;
    std::int32_t m_outerY;
};

} // namespace

PanelSurface::~PanelSurface() {
    Release();
}

void PanelSurface::SetWindowType(std::string_view windowType, Panel* host) {
    if (m_windowType == windowType && m_host == host)
        return;
    // The panel vanishes from one window and appears in another.
    if (m_host != nullptr)
        m_host->GetSurface().MarkDirty();
    if (host != nullptr)
        host->GetSurface().MarkDirty();
    m_windowType = windowType;
    m_host = host;
    m_isDirty = true;
    m_panel.OnCacheReset();
}

bool PanelSurface::IsTiedTo(const Panel& other) const {
    for (const Panel* panel = m_parent; panel != nullptr; panel = panel->GetSurface().m_parent)
        if (panel == &other)
            return true;
    return false;
}

Panel* PanelSurface::GetWindowPanel() {
    if (m_host != nullptr)
        return m_host;
    return HasOwnWindow() ? &m_panel : nullptr;
}

Win32Window* PanelSurface::GetWindow() {
    Panel* panel = GetWindowPanel();
    return panel != nullptr ? panel->GetSurface().m_window.get() : nullptr;
}

void PanelSurface::Enter(GUI& gui) {
    if (m_windowType != WindowType::System && m_windowType != WindowType::Own) {
        ReportProblem(__LINE__, "Panel::EnterPaint");
        throw Exception("Panel::EnterPaint");
    }
    m_gui = &gui;
    gui.RegisterSurface(m_panel);
    if (m_host != nullptr)
        EnterHost();
    else
        EnterOwnWindow(gui);
}

void PanelSurface::EnterHost() {
    ReleaseWindow(m_host->GetSurface().m_window.get());
    m_renderer = m_host->GetSurface().m_renderer;
}

void PanelSurface::EnterOwnWindow(GUI& gui) {
    if (!m_window) {
        const bool isMain = gui.GetMainPanel().get() == &m_panel;
        m_renderer.reset();
        m_window = Win32Window::Create(gui, isMain ? WindowKind::Main : WindowKind::Panel, m_panel.GetRect(),
                                       gui.GetProgramName(), m_panel);
    }
    UpdateOwner(gui);
    if (!m_renderer) {
        m_renderer = gui.CreateRenderer(m_window);
        m_isConfigured = false;
    }
    if (!m_isConfigured)
        ConfigureWindow();
    UpdateSize();
}

void PanelSurface::UpdateOwner(GUI& gui) {
    Win32Window* owner = m_parent != nullptr ? m_parent->GetSurface().GetWindow() : nullptr;
    if (owner == nullptr)
        owner = gui.GetMainWindow();
    if (owner != m_window.get())
        m_window->SetParent(owner);
}

void PanelSurface::UpdateSize() {
    const Rect rect = m_panel.GetRect();
    if (rect.IsEmpty())
        return;
    const auto width = static_cast<std::uint32_t>(rect.Width());
    const auto height = static_cast<std::uint32_t>(rect.Height());
    if (width == m_renderer->GetWidth() && height == m_renderer->GetHeight())
        return;
    m_renderer->SetSize(width, height);
    m_isDirty = true;
}

void PanelSurface::ConfigureWindow() {
    m_isConfigured = m_window && m_renderer;
    if (!m_isConfigured)
        return;
    const bool isWanted = WantsTransparency() && m_window->IsCompositionEnabled() && m_renderer->HasAlphaChannel();
    const bool wasSeeThrough = m_isSeeThrough;
    m_isSeeThrough = m_window->GetPlatformWindow().SetLayered(isWanted) && isWanted;
    m_isDirty = true;
    // The style, and with it colours that controls keep in their quads, goes by what the window can show.
    if (m_isSeeThrough != wasSeeThrough)
        m_panel.OnCacheReset();
}

bool PanelSurface::WantsTransparency() const {
    return m_panel.GetBackgroundColor().alpha < 1.0f;
}

void PanelSurface::Hide() {
    if (m_window)
        m_window->GetPlatformWindow().Hide();
}

void PanelSurface::ReleaseRenderer() {
    m_renderer.reset();
    m_isDirty = true;
}

void PanelSurface::ReleaseWindow(Win32Window* newParent) {
    if (!m_window)
        return;
    m_gui->DetachWindow(*m_window, newParent);
    m_window->DetachPanel();
    m_renderer.reset();
    // This may happen within an event of the window, which must not end under the caller's feet.
    m_gui->RetireWindow(std::move(m_window));
}

void PanelSurface::Leave() {
    Hide();
    m_parent = nullptr;
    SetWindowType(WindowType::System, nullptr);
    m_isDirty = true;
    if (m_window)
        m_window->SetParent(nullptr);
}

void PanelSurface::Release() {
    ReleaseWindow(nullptr);
    m_renderer.reset();
    if (m_gui != nullptr)
        m_gui->ForgetPanel(m_panel);
    m_gui = nullptr;
}

SharedPtr<Win32Window> PanelSurface::TakeDeadWindow() {
    m_window->DetachPanel();
    return std::move(m_window);
}

void PanelSurface::Redraw(GUI& gui) {
    if (HasOwnWindow() && m_renderer && m_isDirty && !m_panel.GetRect().IsEmpty())
        DrawFrame(gui);
}

void PanelSurface::DrawFrame(GUI& gui) {
    Platform::Video::Context& context = *m_renderer->GetContext();
    const FrameScope scope(gui, context);
    context.SetRenderTarget(m_renderer);
    context.clearColor = m_isSeeThrough ? Data::ColorBGRA<float>{} : m_panel.GetBackgroundColor();
    m_renderer->BeginPaint();
    m_renderer->EnableBlending();
    const Rect rect = m_panel.GetRect();
    for (const SharedPtr<Panel>& panel : gui.GetPanels()) {
        if (panel->GetSurface().GetWindowPanel() != &m_panel || !panel->IsVisible())
            continue;
        m_renderer->Translate(-rect.left, -rect.top);
        panel->Paint();
        m_renderer->Translate(rect.left, rect.top);
    }
    m_renderer->DisableBlending();
    m_renderer->EndPaint();
    m_isDirty = false;
}

void PanelSurface::Present(GUI& gui) {
    if (!HasOwnWindow() || !m_renderer || m_panel.GetRect().IsEmpty())
        return;
    try {
        while (!m_renderer->Present()) {
            m_isDirty = true;
            Redraw(gui);
        }
    } catch (const std::exception& exception) {
        ReportProblem(__LINE__, exception.what());
    }
}

} // namespace Quorvex::GUI
