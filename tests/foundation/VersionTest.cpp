#include "foundation/Version.h"

#include "foundation/String.h"
#include "foundation/Wildcards.h"
#include "foundation/platform/SystemVersion.h"

#include <gtest/gtest.h>

using namespace Quorvex;

namespace {

TEST(VersionTest, BuildTimeHasItsFormAndIsADate) {
    const String time(GetBuildTime());
    ASSERT_TRUE(MatchesWildcards(time, "20\?\?-\?\?-\?\?T\?\?:\?\?:\?\?")) << time.Narrow();
    const auto number = [&](std::size_t start) { return std::stoi(time.ToStdString().substr(start, 2)); };
    EXPECT_TRUE(number(5) >= 1 && number(5) <= 12) << time.Narrow();
    EXPECT_TRUE(number(8) >= 1 && number(8) <= 31) << time.Narrow();
    EXPECT_TRUE(number(11) <= 23 && number(14) <= 59 && number(17) <= 60) << time.Narrow();
}

TEST(VersionTest, PresentSystemIsWideAndCurrent) {
    EXPECT_TRUE(IsUnicodeSystem());
    EXPECT_TRUE(IsVistaOrLater());
    EXPECT_TRUE(IsVersionAtLeast(5, 1, 2));
    EXPECT_GE(Platform::QueryMajorVersion(), 6u);
}

TEST(VersionTest, MajorVersionFiveIsTheFirstWideOne) {
    for (const std::uint32_t major : {0u, 3u, 4u}) {
        const ScopedSystemVersion old({major, 90, 0});
        EXPECT_FALSE(IsUnicodeSystem()) << major;
    }
    for (const std::uint32_t major : {5u, 6u, 10u}) {
        const ScopedSystemVersion current({major, 0, 0});
        EXPECT_TRUE(IsUnicodeSystem()) << major;
    }
    EXPECT_TRUE(IsUnicodeSystem());
}

TEST(VersionTest, VersionsCompareFieldByField) {
    const ScopedSystemVersion xp({5, 1, 2});
    EXPECT_TRUE(IsVersionAtLeast(5, 1, 2));
    EXPECT_TRUE(IsVersionAtLeast(5, 0, 4));
    EXPECT_TRUE(IsVersionAtLeast(4, 10, 0));
    EXPECT_FALSE(IsVersionAtLeast(5, 1, 3));
    EXPECT_FALSE(IsVersionAtLeast(5, 2, 0));
    EXPECT_FALSE(IsVersionAtLeast(6, 0, 0));
    EXPECT_FALSE(IsVistaOrLater());
}

TEST(VersionTest, PretendedVersionsNest) {
    const ScopedSystemVersion outer({6, 0, 0});
    {
        const ScopedSystemVersion inner({4, 0, 0});
        EXPECT_FALSE(IsVistaOrLater());
    }
    EXPECT_TRUE(IsVistaOrLater());
}

} // namespace
