#include "codecs/plugin/LoggerWrapper.h"
#include "codecs/plugin/StreamWrapper.h"
#include "foundation/LocalLogger.h"
#include "foundation/platform/DynamicLibrary.h"
#include "tests/codecs/CloningStream.h"
#include "tests/codecs/PluginLoad.h"
#include "tests/codecs/TestStream.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

using namespace Quorvex;
using namespace ET::Img;

namespace {

// Objects as a plug-in without C++ sees them: a pointer to a table of functions, each with the object as its first
// argument; identifiers are 16 bytes, and results 32 bits.
using Guid = std::array<std::uint8_t, 16>;
using Slot = void (*)();
using Ask = std::uint32_t(VARNOLITE_CALL*)(void*, const std::uint8_t*, void**);
using Count = std::uint32_t(VARNOLITE_CALL*)(void*);
using Create = std::uint32_t(VARNOLITE_CALL*)(void*, void*, const std::uint8_t*, void**);
using LockServer = std::uint32_t(VARNOLITE_CALL*)(void*, std::int32_t);
using Position = std::uint32_t(VARNOLITE_CALL*)(void*, std::uint64_t*);
using Seek = std::uint32_t(VARNOLITE_CALL*)(void*, std::uint32_t, std::uint32_t);
using Clone = std::uint32_t(VARNOLITE_CALL*)(void*, void**);
using ClassObject = std::uint32_t(VARNOLITE_CALL*)(const std::uint8_t*, const std::uint8_t*, void**);

constexpr Guid unknownBytes{0, 0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
constexpr Guid classFactoryBytes{1, 0, 0, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
constexpr Guid decoderClassBytes{0x85, 0x2E, 0x89, 0xFF, 0xC1, 0x75, 0xEE, 0x4B,
                                 0xA0, 0xB6, 0x99, 0xF3, 0x5F, 0x1A, 0xEE, 0x3D};
constexpr Guid decoderBytes{0x2C, 0x74, 0x9B, 0xA9, 0x85, 0x44, 0x0F, 0x47,
                            0x99, 0x9A, 0x69, 0x00, 0x83, 0x44, 0x55, 0x66};
constexpr Guid streamBytes{0x3A, 0x59, 0xE7, 0x8F, 0x0B, 0x9D, 0x9D, 0x46,
                           0x80, 0xC9, 0x7A, 0xD0, 0x07, 0xD0, 0x46, 0x0C};
constexpr Guid loggerBytes{0x2A, 0x6C, 0x14, 0x76, 0x4D, 0x42, 0x43, 0x40,
                           0xA1, 0xD6, 0xDD, 0xB7, 0xCA, 0x17, 0xF3, 0x3A};

constexpr std::uint32_t noInterface = 0x80004002, failure = 0x80004005;

template <class Function>
Function SlotOf(void* object, int slot) {
    return reinterpret_cast<Function>((*static_cast<Slot const* const*>(object))[slot]);
}

void Release(void* object) {
    SlotOf<Count>(object, 2)(object);
}

/// The first three slots, of an object that has one user.
void CheckUnknown(void* object, const Guid& own, const Guid& foreign) {
    for (const Guid* identifier : {&own, &unknownBytes}) {
        void* same = nullptr;
        EXPECT_EQ(SlotOf<Ask>(object, 0)(object, identifier->data(), &same), 0u);
        EXPECT_EQ(same, object);
        EXPECT_EQ(SlotOf<Count>(object, 1)(object), 3u);
        EXPECT_EQ(SlotOf<Count>(object, 2)(object), 2u);
        EXPECT_EQ(SlotOf<Count>(object, 2)(object), 1u);
    }
    void* other = object;
    EXPECT_EQ(SlotOf<Ask>(object, 0)(object, foreign.data(), &other), noInterface);
    EXPECT_EQ(other, nullptr);
    EXPECT_EQ(SlotOf<Count>(object, 1)(object), 2u) << "a refusal adds no reference";
    EXPECT_EQ(SlotOf<Count>(object, 2)(object), 1u);
}

/// The class factory of the sample plug-in, by nothing but its export.
void* ClassFactoryOf(const Platform::DynamicLibrary& library) {
    void* factory = nullptr;
    const auto get = reinterpret_cast<ClassObject>(library.Find("DllGetClassObject"));
    EXPECT_EQ(get(decoderClassBytes.data(), classFactoryBytes.data(), &factory), 0u);
    return factory;
}

} // namespace

TEST(PluginTable, IdentifiersLieInMemoryAsTheyAreDocumented) {
    const std::pair<const VarnolitePlugin::Identifier*, const Guid*> identifiers[] = {
        {&VarnolitePlugin::IUnknown::Id, &unknownBytes},      {&VarnolitePlugin::IClassFactory::Id, &classFactoryBytes},
        {&VarnolitePlugin::DecoderClass, &decoderClassBytes}, {&VarnolitePlugin::IDecoder::Id, &decoderBytes},
        {&VarnolitePlugin::IQuorvexStream::Id, &streamBytes}, {&VarnolitePlugin::ICOMLogger::Id, &loggerBytes}};
    static_assert(sizeof(VarnolitePlugin::Identifier) == sizeof(Guid));
    for (const auto& [identifier, bytes] : identifiers)
        EXPECT_EQ(std::memcmp(identifier, bytes->data(), bytes->size()), 0) << int{bytes->front()};
}

TEST(PluginTable, TheFirstSlotsOfAStreamAreThoseOfUnknown) {
    void* const stream = static_cast<VarnolitePlugin::IQuorvexStream*>(
        new IStreamCPPAsCOMWrapper(MakeShared<TestStream>(std::vector<std::uint8_t>{1})));
    CheckUnknown(stream, streamBytes, loggerBytes);
    Release(stream);
}

TEST(PluginTable, TheFirstSlotsOfALoggerAreThoseOfUnknown) {
    void* const logger =
        static_cast<VarnolitePlugin::ICOMLogger*>(new ILoggerCPPAsCOMWrapper(MakeShared<LocalLogger>()));
    CheckUnknown(logger, loggerBytes, streamBytes);
    Release(logger);
}

TEST(PluginTable, TheLastSlotOfAStreamClonesIt) {
    void* const stream =
        static_cast<VarnolitePlugin::IQuorvexStream*>(new IStreamCPPAsCOMWrapper(MakeShared<CloningStream>()));
    EXPECT_EQ(SlotOf<Seek>(stream, 3)(stream, 7, 1), 0u);
    void* clone = nullptr;
    ASSERT_EQ(SlotOf<Clone>(stream, 7)(stream, &clone), 0u);
    ASSERT_NE(clone, nullptr);
    EXPECT_NE(clone, stream);
    EXPECT_EQ(SlotOf<Seek>(stream, 3)(stream, 8, 0), 0u);
    Release(stream);
    std::uint64_t position = 0;
    EXPECT_EQ(SlotOf<Position>(clone, 5)(clone, &position), 0u);
    EXPECT_EQ(position, 0x100000007u);
    CheckUnknown(clone, streamBytes, loggerBytes);
    Release(clone);
}

TEST(PluginTable, AFailingCloneIsAResultAndNull) {
    // Bytes of a test cannot be cloned.
    void* const stream = static_cast<VarnolitePlugin::IQuorvexStream*>(
        new IStreamCPPAsCOMWrapper(MakeShared<TestStream>(std::vector<std::uint8_t>{1})));
    void* clone = stream;
    EXPECT_EQ(SlotOf<Clone>(stream, 7)(stream, &clone), failure);
    EXPECT_EQ(clone, nullptr);
    Release(stream);
}

TEST(PluginTable, SlotsOfAClassFactoryLieInTheirOrder) {
    const Platform::DynamicLibrary library(PluginTest::PathOf("sample", "VarnoliteSample"));
    void* const factory = ClassFactoryOf(library);
    ASSERT_NE(factory, nullptr);
    CheckUnknown(factory, classFactoryBytes, streamBytes);
    void* decoder = nullptr;
    ASSERT_EQ(SlotOf<Create>(factory, 3)(factory, nullptr, decoderBytes.data(), &decoder), 0u);
    ASSERT_NE(decoder, nullptr);
    CheckUnknown(decoder, decoderBytes, classFactoryBytes);
    EXPECT_EQ(SlotOf<Count>(decoder, 5)(decoder), 0x80004001u);
    Release(decoder);
    EXPECT_EQ(SlotOf<LockServer>(factory, 4)(factory, 1), 0u);
    Release(factory);
}

TEST(PluginTable, WhatAClassFactoryDoesNotMakeIsRefused) {
    const Platform::DynamicLibrary library(PluginTest::PathOf("sample", "VarnoliteSample"));
    void* const factory = ClassFactoryOf(library);
    ASSERT_NE(factory, nullptr);
    void* object = factory;
    EXPECT_EQ(SlotOf<Create>(factory, 3)(factory, nullptr, streamBytes.data(), &object), noInterface);
    EXPECT_EQ(object, nullptr);
    object = factory;
    EXPECT_EQ(SlotOf<Create>(factory, 3)(factory, factory, decoderBytes.data(), &object), 0x80040110u);
    EXPECT_EQ(object, nullptr);
    Release(factory);
    const auto get = reinterpret_cast<ClassObject>(library.Find("DllGetClassObject"));
    EXPECT_EQ(get(decoderBytes.data(), classFactoryBytes.data(), &object), 0x80040111u);
    EXPECT_EQ(get(decoderClassBytes.data(), decoderBytes.data(), &object), noInterface);
    EXPECT_EQ(object, nullptr);
}
