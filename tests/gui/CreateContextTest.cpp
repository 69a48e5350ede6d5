// The choice of a backend and what stands in for it.

#include "tests/gui/GuiFixture.h"
#include "tests/gui/RecordingContext.h"

namespace Quorvex::GUI::Test {
namespace {

using Platform::Video::RendererTypeEnum;

/// Its backends start or fail as the test wants it.
class ChoosingGUI : public TestGUI {
public:
    using TestGUI::TestGUI;
    SharedPtr<Platform::Video::Context> CreateOpenGLContext(const SharedPtr<Win32Window>&) override {
        return Make("OpenGL", startsOpenGL);
    }
    SharedPtr<Platform::Video::Context> CreateDirect3D9Context(const SharedPtr<Win32Window>&) override {
        return Make("Direct3D9", startsDirect3D9);
    }
    SharedPtr<Platform::Video::Context> CreateSoftwareContext(const SharedPtr<Win32Window>&) override {
        return Make("Software", startsSoftware);
    }

    bool startsOpenGL = false;
    bool startsDirect3D9 = false;
    bool startsSoftware = true;
    bool refusesRenderer = false;

private:
    SharedPtr<Platform::Video::Context> Make(const char* name, bool starts) {
        calls.push_back(name + std::string(GetCurrentName() == name ? "" : " while another is current"));
        if (!starts)
            throw Exception("no device");
        auto* made = new RecordingContext(calls);
        made->refusesRenderer = refusesRenderer && std::string("Software") != name;
        return SharedPtr<Platform::Video::Context>(made);
    }
    std::string GetCurrentName() const { return Platform::Video::RendererTypeName(GetCurrentRenderer()); }
};

class CreateContextTest : public testing::Test {
protected:
    CreateContextTest() {
        main->SetRect(0, 0, 100, 100);
        gui.AddMainPanel(main);
    }
    void Start(RendererTypeEnum wanted) {
        gui.SetWantedRenderer(wanted);
        gui.CreateMainWindow();
        EXPECT_EQ(gui.GetWantedRenderer(), wanted) << "the setting stays";
    }

    Calls calls;
    HeadlessWindowSystem system;
    ChoosingGUI gui{system, calls};
    SharedPtr<Panel> main = MakeShared<Panel>();
};

TEST_F(CreateContextTest, OpenGLThatStartsIsUsed) {
    gui.startsOpenGL = true;
    Start(RendererTypeEnum::OpenGL);
    EXPECT_EQ(calls, (Calls{"OpenGL", "ContextCreated"}));
    EXPECT_EQ(gui.GetCurrentRenderer(), RendererTypeEnum::OpenGL);
}

TEST_F(CreateContextTest, OpenGLGivesWayToDirect3D9AndThatToSoftware) {
    Start(RendererTypeEnum::OpenGL);
    EXPECT_EQ(calls, (Calls{"OpenGL", "Direct3D9", "Software", "ContextCreated"}));
    EXPECT_EQ(gui.GetCurrentRenderer(), RendererTypeEnum::Software);
}

TEST_F(CreateContextTest, Direct3D9GivesWayToOpenGL) {
    gui.startsOpenGL = true;
    Start(RendererTypeEnum::Direct3D9);
    EXPECT_EQ(calls, (Calls{"Direct3D9", "OpenGL", "ContextCreated"}));
    EXPECT_EQ(gui.GetCurrentRenderer(), RendererTypeEnum::OpenGL);
}

TEST_F(CreateContextTest, AnyOtherNumberIsSoftware) {
    Start(static_cast<RendererTypeEnum>(7));
    EXPECT_EQ(calls, (Calls{"Software", "ContextCreated"}));
}

TEST_F(CreateContextTest, ASurfaceThatIsRefusedCountsAsAFailure) {
    gui.startsOpenGL = true;
    gui.startsDirect3D9 = true;
    gui.refusesRenderer = true;
    Start(RendererTypeEnum::OpenGL);
    EXPECT_EQ(calls, (Calls{"OpenGL", "Direct3D9", "Software", "ContextCreated"}));
    EXPECT_EQ(gui.GetContext(), gui.GetRenderer()->GetContext());
}

TEST_F(CreateContextTest, AFailureOfSoftwareGoesUp) {
    gui.startsSoftware = false;
    EXPECT_THROW(gui.CreateMainWindow(), Exception);
    EXPECT_EQ(gui.GetContext().get(), nullptr);
}

TEST_F(CreateContextTest, OneContextServesAllWindows) {
    gui.SetWantedRenderer(RendererTypeEnum::Software);
    gui.CreateMainWindow();
    const auto tool = MakeShared<Panel>();
    tool->SetRect(200, 0, 300, 100);
    gui.AddPanel(tool);
    gui.ShowMainWindow();
    EXPECT_EQ(tool->GetRenderer()->GetContext(), gui.GetContext());
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "Software"), 1);
}

TEST(CreateContext, ThisBuildsHardwareBackendsMakeWayForSoftware) {
    Calls calls;
    HeadlessWindowSystem system;
    TestGUI gui(system, calls);
    const auto main = MakeShared<Panel>();
    main->SetRect(0, 0, 100, 100);
    gui.AddMainPanel(main);
    gui.SetWantedRenderer(RendererTypeEnum::OpenGL);
    gui.CreateMainWindow();
    EXPECT_EQ(main->GetRenderer()->GetName(), Platform::Video::RendererTypeName(gui.GetCurrentRenderer()));
    EXPECT_EQ(gui.GetWantedRenderer(), RendererTypeEnum::OpenGL);
}

} // namespace
} // namespace Quorvex::GUI::Test
