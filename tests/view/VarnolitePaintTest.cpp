#include "tests/view/VarnoliteFixture.h"

#include <set>

using namespace Quorvex;
using namespace Quorvex::View;

namespace {

class VarnolitePaintTest : public VarnoliteFixture {
protected:
    void Paint() {
        gui.Invalidate();
        VarnoliteFixture::Paint();
    }
    /// 20 x 10 pixels: the left half of level 10, the right half of 200.
    static SharedPtr<Data::ImageBase> MakeHalves() {
        SharedPtr<Data::ImageBase> image = Data::CreateImage(Data::ColorTypeEnum::UInt8, 20, 10);
        const auto pixels = image->LockUInt8(Data::LockMode::ReadWrite);
        for (std::uint32_t y = 0; y < 10; ++y)
            for (std::uint32_t x = 0; x < 20; ++x)
                pixels(x, y) = x < 10 ? 10 : 200;
        return image;
    }
    /// Blue of a pixel of the window.
    std::uint32_t ShownLevel(std::size_t x, std::size_t y) {
        const GUI::ShownPicture& picture = system.GetWindows().front()->GetPicture();
        return picture.bits.at((y * picture.width + x) * 4);
    }
    /// Rows in which something has another colour than the window's first pixel.
    std::set<std::uint32_t> InkRows() {
        const GUI::ShownPicture& picture = system.GetWindows().front()->GetPicture();
        std::set<std::uint32_t> rows;
        for (std::size_t i = 0; i < picture.bits.size(); ++i)
            if (picture.bits[i] != picture.bits[i % 4])
                rows.insert(static_cast<std::uint32_t>(i / 4 / picture.width));
        return rows;
    }
};

} // namespace

TEST_F(VarnolitePaintTest, PaintsImageThenValuesThenRulerBlendedAsEachNeeds) {
    std::vector<std::string> record;
    RecordingOverlay values("values", record, gui);
    RecordingOverlay ruler("ruler", record, gui);
    view.SetOverlays(&values, &ruler);
    view.SetRGBOverlayVisible(true);
    view.SetRulerVisible(true);
    Show(20, 10);
    Paint();
    EXPECT_EQ(record, (std::vector<std::string>{"values opaque", "ruler blended"}));
    EXPECT_EQ(values.userImage, shownImage);
    EXPECT_EQ(ruler.imageRect.x0, values.imageRect.x0);
    EXPECT_DOUBLE_EQ(ruler.scale, 1 / view.GetTransform().inverseZoom);
    EXPECT_EQ(ruler.rect, (GUI::Rect{0, 0, 200, 150}));
    record.clear();
    Show(20, 10, true);
    Paint();
    EXPECT_EQ(record, (std::vector<std::string>{"values blended", "ruler blended"}));
    view.SetOverlays(nullptr, nullptr);
}

TEST_F(VarnolitePaintTest, TellsTheResamplingWhetherTheImageIsTheOneOfTheLastPaint) {
    std::vector<std::string> record;
    RecordingOverlay values("values", record, gui);
    view.SetOverlays(&values, nullptr);
    view.SetRGBOverlayVisible(true);
    Show(20, 10);
    Paint();
    EXPECT_FALSE(values.imageRect.unchanged);
    EXPECT_TRUE(values.imageRect.prepared);
    gui.Invalidate();
    Paint();
    EXPECT_TRUE(values.imageRect.unchanged);
    view.SetOverlays(nullptr, nullptr);
}

TEST_F(VarnolitePaintTest, ClipsTheRectangleToTheView) {
    std::vector<std::string> record;
    RecordingOverlay values("values", record, gui);
    view.SetOverlays(&values, nullptr);
    view.SetRGBOverlayVisible(true);
    Show(1000, 10);
    view.SetZoom(1.0);
    Paint();
    EXPECT_EQ(values.imageRect.x0, -400);
    EXPECT_EQ(values.imageRect.clipX0, 0);
    EXPECT_EQ(values.imageRect.clipX1, 200);
    EXPECT_EQ(values.imageRect.clipY0, 70);
    EXPECT_EQ(values.imageRect.clipY1, 80);
    view.SetOverlays(nullptr, nullptr);
}

TEST_F(VarnolitePaintTest, DrawsAgainAfterItsContextObjectsWereDeleted) {
    Show(20, 10);
    Paint();
    EXPECT_TRUE(view.DeleteContextObjects());
    gui.Invalidate();
    Paint();
    const auto& picture = system.GetWindows().front()->GetPicture();
    EXPECT_EQ(picture.bits.at((75 * 200 + 100) * 4), 77);
}

TEST_F(VarnolitePaintTest, ShowsADragPastTheLimitAtTheLimit) {
    std::vector<std::string> record;
    RecordingOverlay values("values", record, gui);
    view.SetOverlays(&values, nullptr);
    view.SetRGBOverlayVisible(true);
    Show(100, 100);
    view.SetZoom(1.0);
    view.OnMouseLButtonDown(50, 50);
    for (const std::int32_t x : {1050, 2050, 1000}) {
        view.OnMouseMove(x, 50);
        Paint();
        EXPECT_EQ(values.imageRect.x0, 150) << "50 pixels stay inside of 200";
        EXPECT_EQ(values.imageRect.y0, 25);
    }
    view.OnMouseMove(60, 50);
    Paint();
    EXPECT_EQ(values.imageRect.x0, 60) << "it moves again once the mouse has come back";
    view.OnMouseLButtonUp(60, 50);
    view.SetOverlays(nullptr, nullptr);
}

TEST_F(VarnolitePaintTest, MirrorsAnImageOfANegativePixelSize) {
    const auto image = MakeHalves();
    image->PixelScaleX = -1.0;
    ShowImage(image);
    view.GetResampling().mode = Platform::Video::EnumResamplingMode::Nearest;
    view.SetZoom(1.0);
    Paint();
    for (std::uint32_t x = 90; x < 110; ++x)
        EXPECT_EQ(ShownLevel(x, 75), x < 100 ? 200 : 10) << x;
}

TEST_F(VarnolitePaintTest, BlendsAnImageWithAlphaOverTheBackgroundAndNoOther) {
    panel->SetBackgroundColor({1.0f, 1.0f, 1.0f, 1.0f});
    Show(20, 10, true);
    Paint();
    // 77 of 255 over white, as weights of 65536.
    const std::uint32_t weight = (77 * 65536 + 127) / 255;
    EXPECT_EQ(ShownLevel(100, 75), (255 * (65536 - weight) + 0x8000 + 77 * weight) >> 16);
    Show(20, 10, false);
    Paint();
    EXPECT_EQ(ShownLevel(100, 75), 77);
}

TEST_F(VarnolitePaintTest, PaintsNothingWhileItIsInvisible) {
    std::vector<std::string> record;
    RecordingOverlay ruler("ruler", record, gui);
    view.SetOverlays(nullptr, &ruler);
    view.SetRulerVisible(true);
    Show(20, 10);
    view.SetVisible(false);
    view.Paint();
    EXPECT_TRUE(record.empty());
    view.SetOverlays(nullptr, nullptr);
}

TEST_F(VarnolitePaintTest, ShowsItsTextOnlyWhileThereIsNoImageAndOnlyIfThereIsOne) {
    panel->SetBackgroundColor({0.2f, 0.2f, 0.2f, 1.0f});
    Paint();
    EXPECT_EQ(InkRows(), (std::set<std::uint32_t>{})) << "no text";
    view.SetLabelText({"Text", "Text"});
    Paint();
    EXPECT_FALSE(InkRows().empty());
    Show(200, 150);
    view.GetResampling().mode = Platform::Video::EnumResamplingMode::Nearest;
    Paint();
    EXPECT_EQ(InkRows(), (std::set<std::uint32_t>{})) << "an image of one colour";
    view.SetImage({}, {});
    Paint();
    EXPECT_FALSE(InkRows().empty());
}

TEST_F(VarnolitePaintTest, PutsItsTextIntoTheMiddleRows) {
    panel->SetBackgroundColor({0.2f, 0.2f, 0.2f, 1.0f});
    view.SetLabelText({"Text", "Text"});
    for (const std::int32_t height : {150, 151, 40}) {
        panel->SetRect(100, 50, 300, 50 + height);
        Paint();
        const std::set<std::uint32_t> rows = InkRows();
        const auto half = static_cast<std::uint32_t>(height / 2);
        ASSERT_FALSE(rows.empty());
        EXPECT_GE(*rows.begin(), half - 7) << height;
        EXPECT_LT(*rows.rbegin(), half + 7) << height;
    }
}

TEST_F(VarnolitePaintTest, WritesInBlackFromAMeanOf73PercentOn) {
    view.SetLabelText({"Text", "Text"});
    for (const auto& [background, isBlack] : {std::pair{Data::ColorBGRA<float>{0.72f, 0.72f, 0.72f, 1.0f}, false},
                                              {{0.74f, 0.74f, 0.74f, 1.0f}, true},
                                              {{1.0f, 0.2f, 0.98f, 1.0f}, false},
                                              {{0.2f, 1.0f, 1.0f, 1.0f}, true}}) {
        panel->SetBackgroundColor(background);
        Paint();
        // Green alone: a tint darkens alpha by a level, so that black ink lets a trace of the background through.
        int white = 0, black = 0;
        const auto& picture = system.GetWindows().front()->GetPicture();
        for (std::size_t i = 1; i < picture.bits.size(); i += 4) {
            white += picture.bits[i] >= 254;
            black += picture.bits[i] <= 1;
        }
        const int ink = isBlack ? black : white;
        EXPECT_GT(ink, 10) << background.green;
        EXPECT_LT(ink, 200 * 150 / 2) << background.green;
        EXPECT_EQ(isBlack ? 0 : black, 0) << background.green;
    }
}

TEST(VarnoliteRelease, ReportsWhatCannotBeReleasedAndStillAsksTheOthers) {
    const Quorvex::Test::LogCapture log;
    GUI::Test::Calls calls;
    GUI::Test::RecordingControl stubborn("stubborn", calls), other("other", calls);
    stubborn.canRelease = false;
    Varnolite view;
    view.add(stubborn);
    view.add(other);
    EXPECT_FALSE(view.DeleteContextObjects());
    EXPECT_EQ(calls, (GUI::Test::Calls{"stubborn.Delete", "other.Delete"}));
    EXPECT_TRUE(log.HasLineEndingIn("Varnolite::DeleteContextObjects")) << log.Text();
}
