#include "codecs/CodecFactory.h"

#include <algorithm>
#include <string_view>

namespace ET::Img {

namespace {

// Patterns are ASCII, so no other letter can decide.
char16_t LowerCase(char16_t unit) {
    return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool EndsWith(std::u16string_view name, std::u16string_view tail) {
    if (name.size() < tail.size())
        return false;
    name.remove_prefix(name.size() - tail.size());
    return std::equal(name.begin(), name.end(), tail.begin(),
                      [](char16_t inName, char16_t inTail) { return LowerCase(inName) == inTail; });
}

} // namespace

bool MatchesPattern(const Quorvex::String& pattern, const Quorvex::String& fileName) {
    const Quorvex::String wideName = fileName.ToWide();
    const Quorvex::String widePattern = pattern.ToWide();
    const std::u16string_view name(wideName.Wide(), wideName.length());
    std::u16string_view rest(widePattern.Wide(), widePattern.length());
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(u';'), rest.size());
        if (end > 0 && EndsWith(name, rest.substr(1, end - 1)))
            return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

} // namespace ET::Img
