#include "tests/program/FailingMemory.h"
#include "tests/program/ProgramFixture.h"

using namespace Quorvex;
using namespace Quorvex::App::Test;

// Memory runs out in the worker of a load: the user is told, and the program goes on.

namespace {

const std::string notEnoughMemory = "The file could not be opened: Not enough memory!";

class MemoryTest : public ProgramTest {
protected:
    /// Opens a picture while the request for memory with that number fails; whether one did.
    bool OpenWithFailure(const std::string& name, std::int32_t width, std::int32_t height, std::size_t minimumBytes,
                         std::uint32_t place) {
        const String path = Write(name, MakeBitmap(width, height));
        const FailingMemory memory(minimumBytes, place);
        Open(path);
        return memory.HasFailed();
    }

    void ExpectTold() {
        EXPECT_EQ(LabelText(), notEnoughMemory);
        EXPECT_FALSE(View().HasImage());
        EXPECT_FALSE(Application().GetStatusLabel().IsVisible());
    }

    /// A picture that was not there before is loaded and shown.
    void ExpectGoesOn(const std::string& name) {
        Open(Write(name, MakeBitmap(32, 32)));
        ExpectMagnified(32, 32, 24);
    }
};

} // namespace

TEST_F(MemoryTest, ForThePixelsRunsOut) {
    constexpr std::size_t pixelBytes = 1200 * 900 * 4;
    ASSERT_TRUE(OpenWithFailure("large.bmp", 1200, 900, pixelBytes, 0));
    ExpectTold();
    EXPECT_TRUE(Title().ends_with("large.bmp"));
    ExpectGoesOn("small.bmp");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(MemoryTest, RunsOutWhileThePixelsAreDecoded) {
    // The image takes more than that and so does the block of the file that is decoded; nothing else does.
    constexpr std::size_t fileBytes = 256 * 256 * 3;
    ASSERT_TRUE(OpenWithFailure("a.bmp", 256, 256, fileBytes, 1));
    ExpectTold();
    ExpectGoesOn("small.bmp");
    EXPECT_EQ(log.Text(), "");
}

TEST_F(MemoryTest, RunsOutAtEveryPlaceOfALoadInTurn) {
    int told = 0;
    bool isWhole = false;
    for (std::uint32_t place = 0;; ++place) {
        const std::string number = std::to_string(place);
        if (!OpenWithFailure("a" + number + ".bmp", 64, 48, 0, place))
            break;
        // Once the picture is whole there is only the message about it left, which is tried again.
        isWhole = isWhole || View().HasImage();
        if (isWhole) {
            ExpectMagnified(64, 48, 16);
        } else {
            ExpectTold();
            ++told;
        }
        ExpectGoesOn("b" + number + ".bmp");
        ASSERT_FALSE(HasFailure()) << "at the request " << place;
    }
    ExpectMagnified(64, 48, 16);
    EXPECT_GT(told, 20) << "a load asks for a stream, a decoder, the fields of its headers, an image and a block";
    EXPECT_TRUE(isWhole);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(MemoryTest, ThatIsBackDoesNotHelpAFailedLoadThatIsStillInTheList) {
    constexpr std::size_t pixelBytes = 64 * 48 * 4;
    ASSERT_TRUE(OpenWithFailure("a.bmp", 64, 48, pixelBytes, 0));
    Open(folder.PathOf("a.bmp"));
    ExpectTold();
}
