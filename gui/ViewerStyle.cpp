#include "gui/ViewerStyle.h"

#include "gui/Scale.h"

namespace Quorvex::GUI {

namespace {

// The horizontal sides take the corners, so that no pixel of a translucent frame is drawn twice.
void DrawRing(QuadWriter& writer, const Rect& rect, const FrameColors& colors) {
    const std::int32_t width = GetScale();
    const Rect inner{rect.left + width, rect.top + width, rect.right - width, rect.bottom - width};
    writer.Write({rect.left, rect.top, rect.right, inner.top}, colors.top);
    writer.Write({rect.left, inner.bottom, rect.right, rect.bottom}, colors.bottom);
    writer.Write({rect.left, inner.top, inner.left, inner.bottom}, colors.left);
    writer.Write({inner.right, inner.top, rect.right, inner.bottom}, colors.right);
}

Rect WithinRing(const Rect& rect) {
    const std::int32_t width = GetScale();
    return {rect.left + width, rect.top + width, rect.right - width, rect.bottom - width};
}

FrameColors Opposite(const FrameColors& colors) {
    return {colors.right, colors.bottom, colors.left, colors.top};
}

} // namespace

void ViewerStyle::DrawButtonFrame(QuadWriter& writer, const Rect& rect) const {
    DrawRing(
        writer, rect,
        {GetButtonFrameLeftColor(), GetButtonFrameTopColor(), GetButtonFrameRightColor(), GetButtonFrameBottomColor()});
}

void ViewerStyle::DrawPressedButtonFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const {
    DrawRing(writer, rect, Opposite(colors));
}

void ViewerStyle::DrawEditFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const {
    DrawRing(writer, rect, colors);
}

void ViewerStyle::DrawListFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const {
    DrawRing(writer, rect, colors);
}

void ViewerStyle::DrawPanelFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const {
    DrawRing(writer, rect, colors);
}

void ViewerStyle::DrawRaisedFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const {
    DrawRing(writer, rect, colors);
    DrawRing(writer, WithinRing(rect), colors);
}

void ViewerStyle::DrawSunkenFrame(QuadWriter& writer, const Rect& rect, const FrameColors& colors) const {
    DrawRing(writer, rect, Opposite(colors));
    DrawRing(writer, WithinRing(rect), Opposite(colors));
}

SharedPtr<Style> ViewerStyle::CreateStyleWithOpaquePanelBackground() const {
    return SharedPtr<Style>(new ViewerStyleWithOpaquePanelBackground());
}

} // namespace Quorvex::GUI
