#include "foundation/Locale.h"
#include "tests/foundation/posix/ScopedVariable.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using Locale::EnumLanguage;
using Quorvex::Test::ScopedVariable;

namespace {

struct Case {
    const char* all;
    const char* messages;
    const char* lang;
    EnumLanguage language;
};

TEST(SystemLocaleTest, AutomaticLanguageFollowsTheLocaleEachTime) {
    for (const Case& c :
         {Case{nullptr, nullptr, "de_DE.UTF-8", EnumLanguage::German},
          Case{nullptr, nullptr, "de", EnumLanguage::German},
          Case{nullptr, nullptr, "de_AT@euro", EnumLanguage::German},
          Case{nullptr, nullptr, "de.ISO8859-1", EnumLanguage::German},
          Case{nullptr, nullptr, "en_GB.UTF-8", EnumLanguage::English},
          Case{nullptr, nullptr, "fr_FR.UTF-8", EnumLanguage::English},
          Case{nullptr, nullptr, "del_US", EnumLanguage::English}, Case{nullptr, nullptr, "C", EnumLanguage::English},
          Case{nullptr, nullptr, nullptr, EnumLanguage::English}, Case{nullptr, "de_DE", "en_US", EnumLanguage::German},
          Case{"en_US", "de_DE", "de_DE", EnumLanguage::English}, Case{"", "", "de_DE", EnumLanguage::German},
          Case{"de_DE", "en_US", "en_US", EnumLanguage::German}}) {
        const ScopedVariable all("LC_ALL", c.all);
        const ScopedVariable messages("LC_MESSAGES", c.messages);
        const ScopedVariable lang("LANG", c.lang);
        SetLanguage(EnumLanguage::Automatic);
        EXPECT_EQ(GetLanguage(), c.language)
            << (c.all ? c.all : "-") << " " << (c.messages ? c.messages : "-") << " " << (c.lang ? c.lang : "-");
    }
}

} // namespace
