#include "codecs/gif/GIFDecoder.h"
#include "fuzz/FuzzDecode.h"

using namespace FuzzDecode;

// The first frames of a GIF file and one that it does not have, each through both passes, from memory and as if from a
// file. The two must agree in every sample, all samples must be the decoder's own, and all pixels opaque.

namespace {

constexpr std::uint32_t mostFrames = 3;

Bytes DecodeOrRefuse(const SharedPtr<Quorvex::Stream>& stream, std::uint32_t index, std::uint8_t background) {
    try {
        ET::Img::GIFDecoder decoder(stream);
        const Bytes image = DecodeImage(decoder, index, background);
        // Two bytes behind the pixels tell of the whole image.
        for (std::size_t i = 3; i + 2 < image.size(); i += 4)
            Require(image[i] == 255);
        return image;
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (std::uint32_t index = 0; index <= mostFrames; ++index) {
        const std::uint32_t asked = index < mostFrames ? index : 0xFFFFFFFE;
        const auto memory = Quorvex::MakeShared<Quorvex::MemoryStream>(data, static_cast<std::uint32_t>(size));
        Require(DecodeOrRefuse(memory, asked, 0x5A) ==
                DecodeOrRefuse(Quorvex::MakeShared<CopyingStream>(data, size), asked, 0xA5));
    }
    return 0;
}
