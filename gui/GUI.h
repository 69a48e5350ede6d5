#pragma once

#include "gui/Capture.h"
#include "gui/Listeners.h"
#include "gui/Panel.h"
#include "gui/PanelStacking.h"

#include <deque>
#include <vector>

namespace Quorvex::GUI {

class Style;

/// How long a window that blocks others is flashed, an eighth of the caret's blink time. A time that the system does
/// not know, or a caret that stands still (0 or all ones), counts as the usual one.
std::uint32_t FlashTimeoutMilliseconds(std::uint32_t caretBlinkMilliseconds);

/// The root of the toolkit: it owns the panels, turns the events of their windows into events of the control tree, and
/// paints all panels at once. The events of the mouse are queued while the platform delivers them and handled as a
/// batch after each message, so that any number of changes costs one paint. A program derives its main frame from it.
/// GUI thread only. The window system is not owned and ends after the GUI; all panels end before it.
class GUI {
public:
    /// The two forms of the program's name; the windows take the one that the system understands.
    GUI(IWindowSystem& windowSystem, const String& wideName, const String& narrowName);
    GUI(const GUI&) = delete;
    GUI& operator=(const GUI&) = delete;
    /// Deletes the context objects of all panels.
    virtual ~GUI();

    virtual void Paint();
    /// The mouse has left a window and is now at that desktop position.
    virtual void OnMouseLeave(std::int32_t x, std::int32_t y);
    virtual void OnMouseMove(std::int32_t x, std::int32_t y);
    virtual void OnMouseLButtonDown(std::int32_t x, std::int32_t y);
    virtual void OnMouseLButtonUp(std::int32_t x, std::int32_t y);
    /// The context and the main window are there.
    virtual void OnContextCreated();
    virtual GUI& GetRoot();
    virtual std::int32_t OnMouseWheel(std::uintptr_t wParam, std::intptr_t lParam);
    virtual std::int32_t OnMouseHWheel(std::uintptr_t wParam, std::intptr_t lParam);
    /// The main window moved by that many pixels, or was sized: the panels tied to it move along.
    virtual void OnWindowMoved(std::int32_t dx, std::int32_t dy);
    /// A worker's message with the number UserMessage::LoadFinished.
    virtual void OnUserMessage(std::uintptr_t wParam, std::intptr_t lParam);
    virtual void OnFilesDropped(const std::vector<String>& paths);
    /// Ends the program: the windows go, and the loop.
    virtual void OnClose();
    virtual void OnTimer(std::uintptr_t identifier);
    /// Once, after the first paint of the main panel.
    virtual void OnFirstPaint();
    /// All that was made from the context goes, and the context with it. A subclass does here, before it calls this,
    /// what must happen while the window still stands. Called once, by Shutdown.
    virtual void OnDestroyWindow();
    /// A key of any window: the panel that has the keyboard gets it first, then the panel of the window.
    virtual bool OnKeyDown(Panel& panel, std::uint32_t key, std::intptr_t repeatData);
    virtual bool OnKeyUp(Panel& panel, std::uint32_t key, std::intptr_t repeatData);
    /// Makes the context and the first renderer, by the wanted backend or what stands in for it. Raises what the last
    /// attempt raised.
    virtual SharedPtr<Platform::Video::Renderer> CreateContext(const SharedPtr<Win32Window>& window);
    /// Drops a move to the position where the mouse is already, if a panel lies there.
    virtual void OnMouseMoveFiltered(std::int32_t x, std::int32_t y);
    virtual SharedPtr<Platform::Video::Context> CreateDirect3D9Context(const SharedPtr<Win32Window>& window);
    virtual SharedPtr<Platform::Video::Context> CreateSoftwareContext(const SharedPtr<Win32Window>& window);
    virtual SharedPtr<Platform::Video::Context> CreateOpenGLContext(const SharedPtr<Win32Window>& window);

    /// Adds the panel on top. Raises Exception "GUI::AddPanel: Panel is nullptr" or "GUI::AddPanel: Panel was already
    /// added".
    void AddPanel(const SharedPtr<Panel>& panel);
    /// The panel of the main window; it is added as the lowest one.
    void AddMainPanel(const SharedPtr<Panel>& panel);
    /// A panel that is not there is ignored. Windows above it are hidden until the next paint.
    void RemovePanel(Panel& panel);
    bool HoldsPanel(const Panel& panel) const;
    void RaisePanel(const Panel& panel);
    /// From the lowest to the topmost.
    const std::vector<SharedPtr<Panel>>& GetPanels() const { return panels; }
    const SharedPtr<Panel>& GetMainPanel() const { return mainPanel; }
    /// Null before CreateMainWindow.
    Win32Window* GetMainWindow() const;
    /// Only this panel gets the mouse from now on, and those tied to it; null lifts that.
    void SetModalPanel(Panel* panel);
    Panel* GetModalPanel() const { return modalPanel; }
    /// Whether a window of the program has the keyboard focus.
    bool HasFocus() const { return hasFocus; }

    /// Makes the main window, hidden, with its context and renderer.
    void CreateMainWindow();
    /// Paints for the first time, which shows the windows.
    void ShowMainWindow();
    void MoveMainWindow(const Rect& rect);
    /// Dispatches messages until the quit message; returns its exit code.
    int Run();
    void HandleGUIMessages();
    /// Runs OnDestroyWindow, the first time it is called. A subclass calls it in its destructor.
    void Shutdown();

    /// Asks for a paint of all panels.
    void Invalidate();
    /// Paints and shows all panels that need it. True, and nothing done, while it runs already.
    bool OnGlobalPaint();

    IWindowSystem& GetWindowSystem() const { return windowSystem; }
    const SharedPtr<Platform::Video::Context>& GetContext() const { return context; }
    /// The renderer that is drawn with at present, else the main panel's; null before there is one.
    SharedPtr<Platform::Video::Renderer> GetRenderer() const;
    SharedPtr<Platform::Video::Renderer> CreateRenderer(const SharedPtr<Win32Window>& window);
    const SharedPtr<Style>& GetStyle() const { return style; }
    void SetStyle(const SharedPtr<Style>& newStyle);
    Font& GetFont() { return mainPanel->GetFont(); }
    const String& GetProgramName() const;

    /// The setting. It is not changed by a fallback.
    void SetWantedRenderer(Platform::Video::RendererTypeEnum type) { wantedRenderer = type; }
    Platform::Video::RendererTypeEnum GetWantedRenderer() const { return wantedRenderer; }
    /// What is really in use.
    Platform::Video::RendererTypeEnum GetCurrentRenderer() const { return currentRenderer; }

    // What the windows report; see IWindowEvents.
    void QueueMouseMessage(const MouseMessage& message);
    void HandleKeyDown(Win32Window& window, std::uint32_t key, std::intptr_t repeatData);
    void HandleKeyUp(Win32Window& window, std::uint32_t key, std::intptr_t repeatData);
    void HandleMovedOrSized(Win32Window& window, bool isMinimized);
    void HandlePaint(Win32Window& window);
    void HandleClose(Win32Window& window);
    void HandleDestroyed(Win32Window& window);
    void HandleActivated(Win32Window& window, bool isActive);
    void HandleFocusChanged(Win32Window& window, bool isGained, const IPlatformWindow* other);
    void HandleEnabled(Win32Window& window, bool isEnabled);
    void HandleSystemColorsChanged();
    void HandleCompositionChanged(Win32Window& window);
    void HandleCancelMode();
    void HandleMouseActivate(Win32Window& window);
    void HandleUserMessage(Win32Window& window, std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam);

    /// A panel tells that it has got a window, or that it ends.
    void RegisterSurface(Panel& panel);
    void ForgetPanel(Panel& panel);
    /// A window is about to go: it gives up the mouse, and those that float above it go to NEW_PARENT.
    void DetachWindow(Win32Window& window, Win32Window* newParent);
    /// Keeps a window that its panel has given up until the event at hand is done.
    void RetireWindow(SharedPtr<Win32Window> window);
    /// A window tells that it has begun or ended.
    void CountWindow(std::ptrdiff_t change) { windowCount += change; }
    /// A panel tells that one of its controls has got the keyboard, or that none has it any more.
    void SetKeyboardPanel(Panel& panel, bool hasKeyboard);
    /// Asks the platform for a paint once what waits is handled.
    void SchedulePaint();
    /// Set while a frame is drawn: a control that asks for a paint meanwhile is in that frame already.
    void SetDrawing(bool isNowDrawing) { isDrawing = isNowDrawing; }

    Listeners mouseMoveListeners;
    Listeners lButtonUpListeners;
    Listeners wheelListeners;
    Capture capture;

protected:
    /// The part of OnDestroyWindow that needs the window: gestures and input end.
    void PrepareForDestruction();
    /// Reports "GUI::DeleteContextObjects" if something could not be released. The context goes unless objects of it
    /// live on.
    void DeleteContextObjects();

private:
    void HandleMouseMessage(const MouseMessage& message);
    bool IsBlocked(const Panel& panel) const;
    bool IsBlocked(const IPlatformWindow& window) const;
    SharedPtr<Panel> FindPanelAt(std::int32_t x, std::int32_t y);
    void SetHoverPanel(Panel* panel);
    void ClearHover();
    void ReleaseTiedPanels(Panel& panel);
    void ReleaseWindows();
    void FlashModalWindow(Win32Window& modal);

    void PaintAll();
    void EnterMainPanel();
    void RebuildMonitors();
    void DecideWindowTypes();
    void EnterOtherPanels();
    void MoveOwnWindows();
    void RedrawPanels();
    void PresentPanels();
    void ShowNewWindows();
    void FlushComposition();
    void PresentNested(Panel& panel);

    IWindowSystem& windowSystem;
    String programNameWide;
    String programNameNarrow;
    SharedPtr<Platform::Video::Context> context;
    Platform::Video::RendererTypeEnum wantedRenderer = Platform::Video::RendererTypeEnum::OpenGL;
    Platform::Video::RendererTypeEnum currentRenderer = Platform::Video::RendererTypeEnum::OpenGL;
    SharedPtr<Style> style;

    std::vector<SharedPtr<Panel>> panels; ///< The topmost last.
    SharedPtr<Panel> mainPanel;
    std::vector<Panel*> surfacePanels; ///< All panels with a window or a renderer, also those that have left.
    Panel* modalPanel = nullptr;
    Panel* hoverPanel = nullptr;
    Panel* keyboardPanel = nullptr;
    std::vector<Rect> monitors;
    std::vector<SharedPtr<Win32Window>> retiredWindows; ///< Given up by their panels.
    std::vector<SharedPtr<Win32Window>> lostWindows;    ///< Destroyed by others; workers may still post to them.
    std::ptrdiff_t windowCount = 0;

    std::deque<MouseMessage> messages;
    // No position at first, so that the first move counts whatever it is.
    std::int16_t mouseX = INT16_MIN;
    std::int16_t mouseY = INT16_MIN;
    std::int32_t lButtonDown = 0;
    bool hasFocus = false;
    bool isHandlingMessages = false;
    bool paintPending = false;
    bool isDrawing = false;
    bool wasPainted = false;
    bool isShutDown = false;
};

} // namespace Quorvex::GUI
