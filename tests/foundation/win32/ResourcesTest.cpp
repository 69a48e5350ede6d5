#include "foundation/platform/Resources.h"

#include "foundation/platform/win32/ResourceCalls.h"
#include "tests/foundation/win32/Injected.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <string>

using namespace Quorvex;
using Quorvex::Platform::ResourceCalls;
using Quorvex::Test::Injected;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

namespace {

DWORD WINAPI NoSize(HMODULE, HRSRC) {
    SetLastError(1812);
    return 0;
}

HGLOBAL WINAPI NoLoad(HMODULE, HRSRC) {
    SetLastError(1813);
    return nullptr;
}

LPVOID WINAPI NoLock(HGLOBAL) {
    SetLastError(1814);
    return nullptr;
}

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

TEST(ResourcesTest, EachCallThatFailsIsReportedByItsNameAndRaises) {
    const LogCapture log;
    ResourceCalls& calls = Platform::GetResourceCalls();
    const auto expectReport = [&](const std::string& report) {
        EXPECT_EQ(RaisedText([] { LoadResourceBytes("FoundationTestBytes"); }), "");
        EXPECT_TRUE(log.HasLineEndingIn(": " + report)) << log.Text();
    };
    {
        const Injected<decltype(ResourceCalls::sizeofResource)> failing(calls.sizeofResource, &NoSize);
        expectReport("SizeofResource failed with error code 1812");
    }
    {
        const Injected<decltype(ResourceCalls::loadResource)> failing(calls.loadResource, &NoLoad);
        expectReport("LoadResource failed with error code 1813");
    }
    {
        const Injected<decltype(ResourceCalls::lockResource)> failing(calls.lockResource, &NoLock);
        expectReport("LockResource failed with error code 1814");
    }
    EXPECT_EQ(LoadResourceBytes("FoundationTestBytes").size(), 9u);
}

} // namespace
