#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgReference.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using JpgSegments::Bytes;

namespace {

Bytes Restart(unsigned number) {
    return {0xFF, static_cast<std::uint8_t>(0xD0 + number % 8)};
}

constexpr unsigned intervalCount = 12;

/// A row of blocks, each an interval of its own, whose grey tells its place. The pieces stand apart to be damaged.
std::vector<Bytes> Intervals() {
    std::vector<Bytes> pieces;
    for (unsigned i = 0; i < intervalCount; ++i) {
        pieces.push_back(JpgSegments::FlatBlocks({static_cast<int>(8 * (i * 10 + 1))}));
        if (i + 1 < intervalCount)
            pieces.push_back(Restart(i));
    }
    return pieces;
}

std::uint8_t GreyOf(unsigned interval) {
    return static_cast<std::uint8_t>(128 + interval * 10 + 1);
}

constexpr std::uint8_t undecoded = 0x80;

/// Decodes with 1, 2 and 8 workers, which must agree, and gives the grey of each block.
struct Decoded {
    explicit Decoded(const std::vector<Bytes>& pieces) {
        using namespace JpgSegments;
        Bytes file = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                     FrameHeader(0xC0, 8, 8 * intervalCount, 8, {{1}}) + RestartInterval(1) + ScanHeader({1});
        for (const Bytes& piece : pieces)
            file = file + piece;
        file = file + end;
        const JpgLoad load(file, 1);
        isIncomplete = load.decoder.IsIncomplete();
        const Bytes samples = load.Samples<std::uint8_t>();
        for (unsigned i = 0; i < intervalCount; ++i)
            greys.push_back(samples[i * 8 * 4]);
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

TEST(JpgRestart, DamagedPicturesDoNotDependOnTheNumberOfWorkers) {
    if (!HasJpgLibrary())
        GTEST_SKIP() << "this build has no libjpeg to encode with";
    const Bytes scanMarker{0xFF, 0xDA};
    std::mt19937 random(5);
    for (int run = 0; run < 120; ++run) {
        Bytes file = EncodeJpg({.width = 90,
                                .height = 70,
                                .horizontal = 2,
                                .vertical = 2,
                                .quality = 60,
                                .isProgressive = run % 3 == 0,
                                .restartInterval = 1 + static_cast<unsigned>(run) % 4});
        const auto scan = std::search(file.begin(), file.end(), scanMarker.begin(), scanMarker.end());
        const auto first = static_cast<std::size_t>(scan - file.begin()) + 14;
        for (int i = 0; i < run % 4 + 1; ++i)
            file[first + random() % (file.size() - first)] = static_cast<std::uint8_t>(random());
        const JpgOutcome alone(file, 1);
        for (const std::uint32_t workers : {2u, 8u})
            ASSERT_EQ(JpgOutcome(file, workers), alone) << "run " << run << ", " << workers << " workers";
    }
}

} // namespace
