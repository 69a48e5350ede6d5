#include "foundation/platform/Memory.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

using namespace Quorvex::Platform;

namespace {

constexpr std::size_t bytes = std::size_t(9) << 20;

/// Pages straight from the system, with an address that is no multiple of a large page.
class MemoryTest : public testing::Test {
protected:
    void SetUp() override {
        mapping = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(mapping, MAP_FAILED);
    }
    void TearDown() override { munmap(mapping, bytes); }

    void* mapping = nullptr;
};

/// What the kernel says of the mapping around an address: the words behind "VmFlags:".
std::string FlagsOf(const void* address) {
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    std::ifstream maps("/proc/self/smaps");
    bool isInside = false;
    for (std::string line; std::getline(maps, line);) {
        std::istringstream words(line);
        std::uintptr_t begin = 0, end = 0;
        char dash = 0;
        if (words >> std::hex >> begin >> dash >> end && dash == '-')
            isInside = begin <= wanted && wanted < end;
        else if (isInside && line.rfind("VmFlags:", 0) == 0)
            return line;
    }
    return "";
}

TEST_F(MemoryTest, MemoryToFillMayComeInLargePages) {
    const void* const middle = static_cast<char*>(mapping) + bytes / 2;
    const std::string before = FlagsOf(middle);
    if (before.empty())
        GTEST_SKIP() << "the kernel tells nothing of its mappings";
    ASSERT_EQ(before.find(" hg"), std::string::npos);
    ExpectToFill(mapping, bytes);
    EXPECT_NE(FlagsOf(middle).find(" hg"), std::string::npos);
}

TEST_F(MemoryTest, ContentStays) {
    auto* const content = static_cast<unsigned char*>(mapping);
    for (std::size_t i = 0; i < bytes; ++i)
        content[i] = static_cast<unsigned char>(i * 7 >> 3);
    ExpectToFill(content + 1, bytes - 2);
    for (std::size_t i = 0; i < bytes; ++i)
        ASSERT_EQ(content[i], static_cast<unsigned char>(i * 7 >> 3)) << i;
}

TEST_F(MemoryTest, LessThanALargePageIsLeftAlone) {
    const std::string before = FlagsOf(mapping);
    ExpectToFill(mapping, 4096);
    ExpectToFill(nullptr, 0);
    EXPECT_EQ(FlagsOf(mapping), before);
}

} // namespace
