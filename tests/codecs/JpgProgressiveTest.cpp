#include "tests/codecs/JpgCoefficients.h"
#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace JpgCoefficients;

namespace {

TEST(JpgProgressive, AllScansTogetherAreTheSequentialPicture) {
    for (const unsigned components : {1u, 3u})
        for (unsigned seed = 1; seed <= 6; ++seed) {
            const Picture picture = RandomPicture(static_cast<std::uint16_t>(8 * seed + 5), 61, 8, components, seed);
            const Bytes wanted = JpgLoad(SequentialFile(picture)).Samples<std::uint8_t>();
            for (const std::uint16_t interval : {0, 1, 7})
                for (const std::uint32_t workers : {1u, 2u, 8u}) {
                    const JpgLoad load(
                        ProgressiveFile(picture, WholeScript(static_cast<std::uint8_t>(components)), interval),
                        workers);
                    EXPECT_FALSE(load.decoder.IsIncomplete());
                    ASSERT_EQ(load.Samples<std::uint8_t>(), wanted)
                        << components << " components, seed " << seed << ", restarts " << interval;
                }
        }
}

/// What is known of the coefficients after some of the scans.
Picture KnownAfter(Picture picture, const std::vector<Scan>& scans, std::size_t scanCount) {
    std::vector<std::array<int, 64>> lows(picture.components.size());
    for (std::array<int, 64>& ofComponent : lows)
        ofComponent.fill(-1);
    for (std::size_t i = 0; i < scanCount; ++i)
        for (const std::uint8_t component : scans[i].components)
            std::fill(lows[component].begin() + scans[i].first, lows[component].begin() + scans[i].last + 1,
                      scans[i].low);
    for (std::size_t component = 0; component < lows.size(); ++component)
        for (Block& block : picture.components[component])
            for (std::size_t place = 0; place < 64; ++place) {
                const int low = lows[component][place], value = block[place];
                // The first coefficient loses its bits by a shift, the others towards 0 (ITU T.81 G.1.2.1, G.1.2.2).
                if (low < 0)
                    block[place] = 0;
                else if (place == 0)
                    block[place] = value >> low << low;
                else
                    block[place] = (std::abs(value) >> low << low) * (value < 0 ? -1 : 1);
            }
    return picture;
}

TEST(JpgProgressive, EachScanAddsItsBitsOfItsBand) {
    const Picture picture = RandomPicture(45, 29, 8, 3, 99);
    const std::vector<Scan> script = WholeScript(3);
    for (std::size_t count = 1; count <= script.size(); ++count) {
        const JpgLoad load(ProgressiveFile(picture, {script.begin(), script.begin() + std::ptrdiff_t(count)}));
        EXPECT_FALSE(load.decoder.IsIncomplete());
        EXPECT_EQ(load.Samples<std::uint8_t>(),
                  JpgLoad(SequentialFile(KnownAfter(picture, script, count))).Samples<std::uint8_t>())
            << count << " scans";
    }
}

TEST(JpgProgressive, AFileCutBetweenScansShowsWhatTheyBrought) {
    const Picture picture = RandomPicture(30, 30, 8, 1, 4);
    const std::vector<Scan> script = WholeScript(1);
    for (std::size_t count = 1; count < script.size(); ++count) {
        Bytes file = ProgressiveFile(picture, {script.begin(), script.begin() + std::ptrdiff_t(count)});
        file.erase(file.end() - 2, file.end());
        const JpgLoad load(file);
        EXPECT_TRUE(load.decoder.IsIncomplete());
        EXPECT_EQ(load.Samples<std::uint8_t>(),
                  JpgLoad(SequentialFile(KnownAfter(picture, script, count))).Samples<std::uint8_t>());
    }
}

TEST(JpgProgressive, RunsOfEmptyBlocksMayBeAsLongAsTheirCodeAllows) {
    // 39,204 blocks, of which only the last has a coefficient: more than one run can hold.
    Picture picture{198 * 8, 198 * 8, 8, {std::vector<Block>(198 * 198)}};
    picture.components[0].back()[63] = 100;
    const std::vector<Scan> script{{{0}, 0, 0}, {{0}, 1, 63, 0, 1}, {{0}, 1, 63, 1, 0}};
    const JpgLoad load(ProgressiveFile(picture, script));
    EXPECT_FALSE(load.decoder.IsIncomplete());
    EXPECT_EQ(load.Samples<std::uint8_t>(), JpgLoad(SequentialFile(picture)).Samples<std::uint8_t>());
}

TEST(JpgProgressive, TwelveBitsAreReadToTheirEndAndStayGrey) {
    for (const std::uint8_t components : {1, 2, 3, 4})
        for (const std::uint16_t interval : {0, 2}) {
            const Picture picture = RandomPicture(33, 21, 12, components, 7u + components);
            const Bytes file = ProgressiveFile(picture, WholeScript(components), interval);
            for (const std::uint32_t workers : {1u, 8u}) {
                const JpgLoad load(file, workers);
                EXPECT_FALSE(load.decoder.IsIncomplete()) << int(components) << " components";
                EXPECT_EQ(load.info.BitsPerPixel, 16u);
                EXPECT_EQ(load.info.ColorType, Quorvex::Data::ColorTypeEnum::BGRAUInt16);
                EXPECT_EQ(load.Samples<std::uint16_t>(), std::vector<std::uint16_t>(33 * 21 * 4, 0x8000));
            }
            // A scan whose last bytes are missing would be noticed.
            Bytes cut = file;
            cut.erase(cut.end() - 6, cut.end() - 2);
            EXPECT_TRUE(JpgLoad(cut).decoder.IsIncomplete());
        }
}

TEST(JpgProgressive, DamageShowsTheSameForEveryNumberOfWorkers) {
    std::mt19937 random(12);
    for (unsigned run = 0; run < 60; ++run) {
        const auto components = static_cast<std::uint8_t>(run % 2 == 0 ? 1 : 3);
        const Picture picture = RandomPicture(60, 40, 8, components, run);
        Bytes file = ProgressiveFile(picture, WholeScript(components), static_cast<std::uint16_t>(run % 3 * 2));
        const std::size_t front = Head(picture, 0xC2).size();
        for (unsigned i = 0; i <= run % 4; ++i)
            file[front + random() % (file.size() - front)] = static_cast<std::uint8_t>(random());
        const JpgOutcome alone(file, 1);
        EXPECT_EQ(JpgOutcome(file, 2), alone) << "run " << run;
        EXPECT_EQ(JpgOutcome(file, 8), alone) << "run " << run;
    }
}

} // namespace
