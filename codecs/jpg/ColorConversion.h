#pragma once

#include "codecs/jpg/Frame.h"
#include "data/ColorBGRA.h"

namespace ET::Img::Jpg {

using Pixel = Quorvex::Data::ColorBGRA<std::uint8_t>;

/// What says how the components of a frame are to be taken as colours.
struct ColorHints {
    enum class Adobe { Unknown, Cmyk, Ycck };
    Adobe adobe = Adobe::Unknown;
    /// 2: three components are red, green and blue. 2 and 5: four components go to the channels as they are, whatever
    /// Adobe says.
    std::uint16_t photometric = 0;
};

/// Pixels out of the samples of an MCU: samples are around 0, and the blocks of a component lie row by row.
class ColorConversion {
public:
    using Blocks = std::array<const std::int16_t*, 4>;

    /// Raises Exception where the number of components or their factors cannot be converted.
    ColorConversion(const Frame& frame, const ColorHints& hints);

    /// Writes the whole MCU; rows are STRIDE pixels apart.
    void Convert(const Blocks& blocks, Pixel* pixels, std::size_t stride) const { m_convert(blocks, pixels, stride); }

private:
    struct Routes;
    using Route = void (*)(const Blocks& blocks, Pixel* pixels, std::size_t stride);

    Route m_convert = nullptr;
};

/// One row of eight luminance samples with the chrominance of each, to pixels. Any thread.
using YCbCrRow = void (*)(const std::int16_t* y, const std::int16_t* cb, const std::int16_t* cr, Pixel* pixels);

/// The form for this processor, chosen once per process.
YCbCrRow GetYCbCrRow();

namespace YCbCrForms {

/// By tables of whole numbers.
void Reference(const std::int16_t* y, const std::int16_t* cb, const std::int16_t* cr, Pixel* pixels);
/// In 16-bit fixed point; null where this processor lacks SSE2. A channel differs from the reference by up to 2.
YCbCrRow Sse2();

} // namespace YCbCrForms

} // namespace ET::Img::Jpg
