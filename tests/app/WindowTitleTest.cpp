#include "app/WindowTitle.h"

#include "foundation/Exception.h"

#include <gtest/gtest.h>

using namespace Quorvex;
using App::MakeWindowTitle;

namespace {

std::string Title(const char16_t* path) {
    return MakeWindowTitle(String(path)).ToUTF8().ToStdString();
}

} // namespace

TEST(WindowTitle, PutsThePathBehindTheProgramName) {
    EXPECT_EQ(Title(u"C:\\a.bmp"), "Varnolite - C:\\a.bmp");
}

TEST(WindowTitle, LeavesOutTheLongPathPrefix) {
    EXPECT_EQ(Title(u"\\\\?\\C:\\a.bmp"), "Varnolite - C:\\a.bmp");
}

TEST(WindowTitle, ShowsALongNetworkPathAsANetworkPath) {
    EXPECT_EQ(Title(u"\\\\?\\UNC\\server\\share\\a.bmp"), "Varnolite - \\\\server\\share\\a.bmp");
}

TEST(WindowTitle, TakesANameThatOnlyBeginsLikeTheNetworkPrefixAsAPath) {
    EXPECT_EQ(Title(u"\\\\?\\UNCLE.bmp"), "Varnolite - UNCLE.bmp");
}

TEST(WindowTitle, KeepsANarrowPathReadable) {
    EXPECT_EQ(MakeWindowTitle(String("C:\\\xE9.bmp")).ToUTF8().ToStdString(), "Varnolite - C:\\\xC3\xA9.bmp");
}

TEST(WindowTitle, RaisesForAPathThatCannotBecomeWide) {
    const String utf8(TextView("a.bmp", 5, Encoding::Utf8));
    EXPECT_THROW(MakeWindowTitle(utf8), Exception);
}
