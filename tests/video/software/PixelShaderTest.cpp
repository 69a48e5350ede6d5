#include "tests/video/FakeContext.h"
#include "tests/video/software/PixelProgramsReference.h"
#include "tests/video/software/SoftwareFixture.h"

namespace Quorvex::Platform::Video::Software {

namespace {

TEST(ShadeOrder, UnsignedComeFirst) {
    using Types = Data::ColorTypeEnum;
    const std::array<std::size_t, 20> expected = {
        Types::UInt8,      Types::UInt16,     Types::UInt32,     Types::UInt64,      Types::SInt8,
        Types::SInt16,     Types::SInt32,     Types::SInt64,     Types::Float32,     Types::Float64,
        Types::BGRAUInt8,  Types::BGRAUInt16, Types::BGRAUInt32, Types::BGRAUInt64,  Types::BGRASInt8,
        Types::BGRASInt16, Types::BGRASInt32, Types::BGRASInt64, Types::BGRAFloat32, Types::BGRAFloat64};
    EXPECT_EQ(shadeOrder, expected);
}

class PixelShaderTest : public testing::Test {
protected:
    template <class Shader>
    SharedPtr<Shader> Make() {
        return SharedPtr<Shader>(new Shader(context.get(), context));
    }

    SharedPtr<SoftwareContext> context{new SoftwareContext()};
};

TEST_F(PixelShaderTest, SpeakNoLanguageAndHaveNoConstants) {
    const SharedPtr<PixelShaderLinear> shader = Make<PixelShaderLinear>();
    EXPECT_FALSE(shader->SupportsGLSL());
    EXPECT_FALSE(shader->SupportsHLSL());
    EXPECT_EQ(RaisedText([&] { shader->CreateFromGLString(""); }), "GLSL is not supported!");
    EXPECT_EQ(RaisedText([&] { shader->CreateFromHLString(""); }), "HLSL is not supported!");
    EXPECT_NO_THROW(shader->SetFloat("bufSizeX", 1.0f));
    EXPECT_NO_THROW(shader->SetInteger("image", 0));
    EXPECT_EQ(shader->GetContext(), context);
}

TEST_F(PixelShaderTest, TheFootprintOfAreaStartsAtFullSize) {
    const SharedPtr<PixelShaderArea> shader = Make<PixelShaderArea>();
    EXPECT_EQ(shader->sizeX, 1.0);
    EXPECT_EQ(shader->sizeY, 1.0);
    EXPECT_EQ(shader->invArea, 1.0);
}

TEST_F(PixelShaderTest, EverySlotRunsItsProgram) {
    const SharedPtr<PixelShaderArea> area = Make<PixelShaderArea>();
    area->sizeX = 2.5;
    area->sizeY = 1.5;
    area->invArea = 1 / 3.75;
    const SharedPtr<PixelShader> shaders[] = {
        Make<PixelShaderDefault>(), Make<PixelShaderNearest>(), Make<PixelShaderNearestWithColorization>(),
        Make<PixelShaderLinear>(),  Make<PixelShaderCubic>(),   area};
    const Color flat{200, 100, 50, 25};
    for (std::uint32_t type = 0; type < Data::ColorTypeEnum::Count; ++type) {
        Data::Dispatch(static_cast<Data::ColorTypeEnum::Value>(type), "", [&](auto tag) {
            using Sample = typename decltype(tag)::Sample;
            SharedPtr<Data::ImageBase> image = MakeRandomImage<Sample>(7, 5, type);
            const auto pixels = Data::SampleTraits<Sample>::LockIn(std::as_const(*image), Data::LockMode::ReadOnly);
            PixelShaderParameter<Sample> parameter(flat, pixels.Data, image);
            parameter.u = 4.3 / 64;
            parameter.v = 2.6 / 8;
            const auto reference = ReferencePrograms::Of<Sample>(*image);
            const double x = parameter.PositionX();
            const double y = parameter.PositionY();
            const Color expected[] = {flat,
                                      reference.Nearest(x, y),
                                      reference.Colorized(x, y, flat),
                                      reference.Linear(x, y),
                                      reference.Cubic(x, y),
                                      reference.Area(x, y, 2.5, 1.5)};
            for (std::size_t i = 0; i < std::size(shaders); ++i) {
                Color color;
                shaders[i]->Shade(color, parameter);
                EXPECT_EQ(color, expected[i]) << Data::SampleTraits<Sample>::typeName << ", shader " << i;
            }
        });
    }
}

TEST_F(PixelShaderTest, SignedEightBitLimitsAreTheLimitsOfAByteInAllPrograms) {
    const SharedPtr<PixelShader> shaders[] = {Make<PixelShaderNearest>(), Make<PixelShaderLinear>(),
                                              Make<PixelShaderCubic>(), Make<PixelShaderArea>()};
    for (const int value : {-128, 127}) {
        SharedPtr<Data::ImageBase> image = context->CreateImageSInt8(5, 5, 0, 0);
        image->clear(value);
        const auto pixels = std::as_const(*image).LockSInt8(Data::LockMode::ReadOnly);
        PixelShaderParameter<std::int8_t> parameter({255, 255, 255, 255}, pixels.Data, image);
        parameter.u = 2.7 / 64;
        parameter.v = 1.4 / 8;
        const auto level = static_cast<std::uint8_t>(value + 128);
        for (const SharedPtr<PixelShader>& shader : shaders) {
            Color color;
            shader->Shade(color, parameter);
            EXPECT_EQ(color, (Color{level, level, level, 255}));
        }
    }
}

TEST_F(PixelShaderTest, PositionsAreFractionsOfTheAllocatedImage) {
    SharedPtr<Data::ImageBase> image = MakeRandomImage<std::uint8_t>(100, 50, 1);
    PixelShaderParameter<std::uint8_t> parameter({}, nullptr, image);
    parameter.u = 100.0 / 128.0;
    parameter.v = 50.0 / 56.0;
    EXPECT_EQ(parameter.PositionX(), 100.0);
    EXPECT_EQ(parameter.PositionY(), 50.0);
    EXPECT_EQ(parameter.View().allocatedWidth, 128u);
    EXPECT_EQ(parameter.View().width, 100u);
    EXPECT_EQ(parameter.View().height, 50u);
}

/// Whole quads with each shader, against the reference at the positions of the weights.
class ShadedQuadTest : public SoftwareFixture {};

TEST_F(ShadedQuadTest, AQuadOfEveryTypeShowsTheReference) {
    for (std::uint32_t type = 0; type < Data::ColorTypeEnum::Count; ++type)
        Data::Dispatch(static_cast<Data::ColorTypeEnum::Value>(type), "", [&](auto tag) {
            using Sample = typename decltype(tag)::Sample;
            SharedPtr<Data::ImageBase> image = MakeRandomImage<Sample>(9, 7, type);
            Bind(image);
            const SharedPtr<PixelShaderLinear> shader = BindNew<PixelShaderLinear>();
            renderer->BeginPaint();
            // Four times and three times as large: the positions are those of the destination's centres.
            Draw({2, 3, 2 + 36, 3 + 21, 0, 0, 9.0f / 64, 7.0f / 8});
            const auto reference = ReferencePrograms::Of<Sample>(*image);
            int different = 0;
            for (std::uint32_t y = 0; y < 21; ++y)
                for (std::uint32_t x = 0; x < 36; ++x) {
                    const Color drawn = At(x + 2, y + 3);
                    const Color expected = reference.Linear((x + nearHalf) / 4, (y + nearHalf) / 3);
                    // The plane's weights round in the last places of a 64-bit float: an edge between two levels may
                    // fall to the other side, once in a long while.
                    different += drawn != expected;
                    ASSERT_LE(std::abs(drawn.green - expected.green), 1) << x << ", " << y;
                }
            EXPECT_LE(different, 2) << Data::SampleTraits<Sample>::typeName;
        });
}

} // namespace

} // namespace Quorvex::Platform::Video::Software
