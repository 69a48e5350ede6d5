#include "codecs/gif/GIFDecoder.h"
#include "data/Image.h"
#include "fuzz/CopyingStream.h"
#include "fuzz/Require.h"

#include <algorithm>
#include <cstring>
#include <vector>

using namespace Quorvex;
using Pixel = Data::ColorBGRA<std::uint8_t>;

// The first frames of a GIF file and one that it does not have, each through both passes, from memory and as if from a
// file. The two must agree in every pixel, and all pixels must be opaque and the decoder's own.

namespace {

constexpr std::uint64_t largestPixelCount = 1 << 14;
constexpr std::uint32_t mostFrames = 3;

/// The visible pixels of a frame, and whether it was complete; nothing where it is refused.
std::vector<Pixel> DecodeOrRefuse(const SharedPtr<Stream>& stream, std::uint32_t index, std::uint8_t background) {
    try {
        ET::Img::GIFDecoder decoder(stream);
        const ET::Img::ImageInfo info = decoder.GetInfo(index);
        if (std::uint64_t(info.Width) * info.Height > largestPixelCount || decoder.GetCount() == 0)
            return {};
        const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
        void* const memory = image->Allocate(info.Width, info.Height, 0, 0);
        std::memset(memory, background, std::size_t(image->AllocatedWidth) * image->AllocatedHeight * sizeof(Pixel));
        decoder.Load(image, index);
        const auto lock = image->LockBGRAUInt8(Data::LockMode::ReadOnly);
        std::vector<Pixel> pixels;
        for (std::uint32_t y = 0; y < lock.Height; ++y)
            pixels.insert(pixels.end(), lock.Row(y), lock.Row(y) + lock.Width);
        Require(std::all_of(pixels.begin(), pixels.end(), [](const Pixel& pixel) { return pixel.alpha == 255; }));
        pixels.push_back({decoder.IsIncomplete(), 0, 0, 0});
        return pixels;
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (std::uint32_t index = 0; index <= mostFrames; ++index) {
        const std::uint32_t asked = index < mostFrames ? index : 0xFFFFFFFE;
        const auto fromMemory =
            DecodeOrRefuse(MakeShared<MemoryStream>(data, static_cast<std::uint32_t>(size)), asked, 0x5A);
        Require(fromMemory == DecodeOrRefuse(MakeShared<CopyingStream>(data, size), asked, 0xA5));
    }
    return 0;
}
