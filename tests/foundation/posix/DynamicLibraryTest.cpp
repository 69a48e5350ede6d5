#include "foundation/platform/DynamicLibrary.h"
#include "foundation/platform/posix/NativeText.h"
#include "tests/support/LogCapture.h"
#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

using namespace Quorvex;
using namespace Quorvex::Platform;
using Quorvex::Test::LogCapture;
using Quorvex::Test::RaisedText;

TEST(DynamicLibrary, FindsWhatALibraryHas) {
    void* const handle = dlopen("libc.so.6", RTLD_LAZY);
    ASSERT_NE(handle, nullptr);
    Dl_info info{};
    ASSERT_NE(dladdr(dlsym(handle, "strtol"), &info), 0);
    const DynamicLibrary library(WideFromNative(info.dli_fname));
    EXPECT_EQ(reinterpret_cast<void*>(library.Find("strtol")), dlsym(handle, "strtol"));
    EXPECT_EQ(library.Find("NoSuchFunction"), nullptr);
    dlclose(handle);
}

TEST(DynamicLibrary, FailuresAreRaisedAsTheSystemTellsThem) {
    const LogCapture log;
    log.Folder().Write("text.so", "This is no library.");
    for (const char* name : {"text.so", "missing.so"}) {
        const std::string path = log.Folder().Path() / name;
        const std::string failure = RaisedText([&] { DynamicLibrary library(WideFromNative(path)); });
        EXPECT_EQ(failure.find(path), 0u) << failure;
    }
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}

TEST(DynamicLibrary, PathsThatAreNotFullAreRefused) {
    for (const char* path : {"", "libc.so.6", "./libc.so.6", "lib/libc.so.6"})
        EXPECT_EQ(RaisedText([&] { DynamicLibrary library{String(path)}; }), "dlopen failed, no full path") << path;
}

TEST(DynamicLibrary, SuffixIsTheSystems) {
    EXPECT_STREQ(DynamicLibrary::GetFileSuffix(), ".so");
}
