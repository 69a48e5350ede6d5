#include "tests/settings/TextOnlySetting.h"
#include "video/RendererTypeEnum.h"
#include "video/ResamplingMode.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace Quorvex::Platform::Video;
using Quorvex::Test::ExpectTextOnly;
using Quorvex::Test::RaisedText;

namespace {

/// Hands the same text out for every name.
class OneTextReader final : public PropertyReader {
public:
    explicit OneTextReader(const char* text) : m_text(text) {}
    String ReadString(const std::string&) override { return m_text; }

private:
    String m_text;
};

template <class T>
struct Heard {
    void OnChange(const T& value) { values.push_back(value); }
    std::vector<T> values;
};

/// A stored text outside the table neither changes a setting nor is anybody told of it.
template <class T>
void ExpectUnknownTextsRefused(T initial) {
    CompositeOfProperties settings;
    PropertyWithNotification<T> property("Setting", &settings, initial);
    Heard<T> heard;
    property.Notification.Bind(&heard, &Heard<T>::OnChange);
    for (const char* text : {"", "software", "OPENGL", "cubic", "0", "3", "Area ", " Area", "Direct3D11"}) {
        OneTextReader reader(text);
        EXPECT_EQ(RaisedText([&] { settings.Read(reader); }), "") << text;
        EXPECT_EQ(property.Get(), initial) << text;
    }
    EXPECT_TRUE(heard.values.empty());
}

} // namespace

TEST(StoredEnumerations, ResamplingModesHaveNeitherABinaryFormNorASlotOfTheWalker) {
    for (const std::int32_t value : {0, 1, 2, 3, 4, -1}) // The last two are no modes.
        ExpectTextOnly(static_cast<EnumResamplingMode>(value));
}

TEST(StoredEnumerations, RendererTypesHaveNeitherABinaryFormNorASlotOfTheWalker) {
    for (const std::uint32_t value : {0u, 1u, 2u, 3u, 0xFFFFFFFFu}) // The last two are no renderers.
        ExpectTextOnly(static_cast<RendererTypeEnum>(value));
}

TEST(StoredEnumerations, RendererTypesAreWrittenByTheirNames) {
    const char* const names[] = {"OpenGL", "Direct3D9", "Software"};
    static_assert(std::size(names) == rendererTypeCount);
    for (std::uint32_t value = 0; value < rendererTypeCount; ++value) {
        const auto type = static_cast<RendererTypeEnum>(value);
        EXPECT_EQ(ValueText<RendererTypeEnum>::ToText(type).ToStdString(), names[value]);
        EXPECT_EQ(ValueText<RendererTypeEnum>::FromText(names[value]), type);
        EXPECT_STREQ(RendererTypeName(type), names[value]);
        EXPECT_EQ(RendererTypeName(type), RendererTypeName(type)) << "the pointer differs from call to call";
    }
}

TEST(StoredEnumerations, ValuesWithoutATextAreRefusedWithoutMessage) {
    for (const std::int32_t value : {4, 100, -1})
        EXPECT_EQ(RaisedText([&] { ValueText<EnumResamplingMode>::ToText(static_cast<EnumResamplingMode>(value)); }),
                  "")
            << value;
    for (const std::uint32_t value : {3u, 100u, 0xFFFFFFFFu}) {
        const auto type = static_cast<RendererTypeEnum>(value);
        EXPECT_EQ(RaisedText([&] { ValueText<RendererTypeEnum>::ToText(type); }), "") << value;
        EXPECT_EQ(RaisedText([&] { RendererTypeName(type); }), "unknown renderer type") << value;
    }
}

TEST(StoredEnumerations, TextsOutsideTheTableLeaveTheSettingAsItIs) {
    ExpectUnknownTextsRefused(EnumResamplingMode::Nearest);
    ExpectUnknownTextsRefused(RendererTypeEnum::Direct3D9);
}

TEST(StoredEnumerations, KnownTextsAreSetAndHeard) {
    CompositeOfProperties settings;
    PropertyWithNotification<EnumResamplingMode> mode("InterpolationG100", &settings, EnumResamplingMode::Cubic);
    Heard<EnumResamplingMode> heard;
    mode.Notification.Bind(&heard, &Heard<EnumResamplingMode>::OnChange);
    OneTextReader reader("Area");
    settings.Read(reader);
    EXPECT_EQ(heard.values, std::vector<EnumResamplingMode>{EnumResamplingMode::Area});
}
