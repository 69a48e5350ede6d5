#include "video/ImageRect.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace Quorvex::Platform::Video;

TEST(ResamplingMode, ValuesAndKeywordsAreThoseOfTheSettings) {
    using Text = ValueText<EnumResamplingMode>;
    const char* const keywords[] = {"Cubic", "Linear", "Nearest", "Area"};
    for (std::int32_t value = 0; value < 4; ++value) {
        const auto mode = static_cast<EnumResamplingMode>(value);
        EXPECT_EQ(Text::ToText(mode).ToStdString(), keywords[value]);
        EXPECT_EQ(Text::FromText(keywords[value]), mode);
    }
    EXPECT_THROW(Text::FromText("area"), Exception);
    EXPECT_THROW(Text::ToText(static_cast<EnumResamplingMode>(4)), Exception);
}

TEST(ResamplingMode, NamesOfTheDialogComeInTwoLanguages) {
    const char* const german[] = {"Kubisch", "Linear",
                                  "N\xE4"
                                  "chster Nachbar",
                                  "Fl\xE4"
                                  "chenabtastung"};
    const char* const english[] = {"Cubic", "Linear", "Nearest neighbor", "Area sampling"};
    const auto names = ResamplingModeNames();
    ASSERT_EQ(names.size(), 4u);
    for (std::size_t i = 0; i < names.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(names[i].mode), i);
        EXPECT_EQ(names[i].name[0].ToStdString(), german[i]);
        EXPECT_EQ(names[i].name[1].ToStdString(), english[i]);
    }
}

TEST(ResamplingMode, ARectangleStartsWithTheModeOfANewView) {
    EXPECT_EQ(ImageRect().mode, EnumResamplingMode::Area);
    EXPECT_FALSE(ImageRect().unchanged);
}
