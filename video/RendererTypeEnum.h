#pragma once

#include "settings/ValueText.h"

#include <cstdint>

namespace Quorvex::Platform::Video {

/// The user's choice of backend, as it is stored in the settings.
enum class RendererTypeEnum : std::uint32_t { OpenGL = 0, Direct3D9 = 1, Software = 2 };

inline constexpr std::uint32_t rendererTypeCount = 3;

/// "OpenGL", "Direct3D9" or "Software": the word in the settings and their dialog, and the name of a renderer. A
/// backend always gets one and the same pointer, so that callers can compare pointers instead of texts. Raises
/// Exception "unknown renderer type" for any other value.
const char* RendererTypeName(RendererTypeEnum type);

} // namespace Quorvex::Platform::Video

namespace Quorvex {

template <>
struct Keywords<Platform::Video::RendererTypeEnum> {
    using Type = Platform::Video::RendererTypeEnum;
    static constexpr Keyword<Type> table[] = {
        {Type::OpenGL, "OpenGL"}, {Type::Direct3D9, "Direct3D9"}, {Type::Software, "Software"}};
};

} // namespace Quorvex
