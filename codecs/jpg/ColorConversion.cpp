#include "codecs/jpg/ColorConversion.h"

#include "codecs/RangeTable.h"
#include "foundation/Exception.h"

#include <algorithm>

namespace ET::Img::Jpg {

namespace {

std::uint8_t LevelShifted(std::int16_t sample) {
    return static_cast<std::uint8_t>(std::clamp(sample + 128, 0, 255));
}

/// What chrominance adds to luminance, by samples around 0 (ITU T.871, 7).
struct ChromaTables {
    std::array<std::int16_t, 256> red;
    std::array<std::int16_t, 256> blue;
    std::array<std::array<std::int16_t, 256>, 256> green; ///< By cr and cb.

    ChromaTables() {
        for (int cr = -128; cr < 128; ++cr) {
            const auto row = static_cast<std::size_t>(cr + 128);
            red[row] = static_cast<std::int16_t>(1.402 * cr);
            blue[row] = static_cast<std::int16_t>(1.772 * cr);
            for (int cb = -128; cb < 128; ++cb)
                green[row][static_cast<std::size_t>(cb + 128)] =
                    static_cast<std::int16_t>(-0.344136 * cb - 0.714136 * cr);
        }
    }
};

/// Sums of luminance, the level shift and the tables, not limited.
struct WideColor {
    std::int32_t blue;
    std::int32_t green;
    std::int32_t red;

    WideColor(std::int16_t y, std::int16_t cb, std::int16_t cr) {
        static const ChromaTables tables;
        const auto b = static_cast<std::size_t>(cb + 128), r = static_cast<std::size_t>(cr + 128);
        blue = y + 128 + tables.blue[b];
        green = y + 128 + tables.green[r][b];
        red = y + 128 + tables.red[r];
    }
};

/// Calls operation(blocks, i) for the pixels i of MCUs whose components have one block each.
template <class Operation>
void ForEachPixel(const McuRun& run, Pixel* pixels, std::size_t stride, const Operation& operation) {
    using Blocks = std::array<const std::int16_t*, 4>;
    Blocks blocks = run.blocks;
    for (std::size_t mcu = 0; mcu < run.count; ++mcu, pixels += 8) {
        for (std::size_t i = 0; i < blockSize; ++i)
            pixels[i / 8 * stride + i % 8] = operation(blocks, i);
        for (std::size_t component = 0; component < blocks.size(); ++component)
            blocks[component] += run.step[component];
    }
}

void Grey(const McuRun& run, Pixel* pixels, std::size_t stride) {
    ForEachPixel(run, pixels, stride, [](const auto& blocks, std::size_t i) {
        const std::uint8_t grey = LevelShifted(blocks[0][i]);
        return Pixel{grey, grey, grey, 255};
    });
}

void Rgb(const McuRun& run, Pixel* pixels, std::size_t stride) {
    ForEachPixel(run, pixels, stride, [](const auto& blocks, std::size_t i) {
        return Pixel{LevelShifted(blocks[2][i]), LevelShifted(blocks[1][i]), LevelShifted(blocks[0][i]), 255};
    });
}

/// Chrominance is replicated for the luminance that it covers.
template <std::size_t horizontal, std::size_t vertical>
void YCbCr(const McuRun& run, Pixel* pixels, std::size_t stride) {
    for (std::size_t mcu = 0; mcu < run.count; ++mcu, pixels += 8 * horizontal)
        for (std::size_t y = 0; y < 8 * vertical; ++y)
            for (std::size_t x = 0; x < 8 * horizontal; ++x) {
                const std::size_t block = y / 8 * horizontal + x / 8;
                const std::size_t luminance = mcu * run.step[0] + block * blockSize + y % 8 * 8 + x % 8;
                const std::size_t chroma = y / vertical * 8 + x / horizontal;
                const WideColor color(run.blocks[0][luminance], run.blocks[1][mcu * run.step[1] + chroma],
                                      run.blocks[2][mcu * run.step[2] + chroma]);
                pixels[y * stride + x] = {Ranged(color.blue), Ranged(color.green), Ranged(color.red), 255};
            }
}

/// The inks of a file that embeds this one, or its colours and its alpha: as they are, in the order of the target's
/// channels red, green, blue and alpha.
void Separate(const McuRun& run, Pixel* pixels, std::size_t stride) {
    ForEachPixel(run, pixels, stride, [](const auto& blocks, std::size_t i) {
        return Pixel{LevelShifted(blocks[2][i]), LevelShifted(blocks[1][i]), LevelShifted(blocks[0][i]),
                     LevelShifted(blocks[3][i])};
    });
}

// Stored inverted, as Adobe's programs do: 255 is no ink.

std::uint8_t Inked(std::uint8_t ink, std::uint8_t black) {
    return static_cast<std::uint8_t>(std::min(255, static_cast<int>(ink * black * 0.00392156862745098 + 0.5)));
}

void Cmyk(const McuRun& run, Pixel* pixels, std::size_t stride) {
    ForEachPixel(run, pixels, stride, [](const auto& blocks, std::size_t i) {
        const std::uint8_t black = LevelShifted(blocks[3][i]);
        return Pixel{Inked(LevelShifted(blocks[2][i]), black), Inked(LevelShifted(blocks[1][i]), black),
                     Inked(LevelShifted(blocks[0][i]), black), 255};
    });
}

std::uint8_t Uninked(std::int32_t color, std::int32_t black) {
    return static_cast<std::uint8_t>(std::clamp(static_cast<int>(black - color * black * 0.00392156862745098), 0, 255));
}

void Ycck(const McuRun& run, Pixel* pixels, std::size_t stride) {
    ForEachPixel(run, pixels, stride, [](const auto& blocks, std::size_t i) {
        const WideColor color(blocks[0][i], blocks[1][i], blocks[2][i]);
        const std::int32_t black = blocks[3][i] + 128;
        return Pixel{Uninked(color.blue, black), Uninked(color.green, black), Uninked(color.red, black), 255};
    });
}

ColorConversion::Route YCbCrFor(const Frame& frame) {
    const Component& luminance = frame.At(0);
    if (luminance.horizontal > 2 || luminance.vertical > 2)
        throw Quorvex::Exception(FactorText(1, "1 or 2"));
    RequireFactorsOfOne(frame, 2, 3);
    // A fourth component is not shown, but the MCUs are those of the first.
    if (frame.largestHorizontal != luminance.horizontal || frame.largestVertical != luminance.vertical)
        throw Quorvex::Exception(FactorText(4, "1"));
    return GetColorRoutes().yCbCr[luminance.horizontal - 1][luminance.vertical - 1];
}

} // namespace

const ColorRoutes* ColorForms::Reference() {
    static const ColorRoutes routes{Grey, Rgb, {{YCbCr<1, 1>, YCbCr<1, 2>}, {YCbCr<2, 1>, YCbCr<2, 2>}}};
    return &routes;
}

const ColorRoutes& GetColorRoutes() {
    static const ColorRoutes& fastest = []() -> const ColorRoutes& {
        for (const ColorRoutes* routes : {ColorForms::Avx2(), ColorForms::Sse2()})
            if (routes != nullptr)
                return *routes;
        return *ColorForms::Reference();
    }();
    return fastest;
}

ColorConversion::ColorConversion(const Frame& frame, const ColorHints& hints) {
    const bool isRgb = frame.componentCount == 3 && hints.photometric == 2;
    const bool isSeparate = frame.componentCount == 4 && (hints.photometric == 2 || hints.photometric == 5);
    if (frame.componentCount == 1) {
        m_convert = GetColorRoutes().grey;
    } else if (isSeparate) {
        RequireFactorsOfOne(frame, 1, frame.componentCount);
        m_convert = Separate;
    } else if (isRgb || (frame.componentCount == 4 && hints.adobe != ColorHints::Adobe::Unknown)) {
        RequireFactorsOfOne(frame, 1, frame.componentCount);
        m_convert = isRgb ? GetColorRoutes().rgb : hints.adobe == ColorHints::Adobe::Cmyk ? Cmyk : Ycck;
    } else if (frame.componentCount >= 3) {
        m_convert = YCbCrFor(frame);
    } else {
        throw Quorvex::Exception("invalid number of image components");
    }
}

} // namespace ET::Img::Jpg
