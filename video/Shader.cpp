#include "video/Shader.h"

namespace Quorvex::Platform::Video {

void ShaderProgram::CreateFromGLString(const char*) {
    throw Exception("GLSL is not supported!");
}

void ShaderProgram::CreateFromHLString(const char*) {
    throw Exception("HLSL is not supported!");
}

void ShaderProgram::CreateFromHLStringBinary(std::span<const std::uint32_t>) {
    throw Exception("HLSL is not supported!");
}

} // namespace Quorvex::Platform::Video
