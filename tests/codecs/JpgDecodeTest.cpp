#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgReference.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string Described(const JpgRecipe& recipe) {
    return std::to_string(recipe.width) + " x " + std::to_string(recipe.height) + ", " +
           std::to_string(recipe.components) + " components " + std::to_string(recipe.horizontal) + "x" +
           std::to_string(recipe.vertical) + ", quality " + std::to_string(recipe.quality) +
           (recipe.isProgressive                    ? ", progressive"
            : recipe.scans == JpgScans::Interleaved ? ""
            : recipe.scans == JpgScans::Apart       ? ", scans apart"
                                                    : ", luminance apart") +
           ", restarts " + std::to_string(recipe.restartInterval);
}

struct Form {
    bool isProgressive = false;
    JpgScans scans = JpgScans::Interleaved;
};

constexpr Form forms[] = {{}, {false, JpgScans::Apart}, {false, JpgScans::LuminanceApart}, {true}};

class JpgDecode : public testing::Test {
protected:
    void SetUp() override {
        if (!HasJpgLibrary())
            GTEST_SKIP() << "this build has no libjpeg to compare with";
    }

    /// Holds the decoded colours to libjpeg's.
    static void ExpectAgreement(const JpgRecipe& recipe) {
        SCOPED_TRACE(Described(recipe));
        const Bytes file = EncodeJpg(recipe);
        const Bytes wanted = DecodeJpgByLibrary(file);
        const JpgLoad load(file);
        EXPECT_FALSE(load.decoder.IsIncomplete());
        ASSERT_EQ(load.info.Width, recipe.width);
        ASSERT_EQ(load.info.Height, recipe.height);
        const Bytes had = load.Samples<std::uint8_t>();
        ASSERT_EQ(had.size() / 4, wanted.size() / 3);
        // Both transforms round a sample to within one; a difference of one in the chrominance makes two in blue (1.772
        // times), on top of the one of the luminance.
        const int bound = recipe.components == 1 ? 1 : 3;
        double sum = 0.0;
        for (std::size_t i = 0; i < had.size() / 4; ++i) {
            ASSERT_EQ(had[4 * i + 3], 255);
            for (std::size_t c = 0; c < 3; ++c) {
                const int error = int(had[4 * i + c]) - int(wanted[3 * i + c]);
                ASSERT_LE(std::abs(error), bound) << "pixel " << i << ", channel " << c;
                sum += error;
            }
        }
        // The means of a small picture vary.
        const double count = static_cast<double>(wanted.size());
        EXPECT_LT(std::abs(sum / count), 0.2 + 1.0 / std::sqrt(count));
    }
};

TEST_F(JpgDecode, AllWidthsUpToTwoMcusAgreeWithLibjpeg) {
    for (const int horizontal : {1, 2})
        for (const int vertical : {1, 2})
            for (const Form& form : forms)
                for (std::uint32_t width = 1; width <= 33; ++width)
                    ExpectAgreement({.width = width,
                                     .height = 34 - width,
                                     .horizontal = horizontal,
                                     .vertical = vertical,
                                     .isProgressive = form.isProgressive,
                                     .scans = form.scans});
}

TEST_F(JpgDecode, AllSamplingLayoutsAgreeWithLibjpeg) {
    for (const int horizontal : {1, 2})
        for (const int vertical : {1, 2})
            for (const Form& form : forms)
                for (const int quality : {25, 75, 100})
                    ExpectAgreement({.width = 61,
                                     .height = 43,
                                     .horizontal = horizontal,
                                     .vertical = vertical,
                                     .quality = quality,
                                     .isProgressive = form.isProgressive,
                                     .scans = form.scans});
}

TEST_F(JpgDecode, GreyAgreesWithLibjpeg) {
    for (const int factor : {1, 2})
        for (const bool isProgressive : {false, true})
            ExpectAgreement({.width = 45,
                             .height = 39,
                             .components = 1,
                             .horizontal = factor,
                             .vertical = factor,
                             .isProgressive = isProgressive});
}

TEST_F(JpgDecode, RestartIntervalsAgreeWithLibjpeg) {
    for (const unsigned interval : {1u, 2u, 3u, 7u, 100u})
        for (const Form& form : forms)
            for (const int vertical : {1, 2})
                ExpectAgreement({.width = 100,
                                 .height = 77,
                                 .horizontal = 2,
                                 .vertical = vertical,
                                 .isProgressive = form.isProgressive,
                                 .restartInterval = interval,
                                 .scans = form.scans});
}

TEST_F(JpgDecode, TheHeadersAskForWholeMcus) {
    const JpgLoad load(EncodeJpg({.width = 17, .height = 33, .horizontal = 2, .vertical = 2}));
    EXPECT_EQ(load.info.BitsPerPixel, 8u);
    EXPECT_EQ(load.info.ColorType, Quorvex::Data::ColorTypeEnum::BGRAUInt8);
    EXPECT_EQ(load.info.AllocatedWidth, 32u);
    EXPECT_EQ(load.info.AllocatedHeight, 48u);
}

TEST_F(JpgDecode, AFileCutInItsScanKeepsWhatWasDecoded) {
    const Bytes file = EncodeJpg({.width = 64, .height = 64, .horizontal = 2, .vertical = 2});
    const Bytes whole = JpgLoad(file).Samples<std::uint8_t>();
    const JpgLoad cut(Bytes(file.begin(), file.end() - static_cast<std::ptrdiff_t>(file.size() / 3)));
    EXPECT_TRUE(cut.decoder.IsIncomplete());
    const Bytes had = cut.Samples<std::uint8_t>();
    EXPECT_TRUE(std::equal(had.begin(), had.begin() + 16 * 64 * 4, whole.begin())) << "the first row of MCUs";
    EXPECT_EQ(Bytes(had.end() - 4, had.end()), (Bytes{0x80, 0x80, 0x80, 0x80}));
}

TEST_F(JpgDecode, AProgressiveFileCutBetweenScansShowsACoarserPicture) {
    const Bytes file = EncodeJpg({.width = 64, .height = 64, .isProgressive = true});
    std::size_t lastScan = 0;
    for (std::size_t i = 0; i + 1 < file.size(); ++i)
        if (file[i] == 0xFF && file[i + 1] == 0xDA)
            lastScan = i;
    const Bytes whole = JpgLoad(file).Samples<std::uint8_t>();
    const JpgLoad cut(Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(lastScan)));
    EXPECT_TRUE(cut.decoder.IsIncomplete());
    const Bytes had = cut.Samples<std::uint8_t>();
    EXPECT_NE(had, whole);
    double squares = 0.0;
    for (std::size_t i = 0; i < had.size(); ++i)
        squares += (double(had[i]) - whole[i]) * (double(had[i]) - whole[i]);
    EXPECT_LT(squares / static_cast<double>(had.size()), 400.0) << "a picture that is 20 off on average is another one";
}

} // namespace
