#include "gui/EventDelivery.h"

#include "tests/gui/RecordingControl.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI::Test {
namespace {

/// Two controls side by side.
class EventDeliveryTest : public testing::Test {
protected:
    EventDeliveryTest() {
        a.SetRect(0, 0, 10, 10);
        b.SetRect(10, 0, 20, 10);
        root.add(a);
        root.add(b);
    }

    Calls calls;
    RecordingControl a{"a", calls};
    RecordingControl b{"b", calls};
    RecordingList root;
    EventDelivery delivery{root};
};

TEST_F(EventDeliveryTest, AMoveOverNothingReachesNobody) {
    delivery.MouseMove(50, 50);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(delivery.GetCurrent(), nullptr);
}

TEST_F(EventDeliveryTest, AMoveThatIsLetGoOfIsDeliveredOnceMore) {
    delivery.MouseMove(5, 5);
    EXPECT_EQ(calls, (Calls{"a.Move 5,5", "a.Leave", "a.Move 5,5"}));
    EXPECT_EQ(delivery.GetCurrent(), &a);
}

TEST_F(EventDeliveryTest, AControlThatReturnsItselfKeepsTheMouseOutsideOfItsRectangle) {
    a.onMove = &a;
    delivery.MouseMove(5, 5);
    delivery.MouseMove(500, -3);
    EXPECT_EQ(calls, (Calls{"a.Move 5,5", "a.Move 500,-3"}));
    EXPECT_EQ(delivery.GetCurrent(), &a);
}

TEST_F(EventDeliveryTest, ReturningAnotherControlLeavesTheOldOneOnce) {
    a.onMove = &a;
    delivery.MouseMove(5, 5);
    a.onMove = &b;
    calls.clear();
    delivery.MouseMove(6, 5);
    EXPECT_EQ(calls, (Calls{"a.Move 6,5", "a.Leave"}));
    EXPECT_EQ(delivery.GetCurrent(), &b);
}

TEST_F(EventDeliveryTest, MovingToTheNeighbourHandsTheMouseOver) {
    a.onMove = &a;
    delivery.MouseMove(5, 5);
    a.onMove = nullptr;
    b.onMove = &b;
    calls.clear();
    delivery.MouseMove(15, 5);
    EXPECT_EQ(calls, (Calls{"a.Move 15,5", "a.Leave", "b.Move 15,5"}));
    EXPECT_EQ(delivery.GetCurrent(), &b);
}

TEST_F(EventDeliveryTest, ADownThatIsLetGoOfOnlyTakesTheNewControl) {
    a.onDown = nullptr;
    delivery.MouseLButtonDown(5, 5);
    EXPECT_EQ(calls, (Calls{"a.Down 5,5", "a.Leave"}));
    EXPECT_EQ(delivery.GetCurrent(), &a);
}

TEST_F(EventDeliveryTest, AnUpThatIsLetGoOfOnlyTakesTheNewControl) {
    a.onMove = &a;
    a.onUp = nullptr;
    delivery.MouseMove(5, 5);
    delivery.MouseLButtonUp(15, 5);
    EXPECT_EQ(calls, (Calls{"a.Move 5,5", "a.Up 15,5", "a.Leave"}));
    EXPECT_EQ(delivery.GetCurrent(), &b);
}

TEST_F(EventDeliveryTest, AGestureStaysWithItsControl) {
    a.onMove = &a;
    delivery.MouseLButtonDown(5, 5);
    delivery.MouseMove(15, 5);
    delivery.MouseLButtonUp(15, 5);
    EXPECT_EQ(calls, (Calls{"a.Down 5,5", "a.Move 15,5", "a.Up 15,5"}));
}

TEST_F(EventDeliveryTest, TheOneAddedLastTakesTheClick) {
    RecordingControl top("top", calls);
    top.SetRect(0, 0, 10, 10);
    root.add(top);
    delivery.MouseLButtonDown(5, 5);
    EXPECT_EQ(calls, (Calls{"top.Down 5,5"}));
}

TEST_F(EventDeliveryTest, LeavingTellsTheControlInCharge) {
    a.onMove = &a;
    delivery.MouseMove(5, 5);
    calls.clear();
    delivery.Leave();
    delivery.Leave();
    EXPECT_EQ(calls, (Calls{"a.Leave"}));
    EXPECT_EQ(delivery.GetCurrent(), nullptr);
}

TEST_F(EventDeliveryTest, AChargeThatEndsWithinTheCallIsNotLeftTwice) {
    class Closing : public RecordingControl {
    public:
        using RecordingControl::RecordingControl;
        Control* OnMouseLButtonUp(std::int32_t, std::int32_t) override {
            delivery->Leave();
            return nullptr;
        }
        EventDelivery* delivery = nullptr;
    } closing("closing", calls);
    closing.delivery = &delivery;
    closing.SetRect(0, 0, 10, 10);
    root.add(closing);
    delivery.MouseLButtonUp(5, 5);
    EXPECT_EQ(calls, (Calls{"closing.Leave"}));
}

TEST_F(EventDeliveryTest, TheWheelGoesToTheControlInChargeOrUnderTheMouse) {
    EXPECT_EQ(delivery.WheelTarget(15, 5), &b);
    EXPECT_EQ(delivery.WheelTarget(15, 50), nullptr);
    a.onMove = &a;
    delivery.MouseMove(5, 5);
    EXPECT_EQ(delivery.WheelTarget(15, 5), &a);
}

TEST_F(EventDeliveryTest, ThePanelItselfGetsNothing) {
    class Opaque : public RecordingList {
    public:
        Control* GetControlAt(std::int32_t, std::int32_t) override { return this; }
        Control* OnMouseMove(std::int32_t, std::int32_t) override {
            ++moves;
            return this;
        }
        int moves = 0;
    } opaque;
    EventDelivery toOpaque(opaque);
    toOpaque.MouseMove(1, 1);
    EXPECT_EQ(opaque.moves, 0);
    EXPECT_EQ(toOpaque.WheelTarget(1, 1), nullptr);
}

} // namespace
} // namespace Quorvex::GUI::Test
