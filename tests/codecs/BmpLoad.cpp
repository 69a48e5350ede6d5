#include "tests/codecs/BmpLoad.h"

#include "codecs/DecodeWithFactory.h"
#include "settings/PropertyListing.h"
#include "tests/support/RaisedText.h"

using namespace Quorvex;

BmpLoad::BmpLoad(const Bytes& file, TestStream::Manner manner) {
    ET::Img::LoadTarget target;
    target.context = MakeShared<TestContext>();
    std::int32_t index = 1;
    decoder = ET::Img::DecodeWithFactory(ET::Img::BMPDecoderFactory(), MakeShared<TestStream>(file, manner), target,
                                         index, image);
}

std::uint32_t BmpLoad::At(std::uint32_t x, std::uint32_t y) const {
    const Data::ImageBase& constant = *image;
    const auto lock = constant.LockBGRAUInt8(Data::LockMode::ReadOnly);
    const auto pixel = lock(x, y);
    return static_cast<std::uint32_t>(pixel.alpha) << 24 | static_cast<std::uint32_t>(pixel.red) << 16 |
           static_cast<std::uint32_t>(pixel.green) << 8 | pixel.blue;
}

std::vector<std::string> BmpLoad::Rows() const {
    std::vector<std::string> rows;
    for (std::uint32_t y = 0; y < image->GetHeight(); ++y) {
        std::string row;
        for (std::uint32_t x = 0; x < image->GetWidth(); ++x) {
            char text[16];
            std::snprintf(text, sizeof(text), "%s%08X", x == 0 ? "" : " ", At(x, y));
            row += text;
        }
        rows.push_back(row);
    }
    return rows;
}

std::vector<std::string> BmpLoad::Fields() const {
    return ListProperties(*decoder->GetProperties());
}

std::string LoadFailure(const Bytes& file) {
    return Quorvex::Test::RaisedText([&] { BmpLoad load(file); });
}
