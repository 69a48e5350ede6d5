#include "app/LoadTexts.h"
#include "app/VarnoliteApplication.h"
#include "app/WindowTitle.h"
#include "foundation/Report.h"
#include "gui/GUI.h"
#include "gui/Win32Window.h"

#include <utility>

// From a finished slot to the current image.
namespace Quorvex::App {

namespace {

/// Degrees counterclockwise that show an image upright whose orientation is numbered as the Exif tag Orientation does
/// (Exif 2.32, 4.6.4 A). The mirrored orientations are shown as stored.
std::int32_t RotationOf(std::uint32_t orientation) {
    switch (orientation) {
    case 3:
        return 180;
    case 6:
        return 270;
    case 8:
        return 90;
    default:
        return 0;
    }
}

} // namespace

void VarnoliteApplication::LoadFile(ImageSlot& slot) {
    if (m_status.IsVisible())
        HideStatus();
    try {
        TakeResults(slot);
    } catch (const std::exception& failure) {
        ShowFailure(failure);
    }
    Invalidate();
    ShowTitle(slot.GetRequest().path);
    Layout();
    MakeCurrent(slot);
}

void VarnoliteApplication::TakeResults(const ImageSlot& slot) {
    // Raises what the worker caught.
    m_currentImage = slot.GetImage();
    ShowWarnings(*slot.GetDecoder());
    m_indexFields.Show(slot.GetLoadedImage(), slot.GetDecoder()->GetCount());
    ShowImage(slot);
}

// The extension comes last: of two warnings it is the one that the user can do something about.
void VarnoliteApplication::ShowWarnings(const ET::Img::ImageFile& decoder) {
    if (decoder.IsIncomplete())
        ShowStatus(IncompleteImageText());
    if (decoder.WrongFilenameExtension)
        ShowStatus(WrongFilenameExtensionText());
}

// Another image of the same file keeps the view, so that stepping through a file holds the place. The same image again
// is one that has changed on disk, and starts over like any other.
void VarnoliteApplication::ShowImage(const ImageSlot& slot) {
    Platform::Video::Image2DMeta display;
    display.CreateFromMemory(getGUI().GetContext(), m_currentImage);
    m_view.SetImage(std::move(display), m_currentImage);
    const ShownImage shown{slot.GetRequest().path, slot.GetLoadedImage()};
    const bool keepsView = m_shown && m_shown->path == shown.path && m_shown->number != shown.number;
    if (!keepsView)
        ResetView(slot.GetDecoder()->GetOrientation());
    m_shown = shown;
}

void VarnoliteApplication::ResetView(std::uint32_t orientation) {
    m_view.SetRotation(RotationOf(orientation));
    m_view.FitToWindow();
}

void VarnoliteApplication::ShowFailure(const std::exception& failure) {
    m_shown.reset();
    m_view.SetLabelText(DescribeLoadFailure(failure));
    m_view.SetImage({}, {});
    m_indexFields.Clear();
}

void VarnoliteApplication::ShowStatus(const BilingualText& text) {
    m_status.SetText(text[0], text[1]);
    m_status.SetVisible(true);
}

void VarnoliteApplication::HideStatus() {
    m_status.SetVisible(false);
    Layout();
}

void VarnoliteApplication::ShowTitle(const String& path) {
    String title;
    try {
        title = MakeWindowTitle(path);
    } catch (const std::exception&) {
        // A path that cannot be shown leaves the title empty; the image is there all the same.
        title = String();
    }
    if (GUI::Win32Window* window = getGUI().GetMainWindow())
        window->GetPlatformWindow().SetTitle(title);
}

void VarnoliteApplication::MakeCurrent(ImageSlot& slot) {
    if (g_CurrentImageSlot != nullptr)
        --g_CurrentImageSlot->GetCounterRef();
    g_CurrentImageSlot = &slot;
    // One for the list, one for being current.
    if (slot.GetCounterRef() != 2)
        ReportFailure(__LINE__, "LoadFile: g_CurrentImageSlot->GetCounterRef()!=2",
                      static_cast<std::uint32_t>(slot.GetCounterRef()));
}

} // namespace Quorvex::App
