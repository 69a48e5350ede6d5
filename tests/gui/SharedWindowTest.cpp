#include "tests/gui/GuiFixture.h"

namespace Quorvex::GUI::Test {
namespace {

class SharedWindowTest : public GuiFixture {
protected:
    SharedWindowTest() { Show(); }
};

TEST_F(SharedWindowTest, TheRawWindowLeadsToTheSharedObject) {
    Win32Window& window = *gui.GetMainWindow();
    const SharedPtr<Win32Window> found = Win32Window::SmartPointerFromWin32WindowRAW(&window.GetRaw());
    EXPECT_EQ(found.get(), &window);
    EXPECT_EQ(found->GetPanel(), main.get());
}

TEST_F(SharedWindowTest, ARawWindowWithoutAnObjectRaises) {
    Win32WindowRAW raw(system, WindowKind::Panel, {0, 0, 5, 5}, "", MainWindow().GetEvents());
    for (const Win32WindowRAW* lost : {static_cast<const Win32WindowRAW*>(nullptr), &std::as_const(raw)}) {
        try {
            Win32Window::SmartPointerFromWin32WindowRAW(lost);
            FAIL() << "nothing was raised";
        } catch (const Exception& exception) {
            EXPECT_STREQ(exception.what(), "Win32Window::SmartPointerFromWin32WindowRAW");
        }
    }
}

TEST_F(SharedWindowTest, TheTitleIsTheProgramsName) {
    EXPECT_EQ(MainWindow().GetTitle(), gui.GetProgramName());
}

TEST_F(SharedWindowTest, ChildrenGoToTheNewParentTogether) {
    const auto tool = AddPanel("tool", {600, 100, 700, 200});
    const auto a = AddPanel("a", {650, 100, 750, 150});
    const auto b = AddPanel("b", {650, 160, 750, 200});
    const auto other = AddPanel("other", {450, 300, 550, 350});
    Settle();
    ASSERT_EQ(WindowOf(*a).GetOwner(), &WindowOf(*tool));
    Win32Window& toolWindow = *tool->GetSurface().GetOwnWindow();
    Win32Window& otherWindow = *other->GetSurface().GetOwnWindow();
    Win32Window::SetParentOfAllChilds(gui.GetPanels(), toolWindow, &otherWindow);
    EXPECT_EQ(WindowOf(*a).GetOwner(), &WindowOf(*other));
    EXPECT_EQ(WindowOf(*b).GetOwner(), &WindowOf(*other));
    EXPECT_EQ(WindowOf(*other).GetOwner(), &MainWindow());
    Win32Window::SetParentOfAllChilds(gui.GetPanels(), otherWindow, nullptr);
    EXPECT_EQ(WindowOf(*b).GetOwner(), nullptr);
}

TEST_F(SharedWindowTest, TheWindowLivesAsLongAsItsRenderer) {
    const SharedPtr<Platform::Video::Renderer> kept = main->GetRenderer();
    gui.Shutdown();
    EXPECT_EQ(system.GetWindows().size(), 1u);
    kept->GetWindow()->IsLayered();
}

} // namespace
} // namespace Quorvex::GUI::Test
