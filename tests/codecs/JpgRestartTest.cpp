#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgLossless.h"
#include "tests/codecs/JpgReference.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

using JpgSegments::Bytes;

namespace {

Bytes Restart(unsigned number) {
    return {0xFF, static_cast<std::uint8_t>(0xD0 + number % 8)};
}

constexpr unsigned intervalCount = 12;
constexpr unsigned mcusPerInterval = 16; ///< MCUs; fewer are not worth a worker.

/// A row of blocks in intervals, whose grey tells their place. The pieces stand apart to be damaged.
std::vector<Bytes> Intervals() {
    std::vector<Bytes> pieces;
    for (unsigned i = 0; i < intervalCount; ++i) {
        std::vector<int> differences(mcusPerInterval);
        differences[0] = static_cast<int>(8 * (i * 10 + 1));
        pieces.push_back(JpgSegments::FlatBlocks(differences));
        if (i + 1 < intervalCount)
            pieces.push_back(Restart(i));
    }
    return pieces;
}

std::uint8_t GreyOf(unsigned interval) {
    return static_cast<std::uint8_t>(128 + interval * 10 + 1);
}

constexpr std::uint8_t undecoded = 0x80;

/// Decodes with 1, 2 and 8 workers, which must agree, and gives the grey of each interval.
struct Decoded {
    explicit Decoded(const std::vector<Bytes>& pieces) {
        using namespace JpgSegments;
        Bytes file = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                     FrameHeader(0xC0, 8, 8 * mcusPerInterval * intervalCount, 8, {{1}}) +
                     RestartInterval(mcusPerInterval) + ScanHeader({1});
        for (const Bytes& piece : pieces)
            file = file + piece;
        file = file + end;
        const JpgLoad load(file, 1);
        isIncomplete = load.decoder.IsIncomplete();
        const Bytes samples = load.Samples<std::uint8_t>();
        for (unsigned i = 0; i < intervalCount; ++i) {
            greys.push_back(samples[i * mcusPerInterval * 8 * 4]);
            for (unsigned x = 0; x < mcusPerInterval * 8; ++x)
                EXPECT_EQ(samples[(i * mcusPerInterval * 8 + x) * 4], greys.back())
                    << "column " << x << " of interval " << i;
        }
        for (const std::uint32_t workers : {2u, 8u}) {
            const JpgLoad shared(file, workers);
            EXPECT_EQ(shared.Samples<std::uint8_t>(), samples) << workers << " workers";
            EXPECT_EQ(shared.decoder.IsIncomplete(), isIncomplete) << workers << " workers";
        }
    }

    Bytes greys;
    bool isIncomplete = false;
};

Bytes Expected(const std::vector<unsigned>& missing = {}) {
    Bytes greys;
    for (unsigned i = 0; i < intervalCount; ++i)
        greys.push_back(std::find(missing.begin(), missing.end(), i) == missing.end() ? GreyOf(i) : undecoded);
    return greys;
}

TEST(JpgRestart, IntervalsBeginAnew) {
    const Decoded decoded(Intervals());
    EXPECT_EQ(decoded.greys, Expected());
    EXPECT_FALSE(decoded.isIncomplete);
}

TEST(JpgRestart, ALostMarkerCostsItsInterval) {
    std::vector<Bytes> pieces = Intervals();
    pieces[2 * 4 - 1].clear();
    const Decoded decoded(pieces);
    EXPECT_EQ(decoded.greys, Expected({4})) << "what comes behind is in its place";
    EXPECT_TRUE(decoded.isIncomplete);
}

TEST(JpgRestart, LostIntervalsAreCountedByTheNextMarker) {
    std::vector<Bytes> pieces = Intervals();
    // Intervals 3 to 5 with the markers before them.
    pieces.erase(pieces.begin() + 2 * 3 - 1, pieces.begin() + 2 * 6 - 1);
    const Decoded decoded(pieces);
    EXPECT_EQ(decoded.greys, Expected({3, 4, 5}));
    EXPECT_TRUE(decoded.isIncomplete);
}

TEST(JpgRestart, AWrongMarkerMovesWhatFollows) {
    std::vector<Bytes> pieces = Intervals();
    pieces[1] = Restart(2);
    const Decoded decoded(pieces);
    // The second piece goes to place 3; the marker 1 behind it then says that six more are missing.
    Bytes wanted = Expected({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    wanted[3] = GreyOf(1);
    for (unsigned i = 0; 10 + i < intervalCount; ++i)
        wanted[10 + i] = GreyOf(2 + i);
    EXPECT_EQ(decoded.greys, wanted);
    EXPECT_TRUE(decoded.isIncomplete);
}

TEST(JpgRestart, ADoubledMarkerIsFoundOut) {
    std::vector<Bytes> pieces = Intervals();
    pieces.insert(pieces.begin() + 1, pieces[1]);
    const Decoded decoded(pieces);
    EXPECT_TRUE(decoded.isIncomplete);
    EXPECT_EQ(decoded.greys[0], GreyOf(0));
}

TEST(JpgRestart, MissingIntervalsAtTheEndStayGrey) {
    std::vector<Bytes> pieces = Intervals();
    pieces.resize(2 * 7 - 1);
    const Decoded decoded(pieces);
    EXPECT_EQ(decoded.greys, Expected({7, 8, 9, 10, 11}));
    EXPECT_TRUE(decoded.isIncomplete);
}

TEST(JpgRestart, ABrokenIntervalCostsItselfAlone) {
    std::vector<Bytes> pieces = Intervals();
    // The sixteenth code does not exist.
    pieces[2 * 5] = {0xF7, 0x77};
    const Decoded decoded(pieces);
    EXPECT_EQ(decoded.greys, Expected({5}));
    EXPECT_TRUE(decoded.isIncomplete);
}

TEST(JpgRestart, FillBytesBeforeAMarkerAreNoDamage) {
    std::vector<Bytes> pieces = Intervals();
    pieces[3].insert(pieces[3].begin(), 2, 0xFF);
    const Decoded decoded(pieces);
    EXPECT_EQ(decoded.greys, Expected());
    EXPECT_FALSE(decoded.isIncomplete);
}

TEST(JpgRestart, AFileOf420DecodesIdenticallyWithOneAndWithEightWorkers) {
    if (!HasJpgLibrary())
        GTEST_SKIP() << "this build has no libjpeg to encode with";
    const Bytes file = EncodeJpg({.width = 203, .height = 117, .horizontal = 2, .vertical = 2, .restartInterval = 3});
    const JpgLoad alone(file, 1), shared(file, 8);
    EXPECT_FALSE(shared.decoder.IsIncomplete());
    EXPECT_EQ(shared.Samples<std::uint8_t>(), alone.Samples<std::uint8_t>());
}

/// Large enough for one thread to read codes while others make pixels of them.
TEST(JpgRestart, AFileWithoutRestartsDecodesIdenticallyOnAnyNumberOfThreadsAlsoDamaged) {
    if (!HasJpgLibrary())
        GTEST_SKIP() << "this build has no libjpeg to encode with";
    for (const bool isGrey : {false, true}) {
        const Bytes file = EncodeJpg({.width = 1100,
                                      .height = 500,
                                      .components = isGrey ? 1 : 3,
                                      .horizontal = isGrey ? 1 : 2,
                                      .vertical = isGrey ? 1 : 2,
                                      .quality = 60});
        std::mt19937 random(17);
        for (int run = 0; run < 6; ++run) {
            Bytes damaged = file;
            if (run >= 4)
                damaged.resize(file.size() / 7 * static_cast<std::size_t>(run));
            else if (run > 0)
                damaged[file.size() / 4 * static_cast<std::size_t>(run) + random() % 100] ^= 0x40;
            const JpgLoad alone(damaged, 1);
            const Bytes wanted = alone.Samples<std::uint8_t>();
            for (const std::uint32_t threads : {2u, 8u}) {
                const JpgLoad shared(damaged, threads);
                EXPECT_EQ(shared.decoder.IsIncomplete(), alone.decoder.IsIncomplete());
                EXPECT_TRUE(shared.Samples<std::uint8_t>() == wanted)
                    << "damage " << run << ", " << threads << " threads";
            }
            EXPECT_TRUE(run < 4 || alone.decoder.IsIncomplete());
        }
    }
}

/// Large enough for eight workers.
JpgRecipe RecipeOf(unsigned run) {
    constexpr JpgScans scans[] = {JpgScans::Interleaved, JpgScans::Apart, JpgScans::LuminanceApart};
    JpgRecipe recipe{.width = 200, .height = 150, .quality = 50, .isProgressive = run % 3 == 0};
    recipe.components = run % 5 == 0 ? 1 : run % 5 == 1 ? 4 : 3;
    if (recipe.components == 3) {
        recipe.horizontal = 1 + run / 2 % 2;
        recipe.vertical = 1 + run / 4 % 2;
    }
    recipe.restartInterval = std::array{1u, 2u, 5u, 17u}[run % 4];
    recipe.scans = scans[run / 3 % 3];
    recipe.isYcck = run % 2 == 0 && recipe.components == 4;
    return recipe;
}

TEST(JpgRestart, DamagedPicturesDoNotDependOnTheNumberOfWorkers) {
    if (!HasJpgLibrary())
        GTEST_SKIP() << "this build has no libjpeg to encode with";
    const Bytes scanMarker{0xFF, 0xDA};
    std::mt19937 random(5);
    for (unsigned run = 0; run < 60; ++run) {
        Bytes file = EncodeJpg(RecipeOf(run));
        const auto scan = std::search(file.begin(), file.end(), scanMarker.begin(), scanMarker.end());
        const auto first = static_cast<std::size_t>(scan - file.begin()) + 14;
        for (unsigned i = 0; i < run % 4 + 1; ++i)
            file[first + random() % (file.size() - first)] = static_cast<std::uint8_t>(random());
        const JpgOutcome alone(file, 1);
        for (const std::uint32_t workers : {2u, 8u})
            ASSERT_EQ(JpgOutcome(file, workers), alone) << "run " << run << ", " << workers << " workers";
    }
}

TEST(JpgRestart, DamagedLosslessPicturesDoNotDependOnTheNumberOfWorkers) {
    std::mt19937 random(6);
    for (unsigned run = 0; run < 60; ++run) {
        const JpgLossless::Recipe recipe{.width = 40,
                                         .height = 24,
                                         .precision = run % 2 == 0 ? 8u : 16u,
                                         .components = 1 + run % 4,
                                         .predictor = run % 8,
                                         .restartRows = 1 + run % 3,
                                         .isInterleaved = run % 5 != 0};
        Bytes file = EncodedFile(recipe, RandomPlanes(recipe));
        for (unsigned i = 0; i < run % 4 + 1; ++i)
            file[80 + random() % (file.size() - 80)] = static_cast<std::uint8_t>(random());
        const JpgOutcome alone(file, 1);
        for (const std::uint32_t workers : {2u, 8u})
            ASSERT_EQ(JpgOutcome(file, workers), alone) << "run " << run << ", " << workers << " workers";
    }
}

} // namespace
