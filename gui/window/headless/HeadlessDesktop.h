#pragma once

#include "gui/window/WindowSystem.h"

#include <map>
#include <optional>
#include <vector>

namespace Quorvex::GUI {

/// What a window system in memory answers when it is asked about the desktop. A test sets the fields as it likes,
/// before or while the program runs. GUI thread.
struct HeadlessDesktop {
    /// Empty: the system cannot enumerate its monitors.
    std::vector<Rect> monitors{{0, 0, 1920, 1080}};
    /// By monitor; a monitor without an entry is free as a whole.
    std::vector<Rect> workAreas{{0, 0, 1920, 1040}};
    Rect primaryScreen{0, 0, 1920, 1080};
    std::uint32_t dpi = 96;
    std::int32_t mouseX = 960;
    std::int32_t mouseY = 540;

    bool isCompositionEnabled = true;
    /// Whether windows can have per-pixel alpha.
    bool allowsLayered = true;
    /// The next windows are refused with an Exception.
    bool refusesWindows = false;
    /// Invalidate is refused and reported as "InvalidateRect".
    bool refusesInvalidate = false;

    /// 0x00BBGGRR.
    std::map<SystemColor, std::uint32_t> colors{
        {SystemColor::ActiveCaption, 0x00D1B499},         {SystemColor::InactiveCaption, 0x00DBCDBF},
        {SystemColor::CaptionText, 0x00000000},           {SystemColor::InactiveCaptionText, 0x00000000},
        {SystemColor::GradientActiveCaption, 0x00EAD1B9}, {SystemColor::GradientInactiveCaption, 0x00F2E4D7}};
    std::optional<bool> hasGradientCaptions = true;
    std::optional<IWindowSystem::Colorization> colorization;
    std::uint32_t flashCount = 3;
    std::uint32_t caretBlinkMilliseconds = 530;

    Rect GetWorkAreaNearest(const Rect& rect) const;
};

} // namespace Quorvex::GUI
