#include "foundation/platform/MessageBox.h"

#include <gtest/gtest.h>

#include <string>

using namespace Quorvex;
using namespace Quorvex::Platform;

namespace {

std::string shown;

void Remember(const String& title, const String& text) {
    shown = title.ToANSI().ToStdString() + "|" + text.ToANSI().ToStdString();
}

TEST(MessageBoxTest, PresenterInUseShowsTheText) {
    const MessageBoxPresenter former = SetMessageBoxPresenter(&Remember);
    ShowMessageBox("title", u"text");
    EXPECT_EQ(shown, "title|text");
    EXPECT_EQ(SetMessageBoxPresenter(former), &Remember);
}

} // namespace
