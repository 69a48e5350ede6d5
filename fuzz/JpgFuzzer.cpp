#include "codecs/jpg/JPGDecoder.h"
#include "data/Image.h"
#include "data/MemoryStream.h"
#include "fuzz/Require.h"

#include <cstring>
#include <vector>

using namespace Quorvex;

// A JPEG file through both passes, with one worker and with four. The two must agree in every sample, and all samples
// must be the decoder's own.

namespace {

// Enough for a scan whose pixels are made on other threads than the one that reads its codes.
constexpr std::uint64_t largestPixelCount = 1 << 19;

using Bytes = std::vector<std::uint8_t>;

/// The visible samples, and whether the file was complete; nothing where it is refused.
template <class Sample>
Bytes Decode(ET::Img::JPGDecoder& decoder, const ET::Img::ImageInfo& info, int background) {
    const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Sample>>();
    void* const memory = image->Allocate(info.Width, info.Height, info.AllocatedWidth, info.AllocatedHeight);
    std::memset(memory, background, std::size_t(image->AllocatedWidth) * image->AllocatedHeight * sizeof(Sample));
    decoder.Load(image, 0);
    const auto lock = Data::SampleTraits<Sample>::LockIn(*image, Data::LockMode::ReadWrite);
    Bytes bytes;
    for (std::uint32_t y = 0; y < lock.Height; ++y) {
        const auto* const row = reinterpret_cast<const std::uint8_t*>(lock.Row(y));
        bytes.insert(bytes.end(), row, row + lock.Width * sizeof(Sample));
    }
    bytes.push_back(decoder.IsIncomplete());
    return bytes;
}

Bytes DecodeOrRefuse(const std::uint8_t* data, std::size_t size, std::uint32_t workerCount, int background) {
    try {
        ET::Img::JPGDecoder decoder(MakeShared<MemoryStream>(data, static_cast<std::uint32_t>(size)));
        decoder.SetWorkerCount(workerCount);
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        if (std::uint64_t(info.Width) * info.Height > largestPixelCount)
            return {};
        if (info.ColorType == Data::ColorTypeEnum::BGRAUInt16)
            return Decode<Data::ColorBGRA<std::uint16_t>>(decoder, info, background);
        return Decode<Data::ColorBGRA<std::uint8_t>>(decoder, info, background);
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Require(DecodeOrRefuse(data, size, 1, 0x5A) == DecodeOrRefuse(data, size, 4, 0xA5));
    return 0;
}
