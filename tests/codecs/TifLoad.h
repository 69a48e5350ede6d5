#pragma once

#include "codecs/tif/TIFDecoder.h"
#include "data/Dispatch.h"
#include "tests/codecs/TestStream.h"
#include "tests/codecs/TifRecipe.h"

#include <string>
#include <type_traits>

/// A TIFF file that went through the two passes of a load.
struct TifLoad {
    using Bytes = std::vector<std::uint8_t>;

    explicit TifLoad(const Bytes& file, std::uint32_t index = 0, std::uint32_t workerCount = 1,
                     TestStream::Manner manner = TestStream::Manner::Memory);

    /// The visible samples; blue, green, red and alpha of each colour pixel.
    template <class Channel>
    std::vector<Channel> Samples() const {
        std::vector<Channel> samples;
        Quorvex::Data::Dispatch(image->ColorType, "", [&](auto tag) {
            using Tag = decltype(tag);
            if constexpr (std::is_same_v<typename Tag::Channel, Channel>) {
                const auto lock = Tag::Traits::LockIn(*image, Quorvex::Data::LockMode::ReadWrite);
                for (std::uint32_t y = 0; y < lock.Height; ++y) {
                    const auto* const row = reinterpret_cast<const Channel*>(lock.Row(y));
                    samples.insert(samples.end(), row, row + lock.Width * sizeof(*lock.Data) / sizeof(Channel));
                }
            }
        });
        return samples;
    }
    /// The visible samples as they lie in memory.
    Bytes Memory() const;

    ET::Img::TIFDecoder decoder;
    ET::Img::ImageInfo info;
    Quorvex::SharedPtr<Quorvex::Data::ImageBase> image;
};

/// The message with which loading the file fails; "no exception" if it does not.
std::string TifFailure(const TifLoad::Bytes& file);
