#include "app/VarnoliteSettings.h"

#include "settings/PropertyWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>

using namespace Quorvex;
using namespace Quorvex::App;
using testing::ElementsAre;

namespace {

class RecordingWriter final : public PropertyWriter {
public:
    void Write(const std::string& name, const String& text) override {
        lines.push_back(name + "=" + text.ToANSI().ToStdString());
    }
    std::vector<std::string> lines;
};

} // namespace

TEST(VarnoliteSettings, HasItsKeysInOrderWithTheDefaultsOfAFirstRun) {
    VarnoliteSettings settings;
    RecordingWriter writer;
    settings.Write(writer);
    EXPECT_THAT(writer.lines,
                ElementsAre("InterpolationL100=Area", "InterpolationE100=Nearest", "InterpolationG100=Cubic",
                            "Ruler=false", "Histogram=false", "ScrollBars=false", "RGBColorInfo=true",
                            "BrightnessContrast=false", "Language=Auto", "Renderer=Direct3D9",
                            testing::StartsWith("BackgroundColor="), "ImageInfo=false", "ConsoleOutput=false",
                            "WindowX0=0", "WindowY0=0", "WindowX1=0", "WindowY1=0"));
}

TEST(VarnoliteSettings, HasTheDefaultColourToTheBit) {
    const VarnoliteSettings settings;
    const Data::ColorBGRA<float> color = settings.BackgroundColor.Get();
    EXPECT_EQ(std::bit_cast<std::uint32_t>(color.blue), 0x3F0A8A8Bu);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(color.green), 0x3F088889u);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(color.red), 0x3F088889u);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(color.alpha), 0x3F800000u);
}

TEST(VarnoliteSettings, AppliesTheLanguageAtOnce) {
    VarnoliteSettings settings;
    settings.Language.Set(Locale::EnumLanguage::German);
    EXPECT_EQ(GetLanguage(), Locale::EnumLanguage::German);
    settings.Language.Set(Locale::EnumLanguage::Automatic);
}
