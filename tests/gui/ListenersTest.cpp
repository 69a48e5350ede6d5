#include "gui/Listeners.h"

#include "tests/gui/RecordingControl.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI::Test {
namespace {

class ListenersTest : public testing::Test {
protected:
    std::int32_t Move() {
        return listeners.CallAll([](Control& control) { return control.OnMouseMoveGlobal(1, 2); });
    }

    Calls calls;
    RecordingControl a{"a", calls};
    RecordingControl b{"b", calls};
    RecordingControl c{"c", calls};
    Listeners listeners;
};

TEST_F(ListenersTest, NobodyAnswersZero) {
    EXPECT_EQ(Move(), 0);
}

TEST_F(ListenersTest, TheLastOneDecides) {
    listeners.Add(a);
    listeners.Add(b);
    a.globalResult = 1;
    EXPECT_EQ(Move(), 0);
    b.globalResult = 7;
    EXPECT_EQ(Move(), 7);
    EXPECT_EQ(calls, (Calls{"a.MoveGlobal 1,2", "b.MoveGlobal 1,2", "a.MoveGlobal 1,2", "b.MoveGlobal 1,2"}));
}

TEST_F(ListenersTest, EntersOnce) {
    listeners.Add(a);
    listeners.Add(a);
    Move();
    EXPECT_EQ(calls.size(), 1u);
    listeners.Remove(a);
    EXPECT_FALSE(listeners.Contains(a));
}

TEST_F(ListenersTest, AListenerMayLeaveWithinItsCall) {
    listeners.Add(a);
    listeners.Add(b);
    listeners.CallAll([&](Control& control) {
        listeners.Remove(control);
        return control.OnMouseMoveGlobal(1, 2);
    });
    EXPECT_EQ(calls, (Calls{"a.MoveGlobal 1,2", "b.MoveGlobal 1,2"}));
    EXPECT_EQ(Move(), 0);
    EXPECT_EQ(calls.size(), 2u);
}

TEST_F(ListenersTest, AListenerMayDropTheNextOne) {
    listeners.Add(a);
    listeners.Add(b);
    listeners.Add(c);
    listeners.CallAll([&](Control& control) {
        listeners.Remove(b);
        return control.OnMouseMoveGlobal(1, 2);
    });
    EXPECT_EQ(calls, (Calls{"a.MoveGlobal 1,2", "c.MoveGlobal 1,2"}));
}

TEST_F(ListenersTest, OneThatEntersWithinACallIsCalledTheNextTime) {
    listeners.Add(a);
    listeners.CallAll([&](Control& control) {
        listeners.Add(b);
        return control.OnMouseMoveGlobal(1, 2);
    });
    EXPECT_EQ(calls.size(), 1u);
    Move();
    EXPECT_EQ(calls.size(), 3u);
}

TEST_F(ListenersTest, ARaisingListenerLeavesTheListUsable) {
    listeners.Add(a);
    EXPECT_THROW(listeners.CallAll([](Control&) -> std::int32_t { throw 1; }), int);
    listeners.Remove(a);
    EXPECT_EQ(Move(), 0);
}

} // namespace
} // namespace Quorvex::GUI::Test
