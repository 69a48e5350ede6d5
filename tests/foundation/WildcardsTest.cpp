#include "foundation/Wildcards.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

struct Case {
    const char* name;
    const char* pattern;
    bool matches;
};

TEST(WildcardsTest, MatchWholeNames) {
    for (const Case& c : {Case{"", "", true},
                          Case{"", "*", true},
                          Case{"", "?", false},
                          Case{"a", "", false},
                          Case{"a", "a", true},
                          Case{"a", "A", false},
                          Case{"ab", "a", false},
                          Case{"ab", "a?", true},
                          Case{"ab", "?b", true},
                          Case{"ab", "??", true},
                          Case{"ab", "???", false},
                          Case{"abc", "*c", true},
                          Case{"abc", "a*", true},
                          Case{"abc", "a*c", true},
                          Case{"abc", "a**c", true},
                          Case{"abc", "*b*", true},
                          Case{"abc", "*d*", false},
                          Case{"abcabd", "*ab?", true},
                          Case{"abcabd", "a*bd", true},
                          Case{"abcabd", "a*bc", false},
                          Case{"Varnolite 2017-01-26", "Varnolite ???\?-?\?-??", true},
                          Case{"Varnolite 2017-01-2", "Varnolite ???\?-?\?-??", false}})
        EXPECT_EQ(MatchesWildcards(c.name, c.pattern), c.matches) << c.name << " with " << c.pattern;
}

TEST(WildcardsTest, TakeWideNames) {
    EXPECT_TRUE(MatchesWildcards(u"\u4E2D.bmp", "?.bmp"));
    EXPECT_FALSE(MatchesWildcards(u"\u4E2D.bmp", "x.bmp"));
}

} // namespace
