#include "gui/window/x11/X11Keys.h"

#include <X11/keysym.h>
#include <gtest/gtest.h>

namespace Quorvex::GUI {
namespace {

TEST(X11Keys, LettersAndDigitsHaveTheirCapitalAscii) {
    EXPECT_EQ(VirtualKeyOf(XK_a), 'A');
    EXPECT_EQ(VirtualKeyOf(XK_Z), 'Z');
    EXPECT_EQ(VirtualKeyOf(XK_0), '0');
    EXPECT_EQ(VirtualKeyOf(XK_9), '9');
}

TEST(X11Keys, TheNumberPadHasCodesOfItsOwn) {
    EXPECT_EQ(VirtualKeyOf(XK_KP_0), 0x60u);
    EXPECT_EQ(VirtualKeyOf(XK_KP_9), 0x69u);
    EXPECT_EQ(VirtualKeyOf(XK_KP_Add), 0x6Bu);
    EXPECT_EQ(VirtualKeyOf(XK_KP_Divide), 0x6Fu);
    // Without the lock its keys are cursor keys.
    EXPECT_EQ(VirtualKeyOf(XK_KP_Left), VirtualKeyOf(XK_Left));
    EXPECT_EQ(VirtualKeyOf(XK_KP_Enter), VirtualKeyOf(XK_Return));
}

TEST(X11Keys, FunctionKeysRunFromF1ToF24) {
    EXPECT_EQ(VirtualKeyOf(XK_F1), 0x70u);
    EXPECT_EQ(VirtualKeyOf(XK_F12), 0x7Bu);
    EXPECT_EQ(VirtualKeyOf(XK_F24), 0x87u);
}

TEST(X11Keys, BothSidesOfAModifierAreOneKey) {
    EXPECT_EQ(VirtualKeyOf(XK_Shift_L), 0x10u);
    EXPECT_EQ(VirtualKeyOf(XK_Shift_R), 0x10u);
    EXPECT_EQ(VirtualKeyOf(XK_Control_R), 0x11u);
    EXPECT_EQ(VirtualKeyOf(XK_Alt_L), 0x12u);
}

TEST(X11Keys, CursorAndEditingKeys) {
    EXPECT_EQ(VirtualKeyOf(XK_Escape), 0x1Bu);
    EXPECT_EQ(VirtualKeyOf(XK_Return), 0x0Du);
    EXPECT_EQ(VirtualKeyOf(XK_space), 0x20u);
    EXPECT_EQ(VirtualKeyOf(XK_Prior), 0x21u);
    EXPECT_EQ(VirtualKeyOf(XK_Next), 0x22u);
    EXPECT_EQ(VirtualKeyOf(XK_End), 0x23u);
    EXPECT_EQ(VirtualKeyOf(XK_Home), 0x24u);
    EXPECT_EQ(VirtualKeyOf(XK_Left), 0x25u);
    EXPECT_EQ(VirtualKeyOf(XK_Up), 0x26u);
    EXPECT_EQ(VirtualKeyOf(XK_Right), 0x27u);
    EXPECT_EQ(VirtualKeyOf(XK_Down), 0x28u);
    EXPECT_EQ(VirtualKeyOf(XK_Insert), 0x2Du);
    EXPECT_EQ(VirtualKeyOf(XK_Delete), 0x2Eu);
    EXPECT_EQ(VirtualKeyOf(XK_BackSpace), 0x08u);
    EXPECT_EQ(VirtualKeyOf(XK_Tab), 0x09u);
}

TEST(X11Keys, OtherKeysHaveNone) {
    EXPECT_EQ(VirtualKeyOf(XK_Cyrillic_a), 0u);
    EXPECT_EQ(VirtualKeyOf(noXid), 0u);
}

} // namespace
} // namespace Quorvex::GUI
