#include "foundation/Locale.h"

#include "foundation/BilingualText.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using Locale::EnumLanguage;

namespace {

TEST(LocaleTest, LowByteOfALanguageIndexesTheTables) {
    EXPECT_EQ(static_cast<std::uint32_t>(EnumLanguage::Automatic), 0u);
    EXPECT_EQ(static_cast<std::uint32_t>(EnumLanguage::German), 0x44450000u);
    EXPECT_EQ(static_cast<std::uint32_t>(EnumLanguage::English), 0x454E0001u);
    EXPECT_EQ(LanguageIndex(EnumLanguage::German), 0u);
    EXPECT_EQ(LanguageIndex(EnumLanguage::English), 1u);
}

TEST(LocaleTest, StoredLanguageIsTheLanguage) {
    const BilingualText text{String("deutsch"), String("English")};
    SetLanguage(EnumLanguage::German);
    EXPECT_EQ(GetLanguage(), EnumLanguage::German);
    EXPECT_EQ(InCurrentLanguage(text), "deutsch");
    SetLanguage(EnumLanguage::English);
    EXPECT_EQ(GetLanguage(), EnumLanguage::English);
    EXPECT_EQ(InCurrentLanguage(text), "English");
    SetLanguage(EnumLanguage::Automatic);
    EXPECT_NE(GetLanguage(), EnumLanguage::Automatic);
}

} // namespace
