#include "foundation/platform/Resources.h"

#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <string>

using namespace Quorvex;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

// ResourcesTest.rc holds the bytes.
TEST(ResourcesTest, BytesAreFoundByTheirName) {
    const auto bytes = LoadResourceBytes("FoundationTestBytes");
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size()), std::string("raw\0bytes", 9));
}

TEST(ResourcesTest, MissingResourceIsReportedAndRaises) {
    const LogCapture log;
    EXPECT_EQ(RaisedText([] { LoadResourceBytes("Missing"); }), "");
    EXPECT_NE(log.Text().find(": FindResourceA failed with error code "), std::string::npos) << log.Text();
}

} // namespace
