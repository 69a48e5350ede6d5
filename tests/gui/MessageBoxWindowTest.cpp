#include "gui/MessageBoxWindow.h"

#include "gui/MessageBoxPicture.h"
#include "gui/window/headless/HeadlessGlyphSource.h"
#include "gui/window/headless/HeadlessUser.h"

#include <gtest/gtest.h>

#include <functional>

namespace Quorvex::GUI {
namespace {

class MessageBoxWindowTest : public testing::Test {
protected:
    /// Shows the box; the steps are done one after the other, each when nothing else waits.
    bool Run(const std::vector<std::function<void()>>& steps) {
        std::size_t next = 0;
        system.SetIdleHook([&] {
            if (next < steps.size())
                steps[next++]();
        });
        const bool isRead = RunMessageBox(system, u"Titl\u00E9", text);
        EXPECT_EQ(next, steps.size()) << "the box was gone too early";
        EXPECT_TRUE(system.GetWindows().empty());
        return isRead;
    }

    HeadlessWindow& Box() { return *system.GetWindows().front(); }
    std::function<void()> PressesKey(std::uint32_t key) {
        return [this, key] { user.PressKey(key); };
    }
    std::function<void()> Closes() {
        return [this] { user.Close(Box()); };
    }
    /// To the middle of the button, or a place beside it.
    void MoveMouse(bool isOnButton) {
        const Rect client = Box().GetClientRect();
        const Rect button = picture.GetButton();
        user.MoveMouse(client.left + (isOnButton ? (button.left + button.right) / 2 : 1),
                       client.top + (button.top + button.bottom) / 2);
    }

    const String text = "Something was\r\nreported.";
    HeadlessWindowSystem system;
    HeadlessUser user{system};
    HeadlessGlyphSource glyphs{14, 5};
    MessageBoxPicture picture{glyphs, 14, 1, text};
};

} // namespace

TEST_F(MessageBoxWindowTest, ShowsItsTextInTheMiddleOfTheWorkArea) {
    system.Desktop().workAreas = {{0, 0, 1000, 701}};
    system.Desktop().monitors = {{0, 0, 1000, 731}};
    const auto look = [&] {
        const Rect client = Box().GetClientRect();
        EXPECT_EQ(client.Width(), picture.GetWidth());
        EXPECT_EQ(client.Height(), picture.GetHeight());
        EXPECT_EQ(client.left, (1000 - picture.GetWidth()) / 2);
        EXPECT_EQ(client.top, (701 - picture.GetHeight()) / 2);
        EXPECT_TRUE(Box().IsVisible());
        EXPECT_EQ(Box().GetTitle(), u"Titl\u00E9");
        EXPECT_EQ(Box().GetPicture().bits, picture.Draw(client.Width(), client.Height()));
        user.Close(Box());
    };
    EXPECT_TRUE(Run({look}));
}

TEST_F(MessageBoxWindowTest, EndsByItsButton) {
    EXPECT_TRUE(Run({[&] { MoveMouse(true); }, [&] { user.PressLeft(); }, [&] { user.ReleaseLeft(); }}));
}

TEST_F(MessageBoxWindowTest, StaysForAClickThatBeginsOrEndsBesideTheButton) {
    EXPECT_TRUE(Run({[&] { MoveMouse(false); }, [&] { user.PressLeft(); }, [&] { MoveMouse(true); },
                     [&] { user.ReleaseLeft(); }, [&] { user.PressLeft(); }, [&] { MoveMouse(false); },
                     [&] { user.ReleaseLeft(); }, Closes()}));
}

TEST_F(MessageBoxWindowTest, EndsByEnterEscapeAndTheSpaceBarAlone) {
    for (const std::uint32_t key : {0x0Du, 0x1Bu, 0x20u})
        EXPECT_TRUE(Run({PressesKey('A'), PressesKey(0x70), PressesKey(key)})) << key;
}

TEST_F(MessageBoxWindowTest, FillsALargerWindowWithBackground) {
    const auto grow = [&] { user.Place(Box(), {10, 10, 710, 510}); };
    const auto look = [&] {
        EXPECT_EQ(Box().GetPicture().bits, picture.Draw(700, 500));
        user.Close(Box());
    };
    EXPECT_TRUE(Run({grow, look}));
}

TEST_F(MessageBoxWindowTest, IsNotReadWhereTheDisplayGoes) {
    EXPECT_FALSE(Run({[&] { system.LoseDisplay(); }}));
}

} // namespace Quorvex::GUI
