#pragma once

#include "foundation/String.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace Quorvex::Tools {

/// A path from the command line as the program's operations take it. Raises where the system's bytes are no text.
inline String PathArgument(const char* argument) {
    return String(std::filesystem::path(argument).u16string().c_str());
}

/// The whole text as a decimal number; raises otherwise.
inline std::int32_t NumberArgument(const std::string& argument) {
    try {
        std::size_t used = 0;
        const int number = std::stoi(argument, &used);
        if (used == argument.size())
            return number;
    } catch (const std::logic_error&) {
        // The library names nothing but its own function.
    }
    throw std::invalid_argument("no number: " + argument);
}

/// Runs a program's work and gives its exit code: 0, or 1 after the failure's message went to standard error.
template <class Action>
int RunReportingFailure(const char* program, Action&& action) {
    try {
        action();
        return 0;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "%s: Not enough memory!\n", program);
    } catch (const std::exception& failure) {
        // Many failures of a viewer's day have no text of their own.
        const char* text = failure.what();
        std::fprintf(stderr, "%s: %s\n", program, *text != 0 ? text : "The file could not be opened.");
    }
    return 1;
}

} // namespace Quorvex::Tools
