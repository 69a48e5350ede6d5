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

/// The samples of MCUs that lie side by side. Samples are around 0; the blocks of a component follow each other row by
/// row within an MCU.
struct McuRun {
    std::array<const std::int16_t*, 4> blocks{}; ///< Of the first MCU, by the component's place in the frame.
    std::array<std::size_t, 4> step{};           ///< From an MCU to the next, in values.
    std::size_t count = 0;                       ///< MCUs
};

/// Pixels out of samples: whole MCUs are written, in rows that are STRIDE pixels apart.
class ColorConversion {
public:
    using Route = void (*)(const McuRun& run, Pixel* pixels, std::size_t stride);

    /// Raises Exception where the number of components or their factors cannot be converted.
    ColorConversion(const Frame& frame, const ColorHints& hints);

    void Convert(const McuRun& run, Pixel* pixels, std::size_t stride) const { m_convert(run, pixels, stride); }

private:
    Route m_convert;
};

/// The routes that have forms for several kinds of processors. Any thread.
struct ColorRoutes {
    ColorConversion::Route grey;
    ColorConversion::Route rgb;
    ColorConversion::Route yCbCr[2][2]; ///< By the factors of the luminance less 1, horizontal and vertical.
};

/// The forms for this processor, chosen once per process.
const ColorRoutes& GetColorRoutes();

/// The forms by themselves, for tests.
namespace ColorForms {

/// YCbCr by tables of whole numbers.
const ColorRoutes* Reference();
/// YCbCr in 16-bit fixed point; null where this processor lacks SSE2. A channel differs from the reference by up to 2.
const ColorRoutes* Sse2();
/// The same pixels from wider vectors; null where this processor lacks AVX2.
const ColorRoutes* Avx2();

} // namespace ColorForms

} // namespace ET::Img::Jpg
