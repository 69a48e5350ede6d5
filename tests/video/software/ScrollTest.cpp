#include "tests/video/software/SampleImages.h"
#include "tests/video/software/SoftwareFixture.h"
#include "video/Resampling.h"
#include "video/software/PlainResampling.h"

namespace Quorvex::Platform::Video::Software {

namespace {

using Mode = EnumResamplingMode;

class ScrollTest : public SoftwareFixture {
protected:
    static constexpr std::int32_t width = 31, height = 23;

    ScrollTest() { renderer->SetSize(width, height); }

    /// Draws frame after frame while the rectangle wanders, and compares each with the plain programs alone.
    void Wander(const SharedPtr<Data::ImageBase>& image, ImageRect rect) {
        // All eight directions, by a little, by all but the last column or row, and by the whole window.
        static constexpr std::pair<std::int32_t, std::int32_t> moves[] = {{0, 0}, {-3, 0},   {2, 0},    {0, -1},
                                                                          {0, 5}, {-7, -4},  {6, -9},   {-5, 8},
                                                                          {4, 3}, {30, -22}, {-30, 22}, {31, 2}};
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
            RenderPlain({wanted.data(), width, height}, *image, rect, {0, 0, width, height});
            const SharedPtr<Renderer::Lock> lock = renderer->LockColorBuffer();
            const auto* const drawn = reinterpret_cast<const Color*>(lock->ReadBits());
            const auto different = std::mismatch(wanted.begin(), wanted.end(), drawn).first - wanted.begin();
            ASSERT_EQ(different, width * height) << "moved by " << dx << ", " << dy;
        }
    }
};

} // namespace

TEST_F(ScrollTest, EveryTypeModeTurnAndMirroringMovesLikeAPlainRedraw) {
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
                    ASSERT_NO_FATAL_FAILURE(Wander(image, rect));
                }
    }
}

} // namespace Quorvex::Platform::Video::Software
