#include "data/Dispatch.h"
#include "foundation/platform/DynamicLibrary.h"
#include "tests/codecs/PluginLoad.h"
#include "tests/codecs/TestStream.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>

using namespace Quorvex;
using namespace PluginTest;

namespace {

/// The plug-in that tells what was done with it, as this test has it in its hands, too.
class Telling {
public:
    Telling() : m_library(PathOf("telling", "VarnoliteTelling")) {
        const auto find = reinterpret_cast<char* (*)()>(m_library.Find("Calls"));
        if (find == nullptr)
            throw Exception("no Calls");
        m_calls = find();
    }
    std::string Calls() const { return m_calls; }
    void Forget() { std::memset(m_calls, 0, std::strlen(m_calls)); }

private:
    Platform::DynamicLibrary m_library;
    char* m_calls;
};

LoadTarget TargetOf(const CodecRegistry& registry) {
    LoadTarget target;
    target.context = MakeShared<TestContext>();
    target.registry = &registry;
    return target;
}

} // namespace

TEST(PluginLife, SamplesOfAllTypesLieWhereTheyWereWritten) {
    const CodecRegistry registry = RegistryOf("telling");
    ASSERT_EQ(registry.size(), 1u);
    for (std::uint8_t type = 0; type < 20; ++type) {
        const PluginLoad load(registry, {type});
        ASSERT_EQ(load.image->ColorType, type);
        ASSERT_EQ(load.image->GetWidth(), 3u);
        ASSERT_EQ(load.image->GetHeight(), 2u);
        EXPECT_GE(load.image->AllocatedWidth, 5u);
        EXPECT_GE(load.image->AllocatedHeight, 4u);
        Data::Dispatch(load.image->ColorType, "unknown color type", [&](auto tag) {
            const auto lock = decltype(tag)::Traits::LockIn(*load.image, Data::LockMode::ReadOnly);
            for (std::uint32_t y = 0; y < 2; ++y)
                for (std::uint32_t x = 0; x < 3; ++x) {
                    const Bytes expected(sizeof(lock.Row(y)[x]), static_cast<std::uint8_t>(1 + y * 3 + x));
                    EXPECT_EQ(std::memcmp(&lock.Row(y)[x], expected.data(), expected.size()), 0)
                        << int(type) << " " << x << " " << y;
                }
        });
    }
}

TEST(PluginLife, ALoadGoesThroughTheSlotsInOrder) {
    Telling telling;
    const CodecRegistry registry = RegistryOf("telling");
    telling.Forget();
    {
        const PluginLoad load(registry, {4});
        EXPECT_EQ(telling.Calls(), "nosil");
    }
    EXPECT_EQ(telling.Calls(), "nosilN");
}

TEST(PluginLife, WithoutALoggerNoneIsSet) {
    Telling telling;
    const CodecRegistry registry = RegistryOf("telling");
    telling.Forget();
    std::int32_t index = 1;
    SharedPtr<Data::ImageBase> image;
    const auto decoder = DecodeByExtension("a.rek", MakeShared<TestStream>(Bytes{4}), TargetOf(registry), index, image);
    EXPECT_EQ(telling.Calls(), "noil");
}

TEST(PluginLife, TheClassFactoryEndsWithItsLastUser) {
    Telling telling;
    telling.Forget();
    std::optional<CodecRegistry> registry = RegistryOf("telling");
    EXPECT_EQ(telling.Calls(), "f");
    {
        const PluginLoad load(*registry, {4});
        registry.reset();
        EXPECT_EQ(telling.Calls(), "fnosil");
    }
    EXPECT_EQ(telling.Calls(), "fnosilNF");
}

// What a library has noted down is gone only when the system has let go of it.
TEST(PluginLife, TheLibraryIsFreedWithItsLastUser) {
    {
        const CodecRegistry registry = RegistryOf("telling");
        EXPECT_EQ(Telling().Calls(), "f");
        EXPECT_EQ(Telling().Calls(), "f");
    }
    EXPECT_EQ(Telling().Calls(), "");
}
