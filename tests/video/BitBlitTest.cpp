#include "video/BitBlit.h"

#include "foundation/Exception.h"
#include "tests/support/LogCapture.h"
#include "video/Blend.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <vector>

using namespace Quorvex;
using namespace Quorvex::Platform::Video;

namespace {

using Pixel = Data::ColorBGRA<std::uint8_t>;

/// A surface with a band of known bytes on both sides, to see writes past its ends.
template <class T>
class GuardedSurface {
public:
    GuardedSurface(std::int32_t surfaceWidth, std::int32_t surfaceHeight)
        : width(surfaceWidth), height(surfaceHeight), memory(guard * 2 + std::size_t(width) * height) {
        std::memset(static_cast<void*>(memory.data()), 0xA5, memory.size() * sizeof(T));
    }
    ~GuardedSurface() {
        for (std::size_t i = 0; i < guard; ++i) {
            EXPECT_EQ(std::memcmp(&memory[i], &memory[0], sizeof(T)), 0) << "written before the surface";
            EXPECT_EQ(std::memcmp(&memory[memory.size() - 1 - i], &memory[0], sizeof(T)), 0)
                << "written behind the surface";
        }
    }
    T& At(std::int32_t x, std::int32_t y) { return memory[guard + std::size_t(y) * width + x]; }
    BlitSurface TopDown() { return {&At(0, 0), width, height}; }
    BlitSurface BottomUp() { return {&At(0, 0), width, -height}; }

    const std::int32_t width;
    const std::int32_t height;

private:
    static constexpr std::size_t guard = 64;
    std::vector<T> memory;
};

Pixel Numbered(std::int32_t x, std::int32_t y) {
    return {static_cast<std::uint8_t>(x), static_cast<std::uint8_t>(y), static_cast<std::uint8_t>(x * 7 + y * 13),
            static_cast<std::uint8_t>(x * 31 + y)};
}

void Number(GuardedSurface<Pixel>& surface) {
    for (std::int32_t y = 0; y < surface.height; ++y)
        for (std::int32_t x = 0; x < surface.width; ++x)
            surface.At(x, y) = Numbered(x, y);
}

} // namespace

TEST(BitBlit, CopyCarriesTheRectangleAndNothingElse) {
    GuardedSurface<Pixel> source(9, 7), destination(11, 8);
    Number(source);
    const Pixel before = destination.At(0, 0);
    BitBlit{source.TopDown(), destination.TopDown(), 2, 1, 3, 4, 5, 3}.Copy();
    for (std::int32_t y = 0; y < 8; ++y)
        for (std::int32_t x = 0; x < 11; ++x) {
            const bool isInside = x >= 3 && x < 8 && y >= 4 && y < 7;
            EXPECT_EQ(destination.At(x, y), isInside ? Numbered(x - 1, y - 3) : before) << x << ", " << y;
        }
}

TEST(BitBlit, PositionsAndSizesAreClippedToBothSurfaces) {
    for (std::int32_t fromX : {-12, -3, 0, 4, 9, 20})
        for (std::int32_t toX : {-12, -2, 0, 5, 11, 20})
            for (std::int32_t fromY : {-8, -1, 0, 6, 7})
                for (std::int32_t toY : {-9, -1, 0, 7, 8})
                    for (std::int32_t size : {-1, 0, 1, 6, 2000000000}) {
                        GuardedSurface<Pixel> source(9, 7), destination(11, 8);
                        Number(source);
                        const Pixel before = destination.At(0, 0);
                        BitBlit{source.TopDown(), destination.TopDown(), fromX, fromY, toX, toY, size, size}.Copy();
                        for (std::int32_t y = 0; y < 8; ++y)
                            for (std::int32_t x = 0; x < 11; ++x) {
                                const std::int64_t dx = std::int64_t(x) - toX, dy = std::int64_t(y) - toY;
                                const std::int64_t sx = fromX + dx, sy = fromY + dy;
                                const bool isInside = dx >= 0 && dx < size && dy >= 0 && dy < size && sx >= 0 &&
                                                      sx < 9 && sy >= 0 && sy < 7;
                                ASSERT_EQ(destination.At(x, y), isInside ? Numbered(int(sx), int(sy)) : before)
                                    << x << ", " << y << " from " << fromX << ", " << fromY << " to " << toX << ", "
                                    << toY << " size " << size;
                            }
                    }
}

TEST(BitBlit, PositionsAtTheEndOfTheirRangeDoNotWrap) {
    GuardedSurface<Pixel> source(9, 7), destination(9, 7);
    constexpr std::int32_t lowest = -2147483647 - 1, highest = 2147483647;
    const Pixel before = destination.At(0, 0);
    BitBlit{source.TopDown(), destination.TopDown(), lowest, highest, highest, lowest, highest, highest}.Copy();
    BitBlit{source.TopDown(), destination.TopDown(), 0, 0, lowest, lowest, lowest, lowest}.Copy();
    for (std::int32_t x = 0; x < 9; ++x)
        EXPECT_EQ(destination.At(x, 3), before);
}

TEST(BitBlit, ASurfaceMovesWithinItselfInEveryDirection) {
    for (std::int32_t dx : {-9, -8, -3, -1, 0, 1, 3, 8, 9})
        for (std::int32_t dy : {-7, -6, -1, 0, 1, 2, 6, 7}) {
            GuardedSurface<Pixel> surface(9, 7);
            Number(surface);
            BitBlit{surface.TopDown(), surface.TopDown(), 0, 0, dx, dy, 9, 7}.Copy();
            for (std::int32_t y = 0; y < 7; ++y)
                for (std::int32_t x = 0; x < 9; ++x) {
                    const bool isMoved = x - dx >= 0 && x - dx < 9 && y - dy >= 0 && y - dy < 7;
                    EXPECT_EQ(surface.At(x, y), isMoved ? Numbered(x - dx, y - dy) : Numbered(x, y))
                        << x << ", " << y << " moved by " << dx << ", " << dy;
                }
        }
}

TEST(BitBlit, ABottomUpSurfaceMovesWithinItself) {
    for (std::int32_t dy : {-2, 0, 2}) {
        GuardedSurface<Pixel> surface(5, 6);
        Number(surface);
        BitBlit{surface.BottomUp(), surface.BottomUp(), 0, 0, 1, dy, 5, 6}.Copy();
        for (std::int32_t y = 0; y < 6; ++y) {
            const std::int32_t row = 5 - y;
            const bool isMoved = y - dy >= 0 && y - dy < 6;
            EXPECT_EQ(surface.At(2, row), isMoved ? Numbered(1, row + dy) : Numbered(2, row)) << y << " by " << dy;
        }
    }
}

TEST(BitBlit, ANegativeHeightReadsAndWritesBottomUp) {
    GuardedSurface<Pixel> source(4, 3), destination(4, 5);
    Number(source);
    BitBlit{source.BottomUp(), destination.TopDown(), 0, 0, 0, 0, 4, 3}.Copy();
    for (std::int32_t y = 0; y < 3; ++y)
        EXPECT_EQ(destination.At(1, y), Numbered(1, 2 - y));
    BitBlit{source.TopDown(), destination.BottomUp(), 0, 0, 0, 0, 4, 3}.Copy();
    for (std::int32_t y = 0; y < 3; ++y)
        EXPECT_EQ(destination.At(1, 4 - y), Numbered(1, y));
}

TEST(BitBlit, BlendWeighsEveryAlphaLikeTheFormula) {
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha) {
        GuardedSurface<Pixel> source(256, 1), destination(256, 1);
        for (std::int32_t x = 0; x < 256; ++x) {
            source.At(x, 0) = {std::uint8_t(x), std::uint8_t(255 - x), std::uint8_t(x ^ 0x55), std::uint8_t(alpha)};
            destination.At(x, 0) = {std::uint8_t(x * 3), 7, std::uint8_t(x), std::uint8_t(255 - x)};
        }
        BitBlit{source.TopDown(), destination.TopDown(), 0, 0, 0, 0, 256, 1}.Blend();
        const auto t = static_cast<std::uint32_t>(std::lround(alpha * 65536.0 / 255.0)), s = 65536 - t;
        for (std::uint32_t x = 0; x < 256; ++x) {
            const Pixel had = destination.At(std::int32_t(x), 0);
            EXPECT_EQ(had.blue, (std::uint8_t(x * 3) * s + 0x8000 + x * t) >> 16);
            EXPECT_EQ(had.green, (7 * s + 0x8000 + (255 - x) * t) >> 16);
            EXPECT_EQ(had.red, (x * s + 0x8000 + (x ^ 0x55) * t) >> 16);
            EXPECT_EQ(had.alpha, ((255 - x) * s + 0x8000 + alpha * 65536) >> 16);
        }
    }
    EXPECT_EQ(BlendWeights[255], 65536u);
    EXPECT_EQ(BlendWeights[128], 32897u);
}

TEST(BitBlit, BlendOfASurfaceIntoItselfIsAnError) {
    const Quorvex::Test::LogCapture log;
    GuardedSurface<Pixel> surface(4, 4);
    const BitBlit blit{surface.TopDown(), surface.TopDown(), 0, 0, 1, 1, 2, 2};
    try {
        blit.Blend();
        ADD_FAILURE() << "no exception";
    } catch (const Exception& exception) {
        EXPECT_STREQ(exception.what(), "BitBlit: invalid Func");
    }
    EXPECT_TRUE(log.HasLineEndingIn("BitBlit: invalid Func"));
}

TEST(BitBlit, CopyTo565DropsTheLowBits) {
    GuardedSurface<Pixel> source(256, 1);
    GuardedSurface<std::uint16_t> destination(256, 1);
    for (std::int32_t x = 0; x < 256; ++x)
        source.At(x, 0) = {std::uint8_t(x), std::uint8_t(x + 1), std::uint8_t(x + 2), std::uint8_t(x * 5)};
    BitBlit{source.TopDown(), destination.TopDown(), 0, 0, 0, 0, 256, 1}.CopyTo565();
    for (std::uint32_t x = 0; x < 256; ++x) {
        const std::uint32_t r = (x + 2) & 0xFF, g = (x + 1) & 0xFF;
        EXPECT_EQ(destination.At(std::int32_t(x), 0), (r & 0xF8) << 8 | (g & 0xFC) << 3 | x >> 3);
    }
}

TEST(BitBlit, BlendTo565ExpandsEveryValueAndBlends) {
    for (std::uint32_t alpha : {0u, 1u, 127u, 128u, 254u, 255u}) {
        GuardedSurface<Pixel> source(256, 256);
        GuardedSurface<std::uint16_t> destination(256, 256);
        for (std::uint32_t v = 0; v < 65536; ++v) {
            source.At(v & 0xFF, v >> 8) = {std::uint8_t(v * 3), std::uint8_t(v >> 5), std::uint8_t(v + 9),
                                           std::uint8_t(alpha)};
            destination.At(v & 0xFF, v >> 8) = static_cast<std::uint16_t>(v);
        }
        BitBlit{source.TopDown(), destination.TopDown(), 0, 0, 0, 0, 256, 256}.BlendTo565();
        const std::uint32_t t = BlendWeights[alpha], s = 65536 - t;
        for (std::uint32_t v = 0; v < 65536; ++v) {
            const std::uint32_t red5 = v >> 11, green6 = v >> 5 & 63, blue5 = v & 31;
            const std::uint32_t red = (red5 << 3 | red5 >> 2) * s + 0x8000 + std::uint8_t(v + 9) * t;
            const std::uint32_t green = (green6 << 2 | green6 >> 4) * s + 0x8000 + std::uint8_t(v >> 5) * t;
            const std::uint32_t blue = (blue5 << 3 | blue5 >> 2) * s + 0x8000 + std::uint8_t(v * 3) * t;
            ASSERT_EQ(destination.At(v & 0xFF, v >> 8), (red >> 19) << 11 | (green >> 18) << 5 | blue >> 19)
                << "value " << v << " alpha " << alpha;
        }
        if (alpha == 0) {
            EXPECT_EQ(destination.At(0xEF, 0xBE), 0xBEEF) << "a see-through source changes nothing";
        }
    }
}
