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
        if (m_wanted == 'r' && !SeesTheReadFail(stream))
            return Failure;
        return Decoder::Open(stream);
    }

    Result VARNOLITE_CALL GetInfo(std::uint32_t, ImageInfo* info) override {
        Misbehave('i');
        // Says that it has told what it has not.
        if (m_wanted == 'q')
            return Success;
        *info = Describe();
        if (m_wanted == 'I')
            return Failure;
        return m_wanted == 'p' ? 1 : Success;
    }

    Result VARNOLITE_CALL GetCount(std::uint32_t* count) override {
        Misbehave('c');
        *count = Number('C', 'h', 1);
        if (m_wanted == 'z')
            *count = 0;
        return m_wanted == 'x' ? Failure : Success;
    }

    Result VARNOLITE_CALL GetDefaultIndex(std::uint32_t* index) override {
        Misbehave('d');
        *index = Number('D', 'H', 0);
        return m_wanted == 'y' ? Failure : Success;
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
    static constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
    static constexpr std::uint32_t signedMost = std::numeric_limits<std::int32_t>::max();

    ImageInfo Describe() const {
        switch (m_wanted) {
        case 'W':
            return {most, most, most, 0, 0, ColorType::BGRAFloat64};
        case 'V': // The same for who takes them for signed: -1 and -1.
            return {most, 1, 8, 0, 0, ColorType::UInt8};
        case 'v':
            return {1, most, 8, 0, 0, ColorType::UInt8};
        case 'M': // 2^16 times 2^16 times 4 bytes, which 32 bits take for nothing.
            return {0x10000, 0x10000, 32, 0, 0, ColorType::Float32};
        case 'A':
            return {2, 2, 8, most, most, ColorType::UInt8};
        case 'a':
            return {64, 3, 8, 1, 1, ColorType::Float32};
        case 'T':
            return {2, 2, 8, 0, 0, static_cast<ColorType>(20)};
        case 't':
            return {2, 2, 8, 0, 0, static_cast<ColorType>(most)};
        case 'E':
            return {0, 2, 8, 0, 0, ColorType::Float32};
        case 'e': // Rows of no pixels take no memory, however many there are.
            return {0, signedMost, 8, 0, 0, ColorType::Float32};
        default:
            return {2, 2, m_bitsPerPixel, 0, 0, ColorType::Float32};
        }
    }

    // Reads beyond the end of all files, and shows the result as the depth. The stream must work as before.
    bool SeesTheReadFail(IQuorvexStream* stream) {
        char byte = 0;
        m_bitsPerPixel = static_cast<std::uint32_t>(stream->Read(&byte, most));
        return stream->Seek(0, 0) == Success && stream->Read(&byte, 1) == Success && byte == m_wanted;
    }

    // The most there is for one behaviour, the most with a sign for the other.
    std::uint32_t Number(char forMost, char forSignedMost, std::uint32_t otherwise) const {
        if (m_wanted == forMost)
            return most;
        return m_wanted == forSignedMost ? signedMost : otherwise;
    }

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
    std::uint32_t m_bitsPerPixel = 8;
};

} // namespace

VARNOLITE_PLUGIN(MisbehavingDecoder)
