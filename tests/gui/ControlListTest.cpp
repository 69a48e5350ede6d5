#include "gui/ControlList.h"

#include "tests/gui/RecordingControl.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI::Test {
namespace {

class ControlListTest : public testing::Test {
protected:
    ControlListTest() {
        list.add(a);
        list.add(b);
    }

    Calls calls;
    RecordingControl a{"a", calls};
    RecordingControl b{"b", calls};
    RecordingList list;
};

TEST_F(ControlListTest, RefusesItself) {
    try {
        list.add(list);
        FAIL() << "nothing was raised";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "ControlList::add");
    }
}

TEST_F(ControlListTest, AddMakesItselfTheParent) {
    EXPECT_EQ(a.GetParent(), &list);
}

TEST_F(ControlListTest, PaintsVisibleChildrenInOrder) {
    RecordingControl c("c", calls);
    list.add(c);
    b.SetVisible(false);
    list.Paint();
    EXPECT_EQ(calls, (Calls{"a.Paint", "c.Paint"}));
}

TEST_F(ControlListTest, DeletesContextObjectsOfAllChildren) {
    const Quorvex::Test::LogCapture log;
    EXPECT_TRUE(list.DeleteContextObjects());
    EXPECT_EQ(calls, (Calls{"a.Delete", "b.Delete"}));
    EXPECT_TRUE(log.IsEmpty());
}

TEST_F(ControlListTest, AFailingDeleteIsLoggedAndTheWalkGoesOn) {
    const Quorvex::Test::LogCapture log;
    a.canRelease = false;
    EXPECT_FALSE(list.DeleteContextObjects());
    EXPECT_EQ(calls, (Calls{"a.Delete", "b.Delete"}));
    EXPECT_TRUE(log.HasLineEndingIn("ControlList::DeleteContextObjects")) << log.Text();
}

TEST_F(ControlListTest, CacheResetReachesChildrenAndItself) {
    a.SetCacheValid();
    list.SetCacheValid();
    list.OnCacheReset();
    EXPECT_FALSE(a.IsCacheValid());
    EXPECT_FALSE(list.IsCacheValid());
}

TEST_F(ControlListTest, InvisibleChildrenGetWhatIsNotForTheEye) {
    a.SetVisible(false);
    a.SetRect(0, 0, 10, 10);
    EXPECT_EQ(list.GetControlAt(5, 5), nullptr);
    list.Paint();
    list.OnCacheReset();
    list.DeleteContextObjects();
    list.OnFocusLost();
    EXPECT_EQ(calls,
              (Calls{"b.Paint", "a.CacheReset", "b.CacheReset", "a.Delete", "b.Delete", "a.FocusLost", "b.FocusLost"}));
}

TEST_F(ControlListTest, TheLastOfTwoOverlappingChildrenTakesTheHit) {
    a.SetRect(0, 0, 20, 20);
    b.SetRect(10, 10, 30, 30);
    EXPECT_EQ(list.GetControlAt(15, 15), &b);
    EXPECT_EQ(list.GetControlAt(5, 5), &a);
    b.SetVisible(false);
    EXPECT_EQ(list.GetControlAt(15, 15), &a);
}

TEST_F(ControlListTest, RightAndBottomEdgesLieOutside) {
    a.SetRect(10, 20, 30, 40);
    EXPECT_EQ(list.GetControlAt(10, 20), &a);
    EXPECT_EQ(list.GetControlAt(29, 39), &a);
    EXPECT_EQ(list.GetControlAt(30, 25), nullptr);
    EXPECT_EQ(list.GetControlAt(15, 40), nullptr);
    EXPECT_EQ(list.GetControlAt(9, 25), nullptr);
    EXPECT_EQ(list.GetControlAt(15, 19), nullptr);
}

TEST_F(ControlListTest, AChildThatIsNotHitLetsTheMouseThrough) {
    class Unhit : public RecordingControl {
    public:
        using RecordingControl::RecordingControl;
        bool IsHit(std::int32_t x, std::int32_t) override { return x > 15; }
    } top("top", calls);
    list.add(top);
    a.SetRect(0, 0, 20, 20);
    top.SetRect(0, 0, 20, 20);
    EXPECT_EQ(list.GetControlAt(10, 10), &a);
    EXPECT_EQ(list.GetControlAt(16, 10), &top);
}

TEST_F(ControlListTest, AListThatAnswersForItselfHidesItsChildren) {
    class Opaque : public RecordingList {
    public:
        Control* GetControlAt(std::int32_t, std::int32_t) override { return this; }
    } opaque;
    RecordingControl inner("inner", calls);
    opaque.add(inner);
    opaque.SetRect(0, 0, 20, 20);
    inner.SetRect(0, 0, 20, 20);
    list.add(opaque);
    EXPECT_EQ(list.GetControlAt(5, 5), &opaque);
}

TEST_F(ControlListTest, AListWithoutAHitIsNoHitItself) {
    RecordingList inner;
    inner.SetRect(0, 0, 20, 20);
    list.add(inner);
    EXPECT_EQ(list.GetControlAt(5, 5), nullptr);
}

TEST_F(ControlListTest, AnswersOtherEventsLikeAControl) {
    Control* self = &list;
    EXPECT_TRUE(list.IsHit(1, 2));
    EXPECT_EQ(list.OnMouseMove(1, 2), nullptr);
    EXPECT_EQ(list.OnMouseLButtonDown(1, 2), self);
    EXPECT_EQ(list.OnMouseLButtonUp(1, 2), self);
    EXPECT_EQ(list.OnMouseReserved(), self);
    EXPECT_EQ(list.OnMouseLeave(), nullptr);
    EXPECT_EQ(list.OnFocusGained(), self);
    EXPECT_EQ(list.OnFocusLost(), nullptr);
    EXPECT_FALSE(list.OnKeyDown(1, 0));
    EXPECT_FALSE(list.OnKeyUp(1, 0));
    EXPECT_EQ(list.OnMouseWheel(1, 2), 0);
    EXPECT_EQ(list.OnMouseHWheel(1, 2), 0);
    EXPECT_THROW(list.getGUI(), Exception);
    EXPECT_EQ(list.GetPanel(), nullptr);
}

} // namespace
} // namespace Quorvex::GUI::Test
