#pragma once

#include "foundation/String.h"

#include <windows.h>

#include <shellapi.h>

#include <optional>

namespace Quorvex::App {

/// The contract of CommandLineToArgvW for narrow systems, which lack it: one block, to be freed with LocalFree, or null
/// where there is no memory for it.
LPSTR* CommandLineToArgvA(LPCSTR line, int* count);

/// The calls by which the command line is read, so that a test can put others in.
struct CommandLineCalls {
    LPWSTR(WINAPI* getCommandLineW)() = &GetCommandLineW;
    LPSTR(WINAPI* getCommandLineA)() = &GetCommandLineA;
    LPWSTR*(WINAPI* commandLineToArgvW)(LPCWSTR, int*) = &CommandLineToArgvW;
    LPSTR* (*commandLineToArgvA)(LPCSTR, int*) = &CommandLineToArgvA;
    HLOCAL(WINAPI* localFree)(HLOCAL) = &LocalFree;
};

/// The first argument after the program's name; further ones are ignored. A failing call is reported by its name, and
/// leaves the program without a file.
std::optional<String> PathFromCommandLine(const CommandLineCalls& calls);

} // namespace Quorvex::App
