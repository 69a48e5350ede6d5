#pragma once

#include "codecs/ImageFile.h"
#include "data/Image.h"
#include "tests/codecs/TestStream.h"

#include <string>

/// A file that went through the two passes of a load with the decoder D.
template <class D>
struct DecoderLoad {
    explicit DecoderLoad(const std::vector<std::uint8_t>& file, TestStream::Manner manner = TestStream::Manner::File,
                         std::uint32_t index = 0)
        : stream(Quorvex::MakeShared<TestStream>(file, manner)), decoder(stream), info(decoder.GetInfo(index)) {
        Quorvex::Data::Dispatch(info.ColorType, "unknown color type", [this](auto tag) {
            image = Quorvex::MakeShared<Quorvex::Data::Image<typename decltype(tag)::Sample>>();
        });
        image->Allocate(info.Width, info.Height, info.AllocatedWidth, info.AllocatedHeight);
        image = decoder.Load(image, index);
    }

    /// The visible samples, blue, green, red and alpha per pixel.
    std::vector<std::uint16_t> Samples() const {
        return info.ColorType == Quorvex::Data::ColorTypeEnum::BGRAUInt16 ? SamplesOf<std::uint16_t>()
                                                                          : SamplesOf<std::uint8_t>();
    }

    Quorvex::SharedPtr<TestStream> stream;
    D decoder;
    ET::Img::ImageInfo info;
    Quorvex::SharedPtr<Quorvex::Data::ImageBase> image;

private:
    template <class Channel>
    std::vector<std::uint16_t> SamplesOf() const {
        using Sample = Quorvex::Data::ColorBGRA<Channel>;
        const auto lock = Quorvex::Data::SampleTraits<Sample>::LockIn(*image, Quorvex::Data::LockMode::ReadWrite);
        std::vector<std::uint16_t> samples;
        for (std::uint32_t y = 0; y < lock.Height; ++y)
            for (std::uint32_t x = 0; x < lock.Width; ++x) {
                const Sample& pixel = lock(x, y);
                samples.insert(samples.end(), {pixel.blue, pixel.green, pixel.red, pixel.alpha});
            }
        return samples;
    }
};
