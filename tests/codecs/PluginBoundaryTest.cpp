#include "codecs/plugin/LoggerWrapper.h"
#include "codecs/plugin/SampleRange.h"
#include "codecs/plugin/StreamWrapper.h"
#include "data/FileStream.h"
#include "data/Image.h"
#include "foundation/LocalLogger.h"
#include "tests/codecs/CloningStream.h"
#include "tests/codecs/TestStream.h"
#include "tests/support/LogCapture.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

using namespace Quorvex;
using namespace ET::Img;
using Plugin::ComPointer;
using Quorvex::Test::LogCapture;
using Quorvex::Test::TemporaryFolder;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr VarnolitePlugin::Identifier foreign{1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};

VarnolitePlugin::IQuorvexStream* Wrap(const Bytes& bytes) {
    return new IStreamCPPAsCOMWrapper(MakeShared<TestStream>(bytes));
}

// Static analysis does not follow an atomic count and would take each release for the last one; like a plug-in, it is
// not to know what the object is.
VarnolitePlugin::IQuorvexStream* (*volatile const opaqueWrap)(const Bytes&) = &Wrap;

ComPointer<VarnolitePlugin::IQuorvexStream> Wrapped(const Bytes& bytes) {
    return ComPointer<VarnolitePlugin::IQuorvexStream>(opaqueWrap(bytes));
}

/// Fails in all that it does.
class FailingStream final : public Stream {
public:
    std::uint64_t tell() const override { throw Exception(); }
    void read(void*, std::uint32_t) override { throw std::runtime_error("read"); }
    void seek(std::uint64_t) override { throw Exception(); }
    std::uint64_t size() const override { throw std::bad_alloc(); }
    StreamLock lock(std::uint32_t) override { throw Exception(); }
    std::unique_ptr<Stream> Clone() const override { throw Exception(); }
};

/// Fails in all that it is asked for.
class FailingLogger final : public ILogger {
public:
    void Log(const BilingualText&) override { throw Exception(); }
    void LogText(const String&) override { throw std::bad_alloc(); }
    void LogForBothLanguages(const String&) override { throw Exception(); }
    void Write(ILogger&) override { throw Exception(); }
};

template <class Sample>
SharedPtr<Data::ImageBase> ImageOf(std::uint32_t width, const std::vector<Sample>& samples) {
    SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Sample>>();
    image->Allocate(width, static_cast<std::uint32_t>(samples.size()) / width, 0, 0);
    const auto lock = Data::SampleTraits<Sample>::LockIn(*image, Data::LockMode::ReadWrite);
    // What lies beside the image does not count.
    std::fill_n(lock.Data, std::size_t(lock.AllocatedWidth) * lock.AllocatedHeight, Sample());
    for (std::uint32_t i = 0; i < samples.size(); ++i)
        lock(i % width, i / width) = samples[i];
    return image;
}

} // namespace

TEST(PluginBoundary, IdentifiersAreThoseOfTheInterface) {
    const VarnolitePlugin::Identifier identifiers[] = {
        VarnolitePlugin::DecoderClass, VarnolitePlugin::IClassFactory::Id, VarnolitePlugin::IDecoder::Id,
        VarnolitePlugin::IQuorvexStream::Id, VarnolitePlugin::ICOMLogger::Id};
    const char* const texts[] = {"FF892E85-75C1-4BEE-A0B6-99F35F1AEE3D", "00000001-0000-0000-C000-000000000046",
                                 "A99B742C-4485-470F-999A-690083445566", "8FE7593A-9D0B-469D-80C9-7AD007D0460C",
                                 "76146C2A-424D-4043-A1D6-DDB7CA17F33A"};
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        const auto& [data1, data2, data3, data4] = identifiers[i];
        char text[40];
        std::snprintf(text, sizeof(text), "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X", data1, unsigned{data2},
                      unsigned{data3}, unsigned{data4[0]}, unsigned{data4[1]}, unsigned{data4[2]}, unsigned{data4[3]},
                      unsigned{data4[4]}, unsigned{data4[5]}, unsigned{data4[6]}, unsigned{data4[7]});
        EXPECT_STREQ(text, texts[i]);
    }
}

TEST(PluginBoundary, SlotsLieInTheOrderOfTheInterface) {
    // As a plug-in without C++ sees it: a pointer to a table of functions, each with the object as its first argument.
    const auto stream = Wrapped({1, 2, 3});
    using Slot = void (*)();
    Slot const* const slots = *reinterpret_cast<Slot* const*>(stream.get());
    using AddRef = std::uint32_t(VARNOLITE_CALL*)(void*);
    using Seek = std::int32_t(VARNOLITE_CALL*)(void*, std::uint32_t, std::uint32_t);
    using Ask = std::int32_t(VARNOLITE_CALL*)(void*, std::uint64_t*);
    using Read = std::int32_t(VARNOLITE_CALL*)(void*, void*, std::uint32_t);
    EXPECT_EQ(reinterpret_cast<AddRef>(slots[1])(stream.get()), 2u);
    EXPECT_EQ(reinterpret_cast<AddRef>(slots[2])(stream.get()), 1u);
    EXPECT_EQ(reinterpret_cast<Seek>(slots[3])(stream.get(), 1, 0), 0);
    std::uint64_t number = 0;
    EXPECT_EQ(reinterpret_cast<Ask>(slots[4])(stream.get(), &number), 0);
    EXPECT_EQ(number, 3u);
    EXPECT_EQ(reinterpret_cast<Ask>(slots[5])(stream.get(), &number), 0);
    EXPECT_EQ(number, 1u);
    std::uint8_t bytes[2] = {};
    EXPECT_EQ(reinterpret_cast<Read>(slots[6])(stream.get(), bytes, 2), 0);
    EXPECT_EQ(bytes[1], 3);
}

TEST(PluginBoundary, SlotsOfTheLoggerLieInTheirOrder) {
    const SharedPtr<LocalLogger> inner = MakeShared<LocalLogger>();
    const ComPointer<VarnolitePlugin::ICOMLogger> logger(new ILoggerCPPAsCOMWrapper(inner));
    using Slot = void (*)();
    Slot const* const slots = *reinterpret_cast<Slot* const*>(logger.get());
    using LogBoth = std::int32_t(VARNOLITE_CALL*)(void*, const char16_t*, const char16_t*);
    using LogOne = std::int32_t(VARNOLITE_CALL*)(void*, const char16_t*);
    EXPECT_EQ(reinterpret_cast<LogBoth>(slots[3])(logger.get(), u"eins", u"one"), 0);
    EXPECT_EQ(reinterpret_cast<LogOne>(slots[4])(logger.get(), u"two"), 0);
    ASSERT_EQ(inner->GetMessages().size(), 2u);
    EXPECT_EQ(inner->GetMessages()[0][0], String(u"eins"));
    EXPECT_EQ(inner->GetMessages()[0][1], String(u"one"));
    EXPECT_EQ(inner->GetMessages()[1][0], String(u"two"));
}

namespace {

/// Which of the functions in a plug-in's table was called last, and with what.
struct Called {
    int slot = 0;
    std::uint32_t numbers[3] = {};
} called;

template <int slot>
std::int32_t VARNOLITE_CALL NoArgument(void*) {
    called = {slot};
    return slot;
}
template <int slot>
std::int32_t VARNOLITE_CALL OnePointer(void*, void*) {
    called = {slot};
    return slot;
}
template <int slot>
std::int32_t VARNOLITE_CALL NumberAndPointer(void*, std::uint32_t number, void*) {
    called = {slot, {number}};
    return slot;
}
template <int slot>
std::int32_t VARNOLITE_CALL IdentifierAndPointer(void*, const void*, void*) {
    called = {slot};
    return slot;
}
std::int32_t VARNOLITE_CALL LoadImage8(void*, std::uint32_t index, void*, std::uint32_t rowLength, std::uint32_t rows) {
    called = {8, {index, rowLength, rows}};
    return 8;
}

// A table that no compiler made has no type that the sanitizer could look at.
__attribute__((no_sanitize("undefined"))) void CallAllSlots(VarnolitePlugin::IDecoder* decoder) {
    void* object = nullptr;
    std::uint32_t number = 0;
    VarnolitePlugin::ImageInfo info{};
    EXPECT_EQ(decoder->QueryInterface(foreign, &object), 10);
    EXPECT_EQ(decoder->AddRef(), 1u);
    EXPECT_EQ(decoder->Release(), 2u);
    EXPECT_EQ(decoder->Open(nullptr), 3);
    EXPECT_EQ(decoder->GetInfo(77, &info), 4);
    EXPECT_EQ(called.numbers[0], 77u);
    EXPECT_EQ(decoder->Reserved(), 5);
    EXPECT_EQ(decoder->GetCount(&number), 6);
    EXPECT_EQ(decoder->GetDefaultIndex(&number), 7);
    EXPECT_EQ(decoder->Load(11, nullptr, 22, 33), 8);
    EXPECT_EQ(called.numbers[0], 11u);
    EXPECT_EQ(called.numbers[1], 22u);
    EXPECT_EQ(called.numbers[2], 33u);
    EXPECT_EQ(decoder->SetLogger(nullptr), 9);
    EXPECT_EQ(called.slot, 9);
}

TEST(PluginStream, AnAnswerWithoutAPlaceIsAFailure) {
    const ComPointer<VarnolitePlugin::IQuorvexStream> stream = Wrapped({1, 2, 3});
    EXPECT_EQ(stream->QueryInterface(VarnolitePlugin::IUnknown::Id, nullptr), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Size(nullptr), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Tell(nullptr), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Read(nullptr, 1), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Clone(nullptr), VarnolitePlugin::Failure);
}

} // namespace

TEST(PluginBoundary, SlotsOfADecoderAreCalledInTheirOrder) {
    using Slot = void (*)();
    const auto slot = [](auto* function) { return reinterpret_cast<Slot>(function); };
    const Slot table[] = {slot(&IdentifierAndPointer<10>),
                          slot(&NoArgument<1>),
                          slot(&NoArgument<2>),
                          slot(&OnePointer<3>),
                          slot(&NumberAndPointer<4>),
                          slot(&NoArgument<5>),
                          slot(&OnePointer<6>),
                          slot(&OnePointer<7>),
                          slot(&LoadImage8),
                          slot(&OnePointer<9>)};
    const Slot* object = table;
    CallAllSlots(reinterpret_cast<VarnolitePlugin::IDecoder*>(&object));
}

TEST(PluginBoundary, ObjectsCountTheirUsersAndEndWithTheLast) {
    VarnolitePlugin::IQuorvexStream* const wrapper = opaqueWrap({1});
    EXPECT_EQ(wrapper->AddRef(), 2u);
    EXPECT_EQ(wrapper->Release(), 1u);
    EXPECT_EQ(wrapper->Release(), 0u);
}

TEST(PluginBoundary, ObjectsAreAskedForByTheirIdentifier) {
    const auto stream = Wrapped({1});
    void* object = nullptr;
    for (const auto& identifier : {VarnolitePlugin::IQuorvexStream::Id, VarnolitePlugin::IUnknown::Id}) {
        EXPECT_EQ(stream->QueryInterface(identifier, &object), VarnolitePlugin::Success);
        EXPECT_EQ(object, stream.get());
        EXPECT_EQ(stream->Release(), 1u);
    }
    EXPECT_EQ(stream->QueryInterface(foreign, &object), VarnolitePlugin::NoInterface);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(stream->QueryInterface(VarnolitePlugin::ICOMLogger::Id, &object), VarnolitePlugin::NoInterface);
}

TEST(PluginBoundary, PositionsHave64Bits) {
    const ComPointer<VarnolitePlugin::IQuorvexStream> stream(new IStreamCPPAsCOMWrapper(MakeShared<CloningStream>()));
    std::uint64_t number = 0;
    EXPECT_EQ(stream->Seek(0x89ABCDEF, 0x1234567), 0);
    EXPECT_EQ(stream->Tell(&number), 0);
    EXPECT_EQ(number, 0x123456789ABCDEFu);
    EXPECT_EQ(stream->Size(&number), 0);
    EXPECT_EQ(number, 0x1234567890u);
}

TEST(PluginBoundary, AClonedStreamGoesItsOwnWay) {
    const ComPointer<VarnolitePlugin::IQuorvexStream> stream(new IStreamCPPAsCOMWrapper(MakeShared<CloningStream>(7)));
    VarnolitePlugin::IQuorvexStream* cloned = nullptr;
    ASSERT_EQ(stream->Clone(&cloned), 0);
    const ComPointer<VarnolitePlugin::IQuorvexStream> clone(cloned);
    EXPECT_EQ(stream->Seek(9, 0), 0);
    std::uint64_t number = 0;
    EXPECT_EQ(clone->Tell(&number), 0);
    EXPECT_EQ(number, 7u);
}

TEST(PluginBoundary, ExceptionsOfAStreamBecomeFailures) {
    const ComPointer<VarnolitePlugin::IQuorvexStream> stream(new IStreamCPPAsCOMWrapper(MakeShared<FailingStream>()));
    std::uint64_t number = 0;
    VarnolitePlugin::IQuorvexStream* clone = stream.get();
    char byte = 0;
    const auto failure = static_cast<std::int32_t>(0x80004005);
    EXPECT_EQ(stream->Seek(0, 0), failure);
    EXPECT_EQ(stream->Size(&number), failure);
    EXPECT_EQ(stream->Tell(&number), failure);
    EXPECT_EQ(stream->Read(&byte, 1), failure);
    EXPECT_EQ(stream->Clone(&clone), failure);
    EXPECT_EQ(clone, nullptr);
}

TEST(PluginBoundary, AClosedFileFailsInAllThatIsAsked) {
    const TemporaryFolder folder;
    folder.Write("a.raw", "abc");
    const SharedPtr<FileStream> file = MakeShared<FileStream>(folder.PathOf("a.raw"));
    const ComPointer<VarnolitePlugin::IQuorvexStream> stream(new IStreamCPPAsCOMWrapper(file));
    std::uint64_t number = 0;
    EXPECT_EQ(stream->Size(&number), VarnolitePlugin::Success);
    EXPECT_EQ(number, 3u);
    file->Close();
    char byte = 'x';
    VarnolitePlugin::IQuorvexStream* clone = stream.get();
    EXPECT_EQ(stream->Seek(0, 0), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Size(&number), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Tell(&number), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Read(&byte, 1), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Clone(&clone), VarnolitePlugin::Failure);
    EXPECT_EQ(number, 3u);
    EXPECT_EQ(byte, 'x');
    EXPECT_EQ(clone, nullptr);
}

TEST(PluginBoundary, PositionsBeyondAFileFailTheRead) {
    const LogCapture log;
    const TemporaryFolder folder;
    folder.Write("a.raw", "abc");
    const ComPointer<VarnolitePlugin::IQuorvexStream> stream(
        new IStreamCPPAsCOMWrapper(MakeShared<FileStream>(folder.PathOf("a.raw"))));
    char bytes[100] = {};
    std::uint64_t number = 0;
    EXPECT_EQ(stream->Seek(5, 1), VarnolitePlugin::Success);
    EXPECT_EQ(stream->Tell(&number), VarnolitePlugin::Success);
    EXPECT_EQ(number, 0x100000005u);
    EXPECT_EQ(stream->Read(bytes, 1), VarnolitePlugin::Failure);
    // Neither system has positions that would be negative with a sign.
    EXPECT_EQ(stream->Seek(0xFFFFFFFF, 0xFFFFFFFF), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Seek(1, 0), VarnolitePlugin::Success);
    EXPECT_EQ(stream->Read(bytes, sizeof(bytes)), VarnolitePlugin::Failure);
    EXPECT_EQ(stream->Seek(1, 0), VarnolitePlugin::Success);
    EXPECT_EQ(stream->Read(bytes, 2), VarnolitePlugin::Success);
    EXPECT_EQ(std::string(bytes, 2), "bc");
    EXPECT_EQ(stream->Read(nullptr, 0), VarnolitePlugin::Success);
}

TEST(PluginBoundary, MessagesAreHandedOn) {
    const SharedPtr<LocalLogger> inner = MakeShared<LocalLogger>();
    const ComPointer<VarnolitePlugin::ICOMLogger> logger(new ILoggerCPPAsCOMWrapper(inner));
    EXPECT_EQ(logger->Log(u"\u4E2D", u"two"), 0);
    EXPECT_EQ(logger->LogText(u"three"), 0);
    EXPECT_EQ(logger->LogText(nullptr), 0);
    EXPECT_EQ(logger->Log(nullptr, nullptr), 0);
    ASSERT_EQ(inner->GetMessages().size(), 4u);
    EXPECT_EQ(inner->GetMessages()[0][0], String(u"\u4E2D"));
    EXPECT_EQ(inner->GetMessages()[0][1], String(u"two"));
}

TEST(PluginBoundary, ExceptionsOfALoggerBecomeFailures) {
    const ComPointer<VarnolitePlugin::ICOMLogger> logger(new ILoggerCPPAsCOMWrapper(MakeShared<FailingLogger>()));
    EXPECT_EQ(logger->Log(u"a", u"b"), VarnolitePlugin::Failure);
    EXPECT_EQ(logger->LogText(u"a"), VarnolitePlugin::Failure);
}

TEST(PluginBoundary, RangesOfAllSampleTypes) {
    for (std::uint32_t type = 0; type < 20; ++type) {
        Data::Dispatch(static_cast<Data::ColorTypeEnum::Value>(type), "", [&](auto tag) {
            using Sample = typename decltype(tag)::Sample;
            using Channel = typename decltype(tag)::Channel;
            const auto lowest = std::numeric_limits<Channel>::lowest(), highest = std::numeric_limits<Channel>::max();
            std::vector<Sample> samples(6);
            const std::size_t channels = decltype(tag)::Traits::isColor ? 4 : 1;
            auto* const values = reinterpret_cast<Channel*>(samples.data());
            std::fill_n(values, 6 * channels, Channel{5});
            values[5 * channels] = lowest;
            values[channels] = highest;
            const auto range = Plugin::FindSampleRange(*ImageOf<Sample>(3, samples));
            ASSERT_TRUE(range);
            EXPECT_EQ(range->minimum, static_cast<double>(lowest)) << type;
            EXPECT_EQ(range->maximum, static_cast<double>(highest)) << type;
        });
    }
}

TEST(PluginBoundary, RangesDoNotCountWhatIsBesideTheImageOrNoNumber) {
    const float none = std::numeric_limits<float>::quiet_NaN();
    const auto range = Plugin::FindSampleRange(*ImageOf<float>(2, {none, 3, none, 4, 2, none}));
    ASSERT_TRUE(range);
    EXPECT_EQ(range->minimum, 2);
    EXPECT_EQ(range->maximum, 4);
    EXPECT_FALSE(Plugin::FindSampleRange(*ImageOf<float>(1, {none})));
    EXPECT_FALSE(Plugin::FindSampleRange(*Data::CreateImage(Data::ColorTypeEnum::UInt8, 0, 5)));
}
