#include "gui/Scale.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI {
namespace {

TEST(Scale, HasThreeSteps) {
    EXPECT_EQ(ScaleFromDpi(0), 1);
    EXPECT_EQ(ScaleFromDpi(96), 1);
    EXPECT_EQ(ScaleFromDpi(143), 1);
    EXPECT_EQ(ScaleFromDpi(144), 2);
    EXPECT_EQ(ScaleFromDpi(200), 2);
    EXPECT_EQ(ScaleFromDpi(287), 2);
    EXPECT_EQ(ScaleFromDpi(288), 4);
    EXPECT_EQ(ScaleFromDpi(1000), 4);
}

} // namespace
} // namespace Quorvex::GUI
