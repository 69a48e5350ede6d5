#include "codecs/LoadFile.h"
#include "data/FileStream.h"
#include "tests/codecs/BmpRecipe.h"
#include "tests/codecs/FakeCodec.h"
#include "tests/codecs/TestContext.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace ET::Img;

namespace {

class LoadFile : public testing::Test {
protected:
    LoadFile() { target.context = context; }

    String Write(const std::string& name, const Bytes& content) {
        folder.Write(name, std::string(content.begin(), content.end()));
        return folder.PathOf(name);
    }

    Quorvex::Test::TemporaryFolder folder;
    SharedPtr<TestContext> context = MakeShared<TestContext>();
    LoadTarget target;
    std::int32_t index = ImageIndex::Default;
    SharedPtr<ImageBase> image;
};

Bytes GoodBitmap() {
    return BmpRecipe{.bits = 24, .rows = {{1, 2, 3}}}.Build();
}

} // namespace

TEST_F(LoadFile, ByExtensionDecodesAndTellsTheTime) {
    const String path = Write("a.bmp", GoodBitmap());
    std::uint64_t time = 0;
    const auto decoder = LoadFileByExtension(path, target, index, image, &time);
    EXPECT_TRUE(image);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(time, FileStream(path).GetLastWriteTime());
    EXPECT_FALSE(decoder->IsIncomplete());
}

TEST_F(LoadFile, ByContentDecodesAndTellsTheTime) {
    const String path = Write("a.xyz", GoodBitmap());
    std::uint64_t time = 0;
    LoadFileByContent(path, target, index, image, &time);
    EXPECT_TRUE(image);
    EXPECT_EQ(time, FileStream(path).GetLastWriteTime());
}

TEST_F(LoadFile, ClosesTheFileAndKeepsTheDecoder) {
    const auto decoder = LoadFileByExtension(Write("a.bmp", GoodBitmap()), target, index, image);
    EXPECT_EQ(decoder->GetCount(), 1u);
    EXPECT_EQ(decoder->GetDefaultIndex(), 0u);
    EXPECT_EQ(decoder->GetLoadedInfo().BitsPerPixel, 24u);
    EXPECT_TRUE(decoder->GetProperties());
    try {
        decoder->GetInfo(0);
        FAIL() << "the stream is still open";
    } catch (const Exception& failure) {
        EXPECT_STREQ(failure.what(), "FileStream::seek");
    }
}

TEST_F(LoadFile, TellsTheTimeAlsoWhenDecodingFails) {
    const String path = Write("a.bmp", {1, 2, 3});
    std::uint64_t time = 0;
    EXPECT_THROW(LoadFileByExtension(path, target, index, image, &time), Exception);
    EXPECT_EQ(time, FileStream(path).GetLastWriteTime());
    time = 0;
    EXPECT_THROW(LoadFileByContent(path, target, index, image, &time), Exception);
    EXPECT_NE(time, 0u);
}

TEST_F(LoadFile, MissingFileFailsWithEmptyText) {
    const String path = folder.PathOf("missing.bmp");
    for (const auto load : {LoadFileByExtension, LoadFileByContent}) {
        try {
            load(path, target, index, image, nullptr);
            FAIL() << "no exception";
        } catch (const Exception& failure) {
            EXPECT_STREQ(failure.what(), "");
        }
    }
}

TEST_F(LoadFile, EmptyFileFailsBothWays) {
    const String path = Write("a.bmp", {});
    EXPECT_THROW(LoadFileByExtension(path, target, index, image), Exception);
    EXPECT_THROW(LoadFileByContent(path, target, index, image), Exception);
}

TEST_F(LoadFile, UsesTheRegistryOfTheTarget) {
    const CodecRegistry registry{MakeShared<FakeFactory>(u"*.fake", FakeBehaviour{.count = 3, .defaultIndex = 1})};
    target.registry = &registry;
    LoadFileByExtension(Write("a.fake", {'F'}), target, index, image);
    EXPECT_EQ(index, 2);
    index = ImageIndex::Last;
    LoadFileByContent(Write("b.bmp", {'F'}), target, index, image);
    EXPECT_EQ(index, 3);
}
