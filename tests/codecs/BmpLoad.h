#pragma once

#include "codecs/bmp/BMPDecoder.h"
#include "tests/codecs/BmpRecipe.h"
#include "tests/codecs/TestContext.h"
#include "tests/codecs/TestStream.h"

#include <string>

/// A bitmap that went through the two passes of a load.
struct BmpLoad {
    explicit BmpLoad(const Bytes& file, TestStream::Manner manner = TestStream::Manner::File);

    /// Hexadecimal AARRGGBB.
    std::uint32_t At(std::uint32_t x, std::uint32_t y) const;
    /// All visible rows from the top, each as "AARRGGBB AARRGGBB ...".
    std::vector<std::string> Rows() const;
    /// The fields of the headers, each as "BITMAPFILEHEADER/offBits = 54".
    std::vector<std::string> Fields() const;

    Quorvex::SharedPtr<ET::Img::ImageFile> decoder;
    Quorvex::SharedPtr<Quorvex::Data::ImageBase> image;
};

/// The message with which loading the file fails, as RaisedText tells it.
std::string LoadFailure(const Bytes& file);
