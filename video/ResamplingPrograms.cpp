#include "video/ResamplingPrograms.h"

#include <string_view>

namespace Quorvex::Platform::Video {

namespace {

constexpr std::string_view versionAndImage = R"(#version 110
uniform sampler2D image;
uniform float bufSizeX;
uniform float bufSizeY;
)";

constexpr std::string_view footprintUniforms = R"(uniform float TCOffsetX;
uniform float TCOffsetY;
)";

constexpr std::string_view fetch = R"(vec4 Fetch2(vec2 v)
{
	return texture2D(image,vec2((v.x+0.5)/bufSizeX,(v.y+0.5)/bufSizeY));
}
)";

constexpr std::string_view rowStart = R"(vec4 processRow(float fImagePosX0, float fImagePosX1, float y)
{
	vec4 color = min(1.0-fract(fImagePosX0),fImagePosX1-fImagePosX0)*Fetch2(vec2(floor(fImagePosX0),y));
	fImagePosX0 = floor(fImagePosX0)+1.0;
)";

constexpr std::string_view columnLoop = "	while (fImagePosX0<fImagePosX1)\n	{\n";

constexpr std::string_view columnStep =
    R"(	color += clamp(fImagePosX1-fImagePosX0,0.0,1.0)*Fetch2(vec2(fImagePosX0,y));
	fImagePosX0++;
)";

constexpr std::string_view loopEnd = "	}\n";

constexpr std::string_view lastColumn = "	color += "
                                        "max(fImagePosX1-fImagePosX0,0.0)*Fetch2(vec2(fImagePosX0,y));\n";

constexpr std::string_view rowEndAndMain = R"(	return color;
}
void main()
{
	float fImagePosX0 = (gl_TexCoord[0].x-TCOffsetX)*bufSizeX;
	float fImagePosX1 = (gl_TexCoord[0].x+TCOffsetX)*bufSizeX;
	float fImagePosY0 = (gl_TexCoord[0].y-TCOffsetY)*bufSizeY;
	float fImagePosY1 = (gl_TexCoord[0].y+TCOffsetY)*bufSizeY;
	float y = fImagePosY0;
	vec4 color = min(1.0-fract(y),fImagePosY1-y)*processRow(fImagePosX0,fImagePosX1,floor(y));
	y = floor(y)+1.0;
)";

constexpr std::string_view rowLoop = "	while (y<fImagePosY1)\n	{\n";

constexpr std::string_view rowStep =
    R"(	color += clamp(fImagePosY1-y,0.0,1.0)*processRow(fImagePosX0,fImagePosX1,y);
	y++;
)";

constexpr std::string_view lastRow = "	color += max(fImagePosY1-y,0.0)*processRow(fImagePosX0,fImagePosX1,y);\n";

constexpr std::string_view areaEnd =
    R"(	gl_FragColor = color/((fImagePosY1-fImagePosY0)*(fImagePosX1-fImagePosX0));
}
)";

constexpr std::string_view cubicFunctions = R"(vec4 cubicInterpolate(vec4 p[16], int i, float x)
{
	return p[i+1] + 0.5 * x*(p[i+2] - p[i+0] + x*(2.0*p[i+0] - 5.0*p[i+1] + 4.0*p[i+2] - p[i+3] + x*(3.0*(p[i+1] - p[i+2]) + p[i+3] - p[i+0])));
}
vec4 bicubicInterpolate2(vec4 p[16], float x, float y)
{
	vec4 rows[16];
	rows[0] = cubicInterpolate(p, 0, x);
	rows[1] = cubicInterpolate(p, 4, x);
	rows[2] = cubicInterpolate(p, 8, x);
	rows[3] = cubicInterpolate(p, 12, x);
	return cubicInterpolate(rows, 0, y);
}
)";

constexpr std::string_view cubicMainStart = R"(void main()
{
	float fImagePosX0 = (gl_TexCoord[0].x)*bufSizeX - 0.5;
	float fImagePosY0 = (gl_TexCoord[0].y)*bufSizeY - 0.5;
	float ix = floor(fImagePosX0)-1.0;
	float iy = floor(fImagePosY0)-1.0;
	vec4 arr[16];
)";

constexpr std::string_view cubicEnd =
    R"(	gl_FragColor = bicubicInterpolate2(arr, fImagePosX0-floor(fImagePosX0), fImagePosY0-floor(fImagePosY0));
}
)";

std::string MakeAreaProgram() {
    std::string text;
    for (const std::string_view piece : {versionAndImage, footprintUniforms, fetch, rowStart, columnLoop, columnStep,
                                         loopEnd, rowEndAndMain, rowLoop, rowStep, loopEnd, areaEnd})
        text += piece;
    return text;
}

std::string MakeCubicProgram() {
    std::string text;
    for (const std::string_view piece : {versionAndImage, fetch, cubicFunctions, cubicMainStart})
        text += piece;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            text += "	arr[" + std::to_string(row * 4 + column) + "] = Fetch2(vec2(ix + " + std::to_string(column) +
                    ".0, iy + " + std::to_string(row) + ".0));\n";
    text += cubicEnd;
    return text;
}

} // namespace

const std::string& AreaProgramText() {
    static const std::string text = MakeAreaProgram();
    return text;
}

std::string UnrolledAreaProgramText(std::uint32_t rounds) {
    struct Piece {
        std::string_view text;
        std::size_t count;
    };
    const Piece pieces[] = {
        {versionAndImage, 1}, {footprintUniforms, 1}, {fetch, 1},        {rowStart, 1}, {columnStep, rounds},
        {lastColumn, 1},      {rowEndAndMain, 1},     {rowStep, rounds}, {lastRow, 1},  {areaEnd, 1}};
    std::size_t length = 0;
    for (const Piece& piece : pieces)
        length += piece.text.size() * piece.count;
    std::string text;
    text.reserve(length);
    for (const Piece& piece : pieces)
        for (std::size_t i = 0; i < piece.count; ++i)
            text += piece.text;
    return text;
}

const std::string& CubicProgramText() {
    static const std::string text = MakeCubicProgram();
    return text;
}

} // namespace Quorvex::Platform::Video
