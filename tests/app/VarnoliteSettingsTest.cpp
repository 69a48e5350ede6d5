#include "app/VarnoliteSettings.h"

#include "data/MemoryStream.h"
#include "settings/CountPropertyWalker.h"
#include "settings/PropertyWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstring>

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
                            "BackgroundColor=0.541176 0.533333 0.533333 1", "ImageInfo=false", "ConsoleOutput=false",
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

TEST(VarnoliteSettings, WritesARendererByItsName) {
    VarnoliteSettings settings;
    const auto entry = settings.GetEntries().at(9);
    ASSERT_EQ(entry->GetName(), "Renderer");
    const char* const names[] = {"OpenGL", "Direct3D9", "Software"};
    for (std::uint32_t value = 0; value < 3; ++value) {
        settings.Renderer.Set(static_cast<Platform::Video::RendererTypeEnum>(value));
        EXPECT_EQ(entry->ToString(), names[value]);
    }
    settings.Renderer.Set(static_cast<Platform::Video::RendererTypeEnum>(3));
    EXPECT_THROW(entry->ToString(), Exception);
}

namespace {

/// The number of the line that raises, and a blank.
template <class Action>
void ExpectLineMessage(const Action& action) {
    try {
        action();
        ADD_FAILURE() << "nothing was raised";
    } catch (const Exception& failure) {
        const std::size_t digits = std::strspn(failure.what(), "0123456789");
        EXPECT_GT(digits, 0u);
        EXPECT_STREQ(failure.what() + digits, " ");
    }
}

} // namespace

TEST(VarnoliteSettings, OfEnumerationsAndColoursHaveNoBinaryForm) {
    VarnoliteSettings settings;
    const std::uint8_t bytes[16] = {};
    CountPropertyWalker walker;
    int textOnly = 0;
    for (const auto& entry : settings.GetEntries()) {
        const std::string& name = entry->GetName();
        MemoryStream stream(bytes, sizeof bytes);
        if (!name.starts_with("Interpolation") && name != "Language" && name != "Renderer" &&
            name != "BackgroundColor") {
            EXPECT_NO_THROW(entry->LoadValueFromStream(stream)) << name;
            EXPECT_NO_THROW(entry->Walk(walker)) << name;
            continue;
        }
        ++textOnly;
        ExpectLineMessage([&] { entry->LoadValueFromStream(stream); });
        ExpectLineMessage([&] { entry->Walk(walker); });
        EXPECT_EQ(stream.tell(), 0u) << name;
    }
    EXPECT_EQ(textOnly, 6);
}
