#include "foundation/platform/Resources.h"

#include "foundation/platform/posix/EmbeddedResources.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <array>

using namespace Quorvex;
using Quorvex::Platform::EmbeddedResource;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

constexpr std::array<std::byte, 3> icon{std::byte{1}, std::byte{2}, std::byte{3}};

TEST(ResourcesTest, BytesAreFoundByTheirName) {
    const std::array<EmbeddedResource, 2> resources{EmbeddedResource{"Empty", {}}, EmbeddedResource{"Icon", icon}};
    Platform::SetEmbeddedResources(resources);
    EXPECT_EQ(LoadResourceBytes("Icon").data(), icon.data());
    EXPECT_EQ(LoadResourceBytes("Icon").size(), 3u);
    EXPECT_TRUE(LoadResourceBytes("Empty").empty());
    Platform::SetEmbeddedResources({});
}

TEST(ResourcesTest, MissingResourceIsReportedAndRaises) {
    const LogCapture log;
    EXPECT_EQ(RaisedText([] { LoadResourceBytes("Missing"); }), "");
    EXPECT_NE(log.Text().find(": FindResource failed with error code "), std::string::npos);
}

} // namespace
