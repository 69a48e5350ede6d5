#include "gui/window/x11/X11PixelFormat.h"

#include <gtest/gtest.h>
#include <vector>

namespace Quorvex::GUI {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Alpha = X11PixelFormat::Alpha;

Bytes Convert(const X11PixelFormat& format, const Bytes& bgra, Alpha alpha = Alpha::Keep) {
    const auto width = bgra.size() / 4;
    Bytes target(width * format.GetBitsPerPixel() / 8 + 4, 0xEE);
    format.ConvertRow(bgra.data(), target.data(), width, alpha);
    for (std::size_t i = target.size() - 4; i < target.size(); ++i)
        EXPECT_EQ(target[i], 0xEE) << "written past the row";
    target.resize(target.size() - 4);
    return target;
}

TEST(X11PixelFormat, BgraIsCopiedAsItIs) {
    const X11PixelFormat format(32, false, 0xFF0000, 0xFF00, 0xFF, 0);
    EXPECT_TRUE(format.IsBgra());
    EXPECT_FALSE(format.HasAlpha());
    EXPECT_EQ(Convert(format, {1, 2, 3, 4, 5, 6, 7, 8}, Alpha::Opaque), (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(X11PixelFormat, AlphaIsKeptOrMadeOpaque) {
    const X11PixelFormat format(32, false, 0xFF0000, 0xFF00, 0xFF, 0xFF000000);
    EXPECT_TRUE(format.HasAlpha());
    EXPECT_EQ(Convert(format, {1, 2, 3, 4, 5, 6, 7, 8}), (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(Convert(format, {1, 2, 3, 4, 5, 6, 7, 8}, Alpha::Opaque), (Bytes{1, 2, 3, 255, 5, 6, 7, 255}));
}

TEST(X11PixelFormat, ChannelsGoWhereTheirMasksSay) {
    const X11PixelFormat format(32, false, 0xFF, 0xFF00, 0xFF0000, 0xFF000000);
    EXPECT_FALSE(format.IsBgra());
    EXPECT_EQ(Convert(format, {1, 2, 3, 4}), (Bytes{3, 2, 1, 4}));
    EXPECT_EQ(Convert(format, {1, 2, 3, 4}, Alpha::Opaque), (Bytes{3, 2, 1, 255}));
}

TEST(X11PixelFormat, BytesComeInTheOrderOfTheServer) {
    const X11PixelFormat format(32, true, 0xFF0000, 0xFF00, 0xFF, 0);
    EXPECT_FALSE(format.IsBgra());
    EXPECT_EQ(Convert(format, {1, 2, 3, 4}), (Bytes{0, 3, 2, 1}));
}

TEST(X11PixelFormat, TwentyFourBitsArePacked) {
    const X11PixelFormat format(24, false, 0xFF0000, 0xFF00, 0xFF, 0);
    EXPECT_EQ(Convert(format, {1, 2, 3, 4, 5, 6, 7, 8}), (Bytes{1, 2, 3, 5, 6, 7}));
}

TEST(X11PixelFormat, FiveSixFiveRoundsToTheNearestLevel) {
    const X11PixelFormat format(16, false, 0xF800, 0x07E0, 0x001F, 0);
    EXPECT_EQ(Convert(format, {255, 255, 255, 0}), (Bytes{0xFF, 0xFF}));
    EXPECT_EQ(Convert(format, {0, 0, 0, 255}), (Bytes{0, 0}));
    // 4 of 255 is nearer to 0 of 31 than to 1, 5 is not.
    EXPECT_EQ(Convert(format, {4, 0, 0, 0}), (Bytes{0, 0}));
    EXPECT_EQ(Convert(format, {5, 0, 0, 0}), (Bytes{1, 0}));
    EXPECT_EQ(Convert(format, {0, 0, 255, 0}), (Bytes{0x00, 0xF8}));
}

TEST(X11PixelFormat, TenBitsAChannelReachFromBlackToWhite) {
    const X11PixelFormat format(32, false, 0x3FF00000, 0xFFC00, 0x3FF, 0);
    EXPECT_EQ(Convert(format, {255, 255, 255, 0}), (Bytes{0xFF, 0xFF, 0xFF, 0x3F}));
    EXPECT_EQ(Convert(format, {0, 0, 0, 0}), (Bytes{0, 0, 0, 0}));
    // 128 of 255 is 514 of 1023, rounded.
    EXPECT_EQ(Convert(format, {128, 0, 0, 0}), (Bytes{0x02, 0x02, 0, 0}));
}

} // namespace
} // namespace Quorvex::GUI
