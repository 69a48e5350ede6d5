#include "data/FileStream.h"
#include "tests/program/ProgramFixture.h"
#include "tests/support/FakeCodec.h"
#include "tests/support/ListOfPaths.h"

using namespace Quorvex;
using namespace Quorvex::App;
using namespace Quorvex::App::Test;

// What is decoded ahead of the user, and what becomes of it.

namespace {

class PrefetchTest : public ProgramTest {
protected:
    PrefetchTest() {
        Application().GetImageManager().SetFileListFactory(
            [](const String& path) { return SharedPtr<FileList>(new ListOfPaths({path})); });
    }
    ~PrefetchTest() override { codec.Release(); }

    ImageManager& Manager() { return Application().GetImageManager(); }

    /// The slot that was requested ahead for that image of the current file, once its result lies ready.
    ImageSlot& AwaitAhead(std::int32_t image) {
        ImageRequest key = Application().GetCurrentSlot()->GetRequest();
        key.requestedImage = image;
        key.action = PrefetchAction::Nothing;
        ImageSlot& slot = Manager().Request(key, false);
        EXPECT_NE(slot.GetRequest().action, key.action) << "image " << image << " was not requested before";
        while (!slot.IsFinished())
            system.DispatchNextMessage();
        return slot;
    }

    FakeCodec codec;
};

} // namespace

TEST_F(PrefetchTest, FetchesTheNextImageAndTheLastAfterAFileWasOpened) {
    Open(Write("a.fake", "FAKE count=4"));
    const ImageSlot& next = AwaitAhead(2);
    // The list has one file alone: the image before its first is its last.
    const ImageSlot& previous = AwaitAhead(ET::Img::ImageIndex::Last);
    EXPECT_EQ(next.GetLoadedImage(), 2u);
    EXPECT_EQ(previous.GetLoadedImage(), 4u);
    EXPECT_EQ(Application().GetCurrentSlot()->GetLoadedImage(), 1u) << "a result that lies ready shows nothing";
    EXPECT_EQ(Manager().GetSlotCount(), 3u) << "what was fetched ahead fetches nothing itself";
    EXPECT_EQ(log.Text(), "");
}

TEST_F(PrefetchTest, NextAfterItIsDoneStartsNoThreadAndFetchesTheOneAfter) {
    Open(Write("a.fake", "FAKE count=4"));
    const ImageSlot& next = AwaitAhead(2);
    AwaitAhead(ET::Img::ImageIndex::Last);
    const int decoders = codec.DecoderCount();
    Manager().NextImage(*Application().GetCurrentSlot(), true);
    EXPECT_TRUE(Manager().IsBusy());
    Settle();
    EXPECT_EQ(Application().GetCurrentSlot(), &next);
    AwaitAhead(3);
    EXPECT_EQ(codec.DecoderCount(), decoders + 1) << "for the image after it alone";
    EXPECT_EQ(Manager().GetSlotCount(), 4u);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(PrefetchTest, StartsInTheDirectionOfTheStep) {
    Open(Write("a.fake", "FAKE count=9"));
    ImageRequest key = Application().GetCurrentSlot()->GetRequest();
    key.requestedImage = 5;
    Manager().Request(key, true);
    Settle();
    AwaitAhead(6);
    AwaitAhead(4);
    Manager().PrevImage(*Application().GetCurrentSlot(), true);
    Settle();
    EXPECT_EQ(Application().GetCurrentSlot()->GetLoadedImage(), 4u);
    EXPECT_EQ(AwaitAhead(3).GetLoadedImage(), 3u);
}

TEST_F(PrefetchTest, OfAnImageThatTheUserComesToWaitForIsShown) {
    Open(Write("a.fake", "FAKE"));
    const String path = Write("b.fake", "FAKE hold");
    ImageRequest key = Application().GetCurrentSlot()->GetRequest();
    key.path = path;
    key.lastWriteTime = FileStream(path).GetLastWriteTime();
    ImageSlot& ahead = Manager().Request(key, false);
    EXPECT_FALSE(Manager().IsBusy());
    EXPECT_EQ(&Manager().Request(key, true), &ahead);
    codec.Release();
    Settle();
    EXPECT_EQ(Application().GetCurrentSlot(), &ahead);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(PrefetchTest, LeavesASlotThatFailedAheadToTheOneWhoComesForIt) {
    Open(Write("a.fake", "FAKE"));
    const String path = Write("b.fake", "FAKE text=broken");
    ImageRequest key = Application().GetCurrentSlot()->GetRequest();
    key.path = path;
    key.action = PrefetchAction::Nothing;
    key.lastWriteTime = FileStream(path).GetLastWriteTime();
    const ImageSlot& ahead = Manager().Request(key, false);
    while (!ahead.IsFinished())
        system.DispatchNextMessage();
    EXPECT_TRUE(View().HasImage());
    Manager().Request(key, true);
    Settle();
    EXPECT_EQ(LabelText(), "The file could not be opened. Internal message: broken");
}
