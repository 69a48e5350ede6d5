#include "codecs/tif/TIFDecoder.h"
#include "fuzz/FuzzDecode.h"

#include <algorithm>

using FuzzDecode::Bytes;

// The first images of a TIFF file through both passes, from memory with one worker, and as if from a file with three.
// The two must agree in every byte, and all pixels must be the decoder's own.

namespace {

constexpr std::uint32_t mostImages = 4;

Bytes Decode(const FuzzDecode::SharedPtr<Quorvex::Stream>& stream, std::uint32_t workerCount, std::uint8_t background) {
    Bytes all;
    try {
        ET::Img::TIFDecoder decoder(stream);
        decoder.SetWorkerCount(workerCount);
        for (std::uint32_t index = 0; index < std::min(decoder.GetCount(), mostImages); ++index) {
            const Bytes image = FuzzDecode::DecodeImage(decoder, index, background);
            all.insert(all.end(), image.begin(), image.end());
        }
    } catch (const std::exception&) {
    }
    return all;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto byteCount = static_cast<std::uint32_t>(size);
    Require(Decode(Quorvex::MakeShared<Quorvex::MemoryStream>(data, byteCount), 1, 0x5A) ==
            Decode(Quorvex::MakeShared<CopyingStream>(data, size), 3, 0xA5));
    return 0;
}
