#include "app/ImageIndexFields.h"

#include <gtest/gtest.h>

using Quorvex::App::ImageIndexFields;

TEST(ImageIndexFields, HideTheSliderForOneImage) {
    ImageIndexFields fields;
    fields.Show(1, 1);
    EXPECT_FALSE(fields.isSliderVisible);
    EXPECT_EQ(fields.sliderMaximum, 1);
}

TEST(ImageIndexFields, ShowNumberAndCount) {
    ImageIndexFields fields;
    fields.Show(2, 12);
    EXPECT_EQ(fields.index.ToStdString(), "2");
    EXPECT_EQ(fields.slash.ToStdString(), "/");
    EXPECT_EQ(fields.count.ToStdString(), "12");
    EXPECT_TRUE(fields.isSliderVisible);
    EXPECT_EQ(fields.sliderMaximum, 12);
    EXPECT_EQ(fields.sliderPosition, 2);
    EXPECT_EQ(fields.sliderTarget, 2);
}

TEST(ImageIndexFields, LeaveTheTargetToTheUserWhoMovesTheSlider) {
    ImageIndexFields fields;
    fields.isSliderInSync = false;
    fields.sliderTarget = 7;
    fields.Show(2, 12);
    EXPECT_EQ(fields.sliderPosition, 2);
    EXPECT_EQ(fields.sliderTarget, 7);
}

TEST(ImageIndexFields, RoundPositionsByAddingAHalf) {
    ImageIndexFields fields;
    fields.sliderPosition = 2;
    fields.sliderTarget = 2.49;
    EXPECT_FALSE(fields.IsTargetElsewhere());
    fields.sliderTarget = 2.5;
    EXPECT_TRUE(fields.IsTargetElsewhere());
    EXPECT_EQ(fields.GetTarget(), 3u);
}

TEST(ImageIndexFields, AreEmptyAfterAFailure) {
    ImageIndexFields fields;
    fields.Show(2, 12);
    fields.Clear();
    EXPECT_TRUE(fields.index.IsEmpty());
    EXPECT_TRUE(fields.slash.IsEmpty());
    EXPECT_TRUE(fields.count.IsEmpty());
    EXPECT_FALSE(fields.isSliderVisible);
}
