#include "gui/Panel.h"

#include "foundation/Report.h"
#include "gui/GUI.h"
#include "gui/Scale.h"
#include "gui/Style.h"

namespace Quorvex::GUI {

Panel::Panel() : m_surface(*this), m_delivery(*this), m_moveAction(*this), m_resizeAction(*this) {
    TakeCaptionColors();
    add(titleLabelA);
    add(titleLabelB);
    add(m_moveAction);
    add(m_resizeAction);
}

Panel::~Panel() = default;

GUI& Panel::getGUI() {
    if (m_gui == nullptr)
        throw Exception("Panel::getGUI");
    return *m_gui;
}

Panel* Panel::GetPanel() {
    return this;
}

void Panel::OnCreate() {}

void Panel::Close() {
    if (m_gui != nullptr)
        m_gui->RemovePanel(*this);
}

bool Panel::OnEscape() {
    return false;
}

bool Panel::DrawsFocusState() const {
    return false;
}

void Panel::SetActive(bool) {}

void Panel::OnCompositionChanged() {
    m_surface.ConfigureWindow();
    Invalidate();
}

void Panel::TakeCaptionColors() {
    const CaptionColors& colors = GetCaptionColors();
    titleLabelA.SetForegroundColor(colors.activeText);
    titleLabelA.SetBackgroundColor(colors.active);
    titleLabelB.SetForegroundColor(colors.inactiveText);
    titleLabelB.SetBackgroundColor(colors.inactive);
}

void Panel::EndGestures() {
    m_moveAction.OnMouseLeave();
    m_resizeAction.OnMouseLeave();
}

void Panel::SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) {
    ControlList::SetRect(newLeft, newTop, newRight, newBottom);
    const std::int32_t scale = GetScale();
    const std::int32_t width = newRight - newLeft;
    m_moveAction.SetRect(5 * scale, 5 * scale, width - 22 * scale, 20 * scale);
    m_resizeAction.SetRect(0, 0, width, newBottom - newTop);
    Invalidate();
}

void Panel::SetVisible(bool isVisible) {
    if (isVisible == IsVisible())
        return;
    ControlList::SetVisible(isVisible);
    if (!isVisible)
        m_surface.Hide();
    Invalidate();
}

void Panel::Shift(std::int32_t dx, std::int32_t dy) {
    left += dx;
    top += dy;
    right += dx;
    bottom += dy;
}

void Panel::Invalidate() {
    m_surface.MarkDirty();
    if (Panel* host = m_surface.GetHost())
        host->GetSurface().MarkDirty();
    if (m_gui != nullptr)
        m_gui->SchedulePaint();
}

void Panel::SetParent(Panel* newParent) {
    if (newParent == this || (newParent != nullptr && newParent->m_surface.IsTiedTo(*this))) {
        ReportProblem(__LINE__, "Panel::SetParent");
        return;
    }
    m_surface.SetParent(newParent);
}

void Panel::SetCursor(CursorShape shape) {
    if (Win32Window* window = m_surface.GetWindow())
        window->GetPlatformWindow().SetCursor(shape);
}

void Panel::SetBackgroundColor(const Data::ColorBGRA<float>& color) {
    if (color == m_backgroundColor)
        return;
    m_backgroundColor = color;
    cacheValid = false;
    m_surface.ConfigureWindow();
    Invalidate();
}

SharedPtr<Style> Panel::GetStyle() {
    const SharedPtr<Style>& style = getGUI().GetStyle();
    if (!m_surface.HasOwnWindow() || !m_surface.WantsTransparency() || m_surface.IsSeeThrough())
        return style;
    if (!(m_opaqueStyleOf == style)) {
        m_opaqueStyle = style->CreateStyleWithOpaquePanelBackground();
        m_opaqueStyleOf = style;
    }
    return m_opaqueStyle;
}

Font& Panel::GetFont() {
    if (!m_surface.GetRenderer()) {
        ReportProblem(__LINE__, "GetFont");
        throw Exception("GetFont");
    }
    if (!m_font)
        m_font = SharedPtr<Font>(new Font(getGUI().GetWindowSystem(), m_surface.GetRenderer()->GetContext()));
    return *m_font;
}

void Panel::EnterPaint() {
    m_surface.Enter(getGUI());
    if (m_isCreated)
        return;
    try {
        OnCreate();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        ReportProblem(__LINE__, "Panel::EnterPaint: OnCreate failed");
        throw Exception("Panel::EnterPaint: OnCreate failed");
    }
    m_isCreated = true;
}

bool Panel::DeleteContextObjects() {
    const bool isReleased = ControlList::DeleteContextObjects();
    m_background.reset();
    m_font.reset();
    cacheValid = false;
    m_isCreated = false;
    m_surface.ReleaseRenderer();
    if (!isReleased)
        ReportProblem(__LINE__, "Panel::DeleteContextObjects");
    return isReleased;
}

void Panel::CreateContextObjects() {
    m_background.reset();
    if (!m_surface.IsClearedToBackground() && m_backgroundColor.alpha > 0.0f) {
        m_background = m_surface.GetRenderer()->GetContext()->CreateVertexBuffer2D(1);
        QuadWriter(*m_background).Write({0, 0, right - left, bottom - top}, m_backgroundColor);
    }
    m_isBackgroundCleared = m_surface.IsClearedToBackground();
    cacheValid = true;
}

void Panel::Paint() {
    Platform::Video::Renderer& renderer = *m_surface.GetRenderer();
    renderer.Translate(left, top);
    PaintBackground();
    ControlList::Paint();
    renderer.Translate(-left, -top);
}

void Panel::PaintBackground() {
    if (!cacheValid || m_isBackgroundCleared != m_surface.IsClearedToBackground())
        CreateContextObjects();
    if (m_background)
        m_background->Render();
}

} // namespace Quorvex::GUI
