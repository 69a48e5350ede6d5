#include "tests/codecs/JpgCoefficients.h"
#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgLossless.h"
#include "tests/codecs/JpgReference.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <algorithm>

// A file cut at every byte ends with an exception before its first scan and as an incomplete image behind it, the same
// for every number of workers.

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Cut(const Bytes& file, std::size_t size) {
    return Bytes(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
}

/// Where the entropy-coded data of the first scan begin.
std::size_t FirstData(const Bytes& file) {
    std::size_t place = 2;
    while (file[place + 1] != 0xDA)
        place += 2 + (file[place + 2] << 8 | file[place + 3]);
    return place + 2 + (file[place + 2] << 8 | file[place + 3]);
}

/// Calls action(size, outcome) for every cut that gives an image.
template <class Action>
void ForEachCut(const Bytes& file, const Action& action) {
    const std::size_t firstData = FirstData(file);
    ASSERT_FALSE(JpgOutcome(file).isIncomplete);
    for (std::size_t size = 0; size < file.size(); ++size) {
        const Bytes cut = Cut(file, size);
        const JpgOutcome alone(cut, 1);
        // Up to its first scan the file fails; where it ends behind its frame, an image without a scan is incomplete
        // too.
        ASSERT_TRUE(alone.isIncomplete || (size < firstData && !alone.failure.empty())) << size;
        ASSERT_TRUE(size % 5 != 0 || JpgOutcome(cut, 2) == alone) << size;
        ASSERT_TRUE(size % 23 != 0 || JpgOutcome(cut, 8) == alone) << size;
        if (alone.isIncomplete)
            action(size, alone);
    }
}

void ExpectIncomplete(const Bytes& file) {
    ForEachCut(file, [](std::size_t, const JpgOutcome&) {});
}

/// Besides: each MCU is that of the whole file up to two, one that lacks some bits of its last byte and one that was in
/// progress behind it; after these all is grey.
template <class Channel>
void ExpectWholeMcus(const Bytes& file, std::size_t width, std::size_t height, std::size_t mcuWidth,
                     std::size_t mcuHeight) {
    const auto samplesOf = [](const JpgOutcome& outcome) {
        if constexpr (sizeof(Channel) == 1)
            return outcome.samples;
        else
            return outcome.wideSamples;
    };
    const std::vector<Channel> whole = samplesOf(JpgOutcome(file));
    const std::size_t columns = (width + mcuWidth - 1) / mcuWidth, rows = (height + mcuHeight - 1) / mcuHeight;
    const auto isEach = [&](std::size_t mcu, const auto& matches) {
        for (std::size_t y = mcu / columns * mcuHeight; y < std::min(height, (mcu / columns + 1) * mcuHeight); ++y)
            for (std::size_t x = mcu % columns * mcuWidth; x < std::min(width, (mcu % columns + 1) * mcuWidth); ++x)
                for (std::size_t channel = 0; channel < 4; ++channel)
                    if (!matches((y * width + x) * 4 + channel))
                        return false;
        return true;
    };
    std::size_t before = 0;
    ForEachCut(file, [&](std::size_t size, const JpgOutcome& outcome) {
        const std::vector<Channel> had = samplesOf(outcome);
        ASSERT_EQ(had.size(), whole.size());
        std::size_t mcu = 0;
        while (mcu < columns * rows && isEach(mcu, [&](std::size_t i) { return had[i] == whole[i]; }))
            ++mcu;
        ASSERT_GE(mcu, before) << "a longer file shows no less, cut at " << size;
        before = mcu;
        const Channel grey = sizeof(Channel) == 1 ? 0x80 : 0x8000;
        for (mcu += 2; mcu < columns * rows; ++mcu)
            ASSERT_TRUE(isEach(mcu, [&](std::size_t i) { return had[i] == grey; })) << "MCU " << mcu << " at " << size;
    });
    EXPECT_EQ(before, columns * rows) << "only the end of image was missing";
}

class JpgTruncation : public testing::Test {
protected:
    void SetUp() override {
        if (!HasJpgLibrary())
            GTEST_SKIP() << "this build has no libjpeg to encode with";
    }
};

TEST_F(JpgTruncation, OfBaselineFilesOfAllLayouts) {
    for (const int horizontal : {1, 2})
        for (const int vertical : {1, 2})
            for (const unsigned interval : {0u, 1u, 3u})
                ExpectWholeMcus<std::uint8_t>(EncodeJpg({.width = 37,
                                                         .height = 21,
                                                         .horizontal = horizontal,
                                                         .vertical = vertical,
                                                         .quality = 30,
                                                         .restartInterval = interval}),
                                              37, 21, 8u * horizontal, 8u * vertical);
}

TEST_F(JpgTruncation, OfGreyFiles) {
    for (const unsigned interval : {0u, 2u})
        ExpectWholeMcus<std::uint8_t>(
            EncodeJpg({.width = 29, .height = 19, .components = 1, .quality = 50, .restartInterval = interval}), 29, 19,
            8, 8);
}

TEST_F(JpgTruncation, OfFilesWithInk) {
    for (const bool isYcck : {false, true})
        for (const unsigned interval : {0u, 2u})
            ExpectWholeMcus<std::uint8_t>(EncodeJpg({.width = 19,
                                                     .height = 17,
                                                     .components = 4,
                                                     .quality = 30,
                                                     .restartInterval = interval,
                                                     .isYcck = isYcck}),
                                          19, 17, 8, 8);
}

TEST_F(JpgTruncation, OfFilesOfSeveralScans) {
    for (const JpgScans scans : {JpgScans::Apart, JpgScans::LuminanceApart})
        for (const unsigned interval : {0u, 2u})
            ExpectIncomplete(EncodeJpg({.width = 27,
                                        .height = 18,
                                        .horizontal = 2,
                                        .vertical = 2,
                                        .quality = 30,
                                        .restartInterval = interval,
                                        .scans = scans}));
}

TEST_F(JpgTruncation, OfProgressiveFiles) {
    for (const int components : {1, 3, 4})
        for (const unsigned interval : {0u, 2u})
            ExpectIncomplete(EncodeJpg({.width = 20,
                                        .height = 19,
                                        .components = components,
                                        .quality = 40,
                                        .isProgressive = true,
                                        .restartInterval = interval}));
}

TEST(JpgTruncationOfOwnFiles, OfTwelveProgressiveBits) {
    const auto picture = JpgCoefficients::RandomPicture(20, 13, 12, 1, 6);
    ForEachCut(ProgressiveFile(picture, JpgCoefficients::WholeScript(1)),
               [](std::size_t size, const JpgOutcome& outcome) {
                   ASSERT_EQ(outcome.wideSamples, std::vector<std::uint16_t>(20 * 13 * 4, 0x8000)) << size;
               });
}

TEST(JpgTruncationOfOwnFiles, OfLosslessFiles) {
    for (const unsigned precision : {8u, 16u})
        for (const unsigned components : {1u, 3u, 4u})
            for (const unsigned restartRows : {0u, 2u}) {
                const JpgLossless::Recipe recipe{.width = 9,
                                                 .height = 6,
                                                 .precision = precision,
                                                 .components = components,
                                                 .predictor = 4,
                                                 .restartRows = restartRows};
                const Bytes file = EncodedFile(recipe, RandomPlanes(recipe));
                if (precision == 8)
                    ExpectWholeMcus<std::uint8_t>(file, 9, 6, 1, 1);
                else
                    ExpectWholeMcus<std::uint16_t>(file, 9, 6, 1, 1);
            }
}

} // namespace
