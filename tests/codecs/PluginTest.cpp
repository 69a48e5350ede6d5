#include "codecs/DecodeWithFactory.h"
#include "codecs/plugin/PluginDecoder.h"
#include "codecs/plugin/PluginFactory.h"
#include "data/Image.h"
#include "foundation/LocalLogger.h"
#include "foundation/platform/Files.h"
#include "foundation/platform/SpecialFolders.h"
#include "tests/codecs/TestContext.h"
#include "tests/codecs/TestStream.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <string_view>

using namespace Quorvex;
using namespace ET::Img;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

using Bytes = std::vector<std::uint8_t>;

/// The folder of that name with the plug-ins made for these tests.
String Plugins(const char* folder) {
    const String program = GetModulePath().ToWide();
    const std::u16string_view path(program.Wide(), program.length());
    const std::u16string beside(path.substr(0, path.find_last_of(u"/\\")));
    return Platform::JoinPath(Platform::JoinPath(String(beside.c_str()), "plugins"), folder);
}

CodecRegistry RegistryOf(const char* folder) {
    CodecRegistry registry;
    AddPlugins(registry, Plugins(folder));
    return registry;
}

/// A file of the sample plug-in's format.
Bytes SampleFile(std::uint32_t width, std::uint32_t height, const std::vector<std::uint16_t>& samples,
                 std::uint32_t count = 1) {
    Bytes file{'R', 'E', 'K', '1'};
    for (const std::uint32_t number : {width, height, count})
        for (int shift = 0; shift < 32; shift += 8)
            file.push_back(static_cast<std::uint8_t>(number >> shift));
    for (const std::uint16_t sample : samples)
        file.insert(file.end(), {static_cast<std::uint8_t>(sample), static_cast<std::uint8_t>(sample >> 8)});
    return file;
}

struct PluginLoad {
    PluginLoad(const CodecRegistry& registry, const Bytes& file, std::int32_t wanted = 1) : index(wanted) {
        LoadTarget target;
        target.context = MakeShared<TestContext>();
        target.logger = logger;
        target.registry = &registry;
        decoder = DecodeByExtension("a.rek", MakeShared<TestStream>(file), target, index, image);
    }

    std::vector<std::string> Messages() const {
        std::vector<std::string> texts;
        for (const BilingualText& message : logger->GetMessages())
            for (const String& text : message)
                texts.push_back(text.ToANSI().ToStdString());
        return texts;
    }

    std::int32_t index;
    SharedPtr<LocalLogger> logger = MakeShared<LocalLogger>();
    SharedPtr<ImageFile> decoder;
    SharedPtr<ImageBase> image;
};

std::string FailureOf(char behaviour, std::int32_t index = 1) {
    const CodecRegistry registry = RegistryOf("misbehaving");
    return RaisedText([&] { PluginLoad load(registry, Bytes{static_cast<std::uint8_t>(behaviour), 0}, index); });
}

} // namespace

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
    LoadTarget target;
    target.context = MakeShared<TestContext>();
    target.registry = &registry;
    std::int32_t index = 1;
    SharedPtr<ImageBase> image;
    DecodeByContent(MakeShared<TestStream>(Bytes{'-'}), target, index, image);
    EXPECT_EQ(image->ColorType, Data::ColorTypeEnum::Float32);
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

TEST(Plugin, ExceptionsOfAPluginAreContained) {
    if (sizeof(void*) == 4)
        GTEST_SKIP() << "on 32-bit Windows no exception gets out of a library: it ends the program there";
    // In turn: open, set the logger, the count, the default index, the description, loading; then two that are no
    // std::exception, in open and in loading.
    for (const char behaviour : {'o', 's', 'i', 'l', '1', '2'})
        EXPECT_EQ(FailureOf(behaviour), "") << behaviour;
    EXPECT_EQ(FailureOf('c', ImageIndex::Last), "");
    EXPECT_EQ(FailureOf('d', ImageIndex::Default), "");
}

TEST(Plugin, FailingResultsFailTheLoad) {
    // Open, the logger, the description with a result above 0, and loading.
    for (const char behaviour : {'f', 'S', 'p', 'L'})
        EXPECT_EQ(FailureOf(behaviour), "") << behaviour;
}

TEST(Plugin, SizesWithoutSenseFailTheLoad) {
    EXPECT_EQ(FailureOf('W'), "");
    EXPECT_EQ(FailureOf('A'), "");
    EXPECT_EQ(FailureOf('T'), "unknown color type");
    EXPECT_EQ(FailureOf('C', ImageIndex::Last), "");
    EXPECT_EQ(FailureOf('D', ImageIndex::Default), "");
    // Less memory asked for than the image needs: it gets what it needs.
    EXPECT_EQ(FailureOf('a'), "(nothing was raised)");
    EXPECT_EQ(FailureOf('E'), "(nothing was raised)");
}

TEST(Plugin, AFailingReadComesBackAsAResult) {
    EXPECT_EQ(FailureOf('r'), "");
}

TEST(Plugin, SamplesThatAreNoNumbersHaveNoRange) {
    const CodecRegistry registry = RegistryOf("misbehaving");
    const PluginLoad load(registry, {'n'});
    EXPECT_TRUE(load.image->GetImageUserRepresentation().DynamicCast<Data::DefaultImageUserRepresentation>());
}

TEST(Plugin, ATargetOfAnotherSizeIsRefused) {
    const CodecRegistry registry = RegistryOf("sample");
    const SharedPtr<ImageFile> decoder = registry[0]->CreateDecoder(MakeShared<TestStream>(SampleFile(1, 1, {5})));
    decoder->GetInfo(0);
    const SharedPtr<ImageBase> small = Data::CreateImage(Data::ColorTypeEnum::UInt16, 2, 1);
    EXPECT_EQ(RaisedText([&] { decoder->Load(small, 0); }), "");
    EXPECT_FALSE(decoder->Load({}, 0));
}
