#pragma once

#include "codecs/jpg/JPGDecoder.h"
#include "data/Image.h"
#include "tests/codecs/TestStream.h"

#include <functional>
#include <string>

/// A JPEG file that went through the two passes of a load, on a number of threads.
struct JpgLoad {
    using Bytes = std::vector<std::uint8_t>;

    explicit JpgLoad(const Bytes& file, std::uint32_t workerCount = 1)
        : JpgLoad(file, [workerCount](ET::Img::JPGDecoder& made) { made.SetWorkerCount(workerCount); }) {}

    /// PREPARE is called with the decoder before anything is read.
    JpgLoad(const Bytes& file, const std::function<void(ET::Img::JPGDecoder&)>& prepare)
        : decoder(Quorvex::MakeShared<TestStream>(file, TestStream::Manner::Memory)) {
        prepare(decoder);
        info = decoder.GetInfo(0);
        Quorvex::Data::Dispatch(info.ColorType, "unknown color type", [this](auto tag) {
            image = Quorvex::MakeShared<Quorvex::Data::Image<typename decltype(tag)::Sample>>();
        });
        image->Allocate(info.Width, info.Height, info.AllocatedWidth, info.AllocatedHeight);
        image = decoder.Load(image, 0);
    }

    /// The visible samples, blue, green, red and alpha per pixel.
    template <class Channel>
    std::vector<Channel> Samples() const {
        using Sample = Quorvex::Data::ColorBGRA<Channel>;
        const auto lock = Quorvex::Data::SampleTraits<Sample>::LockIn(*image, Quorvex::Data::LockMode::ReadWrite);
        std::vector<Channel> samples;
        for (std::uint32_t y = 0; y < lock.Height; ++y)
            for (std::uint32_t x = 0; x < lock.Width; ++x) {
                const Sample& pixel = lock(x, y);
                samples.insert(samples.end(), {pixel.blue, pixel.green, pixel.red, pixel.alpha});
            }
        return samples;
    }

    ET::Img::JPGDecoder decoder;
    ET::Img::ImageInfo info;
    Quorvex::SharedPtr<Quorvex::Data::ImageBase> image;
};

/// How a load ends: with what was raised, or with all that was decoded.
struct JpgOutcome {
    explicit JpgOutcome(const JpgLoad::Bytes& file, std::uint32_t workerCount = 1) {
        try {
            const JpgLoad load(file, workerCount);
            isIncomplete = load.decoder.IsIncomplete();
            isWide = load.info.ColorType == Quorvex::Data::ColorTypeEnum::BGRAUInt16;
            if (isWide)
                wideSamples = load.Samples<std::uint16_t>();
            else
                samples = load.Samples<std::uint8_t>();
        } catch (const Quorvex::Exception& raised) {
            failure = raised.GetMessageText().IsEmpty() ? "no text" : raised.what();
        }
    }
    bool operator==(const JpgOutcome&) const = default;

    std::string failure;
    bool isIncomplete = false;
    bool isWide = false;
    JpgLoad::Bytes samples;
    std::vector<std::uint16_t> wideSamples;
};

/// The message with which loading the file fails; "no exception" if it does not.
inline std::string JpgFailure(const JpgLoad::Bytes& file) {
    try {
        const JpgLoad load(file);
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return "no exception";
}
