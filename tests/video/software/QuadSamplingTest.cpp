#include "tests/video/software/SampleImages.h"
#include "tests/video/software/SoftwareFixture.h"
#include "video/VertexBuffer2D.h"
#include "video/software/PlainResampling.h"

namespace Quorvex::Platform::Video::Software {

namespace {

using Mode = EnumResamplingMode;
constexpr std::int32_t rotations[] = {0, 90, 180, 270};

ImageRect RandomRect(RandomSamples& random, std::int32_t largest) {
    ImageRect rect;
    rect.x0 = static_cast<std::int32_t>(random.Below(100));
    rect.y0 = static_cast<std::int32_t>(random.Below(100));
    rect.x1 = rect.x0 + 1 + static_cast<std::int32_t>(random.Below(static_cast<std::uint32_t>(largest)));
    rect.y1 = rect.y0 + 1 + static_cast<std::int32_t>(random.Below(static_cast<std::uint32_t>(largest)));
    if (random.Below(2) != 0)
        std::swap(rect.x0, rect.x1);
    if (random.Below(2) != 0)
        std::swap(rect.y0, rect.y1);
    rect.rotation = rotations[random.Below(4)];
    return rect;
}

/// An image of any size without the memory of one: sampling looks at its sizes alone.
class SizesOnly final : public Data::ImageBase {
public:
    SizesOnly(std::uint32_t imageWidth, std::uint32_t imageHeight)
        : ImageBase(UInt8), width(imageWidth), height(imageHeight) {
        AllocatedWidth = (width + 63) / 64 * 64;
        AllocatedHeight = (height + 7) / 8 * 8;
    }
    std::uint32_t GetWidth() const override { return width; }
    std::uint32_t GetHeight() const override { return height; }
    void* Allocate(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) override { return nullptr; }
    bool DeleteContextObjects() override { return true; }

private:
    std::uint32_t width;
    std::uint32_t height;
};

class QuadSamplingTest : public SoftwareFixture {
protected:
    /// Draws through the context's own rasteriser, as a user of its interface would.
    void DrawByContext(const SharedPtr<Data::ImageBase>& image, const ImageRect& rect) {
        renderer->BeginPaint();
        Bind(image);
        BindProgram(rect.mode, QuadSampling(rect, *image).Footprint());
        const auto vertices = MakeImageQuad(rect, EdgeTextureCoordinate(image->GetWidth(), image->AllocatedWidth),
                                            EdgeTextureCoordinate(image->GetHeight(), image->AllocatedHeight));
        const SharedPtr<Video::VertexBuffer2D> buffer = context->CreateVertexBuffer2D(1);
        for (std::uint32_t i = 0; i < 6; ++i) {
            const ImageQuadVertex& vertex = (*vertices)[i];
            buffer->Lock()->SetVertex(i, vertex.u, vertex.v, 1, 1, 1, 1, vertex.x, vertex.y, 0);
        }
        buffer->Render();
        context->UnbindImage();
        context->UnbindShader();
    }

    void BindProgram(Mode mode, const AreaFootprint& footprint) {
        switch (mode) {
        case Mode::Cubic:
            BindNew<PixelShaderCubic>();
            break;
        case Mode::Linear:
            BindNew<PixelShaderLinear>();
            break;
        case Mode::Nearest:
            BindNew<PixelShaderNearest>();
            break;
        case Mode::Area:
            static_cast<AreaFootprint&>(*BindNew<PixelShaderArea>()) = footprint;
            break;
        }
    }
};

} // namespace

TEST_F(QuadSamplingTest, ThePlainPictureIsTheRasterisersOfTheSameQuad) {
    RandomSamples random(7);
    for (std::uint32_t round = 0; round < 200; ++round) {
        const auto type = Data::ColorTypeEnum::Value(random.Below(Data::ColorTypeEnum::Count));
        const auto image = MakeRandomImage(type, 1 + random.Below(90), 1 + random.Below(90), round);
        ImageRect rect = RandomRect(random, 70);
        rect.mode = static_cast<Mode>(random.Below(4));
        const std::int32_t shiftX = static_cast<std::int32_t>(random.Below(110)) - 30;
        rect.x0 += shiftX - 60;
        rect.x1 += shiftX - 60;
        rect.y0 -= 70;
        rect.y1 -= 70;
        DrawByContext(image, rect);
        std::vector<Color> plain(64 * 48);
        RenderPlain({plain.data(), 64, 48}, *image, rect, {0, 0, 64, 48});
        SCOPED_TRACE(testing::Message() << "round " << round << " type " << type << " mode " << int(rect.mode));
        ExpectPixels([&](auto x, auto y) { return plain[y * 64 + x]; });
    }
}

TEST_F(QuadSamplingTest, APicturesPixelsDoNotDependOnWhereItLies) {
    const auto image =
        MakeImage<std::uint8_t>(97, 61, [](auto x, auto y) { return std::uint8_t((x + y) % 2 ? 255 : 0); });
    for (const Mode mode : {Mode::Cubic, Mode::Linear, Mode::Nearest, Mode::Area}) {
        ImageRect rect;
        rect.x1 = 48;
        rect.y1 = 30;
        rect.mode = mode;
        std::vector<Color> atOrigin(48 * 30), moved(48 * 30);
        RenderPlain({atOrigin.data(), 48, 30}, *image, rect, {0, 0, 48, 30});
        for (const std::int32_t distance : {1, 3, 7, 13, 21}) {
            rect.x0 = rect.y0 = -distance;
            rect.x1 = 48 - distance;
            rect.y1 = 30 - distance;
            RenderPlain({moved.data(), 48, 30}, *image, rect, {0, 0, 48, 30});
            for (std::int32_t y = 0; y < 30 - distance; ++y)
                for (std::int32_t x = 0; x < 48 - distance; ++x)
                    ASSERT_EQ(moved[y * 48 + x], atOrigin[(y + distance) * 48 + x + distance]);
        }
    }
}

TEST_F(QuadSamplingTest, PositionsAlongAnAxisStayWithinTheirBound) {
    RandomSamples random(9);
    double worst = 0.0;
    for (std::uint32_t round = 0; round < 20000; ++round) {
        const SizesOnly image(1 + random.Below(round % 2 ? 100000 : 300), 1 + random.Below(round % 3 ? 30000 : 50));
        const ImageRect rect = RandomRect(random, round % 5 ? 3000 : 100000000);
        const QuadSampling sampling(rect, image);
        const PixelRegion bounds = Normalized(rect);
        const auto x = static_cast<std::int32_t>(random.Below(static_cast<std::uint32_t>(bounds.right - bounds.left)));
        const auto y = static_cast<std::int32_t>(random.Below(static_cast<std::uint32_t>(bounds.bottom - bounds.top)));
        const auto plain = QuadSampling::Row(sampling, y).At(x);
        const double alongColumns = sampling.IsTurned() ? plain.y : plain.x;
        const double alongRows = sampling.IsTurned() ? plain.x : plain.y;
        const double columnError = std::abs(alongColumns - sampling.Columns().Position(x));
        const double rowError = std::abs(alongRows - sampling.Rows().Position(y));
        ASSERT_LE(columnError, sampling.Columns().PositionError()) << round;
        ASSERT_LE(rowError, sampling.Rows().PositionError()) << round;
        worst = std::max(
            {worst, columnError / sampling.Columns().PositionError(), rowError / sampling.Rows().PositionError()});
    }
    // Roundings do not all go one way; were nothing of the bound used, this would measure the wrong thing.
    EXPECT_GT(worst, 0.02);
    EXPECT_LT(worst, 0.5);
}

TEST_F(QuadSamplingTest, TheFootprintFollowsTheTurn) {
    const SizesOnly image(600, 400);
    ImageRect rect;
    rect.x1 = 150;
    rect.y1 = 50;
    for (const std::int32_t rotation : rotations)
        for (const bool isMirrored : {false, true}) {
            rect.rotation = rotation;
            ImageRect placed = rect;
            if (isMirrored)
                std::swap(placed.x0, placed.x1);
            const AreaFootprint footprint = QuadSampling(placed, image).Footprint();
            const bool isTurned = rotation == 90 || rotation == 270;
            EXPECT_EQ(footprint.sizeX, isTurned ? 12.0 : 4.0);
            EXPECT_EQ(footprint.sizeY, isTurned ? 400.0 / 150.0 : 8.0);
            EXPECT_EQ(footprint.invArea, 1.0 / (footprint.sizeX * footprint.sizeY));
        }
}

} // namespace Quorvex::Platform::Video::Software
