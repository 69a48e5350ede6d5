#include "settings/ValueText.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Quorvex;

namespace {

template <class T>
std::string Text(const T& value) {
    return ValueText<T>::ToText(value).ToStdString();
}

/// Raises Exception and says nothing.
template <class Action>
void ExpectSilentException(const Action& action, const char* what) {
    try {
        action();
        ADD_FAILURE() << what << " was accepted";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "") << what;
    }
}

template <class T>
void ExpectRefused(const char* text) {
    ExpectSilentException([&] { ValueText<T>::FromText(text); }, text);
}

} // namespace

TEST(ValueText, BoolIsTrueOrFalse) {
    EXPECT_EQ(Text(true), "true");
    EXPECT_EQ(Text(false), "false");
    EXPECT_TRUE(ValueText<bool>::FromText("true"));
    EXPECT_FALSE(ValueText<bool>::FromText("false"));
    for (const char* text : {"", "True", "TRUE", "1", "0", "true ", " false"})
        ExpectRefused<bool>(text);
}

TEST(ValueText, IntegersAreDecimal) {
    EXPECT_EQ(Text(std::int32_t{0}), "0");
    EXPECT_EQ(Text(std::int32_t{-1}), "-1");
    EXPECT_EQ(Text(std::numeric_limits<std::int32_t>::min()), "-2147483648");
    EXPECT_EQ(Text(std::numeric_limits<std::int32_t>::max()), "2147483647");
    EXPECT_EQ(Text(std::numeric_limits<std::uint32_t>::max()), "4294967295");
    EXPECT_EQ(Text(std::int16_t{-32768}), "-32768");
    EXPECT_EQ(Text(std::uint16_t{65535}), "65535");
    EXPECT_EQ(Text(std::uint8_t{255}), "255");
    EXPECT_EQ(Text(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
}

TEST(ValueText, IntegersReadBackOverTheirWholeRange) {
    for (const std::int32_t value : {std::numeric_limits<std::int32_t>::min(), -1, 0, 1, 1920, 2147483647})
        EXPECT_EQ(ValueText<std::int32_t>::FromText(ValueText<std::int32_t>::ToText(value)), value);
    EXPECT_EQ(ValueText<std::uint32_t>::FromText("4294967295"), 4294967295u);
    EXPECT_EQ(ValueText<std::int16_t>::FromText("-32768"), -32768);
    EXPECT_EQ(ValueText<std::int64_t>::FromText("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(ValueText<std::int32_t>::FromText(u"-17"), -17);
}

TEST(ValueText, TextsThatAreNoIntegerAreRefusedWithoutMessage) {
    for (const char* text :
         {"", "-", "+1", " 1", "1 ", "1.0", "0x10", "one", "2147483648", "-2147483649", "9999999999"})
        ExpectRefused<std::int32_t>(text);
    ExpectRefused<std::uint32_t>("-1");
    ExpectRefused<std::uint32_t>("4294967296");
    ExpectRefused<std::int16_t>("32768");
    ExpectRefused<std::uint16_t>("65536");
}

TEST(ValueText, LanguagesAreWrittenByTheirShortNames) {
    EXPECT_EQ(Text(Locale::EnumLanguage::Automatic), "Auto");
    EXPECT_EQ(Text(Locale::EnumLanguage::German), "DE");
    EXPECT_EQ(Text(Locale::EnumLanguage::English), "EN");
    EXPECT_EQ(ValueText<Locale::EnumLanguage>::FromText("Auto"), Locale::EnumLanguage::Automatic);
    EXPECT_EQ(ValueText<Locale::EnumLanguage>::FromText("DE"), Locale::EnumLanguage::German);
    EXPECT_EQ(ValueText<Locale::EnumLanguage>::FromText("EN"), Locale::EnumLanguage::English);
}

TEST(ValueText, EnumerationsOutsideTheTableAreRefusedWithoutMessage) {
    for (const char* text : {"", "auto", "DE ", "German", "0"})
        ExpectRefused<Locale::EnumLanguage>(text);
    const auto unknown = static_cast<Locale::EnumLanguage>(7);
    ExpectSilentException([&] { ValueText<Locale::EnumLanguage>::ToText(unknown); }, "language 7");
}

TEST(ValueText, ColorIsFourFloatTextsInOrderOfTheType) {
    const Data::ColorBGRA<float> color{0.25f, 0.5f, 0.75f, 1.0f};
    EXPECT_EQ(Text(color), "0.25 0.5 0.75 1");
    EXPECT_EQ(ValueText<Data::ColorBGRA<float>>::FromText("0.25 0.5 0.75 1"), color);
    const Data::ColorBGRA<float> background{138 / 255.0f, 136 / 255.0f, 136 / 255.0f, 1.0f};
    EXPECT_EQ(Text(background), "0.541176 0.533333 0.533333 1");
}

TEST(ValueText, ColorTextThatIsStableAfterOneRoundTrip) {
    const Data::ColorBGRA<float> color{138 / 255.0f, 1e-7f, -3.5e20f, 1.0f};
    const String once = ValueText<Data::ColorBGRA<float>>::ToText(color);
    const auto read = ValueText<Data::ColorBGRA<float>>::FromText(once);
    EXPECT_EQ(Text(read), once.ToStdString());
}

TEST(ValueText, ColorTextsOfAnotherShapeAreRefused) {
    for (const char* text : {"", " ", "1", "1 2 3", "1 2 3 ", "1 2 3 4 5", "1  2 3 4", " 1 2 3 4", "1 2 3 4 "})
        ExpectRefused<Data::ColorBGRA<float>>(text);
}

TEST(ValueText, ColorComponentThatIsNoNumberReadsAsZero) {
    const auto color = ValueText<Data::ColorBGRA<float>>::FromText("1 blue 3 4");
    EXPECT_EQ(color, (Data::ColorBGRA<float>{1, 0, 3, 4}));
}

TEST(ValueText, FixedPointIsTheShortestFractionThatReadsBack) {
    EXPECT_EQ(Text(FixedPoint230{0}), "0");
    EXPECT_EQ(Text(FixedPoint230{0x40000000}), "1");
    EXPECT_EQ(Text(FixedPoint230{0x20000000}), "0.5");
    EXPECT_EQ(Text(FixedPoint230{687194767}), "0.64");
    EXPECT_EQ(Text(FixedPoint230{-0x40000000}), "-1");
    EXPECT_EQ(Text(FixedPoint230{std::numeric_limits<std::int32_t>::min()}), "-2");
    EXPECT_EQ(Text(FixedPoint230{1}), "0.000000001");
}

TEST(ValueText, FixedPointTextsTellNeighboursApart) {
    for (const std::int32_t raw : {0, 1, 2, 687194767, 687194768, 2147483646, 2147483647, -1, -2147483647})
        EXPECT_EQ(ValueText<FixedPoint230>::FromText(ValueText<FixedPoint230>::ToText({raw})).raw, raw);
}

TEST(ValueText, FixedPointOutsideItsRangeIsRefused) {
    for (const char* text : {"", "2", "-2.1", "x", "0.5x", "nan", "inf", "1e5"})
        ExpectRefused<FixedPoint230>(text);
}
