#include "foundation/String.h"

#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

using namespace Quorvex;
using namespace Quorvex::Literals;
using Quorvex::Test::RaisedText;

namespace {

String WithEncoding(const char* bytes, std::int32_t encoding) {
    return String(TextView(bytes, static_cast<std::uint32_t>(std::char_traits<char>::length(bytes)), encoding));
}

TEST(StringTest, DefaultIsEmptyWithoutEncoding) {
    const String text;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.encoding(), Encoding::None);
    EXPECT_STREQ(text.Narrow(), "");
    EXPECT_EQ(text.Wide()[0], u'\0');
}

TEST(StringTest, NarrowTextIsWindows1252) {
    const String text("abc");
    EXPECT_EQ(text.length(), 3u);
    EXPECT_EQ(text.encoding(), Encoding::Windows1252);
    EXPECT_STREQ(text.Narrow(), "abc");
    EXPECT_EQ(String("").encoding(), Encoding::Windows1252);
}

TEST(StringTest, WideTextIsUtf16CountedInUnits) {
    const String text(u"a\U0001F5BC");
    EXPECT_EQ(text.length(), 3u);
    EXPECT_EQ(text.encoding(), Encoding::Utf16);
    EXPECT_EQ(text.Wide()[3], u'\0');
}

TEST(StringTest, NullReadsAsTheEmptyText) {
    EXPECT_TRUE(String(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_TRUE(String(static_cast<const char16_t*>(nullptr)).IsEmpty());
}

TEST(StringTest, LiteralsWrittenInUtf8AreWindows1252) {
    EXPECT_EQ(String("Größe"_t), "Gr\xF6\xDF"
                                 "e");
    EXPECT_EQ("é"_t.length, 1u);
}

TEST(StringTest, CopyAndAssignmentAreIndependent) {
    String a("first");
    String b(a);
    b = String("second");
    EXPECT_EQ(a, "first");
    a = b;
    EXPECT_EQ(a, "second");
    const String& same = a;
    a = same;
    EXPECT_EQ(a, "second");
    const String moved(std::move(b));
    EXPECT_EQ(moved, "second");
}

TEST(StringTest, EveryListedEncodingCanBeCopied) {
    for (const std::int32_t encoding : {0, 874, 1250, 1251, 1252, 1253, 1254, 1255, 1256, 1257, 1258, 1259}) {
        const String text = WithEncoding("abc", encoding);
        EXPECT_EQ(text.length(), 3u) << encoding;
        EXPECT_EQ(text, String(text)) << encoding;
    }
}

TEST(StringTest, AnyOtherEncodingRaisesWithoutText) {
    for (const std::int32_t encoding : {-1, 1, 437, 873, 875, 1249, 1261, 65001})
        EXPECT_EQ(RaisedText([&] { WithEncoding("abc", encoding); }), "") << encoding;
}

TEST(StringTest, TwoEmptyStringsOfDifferentEncodingsAreEqual) {
    EXPECT_TRUE(String() == String(u""));
    EXPECT_TRUE(String("") == String(u""));
    EXPECT_TRUE(WithEncoding("", 1251) == WithEncoding("", 1259));
}

TEST(StringTest, AnEmptyAndANonEmptyStringAreUnequalWithoutRaising) {
    EXPECT_FALSE(String(u"") == String("a"));
    EXPECT_FALSE(String("a") == String(u""));
    EXPECT_FALSE(String() == String(u"a"));
}

TEST(StringTest, TwoNonEmptyStringsOfDifferentEncodingsRaise) {
    EXPECT_EQ(RaisedText([] { static_cast<void>(String("a") == String(u"a")); }), "different string encoding");
    EXPECT_EQ(RaisedText([] { static_cast<void>(String("a") == String("a").ToUTF8()); }), "different string encoding");
}

TEST(StringTest, EqualityLooksAtEveryUnit) {
    EXPECT_TRUE(String("abc") == String("abc"));
    EXPECT_FALSE(String("abc") == String("abd"));
    EXPECT_FALSE(String("abc") == String("ab"));
    EXPECT_TRUE(String(u"a\u4E2D") == String(u"a\u4E2D"));
    EXPECT_FALSE(String(u"a\u4E2D") == String(u"a\u4E2E"));
    EXPECT_FALSE(String(u"\u0100") == String(u"\u0200"));
}

TEST(StringTest, CompareOrdersByUnitsThenLength) {
    EXPECT_EQ(String("abc").compare("abc"), 0);
    EXPECT_LT(String("abc").compare("abd"), 0);
    EXPECT_GT(String("abd").compare("abc"), 0);
    EXPECT_LT(String("ab").compare("abc"), 0);
    EXPECT_GT(String("a").compare(String()), 0);
    EXPECT_EQ(String().compare(String(u"")), 0);
    EXPECT_GT(String("\xE9").compare("z"), 0); // bytes are unsigned
    EXPECT_LT(String(u"\u0100").compare(u"\u0200"), 0);
}

TEST(StringTest, CompareDoesNotLookAtTheEncodings) {
    EXPECT_EQ(String("abc").compare(String(u"abc")), 0);
    EXPECT_EQ(String(u"abc").compare("abc"), 0);
    EXPECT_EQ(String("abc").compare(String("abc").ToUTF8()), 0);
    EXPECT_NE(String(u"abc").compare("abd"), 0);
}

TEST(StringTest, Windows1252MapsEveryByteAsPublished) {
    const std::map<int, char16_t> other{
        {0x80, 0x20AC}, {0x81, 0xFFFD}, {0x82, 0x201A}, {0x83, 0x0192}, {0x84, 0x201E}, {0x85, 0x2026}, {0x86, 0x2020},
        {0x87, 0x2021}, {0x88, 0x02C6}, {0x89, 0x2030}, {0x8A, 0x0160}, {0x8B, 0x2039}, {0x8C, 0x0152}, {0x8D, 0xFFFD},
        {0x8E, 0x017D}, {0x8F, 0xFFFD}, {0x90, 0xFFFD}, {0x91, 0x2018}, {0x92, 0x2019}, {0x93, 0x201C}, {0x94, 0x201D},
        {0x95, 0x2022}, {0x96, 0x2013}, {0x97, 0x2014}, {0x98, 0x02DC}, {0x99, 0x2122}, {0x9A, 0x0161}, {0x9B, 0x203A},
        {0x9C, 0x0153}, {0x9D, 0xFFFD}, {0x9E, 0x017E}, {0x9F, 0x0178}};
    for (int byte = 0; byte < 256; ++byte) {
        const auto found = other.find(byte);
        const char16_t wanted = found != other.end() ? found->second : static_cast<char16_t>(byte);
        EXPECT_EQ(Internal::windows1252[byte], wanted) << byte;
    }
}

TEST(StringTest, EveryAssignedByteComesBackThroughUtf16) {
    for (int byte = 1; byte < 256; ++byte) {
        const char text[] = {static_cast<char>(byte), 0};
        const bool isUnassigned = byte == 0x81 || byte == 0x8D || byte == 0x8F || byte == 0x90 || byte == 0x9D;
        // U+FFFD stands five times in the table; its first place is what a search from the start finds.
        const char wanted[] = {static_cast<char>(isUnassigned ? 0x81 : byte), 0};
        EXPECT_EQ(String(text).ToWide().ToANSI(), wanted) << byte;
    }
}

TEST(StringTest, WideUnitsOutsideTheTableBecomeQuestionMarks) {
    EXPECT_EQ(String(u"a\u4E2Db").ToANSI(), "a?b");
    EXPECT_EQ(String(u"\U0001F5BC").ToANSI(), "??");
    EXPECT_EQ(String(u"\u0080").ToANSI(), "?");
    EXPECT_EQ(String(u"\u20AC").ToANSI(), "\x80");
}

TEST(StringTest, Utf8TakesOneToThreeBytes) {
    EXPECT_EQ(String("\xE9").ToUTF8(), WithEncoding("\xC3\xA9", Encoding::Utf8));
    EXPECT_EQ(String("\xE9").ToUTF8().length(), 2u);
    EXPECT_EQ(String(u"\u007F\u0080\u07FF\u0800\uFFFF").ToUTF8(),
              WithEncoding("\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF", Encoding::Utf8));
    EXPECT_EQ(String("\x80\x81").ToUTF8(), WithEncoding("\xE2\x82\xAC\xEF\xBF\xBD", Encoding::Utf8));
}

TEST(StringTest, Utf8OfSurrogatesIsWrittenUnitByUnit) {
    EXPECT_EQ(String(u"\U0001F5BC").ToUTF8(), WithEncoding("\xED\xA0\xBD\xED\xB6\xBC", Encoding::Utf8));
}

TEST(StringTest, Utf8ToWindows1252GivesOneQuestionMarkPerByteAboveAscii) {
    EXPECT_EQ(String("\xE9").ToUTF8().ToANSI(), "??");
    EXPECT_EQ(WithEncoding("a\xE2\x82\xACz", Encoding::Utf8).ToANSI(), "a???z");
}

TEST(StringTest, ThereIsNoWayFromUtf8ToUtf16) {
    EXPECT_EQ(RaisedText([] { String("abc").ToUTF8().ToWide(); }), "");
}

TEST(StringTest, OtherCodePagesAreNotConverted) {
    for (const std::int32_t encoding : {874, 1250, 1251, 1253, 1254, 1255, 1256, 1257, 1258}) {
        const String text = WithEncoding("abc", encoding);
        EXPECT_EQ(RaisedText([&] { text.ToANSI(); }), "") << encoding;
        EXPECT_EQ(RaisedText([&] { text.ToWide(); }), "") << encoding;
        EXPECT_EQ(RaisedText([&] { text.ToUTF8(); }), "") << encoding;
    }
}

TEST(StringTest, ConversionToTheOwnEncodingIsACopy) {
    EXPECT_EQ(String("\xE9").ToANSI(), "\xE9");
    EXPECT_EQ(String(u"\u4E2D").ToWide(), u"\u4E2D");
    EXPECT_EQ(WithEncoding("\xC3\xA9", Encoding::Utf8).ToUTF8(), WithEncoding("\xC3\xA9", Encoding::Utf8));
}

TEST(StringTest, TextWithoutEncodingConvertsToTheEmptyTextOfEach) {
    EXPECT_EQ(String().ToANSI().encoding(), Encoding::Windows1252);
    EXPECT_EQ(String().ToWide().encoding(), Encoding::Utf16);
    EXPECT_EQ(String().ToUTF8().encoding(), Encoding::Utf8);
    EXPECT_TRUE(String().ToWide().IsEmpty());
}

struct JoinCase {
    String a;
    String b;
    std::int32_t encoding;
    String joined;
};

TEST(StringTest, ConcatenationChoosesTheEncoding) {
    const String utf8 = String("c").ToUTF8();
    const String joinedUtf8 = WithEncoding("ac", Encoding::Utf8);
    for (const JoinCase& c :
         {JoinCase{String(), String(), Encoding::None, String()}, JoinCase{"a", String(), Encoding::Windows1252, "a"},
          JoinCase{String(), "b", Encoding::Windows1252, "b"}, JoinCase{"a", "b", Encoding::Windows1252, "ab"},
          JoinCase{u"a", u"b", Encoding::Utf16, u"ab"}, JoinCase{"a", u"b", Encoding::Utf16, u"ab"},
          JoinCase{u"a", "b", Encoding::Utf16, u"ab"}, JoinCase{"a", utf8, Encoding::Utf8, joinedUtf8},
          JoinCase{String(), utf8, Encoding::Utf8, utf8}, JoinCase{"a", String(u""), Encoding::Utf16, u"a"},
          JoinCase{String(u""), "", Encoding::Utf16, String()},
          JoinCase{"a", String("").ToUTF8(), Encoding::Utf8, String("a").ToUTF8()}}) {
        const String joined = c.a + c.b;
        EXPECT_EQ(joined.encoding(), c.encoding) << joined.ToUTF8().ToStdString();
        EXPECT_EQ(joined, c.joined) << joined.ToUTF8().ToStdString();
    }
}

TEST(StringTest, ConcatenationOfUtf8AndUtf16NeedsTheDecoderThatIsNotThere) {
    EXPECT_EQ(RaisedText([] { String("a").ToUTF8() + String(u"b"); }), "");
}

TEST(StringTest, OtherCodePagesAreNotJoined) {
    EXPECT_EQ(RaisedText([] { WithEncoding("a", 1251) + WithEncoding("b", 1251); }), "");
    EXPECT_EQ(RaisedText([] { WithEncoding("a", 1251) + String("b"); }), "");
    EXPECT_EQ(RaisedText([] { String() + WithEncoding("b", 874); }), "");
}

TEST(StringTest, LiteralsJoinOnBothSides) {
    EXPECT_EQ("a" + String("b") + "c", "abc");
    EXPECT_EQ(u"a" + String(u"b") + u"c", u"abc");
    EXPECT_EQ("ä"_t + String("b"), "\xE4"
                                   "b");
    EXPECT_EQ(String("b") + "ä"_t, "b\xE4");
}

} // namespace
