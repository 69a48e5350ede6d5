#include "app/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Quorvex::App::SplitCommandLine;
using testing::ElementsAre;

TEST(CommandLine, SplitsAtBlanks) {
    EXPECT_THAT(SplitCommandLine("v.exe a.bmp\t b"), ElementsAre("v.exe", "a.bmp", "b"));
}

TEST(CommandLine, KeepsBlanksInQuotes) {
    EXPECT_THAT(SplitCommandLine(R"("C:\my v.exe" "C:\my a.bmp")"), ElementsAre(R"(C:\my v.exe)", R"(C:\my a.bmp)"));
}

TEST(CommandLine, HasNoMoreThanTheNameWithoutArguments) {
    EXPECT_THAT(SplitCommandLine("v.exe"), ElementsAre("v.exe"));
    EXPECT_THAT(SplitCommandLine("v.exe  "), ElementsAre("v.exe"));
    EXPECT_THAT(SplitCommandLine(""), ElementsAre(""));
}

TEST(CommandLine, TakesBackslashesAsTheyStandAwayFromQuotes) {
    EXPECT_THAT(SplitCommandLine(R"(v \\server\a\ b)"), ElementsAre("v", R"(\\server\a\)", "b"));
}

TEST(CommandLine, HalvesBackslashesBeforeAQuote) {
    EXPECT_THAT(SplitCommandLine(R"(v "a\\" b)"), ElementsAre("v", R"(a\)", "b"));
    EXPECT_THAT(SplitCommandLine(R"(v a\"b)"), ElementsAre("v", R"(a"b)"));
    EXPECT_THAT(SplitCommandLine(R"(v a\\\"b)"), ElementsAre("v", R"(a\"b)"));
}

TEST(CommandLine, LetsQuotesBeginInsideAnArgument) {
    EXPECT_THAT(SplitCommandLine(R"(v a" "b)"), ElementsAre("v", "a b"));
}

TEST(CommandLine, GivesAnEmptyArgumentForEmptyQuotes) {
    EXPECT_THAT(SplitCommandLine(R"(v "" b)"), ElementsAre("v", "", "b"));
}

TEST(CommandLine, TakesTheThirdQuoteInARowAsACharacter) {
    EXPECT_THAT(SplitCommandLine(R"(v """a""")"), ElementsAre("v", R"("a")"));
}

TEST(CommandLine, RunsAnOpenQuoteToTheEnd) {
    EXPECT_THAT(SplitCommandLine(R"(v "a b)"), ElementsAre("v", "a b"));
}
