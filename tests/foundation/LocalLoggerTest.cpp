#include "foundation/LocalLogger.h"

#include "foundation/SharedPtr.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

TEST(LocalLoggerTest, KeepsPairsAndSingleTextsInOrder) {
    LocalLogger logger;
    logger.Log({String("eins"), String("one")});
    logger.LogText("zwei oder two");
    logger.LogForBothLanguages("three");
    const auto& messages = logger.GetMessages();
    ASSERT_EQ(messages.size(), 3u);
    EXPECT_EQ(messages[0][0], "eins");
    EXPECT_EQ(messages[0][1], "one");
    for (const String& text : messages[1])
        EXPECT_EQ(text, "zwei oder two");
    for (const String& text : messages[2])
        EXPECT_EQ(text, "three");
}

TEST(LocalLoggerTest, HandsItsLinesOnInOrder) {
    const SharedPtr<LocalLogger> source = MakeShared<LocalLogger>();
    source->LogText("first");
    source->Log({String("zweitens"), String("second")});
    LocalLogger target;
    target.LogText("before");
    source->Write(target);
    ASSERT_EQ(target.GetMessages().size(), 3u);
    EXPECT_EQ(target.GetMessages()[1][1], "first");
    EXPECT_EQ(target.GetMessages()[2][0], "zweitens");
    EXPECT_EQ(source->GetMessages().size(), 2u);
}

} // namespace
