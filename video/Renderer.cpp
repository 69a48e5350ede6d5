#include "video/Renderer.h"

#include "foundation/Report.h"

namespace Quorvex::Platform::Video {

Renderer::Renderer(Context* owner, SharedPtr<Context> sharedContext, SharedPtr<IWindowSurface> surface,
                   Function<void> recreate)
    : ContextChild(owner, std::move(sharedContext)), window(std::move(surface)), onRecreate(std::move(recreate)) {}

Renderer::~Renderer() {
    if (!window)
        return;
    try {
        window->DispatchMouseMessagesAndHide();
    } catch (...) {
        // The messages reach handlers that may raise anything.
        ReportProblem(__LINE__, "Renderer::~Renderer");
    }
}

void Renderer::OnDeviceReset() {
    if (onRecreate)
        onRecreate();
}

bool Renderer::EnableBlending() {
    return std::exchange(GetContext()->blendingEnabled, true);
}

void Renderer::DisableBlending() {
    GetContext()->blendingEnabled = false;
}

void Renderer::SetSize(std::uint32_t newWidth, std::uint32_t newHeight) {
    width = newWidth;
    height = newHeight;
    sizeChanged = true;
}

void Renderer::Translate(std::int32_t dx, std::int32_t dy) {
    GetContext()->translateX += dx;
    GetContext()->translateY += dy;
}

bool Renderer::IsCompositionEnabled() {
    return window && window->IsCompositionEnabled();
}

} // namespace Quorvex::Platform::Video
