#pragma once

#include "gui/Style.h"

namespace Quorvex::GUI {

/// The style of the viewer: light text on dark panels that let the picture behind them through, and buttons without
/// frames. It does not follow the desktop's colours.
class ViewerStyle : public Style {
public:
    void ReadSystemColors() override {}

    Color GetButtonBackgroundColor() const override { return none; }
    Color GetButtonTextColor() const override { return white; }
    Color GetButtonFrameLeftColor() const override { return none; }
    Color GetButtonFrameTopColor() const override { return none; }
    Color GetButtonHoverTextColor() const override { return white; }
    Color GetButtonFrameRightColor() const override { return none; }
    Color GetButtonFrameBottomColor() const override { return none; }
    Color GetEditBackgroundColor() const override { return black; }
    Color GetRowTextColor() const override { return white; }
    Color GetListFrameColor() const override { return {0.5f, 0.5f, 0.5f, 1.0f}; }
    Color GetRowBackgroundColor() const override { return black; }
    Color GetEditTextColor() const override { return white; }
    Color GetHoveredRowTextColor() const override { return lightGrey; }
    Color GetHoveredRowBackgroundColor() const override { return black; }

    void DrawButtonFrame(QuadWriter& writer, const Rect& rect) const override;
    void DrawPressedButtonFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const override;
    void DrawEditFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const override;
    void DrawListFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const override;

    Color GetToolbarBackgroundColor() const override { return none; }
    Color GetToolbarTextColor() const override { return white; }
    Color GetPanelBackgroundColor() const override { return translucent; }
    Color GetPanelTitleColor() const override { return {0.0f, 0.0f, 0.0f, 0.67f}; }
    Color GetToolPanelBackgroundColor() const override { return GetPanelBackgroundColor(); }
    Color GetInactivePanelTitleColor() const override { return {0.2f, 0.2f, 0.2f, 0.67f}; }
    Color GetDialogBackgroundColor() const override { return GetPanelBackgroundColor(); }
    void DrawPanelFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const override;
    Color GetTooltipBackgroundColor() const override { return translucent; }
    Color GetTooltipTextColor() const override { return {1.0f, 1.0f, 1.0f, 0.75f}; }
    Color GetStatusBackgroundColor() const override { return translucent; }
    Color GetStatusTextColor() const override { return white; }

    void DrawRaisedFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const override;
    void DrawSunkenFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const override;

    Color GetSliderColor() const override { return lightGrey; }
    Color GetSliderGrooveColor() const override { return {0.3f, 0.3f, 0.3f, 1.0f}; }
    Color GetScrollBarBackgroundColor() const override { return none; }
    Color GetSelectionColor() const override { return {0.88f, 1.0f, 1.0f, 1.0f}; }
    Color GetSelectionTextColor() const override { return black; }
    Color GetDisabledTextColor() const override { return {0.5f, 0.5f, 0.5f, 1.0f}; }
    Color GetScrollBarColor() const override { return lightGrey; }

    SharedPtr<Style> CreateStyleWithOpaquePanelBackground() const override;

private:
    static constexpr Color none{0.0f, 0.0f, 0.0f, 0.0f};
    static constexpr Color black{0.0f, 0.0f, 0.0f, 1.0f};
    static constexpr Color white{1.0f, 1.0f, 1.0f, 1.0f};
    static constexpr Color lightGrey{0.7f, 0.7f, 0.7f, 1.0f};
    static constexpr Color translucent{0.1f, 0.1f, 0.1f, 0.67f};
};

/// The viewer's style where a panel is shown without transparency: its colours as they look over the default background
/// of a panel.
class ViewerStyleWithOpaquePanelBackground final : public ViewerStyle {
public:
    Color GetPanelBackgroundColor() const override { return {0.245588f, 0.243f, 0.243f, 1.0f}; }
    Color GetPanelTitleColor() const override { return {0.312588f, 0.31f, 0.31f, 1.0f}; }
    Color GetInactivePanelTitleColor() const override { return {0.178588f, 0.176f, 0.176f, 1.0f}; }
};

} // namespace Quorvex::GUI
