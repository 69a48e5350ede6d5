#include "foundation/Version.h"
#include "tests/program/ProgramFixture.h"

#include <fstream>

using namespace Quorvex;
using namespace Quorvex::App::Test;

// The program on a system without wide calls.

namespace {

/// Before the program begins and until it has ended.
struct OldSystem {
    ScopedSystemVersion version{{4, 10, 0}};
};

class NarrowSystemTest : OldSystem, public ProgramTest {
protected:
    /// A picture under a name that Windows-1252 has and ASCII has not; the name as the system gives it.
    String WriteUmlautPicture() {
        const auto path = folder.Path() / u"Gr\u00FC\u00DFe \u20AC.bmp";
        std::ofstream(path, std::ios::binary) << MakeBitmap(32, 32);
        return Quorvex::Test::TemporaryFolder::TextOf(path);
    }
};

constexpr const char* titleEnd = "Gr\xFC\xDF"
                                 "e \x80.bmp";

} // namespace

TEST_F(NarrowSystemTest, OpensAPathInWindows1252AndShowsItInTheTitle) {
    const String path = WriteUmlautPicture().ToANSI();
    Open(path);
    ExpectMagnified(32, 32, 24);
    EXPECT_TRUE(Application().GetCurrentSlot()->GetRequest().path == path);
    EXPECT_EQ(Window().GetTitle().ToANSI(), "Varnolite - " + path);
    EXPECT_TRUE(Window().GetTitle().ToANSI().ToStdString().ends_with(titleEnd));
    EXPECT_EQ(log.Text(), "");
}

TEST_F(NarrowSystemTest, HasOneSlotForBothEncodingsOfAPath) {
    const String wide = WriteUmlautPicture();
    Open(wide);
    const App::ImageSlot* const slot = Application().GetCurrentSlot();
    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(slot->GetRequest().path.encoding(), Encoding::Windows1252);
    Open(wide.ToANSI());
    EXPECT_EQ(Application().GetCurrentSlot(), slot);
    EXPECT_EQ(Application().GetImageManager().GetSlotCount(), 1u);
    EXPECT_EQ(log.Text(), "");
}

TEST_F(NarrowSystemTest, ExplainsAFileThatIsNotThere) {
    Open("\xFC.bmp");
    EXPECT_EQ(LabelText(), "The file could not be opened.");
    EXPECT_EQ(Window().GetTitle().ToANSI(), "Varnolite - \xFC.bmp");
}
