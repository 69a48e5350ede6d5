#include "tests/video/software/SoftwareFixture.h"

namespace Quorvex::Platform::Video::Software {

namespace {

constexpr Color clear{};
constexpr Color red{0, 0, 255, 255};

class QuadTest : public SoftwareFixture {};

bool IsInside(std::uint32_t x, std::uint32_t y, std::uint32_t x0, std::uint32_t y0, std::uint32_t x1,
              std::uint32_t y1) {
    return x >= x0 && x < x1 && y >= y0 && y < y1;
}

TEST_F(QuadTest, CoversItsIntegerCornersExactly) {
    Draw({10, 20, 30, 40}, red);
    ExpectPixels([](auto x, auto y) { return IsInside(x, y, 10, 20, 30, 40) ? red : clear; });
}

TEST_F(QuadTest, WritesNoPixelTwice) {
    const Color half{0, 0, 255, 128};
    renderer->EnableBlending();
    for (const Quad quad : {Quad{10, 20, 30, 40}, Quad{3, 1, 4, 48}, Quad{40, 2, 63, 5}, Quad{31, 30, 32, 31}})
        Draw(quad, half);
    const Color once = Blend(half, clear);
    ExpectPixels([&](auto x, auto y) {
        const bool inside = IsInside(x, y, 10, 20, 30, 40) || IsInside(x, y, 3, 1, 4, 48) ||
                            IsInside(x, y, 40, 2, 63, 5) || IsInside(x, y, 31, 30, 32, 31);
        return inside ? once : clear;
    });
}

TEST_F(QuadTest, CoversEverySizeOnceInEveryOrderOfCorners) {
    renderer->EnableBlending();
    const Color half{255, 255, 255, 128};
    const Color once = Blend(half, clear);
    for (std::int32_t width = 1; width < 40; width += 3)
        for (std::int32_t height = 1; height < 30; height += 4)
            for (int mirror = 0; mirror < 4; ++mirror) {
                renderer->BeginPaint();
                Quad quad{5, 7, 5 + width, 7 + height};
                if (mirror & 1)
                    std::swap(quad.x0, quad.x1);
                if (mirror & 2)
                    std::swap(quad.y0, quad.y1);
                Draw(quad, half);
                SCOPED_TRACE(testing::Message() << width << " x " << height << ", mirrored " << mirror);
                ExpectPixels([&](auto x, auto y) {
                    const auto w = static_cast<std::uint32_t>(width);
                    const auto h = static_cast<std::uint32_t>(height);
                    return IsInside(x, y, 5, 7, 5 + w, 7 + h) ? once : clear;
                });
            }
}

} // namespace

} // namespace Quorvex::Platform::Video::Software
