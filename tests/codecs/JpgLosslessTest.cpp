#include "tests/codecs/JpgLossless.h"
#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <limits>

using namespace JpgLossless;

namespace {

using Workers = std::vector<std::uint32_t>;

template <class Channel>
void ExpectSamples(const Recipe& recipe, const Workers& workerCounts) {
    SCOPED_TRACE(testing::Message() << recipe.precision << " bits, " << recipe.components << " components, predictor "
                                    << recipe.predictor << ", point transform " << recipe.pointTransform
                                    << ", restarts each " << recipe.restartRows << " rows");
    const std::vector<Plane> planes = RandomPlanes(recipe);
    const Bytes file = EncodedFile(recipe, planes);
    std::vector<Channel> wanted;
    for (std::size_t i = 0; i < planes[0].size(); ++i)
        for (const unsigned place : {2u, 1u, 0u, 3u})
            wanted.push_back(recipe.components == 1 && place < 3 ? static_cast<Channel>(planes[0][i])
                             : place < recipe.components         ? static_cast<Channel>(planes[place][i])
                             : place == 3                        ? std::numeric_limits<Channel>::max()
                                                                 : Channel{sizeof(Channel) == 1 ? 0x80 : 0x8000});
    for (const std::uint32_t workers : workerCounts) {
        const JpgLoad load(file, workers);
        ASSERT_EQ(load.Samples<Channel>(), wanted) << workers << " workers";
        EXPECT_FALSE(load.decoder.IsIncomplete());
    }
}

void ExpectExact(const Recipe& recipe, const Workers& workerCounts = {1, 2, 8}) {
    if (recipe.precision > 8)
        ExpectSamples<std::uint16_t>(recipe, workerCounts);
    else
        ExpectSamples<std::uint8_t>(recipe, workerCounts);
}

TEST(JpgLossless, EveryPrecisionPredictorAndPointTransformIsExact) {
    for (unsigned precision = 2; precision <= 16; ++precision)
        for (unsigned predictor = 0; predictor <= 7; ++predictor)
            for (unsigned transform = 0; transform < precision; ++transform)
                for (const unsigned components : {1u, 3u, 4u})
                    for (const unsigned restartRows : {0u, 1u, 2u})
                        ExpectExact({.width = 5,
                                     .height = 5,
                                     .precision = precision,
                                     .components = components,
                                     .predictor = predictor,
                                     .pointTransform = transform,
                                     .restartRows = restartRows},
                                    {1});
}

TEST(JpgLossless, OneToFourComponentsAreExact) {
    for (const unsigned components : {1u, 2u, 3u, 4u})
        for (const bool isInterleaved : {true, false})
            for (const unsigned precision : {8u, 12u, 16u})
                ExpectExact(
                    {.precision = precision, .components = components, .predictor = 4, .isInterleaved = isInterleaved});
}

TEST(JpgLossless, RestartIntervalsOfWholeRowsAreExact) {
    for (const unsigned rows : {1u, 2u, 3u, 7u, 50u})
        for (unsigned predictor = 0; predictor <= 7; ++predictor)
            ExpectExact({.width = 13,
                         .height = 25,
                         .precision = 12,
                         .components = 3,
                         .predictor = predictor,
                         .restartRows = rows});
}

TEST(JpgLossless, OddSizesAreExact) {
    for (const std::uint16_t width : {1, 2, 7, 8, 9, 63, 64, 65})
        ExpectExact({.width = width, .height = static_cast<std::uint16_t>(66 - width), .predictor = 6});
}

TEST(JpgLossless, SixteenBitsOfGreyDecodeToWideColours) {
    const Recipe recipe{.precision = 16};
    const JpgLoad load(EncodedFile(recipe, RandomPlanes(recipe)));
    EXPECT_EQ(load.info.ColorType, Quorvex::Data::ColorTypeEnum::BGRAUInt16);
    EXPECT_EQ(load.info.BitsPerPixel, 16u);
}

TEST(JpgLossless, FactorsOtherThanOneAreRefused) {
    using namespace JpgSegments;
    EXPECT_EQ(JpgFailure(start + FrameHeader(0xC3, 8, 8, 8, {{1}, {2, 0x21}, {3}}) + ScanHeader({1, 2, 3}, 1, 0)),
              "JPGDecoder failed, component 2 sampling factors must be 1");
}

TEST(JpgLossless, ACutFileKeepsItsFirstRows) {
    const Recipe recipe{.width = 20, .height = 20, .precision = 8, .predictor = 4};
    const std::vector<Plane> planes = RandomPlanes(recipe);
    Bytes file = EncodedFile(recipe, planes);
    file.resize(file.size() / 2);
    const JpgLoad load(file);
    EXPECT_TRUE(load.decoder.IsIncomplete());
    const Bytes samples = load.Samples<std::uint8_t>();
    for (std::size_t i = 0; i < 20; ++i)
        EXPECT_EQ(samples[4 * i], planes[0][i]);
    EXPECT_EQ(samples.back(), 0x80);
}

} // namespace
