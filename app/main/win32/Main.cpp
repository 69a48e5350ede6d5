#include "app/CommandLine.h"
#include "app/Entry.h"
#include "foundation/Report.h"
#include "foundation/Version.h"

#include <windows.h>

#include <shellapi.h>

#include <cstring>

using namespace Quorvex;

namespace {

/// The contract of CommandLineToArgvW for narrow systems, which lack it: one block, to be freed with LocalFree.
LPSTR* CommandLineToArgvA(const char* line, int* count) {
    const auto arguments = App::SplitCommandLine(line);
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

/// The first argument after the program's name; further ones are ignored. A failing call leaves the program without a
/// file.
template <class Unit, class Text>
std::optional<String> FirstOf(Unit** arguments, int count, const char* name) {
    if (arguments == nullptr) {
        ReportFailure(__LINE__, name);
        return std::nullopt;
    }
    std::optional<String> first;
    if (count >= 2)
        first = String(reinterpret_cast<const Text*>(arguments[1]));
    if (LocalFree(arguments) != nullptr)
        ReportFailure(__LINE__, "LocalFree");
    return first;
}

std::optional<String> PathFromCommandLine() {
    int count = 0;
    if (IsUnicodeSystem()) {
        LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
        return FirstOf<wchar_t, char16_t>(arguments, count, "CommandLineToArgvW");
    }
    LPSTR* const arguments = CommandLineToArgvA(GetCommandLineA(), &count);
    return FirstOf<char, char>(arguments, count, "CommandLineToArgvA");
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    return App::RunVarnolite(GUI::CreateNativeWindowSystem, &PathFromCommandLine);
}
