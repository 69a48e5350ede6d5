// MCUs to pixels in 16-bit fixed point. Included behind the lanes of an instruction set; the results are the same for
// each.

#include "codecs/jpg/ColorConversion.h"

#include <algorithm>

namespace ET::Img::Jpg {
namespace {

LANES_FUNCTION Words LevelShifted(Words samples) {
    return Add(samples, Broadcast(128));
}

/// What two colour differences add to luminance, in units of 1/128.
struct Chroma {
    Words blue;
    Words green; ///< To be taken away.
    Words red;
};

LANES_FUNCTION Chroma MakeChroma(Words cb, Words cr) {
    // Green's are added up first: each by itself could leave 16 bits where the sum comes back.
    return {Multiply(cb, Broadcast(227)), Add(Multiply(cb, Broadcast(44)), Multiply(cr, Broadcast(91))),
            Multiply(cr, Broadcast(179))};
}

LANES_FUNCTION void StoreYCbCr(Words y, const Chroma& chroma, Pixel* first, Pixel* second) {
    // The level shift and a half.
    const Words base = Add(ShiftLeft<7>(y), Broadcast(0x4040));
    StorePixels(ShiftRight<7>(AddSaturated(base, chroma.blue)), ShiftRight<7>(SubtractSaturated(base, chroma.green)),
                ShiftRight<7>(AddSaturated(base, chroma.red)), first, second);
}

/// The MCUs that are worked on at once, side by side; at the end of a run both may be the same.
struct McuPair {
    std::size_t first;
    std::size_t second;
};

/// Calls operation(row, pair) for the eight rows of all MCUs of a run.
template <class Operation>
LANES_FUNCTION void ForEachRow(const McuRun& run, const Operation& operation) {
    for (std::size_t row = 0; row < 8; ++row)
        for (std::size_t mcu = 0; mcu < run.count; mcu += rowsAtOnce)
            operation(row, McuPair{mcu, std::min(mcu + rowsAtOnce - 1, run.count - 1)});
}

LANES_FUNCTION Words LoadSamples(const McuRun& run, std::size_t component, std::size_t row, McuPair pair) {
    const std::int16_t* const samples = run.blocks[component] + 8 * row;
    return LoadRows(samples + pair.first * run.step[component], samples + pair.second * run.step[component]);
}

LANES_TARGET void Grey(const McuRun& run, Pixel* pixels, std::size_t stride) {
    ForEachRow(run, [&](std::size_t row, McuPair pair) LANES_TARGET {
        const Words grey = LevelShifted(LoadSamples(run, 0, row, pair));
        Pixel* const target = pixels + row * stride;
        StorePixels(grey, grey, grey, target + 8 * pair.first, target + 8 * pair.second);
    });
}

LANES_TARGET void Rgb(const McuRun& run, Pixel* pixels, std::size_t stride) {
    ForEachRow(run, [&](std::size_t row, McuPair pair) LANES_TARGET {
        Pixel* const target = pixels + row * stride;
        StorePixels(LevelShifted(LoadSamples(run, 2, row, pair)), LevelShifted(LoadSamples(run, 1, row, pair)),
                    LevelShifted(LoadSamples(run, 0, row, pair)), target + 8 * pair.first, target + 8 * pair.second);
    });
}

/// Luminance of one block in width, and of one or two in height.
template <std::size_t vertical>
LANES_TARGET void Narrow(const McuRun& run, Pixel* pixels, std::size_t stride) {
    ForEachRow(run, [&](std::size_t row, McuPair pair) LANES_TARGET {
        const Chroma chroma = MakeChroma(LoadSamples(run, 1, row, pair), LoadSamples(run, 2, row, pair));
        for (std::size_t y = vertical * row; y < vertical * (row + 1); ++y) {
            // The rows of the second block follow those of the first.
            Pixel* const target = pixels + y * stride;
            StoreYCbCr(LoadSamples(run, 0, y, pair), chroma, target + 8 * pair.first, target + 8 * pair.second);
        }
    });
}

/// Luminance of two blocks in width.
template <std::size_t vertical>
LANES_TARGET void Wide(const McuRun& run, Pixel* pixels, std::size_t stride) {
    for (std::size_t row = 0; row < 8; ++row)
        for (std::size_t mcu = 0; mcu < run.count; ++mcu)
            for (std::size_t part = 0; part < 2; part += rowsAtOnce) {
                const Chroma chroma = MakeChroma(LoadReplicated(run.blocks[1] + mcu * run.step[1] + 8 * row, part),
                                                 LoadReplicated(run.blocks[2] + mcu * run.step[2] + 8 * row, part));
                for (std::size_t y = vertical * row; y < vertical * (row + 1); ++y) {
                    const std::size_t block = 2 * (y / 8) + part;
                    const std::int16_t* const luminance =
                        run.blocks[0] + mcu * run.step[0] + block * blockSize + 8 * (y % 8);
                    Pixel* const target = pixels + y * stride + 16 * mcu + 8 * part;
                    StoreYCbCr(LoadRows(luminance, luminance + blockSize), chroma, target, target + 8);
                }
            }
}

} // namespace

namespace ColorForms {

const ColorRoutes* LANES_SET() {
    static const ColorRoutes routes{Grey, Rgb, {{Narrow<1>, Narrow<2>}, {Wide<1>, Wide<2>}}};
    return IsSupported() ? &routes : nullptr;
}

} // namespace ColorForms

} // namespace ET::Img::Jpg
