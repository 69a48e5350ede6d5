#include "codecs/DecodeWithFactory.h"
#include "codecs/bmp/BMPDecoder.h"
#include "foundation/LocalLogger.h"
#include "tests/codecs/BmpRecipe.h"
#include "tests/codecs/FakeCodec.h"
#include "tests/codecs/TestContext.h"
#include "tests/codecs/TestStream.h"
#include "tests/support/RaisedText.h"

#include <gmock/gmock.h>

using namespace Quorvex;
using namespace ET::Img;
using Quorvex::Test::RaisedText;
using testing::ElementsAre;

namespace {

/// A registry of the test's own with one load at a time.
class Decode : public testing::Test {
protected:
    Decode() {
        target.context = context;
        target.registry = &registry;
    }

    FakeFactory& AddFake(const char16_t* pattern, FakeBehaviour behaviour) {
        auto factory = MakeShared<FakeFactory>(pattern, std::move(behaviour));
        registry.push_back(factory);
        return *factory;
    }

    void ByExtension(const char* name, const Bytes& file) {
        decoder.reset();
        decoder = DecodeByExtension(name, MakeShared<TestStream>(file), target, index, image);
    }
    void ByContent(const Bytes& file) {
        decoder.reset();
        decoder = DecodeByContent(MakeShared<TestStream>(file), target, index, image);
    }

    SharedPtr<TestContext> context = MakeShared<TestContext>();
    CodecRegistry registry;
    LoadTarget target;
    std::int32_t index = 1;
    SharedPtr<ImageBase> image;
    SharedPtr<ImageFile> decoder;
};

const Bytes fakeFile = {'F', 1, 2, 3};

Bytes GoodBitmap() {
    return BmpRecipe{.rows = {{1, 2, 3}}}.Build();
}

} // namespace

TEST_F(Decode, RunsAHeaderPassThenDecodesFromTheStartOfTheStream) {
    FakeFactory& fake = AddFake(u"*.fake", {});
    ByExtension("a.fake", fakeFile);
    EXPECT_THAT(fake.history, ElementsAre("create", "header 0 at 0", "decode 0 at 0"));
}

TEST_F(Decode, CreatesTheImageThatTheHeaderPassAskedFor) {
    AddFake(u"*.fake", {.colorType = Data::ColorTypeEnum::UInt16});
    ByExtension("a.fake", fakeFile);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->ColorType, Data::ColorTypeEnum::UInt16);
    EXPECT_EQ(image->GetWidth(), 8u);
    EXPECT_EQ(image->GetHeight(), 4u);
    EXPECT_EQ(image->AllocatedWidth, 128u); // 70 asked for, in steps of 64
    EXPECT_EQ(image->AllocatedHeight, 16u); // 9 asked for, in steps of 8
}

TEST_F(Decode, CreatesEachSampleTypeByItsNumber) {
    FakeFactory& fake = AddFake(u"*.fake", {});
    for (std::uint32_t type = 0; type < Data::ColorTypeEnum::Count; ++type) {
        fake.behaviour.colorType = type;
        ByExtension("a.fake", fakeFile);
        EXPECT_EQ(image->ColorType, type);
    }
}

TEST_F(Decode, SampleTypeOutsideTheListFails) {
    FakeFactory& fake = AddFake(u"*.fake", {});
    for (const std::uint32_t type : {20u, 0xFFFFFFFFu}) {
        fake.behaviour.colorType = type;
        EXPECT_EQ(RaisedText([&] { ByExtension("a.fake", fakeFile); }), "unknown color type");
    }
}

TEST_F(Decode, NoImageFromTheDecoderFailsWithEmptyText) {
    AddFake(u"*.fake", {.givesNoImage = true});
    EXPECT_EQ(RaisedText([&] { ByExtension("a.fake", fakeFile); }), "");
}

TEST_F(Decode, IndexZeroIsTheDefaultImage) {
    FakeFactory& fake = AddFake(u"*.fake", {.count = 5, .defaultIndex = 3});
    index = ImageIndex::Default;
    ByExtension("a.fake", fakeFile);
    EXPECT_EQ(index, 4);
    EXPECT_THAT(fake.history, ElementsAre("create", "header 3 at 0", "decode 3 at 0"));
}

TEST_F(Decode, IndexMinusOneIsTheLastImage) {
    FakeFactory& fake = AddFake(u"*.fake", {.count = 5, .defaultIndex = 3});
    index = ImageIndex::Last;
    ByExtension("a.fake", fakeFile);
    EXPECT_EQ(index, 5);
    EXPECT_THAT(fake.history, ElementsAre("create", "header 4 at 0", "decode 4 at 0"));
}

TEST_F(Decode, OtherIndicesAreOneBasedAndStay) {
    FakeFactory& fake = AddFake(u"*.fake", {.count = 5, .defaultIndex = 3});
    index = 2;
    ByExtension("a.fake", fakeFile);
    EXPECT_EQ(index, 2);
    EXPECT_THAT(fake.history, ElementsAre("create", "header 1 at 0", "decode 1 at 0"));
}

TEST_F(Decode, LoggerReachesTheDecoderBeforeTheHeaders) {
    FakeFactory& fake = AddFake(u"*.fake", {});
    target.logger = MakeShared<LocalLogger>();
    ByExtension("a.fake", fakeFile);
    EXPECT_THAT(fake.history, ElementsAre("create", "logger", "header 0 at 0", "decode 0 at 0"));
}

TEST_F(Decode, ByExtensionTakesTheFirstMatchAndTriesNoOther) {
    FakeFactory& first = AddFake(u"*.fake", {.letter = 'X'});
    FakeFactory& second = AddFake(u"*.fake", {});
    EXPECT_EQ(RaisedText([&] { ByExtension("a.fake", fakeFile); }), "not this format");
    EXPECT_EQ(first.history.size(), 2u);
    EXPECT_TRUE(second.history.empty());
}

TEST_F(Decode, ByExtensionWithoutAMatchFailsWithEmptyText) {
    AddFake(u"*.fake", {});
    EXPECT_EQ(RaisedText([&] { ByExtension("a.raw", fakeFile); }), "");
    EXPECT_EQ(RaisedText([&] { ByExtension("", fakeFile); }), "");
    registry.clear();
    EXPECT_EQ(RaisedText([&] { ByExtension("a.fake", fakeFile); }), "");
}

TEST_F(Decode, ByContentWalksInOrderAndEndsAtTheFirstSuccess) {
    FakeFactory& wrong = AddFake(u"*.a", {.letter = 'X'});
    FakeFactory& right = AddFake(u"*.b", {});
    FakeFactory& late = AddFake(u"*.c", {});
    ByContent(fakeFile);
    EXPECT_TRUE(image);
    EXPECT_THAT(wrong.history, ElementsAre("create", "header 0 at 0"));
    EXPECT_THAT(right.history, ElementsAre("create", "header 0 at 0", "decode 0 at 0"));
    EXPECT_TRUE(late.history.empty());
}

TEST_F(Decode, ByContentRestoresTheIndexAfterEachFailure) {
    AddFake(u"*.a", {.count = 9, .defaultIndex = 7, .inPixels = [] { throw Exception("late"); }});
    FakeFactory& right = AddFake(u"*.b", {.count = 3, .defaultIndex = 1});
    index = ImageIndex::Default;
    ByContent(fakeFile);
    EXPECT_EQ(index, 2);
    EXPECT_THAT(right.history, ElementsAre("create", "header 1 at 0", "decode 1 at 0"));
}

TEST_F(Decode, ByContentCatchesWhatAConstructorRaises) {
    AddFake(u"*.a", {.inConstructor = [] { throw std::runtime_error("directory"); }});
    AddFake(u"*.b", {});
    ByContent(fakeFile);
    EXPECT_TRUE(image);
}

TEST_F(Decode, ByContentWithNoSuccessFailsWithEmptyTextAndDropsTheImage) {
    AddFake(u"*.a", {.inPixels = [] { throw Exception("late"); }});
    AddFake(u"*.b", {.letter = 'X'});
    index = ImageIndex::Last;
    image = context->CreateImage(Data::ColorTypeEnum::UInt8, 1, 1);
    EXPECT_EQ(RaisedText([&] { ByContent(fakeFile); }), "");
    EXPECT_EQ(index, ImageIndex::Last);
    EXPECT_FALSE(image);
}

TEST_F(Decode, ByContentWithAnEmptyRegistryFailsWithEmptyText) {
    EXPECT_EQ(RaisedText([&] { ByContent(fakeFile); }), "");
}

TEST_F(Decode, MemoryExhaustedLeavesByExtensionAsSuch) {
    registry = {MakeShared<BMPDecoderFactory>()};
    context->isOutOfMemory = true;
    EXPECT_THROW(ByExtension("a.bmp", GoodBitmap()), std::bad_alloc);
    EXPECT_FALSE(image);
}

TEST_F(Decode, MemoryExhaustedSendsTheContentWalkOn) {
    registry = {MakeShared<BMPDecoderFactory>()};
    context->isOutOfMemory = true;
    FakeFactory& next = AddFake(u"*.fake", {.letter = 'B'});
    ByContent(GoodBitmap());
    EXPECT_TRUE(image);
    EXPECT_EQ(next.history.size(), 3u);
}

TEST_F(Decode, MemoryExhaustedInAllOfTheWalkFailsWithEmptyText) {
    registry = {MakeShared<BMPDecoderFactory>()};
    context->isOutOfMemory = true;
    EXPECT_EQ(RaisedText([&] { ByContent(GoodBitmap()); }), "");
}

TEST_F(Decode, OtherFormatNamedBmpIsRejectedByNameAndFoundByContent) {
    registry = {MakeShared<BMPDecoderFactory>()};
    AddFake(u"*.fake", {});
    EXPECT_EQ(RaisedText([&] { ByExtension("a.bmp", fakeFile); }), "");
    ByContent(fakeFile);
    EXPECT_EQ(image->ColorType, Data::ColorTypeEnum::UInt8);
}

TEST_F(Decode, BitmapWithAnUnknownExtensionIsFoundByContent) {
    AddFake(u"*.fake", {});
    registry.push_back(MakeShared<BMPDecoderFactory>());
    EXPECT_EQ(RaisedText([&] { ByExtension("a.xyz", GoodBitmap()); }), "");
    ByContent(GoodBitmap());
    EXPECT_EQ(image->ColorType, Data::ColorTypeEnum::BGRAUInt8);
    // Whoever tries by content after the name has failed sets the flag; the walk does not know of a name.
    EXPECT_FALSE(decoder->WrongFilenameExtension);
}

TEST_F(Decode, RawFileWithoutAPlugInFailsBothWays) {
    target.registry = nullptr;
    const Bytes raw(100, 0x55);
    EXPECT_EQ(RaisedText([&] { ByExtension("a.raw", raw); }), "");
    EXPECT_EQ(RaisedText([&] { ByContent(raw); }), "");
}

TEST_F(Decode, TruncatedBitmapNamedCorrectlyIsIncompleteAndNotWronglyNamed) {
    target.registry = nullptr;
    Bytes file = BmpRecipe{.height = 2, .rows = {{1, 2, 3}, {4, 5, 6}}}.Build();
    file.pop_back();
    EXPECT_NO_THROW(ByExtension("a.bmp", file));
    EXPECT_TRUE(decoder->IsIncomplete());
    EXPECT_TRUE(decoder->Incomplete);
    EXPECT_FALSE(decoder->WrongFilenameExtension);
    EXPECT_TRUE(image);
}

TEST_F(Decode, NoExceptionLeavesADecodeOfAGoodFileIncomplete) {
    target.registry = nullptr;
    ByExtension("a.bmp", GoodBitmap());
    EXPECT_FALSE(decoder->IsIncomplete());
    EXPECT_FALSE(decoder->WrongFilenameExtension);
}
