#include "app/Entry.h"

#include "app/VarnoliteMainFrame.h"
#include "app/WindowTitle.h"
#include "foundation/Log.h"
#include "foundation/platform/MessageBox.h"

namespace Quorvex::App {

namespace {

/// At the end of a run in which something was reported.
void ShowReportText() {
    Platform::ShowMessageBox(String(programName).ToWide(), InCurrentLanguage(GetLogRecord().reportText));
}

} // namespace

int RunMainFrame(GUI::IWindowSystem& windowSystem, const PathSource& getPath) {
    try {
        VarnoliteMainFrame frame(windowSystem);
        frame.Open();
        if (const std::optional<String> path = getPath())
            frame.GetApplication().OpenFileOrExplain(*path);
        return frame.Run();
    } catch (const std::exception&) {
        return 0;
    }
}

int RunVarnolite(WindowSystemFactory createWindowSystem, const PathSource& getPath) {
    SetNotifier(&ShowReportText);
    std::unique_ptr<GUI::IWindowSystem> windowSystem;
    try {
        windowSystem = createWindowSystem();
    } catch (const std::exception& failure) {
        Platform::ShowMessageBox(programName, failure.what());
        return 1;
    }
    return RunMainFrame(*windowSystem, getPath);
}

} // namespace Quorvex::App
