#include "codecs/ico/ICODecoder.h"
#include "fuzz/FuzzDecode.h"

#include <algorithm>

using namespace FuzzDecode;

// The first images of an icon file and the one to show first through both passes, from memory and as if from a file.
// The two must agree in every sample, and all samples must be the decoder's own.

namespace {

constexpr std::uint32_t mostImages = 8;

Bytes DecodeOrRefuse(ET::Img::ICODecoder& decoder, std::uint32_t index, std::uint8_t background) {
    try {
        return DecodeImage(decoder, index, background);
    } catch (const std::exception&) {
        return {};
    }
}

std::vector<Bytes> DecodeAll(const SharedPtr<Quorvex::Stream>& stream, std::uint8_t background) {
    std::vector<Bytes> images;
    try {
        ET::Img::ICODecoder decoder(stream);
        Require(decoder.GetCount() > 0 && decoder.GetDefaultIndex() < decoder.GetCount());
        for (std::uint32_t i = 0; i < std::min(decoder.GetCount(), mostImages); ++i)
            images.push_back(DecodeOrRefuse(decoder, i, background));
        images.push_back(DecodeOrRefuse(decoder, decoder.GetDefaultIndex(), background));
        Require(!decoder.IsIncomplete());
    } catch (const std::exception&) {
    }
    return images;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto memory = Quorvex::MakeShared<Quorvex::MemoryStream>(data, static_cast<std::uint32_t>(size));
    Require(DecodeAll(memory, 0x5A) == DecodeAll(Quorvex::MakeShared<CopyingStream>(data, size), 0xA5));
    return 0;
}
