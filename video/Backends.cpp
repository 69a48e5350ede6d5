#include "video/Backends.h"

#include "video/WindowSurface.h"
#include "video/software/SoftwareContext.h"

namespace Quorvex::Platform::Video {

// This build carries no driver for either kind of hardware; it starts as a machine without one does.

SharedPtr<Context> CreateOpenGLContext(const SharedPtr<IWindowSurface>&) {
    throw Exception("OpenGL is not available.");
}

SharedPtr<Context> CreateDirect3D9Context(const SharedPtr<IWindowSurface>&) {
    throw Exception("Direct3D9 is not available.");
}

SharedPtr<Context> CreateSoftwareContext(const SharedPtr<IWindowSurface>& firstWindow) {
    return SharedPtr<Context>(new Software::SoftwareContext(firstWindow));
}

} // namespace Quorvex::Platform::Video
