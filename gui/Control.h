#pragma once

#include "foundation/Function.h"
#include "gui/Rect.h"

#include <cstdint>

namespace Quorvex::GUI {

class GUI;
class Panel;

/// The leaf of the control tree. A control paints through the renderer of its panel; there is no platform window behind
/// it. Its rectangle, and every mouse position that it is given, is in pixels of the enclosing Panel, unless a comment
/// says otherwise. A new control is visible, disabled, and empty: the owner places, enables and attaches it. The tree
/// belongs to the GUI thread; nothing in it locks.
///
/// The mouse operations return the control that goes on receiving the mouse, or null: a control that stays in charge of
/// a gesture returns itself, one that is done returns null, so that drags need no call of their own to hold the mouse.
class Control {
public:
    Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    /// Called only between the begin and the end of a frame, on visible controls.
    virtual void Paint() = 0;
    /// Releases all that was made from the video context and gets ready to make it again. False if something could not
    /// be released.
    virtual bool DeleteContextObjects() = 0;
    /// Builds what Paint draws with and sets cacheValid; Paint calls it while cacheValid is false.
    virtual void CreateContextObjects();
    virtual void OnCacheReset();
    virtual bool IsHit(std::int32_t x, std::int32_t y);
    /// The innermost control at the position, or null.
    virtual Control* GetControlAt(std::int32_t x, std::int32_t y);
    virtual Control* OnMouseMove(std::int32_t x, std::int32_t y);
    // The operations ending in Global reach a control in a listener list of the GUI, wherever the mouse is, in desktop
    // coordinates. A result other than 0 from the last listener ends the delivery.
    virtual std::int32_t OnMouseMoveGlobal(std::int32_t x, std::int32_t y);
    virtual Control* OnMouseLButtonDown(std::int32_t x, std::int32_t y);
    virtual std::int32_t OnMouseLButtonDownGlobal(std::int32_t x, std::int32_t y);
    virtual Control* OnMouseLButtonUp(std::int32_t x, std::int32_t y);
    virtual std::int32_t OnMouseLButtonUpGlobal(std::int32_t x, std::int32_t y);
    virtual Control* OnMouseReserved();
    virtual Control* OnMouseLeave();
    virtual Control* OnFocusGained();
    virtual Control* OnFocusLost();
    /// Virtual-key codes of the home platform. True if the key was used up.
    virtual bool OnKeyDown(std::uint32_t key, std::intptr_t repeatData);
    virtual bool OnKeyUp(std::uint32_t key, std::intptr_t repeatData);
    /// The words of the wheel message: delta in the signed high half of wParam, 120 a notch; desktop position in the
    /// signed halves of lParam.
    virtual std::int32_t OnMouseWheel(std::uintptr_t wParam, std::intptr_t lParam);
    virtual std::int32_t OnMouseHWheel(std::uintptr_t wParam, std::intptr_t lParam);
    virtual void SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom);
    virtual bool IsEnabled() const;
    virtual void SetEnabled(bool isEnabled);
    virtual void SetVisible(bool isVisible);
    virtual bool IsVisible() const;
    /// Raises Exception if the control is not attached.
    virtual GUI& getGUI();
    /// Null while the control is not attached.
    virtual Panel* GetPanel();
    /// Not owned; ControlList::add calls it.
    virtual void SetParentControl(Control* newParent);

    Rect GetRect() const { return {left, top, right, bottom}; }

    /// Called by SetVisible when the value changes.
    Function<Control&> visibilityChanged;

protected:
    /// A control does not repaint itself: this asks its panel, if it is attached to one.
    void InvalidatePanel();

    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0; ///< Exclusive, as is bottom.
    std::int32_t bottom = 0;
    bool enabled = false;
    /// Vertex buffers and textures are there and fit the present rectangle.
    bool cacheValid = false;
    bool visible = true;
    Control* parent = nullptr;
};

} // namespace Quorvex::GUI
