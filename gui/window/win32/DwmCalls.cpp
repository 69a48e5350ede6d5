#include "gui/window/win32/DwmCalls.h"

#include "foundation/Report.h"

#include <cstdint>

namespace Quorvex::GUI {

namespace {

/// DWM_E_COMPOSITIONDISABLED, which not every version of the system's headers names.
constexpr auto compositionDisabled = static_cast<HRESULT>(0x80263001);

} // namespace

DwmCalls::DwmCalls() : library("dwmapi.dll"), scalingLibrary("shcore.dll") {
    library.Take(isCompositionEnabled, "DwmIsCompositionEnabled");
    library.Take(enableBlurBehindWindow, "DwmEnableBlurBehindWindow");
    library.Take(flush, "DwmFlush");
    library.Take(setWindowAttribute, "DwmSetWindowAttribute");
    scalingLibrary.Take(setProcessDpiAwareness, "SetProcessDpiAwareness");
}

DwmCalls& GetDwmCalls() {
    static DwmCalls calls;
    return calls;
}

void ReportDwmFailure(int line, const char* name, HRESULT result) {
    if (FAILED(result) && result != compositionDisabled)
        ReportFailure(line, name, static_cast<std::uint32_t>(result));
}

} // namespace Quorvex::GUI
