#include "codecs/ImageFile.h"
#include "tests/codecs/FakeCodec.h"
#include "tests/codecs/TestStream.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace ET::Img;
using Quorvex::Test::RaisedText;

namespace {

class DefaultImpl final : public ImageFile::ImplBase {
public:
    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>&, std::uint32_t) override { return {}; }
};

} // namespace

TEST(ImageFile, WithoutImplementationTheCountsFailWithEmptyText) {
    FakeDecoder decoder{std::unique_ptr<FakeImpl>()};
    EXPECT_EQ(RaisedText([&] { decoder.GetCount(); }), "");
    EXPECT_EQ(RaisedText([&] { decoder.GetDefaultIndex(); }), "");
    EXPECT_FALSE(decoder.IsIncomplete());
    EXPECT_EQ(decoder.GetLoadedInfo().Width, 0u);
}

TEST(ImageFile, StartsWithBothFlagsClearAndUprightOrientation) {
    Decoder<DefaultImpl> decoder(std::make_unique<DefaultImpl>());
    EXPECT_FALSE(decoder.WrongFilenameExtension);
    EXPECT_FALSE(decoder.Incomplete);
    EXPECT_EQ(decoder.GetOrientation(), 1u);
    EXPECT_EQ(decoder.GetProperties(), nullptr);
}

TEST(ImageFile, DefaultsOfAnImplementation) {
    DefaultImpl implementation;
    EXPECT_EQ(implementation.GetCount(), 1u);
    EXPECT_EQ(implementation.GetDefaultIndex(), 0u);
    EXPECT_EQ(implementation.ReservedQuery(), 1u);
    implementation.SetLogger({});
    const ImageInfo info = implementation.GetInfo(0);
    EXPECT_EQ(info.Width | info.Height | info.BitsPerPixel | info.AllocatedWidth | info.AllocatedHeight, 0u);
    EXPECT_EQ(info.ColorType, 0u);
}

TEST(ImageFile, ImplementationSetsTheFlagOfItsOwner) {
    auto implementation = std::make_unique<DefaultImpl>();
    DefaultImpl* raw = implementation.get();
    Decoder<DefaultImpl> decoder(std::move(implementation));
    ASSERT_NE(raw->Incomplete, nullptr);
    *raw->Incomplete = true;
    EXPECT_TRUE(decoder.IsIncomplete());
}

TEST(ImageFile, GetInfoRunsAHeaderPass) {
    FakeBehaviour behaviour;
    FakeHistory history;
    FakeDecoder decoder(
        std::make_unique<FakeImpl>(MakeShared<TestStream>(std::vector<std::uint8_t>{'F'}), behaviour, history));
    const ImageInfo info = decoder.GetInfo(6);
    EXPECT_EQ(history, FakeHistory{"header 6 at 0"});
    EXPECT_EQ(info.Width, 8u);
    EXPECT_EQ(info.AllocatedHeight, 9u);
    EXPECT_EQ(decoder.GetLoadedInfo().BitsPerPixel, 3u);
}

TEST(ImageInfo, IsAPlainRecordOf24Bytes) {
    EXPECT_EQ(sizeof(ImageInfo), 24u);
    EXPECT_EQ(offsetof(ImageInfo, AllocatedWidth), 12u);
    EXPECT_EQ(offsetof(ImageInfo, ColorType), 20u);
}
