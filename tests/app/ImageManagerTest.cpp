#include "tests/app/ImageManagerFixture.h"

#include <chrono>
#include <filesystem>

using namespace Quorvex;
using namespace Quorvex::App;

using ImageManagerTest = ImageManagerFixture;

namespace {

// A GIF file of two pixels, and a PNG file of one.
const std::string& TwoPixelGif() {
    static constexpr std::uint8_t bytes[] = {0x47, 0x49, 0x46, 0x38, 0x39, 0x61, 0x02, 0x00, 0x01, 0x00, 0x80, 0x00,
                                             0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x2C, 0x00, 0x00, 0x00, 0x00,
                                             0x02, 0x00, 0x01, 0x00, 0x00, 0x02, 0x02, 0x0C, 0x0A, 0x00, 0x3B};
    static const std::string file(std::begin(bytes), std::end(bytes));
    return file;
}

const std::string& OnePixelPng() {
    static constexpr std::uint8_t bytes[] = {
        0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44, 0x52, 0x00,
        0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x01, 0x08, 0x00, 0x00, 0x00, 0x00, 0x3A, 0x7E, 0x9B, 0x55, 0x00,
        0x00, 0x00, 0x0A, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9C, 0x63, 0x68, 0x00, 0x00, 0x00, 0x82, 0x00, 0x81,
        0x77, 0xCD, 0x72, 0xB6, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};
    static const std::string file(std::begin(bytes), std::end(bytes));
    return file;
}

} // namespace

TEST_F(ImageManagerTest, LoadsTheDefaultImageAndPostsItsSlot) {
    ImageSlot& slot = Show(Write("a.fake", "FAKE count=3 default=1"));
    EXPECT_EQ(slot.GetLoadedImage(), 2u);
    EXPECT_EQ(slot.GetImage()->GetWidth(), 2u);
    EXPECT_EQ(slot.GetDecoder()->GetCount(), 3u);
    EXPECT_EQ(arrivedAction, PrefetchAction::NextAndPrevImage);
    EXPECT_EQ(slot.GetCounterRef(), 2);
}

TEST_F(ImageManagerTest, RepeatsTheEdgeOfALoadedImageInItsPadding) {
    for (const char* name : {"a.fake", "a.unknown"}) {
        const SharedPtr<Data::ImageBase> image = Show(Write(name, "FAKE count=3 default=1")).GetImage();
        const auto pixels = image->LockUInt8(Data::LockMode::ReadOnly);
        EXPECT_EQ(pixels(1, 0), 2);
        EXPECT_EQ(pixels(2, 0), 2);
        EXPECT_EQ(pixels(3, 0), 2);
        EXPECT_EQ(pixels(1, 1), 2);
        EXPECT_EQ(pixels(3, 2), 2);
    }
}

TEST_F(ImageManagerTest, RaisesForAFileThatIsNotThereAndStaysFree) {
    EXPECT_THROW(Open(folder.PathOf("missing.fake")), Exception);
    EXPECT_FALSE(manager.IsBusy());
    EXPECT_EQ(manager.GetSlotCount(), 0u);
}

TEST_F(ImageManagerTest, IsBusyFromTheRequestUntilItsMessage) {
    Open(Write("a.fake", "FAKE hold"));
    EXPECT_TRUE(manager.IsBusy());
    codec.Release();
    AwaitForeground();
    EXPECT_FALSE(manager.IsBusy());
}

TEST_F(ImageManagerTest, RaisesTheFormWithTheLineWhenReadBeforeTheJoin) {
    Open(Write("a.fake", "FAKE hold"));
    codec.Release();
    arrived = nullptr;
    while (arrived == nullptr)
        system.DispatchNextMessage();
    for (const auto& read : std::vector<std::function<void()>>{
             [&] { arrived->GetImage(); }, [&] { arrived->GetDecoder(); }, [&] { arrived->GetLoadedImage(); }})
        EXPECT_TRUE(MessageOf(read).starts_with("ImageManager failed, error code "));
    arrived->Join();
    EXPECT_NO_THROW(arrived->GetImage());
}

TEST_F(ImageManagerTest, RaisesTheFormWithAnotherLineForASlotWithoutAResult) {
    ImageSlot slot({context, Write("a.fake", "FAKE"), 1, PrefetchAction::Nothing, 0, window.get()});
    const std::vector<std::function<void()>> reads{[&] { slot.GetImage(); }, [&] { slot.GetDecoder(); },
                                                   [&] { slot.GetLoadedImage(); }};
    std::vector<std::string> beforeTheJoin;
    for (const auto& read : reads)
        beforeTheJoin.push_back(MessageOf(read));
    slot.Join(); // It was never started, so there is neither an image nor a failure.
    for (std::size_t i = 0; i < reads.size(); ++i) {
        const std::string message = MessageOf(reads[i]);
        EXPECT_TRUE(message.starts_with("ImageManager failed, error code ")) << message;
        EXPECT_NE(message, beforeTheJoin[i]);
    }
}

TEST_F(ImageManagerTest, RaisesTheRealFailureWhenAFailedSlotIsRead) {
    ImageSlot& slot = Show(Write("a.fake", "FAKE text=broken"));
    EXPECT_EQ(MessageOf([&] { slot.GetImage(); }), "broken");
    EXPECT_EQ(MessageOf([&] { slot.GetDecoder(); }), "broken");
    EXPECT_EQ(MessageOf([&] { slot.GetLoadedImage(); }), "broken");
}

TEST_F(ImageManagerTest, RaisesThatMemoryRanOutEachTimeTheSlotIsAskedFor) {
    const String path = Write("a.fake", "FAKE memory");
    EXPECT_THROW(Show(path).GetImage(), std::bad_alloc);
    const int decoders = codec.DecoderCount();
    EXPECT_THROW(Show(path).GetImage(), std::bad_alloc);
    EXPECT_EQ(codec.DecoderCount(), decoders) << "a failed slot serves until it is trimmed";
}

TEST_F(ImageManagerTest, DoesNotTryTheContentWhenMemoryRanOut) {
    ImageSlot& slot = Show(Write("a.fake", "FAKE memory"));
    EXPECT_THROW(slot.GetImage(), std::bad_alloc);
    EXPECT_EQ(codec.DecoderCount(), 1);
}

TEST_F(ImageManagerTest, KeepsTheFirstFailureWhereMemoryRunsOutOnTheContent) {
    ImageSlot& slot = Show(Write("a.unknown", "FAKE memory"));
    EXPECT_EQ(MessageOf([&] { slot.GetImage(); }), "") << "no decoder has that name";
}

TEST_F(ImageManagerTest, PostsItsMessageAlsoForAFailureOfNoKnownKind) {
    ImageSlot& slot = Show(Write("a.fake", "FAKE strange"));
    EXPECT_EQ(MessageOf([&] { slot.GetImage(); }), "unknown exception");
    EXPECT_FALSE(manager.IsBusy());
}

TEST_F(ImageManagerTest, FindsADecoderByContentAndMarksTheExtension) {
    ImageSlot& slot = Show(Write("a.unknown", "FAKE"));
    EXPECT_EQ(slot.GetImage()->GetWidth(), 1u);
    EXPECT_TRUE(slot.GetDecoder()->WrongFilenameExtension);
}

TEST_F(ImageManagerTest, FindsAGifOfAnUnknownExtensionAndMarksIt) {
    ImageSlot& slot = Show(Write("a.unknown", TwoPixelGif()));
    EXPECT_EQ(slot.GetImage()->GetWidth(), 2u);
    EXPECT_EQ(slot.GetImage()->LockBGRAUInt8(Data::LockMode::ReadOnly)(0, 0),
              (Data::ColorBGRA<std::uint8_t>{6, 5, 4, 255}));
    EXPECT_TRUE(slot.GetDecoder()->WrongFilenameExtension);
    EXPECT_FALSE(slot.GetDecoder()->IsIncomplete());
    EXPECT_FALSE(Show(Write("a.gif", TwoPixelGif())).GetDecoder()->WrongFilenameExtension);
}

TEST_F(ImageManagerTest, FindsAPngWithTheExtensionOfABitmapAndMarksIt) {
    ImageSlot& slot = Show(Write("a.bmp", OnePixelPng()));
    EXPECT_EQ(slot.GetImage()->GetWidth(), 1u);
    EXPECT_EQ(slot.GetImage()->LockBGRAUInt8(Data::LockMode::ReadOnly)(0, 0),
              (Data::ColorBGRA<std::uint8_t>{128, 128, 128, 255}));
    EXPECT_TRUE(slot.GetDecoder()->WrongFilenameExtension);
    EXPECT_FALSE(Show(Write("a.png", OnePixelPng())).GetDecoder()->WrongFilenameExtension);
}

TEST_F(ImageManagerTest, RaisesTheFirstFailureWhenTheContentFailsToo) {
    ImageSlot& slot = Show(Write("a.fake", "no such thing"));
    EXPECT_EQ(MessageOf([&] { slot.GetImage(); }), "");
}

TEST_F(ImageManagerTest, GivesEachDecodeALoggerOfItsOwn) {
    ImageSlot& first = Show(Write("a.fake", "FAKE"));
    const auto logger = first.GetLogger();
    ImageSlot& second = Show(Write("b.fake", "FAKE"));
    EXPECT_TRUE(logger);
    EXPECT_FALSE(second.GetLogger() == logger);
}

TEST_F(ImageManagerTest, ServesAVisitedImageWithoutANewThread) {
    const String path = Write("a.fake", "FAKE");
    ImageSlot& slot = Show(path);
    const int decoders = codec.DecoderCount();
    EXPECT_EQ(&Show(path), &slot);
    EXPECT_EQ(codec.DecoderCount(), decoders);
    EXPECT_EQ(slot.GetCounterRef(), 2);
}

TEST_F(ImageManagerTest, LoadsAFileAnewThatHasChangedOnDisk) {
    const String path = Write("a.fake", "FAKE");
    ImageSlot& slot = Show(path);
    const auto file = folder.Path() / "a.fake";
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(5));
    EXPECT_NE(&Show(path), &slot);
    EXPECT_EQ(manager.GetSlotCount(), 2u);
}

TEST_F(ImageManagerTest, ServesTheReservedNumbersByWhatTheyCameToMean) {
    ImageSlot& slot = Show(Write("a.fake", "FAKE count=3 default=2"));
    EXPECT_TRUE(slot.Serves(KeyFor(slot, ET::Img::ImageIndex::Default)));
    EXPECT_TRUE(slot.Serves(KeyFor(slot, ET::Img::ImageIndex::Last)));
    EXPECT_TRUE(slot.Serves(KeyFor(slot, 3)));
    EXPECT_FALSE(slot.Serves(KeyFor(slot, 1)));
    EXPECT_FALSE(slot.Serves(KeyFor(slot, 2)));
}

// A plug-in may fail at any time; what it has decoded is there all the same.
TEST_F(ImageManagerTest, ADecoderThatForgetsItsCountServesItsImageByNumber) {
    ImageSlot& slot = Show(Write("a.fake", "FAKE count=3 default=2 forgetful"));
    EXPECT_TRUE(slot.Serves(KeyFor(slot, 3)));
    EXPECT_FALSE(slot.Serves(KeyFor(slot, ET::Img::ImageIndex::Last)));
    EXPECT_FALSE(slot.Serves(KeyFor(slot, 1)));
}

TEST_F(ImageManagerTest, ServesTheFirstImageByItsNumber) {
    ImageSlot& slot = Show(Write("a.fake", "FAKE count=2"));
    EXPECT_TRUE(slot.Serves(KeyFor(slot, 1)));
    EXPECT_FALSE(slot.Serves(KeyFor(slot, ET::Img::ImageIndex::Last)));
}

TEST_F(ImageManagerTest, ServesOnlyTheSameNumberBeforeTheJoin) {
    Open(Write("a.fake", "FAKE count=2 hold"));
    ImageSlot& slot =
        manager.Request({context, folder.PathOf("a.fake"), 1, PrefetchAction::Nothing, 0, window.get()}, false);
    EXPECT_FALSE(slot.Serves(KeyFor(slot, ET::Img::ImageIndex::Default)));
    EXPECT_TRUE(slot.Serves(KeyFor(slot, 1)));
}

TEST_F(ImageManagerTest, DoesNotServeAnotherPathOrTime) {
    ImageSlot& slot = Show(Write("a.fake", "FAKE"));
    ImageRequest key = slot.GetRequest();
    key.path = folder.PathOf("b.fake");
    EXPECT_FALSE(slot.Serves(key));
    key = slot.GetRequest();
    ++key.lastWriteTime;
    EXPECT_FALSE(slot.Serves(key));
}

TEST_F(ImageManagerTest, PromotesAPrefetchThatTheUserComesToWaitFor) {
    const String shown = Write("a.fake", "FAKE");
    const String next = Write("b.fake", "FAKE hold");
    SharedPtr<ListOfPaths> list(new ListOfPaths({shown, next}));
    ImageSlot& source = Show(shown, list);
    manager.NextFile(source, false);
    EXPECT_FALSE(manager.IsBusy());
    const int decoders = codec.DecoderCount();
    manager.NextFile(source, true);
    EXPECT_TRUE(manager.IsBusy());
    codec.Release();
    ImageSlot& slot = AwaitForeground();
    EXPECT_TRUE(slot.GetRequest().path == next);
    EXPECT_LE(codec.DecoderCount(), decoders + 1) << "one worker serves both requests";
    EXPECT_EQ(slot.GetCounterRef(), 2);
}

TEST_F(ImageManagerTest, KeepsAPrefetchResultInTheListAndShowsNothing) {
    const String shown = Write("a.fake", "FAKE count=2");
    SharedPtr<ListOfPaths> list(new ListOfPaths({shown}));
    ImageSlot& source = Show(shown, list);
    manager.CarryOut(PrefetchAction::NextImage, source);
    ImageSlot& ahead = Await();
    EXPECT_FALSE(ahead.IsForeground());
    EXPECT_EQ(ahead.GetLoadedImage(), 2u);
    const int decoders = codec.DecoderCount();
    manager.NextImage(source, true);
    EXPECT_EQ(&Await(), &ahead) << "the message comes at once from the finished slot";
    EXPECT_EQ(codec.DecoderCount(), decoders);
}

TEST_F(ImageManagerTest, TrimsNothingWithExactlyFiveSlots) {
    for (const char* name : {"a.fake", "b.fake", "c.fake", "d.fake", "e.fake"})
        Show(Write(name, "FAKE"));
    EXPECT_EQ(manager.GetSlotCount(), 5u);
}

TEST_F(ImageManagerTest, KeepsTheFiveMostWantedSlots) {
    for (const char* name : {"a.fake", "b.fake", "c.fake", "d.fake", "e.fake", "f.fake", "g.fake"})
        Show(Write(name, "FAKE"));
    EXPECT_EQ(manager.GetSlotCount(), 5u);
    const int decoders = codec.DecoderCount();
    Show(folder.PathOf("c.fake"));
    EXPECT_EQ(codec.DecoderCount(), decoders) << "the third newest is still there";
}

TEST_F(ImageManagerTest, DoesNotTrimASlotThatIsInUse) {
    ImageSlot& held = Show(Write("a.fake", "FAKE"));
    ++held.GetCounterRef();
    for (const char* name : {"b.fake", "c.fake", "d.fake", "e.fake", "f.fake", "g.fake"})
        Show(Write(name, "FAKE"));
    EXPECT_EQ(manager.GetSlotCount(), 6u);
    EXPECT_EQ(held.GetImage()->GetWidth(), 1u);
    --held.GetCounterRef();
}

TEST_F(ImageManagerTest, WaitsForTheWorkersWhenItsSlotsAreCleared) {
    Open(Write("a.fake", "FAKE hold"));
    codec.Release();
    manager.ClearSlots();
    EXPECT_EQ(manager.GetSlotCount(), 0u);
}

TEST_F(ImageManagerTest, HasTheListBuiltThatNoneWasGivenFor) {
    static String asked;
    manager.SetFileListFactory([](const String& path) {
        asked = path;
        return SharedPtr<FileList>(new ListOfPaths({path}));
    });
    const String path = Write("a.fake", "FAKE");
    ImageSlot& slot = Show(path);
    EXPECT_TRUE(asked == path);
    EXPECT_NO_THROW(manager.NextFile(slot, false));
}
