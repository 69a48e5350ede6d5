#include "gui/window/win32/Win32WindowSystem.h"

namespace Quorvex::GUI {

std::unique_ptr<IWindowSystem> CreateNativeWindowSystem() {
    return std::make_unique<Win32WindowSystem>();
}

} // namespace Quorvex::GUI
