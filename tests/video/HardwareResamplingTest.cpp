#include "data/Image.h"
#include "tests/video/RecordingDevice.h"
#include "video/Resampling.h"
#include "video/ResamplingPrograms.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quorvex::Platform::Video {

namespace {

using Mode = EnumResamplingMode;

class HardwareResamplingTest : public testing::Test {
protected:
    /// 100 x 50 pixels in a texture of 128 x 64.
    HardwareResamplingTest() {
        source->Allocate(100, 50, 128, 64);
        picture.CreateFromMemory(context, source);
    }

    static ImageRect Rect(Mode mode, std::int32_t rotation = 0) {
        ImageRect rect;
        rect.x0 = 10;
        rect.y0 = 20;
        rect.x1 = 35;
        rect.y1 = 120;
        rect.mode = mode;
        rect.rotation = rotation;
        rect.clipX0 = 1;
        rect.clipY0 = 2;
        rect.clipX1 = 3;
        rect.clipY1 = 4;
        return rect;
    }

    DeviceRecord Draw(const ImageRect& rect) {
        context->record.clear();
        resampling.Draw(*renderer, picture, rect);
        return context->record;
    }

    static std::size_t Count(const DeviceRecord& record, const std::string& line) {
        return static_cast<std::size_t>(std::count(record.begin(), record.end(), line));
    }

    SharedPtr<RecordingContext> context{new RecordingContext()};
    SharedPtr<Renderer> renderer = context->CreateRenderer({}, {}, {});
    SharedPtr<Data::ImageBase> source{new Data::Image<std::uint8_t>()};
    Image2DMeta picture;
    Resampling resampling;
};

/// The vertices of a draw, "u v x y" each.
std::vector<std::string> Vertices(const DeviceRecord& record) {
    std::vector<std::string> vertices;
    for (const std::string& line : record)
        if (line.starts_with("SetVertex ")) {
            std::istringstream text(line);
            std::string word, u, v, red, green, blue, alpha, x, y, z;
            text >> word >> word >> u >> v >> red >> green >> blue >> alpha >> x >> y >> z;
            EXPECT_EQ(red + green + blue + alpha + z, "11110") << "white, z 0";
            vertices.push_back(u + " " + v + " " + x + " " + y);
        }
    return vertices;
}

} // namespace

TEST_F(HardwareResamplingTest, AreaBindsItsProgramAndSetsHalfTheFootprint) {
    const DeviceRecord wanted = {
        "CreateFromGLString", "BindShader", "SetInteger image 0", "SetFloat bufSizeX 128", "SetFloat bufSizeY 64",
        // 100 / (2 * 128 * 25) and 50 / (2 * 64 * 100)
        "SetFloat TCOffsetX 0.015625", "SetFloat TCOffsetY 0.00390625", "BindImage", "CreateVertexBuffer2D 1", "Lock",
        "SetVertex 0 0 0 1 1 1 1 10 20 0", "SetVertex 1 0.78125 0 1 1 1 1 35 20 0",
        "SetVertex 2 0.78125 0.78125 1 1 1 1 35 120 0", "SetVertex 3 0 0 1 1 1 1 10 20 0",
        "SetVertex 4 0.78125 0.78125 1 1 1 1 35 120 0", "SetVertex 5 0 0.78125 1 1 1 1 10 120 0", "Unlock",
        "Render 1 2 3 4", "UnbindImage", "UnbindShader"};
    EXPECT_EQ(Draw(Rect(Mode::Area)), wanted);
    EXPECT_EQ(context->lastProgram->text, AreaProgramText());
}

TEST_F(HardwareResamplingTest, ATurnedFootprintExchangesTheSides) {
    for (const std::int32_t rotation : {90, 270}) {
        const DeviceRecord record = Draw(Rect(Mode::Area, rotation));
        // 100 / (2 * 128 * 100) and 50 / (2 * 64 * 25)
        EXPECT_EQ(Count(record, "SetFloat TCOffsetX 0.00390625"), 1u) << rotation;
        EXPECT_EQ(Count(record, "SetFloat TCOffsetY 0.015625"), 1u) << rotation;
    }
    EXPECT_EQ(Count(Draw(Rect(Mode::Area, 180)), "SetFloat TCOffsetX 0.015625"), 1u);
}

TEST_F(HardwareResamplingTest, AMirroredFootprintStaysPositive) {
    ImageRect rect = Rect(Mode::Area);
    std::swap(rect.x0, rect.x1);
    EXPECT_EQ(Count(Draw(rect), "SetFloat TCOffsetX 0.015625"), 1u);
}

TEST_F(HardwareResamplingTest, CubicBindsItsProgramAndTellsTheTexturesSize) {
    const DeviceRecord record = Draw(Rect(Mode::Cubic));
    const DeviceRecord start = {"CreateFromGLString",    "BindShader",           "SetInteger image 0",
                                "SetFloat bufSizeX 128", "SetFloat bufSizeY 64", "BindImage"};
    ASSERT_GT(record.size(), start.size());
    EXPECT_TRUE(std::equal(start.begin(), start.end(), record.begin()));
    EXPECT_EQ(record.back(), "UnbindShader");
    EXPECT_EQ(context->lastProgram->text, CubicProgramText());
}

TEST_F(HardwareResamplingTest, LinearAndNearestAreTheDevicesFilters) {
    for (const auto& [mode, filter] :
         {std::pair{Mode::Linear, "SetFilterLinear"}, std::pair{Mode::Nearest, "SetFilterNearest"}}) {
        const DeviceRecord record = Draw(Rect(mode));
        EXPECT_EQ(record.front(), filter);
        EXPECT_EQ(record.back(), "UnbindImage");
        EXPECT_EQ(Count(record, "BindShader"), 0u);
        EXPECT_EQ(Vertices(record).size(), 6u);
    }
}

TEST_F(HardwareResamplingTest, TextureCoordinatesFollowTheRotation) {
    // Top left, top right, bottom right, bottom left.
    const std::pair<std::int32_t, std::array<std::string, 4>> table[] = {
        {0, {"0 0", "0.78125 0", "0.78125 0.78125", "0 0.78125"}},
        {90, {"0.78125 0", "0.78125 0.78125", "0 0.78125", "0 0"}},
        {180, {"0.78125 0.78125", "0 0.78125", "0 0", "0.78125 0"}},
        {270, {"0 0.78125", "0 0", "0.78125 0", "0.78125 0.78125"}},
    };
    for (const auto& [rotation, corners] : table) {
        const std::vector<std::string> wanted = {corners[0] + " 10 20", corners[1] + " 35 20",  corners[2] + " 35 120",
                                                 corners[0] + " 10 20", corners[2] + " 35 120", corners[3] + " 10 120"};
        EXPECT_EQ(Vertices(Draw(Rect(Mode::Nearest, rotation))), wanted) << rotation;
    }
}

TEST_F(HardwareResamplingTest, AHundredByAHundredEndsAt100Of128InBothDirections) {
    // A device that takes powers of two alone.
    picture.CreateFromMemory(context, context->CreateImageUInt8(100, 100, 0, 0));
    const std::vector<std::string> wanted = {"0 0 10 20", "0.78125 0 35 20",        "0.78125 0.78125 35 120",
                                             "0 0 10 20", "0.78125 0.78125 35 120", "0 0.78125 10 120"};
    EXPECT_EQ(Vertices(Draw(Rect(Mode::Nearest))), wanted);
}

TEST_F(HardwareResamplingTest, AnyOtherRotationLeavesTheQuadAsItWas) {
    Draw(Rect(Mode::Nearest));
    const DeviceRecord record = Draw(Rect(Mode::Nearest, 45));
    EXPECT_TRUE(Vertices(record).empty());
    EXPECT_EQ(Count(record, "Render 1 2 3 4"), 1u);
}

TEST_F(HardwareResamplingTest, TheClipIsLeftAtItsResetValue) {
    Draw(Rect(Mode::Linear));
    EXPECT_EQ(context->clipLeft, 0);
    EXPECT_EQ(context->clipTop, 0x7FFFFFFF);
    EXPECT_EQ(context->clipRight, 0);
    EXPECT_EQ(context->clipBottom, 0x7FFFFFFF);
}

TEST_F(HardwareResamplingTest, AnImageWithoutRowsOrColumnsTouchesNothing) {
    for (const auto& [width, height] : {std::pair(0u, 0u), std::pair(0u, 9u), std::pair(9u, 0u)}) {
        picture.CreateFromMemory(context, Data::CreateImage(Data::ColorTypeEnum::UInt8, width, height));
        for (const Mode mode : {Mode::Cubic, Mode::Linear, Mode::Nearest, Mode::Area})
            EXPECT_EQ(Draw(Rect(mode)), DeviceRecord()) << width << " x " << height;
    }
}

TEST_F(HardwareResamplingTest, ProgramsAndQuadAreMadeOncePerContext) {
    for (const Mode mode : {Mode::Area, Mode::Cubic}) {
        EXPECT_EQ(Count(Draw(Rect(mode)), "CreateFromGLString"), 1u);
        const DeviceRecord second = Draw(Rect(mode));
        EXPECT_EQ(Count(second, "CreateFromGLString"), 0u);
        EXPECT_EQ(Count(second, "CreateVertexBuffer2D 1"), 0u);
    }
    const SharedPtr<RecordingContext> other(new RecordingContext());
    const SharedPtr<Renderer> otherRenderer = other->CreateRenderer({}, {}, {});
    resampling.Draw(*otherRenderer, picture, Rect(Mode::Area));
    EXPECT_EQ(Count(other->record, "CreateFromGLString"), 1u);
    EXPECT_EQ(Count(other->record, "CreateVertexBuffer2D 1"), 1u);
    resampling.DeleteContextObjects();
    picture = {};
}

TEST_F(HardwareResamplingTest, DeletedContextObjectsAreGoneAndMadeAgain) {
    const std::uint32_t before = context->GetChildCount();
    Draw(Rect(Mode::Area));
    Draw(Rect(Mode::Cubic));
    EXPECT_GT(context->GetChildCount(), before);
    EXPECT_TRUE(resampling.DeleteContextObjects());
    EXPECT_EQ(context->GetChildCount(), before);
    EXPECT_EQ(Count(Draw(Rect(Mode::Area)), "CreateFromGLString"), 1u);
}

TEST_F(HardwareResamplingTest, AProgramThatDoesNotCompileRaisesOutOfDraw) {
    context->isBroken = true;
    for (const Mode mode : {Mode::Area, Mode::Cubic})
        EXPECT_EQ(RaisedText([&] { Draw(Rect(mode)); }), "does not compile");
    context->isBroken = false;
    EXPECT_EQ(Count(Draw(Rect(Mode::Area)), "CreateFromGLString"), 1u);
}

TEST_F(HardwareResamplingTest, NothingToDrawTellsTheDeviceNothing) {
    ImageRect rect = Rect(Mode::Area);
    rect.x1 = rect.x0;
    EXPECT_TRUE(Draw(rect).empty());
    picture = {};
    EXPECT_TRUE(Draw(Rect(Mode::Area)).empty());
}

TEST_F(HardwareResamplingTest, TheUnrolledAreaNeedsARoundPerWholePixelButTheLast) {
    EXPECT_EQ(HardwareResampling::UnrolledRounds(0.25, 0.5), 0u);
    EXPECT_EQ(HardwareResampling::UnrolledRounds(1.0, 0.5), 0u);
    EXPECT_EQ(HardwareResampling::UnrolledRounds(1.5, 0.5), 1u);
    EXPECT_EQ(HardwareResampling::UnrolledRounds(2.0, 3.75), 3u);
    EXPECT_EQ(HardwareResampling::UnrolledRounds(4.0, 3.75), 3u);
    EXPECT_EQ(HardwareResampling::UnrolledRounds(19.5, 1.0), 19u);
    EXPECT_EQ(HardwareResampling::UnrolledRounds(20.0, 1.0), 19u);
}

TEST_F(HardwareResamplingTest, MoreThan19RoundsRaiseAnEmptyText) {
    EXPECT_EQ(RaisedText([] { HardwareResampling::UnrolledRounds(20.5, 1.0); }), "");
    EXPECT_EQ(RaisedText([] { HardwareResampling::UnrolledRounds(1.0, 21.0); }), "");
    EXPECT_EQ(RaisedText([] { HardwareResampling::UnrolledRounds(1.0, 1e300); }), "");
}

} // namespace Quorvex::Platform::Video
