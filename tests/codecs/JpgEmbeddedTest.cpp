#include "tests/codecs/JpgLoad.h"
#include "tests/codecs/JpgReference.h"
#include "tests/codecs/JpgSegments.h"

#include <gtest/gtest.h>

#include <algorithm>

// What a file that embeds JPEG data says about them, and they themselves do not.

using JpgSegments::Bytes;

namespace {

class JpgEmbedded : public testing::Test {
protected:
    void SetUp() override {
        if (!HasJpgLibrary())
            GTEST_SKIP() << "this build has no libjpeg to compare with";
    }
};

void AsRgb(ET::Img::JPGDecoder& decoder) {
    decoder.SetPhotometric(2);
}

TEST_F(JpgEmbedded, RedGreenAndBlueWithoutATransformAgreeWithLibjpeg) {
    for (const bool isProgressive : {false, true})
        for (const JpgScans scans : {JpgScans::Interleaved, JpgScans::Apart})
            for (const unsigned interval : {0u, 3u})
                for (const int quality : {30, 95}) {
                    const Bytes file = EncodeJpg({.width = 45,
                                                  .height = 31,
                                                  .quality = quality,
                                                  .isProgressive = isProgressive,
                                                  .restartInterval = interval,
                                                  .scans = scans,
                                                  .isRgb = true});
                    const Bytes wanted = DecodeJpgByLibrary(file);
                    const JpgLoad load(file, AsRgb);
                    EXPECT_FALSE(load.decoder.IsIncomplete());
                    const Bytes had = load.Samples<std::uint8_t>();
                    ASSERT_EQ(had.size() / 4, wanted.size() / 3);
                    // Both transforms round a sample to within one of the other.
                    for (std::size_t i = 0; i < wanted.size(); ++i)
                        ASSERT_LE(std::abs(int(had[i / 3 * 4 + i % 3]) - int(wanted[i])), 1) << "sample " << i;
                }
}

TEST_F(JpgEmbedded, WithoutThatWordThreeComponentsAreYCbCrWhateverAdobeSays) {
    const Bytes file = EncodeJpg({.width = 24, .height = 16, .quality = 95, .isRgb = true});
    const Bytes stored = DecodeJpgByLibrary(file);
    const Bytes had = JpgLoad(file).Samples<std::uint8_t>();
    for (std::size_t i = 0; i < stored.size() / 3; ++i) {
        const double y = stored[3 * i + 2], cb = stored[3 * i + 1] - 128.0, cr = stored[3 * i] - 128.0;
        // A step of the three samples makes up to 2.8 in blue, and the fixed point two.
        ASSERT_NEAR(had[4 * i], std::clamp(y + 1.772 * cb, 0.0, 255.0), 5);
        ASSERT_NEAR(had[4 * i + 1], std::clamp(y - 0.344136 * cb - 0.714136 * cr, 0.0, 255.0), 5);
        ASSERT_NEAR(had[4 * i + 2], std::clamp(y + 1.402 * cr, 0.0, 255.0), 5);
    }
}

TEST(JpgEmbeddedHints, RedGreenAndBlueHaveOneBlockPerMcu) {
    using namespace JpgSegments;
    for (std::uint8_t place = 0; place < 3; ++place) {
        std::vector<FrameComponent> components{{1}, {2}, {3}};
        components[place].factors = 0x12;
        const Bytes file = start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) +
                           FrameHeader(0xC0, 8, 8, 8, components) + ScanHeader({1, 2, 3}) + Bytes(64, 0) + end;
        std::string failure;
        try {
            const JpgLoad load(file, AsRgb);
        } catch (const Quorvex::Exception& raised) {
            failure = raised.what();
        }
        EXPECT_EQ(failure, "JPGDecoder failed, component " + std::to_string(place + 1) + " sampling factors must be 1");
    }
}

TEST(JpgEmbeddedHints, ARestartIntervalHoldsUntilTheFileSaysOne) {
    using namespace JpgSegments;
    const Bytes front =
        start + FlatQuantisation() + FourBitCodes(0x00) + FourBitCodes(0x10) + FrameHeader(0xC0, 8, 16, 8, {{1}});
    const Bytes back = ScanHeader({1}) + FlatBlocks({200}) + Bytes{0xFF, 0xD0} + FlatBlocks({280}) + end;
    const Bytes wanted = JpgLoad(front + RestartInterval(1) + back).Samples<std::uint8_t>();
    EXPECT_TRUE(JpgLoad(front + back).decoder.IsIncomplete());
    for (const Bytes& own : {Bytes{}, RestartInterval(1)}) {
        const JpgLoad load(front + own + back,
                           [&](ET::Img::JPGDecoder& decoder) { decoder.SetRestartInterval(own.empty() ? 1 : 7); });
        EXPECT_FALSE(load.decoder.IsIncomplete());
        EXPECT_EQ(load.Samples<std::uint8_t>(), wanted);
    }
}

} // namespace
