#include "data/Image.h"
#include "foundation/Logger.h"
#include "tests/codecs/TifLoad.h"
#include "tests/codecs/TifReference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>

using namespace Quorvex;
using Type = Data::ColorTypeEnum;
using Bytes = TifRecipe::Bytes;

namespace {

/// One row of pixels.
TifRecipe Row(std::uint32_t photometric, std::uint32_t bits, std::uint32_t samples, std::vector<std::uint64_t> values) {
    TifRecipe recipe;
    recipe.photometric = photometric;
    recipe.bits = bits;
    recipe.samples = samples;
    recipe.values = std::move(values);
    recipe.width = static_cast<std::uint32_t>(recipe.values.size() / samples);
    return recipe;
}

template <class Channel>
std::vector<Channel> Load(const TifRecipe& recipe) {
    const TifLoad load(recipe.Build());
    EXPECT_FALSE(load.decoder.IsIncomplete());
    return load.Samples<Channel>();
}

Type::Value TypeFor(std::uint32_t photometric, std::uint32_t bits, std::uint32_t samples, std::uint32_t format) {
    TifRecipe recipe = Row(photometric, bits, samples, std::vector<std::uint64_t>(samples));
    recipe.format = format;
    return TifLoad(recipe.Build()).info.ColorType;
}

TEST(TifColor, TheTypeOfASampleDecidesTheTypeOfTheImage) {
    for (std::uint32_t bits = 1; bits <= 64; ++bits) {
        const std::uint32_t size = bits <= 8 ? 0 : bits <= 16 ? 1 : bits <= 32 ? 2 : 3;
        for (std::uint32_t samples = 1; samples <= 4; ++samples) {
            const std::uint32_t photometric = samples >= 3 ? 2 : 1;
            const std::uint32_t color = samples >= 2 ? 10 : 0;
            EXPECT_EQ(TypeFor(photometric, bits, samples, 1), color + 4 + size) << bits << " bits";
            EXPECT_EQ(TypeFor(photometric, bits, samples, 2), color + size) << bits << " bits";
            EXPECT_EQ(TypeFor(photometric, bits, samples, 4), color + 4 + size) << "undefined is unsigned";
        }
    }
    for (const std::uint32_t bits : {16u, 24u, 32u}) {
        EXPECT_EQ(TypeFor(1, bits, 1, 3), Type::Float32);
        EXPECT_EQ(TypeFor(2, bits, 3, 3), Type::BGRAFloat32);
    }
    EXPECT_EQ(TypeFor(1, 64, 1, 3), Type::Float64);
    EXPECT_EQ(TypeFor(2, 64, 4, 3), Type::BGRAFloat64);
    EXPECT_EQ(TypeFor(0, 1, 1, 1), Type::UInt8) << "bilevel";
}

TEST(TifColor, WhiteIsZeroIsInvertedForIntegers) {
    EXPECT_EQ(Load<std::uint8_t>(Row(0, 1, 1, {0, 1})), (std::vector<std::uint8_t>{255, 0}));
    EXPECT_EQ(Load<std::uint8_t>(Row(0, 4, 1, {0, 15, 5})), (std::vector<std::uint8_t>{255, 0, 170}));
    EXPECT_EQ(Load<std::uint16_t>(Row(0, 16, 1, {0, 65535, 4660})), (std::vector<std::uint16_t>{65535, 0, 60875}));
    EXPECT_EQ(Load<std::uint64_t>(Row(0, 64, 1, {0, ~0ull})), (std::vector<std::uint64_t>{~0ull, 0}));
    TifRecipe isSigned = Row(0, 8, 1, {0x80, 0x7F, 0});
    isSigned.format = 2;
    EXPECT_EQ(Load<std::int8_t>(isSigned), (std::vector<std::int8_t>{127, -128, -1}));
    TifRecipe isFloat = Row(0, 32, 1, {std::bit_cast<std::uint32_t>(0.25f)});
    isFloat.format = 3;
    EXPECT_EQ(Load<float>(isFloat), std::vector<float>{0.25f}) << "no range to be inverted in";
}

TEST(TifColor, WhiteIsZeroLeavesTheAlphaAlone) {
    EXPECT_EQ(Load<std::uint8_t>(Row(0, 8, 2, {10, 30})), (std::vector<std::uint8_t>{245, 245, 245, 30}));
    EXPECT_EQ(Load<std::uint8_t>(Row(0, 8, 4, {1, 2, 3, 4})), (std::vector<std::uint8_t>{252, 253, 254, 4}));
}

TEST(TifColor, APhotometricThatIsMissingFollowsTheNumberOfSamples) {
    TifRecipe grey = Row(0, 8, 1, {7});
    grey.without = {262};
    EXPECT_EQ(Load<std::uint8_t>(grey), std::vector<std::uint8_t>{7});
    TifRecipe color = Row(0, 8, 3, {1, 2, 3});
    color.without = {262};
    EXPECT_EQ(Load<std::uint8_t>(color), (std::vector<std::uint8_t>{3, 2, 1, 255}));
}

TEST(TifColor, ThreeSamplesAreColoursWhateverThePhotometricSays) {
    EXPECT_EQ(Load<std::uint8_t>(Row(1, 8, 3, {1, 2, 3})), (std::vector<std::uint8_t>{3, 2, 1, 255}));
}

/// A palette for all values of so many bits: reds, greens, blues, each from its function.
TifRecipe WithPalette(TifRecipe recipe, const std::vector<std::uint32_t>& reds,
                      const std::vector<std::uint32_t>& greens, const std::vector<std::uint32_t>& blues) {
    std::vector<std::uint32_t> map = reds;
    map.insert(map.end(), greens.begin(), greens.end());
    map.insert(map.end(), blues.begin(), blues.end());
    map.resize(std::size_t{3} << recipe.bits);
    recipe.tags[320] = {3, map};
    return recipe;
}

TEST(TifColor, APaletteOfBytesInBothHalvesBecomes8Bits) {
    const TifRecipe recipe = WithPalette(Row(3, 1, 1, {1, 0}), {0x1111, 0x2222}, {0x3333, 0x4444}, {0x5555, 0xFFFF});
    EXPECT_EQ(Load<std::uint8_t>(recipe), (std::vector<std::uint8_t>{0xFF, 0x44, 0x22, 255, 0x55, 0x33, 0x11, 255}));
}

TEST(TifColor, APaletteOfBytesInTheUpperHalfBecomes8Bits) {
    const TifRecipe recipe = WithPalette(Row(3, 1, 1, {1, 0}), {0x1100, 0x2200}, {0x3300, 0x4400}, {0x5500, 0xFF00});
    EXPECT_EQ(Load<std::uint8_t>(recipe), (std::vector<std::uint8_t>{0xFF, 0x44, 0x22, 255, 0x55, 0x33, 0x11, 255}));
}

TEST(TifColor, APaletteOfNumbersBelow256IsTakenForBytes) {
    const TifRecipe recipe = WithPalette(Row(3, 1, 1, {1, 0}), {0x11, 0x22}, {0x33, 0x44}, {0x55, 0xFF});
    EXPECT_EQ(Load<std::uint8_t>(recipe), (std::vector<std::uint8_t>{0xFF, 0x44, 0x22, 255, 0x55, 0x33, 0x11, 255}));
}

TEST(TifColor, APaletteThatNeeds16BitsGetsThem) {
    const TifRecipe recipe = WithPalette(Row(3, 1, 1, {1, 0}), {0x1234, 0x2222}, {0x3333, 0x4444}, {0x5555, 0xFFFF});
    EXPECT_EQ(Load<std::uint16_t>(recipe),
              (std::vector<std::uint16_t>{0xFFFF, 0x4444, 0x2222, 65535, 0x5555, 0x3333, 0x1234, 65535}));
}

TEST(TifColor, IndicesOfEveryDepthUpTo16) {
    for (std::uint32_t bits = 1; bits <= 16; ++bits) {
        TifRecipe recipe;
        recipe.width = 33;
        recipe.bits = bits;
        recipe.photometric = 3;
        recipe.Fill(bits);
        std::vector<std::uint32_t> map;
        for (std::uint32_t i = 0; i < 3u << bits; ++i)
            map.push_back(i * 40503 & 0xFFFF);
        recipe.tags[320] = {3, map};
        const std::vector<std::uint16_t> had = Load<std::uint16_t>(recipe);
        for (std::size_t i = 0; i < recipe.values.size(); ++i)
            for (std::size_t c = 0; c < 3; ++c)
                ASSERT_EQ(had[4 * i + 2 - c], map[(c << bits) + recipe.values[i]]) << bits << " bits";
    }
}

TEST(TifColor, AnIndexWithAlpha) {
    TifRecipe recipe = WithPalette(Row(3, 8, 2, {1, 77, 0, 255}), {0x1111, 0x2222}, {0, 0}, {0, 0});
    recipe.tags[338] = {3, {2}};
    const TifLoad load(recipe.Build());
    EXPECT_EQ(load.Samples<std::uint8_t>(), (std::vector<std::uint8_t>{0, 0, 0x22, 77, 0, 0, 0x11, 255}));
    EXPECT_EQ(load.image->HasAlpha, 1u);
}

/// (full - ink) x (full - black) / full, in long double.
template <class Channel>
void CheckCmyk(std::uint32_t bits) {
    TifRecipe recipe = Row(5, bits, 4, {});
    recipe.width = 40;
    recipe.Fill(bits);
    const auto full = static_cast<long double>(std::numeric_limits<Channel>::max());
    const std::vector<Channel> had = Load<Channel>(recipe);
    for (std::uint32_t x = 0; x < recipe.width; ++x)
        for (std::uint32_t c = 0; c < 3; ++c) {
            const long double wanted = (full - static_cast<long double>(recipe.At(x, 0, c))) *
                                       (full - static_cast<long double>(recipe.At(x, 0, 3))) / full;
            // The long double itself rounds what is as long as its digits.
            const long double tolerance = bits == 64 ? 1.5L : 0.5L;
            ASSERT_LE(std::abs(static_cast<long double>(had[4 * x + 2 - c]) - wanted), tolerance) << bits;
        }
    EXPECT_EQ(had[3], std::numeric_limits<Channel>::max());
}

TEST(TifColor, InksLeaveTheRestOfTheLight) {
    CheckCmyk<std::uint8_t>(8);
    CheckCmyk<std::uint16_t>(16);
    CheckCmyk<std::uint32_t>(32);
    CheckCmyk<std::uint64_t>(64);
    TifRecipe isFloat = Row(5, 32, 4, {});
    for (const float ink : {0.25f, 0.5f, 1.0f, 0.5f})
        isFloat.values.push_back(std::bit_cast<std::uint32_t>(ink));
    isFloat.width = 1;
    isFloat.format = 3;
    EXPECT_EQ(Load<float>(isFloat), (std::vector<float>{0, 0.25f, 0.375f, 1}));
}

TEST(TifColor, SignedInksAreInksAllTheSame) {
    TifRecipe recipe = Row(5, 8, 4, {255, 0, 127, 0});
    recipe.format = 2;
    EXPECT_EQ(Load<std::uint8_t>(recipe), (std::vector<std::uint8_t>{128, 255, 0, 255}));
}

/// L*a*b* of D50 for sRGB's colours, from the sums of the definitions alone.
std::array<double, 3> LabOfSrgb(double red, double green, double blue) {
    const auto linear = [](double v) { return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
    const double r = linear(red), g = linear(green), b = linear(blue);
    // The colorants of an sRGB ICC profile.
    const double x = 0.4360747 * r + 0.3850649 * g + 0.1430804 * b;
    const double y = 0.2225045 * r + 0.7168786 * g + 0.0606169 * b;
    const double z = 0.0139322 * r + 0.0971045 * g + 0.7141733 * b;
    const auto f = [](double t) { return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116; };
    return {116 * f(y) - 16, 500 * (f(x / 0.96422) - f(y)), 200 * (f(y) - f(z / 0.82521))};
}

TEST(TifColor, CieLabComesBackToTheColourItWasMadeOf) {
    for (const std::uint32_t bits : {8u, 16u})
        for (int red = 0; red <= 255; red += 51)
            for (int green = 0; green <= 255; green += 51)
                for (int blue = 0; blue <= 255; blue += 51) {
                    const std::array<double, 3> lab = LabOfSrgb(red / 255.0, green / 255.0, blue / 255.0);
                    const auto stored = [&](double value, double scale) {
                        return static_cast<std::uint64_t>(std::lround(value * scale)) & ((1u << bits) - 1);
                    };
                    const double unit = bits == 8 ? 1 : 256;
                    const TifRecipe recipe =
                        Row(8, bits, 3,
                            {stored(lab[0], ((1u << bits) - 1) / 100.0), stored(lab[1], unit), stored(lab[2], unit)});
                    const int wanted[] = {blue, green, red};
                    for (std::size_t c = 0; c < 3; ++c) {
                        // Whole units of a* and b* are coarse: where a colour is next to black, one of them is
                        // many of sRGB.
                        const double had =
                            bits == 8 ? Load<std::uint8_t>(recipe)[c] : Load<std::uint16_t>(recipe)[c] / 257.0;
                        ASSERT_NEAR(had, wanted[c], bits == 8 ? 12 : 0.6) << red << " " << green << " " << blue;
                    }
                }
}

TEST(TifColor, CieLabWithoutColourIsGrey) {
    for (std::uint64_t lightness = 0; lightness < 256; ++lightness) {
        const std::vector<std::uint8_t> had = Load<std::uint8_t>(Row(8, 8, 3, {lightness, 0, 0}));
        EXPECT_EQ(had[0], had[1]);
        EXPECT_EQ(had[1], had[2]);
    }
    EXPECT_EQ(Load<std::uint8_t>(Row(8, 8, 3, {255, 0, 0})), (std::vector<std::uint8_t>{255, 255, 255, 255}));
    EXPECT_EQ(Load<std::uint8_t>(Row(8, 8, 3, {0, 0, 0})), (std::vector<std::uint8_t>{0, 0, 0, 255}));
}

TEST(TifColor, YCbCrIsConvertedByItsFormula) {
    TifRecipe recipe = Row(6, 8, 3, {});
    recipe.tags[530] = {3, {1, 1}};
    for (unsigned y = 0; y < 256; y += 15)
        for (unsigned cb = 0; cb < 256; cb += 5)
            for (unsigned cr = 0; cr < 256; cr += 5)
                recipe.values.insert(recipe.values.end(), {y, cb, cr});
    recipe.width = static_cast<std::uint32_t>(recipe.values.size() / 3);
    const std::vector<std::uint8_t> had = Load<std::uint8_t>(recipe);
    for (std::size_t i = 0; i < recipe.width; ++i) {
        const auto at = [&](std::size_t s) { return static_cast<int>(recipe.values[3 * i + s]); };
        const std::array<std::uint8_t, 4> wanted = TifReference::OfYCbCr(at(0), at(1), at(2));
        ASSERT_TRUE(std::equal(wanted.begin(), wanted.end(), had.begin() + static_cast<std::ptrdiff_t>(4 * i)))
            << at(0) << " " << at(1) << " " << at(2);
    }
}

TEST(TifColor, ChrominanceIsSharedByThePixelsOfAUnit) {
    for (const std::uint32_t horizontal : {1u, 2u, 4u})
        for (const std::uint32_t vertical : {1u, 2u, 4u})
            for (const std::uint32_t tile : {0u, 16u}) {
                TifRecipe recipe = Row(6, 8, 3, {});
                recipe.width = 21;
                recipe.height = 13;
                recipe.tileWidth = recipe.tileHeight = tile;
                recipe.tags[530] = {3, {horizontal, vertical}};
                const auto luminance = [](std::uint32_t x, std::uint32_t y) { return (x * 7 + y * 13) % 256; };
                const auto chroma = [&](std::uint32_t x, std::uint32_t y, std::uint32_t c) {
                    return 64 + (x / horizontal * 11 + y / vertical * 5 + c * 40) % 128;
                };
                const std::uint32_t columns = tile != 0 ? tile : recipe.width, rows = tile != 0 ? tile : recipe.height;
                for (std::uint32_t top = 0; top < recipe.height; top += rows)
                    for (std::uint32_t left = 0; left < recipe.width; left += columns) {
                        Bytes bytes;
                        for (std::uint32_t y = top; y < top + rows; y += vertical)
                            for (std::uint32_t x = left; x < left + columns; x += horizontal) {
                                for (std::uint32_t v = 0; v < vertical; ++v)
                                    for (std::uint32_t h = 0; h < horizontal; ++h)
                                        bytes.push_back(static_cast<std::uint8_t>(luminance(x + h, y + v)));
                                bytes.push_back(static_cast<std::uint8_t>(chroma(x, y, 0)));
                                bytes.push_back(static_cast<std::uint8_t>(chroma(x, y, 1)));
                            }
                        recipe.tiles.push_back(bytes);
                    }
                const std::vector<std::uint8_t> had = Load<std::uint8_t>(recipe);
                for (std::uint32_t y = 0; y < recipe.height; ++y)
                    for (std::uint32_t x = 0; x < recipe.width; ++x) {
                        const auto wanted =
                            TifReference::OfYCbCr(static_cast<int>(luminance(x, y)), static_cast<int>(chroma(x, y, 0)),
                                                  static_cast<int>(chroma(x, y, 1)));
                        ASSERT_TRUE(std::equal(wanted.begin(), wanted.end(),
                                               had.begin() + static_cast<std::ptrdiff_t>(4 * (y * recipe.width + x))))
                            << horizontal << "x" << vertical << " at " << x << ", " << y;
                    }
            }
}

TEST(TifColor, DifferencesOfYCbCrAreSummed) {
    TifRecipe recipe = Row(6, 8, 3, {});
    recipe.width = 9;
    recipe.height = 3;
    recipe.tags[530] = {3, {1, 1}};
    recipe.Fill();
    const Bytes plain = Load<std::uint8_t>(recipe);
    recipe.predictor = 2;
    EXPECT_EQ(Load<std::uint8_t>(recipe), plain);
}

TEST(TifColor, ExtraSamplesOfKind2AreAlpha) {
    for (const bool isPlanar : {false, true}) {
        TifRecipe recipe = Row(2, 8, 4, {10, 20, 30, 40});
        recipe.tags[338] = {3, {2}};
        recipe.isPlanar = isPlanar;
        const TifLoad load(recipe.Build());
        EXPECT_EQ(load.Samples<std::uint8_t>(), (Bytes{30, 20, 10, 40}));
        EXPECT_EQ(load.image->HasAlpha, 1u);
    }
}

TEST(TifColor, ASampleWithoutAKindIsStoredAsAlphaThatNobodyClaims) {
    const TifLoad load(Row(2, 8, 4, {10, 20, 30, 40}).Build());
    EXPECT_EQ(load.Samples<std::uint8_t>(), (Bytes{30, 20, 10, 40}));
    EXPECT_EQ(load.image->HasAlpha, 0u);
}

template <class Channel>
void CheckDivision(std::uint32_t bits, std::uint32_t format) {
    TifRecipe recipe = Row(2, bits, 4, {});
    recipe.format = format;
    recipe.width = 64;
    recipe.Fill(bits + format);
    recipe.tags[338] = {3, {1}};
    const std::vector<Channel> had = Load<Channel>(recipe);
    const auto full = static_cast<long double>(std::numeric_limits<Channel>::max());
    for (std::uint32_t x = 0; x < recipe.width; ++x) {
        const auto at = [&](std::uint32_t s) {
            return static_cast<long double>(static_cast<Channel>(recipe.At(x, 0, s)));
        };
        EXPECT_EQ(static_cast<long double>(had[4 * x + 3]), at(3)) << "the alpha itself";
        for (std::uint32_t c = 0; c < 3; ++c) {
            long double wanted = at(c);
            if (at(3) > 0)
                wanted = std::clamp(at(c) * full / at(3),
                                    static_cast<long double>(std::numeric_limits<Channel>::lowest()), full);
            const long double tolerance = bits == 64 ? 1.5L : 0.5L;
            ASSERT_LE(std::abs(static_cast<long double>(had[4 * x + 2 - c]) - wanted), tolerance)
                << bits << " bits at " << x;
        }
    }
}

TEST(TifColor, ExtraSamplesOfKind1AreAlphaThatColoursAreDividedBy) {
    CheckDivision<std::uint8_t>(8, 1);
    CheckDivision<std::uint16_t>(16, 1);
    CheckDivision<std::uint32_t>(32, 1);
    CheckDivision<std::uint64_t>(64, 1);
    CheckDivision<std::int8_t>(8, 2);
    CheckDivision<std::int16_t>(16, 2);
    CheckDivision<std::int32_t>(32, 2);
    CheckDivision<std::int64_t>(64, 2);
}

TEST(TifColor, FloatsAreDividedByTheirAlphaAndAColourUnderNoneStays) {
    TifRecipe recipe = Row(2, 32, 4, {});
    recipe.format = 3;
    recipe.tags[338] = {3, {1}};
    for (const float sample : {0.25f, 0.5f, 1.0f, 0.5f, 0.25f, 0.5f, 1.0f, 0.0f})
        recipe.values.push_back(std::bit_cast<std::uint32_t>(sample));
    recipe.width = 2;
    EXPECT_EQ(Load<float>(recipe), (std::vector<float>{2, 1, 0.5f, 0.5f, 1, 0.5f, 0.25f, 0}));
    TifRecipe bytes = Row(2, 8, 4, {10, 20, 30, 0});
    bytes.tags[338] = {3, {1}};
    EXPECT_EQ(Load<std::uint8_t>(bytes), (Bytes{30, 20, 10, 0}));
}

TEST(TifColor, GreyWithAlpha) {
    TifRecipe recipe = Row(1, 16, 2, {1000, 2000});
    recipe.tags[338] = {3, {2}};
    EXPECT_EQ(Load<std::uint16_t>(recipe), (std::vector<std::uint16_t>{1000, 1000, 1000, 2000}));
    recipe.tags[338] = {3, {1}};
    EXPECT_EQ(Load<std::uint16_t>(recipe), (std::vector<std::uint16_t>{32768, 32768, 32768, 2000}));
}

std::vector<std::string> MessagesOf(const TifRecipe& recipe) {
    const Bytes file = recipe.Build();
    ET::Img::TIFDecoder decoder(MakeShared<TestStream>(file, TestStream::Manner::Memory));
    struct Recorder final : ILogger {
        void Log(const BilingualText& texts) override {
            lines.push_back(texts[0].ToStdString());
            lines.push_back(texts[1].ToStdString());
        }
        void LogText(const String&) override {}
        void LogForBothLanguages(const String&) override {}
        void Write(ILogger&) override {}
        std::vector<std::string> lines;
    };
    const SharedPtr<Recorder> recorder = MakeShared<Recorder>();
    decoder.SetLogger(recorder);
    const ET::Img::ImageInfo info = decoder.GetInfo(0);
    EXPECT_TRUE(recorder->lines.empty()) << "not before the pixels";
    decoder.Load(Data::CreateImage(info.ColorType, info.Width, info.Height), 0);
    return recorder->lines;
}

const std::vector<std::string> ignoredSamples{"TIFF: Die Pixel haben weitere Werte, die nicht angezeigt werden",
                                              "TIFF: The pixels have more samples, which are not shown"};

TEST(TifColor, ExtraSamplesOfKind0AreIgnoredWithAMessage) {
    TifRecipe recipe = Row(2, 8, 4, {10, 20, 30, 40});
    EXPECT_TRUE(MessagesOf(recipe).empty());
    recipe.tags[338] = {3, {0}};
    EXPECT_EQ(Load<std::uint8_t>(recipe), (Bytes{30, 20, 10, 255}));
    EXPECT_EQ(MessagesOf(recipe), ignoredSamples);
    TifRecipe grey = Row(1, 8, 2, {10, 40});
    grey.tags[338] = {3, {0}};
    EXPECT_EQ(Load<std::uint8_t>(grey), (Bytes{10, 10, 10, 255}));
    EXPECT_EQ(MessagesOf(grey), ignoredSamples);
}

TEST(TifColor, OfManySamplesTheFirstThreeOrTheFirstAreShown) {
    const TifRecipe color = Row(2, 8, 6, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(Load<std::uint8_t>(color), (Bytes{3, 2, 1, 255}));
    EXPECT_EQ(MessagesOf(color), ignoredSamples);
    for (const bool isPlanar : {false, true}) {
        TifRecipe grey = Row(1, 8, 5, {9, 2, 3, 4, 5, 8, 7, 6, 5, 4});
        grey.isPlanar = isPlanar;
        EXPECT_EQ(Load<std::uint8_t>(grey), (Bytes{9, 8}));
        EXPECT_EQ(MessagesOf(grey), ignoredSamples);
    }
}

TEST(TifColor, TheAlphaAmongOtherSamplesIsFound) {
    TifRecipe recipe = Row(2, 8, 6, {1, 2, 3, 4, 5, 6});
    recipe.tags[338] = {3, {0, 2, 0}};
    EXPECT_EQ(Load<std::uint8_t>(recipe), (Bytes{3, 2, 1, 5}));
    EXPECT_EQ(MessagesOf(recipe), ignoredSamples);
    TifRecipe inks = Row(5, 8, 5, {0, 0, 0, 0, 7});
    inks.tags[338] = {3, {2}};
    EXPECT_EQ(Load<std::uint8_t>(inks), (Bytes{255, 255, 255, 7}));
}

TEST(TifColor, ExtraSamplesAreTheLastOnesOfAPixel) {
    for (const std::uint32_t photometric : {0u, 1u}) {
        TifRecipe grey = Row(photometric, 8, 4, {1, 2, 3, 4});
        grey.tags[338] = {3, {0, 0, 2}};
        const TifLoad load(grey.Build());
        const Bytes shown = photometric == 1 ? Bytes{3, 2, 1, 4} : Bytes{252, 253, 254, 4};
        EXPECT_EQ(load.Samples<std::uint8_t>(), shown) << "the first of three is grey for the file, a colour here";
        EXPECT_EQ(load.image->HasAlpha, 1u);
        grey.tags[338] = {3, {2, 0, 0}};
        EXPECT_EQ(TifLoad(grey.Build()).image->HasAlpha, 0u) << "the alpha is shown as a colour";
        EXPECT_EQ(MessagesOf(grey), ignoredSamples);
    }
    TifRecipe longer = Row(2, 8, 4, {1, 2, 3, 4});
    longer.tags[338] = {3, {0, 0, 0, 2, 1, 1}};
    EXPECT_EQ(Load<std::uint8_t>(longer), (Bytes{3, 2, 1, 4})) << "a list that is longer than a pixel";
}

TEST(TifColor, PlanarSamplesKeepTheirColours) {
    TifRecipe recipe = Row(2, 8, 3, {200, 100, 50, 1, 2, 3});
    recipe.isPlanar = true;
    EXPECT_EQ(Load<std::uint8_t>(recipe), (Bytes{50, 100, 200, 255, 3, 2, 1, 255}));
    TifRecipe inks = Row(5, 8, 4, {255, 0, 0, 0});
    inks.isPlanar = true;
    EXPECT_EQ(Load<std::uint8_t>(inks), (Bytes{255, 255, 0, 255}));
}

} // namespace
