#pragma once

#include "data/ColorBGRA.h"
#include "gui/window/WindowSystem.h"

namespace Quorvex::GUI {

/// Straight colours of window captions, channels 0 to 1, alpha 1.
struct CaptionColors {
    using Color = Data::ColorBGRA<float>;

    Color active{0.0f, 0.0f, 0.0f, 1.0f};
    Color activeText{1.0f, 1.0f, 1.0f, 1.0f};
    Color inactive{0.0f, 0.0f, 0.0f, 1.0f};
    Color inactiveText{1.0f, 1.0f, 1.0f, 1.0f};
};

/// What the desktop says at present. Gradient captions count with the mean of their two ends; on the systems that tint
/// captions by a colour of the user's, 6.2 and 6.3, that colour counts instead.
CaptionColors ReadCaptionColors(const IWindowSystem& windowSystem);

/// The process-wide colours that panels take when they are built; the GUI reads them at its start and whenever the
/// desktop's colours change. GUI thread.
const CaptionColors& GetCaptionColors();
void SetCaptionColors(const CaptionColors& colors);

} // namespace Quorvex::GUI
