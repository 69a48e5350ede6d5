#include "foundation/Numbers.h"

#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

using namespace Quorvex;
using Quorvex::Test::RaisedText;

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

TEST(NumbersTest, IntegersInEveryBase) {
    EXPECT_EQ(IntegerToString(123456789), "123456789");
    EXPECT_EQ(IntegerToString(255u, 2), "11111111");
    EXPECT_EQ(IntegerToString(255u, 16), "FF");
    EXPECT_EQ(IntegerToString(0xDEADBEEFu, 16), "DEADBEEF");
    EXPECT_EQ(IntegerToString(35u, 12), "2B");
    EXPECT_EQ(IntegerToString(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(IntegerToString(std::numeric_limits<std::uint64_t>::max(), 2), std::string(64, '1').c_str());
}

TEST(NumbersTest, SignedIntegersWidenWithTheirSign) {
    EXPECT_EQ(IntegerToString(std::int32_t{-1}), "18446744073709551615");
    EXPECT_EQ(IntegerToString(std::int32_t{-1}, 16), "FFFFFFFFFFFFFFFF");
    EXPECT_EQ(IntegerToString(std::numeric_limits<std::int32_t>::min(), 16), "FFFFFFFF80000000");
}

TEST(NumbersTest, ZeroIsOneDigitInAnyBase) {
    for (std::uint32_t base = 1; base <= 16; ++base) {
        EXPECT_EQ(IntegerToString(0, base), "0") << base;
        EXPECT_EQ(IntegerToString(0, base, 5), "00000") << base;
    }
}

TEST(NumbersTest, MinimumDigitsPadButNeverCut) {
    EXPECT_EQ(IntegerToString(42, 10, 5), "00042");
    EXPECT_EQ(IntegerToString(123456, 10, 5), "123456");
    EXPECT_EQ(IntegerToString(10, 16, 2), "0A");
}

TEST(NumbersTest, BaseOutsideOneToSixteenRaisesWithoutText) {
    for (const std::uint32_t base : {0u, 17u, 0xFFFFFFFFu})
        EXPECT_EQ(RaisedText([&] { IntegerToString(1, base); }), "") << base;
}

TEST(NumbersTest, EmptyTextIsNoFloat) {
    for (const String& empty : {String(), String(""), String(u"")})
        try {
            FloatFromString(empty);
            ADD_FAILURE();
        } catch (const std::logic_error& failure) {
            EXPECT_STREQ(failure.what(), "FloatFromString: empty string");
        }
}

TEST(NumbersTest, SixTextsAreInfinity) {
    for (const char* text : {"1.#INF", "+1.#INF", "INF", "+INF"})
        EXPECT_EQ(FloatFromString(text), infinity) << text;
    for (const char* text : {"-1.#INF", "-INF"})
        EXPECT_EQ(FloatFromString(text), -infinity) << text;
    EXPECT_EQ(FloatFromString(u"-INF"), -infinity);
}

TEST(NumbersTest, InfinityInOtherSpellingsIsZeroOrItsLeadingNumber) {
    for (const char* text : {"inf", "Inf", "infinity", "INFINITY", "-inf", "nan"})
        EXPECT_EQ(FloatFromString(text), 0.0f) << text;
    EXPECT_EQ(FloatFromString("1.#inf"), 1.0f);
}

TEST(NumbersTest, FloatsReadInTheClassicLocale) {
    EXPECT_EQ(FloatFromString("1.5"), 1.5f);
    EXPECT_EQ(FloatFromString("-0.25"), -0.25f);
    EXPECT_EQ(FloatFromString("+3e2"), 300.0f);
    EXPECT_EQ(FloatFromString(u"2.5"), 2.5f);
    EXPECT_EQ(FloatFromString("1,5"), 1.0f);
    EXPECT_EQ(FloatFromString(" 7"), 7.0f);
    EXPECT_EQ(FloatFromString("7 apples"), 7.0f);
}

TEST(NumbersTest, TextThatDoesNotParseIsZero) {
    for (const char* text : {"apples", ".", "-", "e5", " ", "\xE9", "1e99999"})
        EXPECT_EQ(FloatFromString(text), 0.0f) << text;
}

TEST(NumbersTest, FloatsWriteSixDigits) {
    EXPECT_EQ(FloatToString(0), "0");
    EXPECT_EQ(FloatToString(1.5), "1.5");
    EXPECT_EQ(FloatToString(-1.0 / 3), "-0.333333");
    EXPECT_EQ(FloatToString(1234567), "1.23457e+06");
    EXPECT_EQ(FloatToString(0.00001), "1e-05");
}

TEST(NumbersTest, FixedNotationHasItsDecimals) {
    EXPECT_EQ(FixedToString(1.0 / 3, 2), "0.33");
    EXPECT_EQ(FixedToString(2, 0), "2");
    EXPECT_EQ(FixedToString(-12345678.5, 1), "-12345678.5");
    EXPECT_EQ(FixedToString(1e20, 3), "100000000000000000000.000");
}

TEST(NumbersTest, TruthValuesAreTwoExactTexts) {
    EXPECT_EQ(BoolToString(true), "true");
    EXPECT_EQ(BoolToString(false), "false");
    EXPECT_TRUE(BoolFromString("true"));
    EXPECT_FALSE(BoolFromString("false"));
    EXPECT_TRUE(BoolFromString(u"true"));
    for (const char* text : {"", "True", "TRUE", "1", "0", "true ", "yes"})
        EXPECT_EQ(RaisedText([&] { BoolFromString(text); }), "") << text;
}

} // namespace
