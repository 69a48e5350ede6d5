#pragma once

#include "codecs/DecodeWithFactory.h"
#include "codecs/gif/GIFDecoder.h"
#include "tests/codecs/GifRecipe.h"
#include "tests/codecs/TestContext.h"
#include "tests/codecs/TestStream.h"
#include "tests/support/RaisedText.h"

/// A frame of a GIF file that went through the two passes of a load.
struct GifLoad {
    using Bytes = std::vector<std::uint8_t>;

    explicit GifLoad(const Bytes& file, std::int32_t frame = 1, TestStream::Manner manner = TestStream::Manner::File)
        : index(frame) {
        ET::Img::LoadTarget target;
        target.context = Quorvex::MakeShared<TestContext>();
        decoder = ET::Img::DecodeWithFactory(ET::Img::GIFDecoderFactory(),
                                             Quorvex::MakeShared<TestStream>(file, manner), target, index, image);
    }

    /// All visible pixels from the top left, as hexadecimal AARRGGBB.
    std::vector<std::uint32_t> Pixels() const {
        const Quorvex::Data::ImageBase& constant = *image;
        const auto lock = constant.LockBGRAUInt8(Quorvex::Data::LockMode::ReadOnly);
        std::vector<std::uint32_t> pixels;
        pixels.reserve(std::size_t(lock.Width) * lock.Height);
        for (std::uint32_t y = 0; y < lock.Height; ++y)
            for (std::uint32_t x = 0; x < lock.Width; ++x) {
                const auto pixel = lock(x, y);
                pixels.push_back(std::uint32_t(pixel.alpha) << 24 | std::uint32_t(pixel.red) << 16 |
                                 std::uint32_t(pixel.green) << 8 | pixel.blue);
            }
        return pixels;
    }

    std::int32_t index;
    Quorvex::SharedPtr<ET::Img::ImageFile> decoder;
    Quorvex::SharedPtr<Quorvex::Data::ImageBase> image;
};

/// The message with which loading the frame fails, as RaisedText tells it.
inline std::string GifFailure(const GifLoad::Bytes& file, std::int32_t frame = 1) {
    return Quorvex::Test::RaisedText([&] { GifLoad load(file, frame); });
}
