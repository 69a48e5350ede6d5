// A plug-in for Varnolite, small but whole. Its files begin with "REK1" and three numbers, the width, the height and
// the count of images; then come the images, grey samples of 16 bits, row by row. All numbers are little-endian.

#include "codecs/plugin/VarnolitePluginSkeleton.h"

#include <algorithm>
#include <cstring>

namespace {

using namespace VarnolitePlugin;

class SampleDecoder final : public Decoder {
public:
    // The program asks every decoder about files that others do not know: say no quickly.
    Result VARNOLITE_CALL Open(IQuorvexStream* stream) override {
        std::uint8_t header[headerBytes];
        if (stream->Read(header, headerBytes) != Success || std::memcmp(header, "REK1", 4) != 0)
            return Failure;
        m_width = Number(header + 4, 4);
        m_height = Number(header + 8, 4);
        m_count = Number(header + 12, 4);
        std::uint64_t size = 0;
        // 2^16 pixels in each direction keep all products within 64 bits.
        if (m_width > 0xFFFF || m_height > 0xFFFF || stream->Size(&size) != Success || m_count == 0 ||
            (size - headerBytes) / m_count < ImageBytes())
            return Failure;
        return Decoder::Open(stream);
    }

    Result VARNOLITE_CALL GetInfo(std::uint32_t index, ImageInfo* info) override {
        if (index >= m_count)
            return Failure;
        *info = {m_width, m_height, 16, 0, 0, ColorType::UInt16};
        return Success;
    }

    Result VARNOLITE_CALL GetCount(std::uint32_t* count) override {
        *count = m_count;
        return Success;
    }

    Result VARNOLITE_CALL Load(std::uint32_t index, void* address, std::uint32_t rowLengthInPixels,
                               std::uint32_t rows) override {
        if (index >= m_count || rowLengthInPixels < m_width || rows < m_height)
            return Failure;
        const std::uint64_t begin = headerBytes + index * ImageBytes();
        if (m_stream->Seek(static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(begin >> 32)) != Success)
            return Failure;
        // On the stack: memory that runs out would raise an exception, and none may leave a plug-in.
        std::uint8_t bytes[1024 * sampleBytes];
        auto* row = static_cast<std::uint16_t*>(address);
        for (std::uint32_t y = 0; y < m_height; ++y, row += rowLengthInPixels)
            for (std::uint32_t x = 0; x < m_width;) {
                const std::uint32_t part = std::min<std::uint32_t>(m_width - x, sizeof(bytes) / sampleBytes);
                if (m_stream->Read(bytes, part * sampleBytes) != Success)
                    return Failure;
                for (std::uint32_t i = 0; i < part; ++i, ++x)
                    row[x] = static_cast<std::uint16_t>(Number(bytes + i * sampleBytes, sampleBytes));
            }
        if (m_logger != nullptr)
            m_logger->Log(u"Beispiel geladen", u"Sample loaded");
        return Success;
    }

private:
    static constexpr std::uint32_t headerBytes = 16, sampleBytes = 2;

    static std::uint32_t Number(const std::uint8_t* bytes, std::uint32_t count) {
        std::uint32_t number = 0;
        for (std::uint32_t i = 0; i < count; ++i)
            number |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
        return number;
    }

    std::uint64_t ImageBytes() const { return std::uint64_t{m_width} * m_height * sampleBytes; }

    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
    std::uint32_t m_count = 0;
};

} // namespace

VARNOLITE_PLUGIN(SampleDecoder)
