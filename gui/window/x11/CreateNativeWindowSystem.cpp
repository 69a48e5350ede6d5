#include "gui/window/x11/X11WindowSystem.h"

namespace Quorvex::GUI {

std::unique_ptr<IWindowSystem> CreateNativeWindowSystem() {
    return std::make_unique<X11WindowSystem>();
}

} // namespace Quorvex::GUI
