#include "tests/support/LogCapture.h"
#include "tests/video/FakeContext.h"
#include "video/Truncation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Quorvex::Platform::Video {

namespace {

class SomeFormats final : public BufferFormats {
public:
    explicit SomeFormats(BufferFormat only) : supported(only) {}
    bool IsSupported(BufferFormat format) const override { return format == supported; }

private:
    BufferFormat supported;
};

TEST(BufferFormats, TheFirstWantedThatIsSupportedIsTaken) {
    const BufferFormat wanted[] = {BufferFormat::BGRA32, BufferFormat::BGR24, BufferFormat::BGR565};
    for (const BufferFormat supported : wanted)
        EXPECT_EQ(ChooseBufferFormat(wanted, SomeFormats(supported), RendererTypeEnum::OpenGL), supported);
    class AllFormats final : public BufferFormats {
        bool IsSupported(BufferFormat) const override { return true; }
    };
    EXPECT_EQ(ChooseBufferFormat(wanted, AllFormats(), RendererTypeEnum::OpenGL), BufferFormat::BGRA32);
}

TEST(BufferFormats, NoneNamesTheBackend) {
    const Quorvex::Test::LogCapture log;
    const BufferFormat wanted[] = {BufferFormat::BGRA32, BufferFormat::BGR24};
    const SomeFormats formats(BufferFormat::BGR565);
    EXPECT_EQ(RaisedText([&] { ChooseBufferFormat(wanted, formats, RendererTypeEnum::OpenGL); }),
              "No OpenGL buffer format!");
    EXPECT_EQ(RaisedText([&] { ChooseBufferFormat(wanted, formats, RendererTypeEnum::Direct3D9); }),
              "No Direct3D9 buffer format!");
    EXPECT_TRUE(log.HasLineEndingIn("No OpenGL buffer format!"));
    EXPECT_TRUE(log.HasLineEndingIn("No Direct3D9 buffer format!"));
    EXPECT_EQ(RaisedText([&] { ChooseBufferFormat({}, formats, RendererTypeEnum::OpenGL); }),
              "No OpenGL buffer format!");
}

TEST(BufferFormats, LayoutsAreThoseOfTheTable) {
    const std::uint32_t table[4][9] = {{32, 8, 16, 8, 8, 8, 0, 8, 24},
                                       {32, 8, 16, 8, 8, 8, 0, 0, 0},
                                       {24, 8, 16, 8, 8, 8, 0, 0, 0},
                                       {16, 5, 11, 6, 5, 5, 0, 0, 0}};
    for (std::size_t i = 0; i < 4; ++i) {
        const BufferFormatLayout& layout = bufferFormatLayouts[i];
        const std::uint32_t values[9] = {layout.totalBits,  layout.red.bits,    layout.red.shift,
                                         layout.green.bits, layout.green.shift, layout.blue.bits,
                                         layout.blue.shift, layout.alpha.bits,  layout.alpha.shift};
        for (std::size_t j = 0; j < 9; ++j)
            EXPECT_EQ(values[j], table[i][j]) << "format " << i << ", field " << j;
    }
}

template <class Base>
class PlainShader final : public Base {
public:
    using Base::Base;
    void SetFloat(const char*, float) override {}
    void SetInteger(const char*, std::int32_t) override {}
};

template <class Shader>
void ExpectNoLanguage() {
    SharedPtr<FakeContext> context(new FakeContext());
    PlainShader<Shader> shader(context.get(), context);
    EXPECT_FALSE(shader.SupportsGLSL());
    EXPECT_FALSE(shader.SupportsHLSL());
    const std::uint32_t tokens[] = {0xFFFF0300};
    EXPECT_EQ(RaisedText([&] { shader.CreateFromGLString("void main() {}"); }), "GLSL is not supported!");
    EXPECT_EQ(RaisedText([&] { shader.CreateFromHLString("float4 main() {}"); }), "HLSL is not supported!");
    EXPECT_EQ(RaisedText([&] { shader.CreateFromHLStringBinary(tokens); }), "HLSL is not supported!");
}

TEST(Shader, SpeaksNoLanguageUnlessABackendSaysSo) {
    ExpectNoLanguage<PixelShader>();
    ExpectNoLanguage<VertexShader>();
}

TEST(Truncation, KeepsTheLowByteOfTheInteger) {
    const auto reference = [](double value) {
        const double rest = std::fmod(std::trunc(value), 256.0);
        return static_cast<int>(rest < 0 ? rest + 256 : rest);
    };
    for (const double value : {0.0,
                               0.99,
                               1.0,
                               127.5,
                               255.0,
                               255.99,
                               256.0,
                               383.0,
                               -0.5,
                               -1.0,
                               -1.9,
                               -255.0,
                               -256.5,
                               2147483647.5,
                               2147483648.0,
                               4294967297.0,
                               -2147483650.0,
                               9007199254740993.0,
                               1152921504606846975.0,
                               9223372036854774784.0,
                               -9223372036854774784.0,
                               1e19,
                               -1e19,
                               1e300})
        EXPECT_EQ(TruncateToLowByte(value), reference(value)) << value;
    EXPECT_EQ(TruncateToLowByte(std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(TruncateToLowByte(-std::numeric_limits<double>::infinity()), 0);
    EXPECT_EQ(TruncateToLowByte(std::nan("")), 0);
}

TEST(Truncation, StaysAtTheLimitsOf32Bits) {
    EXPECT_EQ(TruncateToInt32(1.9), 1);
    EXPECT_EQ(TruncateToInt32(-1.9), -1);
    EXPECT_EQ(TruncateToInt32(2147483646.9), 2147483646);
    EXPECT_EQ(TruncateToInt32(2147483648.0), 2147483647);
    EXPECT_EQ(TruncateToInt32(-2147483647.9), -2147483647);
    EXPECT_EQ(TruncateToInt32(-1e30), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(TruncateToInt32(std::nan("")), 0);
}

} // namespace

} // namespace Quorvex::Platform::Video
