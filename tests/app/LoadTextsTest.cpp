#include "app/LoadTexts.h"

#include "foundation/Exception.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

using namespace Quorvex;
using namespace Quorvex::App;

namespace {

std::string English(const BilingualText& text) {
    return text[1].ToStdString();
}
std::string German(const BilingualText& text) {
    return text[0].ToUTF8().ToStdString();
}

} // namespace

TEST(LoadTexts, TellsThatMemoryRanOut) {
    const BilingualText text = DescribeLoadFailure(std::bad_alloc());
    EXPECT_EQ(English(text), "The file could not be opened: Not enough memory!");
    EXPECT_EQ(German(text), "Die Datei konnte nicht geöffnet werden: Nicht genügend Speicher!");
}

TEST(LoadTexts, EndsWithAFullStopWhereTheFailureSaysNothing) {
    const BilingualText text = DescribeLoadFailure(Exception());
    EXPECT_EQ(English(text), "The file could not be opened.");
    EXPECT_EQ(German(text), "Die Datei konnte nicht geöffnet werden.");
}

TEST(LoadTexts, PassesOnWhatTheFailureSays) {
    const BilingualText text = DescribeLoadFailure(Exception("invalid compression"));
    EXPECT_EQ(English(text), "The file could not be opened. Internal message: invalid compression");
    EXPECT_EQ(German(text), "Die Datei konnte nicht geöffnet werden. Interne Meldung: invalid compression");
}

TEST(LoadTexts, PassesOnTheTextOfAStandardException) {
    EXPECT_EQ(English(DescribeLoadFailure(std::runtime_error("x"))),
              "The file could not be opened. Internal message: x");
}

TEST(LoadTexts, WarnsOfAnIncompleteImage) {
    EXPECT_EQ(English(IncompleteImageText()), "Attention: This image could not be loaded completely!");
    EXPECT_EQ(German(IncompleteImageText()), "Achtung: Dieses Bild konnte nicht vollständig geladen werden");
}

TEST(LoadTexts, WarnsOfAWrongFilenameExtension) {
    EXPECT_EQ(English(WrongFilenameExtensionText()), "Attention: This file has a wrong filename extension!");
    EXPECT_EQ(German(WrongFilenameExtensionText()), "Achtung: Diese Datei hat eine falsche Dateinamenserweiterung");
}
