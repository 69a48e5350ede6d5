#include "foundation/Exception.h"

#include "tests/support/ScopedLanguage.h"

#include <gtest/gtest.h>

#include <string>

using namespace Quorvex;
using Quorvex::Test::ScopedLanguage;

namespace {

const BilingualText bilingual{String("Gr\xF6\xDF"
                                     "e"),
                              String("Size")};

void ExpectMessage(const Exception& exception, const std::string& message) {
    EXPECT_EQ(exception.GetMessageText().ToStdString(), message);
    EXPECT_EQ(exception.what(), message);
    EXPECT_TRUE(exception.GetMessages()[0].IsEmpty());
    EXPECT_TRUE(exception.GetMessages()[1].IsEmpty());
}

TEST(ExceptionTest, ConstructorsMakeTheirMessages) {
    ExpectMessage(Exception(), "");
    ExpectMessage(Exception("object pointer is nullptr"), "object pointer is nullptr");
    ExpectMessage(Exception(String("a String")), "a String");
    ExpectMessage(Exception("CreateFile", 5u), "CreateFile failed, error code 5");
    ExpectMessage(Exception("CreateFile", 0xFFFFFFFFu), "CreateFile failed, error code 4294967295");
    ExpectMessage(Exception(66, "LoadValueFromStream"), "66 ");
    ExpectMessage(Exception(12, "GetOptions", 0x80004005u), "12 GetOptions failed, error code 2147500037");
    ExpectMessage(Exception(12, "GetOpenFileName", "CDERR_NOTEMPLATE"), "12 GetOpenFileName failed, CDERR_NOTEMPLATE");
}

TEST(ExceptionTest, IsAStandardException) {
    try {
        throw Exception("text");
    } catch (const std::exception& failure) {
        EXPECT_STREQ(failure.what(), "text");
    }
}

TEST(ExceptionTest, WhatIsTheMessageInWindows1252) {
    EXPECT_STREQ(Exception(String(u"\u00E9\u4E2D")).what(), "\xE9?");
}

TEST(ExceptionTest, PairIsReadInTheLanguageOfTheMoment) {
    const Exception exception(bilingual);
    {
        const ScopedLanguage german(Locale::EnumLanguage::German);
        EXPECT_STREQ(exception.what(), "Gr\xF6\xDF"
                                       "e");
    }
    const ScopedLanguage english(Locale::EnumLanguage::English);
    EXPECT_STREQ(exception.what(), "Size");
    EXPECT_TRUE(exception.GetMessageText().IsEmpty());
}

TEST(ExceptionTest, CopyHasAllTexts) {
    const Exception pair(bilingual);
    const Exception pairCopy(pair);
    EXPECT_EQ(pairCopy.GetMessages()[0], bilingual[0]);
    EXPECT_EQ(pairCopy.GetMessages()[1], bilingual[1]);
    const Exception plain("text");
    const Exception plainCopy(plain);
    EXPECT_STREQ(plainCopy.what(), "text");
    EXPECT_STREQ(plain.what(), "text");
}

TEST(ExceptionTest, CachedTextMovesToTheCopy) {
    const Exception source("text");
    const char* cached = source.what();
    const Exception copy(source);
    // The memory that what() gave belongs to the copy now: it is still readable after the source was asked again.
    EXPECT_NE(source.what(), cached);
    EXPECT_STREQ(cached, "text");
}

} // namespace
