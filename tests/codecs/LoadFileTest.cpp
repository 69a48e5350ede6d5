#include "codecs/LoadFile.h"
#include "data/FileStream.h"
#include "tests/codecs/BmpRecipe.h"
#include "tests/codecs/FakeCodec.h"
#include "tests/codecs/TestContext.h"
#include "tests/support/RaisedText.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace ET::Img;
using Quorvex::Test::RaisedText;

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

TEST_F(LoadFile, OfAGifWithoutFramesKnowsTheirCountWhenTheFileIsClosed) {
    const Bytes file{'G', 'I', 'F', '8', '9', 'a', 1, 0, 1, 0, 0x80, 0, 0, 0, 0, 0, 255, 255, 255, ';'};
    EXPECT_EQ(LoadFileByExtension(Write("a.gif", file), target, index, image)->GetCount(), 0u);
}

TEST_F(LoadFile, ClosesTheFileAndKeepsTheDecoder) {
    const auto decoder = LoadFileByExtension(Write("a.bmp", GoodBitmap()), target, index, image);
    EXPECT_EQ(decoder->GetCount(), 1u);
    EXPECT_EQ(decoder->GetDefaultIndex(), 0u);
    EXPECT_EQ(decoder->GetLoadedInfo().BitsPerPixel, 24u);
    EXPECT_TRUE(decoder->GetProperties());
    EXPECT_EQ(RaisedText([&] { decoder->GetInfo(0); }), "FileStream::seek") << "the stream is still open";
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

TEST_F(LoadFile, GivesTheFileBackAlsoWhenDecodingFails) {
    const String path = Write("a.bmp", {1, 2, 3});
    for (const auto load : {LoadFileByExtension, LoadFileByContent}) {
        EXPECT_THROW(load(path, target, index, image, nullptr), Exception);
        // Nobody may write to a file that is still being read, on systems that keep to it.
        EXPECT_NO_THROW(Platform::CloseFile(Platform::OpenFileForAppending(path)));
    }
    EXPECT_TRUE(std::filesystem::remove(folder.Path() / "a.bmp"));
}

TEST_F(LoadFile, MissingFileFailsWithEmptyText) {
    const String path = folder.PathOf("missing.bmp");
    for (const auto load : {LoadFileByExtension, LoadFileByContent})
        EXPECT_EQ(RaisedText([&] { load(path, target, index, image, nullptr); }), "");
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
