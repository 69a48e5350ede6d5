#include "gui/window/x11/X11Text.h"

#include <gtest/gtest.h>

namespace Quorvex::GUI {
namespace {

TEST(X11Text, NarrowTextBecomesUtf8) {
    EXPECT_EQ(ToUtf8("a\xFC\x80"), "a\xC3\xBC\xE2\x82\xAC");
    EXPECT_EQ(ToUtf8(""), "");
}

TEST(X11Text, SurrogatePairsBecomeOneCharacter) {
    EXPECT_EQ(ToUtf8(u"\U0001F600"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(ToUtf8(u"\U0010FFFF"), "\xF4\x8F\xBF\xBF");
}

TEST(X11Text, LoneSurrogatesAreReplaced) {
    const char16_t high[]{0xD83D, u'x', 0};
    const char16_t low[]{0xDE00, u'x', 0};
    const char16_t last[]{u'x', 0xD83D, 0};
    EXPECT_EQ(ToUtf8(high), "\xEF\xBF\xBDx");
    EXPECT_EQ(ToUtf8(low), "\xEF\xBF\xBDx");
    EXPECT_EQ(ToUtf8(last), "x\xEF\xBF\xBD");
}

TEST(X11Text, Utf8StaysAsItIs) {
    EXPECT_EQ(ToUtf8(String("\xFC").ToUTF8()), "\xC3\xBC");
}

TEST(X11Text, Latin1HoldsTheFirst256CharactersOnly) {
    EXPECT_EQ(ToLatin1(u"a\u00FF\u0100\U0001F600"), "a\xFF??");
    // The euro sign is a byte of Windows-1252 and none of Latin-1.
    EXPECT_EQ(ToLatin1("\x80"), "?");
    EXPECT_EQ(ToLatin1(String("\xFC").ToUTF8()), "??");
}

} // namespace
} // namespace Quorvex::GUI
