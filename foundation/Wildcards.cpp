#include "foundation/Wildcards.h"

#include <string_view>

namespace Quorvex {

namespace {

std::u16string_view UnitsOf(const String& wide) {
    return wide.IsEmpty() ? std::u16string_view() : std::u16string_view(wide.Wide(), wide.length());
}

// When the text after the last star does not fit, the star takes one unit more; earlier stars need no second look.
bool Matches(std::u16string_view name, std::u16string_view pattern) {
    std::size_t n = 0;
    std::size_t p = 0;
    std::size_t afterStar = std::u16string_view::npos;
    std::size_t starEnd = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            afterStar = ++p;
            starEnd = n;
        } else if (p < pattern.size() && (pattern[p] == u'?' || pattern[p] == name[n])) {
            ++n;
            ++p;
        } else if (afterStar != std::u16string_view::npos) {
            p = afterStar;
            n = ++starEnd;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

} // namespace

// Compared in UTF-16, where "?" is one unit in either encoding of a name.
bool MatchesWildcards(const String& name, const String& pattern) {
    const String wideName = name.ToWide();
    const String widePattern = pattern.ToWide();
    return Matches(UnitsOf(wideName), UnitsOf(widePattern));
}

} // namespace Quorvex
