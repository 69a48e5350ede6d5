#include "foundation/Report.h"
#include "gui/GUI.h"
#include "gui/Panel.h"
#include "video/Renderer.h"
#include "view/Varnolite.h"

#include <algorithm>

namespace Quorvex::View {

using Data::ColorBGRA;
using Platform::Video::ImageRect;

void Varnolite::Paint() {
    if (!IsVisible())
        return;
    if (HasImage())
        PaintImage();
    else
        PaintLabel();
}

void Varnolite::PaintLabel() {
    if (label.GetText().IsEmpty())
        return;
    const ColorBGRA<float> background = GetPanel()->GetBackgroundColor();
    const bool isBright = (background.red + background.green + background.blue) * 0.33333334f >= 0.73f;
    label.SetForegroundColor(isBright ? ColorBGRA<float>{0, 0, 0, 1} : ColorBGRA<float>{1, 1, 1, 1});
    constexpr std::int32_t halfHeight = 7;
    const std::int32_t half = (bottom - top) / 2;
    label.SetRect(0, half - halfHeight, right - left, half + halfHeight);
    label.SetAlignment(GUI::Label::Alignment::Centered);
    label.Paint();
}

void Varnolite::PaintImage() {
    // The stored offset may lie beyond the limit while a drag lasts; what is shown never does.
    const auto [shownX, shownY] = ClampScroll(transform.scrollX, transform.scrollY);
    ImageRect rect = ComputeImageRect(shownX, shownY);
    rect.mode = resampling.mode;
    rect.prepared = true;
    rect.unchanged = !imageChanged;
    imageChanged = false;
    Platform::Video::Renderer& renderer = *GetPanel()->GetRenderer();
    if (!image.hasAlpha)
        renderer.DisableBlending();
    rect.clipX0 = std::max(std::min(rect.x0, rect.x1), left);
    rect.clipX1 = std::min(std::max(rect.x0, rect.x1), right);
    rect.clipY0 = std::max(std::min(rect.y0, rect.y1), top);
    rect.clipY1 = std::min(std::max(rect.y0, rect.y1), bottom);
    resampling.Draw(renderer, image, rect);
    if (rgbOverlayVisible && rgbOverlay != nullptr)
        rgbOverlay->PaintOver(rect, userImage, 1 / transform.inverseZoom);
    if (!image.hasAlpha)
        renderer.EnableBlending();
    // Last, with blending on: the ruler stays readable over the values, whatever the image.
    if (rulerVisible && ruler != nullptr)
        ruler->PaintOver(rect, userImage, 1 / transform.inverseZoom);
}

bool Varnolite::DeleteContextObjects() {
    image.DeleteContextObjects();
    bool isComplete = resampling.DeleteContextObjects();
    isComplete = ControlList::DeleteContextObjects() && isComplete;
    if (!isComplete)
        ReportProblem(__LINE__, "Varnolite::DeleteContextObjects");
    return isComplete;
}

} // namespace Quorvex::View
