#include "gui/ControlList.h"

#include "foundation/Report.h"

namespace Quorvex::GUI {

void ControlList::add(Control& child) {
    if (&child == this)
        throw Exception("ControlList::add");
    child.SetParentControl(this);
    children.push_back(&child);
}

void ControlList::Paint() {
    for (Control* child : children)
        if (child->IsVisible())
            child->Paint();
}

bool ControlList::DeleteContextObjects() {
    bool isReleased = true;
    for (Control* child : children)
        isReleased = child->DeleteContextObjects() && isReleased;
    if (!isReleased)
        ReportProblem(__LINE__, "ControlList::DeleteContextObjects");
    return isReleased;
}

void ControlList::OnCacheReset() {
    for (Control* child : children)
        child->OnCacheReset();
    Control::OnCacheReset();
}

Control* ControlList::GetControlAt(std::int32_t x, std::int32_t y) {
    Control* hit = nullptr;
    for (Control* child : children)
        if (child->IsVisible() && child->IsHit(x, y) && child->GetRect().Contains(x, y))
            hit = child;
    return hit != nullptr ? hit->GetControlAt(x, y) : nullptr;
}

Control* ControlList::OnFocusLost() {
    for (Control* child : children)
        child->OnFocusLost();
    return nullptr;
}

} // namespace Quorvex::GUI
