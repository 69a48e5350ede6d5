// A plug-in that does what the first byte of its files asks for, none of which a plug-in should do.

#include "codecs/plugin/VarnolitePluginSkeleton.h"

#include <cstring>
#include <limits>
#include <stdexcept>

namespace {

using namespace VarnolitePlugin;

class MisbehavingDecoder final : public Decoder {
public:
    Result VARNOLITE_CALL Open(IQuorvexStream* stream) override {
        if (stream->Read(&m_wanted, 1) != Success)
            return Failure;
        Misbehave('o');
        if (m_wanted == 'f')
            return Failure;
        // Beyond the end of all files.
        char byte = 0;
        if (m_wanted == 'r' && stream->Read(&byte, 0x7FFFFFFF) == Success)
            return Success;
        return m_wanted == 'r' ? Failure : Decoder::Open(stream);
    }

    Result VARNOLITE_CALL GetInfo(std::uint32_t, ImageInfo* info) override {
        Misbehave('i');
        constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
        *info = {2, 2, 8, 0, 0, ColorType::Float32};
        if (m_wanted == 'W')
            *info = {most, most, most, 0, 0, ColorType::BGRAFloat64};
        if (m_wanted == 'A')
            *info = {2, 2, 8, most, most, ColorType::UInt8};
        if (m_wanted == 'a')
            *info = {64, 3, 8, 1, 1, ColorType::Float32};
        if (m_wanted == 'T')
            info->colorType = static_cast<ColorType>(20);
        if (m_wanted == 'E')
            info->width = 0;
        return m_wanted == 'p' ? 1 : Success;
    }

    Result VARNOLITE_CALL GetCount(std::uint32_t* count) override {
        Misbehave('c');
        *count = m_wanted == 'C' ? std::numeric_limits<std::uint32_t>::max() : 1;
        return Success;
    }

    Result VARNOLITE_CALL GetDefaultIndex(std::uint32_t* index) override {
        Misbehave('d');
        *index = m_wanted == 'D' ? std::numeric_limits<std::uint32_t>::max() : 0;
        return Success;
    }

    Result VARNOLITE_CALL Load(std::uint32_t, void* address, std::uint32_t rowLength, std::uint32_t rows) override {
        Misbehave('l');
        const std::size_t count = std::size_t{rowLength} * rows;
        for (std::size_t i = 0; i < count; ++i)
            static_cast<float*>(address)[i] =
                m_wanted == 'n' ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(i);
        return m_wanted == 'L' ? Failure : Success;
    }

    Result VARNOLITE_CALL SetLogger(ICOMLogger* logger) override {
        Misbehave('s');
        logger->LogText(u"one text");
        return m_wanted == 'S' ? NotImplemented : Decoder::SetLogger(logger);
    }

private:
    // A letter asks for an exception of the standard's in its operation, a digit for one that is a number.
    void Misbehave(char operation) const {
        if (m_wanted == operation)
            throw std::runtime_error("a plug-in must not raise");
        if (m_wanted == '1' && operation == 'o')
            throw 1;
        if (m_wanted == '2' && operation == 'l')
            throw 2;
    }

    char m_wanted = 0;
};

} // namespace

VARNOLITE_PLUGIN(MisbehavingDecoder)
