#include "video/Blend.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quorvex::Platform::Video {

namespace {

using Pixel = Data::ColorBGRA<std::uint8_t>;

TEST(Blend, WeightsAreRoundedSharesOf65536) {
    for (int alpha = 0; alpha < 256; ++alpha)
        EXPECT_EQ(BlendWeights[static_cast<std::size_t>(alpha)], std::lround(alpha * 65536.0 / 255.0)) << alpha;
    EXPECT_EQ(BlendWeights[255], 65536u);
    EXPECT_EQ(BlendWeights[128], 32897u);
}

TEST(Blend, FollowsTheFormulaForEveryAlpha) {
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha) {
        const auto t = static_cast<std::uint32_t>(std::lround(alpha * 65536.0 / 255.0));
        const std::uint32_t s = 65536 - t;
        for (std::uint32_t source = 0; source < 256; source += 5)
            for (std::uint32_t target = 0; target < 256; target += 3) {
                const auto color = static_cast<std::uint8_t>((target * s + 0x8000 + source * t) >> 16);
                const auto sum = static_cast<std::uint8_t>((target * s + 0x8000 + alpha * 65536) >> 16);
                const auto from = static_cast<std::uint8_t>(source);
                const auto to = static_cast<std::uint8_t>(target);
                const Pixel mixed = Blend({from, to, 0, static_cast<std::uint8_t>(alpha)}, {to, from, to, to});
                ASSERT_EQ(mixed.blue, color) << alpha << ", " << source << " over " << target;
                ASSERT_EQ(mixed.alpha, sum) << alpha << " over " << target;
            }
    }
}

TEST(Blend, OpaqueIsTheSourceAndClearTheTarget) {
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<std::uint8_t>(value);
        const Pixel target{byte, 17, 200, byte};
        EXPECT_EQ(Blend({3, byte, 99, 255}, target), (Pixel{3, byte, 99, 255}));
        EXPECT_EQ(Blend({3, byte, 99, 0}, target), target);
    }
}

} // namespace

} // namespace Quorvex::Platform::Video
