#include "gui/window/x11/X11MessageBox.h"

#include "foundation/platform/MessageBox.h"
#include "gui/MessageBoxWindow.h"
#include "gui/window/x11/X11WindowSystem.h"

namespace Quorvex::GUI {

namespace {

bool IsReadOnDisplay(const String& title, const String& text) {
    try {
        X11WindowSystem windowSystem;
        return RunMessageBox(windowSystem, title, text);
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

void ShowX11MessageBox(const String& title, const String& text) {
    if (!IsReadOnDisplay(title, text))
        Platform::ShowPlainMessageBox(title, text);
}

} // namespace Quorvex::GUI
