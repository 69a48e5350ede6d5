#pragma once

#include "video/Context.h"

namespace Quorvex::Platform::Video {

// A new context of one backend for a toolkit whose first window this is. Each raises Exception if the backend cannot
// start here; CreateContextWithFallback then tries another.

SharedPtr<Context> CreateOpenGLContext(const SharedPtr<IWindowSurface>& firstWindow);
SharedPtr<Context> CreateDirect3D9Context(const SharedPtr<IWindowSurface>& firstWindow);
SharedPtr<Context> CreateSoftwareContext(const SharedPtr<IWindowSurface>& firstWindow);

} // namespace Quorvex::Platform::Video
