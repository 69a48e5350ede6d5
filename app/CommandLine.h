#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Quorvex::App {

/// The arguments of a narrow command line, the program's name first, by the rules that the home platform documents for
/// its wide form: the name ends at a blank, or at the second quote if it begins with one; further on 2n backslashes
/// before a quote are n backslashes and the quote delimits, 2n+1 are n backslashes and the quote is a character; other
/// backslashes stand for themselves; the third of three quotes in a row is a character.
std::vector<std::string> SplitCommandLine(std::string_view line);

} // namespace Quorvex::App
