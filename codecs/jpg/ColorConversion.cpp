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

} // namespace

void YCbCrForms::Reference(const std::int16_t* y, const std::int16_t* cb, const std::int16_t* cr, Pixel* pixels) {
    for (std::size_t i = 0; i < 8; ++i) {
        const WideColor color(y[i], cb[i], cr[i]);
        pixels[i] = {Ranged(color.blue), Ranged(color.green), Ranged(color.red), 255};
    }
}

YCbCrRow GetYCbCrRow() {
    static const YCbCrRow fastest = [] {
        const YCbCrRow form = YCbCrForms::Sse2();
        return form != nullptr ? form : YCbCrRow(YCbCrForms::Reference);
    }();
    return fastest;
}

struct ColorConversion::Routes {
    /// Calls operation(pixels, place) for the 64 pixels of an MCU whose components have one block each.
    template <class Operation>
    static void ForEachPixel(Pixel* pixels, std::size_t stride, const Operation& operation) {
        for (std::size_t i = 0; i < blockSize; ++i)
            pixels[i / 8 * stride + i % 8] = operation(i);
    }

    /// Luminance without chrominance: both forms give exactly the sample and its level shift.
    static void Grey(const Blocks& blocks, Pixel* pixels, std::size_t stride) {
        static const YCbCrRow convert = GetYCbCrRow();
        static constexpr std::int16_t none[8] = {};
        for (std::size_t row = 0; row < 8; ++row)
            convert(blocks[0] + 8 * row, none, none, pixels + row * stride);
    }

    static void Rgb(const Blocks& blocks, Pixel* pixels, std::size_t stride) {
        ForEachPixel(pixels, stride, [&](std::size_t i) {
            return Pixel{LevelShifted(blocks[2][i]), LevelShifted(blocks[1][i]), LevelShifted(blocks[0][i]), 255};
        });
    }

    /// The inks of a file that embeds this one, or its colours and its alpha: as they are, in the order of the target's
    /// channels red, green, blue and alpha.
    static void Separate(const Blocks& blocks, Pixel* pixels, std::size_t stride) {
        ForEachPixel(pixels, stride, [&](std::size_t i) {
            return Pixel{LevelShifted(blocks[2][i]), LevelShifted(blocks[1][i]), LevelShifted(blocks[0][i]),
                         LevelShifted(blocks[3][i])};
        });
    }

    /// Chrominance is replicated for the luminance that it covers.
    template <std::uint32_t horizontal, std::uint32_t vertical>
    static void YCbCr(const Blocks& blocks, Pixel* pixels, std::size_t stride) {
        static const YCbCrRow convert = GetYCbCrRow();
        for (std::size_t row = 0; row < 8 * vertical; ++row) {
            const std::size_t chromaRow = row / vertical * 8;
            for (std::size_t h = 0; h < horizontal; ++h) {
                const std::int16_t* const y = blocks[0] + (row / 8 * horizontal + h) * blockSize + row % 8 * 8;
                Pixel* const target = pixels + row * stride + 8 * h;
                if constexpr (horizontal == 1) {
                    convert(y, blocks[1] + chromaRow, blocks[2] + chromaRow, target);
                } else {
                    std::int16_t cb[8], cr[8];
                    for (std::size_t i = 0; i < 8; ++i) {
                        const std::size_t place = chromaRow + 4 * h + i / 2;
                        cb[i] = blocks[1][place];
                        cr[i] = blocks[2][place];
                    }
                    convert(y, cb, cr, target);
                }
            }
        }
    }

    // Stored inverted, as Adobe's programs do: 255 is no ink.

    static std::uint8_t Inked(std::uint8_t ink, std::uint8_t black) {
        return static_cast<std::uint8_t>(std::min(255, static_cast<int>(ink * black * 0.00392156862745098 + 0.5)));
    }

    static void Cmyk(const Blocks& blocks, Pixel* pixels, std::size_t stride) {
        ForEachPixel(pixels, stride, [&](std::size_t i) {
            const std::uint8_t black = LevelShifted(blocks[3][i]);
            return Pixel{Inked(LevelShifted(blocks[2][i]), black), Inked(LevelShifted(blocks[1][i]), black),
                         Inked(LevelShifted(blocks[0][i]), black), 255};
        });
    }

    static std::uint8_t Uninked(std::int32_t color, std::int32_t black) {
        return static_cast<std::uint8_t>(
            std::clamp(static_cast<int>(black - color * black * 0.00392156862745098), 0, 255));
    }

    static void Ycck(const Blocks& blocks, Pixel* pixels, std::size_t stride) {
        ForEachPixel(pixels, stride, [&](std::size_t i) {
            const WideColor color(blocks[0][i], blocks[1][i], blocks[2][i]);
            const std::int32_t black = blocks[3][i] + 128;
            return Pixel{Uninked(color.blue, black), Uninked(color.green, black), Uninked(color.red, black), 255};
        });
    }

    static Route YCbCrFor(const Frame& frame) {
        const Component& luminance = frame.At(0);
        if (luminance.horizontal > 2 || luminance.vertical > 2)
            throw Quorvex::Exception(FactorText(1, "1 or 2"));
        RequireFactorsOfOne(frame, 2);
        if (luminance.horizontal == 1)
            return luminance.vertical == 1 ? YCbCr<1, 1> : YCbCr<1, 2>;
        return luminance.vertical == 1 ? YCbCr<2, 1> : YCbCr<2, 2>;
    }
};

ColorConversion::ColorConversion(const Frame& frame, const ColorHints& hints) {
    const bool isRgb = frame.componentCount == 3 && hints.photometric == 2;
    const bool isSeparate = frame.componentCount == 4 && (hints.photometric == 2 || hints.photometric == 5);
    if (frame.componentCount == 1) {
        m_convert = Routes::Grey;
    } else if (isSeparate) {
        RequireFactorsOfOne(frame, 1);
        m_convert = Routes::Separate;
    } else if (isRgb || (frame.componentCount == 4 && hints.adobe != ColorHints::Adobe::Unknown)) {
        RequireFactorsOfOne(frame, 1);
        m_convert = isRgb ? Routes::Rgb : hints.adobe == ColorHints::Adobe::Cmyk ? Routes::Cmyk : Routes::Ycck;
    } else if (frame.componentCount >= 3) {
        m_convert = Routes::YCbCrFor(frame);
    } else {
        throw Quorvex::Exception("invalid number of image components");
    }
}

} // namespace ET::Img::Jpg
