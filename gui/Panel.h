#pragma once

#include "data/ColorBGRA.h"
#include "gui/CaptionColors.h"
#include "gui/ControlList.h"
#include "gui/EventDelivery.h"
#include "gui/Font.h"
#include "gui/Label.h"
#include "gui/MoveAction.h"
#include "gui/PanelSurface.h"
#include "gui/ResizeAction.h"

namespace Quorvex::GUI {

class Style;

/// The top of a control tree: a list of controls with a rectangle on the desktop. The rectangle is in desktop
/// coordinates, those of the controls in it are in the panel's. The GUI that it is added to decides whether it is
/// painted into the main window or into a window of its own; the panel itself can be moved by its title strip and sized
/// by its edges where it is set so. Panels are managed by SharedPtr and end before their GUI. A panel that shall
/// disappear for a while leaves the GUI and is added again later.
class Panel : public ControlList, public EnableSharedPtrFromThis {
public:
    Panel();
    ~Panel() override;

    /// Paints the panel at its desktop position.
    void Paint() override;
    /// Drops the renderer and the font too; reports "Panel::DeleteContextObjects" on false.
    bool DeleteContextObjects() override;
    void CreateContextObjects() override;

    // The mouse as the GUI delivers it, in desktop coordinates; they return the control in charge.
    Control* OnMouseMove(std::int32_t x, std::int32_t y) override;
    Control* OnMouseLButtonDown(std::int32_t x, std::int32_t y) override;
    Control* OnMouseLButtonUp(std::int32_t x, std::int32_t y) override;
    Control* OnMouseLeave() override;
    std::int32_t OnMouseWheel(std::uintptr_t wParam, std::intptr_t lParam) override;
    std::int32_t OnMouseHWheel(std::uintptr_t wParam, std::intptr_t lParam) override;
    /// The focused control comes first; the key that it leaves is the panel's if it is Escape.
    bool OnKeyDown(std::uint32_t key, std::intptr_t repeatData) override;
    bool OnKeyUp(std::uint32_t key, std::intptr_t repeatData) override;

    /// Desktop coordinates. Places the handles for moving and sizing and asks for a global paint.
    void SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) override;
    void SetVisible(bool isVisible) override;
    /// Raises Exception "Panel::getGUI" while the panel is in no GUI.
    GUI& getGUI() override;
    Panel* GetPanel() override;

    /// Called once there is a renderer to paint with, and again after it was lost. What it raises ends the paint.
    virtual void OnCreate();
    /// The window of this panel is to be closed; it leaves the GUI. The main panel never gets this.
    virtual void Close();
    /// True if the key was used up.
    virtual bool OnEscape();
    /// Whether the panel looks different without the focus.
    virtual bool DrawsFocusState() const;
    /// The window is the active one now, or no longer: the title takes the other colours.
    virtual void SetActive(bool isActive);
    /// The desktop began or ended to compose windows: transparency comes or goes.
    virtual void OnCompositionChanged();
    /// The title takes the desktop's colours as they are now.
    void TakeCaptionColors();
    /// The drags that move and size the panel end where they are.
    void EndGestures();
    /// The control that gets the keys; null for none. The former one learns that it has lost them.
    void SetFocus(Control* control);
    Control* GetFocus() const { return m_focus; }

    /// Makes the window, the renderer and what else is missing for a paint. An unknown window type is reported as
    /// "Panel::EnterPaint", what OnCreate raises as "Panel::EnterPaint: OnCreate failed"; both raise Exception.
    void EnterPaint();
    /// Ties the panel to another one, above which it floats and with which it moves. A tie that would close a circle is
    /// reported as "Panel::SetParent" and not made.
    void SetParent(Panel* newParent);
    /// Asks for a repaint of the window that the panel is painted into.
    void Invalidate();
    /// The panel's place on the desktop changes and nothing else: the window moves with another one.
    void Shift(std::int32_t dx, std::int32_t dy);
    /// The cursor that the mouse has over the panel.
    void SetCursor(CursorShape shape);

    /// Made when it is first asked for. Reports "GetFont" and raises Exception while there is no renderer.
    Font& GetFont();
    /// The style of the GUI, or its form without transparency where the window cannot show it.
    SharedPtr<Style> GetStyle();
    /// Null before the first paint.
    const SharedPtr<Platform::Video::Renderer>& GetRenderer() const { return m_surface.GetRenderer(); }

    /// Straight colour, channels 0 to 1. An alpha below 1 asks for a see-through window.
    const Data::ColorBGRA<float>& GetBackgroundColor() const { return m_backgroundColor; }
    void SetBackgroundColor(const Data::ColorBGRA<float>& color);

    /// A drag of the title strip moves the panel.
    void SetMovable(bool isMovable) { m_isMovable = isMovable; }
    bool IsMovable() const { return m_isMovable; }
    /// A drag of an edge sizes the panel.
    void SetResizable(bool isResizable) { m_isResizable = isResizable; }
    bool IsResizable() const { return m_isResizable; }
    /// The user has moved or sized the panel.
    bool IsChanged() const { return m_isChanged; }
    void SetChanged() { m_isChanged = true; }

    PanelSurface& GetSurface() { return m_surface; }
    const PanelSurface& GetSurface() const { return m_surface; }
    /// Null while the panel is in no GUI.
    GUI* GetGUI() const { return m_gui; }
    /// The GUI calls it when the panel comes and goes.
    void SetGUI(GUI* gui) { m_gui = gui; }

protected:
    /// Paints what lies beneath the controls; the origin is the panel's.
    virtual void PaintBackground();

    Label titleLabelA; ///< Has the colours of an active caption.
    Label titleLabelB; ///< Has those of an inactive one.

private:
    GUI* m_gui = nullptr;
    PanelSurface m_surface;
    EventDelivery m_delivery;
    MoveAction m_moveAction;
    ResizeAction m_resizeAction;
    Control* m_focus = nullptr;
    SharedPtr<Font> m_font;
    SharedPtr<Style> m_opaqueStyle;
    SharedPtr<Style> m_opaqueStyleOf; ///< The style that m_opaqueStyle stands for.
    SharedPtr<Platform::Video::VertexBuffer2D> m_background;
    Data::ColorBGRA<float> m_backgroundColor{138 / 255.0f, 138 / 255.0f, 134 / 255.0f, 1.0f};
    bool m_isBackgroundCleared = false; ///< When m_background was made.
    bool m_isCreated = false;
    bool m_isMovable = false;
    bool m_isResizable = false;
    bool m_isChanged = false;
};

} // namespace Quorvex::GUI
