#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgReference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

// Files of four components, whose planes libjpeg decodes as they are stored.

namespace {

using Bytes = std::vector<std::uint8_t>;
/// Blue, green and red.
using Color = std::array<int, 3>;
using Planes = std::array<int, 4>;
using Formula = Color (*)(const Planes& stored);

Color Cmyk(const Planes& inks) {
    const auto inked = [&](int ink) { return std::min(255, static_cast<int>(ink * inks[3] / 255.0 + 0.5)); };
    return {inked(inks[2]), inked(inks[1]), inked(inks[0])};
}

/// Luminance and what chrominance adds to it, as whole numbers and without limits.
Color Widely(const Planes& stored) {
    const int y = stored[0], cb = stored[1] - 128, cr = stored[2] - 128;
    return {y + static_cast<int>(1.772 * cb), y + static_cast<int>(-0.344136 * cb - 0.714136 * cr),
            y + static_cast<int>(1.402 * cr)};
}

Color Ycck(const Planes& stored) {
    Color color = Widely(stored);
    for (int& channel : color)
        channel = std::clamp((stored[3] * 255 - channel * stored[3]) / 255, 0, 255);
    return color;
}

Color YCbCr(const Planes& stored) {
    Color color = Widely(stored);
    for (int& channel : color)
        channel = std::clamp(channel, 0, 255);
    return color;
}

/// The colours that a formula can give where each stored sample is off by one at most.
struct Range {
    Range(Formula formula, const Planes& stored) {
        low.fill(255);
        high.fill(0);
        for (int i = 0; i < 81; ++i) {
            Planes moved = stored;
            for (int rest = i, plane = 0; plane < 4; ++plane, rest /= 3) {
                int& sample = moved[static_cast<std::size_t>(plane)];
                sample = std::clamp(sample + rest % 3 - 1, 0, 255);
            }
            const Color color = formula(moved);
            for (std::size_t c = 0; c < 3; ++c) {
                low[c] = std::min(low[c], color[c]);
                high[c] = std::max(high[c], color[c]);
            }
        }
    }

    Color low;
    Color high;
};

class JpgInk : public testing::Test {
protected:
    void SetUp() override {
        if (!HasJpgLibrary())
            GTEST_SKIP() << "this build has no libjpeg to compare with";
    }

    /// Both inverse transforms round a sample to within one of the other; `formulaError` is what the colours are
    /// allowed besides.
    static void ExpectColors(const Bytes& file, const Bytes& decoded, Formula formula, int formulaError) {
        const Bytes planes = DecodeJpgByLibrary(file);
        const JpgLoad load(decoded);
        EXPECT_FALSE(load.decoder.IsIncomplete());
        const Bytes had = load.Samples<std::uint8_t>();
        ASSERT_EQ(had.size(), planes.size());
        for (std::size_t i = 0; i < had.size(); i += 4) {
            const Range range(formula, {planes[i], planes[i + 1], planes[i + 2], planes[i + 3]});
            for (std::size_t c = 0; c < 3; ++c) {
                ASSERT_GE(had[i + c], range.low[c] - formulaError) << "pixel " << i / 4 << ", channel " << c;
                ASSERT_LE(had[i + c], range.high[c] + formulaError) << "pixel " << i / 4 << ", channel " << c;
            }
            ASSERT_EQ(had[i + 3], 255);
        }
    }
};

/// Calls action(recipe) for files of four components.
template <class Action>
void ForAllRecipes(bool isYcck, const Action& action) {
    for (const bool isProgressive : {false, true})
        for (const JpgScans scans : {JpgScans::Interleaved, JpgScans::Apart})
            for (const unsigned interval : {0u, 2u})
                for (const int quality : {40, 95}) {
                    const JpgRecipe recipe{.width = 43,
                                           .height = 27,
                                           .components = 4,
                                           .quality = quality,
                                           .isProgressive = isProgressive,
                                           .restartInterval = interval,
                                           .scans = scans,
                                           .isYcck = isYcck};
                    SCOPED_TRACE(testing::Message() << (isProgressive ? "progressive" : "baseline")
                                                    << (scans == JpgScans::Apart ? ", scans apart" : "")
                                                    << ", restarts " << interval << ", quality " << quality);
                    action(recipe);
                }
}

TEST_F(JpgInk, CmykIsEachInkTimesBlack) {
    ForAllRecipes(false, [](const JpgRecipe& recipe) {
        const Bytes file = EncodeJpg(recipe);
        ExpectColors(file, file, Cmyk, 0);
    });
}

TEST_F(JpgInk, YcckIsBlackLessItsShareOfTheColour) {
    ForAllRecipes(true, [](const JpgRecipe& recipe) {
        const Bytes file = EncodeJpg(recipe);
        ExpectColors(file, file, Ycck, 0);
    });
}

/// Removes the segment of a marker.
Bytes Without(Bytes file, std::uint8_t marker) {
    for (std::size_t i = 0; i + 4 < file.size(); ++i)
        if (file[i] == 0xFF && file[i + 1] == marker) {
            file.erase(file.begin() + static_cast<std::ptrdiff_t>(i),
                       file.begin() + static_cast<std::ptrdiff_t>(i + 2 + (file[i + 2] << 8 | file[i + 3])));
            return file;
        }
    return file;
}

TEST_F(JpgInk, WithoutAnAdobeSegmentTheFirstThreeAreYCbCr) {
    for (const bool isYcck : {false, true})
        ForAllRecipes(isYcck, [](const JpgRecipe& recipe) {
            const Bytes file = EncodeJpg(recipe);
            // The fixed point of the fast form is within two of the whole numbers.
            ExpectColors(file, Without(file, 0xEE), YCbCr, 2);
        });
}

TEST_F(JpgInk, AFourthComponentThatIsIgnoredMayHaveAnyFactors) {
    for (const int horizontal : {1, 2})
        for (const int vertical : {1, 2})
            for (const bool isProgressive : {false, true}) {
                const Bytes file = EncodeJpg({.width = 43,
                                              .height = 27,
                                              .components = 4,
                                              .horizontal = horizontal,
                                              .vertical = vertical,
                                              .isProgressive = isProgressive,
                                              .isYcck = true});
                ExpectColors(file, Without(file, 0xEE), YCbCr, 2);
            }
}

} // namespace
