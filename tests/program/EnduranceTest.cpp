#include "tests/program/ProgramFixture.h"
#include "tests/support/FakeCodec.h"

#include <filesystem>
#include <random>

using namespace Quorvex;
using namespace Quorvex::App;
using namespace Quorvex::App::Test;

// The whole program for a long while: no leak (the sanitizer tells at the end), no hang, no lost message.

namespace {

/// A file of one of the kinds that a user may come across, under a name that comes again and again.
class FileMaker {
public:
    explicit FileMaker(Quorvex::Test::TemporaryFolder& target) : folder(target) {}

    String Make(int number) {
        const std::string name = "file" + std::to_string(number % 23) + (number % 7 == 0 ? ".fake" : ".bmp");
        const std::string bytes = MakeBitmap(1 + number % 40, 1 + number % 33);
        switch (number % 6) {
        case 0:
            folder.Write(name, bytes.substr(0, bytes.size() / 2));
            break;
        case 1:
            folder.Write(name, bytes.substr(0, 20));
            break;
        case 2:
            std::filesystem::remove(folder.Path() / name);
            break;
        case 3:
            folder.Write(name, "FAKE count=3");
            break;
        default:
            folder.Write(name, bytes);
        }
        return folder.PathOf(name);
    }

private:
    Quorvex::Test::TemporaryFolder& folder;
};

} // namespace

TEST_F(ProgramTest, OpensFiveHundredFilesInARow) {
    FakeCodec codec;
    FileMaker files(folder);
    int shown = 0;
    int explained = 0;
    for (int i = 0; i < 500; ++i) {
        Open(files.Make(i));
        ASSERT_TRUE(View().HasImage() || !LabelText().empty()) << "file " << i;
        (View().HasImage() ? shown : explained) += 1;
        ASSERT_LE(Application().GetImageManager().GetSlotCount(), 6u);
    }
    EXPECT_GT(shown, 200);
    EXPECT_GT(explained, 100);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(ProgramTest, OutlastsAStormOfSizes) {
    Open(Write("a.bmp", MakeBitmap(64, 48)));
    std::mt19937 random(3);
    std::uniform_int_distribution<std::int32_t> size(1, 900);
    for (int i = 0; i < 100; ++i) {
        const std::int32_t width = size(random);
        const std::int32_t height = size(random);
        user.Place(Window(), {i, i, i + width, i + height});
        if (i % 10 == 0)
            Settle();
    }
    Resize(128, 96);
    ExpectMagnified(64, 48, 2);
}

TEST_F(ProgramTest, ZoomsToBothLimitsAndBackAgainAndAgain) {
    Open(Write("a.bmp", MakeBitmap(64, 48)));
    Resize(301, 203);
    for (int i = 0; i < 4; ++i) {
        TurnWheel(100);
        TurnWheel(-100);
    }
    TurnWheel(32);
    ExpectMagnified(64, 48, 1);
}

TEST_F(ProgramTest, DragsOutOfTheWindowAndBack) {
    Open(Write("a.bmp", MakeBitmap(64, 48)));
    Resize(301, 203);
    ZoomTo100Percent();
    const Quorvex::View::ViewTransform before = View().GetTransform();
    user.MoveMouse(150, 100);
    user.PressLeft();
    for (const auto& [x, y] : {std::pair{-900, 100}, {150, 2000}, {1900, -50}, {160, 103}}) {
        user.MoveMouse(x, y);
        Settle();
        ExpectMagnified(64, 48, 1);
    }
    user.ReleaseLeft();
    Settle();
    EXPECT_NEAR(View().GetTransform().scrollX, before.scrollX - 10, 1e-9) << "sums of the way round differently";
    EXPECT_NEAR(View().GetTransform().scrollY, before.scrollY - 3, 1e-9);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(ProgramTest, EndsTwentyTimesWhileLoadsRun) {
    for (int i = 0; i < 20; ++i) {
        Application().OpenFile(Write("a" + std::to_string(i) + ".bmp", MakeBitmap(200, 200)), {});
        frame.reset(); // Waits for the worker, whose message then finds no window.
        frame = std::make_unique<VarnoliteMainFrame>(system);
        frame->Open();
        Settle();
    }
    EXPECT_EQ(log.Text(), "");
}
