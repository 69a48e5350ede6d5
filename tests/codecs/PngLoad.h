#pragma once

#include "codecs/png/PNGDecoder.h"
#include "foundation/Exception.h"
#include "tests/codecs/DecoderLoad.h"
#include "tests/codecs/PngReference.h"

/// A PNG file that went through the two passes of a load.
using PngLoad = DecoderLoad<ET::Img::PNGDecoder>;

/// What the program shows of the file, for the comparison with libpng.
inline PngReference OutcomeOf(const PngLoad& load) {
    return {true,
            load.info.ColorType == Quorvex::Data::ColorTypeEnum::BGRAUInt16,
            load.info.Width,
            load.info.Height,
            load.info.BitsPerPixel,
            load.Samples()};
}

/// Likewise, where the program may refuse the file.
inline PngReference DecodePngHere(const std::vector<std::uint8_t>& file,
                                  TestStream::Manner manner = TestStream::Manner::File) {
    try {
        return OutcomeOf(PngLoad(file, manner));
    } catch (const Quorvex::Exception&) {
        return {};
    }
}
