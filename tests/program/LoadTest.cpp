#include "app/Entry.h"
#include "tests/program/ProgramFixture.h"
#include "tests/support/FakeCodec.h"
#include "tests/support/ListOfPaths.h"
#include "video/VertexBuffer2D.h"

#include <filesystem>

using namespace Quorvex;
using namespace Quorvex::App;
using namespace Quorvex::App::Test;

// What becomes of a file that is opened: the picture, the warnings, or the reason why there is none.

namespace {

class LoadTest : public ProgramTest {
protected:
    ~LoadTest() override { codec.Release(); }

    std::string StatusText() {
        const GUI::Label& status = Application().GetStatusLabel();
        return status.IsVisible() ? status.GetText().ToUTF8().ToStdString() : "";
    }

    FakeCodec codec;
};

} // namespace

TEST_F(LoadTest, OpensWithNothingLoadedWithoutAnArgument) {
    EXPECT_EQ(Application().GetCurrentSlot(), nullptr);
    EXPECT_FALSE(Application().GetCurrentImage());
    EXPECT_EQ(LabelText(), "");
}

TEST_F(LoadTest, RaisesForOpenFileWithoutAWindow) {
    SharedPtr<VarnoliteApplication> application(new VarnoliteApplication());
    EXPECT_THROW(application->OpenFile(Write("a.bmp", MakeBitmap(2, 2)), {}), Exception);
}

TEST_F(LoadTest, ExplainsAFileThatIsNotThereAndGoesOn) {
    Open(folder.PathOf("missing.bmp"));
    EXPECT_EQ(LabelText(), "The file could not be opened.");
    EXPECT_TRUE(Title().ends_with("missing.bmp"));
    Open(Write("a.bmp", MakeBitmap(32, 32)));
    ExpectMagnified(32, 32, 24);
}

TEST_F(LoadTest, ShowsTheReasonInPlaceOfABrokenFile) {
    Open(Write("a.bmp", MakeBitmap(32, 32)));
    std::string bytes = MakeBitmap(4, 4);
    bytes[30] = 7; // biCompression
    Open(Write("b.bmp", bytes));
    EXPECT_EQ(LabelText(), "The file could not be opened. Internal message: invalid compression");
    EXPECT_FALSE(View().HasImage());
    EXPECT_TRUE(Title().ends_with("b.bmp"));
    EXPECT_EQ(Application().GetImageIndexFields().index.ToStdString(), "");
    EXPECT_EQ(Application().GetImageIndexFields().slash.ToStdString(), "");
    EXPECT_EQ(Application().GetImageIndexFields().count.ToStdString(), "");
    const Pixel background{138, 136, 136, 255};
    int textPixels = 0;
    for (std::int32_t x = 0; x < 1024; ++x)
        for (std::int32_t y = 0; y < 768; ++y)
            textPixels += ShownPixel(x, y) == background ? 0 : 1;
    EXPECT_GT(textPixels, 100) << "the text stands in the window";
}

TEST_F(LoadTest, ShowsNothingOfABitmapWithoutPixelsAndGoesOn) {
    const Pixel background{138, 136, 136, 255};
    for (const auto& [width, height] : {std::pair(0, 0), std::pair(0, 5), std::pair(5, 0)}) {
        Open(Write("a.bmp", MakeBitmap(32, 32)));
        Open(Write("b.bmp", MakeBitmap(width, height)));
        EXPECT_TRUE(Title().ends_with("b.bmp"));
        EXPECT_TRUE(ShownPixel(512, 384) == background) << width << " x " << height;
        TurnWheel(3);
        user.MoveMouse(500, 300);
        Resize(600, 400);
        EXPECT_TRUE(ShownPixel(300, 200) == background) << width << " x " << height;
        Resize(1024, 768);
        EXPECT_EQ(log.Text(), "") << width << " x " << height;
    }
    Open(Write("c.bmp", MakeBitmap(32, 32)));
    ExpectMagnified(32, 32, 24);
}

TEST_F(LoadTest, TellsThatMemoryRanOutAndGoesOn) {
    Open(Write("a.fake", "FAKE memory"));
    EXPECT_EQ(LabelText(), "The file could not be opened: Not enough memory!");
    Open(Write("b.fake", "FAKE"));
    EXPECT_TRUE(View().HasImage());
}

TEST_F(LoadTest, EndsWithAFullStopWhereTheFailureSaysNothing) {
    Open(Write("a.fake", "FAKE silent"));
    EXPECT_EQ(LabelText(), "The file could not be opened.");
}

TEST_F(LoadTest, SpeaksGermanToAGerman) {
    SetLanguage(Locale::EnumLanguage::German);
    Open(Write("a.fake", "FAKE memory"));
    EXPECT_EQ(LabelText(), "Die Datei konnte nicht geöffnet werden: Nicht genügend Speicher!");
    SetLanguage(Locale::EnumLanguage::Automatic);
}

TEST_F(LoadTest, WarnsOfAnIncompleteImageAndMakesRoomForTheWarning) {
    const std::string bytes = MakeBitmap(64, 64);
    Open(Write("a.bmp", bytes.substr(0, bytes.size() / 2)));
    EXPECT_EQ(StatusText(), "Attention: This image could not be loaded completely!");
    EXPECT_EQ(Application().GetStatusLabel().GetRect(), (GUI::Rect{0, 0, 1024, 20}));
    EXPECT_EQ(View().GetRect(), (GUI::Rect{0, 20, 1024, 768}));
}

TEST_F(LoadTest, WarnsOfAWrongExtension) {
    Open(Write("a.fake", MakeBitmap(8, 8)));
    EXPECT_EQ(StatusText(), "Attention: This file has a wrong filename extension!");
    EXPECT_TRUE(View().HasImage());
}

TEST_F(LoadTest, LetsTheExtensionTextStandWhenBothHold) {
    const std::string bytes = MakeBitmap(64, 64);
    Open(Write("a.fake", bytes.substr(0, bytes.size() / 2)));
    EXPECT_EQ(StatusText(), "Attention: This file has a wrong filename extension!");
}

TEST_F(LoadTest, HidesTheWarningWithTheNextFile) {
    Open(Write("a.fake", MakeBitmap(8, 8)));
    Open(Write("b.bmp", MakeBitmap(8, 8)));
    EXPECT_EQ(StatusText(), "");
    EXPECT_EQ(View().GetRect(), (GUI::Rect{0, 0, 1024, 768}));
}

TEST_F(LoadTest, HidesTheSliderForOneImageAndShowsItForTwo) {
    Open(Write("a.fake", "FAKE"));
    EXPECT_FALSE(Application().GetImageIndexFields().isSliderVisible);
    EXPECT_EQ(Application().GetImageIndexFields().sliderMaximum, 1);
    Open(Write("b.fake", "FAKE count=2"));
    EXPECT_TRUE(Application().GetImageIndexFields().isSliderVisible);
    EXPECT_EQ(Application().GetImageIndexFields().sliderMaximum, 2);
    EXPECT_EQ(Application().GetImageIndexFields().index.ToStdString(), "1");
    EXPECT_EQ(Application().GetImageIndexFields().slash.ToStdString(), "/");
    EXPECT_EQ(Application().GetImageIndexFields().count.ToStdString(), "2");
}

TEST_F(LoadTest, ResetsTheViewForAnotherFile) {
    Open(Write("a.bmp", MakeBitmap(8, 8)));
    ZoomTo100Percent();
    View().SetRotation(90);
    Open(Write("b.bmp", MakeBitmap(8, 8)));
    EXPECT_TRUE(View().IsFitToWindow());
    EXPECT_EQ(View().GetTransform().rotation, 0);
    EXPECT_EQ(View().GetTransform().scrollX, 0);
}

TEST_F(LoadTest, KeepsTheViewForAnotherImageOfTheFile) {
    const String path = Write("a.fake", "FAKE count=3");
    Open(path);
    View().SetZoom(0.25);
    ImageRequest key = Application().GetCurrentSlot()->GetRequest();
    key.requestedImage = 2;
    Application().GetImageManager().Request(key, true);
    Settle();
    EXPECT_EQ(Application().GetCurrentSlot()->GetLoadedImage(), 2u);
    EXPECT_EQ(View().GetTransform().inverseZoom, 0.25);
    EXPECT_FALSE(View().IsFitToWindow());
}

TEST_F(LoadTest, ResetsTheViewForTheSameImageAgain) {
    const String path = Write("a.bmp", MakeBitmap(8, 8));
    Open(path);
    View().SetZoom(0.25);
    Open(path);
    EXPECT_TRUE(View().IsFitToWindow());
}

TEST_F(LoadTest, TurnsTheViewAsTheOrientationOfTheFileAsks) {
    // By the number of the orientation, from 1; the mirrored ones are shown as stored.
    const std::int32_t rotations[] = {0, 0, 180, 0, 0, 270, 0, 90};
    for (int number = 1; number <= 8; ++number) {
        const std::string digit = std::to_string(number);
        Open(Write("a" + digit + ".fake", "FAKE orientation=" + digit));
        EXPECT_EQ(View().GetTransform().rotation, rotations[number - 1]) << number;
        EXPECT_TRUE(View().IsFitToWindow());
    }
}

TEST_F(LoadTest, ReportsASlotWhoseCountIsWrongAndShowsIt) {
    const String path = Write("a.bmp", MakeBitmap(8, 8));
    Open(path);
    ImageManager& manager = Application().GetImageManager();
    ImageSlot& slot = manager.Request(Application().GetCurrentSlot()->GetRequest(), true);
    ++slot.GetCounterRef();
    Settle();
    EXPECT_TRUE(log.HasLineEndingIn("LoadFile: g_CurrentImageSlot->GetCounterRef()!=2 failed with error code 3"))
        << log.Text();
    EXPECT_TRUE(View().HasImage());
    --slot.GetCounterRef();
}

TEST_F(LoadTest, CountsTheCurrentSlotAsItShould) {
    const String path = Write("a.bmp", MakeBitmap(8, 8));
    for (int i = 0; i < 3; ++i)
        Open(path);
    Open(Write("b.bmp", MakeBitmap(8, 8)));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(LoadTest, RequestsTheImageUnderTheSliderThatWasMovedDuringTheLoad) {
    Application().GetImageManager().SetFileListFactory(
        [](const String& path) { return SharedPtr<FileList>(new ListOfPaths({path})); });
    Application().OpenFile(Write("a.fake", "FAKE count=5 hold"), {});
    Application().GetImageIndexFields().isSliderInSync = false;
    Application().GetImageIndexFields().sliderTarget = 4.3;
    codec.Release();
    Settle();
    EXPECT_EQ(Application().GetCurrentSlot()->GetLoadedImage(), 4u);
    EXPECT_TRUE(Application().GetImageIndexFields().isSliderInSync);
}

TEST_F(LoadTest, IgnoresARequestThatComesDuringAForegroundLoad) {
    Application().OpenFile(Write("a.fake", "FAKE count=5 hold"), {});
    EXPECT_TRUE(Application().GetImageManager().IsBusy());
    codec.Release();
    Settle();
    EXPECT_FALSE(Application().GetImageManager().IsBusy());
}

TEST_F(LoadTest, EndsWhileALoadRuns) {
    Application().OpenFile(Write("a.fake", "FAKE hold"), {});
    codec.Release();
    frame.reset();
    EXPECT_EQ(log.Text(), "");
}

TEST_F(LoadTest, EndsByItsCloseButton) {
    Open(Write("a.bmp", MakeBitmap(8, 8)));
    user.Close(Window());
    EXPECT_EQ(frame->Run(), 0);
    frame.reset();
    EXPECT_EQ(log.Text(), "");
}

TEST_F(LoadTest, ReportsAnObjectThatKeepsTheContextBeyondTheEnd) {
    auto quads = frame->GetContext()->CreateVertexBuffer2D(1);
    user.Close(Window());
    frame->Run();
    EXPECT_TRUE(log.HasLineEndingIn("Context not null")) << log.Text();
    quads.reset();
}

TEST(Entry, RunsFromTheWindowToTheExitCode) {
    Quorvex::Test::LogCapture log;
    Quorvex::Test::TemporaryFolder folder;
    folder.Write("a.bmp", MakeBitmap(4, 4));
    GUI::HeadlessWindowSystem system;
    std::string title;
    system.SetIdleHook([&] {
        // The load is a thread's work: its message comes before the first idle moment or some time after it.
        if (system.GetWindows().empty())
            return;
        title = system.GetWindows().front()->GetTitle().ToUTF8().ToStdString();
        if (title.ends_with("a.bmp"))
            system.PostQuit(5);
    });
    EXPECT_EQ(RunMainFrame(system, [&] { return std::optional<String>(folder.PathOf("a.bmp")); }), 5);
    EXPECT_TRUE(title.ends_with("a.bmp")) << title;
    EXPECT_TRUE(log.IsEmpty());
}

TEST(Entry, EndsQuietlyWithZeroWhenTheWindowIsRefused) {
    Quorvex::Test::LogCapture log;
    GUI::HeadlessWindowSystem system;
    system.Desktop().refusesWindows = true;
    EXPECT_EQ(RunMainFrame(system, [] { return std::optional<String>(); }), 0);
}

TEST(Entry, EndsCleanlyWhenTheDisplayGoes) {
    Quorvex::Test::LogCapture log;
    GUI::HeadlessWindowSystem system;
    system.SetIdleHook([&] { system.LoseDisplay(); });
    EXPECT_EQ(RunMainFrame(system, [] { return std::optional<String>(); }), 0);
    EXPECT_TRUE(log.IsEmpty()) << log.Text();
}
