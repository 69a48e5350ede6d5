// A plug-in that tells what was done with it, a letter for each call. Its files are one byte, the type of the samples
// of an image of 3 x 2 pixels in the memory for 5 x 4, whose bytes are all the number of the pixel, counted from 1.

#include "codecs/plugin/VarnolitePluginSkeleton.h"

#include <cstring>

namespace {

using namespace VarnolitePlugin;

/// Letters of upper case are objects that end.
char calls[100];

void Tell(char letter) {
    const std::size_t length = std::strlen(calls);
    if (length + 1 < sizeof(calls))
        calls[length] = letter;
}

class TellingDecoder final : public Decoder {
public:
    TellingDecoder() { Tell('n'); }

    Result VARNOLITE_CALL Open(IQuorvexStream* stream) override {
        Tell('o');
        return stream->Read(&m_type, 1) == Success ? Decoder::Open(stream) : Failure;
    }

    Result VARNOLITE_CALL GetInfo(std::uint32_t, ImageInfo* info) override {
        Tell('i');
        *info = {width, height, 8 * SampleBytes(), 5, 4, static_cast<ColorType>(m_type)};
        return Success;
    }

    Result VARNOLITE_CALL Load(std::uint32_t, void* address, std::uint32_t rowLength, std::uint32_t rows) override {
        Tell('l');
        const std::size_t size = SampleBytes();
        auto* const bytes = static_cast<std::uint8_t*>(address);
        std::memset(bytes, 0xEE, size * rowLength * rows);
        for (std::uint32_t y = 0; y < height; ++y)
            for (std::uint32_t x = 0; x < width; ++x)
                std::memset(bytes + (std::size_t{y} * rowLength + x) * size, static_cast<int>(1 + y * width + x), size);
        return Success;
    }

    Result VARNOLITE_CALL SetLogger(ICOMLogger* logger) override {
        Tell('s');
        return Decoder::SetLogger(logger);
    }

private:
    static constexpr std::uint32_t width = 3, height = 2;

    ~TellingDecoder() override { Tell('N'); }

    std::uint32_t SampleBytes() const {
        static constexpr std::uint8_t channelBytes[] = {1, 2, 4, 8, 1, 2, 4, 8, 4, 8};
        return m_type < 10 ? channelBytes[m_type] : 4u * channelBytes[m_type - 10];
    }

    std::uint8_t m_type = 0;
};

class TellingFactory final : public Counted<IClassFactory> {
public:
    TellingFactory() { Tell('f'); }

    Result VARNOLITE_CALL CreateInstance(IUnknown*, const Identifier& identifier, void** object) override {
        return Make<TellingDecoder>(identifier, object);
    }
    Result VARNOLITE_CALL LockServer(std::int32_t) override { return Success; }

private:
    ~TellingFactory() override { Tell('F'); }
};

} // namespace

extern "C" VARNOLITE_EXPORT char* Calls() {
    return calls;
}

extern "C" VARNOLITE_EXPORT VarnolitePlugin::Result VARNOLITE_CALL DllGetClassObject(const Identifier&,
                                                                                     const Identifier& identifier,
                                                                                     void** object) {
    return Make<TellingFactory>(identifier, object);
}
