#include "app/VarnoliteApplication.h"

#include "app/WindowTitle.h"
#include "foundation/Report.h"
#include "foundation/Version.h"
#include "gui/GUI.h"
#include "gui/Scale.h"
#include "gui/Win32Window.h"

#include <utility>

namespace Quorvex::App {

VarnoliteApplication::VarnoliteApplication() {
    add(m_view);
    add(m_status);
    m_status.SetVisible(false);
    m_view.SetEnabled(true);
    m_view.zoomChanged.Bind(this, &VarnoliteApplication::ApplySamplingMethod);
    ApplySamplingMethod(m_view);
    SetBackgroundColor(m_settings.BackgroundColor.Get());
}

// Below, at and above 100 %: a reduction must not skip samples, the original must stand pixel for pixel, and an
// enlargement is the user's choice.
void VarnoliteApplication::ApplySamplingMethod(View::Varnolite& view) {
    const double inverseZoom = view.GetTransform().inverseZoom;
    const auto& setting = inverseZoom > 1   ? m_settings.InterpolationL100
                          : inverseZoom < 1 ? m_settings.InterpolationG100
                                            : m_settings.InterpolationE100;
    view.GetResampling().mode = setting.Get();
}

void VarnoliteApplication::OpenFile(const String& path, SharedPtr<FileList> fileList) {
    GUI::Win32Window* window = GetGUI() != nullptr ? GetGUI()->GetMainWindow() : nullptr;
    if (window == nullptr)
        throw Exception();
    // One encoding for all paths: slots compare them as they stand.
    m_imageManager.Open(getGUI().GetContext(), window->GetPlatformWindow(),
                        IsUnicodeSystem() ? path.ToWide() : path.ToANSI(), std::move(fileList));
}

void VarnoliteApplication::OpenFileOrExplain(const String& path) {
    try {
        OpenFile(path, {});
    } catch (const std::exception& failure) {
        ShowFailure(failure);
        ShowTitle(path);
        Layout();
    }
}

void VarnoliteApplication::OnWMUSER(std::uintptr_t action, ImageSlot& slot) {
    slot.Join();
    if (!slot.IsForeground()) {
        // Decoded ahead: the result lies ready in the list, and nothing is shown.
        --slot.GetCounterRef();
        return;
    }
    slot.SetForeground(false);
    m_imageManager.ClearBusy();
    LoadFile(slot);
    if (m_indexFields.IsTargetElsewhere())
        m_imageManager.ArbitraryImageFromIndex(m_indexFields.GetTarget(), slot, true);
    else
        m_indexFields.isSliderInSync = true;
    m_imageManager.CarryOut(static_cast<PrefetchAction>(action), *g_CurrentImageSlot);
}

void VarnoliteApplication::SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight,
                                   std::int32_t newBottom) {
    Panel::SetRect(newLeft, newTop, newRight, newBottom);
    StoreWindowRectangle();
    Layout();
}

void VarnoliteApplication::StoreWindowRectangle() {
    const GUI::Win32Window* window = GetGUI() != nullptr ? GetGUI()->GetMainWindow() : nullptr;
    if (window == nullptr || window->GetPlatformWindow().IsIconic() || m_isFullscreen)
        return;
    m_settings.WindowX0.Set(left);
    m_settings.WindowY0.Set(top);
    m_settings.WindowX1.Set(right);
    m_settings.WindowY1.Set(bottom);
}

void VarnoliteApplication::Layout() {
    const std::int32_t width = right - left;
    const std::int32_t height = bottom - top;
    std::int32_t viewTop = 0;
    if (m_status.IsVisible() && !m_isFullscreen) {
        const std::int32_t statusHeight = 20 * GUI::GetScale();
        m_status.SetRect(0, viewTop, width, viewTop + statusHeight);
        viewTop += statusHeight;
    }
    m_view.SetRect(0, viewTop, width, height);
}

void VarnoliteApplication::ReleaseImages() {
    if (g_CurrentImageSlot != nullptr)
        --std::exchange(g_CurrentImageSlot, nullptr)->GetCounterRef();
    m_imageManager.ClearSlots();
    m_imageManager.ReleaseContext();
    m_currentImage.reset();
}

} // namespace Quorvex::App
