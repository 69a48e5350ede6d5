#include "video/ResamplingPrograms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <vector>

namespace Quorvex::Platform::Video {

namespace {

/// The program's lines without their indentation.
std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line.substr(std::min(line.find_first_not_of("\t "), line.size())));
    return lines;
}

const std::string fetchLine = "return texture2D(image,vec2((v.x+0.5)/bufSizeX,(v.y+0.5)/bufSizeY));";
const std::string columnLine = "color += clamp(fImagePosX1-fImagePosX0,0.0,1.0)*Fetch2(vec2(fImagePosX0,y));";
const std::string lastColumnLine = "color += max(fImagePosX1-fImagePosX0,0.0)*Fetch2(vec2(fImagePosX0,y));";
const std::string rowLine = "color += clamp(fImagePosY1-y,0.0,1.0)*processRow(fImagePosX0,fImagePosX1,y);";
const std::string lastRowLine = "color += max(fImagePosY1-y,0.0)*processRow(fImagePosX0,fImagePosX1,y);";
const std::string areaLine = "gl_FragColor = color/((fImagePosY1-fImagePosY0)*(fImagePosX1-fImagePosX0));";

const std::vector<std::string> head = {"#version 110", "uniform sampler2D image;", "uniform float bufSizeX;",
                                       "uniform float bufSizeY;"};
const std::vector<std::string> fetchFunction = {"vec4 Fetch2(vec2 v)", "{", fetchLine, "}"};
const std::vector<std::string> areaHead = {"uniform float TCOffsetX;", "uniform float TCOffsetY;"};
const std::vector<std::string> rowStart = {
    "vec4 processRow(float fImagePosX0, float fImagePosX1, float y)", "{",
    "vec4 color = min(1.0-fract(fImagePosX0),fImagePosX1-fImagePosX0)*Fetch2(vec2(floor(fImagePosX0),y));",
    "fImagePosX0 = floor(fImagePosX0)+1.0;"};
const std::vector<std::string> areaMain = {
    "return color;",
    "}",
    "void main()",
    "{",
    "float fImagePosX0 = (gl_TexCoord[0].x-TCOffsetX)*bufSizeX;",
    "float fImagePosX1 = (gl_TexCoord[0].x+TCOffsetX)*bufSizeX;",
    "float fImagePosY0 = (gl_TexCoord[0].y-TCOffsetY)*bufSizeY;",
    "float fImagePosY1 = (gl_TexCoord[0].y+TCOffsetY)*bufSizeY;",
    "float y = fImagePosY0;",
    "vec4 color = min(1.0-fract(y),fImagePosY1-y)*processRow(fImagePosX0,fImagePosX1,floor(y));",
    "y = floor(y)+1.0;"};
const std::vector<std::string> areaEnd = {areaLine, "}"};

std::vector<std::string> Joined(std::initializer_list<std::vector<std::string>> parts) {
    std::vector<std::string> lines;
    for (const auto& part : parts)
        lines.insert(lines.end(), part.begin(), part.end());
    return lines;
}

std::vector<std::string> Repeated(std::uint32_t count, const std::vector<std::string>& part) {
    std::vector<std::string> lines;
    for (std::uint32_t i = 0; i < count; ++i)
        lines.insert(lines.end(), part.begin(), part.end());
    return lines;
}

} // namespace

TEST(ResamplingPrograms, AreaLoopsOverTheFootprint) {
    EXPECT_EQ(LinesOf(AreaProgramText()),
              Joined({head,
                      areaHead,
                      fetchFunction,
                      rowStart,
                      {"while (fImagePosX0<fImagePosX1)", "{", columnLine, "fImagePosX0++;", "}"},
                      areaMain,
                      {"while (y<fImagePosY1)", "{", rowLine, "y++;", "}"},
                      areaEnd}));
}

TEST(ResamplingPrograms, TheUnrolledAreaHasOneStepPerRound) {
    for (std::uint32_t rounds = 0; rounds < 20; ++rounds)
        EXPECT_EQ(LinesOf(UnrolledAreaProgramText(rounds)), Joined({head,
                                                                    areaHead,
                                                                    fetchFunction,
                                                                    rowStart,
                                                                    Repeated(rounds, {columnLine, "fImagePosX0++;"}),
                                                                    {lastColumnLine},
                                                                    areaMain,
                                                                    Repeated(rounds, {rowLine, "y++;"}),
                                                                    {lastRowLine},
                                                                    areaEnd}));
}

TEST(ResamplingPrograms, CubicFetchesItsSamplesRowByRow) {
    const std::vector<std::string> functions = {
        "vec4 cubicInterpolate(vec4 p[16], int i, float x)",
        "{",
        "return p[i+1] + 0.5 * x*(p[i+2] - p[i+0] + x*(2.0*p[i+0] - 5.0*p[i+1] + 4.0*p[i+2] - p[i+3] + "
        "x*(3.0*(p[i+1] - p[i+2]) + p[i+3] - p[i+0])));",
        "}",
        "vec4 bicubicInterpolate2(vec4 p[16], float x, float y)",
        "{",
        "vec4 rows[16];",
        "rows[0] = cubicInterpolate(p, 0, x);",
        "rows[1] = cubicInterpolate(p, 4, x);",
        "rows[2] = cubicInterpolate(p, 8, x);",
        "rows[3] = cubicInterpolate(p, 12, x);",
        "return cubicInterpolate(rows, 0, y);",
        "}"};
    const std::vector<std::string> mainStart = {"void main()",
                                                "{",
                                                "float fImagePosX0 = (gl_TexCoord[0].x)*bufSizeX - 0.5;",
                                                "float fImagePosY0 = (gl_TexCoord[0].y)*bufSizeY - 0.5;",
                                                "float ix = floor(fImagePosX0)-1.0;",
                                                "float iy = floor(fImagePosY0)-1.0;",
                                                "vec4 arr[16];"};
    std::vector<std::string> fetches;
    for (int i = 0; i < 16; ++i)
        fetches.push_back("arr[" + std::to_string(i) + "] = Fetch2(vec2(ix + " + std::to_string(i % 4) + ".0, iy + " +
                          std::to_string(i / 4) + ".0));");
    EXPECT_EQ(LinesOf(CubicProgramText()),
              Joined({head,
                      fetchFunction,
                      functions,
                      mainStart,
                      fetches,
                      {"gl_FragColor = bicubicInterpolate2(arr, fImagePosX0-floor(fImagePosX0), "
                       "fImagePosY0-floor(fImagePosY0));",
                       "}"}}));
}

} // namespace Quorvex::Platform::Video
