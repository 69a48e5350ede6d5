#include "codecs/jpg/ColorConversion.h"

#include "tests/support/RaisedText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace ET::Img::Jpg {

namespace {

using Samples = std::array<std::int16_t, blockSize>;

/// The first row of an MCU of one block per component, out of luminance samples that all have the same chrominance.
std::array<Pixel, 8> Converted(const ColorRoutes& routes, int y, int cb, int cr) {
    Samples luminance{}, blueness{}, redness{};
    for (int i = 0; i < 8; ++i)
        luminance[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(std::min(y + i, 127));
    blueness.fill(static_cast<std::int16_t>(cb));
    redness.fill(static_cast<std::int16_t>(cr));
    std::array<Pixel, blockSize> pixels{};
    routes.yCbCr[0][0]({{luminance.data(), blueness.data(), redness.data()}, {}, 1}, pixels.data(), 8);
    std::array<Pixel, 8> row{};
    std::copy_n(pixels.begin(), row.size(), row.begin());
    return row;
}

/// Those that this processor can run.
std::vector<const ColorRoutes*> FixedPointForms() {
    std::vector<const ColorRoutes*> forms;
    for (const ColorRoutes* form : {ColorForms::Sse2(), ColorForms::Avx2()})
        if (form != nullptr)
            forms.push_back(form);
    return forms;
}

/// Calls action(y, cb, cr) over the whole range of samples.
template <class Action>
void ForAllColours(const Action& action) {
    for (int y = -128; y < 128; y += 8)
        for (int cb = -128; cb < 128; cb += 3)
            for (int cr = -128; cr < 128; cr += 3)
                action(y, cb, cr);
}

/// The range of a byte.
int Limited(double value) {
    return static_cast<int>(std::clamp(value, 0.0, 255.0));
}

/// The range of a byte for sums that count modulo 512: from 384 on they stand for numbers below 0.
int Ranged(double sum) {
    const double rest = sum - 512.0 * std::floor(sum / 512.0);
    return rest >= 384.0 ? 0 : Limited(rest);
}

/// Whether a channel stays within what nine bits can tell apart.
bool IsNear(int y, int cb, int cr) {
    const double sums[] = {y + 128 + 1.772 * cb, y + 128 - 0.344136 * cb - 0.714136 * cr, y + 128 + 1.402 * cr};
    return std::all_of(std::begin(sums), std::end(sums), [](double sum) { return sum > -127.0 && sum < 383.0; });
}

TEST(JpgColor, TheReferenceAddsWholeNumbers) {
    ForAllColours([](int y, int cb, int cr) {
        const std::array<Pixel, 8> had = Converted(*ColorForms::Reference(), y, cb, cr);
        for (int i = 0; i < 8; ++i) {
            const int level = y + i + 128;
            const Pixel& pixel = had[static_cast<std::size_t>(i)];
            ASSERT_EQ(pixel.blue, Ranged(level + std::trunc(1.772 * cb)));
            ASSERT_EQ(pixel.green, Ranged(level + std::trunc(-0.344136 * cb - 0.714136 * cr)));
            ASSERT_EQ(pixel.red, Ranged(level + std::trunc(1.402 * cr)));
            ASSERT_EQ(pixel.alpha, 255);
        }
    });
}

TEST(JpgColor, TheVectorFormsAreTheFixedPointFormula) {
    if (FixedPointForms().empty())
        GTEST_SKIP() << "this processor lacks SSE2";
    const auto within16Bits = [](int value) { return std::clamp(value, -32768, 32767); };
    ForAllColours([&](int y, int cb, int cr) {
        for (const ColorRoutes* form : FixedPointForms()) {
            const std::array<Pixel, 8> had = Converted(*form, y, cb, cr);
            for (int i = 0; i < 8; ++i) {
                const int base = (std::min(y + i, 127) * 128) + 0x4040;
                const Pixel& pixel = had[static_cast<std::size_t>(i)];
                ASSERT_EQ(pixel.blue, std::clamp(within16Bits(base + 227 * cb) >> 7, 0, 255));
                ASSERT_EQ(pixel.green, std::clamp(within16Bits(base - 44 * cb - 91 * cr) >> 7, 0, 255));
                ASSERT_EQ(pixel.red, std::clamp(within16Bits(base + 179 * cr) >> 7, 0, 255));
                ASSERT_EQ(pixel.alpha, 255);
            }
        }
    });
}

TEST(JpgColor, TheVectorFormsDifferFromTheReferenceByTwoAtMost) {
    if (FixedPointForms().empty())
        GTEST_SKIP() << "this processor lacks SSE2";
    ForAllColours([&](int y, int cb, int cr) {
        for (const ColorRoutes* form : FixedPointForms()) {
            const std::array<Pixel, 8> a = Converted(*form, y, cb, cr);
            const std::array<Pixel, 8> b = Converted(*ColorForms::Reference(), y, cb, cr);
            for (std::size_t i = 0; i < 8; ++i) {
                if (!IsNear(y + static_cast<int>(i), cb, cr))
                    continue;
                ASSERT_LE(std::abs(a[i].blue - b[i].blue), 2);
                ASSERT_LE(std::abs(a[i].green - b[i].green), 2);
                ASSERT_LE(std::abs(a[i].red - b[i].red), 2);
            }
        }
    });
}

TEST(JpgColor, TheProgramTakesTheFastestForm) {
    const ColorRoutes* const fastest = FixedPointForms().empty() ? ColorForms::Reference() : FixedPointForms().back();
    EXPECT_EQ(&GetColorRoutes(), fastest);
}

/// A frame whose first component has the factors, and blocks that tell their components apart.
class Conversion {
public:
    explicit Conversion(std::uint32_t componentCount, std::uint32_t horizontal = 1, std::uint32_t vertical = 1) {
        frame.componentCount = componentCount;
        frame.components = std::make_unique<std::array<Component, 256>>();
        frame.identifiers = {1, 2, 3, 4};
        frame.At(0).horizontal = frame.largestHorizontal = horizontal;
        frame.At(0).vertical = frame.largestVertical = vertical;
        for (std::size_t c = 0; c < 4; ++c) {
            samples[c].resize(5 * blockSize);
            for (std::size_t i = 0; i < samples[c].size(); ++i)
                samples[c][i] = static_cast<std::int16_t>(static_cast<int>(i * (2 * c + 3) * 7 % 256) - 128);
        }
    }

    std::vector<Pixel> Convert(const ColorHints& hints, std::size_t stride) const {
        std::vector<Pixel> pixels(stride * 16, Pixel{1, 2, 3, 4});
        ColorConversion(frame, hints).Convert(Run(1), pixels.data(), stride);
        return pixels;
    }

    /// Each MCU has the samples from a place further on.
    McuRun Run(std::size_t count) const {
        McuRun run;
        run.count = count;
        for (std::size_t c = 0; c < 4; ++c) {
            run.blocks[c] = samples[c].data();
            run.step[c] = c + 1;
        }
        return run;
    }

    int At(std::size_t component, std::size_t place) const { return samples[component][place] + 128; }

    Frame frame;
    std::array<std::vector<std::int16_t>, 4> samples;
};

TEST(JpgColor, GreyIsTheSameInAllColours) {
    const Conversion conversion(1);
    const std::vector<Pixel> pixels = conversion.Convert({}, 20);
    for (std::size_t i = 0; i < blockSize; ++i) {
        const auto grey = static_cast<std::uint8_t>(conversion.At(0, i));
        EXPECT_EQ(pixels[i / 8 * 20 + i % 8], (Pixel{grey, grey, grey, 255}));
    }
    EXPECT_EQ(pixels[8], (Pixel{1, 2, 3, 4})) << "beside the MCU";
}

TEST(JpgColor, ThreeComponentsOfAnRgbFileGoStraightToTheirColours) {
    const Conversion conversion(3);
    const std::vector<Pixel> pixels = conversion.Convert({.photometric = 2}, 8);
    for (std::size_t i = 0; i < blockSize; ++i)
        EXPECT_EQ(pixels[i],
                  (Pixel{static_cast<std::uint8_t>(conversion.At(2, i)), static_cast<std::uint8_t>(conversion.At(1, i)),
                         static_cast<std::uint8_t>(conversion.At(0, i)), 255}));
}

TEST(JpgColor, ChrominanceIsReplicatedForTheLuminanceThatItCovers) {
    for (const std::uint32_t horizontal : {1u, 2u})
        for (const std::uint32_t vertical : {1u, 2u}) {
            const Conversion conversion(3, horizontal, vertical);
            const std::size_t stride = 8 * horizontal + 3;
            const std::vector<Pixel> pixels = conversion.Convert({}, stride);
            for (std::size_t y = 0; y < 8 * vertical; ++y)
                for (std::size_t x = 0; x < 8 * horizontal; ++x) {
                    const std::size_t block = y / 8 * horizontal + x / 8;
                    const std::size_t chroma = y / vertical * 8 + x / horizontal;
                    const Pixel wanted =
                        Converted(GetColorRoutes(), conversion.samples[0][block * blockSize + y % 8 * 8 + x % 8],
                                  conversion.samples[1][chroma], conversion.samples[2][chroma])[0];
                    ASSERT_EQ(pixels[y * stride + x], wanted) << horizontal << "x" << vertical << " " << x << ", " << y;
                }
        }
}

TEST(JpgColor, AFourthComponentThatIsNotShownMayBeAsFineAsTheFirst) {
    Conversion conversion(4, 2, 2);
    const std::vector<Pixel> wanted = conversion.Convert({}, 16);
    conversion.frame.At(3).horizontal = conversion.frame.At(3).vertical = 2;
    EXPECT_EQ(conversion.Convert({}, 16), wanted);
    conversion.frame.At(3).horizontal = conversion.frame.largestHorizontal = 4;
    EXPECT_EQ(Quorvex::Test::RaisedText([&] { conversion.Convert({}, 16); }), "component 4 sampling factors must be 1");
}

/// How one MCU after the other becomes pixels.
std::vector<Pixel> OneByOne(ColorConversion::Route route, McuRun run, std::size_t mcuWidth, std::size_t stride) {
    std::vector<Pixel> pixels(stride * 16);
    const std::size_t count = run.count;
    run.count = 1;
    for (std::size_t mcu = 0; mcu < count; ++mcu) {
        route(run, pixels.data() + mcu * mcuWidth, stride);
        for (std::size_t c = 0; c < 4; ++c)
            run.blocks[c] += run.step[c];
    }
    return pixels;
}

TEST(JpgColor, McusSideBySideAreThoseOneByOneInEveryForm) {
    const Conversion conversion(3);
    const auto expectSame = [&](ColorConversion::Route route, ColorConversion::Route wanted, std::size_t mcuWidth) {
        for (std::size_t count = 1; count < 10; ++count) {
            const std::size_t stride = mcuWidth * count + 3;
            const McuRun run = conversion.Run(count);
            std::vector<Pixel> had(stride * 16);
            route(run, had.data(), stride);
            ASSERT_EQ(had, OneByOne(wanted, run, mcuWidth, stride)) << count << " MCUs";
        }
    };
    const ColorRoutes& reference = *ColorForms::Reference();
    for (const ColorRoutes* form : FixedPointForms()) {
        expectSame(form->grey, reference.grey, 8);
        expectSame(form->rgb, reference.rgb, 8);
        for (const std::size_t h : {0u, 1u})
            for (const std::size_t v : {0u, 1u})
                expectSame(form->yCbCr[h][v], ColorForms::Sse2()->yCbCr[h][v], 8 * (h + 1));
    }
    for (const std::size_t h : {0u, 1u})
        for (const std::size_t v : {0u, 1u})
            expectSame(reference.yCbCr[h][v], reference.yCbCr[h][v], 8 * (h + 1));
}

TEST(JpgColor, CmykMultipliesByBlack) {
    const Conversion conversion(4);
    const std::vector<Pixel> pixels = conversion.Convert({.adobe = ColorHints::Adobe::Cmyk}, 8);
    for (std::size_t i = 0; i < blockSize; ++i) {
        const auto inked = [&](std::size_t c) {
            return static_cast<std::uint8_t>(std::floor(conversion.At(c, i) * conversion.At(3, i) / 255.0 + 0.5));
        };
        EXPECT_EQ(pixels[i], (Pixel{inked(2), inked(1), inked(0), 255}));
    }
}

TEST(JpgColor, FourComponentsOfAFileThatEmbedsThemStayApart) {
    const Conversion conversion(4);
    for (const std::uint16_t photometric : {std::uint16_t{2}, std::uint16_t{5}}) {
        const std::vector<Pixel> pixels =
            conversion.Convert({.adobe = ColorHints::Adobe::Ycck, .photometric = photometric}, 8);
        for (std::size_t i = 0; i < blockSize; ++i) {
            const auto sample = [&](std::size_t c) { return static_cast<std::uint8_t>(conversion.At(c, i)); };
            EXPECT_EQ(pixels[i], (Pixel{sample(2), sample(1), sample(0), sample(3)}));
        }
    }
}

TEST(JpgColor, YcckTakesTheColoursFromBlack) {
    const Conversion conversion(4);
    const std::vector<Pixel> pixels = conversion.Convert({.adobe = ColorHints::Adobe::Ycck}, 8);
    for (std::size_t i = 0; i < blockSize; ++i) {
        const double y = conversion.At(0, i), cb = conversion.At(1, i) - 128, cr = conversion.At(2, i) - 128;
        const double black = conversion.At(3, i);
        const auto uninked = [&](double colour) { return Limited(black - colour * black / 255); };
        EXPECT_EQ(pixels[i].blue, uninked(y + std::trunc(1.772 * cb)));
        EXPECT_EQ(pixels[i].green, uninked(y + std::trunc(-0.344136 * cb - 0.714136 * cr)));
        EXPECT_EQ(pixels[i].red, uninked(y + std::trunc(1.402 * cr)));
    }
}

} // namespace

} // namespace ET::Img::Jpg
