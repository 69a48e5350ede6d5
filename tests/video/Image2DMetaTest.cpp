#include "data/Image.h"
#include "tests/video/FakeContext.h"

#include <gtest/gtest.h>

namespace Quorvex::Platform::Video {

namespace {

class Image2DMetaTest : public testing::Test {
protected:
    Image2DMetaTest() {
        image->HasAlpha = 1;
        image->PixelScaleX = 2.0;
        image->PixelScaleY = 0.5;
        meta.CreateFromMemory(context, image);
    }

    static FakeImage2D& Texture(const Image2DMeta& of) { return dynamic_cast<FakeImage2D&>(*of.texture); }

    SharedPtr<FakeContext> context{new FakeContext()};
    SharedPtr<Data::ImageBase> image = context->CreateImageUInt16(30, 20, 0, 0);
    Image2DMeta meta;
};

TEST_F(Image2DMetaTest, ANullContextIsRefused) {
    EXPECT_EQ(RaisedText([&] { Image2DMeta().CreateFromMemory({}, image); }), "CreateFromMemory: pContext==nullptr");
}

TEST_F(Image2DMetaTest, ANullImageIsRefused) {
    EXPECT_EQ(RaisedText([&] { Image2DMeta().CreateFromMemory(context, {}); }), "CreateFromMemory: img==nullptr");
}

TEST_F(Image2DMetaTest, CopiesWhatTheViewNeeds) {
    EXPECT_TRUE(meta.hasAlpha);
    EXPECT_EQ(meta.width, 30u);
    EXPECT_EQ(meta.height, 20u);
    EXPECT_EQ(meta.pixelScaleX, 2.0);
    EXPECT_EQ(meta.pixelScaleY, 0.5);
    EXPECT_EQ(meta.source, image);
    EXPECT_EQ(Texture(meta).uploaded, image);
    EXPECT_EQ(Texture(meta).uploadCount, 1);
}

TEST_F(Image2DMetaTest, TheSameContextGetsTheSameTexture) {
    const SharedPtr<Image2D> texture = meta.texture;
    EXPECT_EQ(meta.GetImage2D(context), texture);
    EXPECT_EQ(Texture(meta).uploadCount, 1);
}

TEST_F(Image2DMetaTest, AnotherContextGetsATextureOfItsOwn) {
    SharedPtr<FakeContext> other(new FakeContext());
    const SharedPtr<Image2D> texture = meta.GetImage2D(other);
    EXPECT_EQ(texture->GetContext(), other);
    EXPECT_EQ(meta.texture, texture);
    EXPECT_EQ(Texture(meta).uploaded, image);
    EXPECT_EQ(context->GetChildCount(), 0u) << "the texture of the first context has gone";
}

TEST_F(Image2DMetaTest, WithoutASourceThereIsNoTexture) {
    Image2DMeta empty;
    EXPECT_FALSE(empty.GetImage2D(context));
}

TEST_F(Image2DMetaTest, ADeviceResetRepeatsTheUpload) {
    context->LoseDevice();
    context->ResetDevice();
    EXPECT_EQ(Texture(meta).uploadCount, 2);
}

TEST_F(Image2DMetaTest, AMovedMetaStillRepeatsTheUpload) {
    Image2DMeta moved(std::move(meta));
    context->ResetDevice();
    EXPECT_EQ(Texture(moved).uploadCount, 2);
    Image2DMeta assigned;
    assigned = std::move(moved);
    context->ResetDevice();
    EXPECT_EQ(Texture(assigned).uploadCount, 3);
    EXPECT_EQ(assigned.height, 20u);
}

TEST_F(Image2DMetaTest, ACopyMakesItsOwnTextureWhenItIsDrawn) {
    Image2DMeta copy(meta);
    EXPECT_FALSE(copy.texture);
    EXPECT_EQ(copy.width, 30u);
    EXPECT_NE(copy.GetImage2D(context), meta.texture);
    context->ResetDevice();
    EXPECT_EQ(Texture(copy).uploadCount, 2);
    EXPECT_EQ(Texture(meta).uploadCount, 2);
}

TEST_F(Image2DMetaTest, ATextureThatOutlivesItsMetaIsLeftAlone) {
    const SharedPtr<Image2D> texture = meta.texture;
    meta = Image2DMeta();
    context->ResetDevice();
    EXPECT_EQ(dynamic_cast<FakeImage2D&>(*texture).uploadCount, 1);
}

TEST_F(Image2DMetaTest, AReplacedTextureDoesNotUploadIntoItsSuccessor) {
    const SharedPtr<Image2D> first = meta.texture;
    meta.CreateFromMemory(context, context->CreateImageUInt8(5, 5, 0, 0));
    context->ResetDevice();
    EXPECT_EQ(Texture(meta).uploadCount, 2) << "the creation and the one reset";
}

TEST_F(Image2DMetaTest, DeleteContextObjectsKeepsTheSource) {
    meta.DeleteContextObjects();
    EXPECT_EQ(context->GetChildCount(), 0u);
    EXPECT_EQ(meta.source, image);
    EXPECT_TRUE(meta.GetImage2D(context));
}

TEST_F(Image2DMetaTest, AnImageThatCannotBeUploadedLeavesTheMetaEmpty) {
    context->largestSide = 63;
    EXPECT_THROW(meta.CreateFromMemory(context, image), Exception);
    EXPECT_FALSE(meta.source);
    EXPECT_FALSE(meta.texture);
    EXPECT_EQ(meta.width, 0u);
    EXPECT_EQ(context->GetChildCount(), 0u);
}

TEST_F(Image2DMetaTest, ExhaustedDeviceMemoryReadsAsABadAllocation) {
    context->isMemoryExhausted = true;
    try {
        meta.CreateFromMemory(context, image);
        FAIL() << "nothing raised";
    } catch (const std::bad_alloc& exception) {
        EXPECT_STREQ(exception.what(), "bad allocation");
    }
}

TEST(TextureLimit, TheLargestSideIsAcceptedAndOnePixelMoreIsNot) {
    FakeContext context;
    context.hasNonPowerOfTwoTextures = true;
    const SharedPtr<Data::ImageBase> wide = context.CreateImageUInt8(256, 8, 0, 0);
    EXPECT_NO_THROW(CheckTextureUpload(*wide, 256));
    EXPECT_THROW(CheckTextureUpload(*wide, 255), Exception);
    const SharedPtr<Data::ImageBase> high = context.CreateImageUInt8(64, 256, 0, 0);
    EXPECT_NO_THROW(CheckTextureUpload(*high, 256));
    EXPECT_THROW(CheckTextureUpload(*high, 255), Exception);
}

TEST(TextureLimit, TheTextComesInTwoLanguages) {
    FakeContext context;
    try {
        CheckTextureUpload(*context.CreateImageUInt8(64, 8, 0, 0), 63);
        FAIL() << "nothing raised";
    } catch (const Exception& exception) {
        EXPECT_EQ(exception.GetMessages()[0],
                  String("Die Bildauflösung wird von Ihrer Grafikkarte nicht unterstützt."_t));
        EXPECT_EQ(exception.GetMessages()[1], String("The image resolution is not supported by your graphics card."));
    }
}

TEST(TextureLimit, AnUnknownSampleTypeIsNamed) {
    class StrangeImage final : public Data::ImageBase {
    public:
        StrangeImage() : ImageBase(static_cast<Value>(20)) {}
        std::uint32_t GetWidth() const override { return 1; }
        std::uint32_t GetHeight() const override { return 1; }
        void* Allocate(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) override { return nullptr; }
        bool DeleteContextObjects() override { return true; }
    };
    const StrangeImage image;
    EXPECT_EQ(RaisedText([&] { CheckTextureUpload(image, 100); }), "invalid color type");
}

} // namespace

} // namespace Quorvex::Platform::Video
