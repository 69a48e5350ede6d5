#include "codecs/bmp/BMPDecoder.h"
#include "data/Image.h"
#include "fuzz/CopyingStream.h"
#include "fuzz/Require.h"
#include "settings/PropertyListing.h"

#include <cstring>
#include <vector>

using namespace Quorvex;
using Pixel = Data::ColorBGRA<std::uint8_t>;

// A bitmap through both passes, from memory and as if from a file. The two must agree in every pixel, no pixel may keep
// what the memory held before, and none beside the image may be touched.

namespace {

constexpr std::uint64_t largestPixelCount = 1 << 14;

void Fill(Data::ImageBase& image, std::uint8_t value) {
    const auto lock = image.LockBGRAUInt8(Data::LockMode::ReadWrite);
    std::memset(static_cast<void*>(lock.Data), value,
                std::size_t(lock.AllocatedWidth) * lock.AllocatedHeight * sizeof(Pixel));
}

/// The visible pixels of the decoded image, empty where the file is refused.
std::vector<Pixel> Decode(const SharedPtr<Stream>& stream, std::uint8_t background) {
    ET::Img::BMPDecoder decoder(stream);
    const ET::Img::ImageInfo info = decoder.GetInfo(0);
    Require(!ListProperties(*decoder.GetProperties()).empty());
    if (info.Width > largestPixelCount || info.Height > largestPixelCount ||
        std::uint64_t(info.Width) * info.Height > largestPixelCount)
        return {};
    const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
    image->Allocate(info.Width, info.Height, 0, 0);
    Fill(*image, background);
    decoder.Load(image, 0);
    const auto lock = image->LockBGRAUInt8(Data::LockMode::ReadOnly);
    std::vector<Pixel> pixels;
    for (std::uint32_t y = 0; y < lock.AllocatedHeight; ++y)
        for (std::uint32_t x = 0; x < lock.AllocatedWidth; ++x) {
            if (x < lock.Width && y < lock.Height)
                pixels.push_back(lock.Row(y)[x]);
            else
                Require(lock.Row(y)[x] == Pixel{background, background, background, background});
        }
    pixels.push_back({decoder.IsIncomplete(), static_cast<std::uint8_t>(image->HasAlpha), 0, 0});
    return pixels;
}

std::vector<Pixel> DecodeOrRefuse(const SharedPtr<Stream>& stream, std::uint8_t background) {
    try {
        return Decode(stream, background);
    } catch (const std::exception&) {
        return {};
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto fromMemory = DecodeOrRefuse(MakeShared<MemoryStream>(data, static_cast<std::uint32_t>(size)), 0x5A);
    const auto fromFile = DecodeOrRefuse(MakeShared<CopyingStream>(data, size), 0xA5);
    Require(fromMemory == fromFile);
    return 0;
}
