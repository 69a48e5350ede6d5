#include "foundation/Report.h"

#include "foundation/Log.h"
#include "foundation/Numbers.h"
#include "foundation/platform/LastError.h"

namespace Quorvex {

namespace {

// A report is the last resort of code that is failing already: nothing that goes wrong here may add to that.
template <class MakeText>
void Report(int line, const MakeText& makeText) noexcept {
    try {
        WriteLogLine(line, makeText());
        CopyLogToDesktop();
    } catch (...) {
    }
}

} // namespace

// The code is read before anything else runs: the next call of the system would replace it.
void ReportFailure(int line, TextView name) noexcept {
    ReportFailure(line, name, Platform::GetLastErrorCode());
}

void ReportFailure(int line, TextView name, std::uint32_t code) noexcept {
    Report(line, [&] { return String(name) + " failed with error code " + IntegerToString(std::uint64_t{code}); });
}

void ReportProblem(int line, TextView text) noexcept {
    Report(line, [&] { return String(text); });
}

void ReportProblem(int line, TextView text, TextView text2) noexcept {
    Report(line, [&] { return String(text) + String(text2); });
}

} // namespace Quorvex
