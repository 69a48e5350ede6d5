#include "data/Image.h"
#include "foundation/platform/DynamicLibrary.h"
#include "tests/codecs/PluginLoad.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace ET::Img;
using namespace PluginTest;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

constexpr const char* nothing = "(nothing was raised)";

/// On 32-bit Windows no exception gets out of a library: it ends the program there.
constexpr bool exceptionsEndTheProgram = sizeof(void*) == 4;

} // namespace

TEST(PluginMisbehaviour, ExceptionsAreContained) {
    if (exceptionsEndTheProgram)
        GTEST_SKIP() << "exceptions of a plug-in end the program here";
    // In turn: open, set the logger, the description, loading; then two that are no std::exception, in open and in
    // loading.
    for (const char behaviour : {'o', 's', 'i', 'l', '1', '2'})
        EXPECT_EQ(FailureOf(behaviour), "") << behaviour;
    EXPECT_EQ(FailureOf('c', ImageIndex::Last), "");
    EXPECT_EQ(FailureOf('d', ImageIndex::Default), "");
}

TEST(PluginMisbehaviour, ALibraryThatRaisesIsReportedAndSkipped) {
    if (exceptionsEndTheProgram)
        GTEST_SKIP() << "exceptions of a plug-in end the program here";
    const LogCapture log;
    EXPECT_TRUE(RegistryOf("raising").empty());
    const std::string suffix = Platform::DynamicLibrary::GetFileSuffix();
    EXPECT_TRUE(log.HasLineEndingIn("VarnoliteRaising" + suffix + ": ")) << log.Text();
}

TEST(PluginMisbehaviour, FailingResultsFailTheLoad) {
    // Open, the logger, the description, the same with a result above 0, and loading.
    for (const char behaviour : {'f', 'S', 'I', 'p', 'L'})
        EXPECT_EQ(FailureOf(behaviour), "") << behaviour;
    EXPECT_EQ(FailureOf('x', ImageIndex::Last), "");
    EXPECT_EQ(FailureOf('y', ImageIndex::Default), "");
}

TEST(PluginMisbehaviour, ResultsThatNobodyAsksForFailNothing) {
    EXPECT_EQ(FailureOf('x', ImageIndex::Default), nothing);
    EXPECT_EQ(FailureOf('y', ImageIndex::Last), nothing);
    const CodecRegistry registry = RegistryOf("misbehaving");
    const PluginLoad count(registry, FileFor('x')), index(registry, FileFor('y'));
    EXPECT_EQ(RaisedText([&] { count.decoder->GetCount(); }), "");
    EXPECT_EQ(count.decoder->GetDefaultIndex(), 0u);
    EXPECT_EQ(RaisedText([&] { index.decoder->GetDefaultIndex(); }), "");
    EXPECT_EQ(index.decoder->GetCount(), 1u);
}

TEST(PluginMisbehaviour, ALibraryWithoutAClassFactoryIsReportedAndSkipped) {
    const LogCapture log;
    for (const auto& factory : RegistryOf("broken"))
        EXPECT_EQ(factory.DynamicCast<IDecoderCOMAsCPPWrapperFactory>()->GetLibraryPath(),
                  PathOf("broken", "VarnoliteSampleToo"));
    const std::string suffix = Platform::DynamicLibrary::GetFileSuffix();
    EXPECT_TRUE(log.HasLineEndingIn("VarnoliteNoFactory" + suffix + ": ")) << log.Text();
}

TEST(PluginMisbehaviour, AClassFactoryThatMakesNoDecoderFailsTheLoad) {
    const CodecRegistry registry = RegistryOf("emptyhanded");
    ASSERT_EQ(registry.size(), 1u);
    // In turn: success without an object, success and nothing said, a failure, a result above 0 with a false object.
    for (int turn = 0; turn < 4; ++turn)
        EXPECT_EQ(RaisedText([&] { PluginLoad load(registry, {'-'}); }), "") << turn;
}

TEST(PluginMisbehaviour, AClassFactoryThatMakesNoDecoderLeavesTheFileToTheNext) {
    CodecRegistry registry = RegistryOf("emptyhanded");
    AddPlugins(registry, Plugins("sample"));
    ASSERT_EQ(registry.size(), 2u);
    for (int turn = 0; turn < 4; ++turn) {
        const PluginLoad load(registry, SampleFile(1, 1, {7}), 1, PluginLoad::By::Content);
        EXPECT_EQ(load.image->LockUInt16(Data::LockMode::ReadWrite)(0, 0), 7u) << turn;
    }
}

TEST(PluginMisbehaviour, SizesWithoutSenseFailTheLoad) {
    // Each in width and height, in one of them, their product in bytes, and the memory asked for.
    for (const char behaviour : {'W', 'V', 'v', 'M', 'A'})
        EXPECT_EQ(FailureOf(behaviour), "") << behaviour;
    EXPECT_EQ(FailureOf('T'), "unknown color type");
    EXPECT_EQ(FailureOf('t'), "unknown color type");
    // Less memory asked for than the image needs: it gets what it needs.
    EXPECT_EQ(FailureOf('a'), nothing);
}

TEST(PluginMisbehaviour, ImagesOfNoPixelsAreImages) {
    const CodecRegistry registry = RegistryOf("misbehaving");
    EXPECT_EQ(PluginLoad(registry, FileFor('E')).image->GetHeight(), 2u);
    const PluginLoad rows(registry, FileFor('e'));
    EXPECT_EQ(rows.image->GetWidth(), 0u);
    EXPECT_EQ(rows.image->GetHeight(), 0x7FFFFFFFu);
    EXPECT_TRUE(rows.image->GetImageUserRepresentation().DynamicCast<Data::DefaultImageUserRepresentation>());
}

TEST(PluginMisbehaviour, CountsWithoutSenseFailTheLoad) {
    // 2^32 - 1, and the first count of which the next number has no sign any more.
    for (const char behaviour : {'C', 'h'})
        EXPECT_EQ(FailureOf(behaviour, ImageIndex::Last), "") << behaviour;
    for (const char behaviour : {'D', 'H'})
        EXPECT_EQ(FailureOf(behaviour, ImageIndex::Default), "") << behaviour;
}

TEST(PluginMisbehaviour, TheLastOfNoImagesFailsTheLoad) {
    // It describes every image that it is asked for, also the one before the first.
    EXPECT_EQ(FailureOf('z', ImageIndex::Last), "");
    EXPECT_EQ(FailureOf('z', 1), nothing);
}

TEST(PluginMisbehaviour, ADescriptionThatIsNotGivenIsOfNoPixels) {
    const CodecRegistry registry = RegistryOf("misbehaving");
    const PluginLoad load(registry, FileFor('q'));
    EXPECT_EQ(load.image->ColorType, Data::ColorTypeEnum::SInt8);
    EXPECT_EQ(load.image->GetWidth(), 0u);
    EXPECT_EQ(load.image->GetHeight(), 0u);
}

TEST(PluginMisbehaviour, AFailingReadComesBackAsAResult) {
    // The plug-in goes on, and shows as the depth what came back. An exception would have ended the load.
    const CodecRegistry registry = RegistryOf("misbehaving");
    EXPECT_EQ(PluginLoad(registry, FileFor('r')).decoder->GetLoadedInfo().BitsPerPixel, 0x80004005u);
}
