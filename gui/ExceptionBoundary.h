#pragma once

#include "foundation/Exception.h"
#include "foundation/Report.h"

namespace Quorvex::GUI {

/// Calls HANDLER; what it raises is reported and goes no further.
template <class Handler>
void CallWithinBoundary(const Handler& handler) noexcept {
    try {
        handler();
    } catch (const Exception& exception) {
        ReportProblem(__LINE__, exception.what());
    } catch (...) {
        ReportProblem(__LINE__, "unknown exception in WndProc");
    }
}

} // namespace Quorvex::GUI
