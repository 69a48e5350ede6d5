#include "codecs/plugin/PluginDecoder.h"
#include "codecs/plugin/PluginFactory.h"
#include "data/Image.h"
#include "foundation/platform/DynamicLibrary.h"
#include "tests/codecs/PluginLoad.h"
#include "tests/codecs/TestStream.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace ET::Img;
using namespace PluginTest;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

TEST(Plugin, WithoutPluginsTheRegistryStaysAsItIs) {
    const LogCapture log;
    CodecRegistry registry = GetCodecRegistry();
    const std::size_t builtIn = registry.size();
    AddPlugins(registry, Plugins(""));
    AddPlugins(registry, Plugins("missing"));
    AddPluginsBesideProgram(registry);
    EXPECT_EQ(registry.size(), builtIn);
    EXPECT_TRUE(log.IsEmpty());
}

TEST(Plugin, FactoryHasItsPatternAndTexts) {
    const CodecRegistry registry = RegistryOf("sample");
    ASSERT_EQ(registry.size(), 1u);
    EXPECT_EQ(registry[0]->GetFilePattern(), String(u"*.raw;*.rek"));
    SetLanguage(Locale::EnumLanguage::German);
    EXPECT_EQ(registry[0]->GetFileTypeText(), String(u"REK-Dateien (*.raw;*.rek)"));
    SetLanguage(Locale::EnumLanguage::English);
    EXPECT_EQ(registry[0]->GetFileTypeText(), String(u"REK files (*.raw;*.rek)"));
    SetLanguage(Locale::EnumLanguage::Automatic);
}

TEST(Plugin, AFileIsDecoded) {
    const CodecRegistry registry = RegistryOf("sample");
    const PluginLoad load(registry, SampleFile(3, 2, {1, 2, 3, 40000, 5, 65535}));
    ASSERT_EQ(load.image->ColorType, Data::ColorTypeEnum::UInt16);
    const auto lock = load.image->LockUInt16(Data::LockMode::ReadWrite);
    EXPECT_EQ(lock.Width, 3u);
    EXPECT_EQ(lock.Height, 2u);
    EXPECT_EQ(lock(0, 0), 1u);
    EXPECT_EQ(lock(2, 0), 3u);
    EXPECT_EQ(lock(0, 1), 40000u);
    EXPECT_EQ(lock(2, 1), 65535u);
    EXPECT_EQ(load.decoder->GetCount(), 1u);
    EXPECT_EQ(load.decoder->GetDefaultIndex(), 0u);
    EXPECT_EQ(load.decoder->GetLoadedInfo().BitsPerPixel, 16u);
    EXPECT_FALSE(load.decoder->IsIncomplete());
    EXPECT_FALSE(load.decoder->GetProperties());
}

TEST(Plugin, EachImageOfAFileIsDecoded) {
    const CodecRegistry registry = RegistryOf("sample");
    const Bytes file = SampleFile(1, 1, {10, 20, 30}, 3);
    for (std::uint16_t i = 1; i <= 3; ++i) {
        const PluginLoad load(registry, file, i);
        EXPECT_EQ(load.image->LockUInt16(Data::LockMode::ReadWrite)(0, 0), 10 * i);
    }
    EXPECT_EQ(PluginLoad(registry, file, ImageIndex::Last).index, 3);
    EXPECT_EQ(PluginLoad(registry, file, ImageIndex::Default).index, 1);
    EXPECT_EQ(RaisedText([&] { PluginLoad load(registry, file, 4); }), "");
}

TEST(Plugin, LimitsOfTheTypeStandForTheSmallestAndTheLargestSample) {
    const CodecRegistry registry = RegistryOf("sample");
    const PluginLoad load(registry, SampleFile(2, 2, {500, 100, 300, 200}));
    const auto& representation = *load.image->GetImageUserRepresentation();
    EXPECT_DOUBLE_EQ(representation.GetUserValueFromInternalValue(0), 100);
    EXPECT_DOUBLE_EQ(representation.GetUserValueFromInternalValue(65535), 500);
    EXPECT_DOUBLE_EQ(representation.GetUserValueFromNormalizedFloatValue(0.5), 300);
}

TEST(Plugin, AnImageWithoutPixelsKeepsTheDefaultRepresentation) {
    const CodecRegistry registry = RegistryOf("sample");
    for (const auto& [width, height] : {std::pair{0u, 0u}, {0u, 5u}, {5u, 0u}}) {
        const PluginLoad load(registry, SampleFile(width, height, {}));
        EXPECT_TRUE(load.image->GetImageUserRepresentation().DynamicCast<Data::DefaultImageUserRepresentation>());
        EXPECT_EQ(load.Messages(), (std::vector<std::string>{"Beispiel geladen", "Sample loaded"}));
    }
}

TEST(Plugin, MessagesReachTheLogger) {
    const CodecRegistry registry = RegistryOf("sample");
    const std::vector<std::string> messages = PluginLoad(registry, SampleFile(2, 1, {7, 9})).Messages();
    ASSERT_EQ(messages.size(), 4u);
    EXPECT_EQ(messages[0], "Beispiel geladen");
    EXPECT_EQ(messages[1], "Sample loaded");
    EXPECT_TRUE(messages[2].starts_with("Minimum/Maximum: 7 / 9 (")) << messages[2];
    EXPECT_EQ(messages[2], messages[3]);
}

TEST(Plugin, OneTextReachesTheLogger) {
    const CodecRegistry registry = RegistryOf("misbehaving");
    const std::vector<std::string> messages = PluginLoad(registry, {'-'}).Messages();
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages[0], "one text");
}

TEST(Plugin, TheFirstOfTwoGetsTheFilesByTheirName) {
    CodecRegistry registry = RegistryOf("misbehaving");
    AddPlugins(registry, Plugins("sample"));
    ASSERT_EQ(registry.size(), 2u);
    const Bytes file = SampleFile(1, 1, {77});
    // What the first one makes of it is an image of its own; by the content the order is the same.
    EXPECT_EQ(PluginLoad(registry, file).image->ColorType, Data::ColorTypeEnum::Float32);
    std::swap(registry[0], registry[1]);
    EXPECT_EQ(PluginLoad(registry, file).image->ColorType, Data::ColorTypeEnum::UInt16);
    // One that refuses leaves the file to the other, but only where the content decides.
    EXPECT_EQ(RaisedText([&] { PluginLoad load(registry, {'-'}); }), "");
    const PluginLoad byContent(registry, {'-'}, 1, PluginLoad::By::Content);
    EXPECT_EQ(byContent.image->ColorType, Data::ColorTypeEnum::Float32);
}

TEST(Plugin, TwoInOneFolderAreLoadedInTheOrderOfTheirNames) {
    const LogCapture log;
    const CodecRegistry registry = RegistryOf("two");
    ASSERT_EQ(registry.size(), 2u);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
    const char* const names[] = {"VarnoliteFirst", "VarnoliteSecond"};
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_EQ(registry[i].DynamicCast<IDecoderCOMAsCPPWrapperFactory>()->GetLibraryPath(), PathOf("two", names[i]));
    EXPECT_EQ(PluginLoad(registry, SampleFile(1, 1, {5})).image->ColorType, Data::ColorTypeEnum::UInt16);
    EXPECT_EQ(RaisedText([&] { PluginLoad load(registry, {'-'}); }), "");
    const PluginLoad byContent(registry, {'-'}, 1, PluginLoad::By::Content);
    EXPECT_EQ(byContent.image->ColorType, Data::ColorTypeEnum::Float32);
}

TEST(Plugin, BadLibrariesAreReportedByNameAndSkipped) {
    const LogCapture log;
    const CodecRegistry registry = RegistryOf("broken");
    ASSERT_EQ(registry.size(), 1u);
    EXPECT_EQ(PluginLoad(registry, SampleFile(1, 1, {5})).image->GetWidth(), 1u);
    const std::string suffix = Platform::DynamicLibrary::GetFileSuffix();
    EXPECT_TRUE(log.HasLineEndingIn("VarnoliteRefusing" + suffix + ": ")) << log.Text();
    EXPECT_TRUE(log.HasLineEndingIn("VarnoliteWithoutExport" + suffix + ": no DllGetClassObject")) << log.Text();
    EXPECT_NE(log.Text().find("VarnoliteText" + suffix + ": "), std::string::npos) << log.Text();
    EXPECT_EQ(log.Text().find("VarnoliteSampleToo"), std::string::npos) << log.Text();
}

TEST(Plugin, ALibraryIsLoadedOnce) {
    CodecRegistry registry = RegistryOf("sample");
    AddPlugins(registry, Plugins("sample"));
    EXPECT_EQ(registry.size(), 1u);
}

TEST(Plugin, ADecoderOutlivesItsFactory) {
    std::optional<CodecRegistry> registry = RegistryOf("sample");
    const PluginLoad load(*registry, SampleFile(1, 1, {5}));
    registry.reset();
    EXPECT_EQ(load.decoder->GetCount(), 1u);
}

TEST(Plugin, SamplesThatAreNoNumbersHaveNoRange) {
    const CodecRegistry registry = RegistryOf("misbehaving");
    const PluginLoad load(registry, {'n'});
    EXPECT_TRUE(load.image->GetImageUserRepresentation().DynamicCast<Data::DefaultImageUserRepresentation>());
}

TEST(Plugin, TheReservedSlotIsNotImplemented) {
    const Plugin::PluginLibrary library(PathOf("sample", "VarnoliteSample"));
    EXPECT_EQ(static_cast<std::uint32_t>(library.CreateDecoder()->Reserved()), 0x80004001u);
}

TEST(Plugin, ATargetOfAnotherSizeIsRefused) {
    const CodecRegistry registry = RegistryOf("sample");
    const SharedPtr<ImageFile> decoder = registry[0]->CreateDecoder(MakeShared<TestStream>(SampleFile(1, 1, {5})));
    decoder->GetInfo(0);
    const SharedPtr<ImageBase> small = Data::CreateImage(Data::ColorTypeEnum::UInt16, 2, 1);
    EXPECT_EQ(RaisedText([&] { decoder->Load(small, 0); }), "");
    EXPECT_FALSE(decoder->Load({}, 0));
}
