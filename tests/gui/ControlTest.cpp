#include "gui/Control.h"

#include "gui/GUI.h"
#include "tests/gui/RecordingControl.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI::Test {
namespace {

/// As plain as a control can be.
class PlainControl : public Control {
public:
    void Paint() override {}
    bool DeleteContextObjects() override { return true; }
    bool IsCacheValid() const { return cacheValid; }
    void SetCacheValid() { cacheValid = true; }
    void Count(Control& control) {
        ++changes;
        lastChanged = &control;
    }

    int changes = 0;
    Control* lastChanged = nullptr;
};

TEST(Control, StartsDisabledVisibleAndEmpty) {
    PlainControl control;
    EXPECT_FALSE(control.IsEnabled());
    EXPECT_TRUE(control.IsVisible());
    EXPECT_EQ(control.GetRect(), Rect());
    EXPECT_FALSE(control.IsCacheValid());
}

TEST(Control, AnswersEventsByTheTableOfDefaults) {
    PlainControl control;
    Control* self = &control;
    EXPECT_TRUE(control.IsHit(-1, 99));
    EXPECT_EQ(control.GetControlAt(1, 2), self);
    EXPECT_EQ(control.OnMouseMove(1, 2), nullptr);
    EXPECT_EQ(control.OnMouseMoveGlobal(1, 2), 0);
    EXPECT_EQ(control.OnMouseLButtonDown(1, 2), self);
    EXPECT_EQ(control.OnMouseLButtonDownGlobal(1, 2), 0);
    EXPECT_EQ(control.OnMouseLButtonUp(1, 2), self);
    EXPECT_EQ(control.OnMouseLButtonUpGlobal(1, 2), 0);
    EXPECT_EQ(control.OnMouseReserved(), self);
    EXPECT_EQ(control.OnMouseLeave(), nullptr);
    EXPECT_EQ(control.OnFocusGained(), self);
    EXPECT_EQ(control.OnFocusLost(), nullptr);
    EXPECT_FALSE(control.OnKeyDown(13, 0));
    EXPECT_FALSE(control.OnKeyUp(13, 0));
    EXPECT_EQ(control.OnMouseWheel(1, 2), 0);
    EXPECT_EQ(control.OnMouseHWheel(1, 2), 0);
}

TEST(Control, SetRectStoresAndDropsTheCache) {
    PlainControl control;
    control.SetCacheValid();
    control.SetRect(1, 2, 30, 40);
    EXPECT_EQ(control.GetRect(), (Rect{1, 2, 30, 40}));
    EXPECT_FALSE(control.IsCacheValid());
}

TEST(Control, CacheResetDropsTheCache) {
    PlainControl control;
    control.SetCacheValid();
    control.OnCacheReset();
    EXPECT_FALSE(control.IsCacheValid());
}

TEST(Control, CreateContextObjectsDoesNothingByItself) {
    PlainControl control;
    control.CreateContextObjects();
    EXPECT_FALSE(control.IsCacheValid());
}

TEST(Control, SetEnabledStores) {
    PlainControl control;
    control.SetEnabled(true);
    EXPECT_TRUE(control.IsEnabled());
}

TEST(Control, SetVisibleTellsOfChangesOnly) {
    PlainControl control;
    control.visibilityChanged.Bind(&control, &PlainControl::Count);
    control.SetVisible(true);
    EXPECT_EQ(control.changes, 0);
    control.SetVisible(false);
    EXPECT_EQ(control.changes, 1);
    EXPECT_EQ(control.lastChanged, &control);
    control.SetVisible(false);
    EXPECT_EQ(control.changes, 1);
    EXPECT_FALSE(control.IsVisible());
}

TEST(Control, GetGuiWithoutParentRaises) {
    PlainControl control;
    EXPECT_THROW(control.getGUI(), Exception);
}

TEST(Control, GetPanelWithoutParentIsNull) {
    PlainControl control;
    EXPECT_EQ(control.GetPanel(), nullptr);
}

TEST(Control, AsksItsParentForThePanel) {
    PlainControl control;
    RecordingList list;
    auto panel = MakeShared<Panel>();
    list.add(control);
    panel->add(list);
    EXPECT_EQ(control.GetPanel(), panel.get());
}

} // namespace
} // namespace Quorvex::GUI::Test
