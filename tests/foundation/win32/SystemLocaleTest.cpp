#include "foundation/platform/SystemLocale.h"

#include "foundation/Locale.h"
#include "foundation/platform/win32/SystemCalls.h"
#include "tests/foundation/win32/Injected.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using namespace Quorvex::Platform;
using Quorvex::Test::Injected;

namespace {

using LocaleCall = decltype(KernelCalls::getLocaleInfoA);

const char* spokenLanguage = nullptr;
LCID askedLocale = 0;
LCTYPE askedDetail = 0;

int WINAPI SpeakLanguage(LCID locale, LCTYPE detail, LPSTR name, int bytes) {
    askedLocale = locale;
    askedDetail = detail;
    lstrcpynA(name, spokenLanguage, bytes);
    return lstrlenA(name) + 1;
}

int WINAPI SpeakNothing(LCID, LCTYPE, LPSTR, int) {
    return 0;
}

TEST(SystemLocaleTest, IsTheEnglishNameOfTheUsersLanguage) {
    const Injected<LocaleCall> call(GetKernelCalls().getLocaleInfoA, &SpeakLanguage);
    spokenLanguage = "Portuguese";
    EXPECT_EQ(GetSystemLocaleName(), "Portuguese");
    EXPECT_EQ(askedLocale, LCID{LOCALE_USER_DEFAULT});
    EXPECT_EQ(askedDetail, LCTYPE{LOCALE_SENGLANGUAGE});
}

TEST(SystemLocaleTest, GermanSystemSpeaksGermanAndEveryOtherEnglish) {
    const Injected<LocaleCall> call(GetKernelCalls().getLocaleInfoA, &SpeakLanguage);
    struct Case {
        const char* name;
        Locale::EnumLanguage language;
    };
    for (const Case& c : {Case{"German", Locale::EnumLanguage::German},
                          {"English", Locale::EnumLanguage::English},
                          {"French", Locale::EnumLanguage::English},
                          {"Swiss German", Locale::EnumLanguage::English},
                          {"German_Austria.1252", Locale::EnumLanguage::German}}) {
        spokenLanguage = c.name;
        EXPECT_EQ(GetLanguage(), c.language) << c.name;
    }
}

TEST(SystemLocaleTest, SystemThatCannotTellSpeaksEnglish) {
    const Injected<LocaleCall> call(GetKernelCalls().getLocaleInfoA, &SpeakNothing);
    EXPECT_TRUE(GetSystemLocaleName().IsEmpty());
    EXPECT_EQ(GetLanguage(), Locale::EnumLanguage::English);
}

TEST(SystemLocaleTest, ThisSystemHasAName) {
    EXPECT_FALSE(GetSystemLocaleName().IsEmpty());
}

} // namespace
