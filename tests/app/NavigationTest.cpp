#include "tests/app/ImageManagerFixture.h"

#include <chrono>
#include <filesystem>

using namespace Quorvex;
using namespace Quorvex::App;

namespace {

namespace ImageIndex = ET::Img::ImageIndex;

/// Three files of one, three and two images; the second one is shown.
class NavigationTest : public ImageManagerFixture {
protected:
    /// Shows the given image of the second file.
    ImageSlot& ShowImage(std::int32_t image) {
        ImageSlot& opened = Show(second, list);
        if (image == 1)
            return opened;
        manager.Request(KeyFor(opened, image), true);
        return AwaitForeground();
    }

    void ExpectRequest(const String& path, std::int32_t image, PrefetchAction action) {
        const ImageRequest& request = Await().GetRequest();
        EXPECT_TRUE(request.path == path) << request.path.ToANSI().Narrow();
        EXPECT_EQ(request.requestedImage, image);
        EXPECT_EQ(arrivedAction, action);
    }

    const String first = Write("a.fake", "FAKE");
    const String second = Write("b.fake", "FAKE count=3");
    const String third = Write("c.fake", "FAKE count=2");
    SharedPtr<ListOfPaths> list{new ListOfPaths({first, second, third}, 1)};
};

} // namespace

TEST_F(NavigationTest, StepsByFileToItsDefaultImage) {
    ImageSlot& source = ShowImage(1);
    manager.NextFile(source, false);
    ExpectRequest(third, ImageIndex::Default, PrefetchAction::NextFile);
    manager.PrevFile(source, false);
    ExpectRequest(first, ImageIndex::Default, PrefetchAction::PrevFile);
}

TEST_F(NavigationTest, StepsByImageInsideTheFileWithoutAskingTheList) {
    ImageSlot& source = ShowImage(2);
    manager.NextImage(source, false);
    ExpectRequest(second, 3, PrefetchAction::NextImage);
    manager.PrevImage(source, false);
    EXPECT_EQ(list->previews.size(), 0u);
    EXPECT_EQ(manager.GetSlotCount(), 3u) << "image 1 was there already";
}

TEST_F(NavigationTest, NextImageOfTheLastOpensTheNextFileAtItsFirst) {
    manager.NextImage(ShowImage(3), false);
    ExpectRequest(third, 1, PrefetchAction::NextImage);
}

TEST_F(NavigationTest, PreviousImageOfTheFirstOpensThePreviousFileAtItsLast) {
    list->current = 0; // The file before the first one is the last one of the folder.
    ImageSlot& source = Show(first, list);
    manager.PrevImage(source, false);
    ImageSlot& last = Await();
    EXPECT_TRUE(last.GetRequest().path == third);
    EXPECT_EQ(last.GetRequest().requestedImage, ImageIndex::Last);
    EXPECT_EQ(last.GetLoadedImage(), 2u) << "the number that the last image came to have";
    EXPECT_EQ(arrivedAction, PrefetchAction::PrevImage);
}

TEST_F(NavigationTest, NextImageOfAFileOfOneImageKeepsItsOwnAction) {
    list->current = 0;
    manager.NextImage(Show(first, list), false);
    ExpectRequest(second, 1, PrefetchAction::NextImage);
}

TEST_F(NavigationTest, ServesTheLastImageFromTheListThatIsThereUnderItsNumber) {
    Show(third, list);
    manager.Request(KeyFor(*current, 2), true);
    ImageSlot& last = AwaitForeground();
    list->current = 0;
    ImageSlot& source = Show(first, list);
    const int decoders = codec.DecoderCount();
    manager.PrevImage(source, true);
    EXPECT_EQ(&AwaitForeground(), &last);
    EXPECT_EQ(codec.DecoderCount(), decoders);
}

TEST_F(NavigationTest, JumpsToAnyImageOfTheFile) {
    ImageSlot& source = ShowImage(1);
    manager.ArbitraryImageFromIndex(3, source, true);
    EXPECT_TRUE(manager.IsBusy());
    ExpectRequest(second, 3, PrefetchAction::NextAndPrevImage);
    EXPECT_TRUE(list->previews.empty());
}

TEST_F(NavigationTest, RefusesToJumpOutsideTheFileAndStaysFree) {
    ImageSlot& source = ShowImage(1);
    EXPECT_EQ(MessageOf([&] { manager.ArbitraryImageFromIndex(0, source, true); }),
              "ArbitraryImageFromIndex: indexOneBased<1");
    EXPECT_EQ(MessageOf([&] { manager.ArbitraryImageFromIndex(4, source, true); }),
              "ArbitraryImageFromIndex: indexOneBased>SourceSlot.GetDecoder()->GetCount()");
    EXPECT_FALSE(manager.IsBusy());
}

TEST_F(NavigationTest, MovesThePlaceInTheListForTheUserAlone) {
    ImageSlot& source = ShowImage(1);
    manager.NextFile(source, false);
    manager.PrevFile(source, false);
    EXPECT_EQ(list->current, 1);
    manager.NextFile(source, true);
    EXPECT_EQ(list->current, 2);
    EXPECT_EQ(list->previews, (std::vector<bool>{true, true, false}));
}

TEST_F(NavigationTest, DoesNothingWhileTheUserWaits) {
    ImageSlot& source = ShowImage(1);
    Open(Write("d.fake", "FAKE hold"), list);
    const std::size_t slots = manager.GetSlotCount();
    for (const bool isForeground : {false, true}) {
        manager.NextFile(source, isForeground);
        manager.PrevFile(source, isForeground);
        manager.NextImage(source, isForeground);
        manager.PrevImage(source, isForeground);
        manager.ArbitraryImageFromIndex(0, source, isForeground);
    }
    EXPECT_EQ(manager.GetSlotCount(), slots);
    EXPECT_TRUE(list->previews.empty());
}

TEST_F(NavigationTest, RaisesWithoutAFileList) {
    ImageSlot& source = Show(second);
    EXPECT_EQ(MessageOf([&] { manager.PrevFile(source, true); }), "PrevFile: FileList==nullptr");
    EXPECT_EQ(MessageOf([&] { manager.NextFile(source, true); }), "NextFile: FileList==nullptr");
    EXPECT_EQ(MessageOf([&] { manager.NextImage(source, true); }), "NextImage: FileList==nullptr");
    EXPECT_EQ(MessageOf([&] { manager.PrevImage(source, true); }), "PrevImage: FileList==nullptr");
    EXPECT_EQ(MessageOf([&] { manager.ArbitraryImageFromIndex(1, source, true); }),
              "ArbitraryImageFromIndex: FileList==nullptr");
    EXPECT_FALSE(manager.IsBusy());
}

TEST_F(NavigationTest, GoesOnByFileButNotByImageFromAFailedSource) {
    ImageSlot& source = Show(Write("d.fake", "FAKE text=broken"), list);
    EXPECT_EQ(MessageOf([&] { manager.NextImage(source, false); }), "broken");
    EXPECT_EQ(MessageOf([&] { manager.PrevImage(source, false); }), "broken");
    EXPECT_EQ(MessageOf([&] { manager.ArbitraryImageFromIndex(1, source, false); }), "broken");
    EXPECT_NO_THROW(manager.NextFile(source, false));
    EXPECT_NO_THROW(manager.PrevFile(source, false));
}

TEST_F(NavigationTest, CarriesOutEachActionAsAPrefetch) {
    // Of two images, so that its last one and its default one are different requests.
    const String before = Write("z.fake", "FAKE count=2");
    list->paths[0] = before;
    ImageSlot& source = ShowImage(1);
    manager.CarryOut(PrefetchAction::NextImage, source);
    ExpectRequest(second, 2, PrefetchAction::NextImage);
    manager.CarryOut(PrefetchAction::PrevImage, source);
    ExpectRequest(before, ImageIndex::Last, PrefetchAction::PrevImage);
    manager.CarryOut(PrefetchAction::NextFile, source);
    ExpectRequest(third, ImageIndex::Default, PrefetchAction::NextFile);
    manager.CarryOut(PrefetchAction::PrevFile, source);
    ExpectRequest(before, ImageIndex::Default, PrefetchAction::PrevFile);
    manager.CarryOut(PrefetchAction::Nothing, source);
    EXPECT_EQ(manager.GetSlotCount(), 5u);
    EXPECT_FALSE(manager.IsBusy());
    EXPECT_EQ(list->previews, (std::vector<bool>{true, true, true}));
}

TEST_F(NavigationTest, FetchesBothNeighboursAfterAFileWasOpened) {
    ImageSlot& source = ShowImage(2);
    ASSERT_EQ(manager.GetSlotCount(), 2u) << "images 1 and 2";
    manager.CarryOut(PrefetchAction::NextAndPrevImage, source);
    ExpectRequest(second, 3, PrefetchAction::NextImage);
    EXPECT_EQ(manager.GetSlotCount(), 3u);
}

TEST_F(NavigationTest, FetchesThePreviousImageAlsoWhereTheNextOneFails) {
    list->current = 0;
    ImageSlot& source = Show(first, list);
    list->failing = +1;
    EXPECT_EQ(MessageOf([&] { manager.CarryOut(PrefetchAction::NextAndPrevImage, source); }),
              "FileList failed, error code 1");
    ExpectRequest(third, ImageIndex::Last, PrefetchAction::PrevImage);
    EXPECT_EQ(list->previews, (std::vector<bool>{true, true}));
}

TEST_F(NavigationTest, RaisesForAnActionThatIsNone) {
    ImageSlot& source = ShowImage(1);
    for (const std::uint32_t action : {6u, 0xFFFFFFFFu})
        EXPECT_EQ(MessageOf([&] { manager.CarryOut(static_cast<PrefetchAction>(action), source); }),
                  "Unknown prefetch action");
}

TEST_F(NavigationTest, LetsAChangedFilesOldSlotFallOutByTheTrim) {
    const ImageSlot* const old = &Show(first, list);
    const auto file = folder.Path() / "a.fake";
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(5));
    EXPECT_NE(&Show(first, list), old);
    std::vector<String> others;
    for (const char* name : {"d.fake", "e.fake", "f.fake", "g.fake"})
        others.push_back(Write(name, "FAKE"));
    for (const String& path : others)
        Show(path, list);
    EXPECT_EQ(manager.GetSlotCount(), 5u);
    const int decoders = codec.DecoderCount();
    Show(first, list);
    for (const String& path : others)
        Show(path, list);
    EXPECT_EQ(codec.DecoderCount(), decoders) << "the sixth, which is gone, is the file as it was";
}

TEST_F(NavigationTest, MovesAPrefetchThatIsThereToTheSecondPlace) {
    ImageSlot& source = Show(first, list);
    for (const char* name : {"d.fake", "e.fake", "f.fake"})
        Show(Write(name, "FAKE"), list);
    Show(second, list);
    // The oldest of five is asked for ahead, and so outlives the next oldest when the list is cut.
    manager.Request(source.GetRequest(), false);
    Show(Write("g.fake", "FAKE"), list);
    const int decoders = codec.DecoderCount();
    EXPECT_EQ(&Show(first, list), &source);
    EXPECT_EQ(codec.DecoderCount(), decoders);
}
