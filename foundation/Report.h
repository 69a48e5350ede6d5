#pragma once

#include "foundation/TextView.h"

#include <cstdint>

namespace Quorvex {

/// Reporters of failed system calls and of faults of the program. They never raise: each writes a line with the
/// caller's source line to the log file and asks for its copy in the problem report; the caller raises afterwards if it
/// cannot go on. Any thread.

/// NAME failed with error code N, N being the system's last error.
void ReportFailure(int line, TextView name) noexcept;
/// NAME failed with error code CODE
void ReportFailure(int line, TextView name, std::uint32_t code) noexcept;
void ReportProblem(int line, TextView text) noexcept;
/// The two texts joined.
void ReportProblem(int line, TextView text, TextView text2) noexcept;

} // namespace Quorvex
