#pragma once

#include "data/Image.h"
#include "fuzz/CopyingStream.h"
#include "fuzz/Require.h"

#include <cstring>
#include <vector>

/// What targets for decoders have in common.
namespace FuzzDecode {

using Bytes = std::vector<std::uint8_t>;
template <class T>
using SharedPtr = Quorvex::SharedPtr<T>;

inline constexpr std::uint64_t largestPixelCount = 1 << 14;

/// The visible pixels of one image of the file, and whether it has alpha and is complete; nothing where it is refused.
/// The image's memory is full of the background before, and what lies beside the visible pixels must still be so.
template <class Decoder>
Bytes DecodeImage(Decoder& decoder, std::uint32_t index, std::uint8_t background) {
    const auto info = decoder.GetInfo(index);
    if (info.Width > largestPixelCount || info.Height > largestPixelCount ||
        std::uint64_t(info.Width) * info.Height > largestPixelCount)
        return {};
    SharedPtr<Quorvex::Data::ImageBase> image;
    Bytes visible;
    Quorvex::Data::Dispatch(info.ColorType, "unknown color type", [&](auto tag) {
        using Sample = typename decltype(tag)::Sample;
        image = Quorvex::MakeShared<Quorvex::Data::Image<Sample>>();
        void* const memory = image->Allocate(info.Width, info.Height, info.AllocatedWidth, info.AllocatedHeight);
        const std::size_t rowBytes = image->AllocatedWidth * sizeof(Sample);
        std::memset(memory, background, rowBytes * image->AllocatedHeight);
        decoder.Load(image, index);
        const auto* row = static_cast<const std::uint8_t*>(memory);
        for (std::uint32_t y = 0; y < image->AllocatedHeight; ++y, row += rowBytes) {
            const std::size_t used = y < info.Height ? info.Width * sizeof(Sample) : 0;
            visible.insert(visible.end(), row, row + used);
            for (std::size_t i = used; i < rowBytes; ++i)
                Require(row[i] == background);
        }
    });
    visible.push_back(static_cast<std::uint8_t>(image->HasAlpha));
    visible.push_back(decoder.IsIncomplete());
    return visible;
}

} // namespace FuzzDecode
