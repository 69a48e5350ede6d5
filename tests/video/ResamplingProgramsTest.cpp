#include "video/ResamplingPrograms.h"

#include <gtest/gtest.h>

#include <vector>

namespace Quorvex::Platform::Video {

namespace {

std::size_t CountOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// Each line stands in the text, once, behind the one before it.
void ExpectInOrder(const std::string& text, const std::vector<std::string>& lines) {
    std::size_t position = 0;
    for (const std::string& line : lines) {
        const std::size_t found = text.find(line, position);
        ASSERT_NE(found, std::string::npos) << line;
        position = found + line.size();
    }
}

const std::string fetchLine = "return texture2D(image,vec2((v.x+0.5)/bufSizeX,(v.y+0.5)/bufSizeY));";
const std::string columnLine = "color += clamp(fImagePosX1-fImagePosX0,0.0,1.0)*Fetch2(vec2(fImagePosX0,y));";
const std::string lastColumnLine = "color += max(fImagePosX1-fImagePosX0,0.0)*Fetch2(vec2(fImagePosX0,y));";
const std::string rowLine = "color += clamp(fImagePosY1-y,0.0,1.0)*processRow(fImagePosX0,fImagePosX1,y);";
const std::string lastRowLine = "color += max(fImagePosY1-y,0.0)*processRow(fImagePosX0,fImagePosX1,y);";
const std::string areaLine = "gl_FragColor = color/((fImagePosY1-fImagePosY0)*(fImagePosX1-fImagePosX0));";

const std::vector<std::string> areaHead = {
    "#version 110\n",
    "uniform sampler2D image;",
    "uniform float bufSizeX;",
    "uniform float bufSizeY;",
    "uniform float TCOffsetX;",
    "uniform float TCOffsetY;",
    "vec4 Fetch2(vec2 v)",
    fetchLine,
    "vec4 processRow(float fImagePosX0, float fImagePosX1, float y)",
    "vec4 color = min(1.0-fract(fImagePosX0),fImagePosX1-fImagePosX0)*Fetch2(vec2(floor(fImagePosX0),y));",
    "fImagePosX0 = floor(fImagePosX0)+1.0;"};
const std::vector<std::string> areaMain = {
    "return color;",
    "void main()",
    "float fImagePosX0 = (gl_TexCoord[0].x-TCOffsetX)*bufSizeX;",
    "float fImagePosX1 = (gl_TexCoord[0].x+TCOffsetX)*bufSizeX;",
    "float fImagePosY0 = (gl_TexCoord[0].y-TCOffsetY)*bufSizeY;",
    "float fImagePosY1 = (gl_TexCoord[0].y+TCOffsetY)*bufSizeY;",
    "float y = fImagePosY0;",
    "vec4 color = min(1.0-fract(y),fImagePosY1-y)*processRow(fImagePosX0,fImagePosX1,floor(y));",
    "y = floor(y)+1.0;"};

std::vector<std::string> Joined(std::initializer_list<std::vector<std::string>> parts) {
    std::vector<std::string> lines;
    for (const auto& part : parts)
        lines.insert(lines.end(), part.begin(), part.end());
    return lines;
}

} // namespace

TEST(ResamplingPrograms, AreaLoopsOverTheFootprint) {
    ExpectInOrder(AreaProgramText(), Joined({areaHead,
                                             {"while (fImagePosX0<fImagePosX1)", columnLine, "fImagePosX0++;"},
                                             areaMain,
                                             {"while (y<fImagePosY1)", rowLine, "y++;", areaLine}}));
    EXPECT_TRUE(AreaProgramText().starts_with("#version 110\n"));
}

TEST(ResamplingPrograms, TheUnrolledAreaHasOneStepPerRound) {
    for (std::uint32_t rounds = 0; rounds < 20; ++rounds) {
        const std::string text = UnrolledAreaProgramText(rounds);
        ExpectInOrder(text, Joined({areaHead,
                                    std::vector<std::string>(rounds, columnLine),
                                    {lastColumnLine},
                                    areaMain,
                                    std::vector<std::string>(rounds, rowLine),
                                    {lastRowLine, areaLine}}));
        EXPECT_EQ(CountOf(text, columnLine), rounds);
        EXPECT_EQ(CountOf(text, "fImagePosX0++;"), rounds);
        EXPECT_EQ(CountOf(text, rowLine), rounds);
        EXPECT_EQ(CountOf(text, "y++;"), rounds);
        EXPECT_EQ(CountOf(text, "while"), 0u);
    }
}

TEST(ResamplingPrograms, CubicFetchesItsSamplesRowByRow) {
    const std::string& text = CubicProgramText();
    ExpectInOrder(text, {"#version 110\n", "uniform sampler2D image;", "uniform float bufSizeX;",
                         "uniform float bufSizeY;", fetchLine, "vec4 cubicInterpolate(vec4 p[16], int i, float x)",
                         "return p[i+1] + 0.5 * x*(p[i+2] - p[i+0] + x*(2.0*p[i+0] - 5.0*p[i+1] + 4.0*p[i+2] - p[i+3] "
                         "+ x*(3.0*(p[i+1] - p[i+2]) + p[i+3] - p[i+0])));",
                         "vec4 bicubicInterpolate2(vec4 p[16], float x, float y)", "(p, 0, x)", "(p, 4, x)",
                         "(p, 8, x)", "(p, 12, x)", "float fImagePosX0 = (gl_TexCoord[0].x)*bufSizeX - 0.5;",
                         "float ix = floor(fImagePosX0)-1.0;", "vec4 arr[16];"});
    std::vector<std::string> fetches;
    for (int i = 0; i < 16; ++i)
        fetches.push_back("arr[" + std::to_string(i) + "] = Fetch2(vec2(ix + " + std::to_string(i % 4) + ".0, iy + " +
                          std::to_string(i / 4) + ".0));");
    fetches.push_back("gl_FragColor = bicubicInterpolate2(arr, fImagePosX0-floor(fImagePosX0), "
                      "fImagePosY0-floor(fImagePosY0));");
    ExpectInOrder(text, fetches);
    EXPECT_EQ(CountOf(text, "TCOffset"), 0u) << "the cubic program has no footprint";
}

} // namespace Quorvex::Platform::Video
