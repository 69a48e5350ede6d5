#include "video/ContextFallback.h"

namespace Quorvex::Platform::Video {

namespace {

std::span<const RendererTypeEnum> Sequence(RendererTypeEnum wanted) {
    using enum RendererTypeEnum;
    static constexpr RendererTypeEnum fromOpenGL[] = {OpenGL, Direct3D9, Software};
    static constexpr RendererTypeEnum fromDirect3D9[] = {Direct3D9, OpenGL, Software};
    static constexpr RendererTypeEnum fromSoftware[] = {Software};
    switch (wanted) {
    case OpenGL:
        return fromOpenGL;
    case Direct3D9:
        return fromDirect3D9;
    case Software:
        break;
    }
    // A number that no backend has, from a damaged settings file, gets the one that needs nothing.
    return fromSoftware;
}

} // namespace

void CreateContextWithFallback(RendererTypeEnum wanted, const ContextAttempts& attempts, RendererTypeEnum& current,
                               SharedPtr<Context>& context) {
    for (const RendererTypeEnum type : Sequence(wanted)) {
        current = type;
        try {
            attempts[static_cast<std::size_t>(type)](context);
            return;
        } catch (const std::exception&) {
            context.reset();
            if (type == RendererTypeEnum::Software)
                throw;
        }
    }
}

} // namespace Quorvex::Platform::Video
