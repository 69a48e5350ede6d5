#pragma once

#include "foundation/SharedPtr.h"
#include "gui/QuadWriter.h"

namespace Quorvex::GUI {

/// The colours of a frame's four sides.
struct FrameColors {
    QuadWriter::Color left;
    QuadWriter::Color top;
    QuadWriter::Color right;
    QuadWriter::Color bottom;
};

/// The theme of the toolkit: it answers the controls' questions for colours and draws their frames. Colours are
/// straight, channels 0 to 1. A frame operation writes quads one scale unit wide along the inside of the rectangle:
/// four of them, or eight where the frame is a double one.
class Style {
public:
    using Color = QuadWriter::Color;

    virtual ~Style() = default;
    /// The desktop's colours have changed.
    virtual void ReadSystemColors() = 0;

    virtual Color GetButtonBackgroundColor() const = 0;
    virtual Color GetButtonTextColor() const = 0;
    virtual Color GetButtonFrameLeftColor() const = 0;
    virtual Color GetButtonFrameTopColor() const = 0;
    virtual Color GetButtonHoverTextColor() const = 0;
    virtual Color GetButtonFrameRightColor() const = 0;
    virtual Color GetButtonFrameBottomColor() const = 0;
    virtual Color GetEditBackgroundColor() const = 0;
    virtual Color GetRowTextColor() const = 0;
    virtual Color GetListFrameColor() const = 0;
    virtual Color GetRowBackgroundColor() const = 0;
    virtual Color GetEditTextColor() const = 0;
    virtual Color GetHoveredRowTextColor() const = 0;
    virtual Color GetHoveredRowBackgroundColor() const = 0;

    /// In the four colours above.
    virtual void DrawButtonFrame(QuadWriter& writer, const Rect& rect) const = 0;
    virtual void DrawPressedButtonFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const = 0;
    virtual void DrawEditFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const = 0;
    virtual void DrawListFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const = 0;

    virtual Color GetToolbarBackgroundColor() const = 0;
    virtual Color GetToolbarTextColor() const = 0;
    virtual Color GetPanelBackgroundColor() const = 0;
    virtual Color GetPanelTitleColor() const = 0;
    virtual Color GetToolPanelBackgroundColor() const = 0;
    virtual Color GetInactivePanelTitleColor() const = 0;
    virtual Color GetDialogBackgroundColor() const = 0;
    virtual void DrawPanelFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const = 0;
    virtual Color GetTooltipBackgroundColor() const = 0;
    virtual Color GetTooltipTextColor() const = 0;
    virtual Color GetStatusBackgroundColor() const = 0;
    virtual Color GetStatusTextColor() const = 0;

    /// Double frames: a second ring within the first one, in the same colours or in those of the opposite sides.
    virtual void DrawRaisedFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const = 0;
    virtual void DrawSunkenFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const = 0;

    virtual Color GetSliderColor() const = 0;
    virtual Color GetSliderGrooveColor() const = 0;
    virtual Color GetScrollBarBackgroundColor() const = 0;
    virtual Color GetSelectionColor() const = 0;
    virtual Color GetSelectionTextColor() const = 0;
    virtual Color GetDisabledTextColor() const = 0;
    virtual Color GetScrollBarColor() const = 0;

    /// The same style for a panel whose window cannot let through what lies behind it.
    virtual SharedPtr<Style> CreateStyleWithOpaquePanelBackground() const = 0;
};

} // namespace Quorvex::GUI
