#include "foundation/platform/MessageBox.h"
#include "gui/window/x11/X11MessageBox.h"
#include "gui/window/x11/X11WindowSystem.h"

namespace Quorvex::GUI {

std::unique_ptr<IWindowSystem> CreateNativeWindowSystem() {
    // The layer that has message boxes knows no displays; from here on there may be one.
    Platform::SetMessageBoxPresenter(&ShowX11MessageBox);
    return std::make_unique<X11WindowSystem>();
}

} // namespace Quorvex::GUI
