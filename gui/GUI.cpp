#include "gui/GUI.h"

#include "foundation/Report.h"
#include "foundation/Version.h"
#include "gui/ExceptionBoundary.h"
#include "gui/Scale.h"
#include "gui/ViewerStyle.h"
#include "video/Backends.h"
#include "video/ContextFallback.h"

namespace Quorvex::GUI {

GUI::GUI(IWindowSystem& system, const String& wideName, const String& narrowName)
    : capture(system), windowSystem(system), programNameWide(wideName), programNameNarrow(narrowName),
      style(new ViewerStyle()) {
    SetScale(ScaleFromDpi(windowSystem.GetScreenDpi()));
    SetCaptionColors(ReadCaptionColors(windowSystem));
    Function<std::uintptr_t> timerHook;
    timerHook.Bind(this, &GUI::OnTimer);
    windowSystem.SetTimerHook(timerHook);
}

GUI::~GUI() {
    PrepareForDestruction();
    DeleteContextObjects();
    ReleaseWindows();
    retiredWindows.clear();
    lostWindows.clear();
    windowSystem.SetTimerHook({});
}

void GUI::Paint() {
    if (mainPanel)
        mainPanel->Paint();
}

void GUI::OnContextCreated() {}

GUI& GUI::GetRoot() {
    return *this;
}

void GUI::OnUserMessage(std::uintptr_t, std::intptr_t) {}

void GUI::OnFilesDropped(const std::vector<String>&) {}

void GUI::OnTimer(std::uintptr_t) {}

void GUI::OnFirstPaint() {}

const String& GUI::GetProgramName() const {
    return IsUnicodeSystem() ? programNameWide : programNameNarrow;
}

void GUI::CreateMainWindow() {
    EnterMainPanel();
}

void GUI::ShowMainWindow() {
    OnGlobalPaint();
}

void GUI::MoveMainWindow(const Rect& rect) {
    if (Win32Window* window = GetMainWindow())
        window->GetPlatformWindow().SetClientRect(rect);
    else
        mainPanel->SetRect(rect.left, rect.top, rect.right, rect.bottom);
}

Win32Window* GUI::GetMainWindow() const {
    return mainPanel ? mainPanel->GetSurface().GetOwnWindow().get() : nullptr;
}

int GUI::Run() {
    while (windowSystem.DispatchNextMessage() == IWindowSystem::Dispatched::Message)
        HandleGUIMessages();
    return windowSystem.GetExitCode();
}

void GUI::OnClose() {
    // The window must still stand while the program takes its leave of it, and the objects of the context must be gone
    // before the panels are.
    Shutdown();
    ReleaseWindows();
    capture.Release();
    if (windowCount != static_cast<std::ptrdiff_t>(retiredWindows.size() + lostWindows.size()))
        ReportProblem(__LINE__, "GUI::OnClose");
    windowSystem.PostQuit(0);
}

void GUI::ReleaseWindows() {
    while (!panels.empty())
        RemovePanel(*panels.back());
    while (!surfacePanels.empty())
        surfacePanels.back()->GetSurface().Release();
}

void GUI::Shutdown() {
    if (isShutDown)
        return;
    isShutDown = true;
    OnDestroyWindow();
}

void GUI::OnDestroyWindow() {
    PrepareForDestruction();
    DeleteContextObjects();
}

void GUI::PrepareForDestruction() {
    capture.Cancel();
    ClearHover();
    messages.clear();
    modalPanel = nullptr;
    paintPending = false;
}

void GUI::DeleteContextObjects() {
    bool isReleased = true;
    // A panel that leaves for good changes the list.
    const std::vector<Panel*> all = surfacePanels;
    for (Panel* panel : all)
        isReleased = panel->DeleteContextObjects() && isReleased;
    if (!isReleased)
        ReportProblem(__LINE__, "GUI::DeleteContextObjects");
    if (context && context->GetChildCount() == 0)
        context.reset();
}

SharedPtr<Platform::Video::Renderer> GUI::CreateContext(const SharedPtr<Win32Window>& window) {
    using Platform::Video::Context;
    using Platform::Video::RendererTypeEnum;
    SharedPtr<Platform::Video::Renderer> renderer;
    const auto finish = [&](SharedPtr<Context>& made, SharedPtr<Context> candidate) {
        made = candidate;
        context = candidate;
        renderer = CreateRenderer(window);
    };
    Platform::Video::ContextAttempts attempts;
    attempts[static_cast<std::size_t>(RendererTypeEnum::OpenGL)] = [&](auto& made) {
        finish(made, CreateOpenGLContext(window));
    };
    attempts[static_cast<std::size_t>(RendererTypeEnum::Direct3D9)] = [&](auto& made) {
        finish(made, CreateDirect3D9Context(window));
    };
    attempts[static_cast<std::size_t>(RendererTypeEnum::Software)] = [&](auto& made) {
        finish(made, CreateSoftwareContext(window));
    };
    Platform::Video::CreateContextWithFallback(wantedRenderer, attempts, currentRenderer, context);
    OnContextCreated();
    return renderer;
}

SharedPtr<Platform::Video::Context> GUI::CreateDirect3D9Context(const SharedPtr<Win32Window>& window) {
    return Platform::Video::CreateDirect3D9Context(window);
}

SharedPtr<Platform::Video::Context> GUI::CreateSoftwareContext(const SharedPtr<Win32Window>& window) {
    return Platform::Video::CreateSoftwareContext(window);
}

SharedPtr<Platform::Video::Context> GUI::CreateOpenGLContext(const SharedPtr<Win32Window>& window) {
    return Platform::Video::CreateOpenGLContext(window);
}

SharedPtr<Platform::Video::Renderer> GUI::CreateRenderer(const SharedPtr<Win32Window>& window) {
    using Platform::Video::BufferFormat;
    if (!context)
        return CreateContext(window);
    static constexpr BufferFormat wanted[] = {BufferFormat::BGRA32, BufferFormat::BGRX32, BufferFormat::BGR24,
                                              BufferFormat::BGR565};
    Function<void> onRecreate;
    onRecreate.Bind(this, &GUI::Invalidate);
    return context->CreateRenderer(window, wanted, onRecreate);
}

SharedPtr<Platform::Video::Renderer> GUI::GetRenderer() const {
    if (context && context->renderTarget)
        return context->renderTarget;
    return mainPanel ? mainPanel->GetRenderer() : SharedPtr<Platform::Video::Renderer>();
}

void GUI::SetStyle(const SharedPtr<Style>& newStyle) {
    style = newStyle;
    Invalidate();
}

} // namespace Quorvex::GUI
