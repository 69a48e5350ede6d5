#include "app/VarnoliteMainFrame.h"

#include "app/WindowRectangle.h"
#include "app/WindowTitle.h"
#include "codecs/plugin/PluginFactory.h"
#include "foundation/Report.h"
#include "gui/Scale.h"
#include "gui/Win32Window.h"
#include "video/Renderer.h"

namespace Quorvex::App {

namespace Gui = ::Quorvex::GUI;

VarnoliteMainFrame::VarnoliteMainFrame(Gui::IWindowSystem& system)
    : GUI(system, String(programName).ToWide(), programName), m_application(new VarnoliteApplication()) {
    ET::Img::AddPluginsBesideProgram(ET::Img::GetCodecRegistry());
    VarnoliteSettings& settings = m_application->GetSettings();
    const Gui::Rect stored{settings.WindowX0.Get(), settings.WindowY0.Get(), settings.WindowX1.Get(),
                           settings.WindowY1.Get()};
    const Gui::Rect place = RestoredWindowRectangle(stored, system)
                                .value_or(CentredWindowRectangle(system.GetWorkAreaAtMouse(), Gui::GetScale()));
    m_application->SetRect(place.left, place.top, place.right, place.bottom);
    SetWantedRenderer(settings.Renderer.Get());
}

VarnoliteMainFrame::~VarnoliteMainFrame() {
    Shutdown();
}

void VarnoliteMainFrame::Open() {
    AddMainPanel(m_application);
    CreateMainWindow();
    ShowMainWindow();
}

void VarnoliteMainFrame::OnUserMessage(std::uintptr_t wParam, std::intptr_t lParam) {
    m_application->OnWMUSER(wParam, *reinterpret_cast<ImageSlot*>(lParam));
}

void VarnoliteMainFrame::OnDestroyWindow() {
    PrepareForDestruction();
    m_application->ReleaseImages();
    GUI::OnDestroyWindow();
    if (GetContext())
        ReportProblem(__LINE__, "Context not null");
}

bool VarnoliteMainFrame::OnKeyDown(Gui::Panel&, std::uint32_t key, std::intptr_t repeatData) {
    return m_application->OnKeyDown(key, repeatData);
}

bool VarnoliteMainFrame::OnKeyUp(Gui::Panel&, std::uint32_t key, std::intptr_t repeatData) {
    return m_application->OnKeyUp(key, repeatData);
}

void VarnoliteMainFrame::OnFirstPaint() {
    m_isPixelMappingPrecise = GetRenderer()->IsPixelMappingPrecise();
}

} // namespace Quorvex::App
