#pragma once

#include "gui/Control.h"

#include <list>

namespace Quorvex::GUI {

/// The node of the control tree. It paints and asks its children in the order of the list, so the last one lies on top.
/// It does not own them: they are, as a rule, fields of the class that derives from it. There is no layout: a subclass
/// places its children in its own SetRect. A child stands in one list only and stays there; one that shall not show is
/// made invisible.
class ControlList : public Control {
public:
    /// Raises Exception "ControlList::add" for the list itself.
    void add(Control& child);

    void Paint() override;
    /// Asks all children, whatever the others answer; reports "ControlList::DeleteContextObjects" on false.
    bool DeleteContextObjects() override;
    void OnCacheReset() override;
    Control* GetControlAt(std::int32_t x, std::int32_t y) override;
    Control* OnFocusLost() override;

protected:
    std::list<Control*> children;
};

} // namespace Quorvex::GUI
