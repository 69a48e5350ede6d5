#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <random>

using JpgSegments::Bytes;

namespace {

/// Planes of samples, and how they are to be stored.
struct LosslessRecipe {
    std::uint16_t width = 9;
    std::uint16_t height = 7;
    unsigned precision = 8;
    unsigned components = 1;
    unsigned predictor = 1;
    unsigned pointTransform = 0;
    unsigned restartRows = 0;
    bool isInterleaved = true;
};

using Plane = std::vector<std::uint32_t>;

/// An encoder out of ITU T.81 annex H: a code of eight bits for each of the sizes 0 to 16.
class LosslessEncoder {
public:
    LosslessEncoder(const LosslessRecipe& wanted, const std::vector<Plane>& samples)
        : recipe(wanted), planes(samples) {}

    Bytes File() {
        using namespace JpgSegments;
        Bytes table{0x00, 0, 0, 0, 0, 0, 0, 0, 17, 0, 0, 0, 0, 0, 0, 0, 0};
        for (std::uint8_t size = 0; size <= 16; ++size)
            table.push_back(size);
        std::vector<FrameComponent> frame;
        for (unsigned i = 0; i < recipe.components; ++i)
            frame.push_back({static_cast<std::uint8_t>(i + 1)});
        Bytes file = start + Segment(0xC4, table) +
                     FrameHeader(0xC3, static_cast<std::uint8_t>(recipe.precision), recipe.width, recipe.height, frame);
        if (recipe.restartRows != 0)
            file = file + RestartInterval(static_cast<std::uint16_t>(recipe.restartRows * recipe.width));
        if (recipe.isInterleaved)
            return file + Scan(0, recipe.components) + end;
        for (unsigned i = 0; i < recipe.components; ++i)
            file = file + Scan(i, i + 1);
        return file + end;
    }

private:
    Bytes Scan(unsigned first, unsigned last) {
        using namespace JpgSegments;
        Bytes identifiers;
        for (unsigned i = first; i < last; ++i)
            identifiers.push_back(static_cast<std::uint8_t>(i + 1));
        unsigned restart = 0;
        for (unsigned y = 0; y < recipe.height; ++y) {
            if (recipe.restartRows != 0 && y != 0 && y % recipe.restartRows == 0)
                writer.PutRestart(restart++);
            for (unsigned x = 0; x < recipe.width; ++x)
                for (unsigned i = first; i < last; ++i)
                    Put(Sample(i, x, y) - Prediction(i, x, y));
        }
        return ScanHeader(identifiers, static_cast<std::uint8_t>(recipe.predictor), 0,
                          static_cast<std::uint8_t>(recipe.pointTransform)) +
               writer.Take();
    }

    int Sample(unsigned plane, unsigned x, unsigned y) const {
        return static_cast<int>(planes[plane][std::size_t(y) * recipe.width + x] >> recipe.pointTransform);
    }

    int Prediction(unsigned plane, unsigned x, unsigned y) const {
        const bool isFirstRow = recipe.restartRows != 0 ? y % recipe.restartRows == 0 : y == 0;
        if (isFirstRow)
            return x == 0 ? 1 << (recipe.precision - recipe.pointTransform - 1) : Sample(plane, x - 1, y);
        const int b = Sample(plane, x, y - 1);
        if (x == 0)
            return b;
        const int a = Sample(plane, x - 1, y), c = Sample(plane, x - 1, y - 1);
        const int table[] = {0, a, b, c, a + b - c, a + ((b - c) >> 1), b + ((a - c) >> 1), (a + b) / 2};
        return table[recipe.predictor];
    }

    void Put(int difference) {
        // Modulo 65536, from -32767 to 32768.
        difference = static_cast<std::int16_t>(difference);
        if (difference == -32768)
            difference = 32768;
        writer.Put(JpgBitWriter::SizeOf(difference), 8);
        if (difference != 32768)
            writer.PutNumber(difference);
    }

    LosslessRecipe recipe;
    const std::vector<Plane>& planes;
    JpgBitWriter writer;
};

std::vector<Plane> RandomPlanes(const LosslessRecipe& recipe) {
    std::mt19937 random(recipe.precision * 8 + recipe.predictor);
    std::vector<Plane> planes(recipe.components);
    for (Plane& plane : planes)
        for (std::size_t i = 0; i < std::size_t(recipe.width) * recipe.height; ++i) {
            // Noise of the whole range with the ends of it, and quiet parts.
            const std::uint32_t noise = i % 5 == 0 ? 0xFFFF : i % 7 == 0 ? 0 : random();
            const std::uint32_t sample = noise & ((1u << recipe.precision) - 1);
            plane.push_back(sample >> recipe.pointTransform << recipe.pointTransform);
        }
    return planes;
}

template <class Channel>
void ExpectSamples(const LosslessRecipe& recipe) {
    SCOPED_TRACE(testing::Message() << recipe.precision << " bits, " << recipe.components << " components, predictor "
                                    << recipe.predictor << ", point transform " << recipe.pointTransform
                                    << ", restarts each " << recipe.restartRows << " rows");
    const std::vector<Plane> planes = RandomPlanes(recipe);
    const Bytes file = LosslessEncoder(recipe, planes).File();
    std::vector<Channel> wanted;
    for (std::size_t i = 0; i < planes[0].size(); ++i)
        for (const unsigned place : {2u, 1u, 0u, 3u})
            wanted.push_back(recipe.components == 1 && place < 3 ? static_cast<Channel>(planes[0][i])
                             : place < recipe.components         ? static_cast<Channel>(planes[place][i])
                             : place == 3                        ? std::numeric_limits<Channel>::max()
                                                                 : Channel{sizeof(Channel) == 1 ? 0x80 : 0x8000});
    for (const std::uint32_t workers : {1u, 2u, 8u}) {
        const JpgLoad load(file, workers);
        ASSERT_EQ(load.Samples<Channel>(), wanted) << workers << " workers";
        EXPECT_FALSE(load.decoder.IsIncomplete());
    }
}

void ExpectExact(const LosslessRecipe& recipe) {
    if (recipe.precision > 8)
        ExpectSamples<std::uint16_t>(recipe);
    else
        ExpectSamples<std::uint8_t>(recipe);
}

TEST(JpgLossless, AllPredictorsOfAllPrecisionsAreExact) {
    for (unsigned precision = 2; precision <= 16; ++precision)
        for (unsigned predictor = 0; predictor <= 7; ++predictor)
            ExpectExact({.precision = precision, .predictor = predictor});
}

TEST(JpgLossless, OneToFourComponentsAreExact) {
    for (const unsigned components : {1u, 2u, 3u, 4u})
        for (const bool isInterleaved : {true, false})
            for (const unsigned precision : {8u, 12u, 16u})
                ExpectExact(
                    {.precision = precision, .components = components, .predictor = 4, .isInterleaved = isInterleaved});
}

TEST(JpgLossless, PointTransformsAreExact) {
    for (unsigned transform = 0; transform < 8; ++transform)
        for (const unsigned precision : {8u, 16u})
            ExpectExact({.precision = precision, .predictor = 7, .pointTransform = transform});
}

TEST(JpgLossless, RestartIntervalsOfWholeRowsAreExact) {
    for (const unsigned rows : {1u, 2u, 3u, 7u, 50u})
        for (const unsigned predictor : {1u, 2u, 5u})
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
    const LosslessRecipe recipe{.precision = 16};
    const JpgLoad load(LosslessEncoder(recipe, RandomPlanes(recipe)).File());
    EXPECT_EQ(load.info.ColorType, Quorvex::Data::ColorTypeEnum::BGRAUInt16);
    EXPECT_EQ(load.info.BitsPerPixel, 16u);
}

TEST(JpgLossless, FactorsOtherThanOneAreRefused) {
    using namespace JpgSegments;
    EXPECT_EQ(JpgFailure(start + FrameHeader(0xC3, 8, 8, 8, {{1}, {2, 0x21}, {3}}) + ScanHeader({1, 2, 3}, 1, 0)),
              "JPGDecoder failed, component 2 sampling factors must be 1");
}

TEST(JpgLossless, ACutFileKeepsItsFirstRows) {
    const LosslessRecipe recipe{.width = 20, .height = 20, .precision = 8, .predictor = 4};
    const std::vector<Plane> planes = RandomPlanes(recipe);
    Bytes file = LosslessEncoder(recipe, planes).File();
    file.resize(file.size() / 2);
    const JpgLoad load(file);
    EXPECT_TRUE(load.decoder.IsIncomplete());
    const Bytes samples = load.Samples<std::uint8_t>();
    for (std::size_t i = 0; i < 20; ++i)
        EXPECT_EQ(samples[4 * i], planes[0][i]);
    EXPECT_EQ(samples.back(), 0x80);
}

} // namespace
