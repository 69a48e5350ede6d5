#include "app/CommandLine.h"

#include <algorithm>

namespace Quorvex::App {

namespace {

bool IsBlank(char unit) {
    return unit == ' ' || unit == '\t';
}

std::string TakeProgramName(std::string_view& rest) {
    const bool isQuoted = rest.starts_with('"');
    if (isQuoted)
        rest.remove_prefix(1);
    const auto end =
        isQuoted ? std::find(rest.begin(), rest.end(), '"') : std::find_if(rest.begin(), rest.end(), IsBlank);
    const auto length = static_cast<std::size_t>(end - rest.begin());
    const std::string name(rest.substr(0, length));
    rest.remove_prefix(std::min(length + 1, rest.size()));
    return name;
}

std::size_t CountLeading(std::string_view text, char unit) {
    return std::min(text.find_first_not_of(unit), text.size());
}

/// Reads one argument from its first unit up to the blank behind it.
class ArgumentReader {
public:
    explicit ArgumentReader(std::string_view& line) : rest(line) {}

    std::string Read() {
        while (!rest.empty() && (isQuoted || !IsBlank(rest.front())))
            TakeUnits();
        return argument;
    }

private:
    void TakeUnits() {
        const std::size_t backslashes = CountLeading(rest, '\\');
        if (backslashes != 0)
            return TakeBackslashes(backslashes);
        if (rest.front() == '"')
            return TakeQuotes();
        argument += rest.front();
        rest.remove_prefix(1);
    }

    void TakeBackslashes(std::size_t count) {
        rest.remove_prefix(count);
        if (!rest.starts_with('"')) {
            argument.append(count, '\\');
            return;
        }
        argument.append(count / 2, '\\');
        if (count % 2 != 0) {
            argument += '"';
            rest.remove_prefix(1);
        }
    }

    void TakeQuotes() {
        // A quote that closes counts as the second of its row, so that """ within a quoted text is one character.
        std::size_t quotes = isQuoted ? 1 : 0;
        for (; rest.starts_with('"'); rest.remove_prefix(1))
            if (++quotes == 3) {
                argument += '"';
                quotes = 0;
            }
        isQuoted = quotes == 1;
    }

    std::string_view& rest;
    std::string argument;
    bool isQuoted = false;
};

} // namespace

std::vector<std::string> SplitCommandLine(std::string_view line) {
    std::vector<std::string> arguments{TakeProgramName(line)};
    for (;;) {
        while (!line.empty() && IsBlank(line.front()))
            line.remove_prefix(1);
        if (line.empty())
            return arguments;
        arguments.push_back(ArgumentReader(line).Read());
    }
}

} // namespace Quorvex::App
