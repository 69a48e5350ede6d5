#include "codecs/png/PNGDecoder.h"
#include "fuzz/FuzzDecode.h"

using namespace FuzzDecode;

// A PNG file through both passes, from memory and as if from a file. The two must agree in every sample, and all
// samples must be the decoder's own. A checksum or two will be wrong in nearly every input, so that each is decoded
// again with its checksums made right.

namespace {

Bytes DecodeOrRefuse(const SharedPtr<Quorvex::Stream>& stream, std::uint8_t background) {
    try {
        ET::Img::PNGDecoder decoder(stream);
        return DecodeImage(decoder, 0, background);
    } catch (const std::exception&) {
        return {};
    }
}

/// The checksum of ISO/IEC 15948, bit by bit.
std::uint32_t Checksum(const std::uint8_t* bytes, std::size_t count) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (std::size_t i = 0; i < count; ++i) {
        sum ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

Bytes WithRightChecksums(Bytes file) {
    for (std::size_t position = 8; position + 12 <= file.size();) {
        std::size_t length = 0;
        for (std::size_t i = 0; i < 4; ++i)
            length = length << 8 | file[position + i];
        if (length > file.size() - position - 12)
            break;
        const std::uint32_t sum = Checksum(file.data() + position + 4, length + 4);
        for (std::size_t i = 0; i < 4; ++i)
            file[position + 8 + length + i] = static_cast<std::uint8_t>(sum >> (24 - 8 * i));
        position += length + 12;
    }
    return file;
}

void DecodeTwice(const std::uint8_t* data, std::size_t size) {
    const auto memory = Quorvex::MakeShared<Quorvex::MemoryStream>(data, static_cast<std::uint32_t>(size));
    Require(DecodeOrRefuse(memory, 0x5A) == DecodeOrRefuse(Quorvex::MakeShared<CopyingStream>(data, size), 0xA5));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    DecodeTwice(data, size);
    const Bytes file = WithRightChecksums(Bytes(data, data + size));
    DecodeTwice(file.data(), file.size());
    return 0;
}
