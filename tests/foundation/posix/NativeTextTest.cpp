#include "foundation/platform/posix/NativeText.h"

#include "foundation/Exception.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace Quorvex::Platform;
using namespace std::string_literals;

namespace {

struct Pair {
    std::string bytes;
    std::u16string units;
};

TEST(NativeTextTest, ConvertsWellFormedTextBothWays) {
    for (const Pair& pair :
         {Pair{"", u""}, Pair{"a/b", u"a/b"}, Pair{"\xC3\xA9", u"\u00E9"}, Pair{"\x7F\xC2\x80", u"\u007F\u0080"},
          Pair{"\xDF\xBF\xE0\xA0\x80", u"\u07FF\u0800"}, Pair{"\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000"},
          Pair{"\xEF\xBF\xBF", u"\uFFFF"}, Pair{"\xF0\x90\x80\x80", u"\U00010000"},
          Pair{"\xF4\x8F\xBF\xBF", u"\U0010FFFF"}, Pair{"\xE4\xB8\xAD\xF0\x9F\x96\xBC", u"\u4E2D\U0001F5BC"}}) {
        EXPECT_EQ(WideFromNative(pair.bytes), String(pair.units.c_str())) << pair.bytes;
        EXPECT_EQ(NativeFromWide(std::u16string_view(pair.units)), pair.bytes);
    }
}

TEST(NativeTextTest, BytesThatAreNoUtf8AreEscaped) {
    EXPECT_EQ(WideFromNative("a\xE9z"), String(u"a\xDCE9z"));
    EXPECT_EQ(WideFromNative("\x80\xFF"), String(u"\xDC80\xDCFF"));
}

// Overlong forms, encoded surrogates, values above U+10FFFF, and sequences cut short.
TEST(NativeTextTest, EveryMalformedSequenceComesBackAsItWas) {
    for (const std::string& bytes :
         {"\xC0\x80"s, "\xC1\xBF"s, "\xE0\x9F\xBF"s, "\xED\xA0\x80"s, "\xED\xBF\xBF"s, "\xED\xB2\x80"s,
          "\xF0\x8F\xBF\xBF"s, "\xF4\x90\x80\x80"s, "\xF5\x80\x80\x80"s, "\xC3"s, "\xE4\xB8"s, "\xF0\x9F\x96"s,
          "\xE4\xB8x"s, "\xC3\xC3\xA9"s, "\xED\xA0\xBD\xED\xB6\xBC"s, "\xBF"s, "\xFE\xFF"s}) {
        const String wide = WideFromNative(bytes);
        EXPECT_EQ(NativeFromWide(wide), bytes);
        EXPECT_EQ(WideFromNative(NativeFromWide(wide)), wide);
    }
}

TEST(NativeTextTest, EveryTwoBytesComeBackAsTheyWere) {
    for (int first = 0; first < 256; ++first)
        for (int second = 0; second < 256; ++second) {
            const std::string bytes{static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(NativeFromWide(WideFromNative(bytes)), bytes) << first << " " << second;
        }
}

TEST(NativeTextTest, LoneSurrogatesThatAreNoEscapesStayDifferent) {
    EXPECT_EQ(NativeFromWide(std::u16string_view(u"\xD800")), "\xED\xA0\x80");
    EXPECT_EQ(NativeFromWide(std::u16string_view(u"\xDC00")), "\xED\xB0\x80");
    EXPECT_EQ(NativeFromWide(std::u16string_view(u"\xD800x")), "\xED\xA0\x80x");
}

TEST(NativeTextTest, EmptyBytesAreTheEmptyText) {
    EXPECT_EQ(WideFromNative("").encoding(), Encoding::None);
}

TEST(NativeTextTest, TextsInWindows1252AreTakenToo) {
    EXPECT_EQ(NativeFromWide(String("\xE9\x80")), "\xC3\xA9\xE2\x82\xAC");
    EXPECT_EQ(NativeFromWide(String()), "");
    EXPECT_THROW(NativeFromWide(String("x").ToUTF8()), Exception);
}

} // namespace
