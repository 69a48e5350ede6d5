#include "tests/video/software/SampleImages.h"
#include "tests/video/software/SoftwareFixture.h"
#include "video/Resampling.h"
#include "video/software/PlainResampling.h"

namespace Quorvex::Platform::Video::Software {

namespace {

using Mode = EnumResamplingMode;

struct Move {
    std::int32_t dx;
    std::int32_t dy;
};

class ScrollTest : public SoftwareFixture {
protected:
    /// Draws frame after frame while the rectangle wanders, and compares each with the plain programs alone.
    void Wander(const SharedPtr<Data::ImageBase>& image, ImageRect rect, std::span<const Move> moves) {
        const std::uint32_t width = renderer->GetWidth(), height = renderer->GetHeight();
        Resampling resampling;
        shown.CreateFromMemory(context, image);
        for (const auto& [dx, dy] : moves) {
            rect.x0 += dx;
            rect.x1 += dx;
            rect.y0 += dy;
            rect.y1 += dy;
            renderer->BeginPaint();
            resampling.Draw(*renderer, shown, rect);
            rect.unchanged = true;
            std::vector<Color> wanted(std::size_t{width} * height);
            const PixelTarget target{wanted.data(), width, height};
            RenderPlain(target, *image, rect, target.Whole());
            const SharedPtr<Renderer::Lock> lock = renderer->LockColorBuffer();
            const auto* const drawn = reinterpret_cast<const Color*>(lock->ReadBits());
            const auto first = std::mismatch(wanted.begin(), wanted.end(), drawn).first - wanted.begin();
            ASSERT_EQ(std::size_t(first), wanted.size())
                << "moved by " << dx << ", " << dy << ": other at " << first % width << ", " << first / width;
        }
    }
};

} // namespace

TEST_F(ScrollTest, EveryTypeModeTurnAndMirroringMovesLikeAPlainRedraw) {
    renderer->SetSize(31, 23);
    // All eight directions, by a little, by all but the last column or row, and by the whole window.
    static constexpr Move moves[] = {{0, 0},  {-3, 0}, {2, 0}, {0, -1},   {0, 5},    {-7, -4},
                                     {6, -9}, {-5, 8}, {4, 3}, {30, -22}, {-30, 22}, {31, 2}};
    for (std::uint32_t type = 0; type < Data::ColorTypeEnum::Count; ++type) {
        const auto image = MakeRandomImage(Data::ColorTypeEnum::Value(type), 65, 33, type + 1);
        for (const Mode mode : {Mode::Cubic, Mode::Linear, Mode::Nearest, Mode::Area})
            for (const std::int32_t rotation : {0, 90, 180, 270})
                for (std::uint32_t mirror = 0; mirror < 4; ++mirror) {
                    ImageRect rect;
                    rect.x0 = mirror & 1 ? 26 : -17;
                    rect.x1 = 26 - 17 - rect.x0;
                    rect.y0 = mirror & 2 ? 34 : -13;
                    rect.y1 = 34 - 13 - rect.y0;
                    rect.mode = mode;
                    rect.rotation = rotation;
                    SCOPED_TRACE(testing::Message() << "type " << type << " mode " << int(mode) << " rotation "
                                                    << rotation << " mirrored " << mirror);
                    ASSERT_NO_FATAL_FAILURE(Wander(image, rect, moves));
                }
    }
}

TEST_F(ScrollTest, ALargeWindowMovesLikeAPlainRedrawOnSeveralThreads) {
    renderer->SetSize(701, 397);
    static constexpr Move moves[] = {{0, 0}, {3, 0}, {-5, 0}, {1, 0}, {-1, 0}, {4, -3}, {0, 3}};
    const auto image = MakeRandomImage(Data::ColorTypeEnum::BGRAUInt8, 371, 213);
    ImageRect rect;
    rect.x0 = -20;
    rect.y0 = -10;
    rect.x1 = 722;
    rect.y1 = 416;
    for (const Mode mode : {Mode::Nearest, Mode::Linear}) {
        rect.mode = mode;
        SCOPED_TRACE(testing::Message() << "mode " << int(mode));
        ASSERT_NO_FATAL_FAILURE(Wander(image, rect, moves));
    }
}

} // namespace Quorvex::Platform::Video::Software
