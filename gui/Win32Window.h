#pragma once

#include "foundation/SharedPtr.h"
#include "gui/Win32WindowRAW.h"
#include "gui/WindowProcedure.h"

#include <span>

namespace Quorvex::GUI {

class GUI;
class Panel;

/// A platform window as it is shared between the panel that it belongs to and the renderer that draws into it: the
/// window goes when the last of both does. GUI thread.
class Win32Window final : public Platform::Video::IWindowSurface, public EnableSharedPtrFromThis {
public:
    /// Creates the window, hidden. Raises Exception where the system refuses.
    static SharedPtr<Win32Window> Create(GUI& gui, WindowKind kind, const Rect& clientRect, const String& title,
                                         Panel& panel);
    ~Win32Window() override;

    /// The shared object of a raw window. Raises Exception "Win32Window::SmartPointerFromWin32WindowRAW" without one.
    static SharedPtr<Win32Window> SmartPointerFromWin32WindowRAW(const Win32WindowRAW* raw);
    /// Ties the window of every panel whose parent window is PARENT to NEW_PARENT instead.
    static void SetParentOfAllChilds(std::span<const SharedPtr<Panel>> panels, const Win32Window& parent,
                                     Win32Window* newParent);

    /// Null once the panel has let go of the window.
    Panel* GetPanel() const { return m_panel; }
    void DetachPanel() { m_panel = nullptr; }
    Win32WindowRAW& GetRaw() { return *m_raw; }
    IPlatformWindow& GetPlatformWindow() const { return m_raw->GetPlatformWindow(); }
    void SetParent(Win32Window* parent);
    const Win32Window* GetParent() const { return m_parent; }

    void* GetNativeHandle() const override;
    bool IsLayered() const override;
    void ShowOpaque(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                    std::uint32_t pitchBytes) override;
    void ShowWithAlpha(const std::uint8_t* bits, std::uint32_t width, std::uint32_t height,
                       std::uint32_t pitchBytes) override;
    void DispatchMouseMessagesAndHide() override;
    bool IsCompositionEnabled() const override;

private:
    Win32Window(GUI& gui, Panel& panel);

    GUI& m_gui;
    WindowProcedure m_procedure;
    std::unique_ptr<Win32WindowRAW> m_raw;
    Panel* m_panel;
    Win32Window* m_parent = nullptr;
};

} // namespace Quorvex::GUI
