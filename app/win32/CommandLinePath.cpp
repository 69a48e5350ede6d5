#include "app/win32/CommandLinePath.h"

#include "app/CommandLine.h"
#include "foundation/Report.h"
#include "foundation/Version.h"

#include <cstring>

namespace Quorvex::App {

namespace {

template <class Unit, class Text>
std::optional<String> FirstOf(Unit** arguments, int count, const char* name, const CommandLineCalls& calls) {
    if (arguments == nullptr) {
        ReportFailure(__LINE__, name);
        return std::nullopt;
    }
    std::optional<String> first;
    if (count >= 2)
        first = String(reinterpret_cast<const Text*>(arguments[1]));
    if (calls.localFree(arguments) != nullptr)
        ReportFailure(__LINE__, "LocalFree");
    return first;
}

} // namespace

LPSTR* CommandLineToArgvA(LPCSTR line, int* count) {
    const auto arguments = SplitCommandLine(line);
    std::size_t bytes = arguments.size() * sizeof(LPSTR);
    for (const auto& argument : arguments)
        bytes += argument.size() + 1;
    auto* const table = static_cast<LPSTR*>(LocalAlloc(LMEM_FIXED, bytes));
    if (table == nullptr)
        return nullptr;
    auto* text = reinterpret_cast<char*>(table + arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        table[i] = std::strcpy(text, arguments[i].c_str());
        text += arguments[i].size() + 1;
    }
    *count = static_cast<int>(arguments.size());
    return table;
}

std::optional<String> PathFromCommandLine(const CommandLineCalls& calls) {
    int count = 0;
    if (IsUnicodeSystem()) {
        LPWSTR* const arguments = calls.commandLineToArgvW(calls.getCommandLineW(), &count);
        return FirstOf<wchar_t, char16_t>(arguments, count, "CommandLineToArgvW", calls);
    }
    LPSTR* const arguments = calls.commandLineToArgvA(calls.getCommandLineA(), &count);
    return FirstOf<char, char>(arguments, count, "CommandLineToArgvA", calls);
}

} // namespace Quorvex::App
