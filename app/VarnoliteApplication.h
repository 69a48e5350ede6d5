#pragma once

#include "app/ImageIndexFields.h"
#include "app/ImageManager.h"
#include "app/VarnoliteSettings.h"
#include "gui/Label.h"
#include "gui/Panel.h"
#include "view/Varnolite.h"

#include <optional>

namespace Quorvex::App {

/// The one panel that fills the main window, and the owner of everything the program works with: the image manager, the
/// settings and the view. LoadFile is the single place where a finished load becomes the current image. GUI thread
/// only.
class VarnoliteApplication : public GUI::Panel {
public:
    VarnoliteApplication();

    void SetRect(std::int32_t newLeft, std::int32_t newTop, std::int32_t newRight, std::int32_t newBottom) override;

    /// Starts to load the default image of a file; without a file list one is built. Raises Exception without a window,
    /// and where the file cannot be opened.
    void OpenFile(const String& path, SharedPtr<FileList> fileList);
    /// The same for a path that the user gave: a file that cannot be opened is explained in the view.
    void OpenFileOrExplain(const String& path);
    /// A worker's message: its slot is done. Shows it if the user waits for it, and decodes ahead what the action says.
    void OnWMUSER(std::uintptr_t action, ImageSlot& slot);
    /// Makes a finished slot the current one: its image, or the reason why there is none.
    void LoadFile(ImageSlot& slot);
    /// Drops slots, context and image, in the order in which they hold on to each other. Waits for the workers.
    void ReleaseImages();

    VarnoliteSettings& GetSettings() { return m_settings; }
    View::Varnolite& GetView() { return m_view; }
    ImageManager& GetImageManager() { return m_imageManager; }
    ImageIndexFields& GetImageIndexFields() { return m_indexFields; }
    const GUI::Label& GetStatusLabel() const { return m_status; }
    const SharedPtr<Data::ImageBase>& GetCurrentImage() const { return m_currentImage; }
    /// The slot that is shown; null before the first load.
    const ImageSlot* GetCurrentSlot() const { return g_CurrentImageSlot; }

private:
    struct ShownImage {
        String path;
        std::uint32_t number;
    };

    void TakeResults(const ImageSlot& slot);
    void ShowWarnings(const ET::Img::ImageFile& decoder);
    void ShowImage(const ImageSlot& slot);
    void ShowFailure(const std::exception& failure);
    void ShowStatus(const BilingualText& text);
    void HideStatus();
    void ResetView(std::uint32_t orientation);
    void MakeCurrent(ImageSlot& slot);
    void ShowTitle(const String& path);
    void Layout();
    void StoreWindowRectangle();
    void ApplySamplingMethod(View::Varnolite& view);

    ImageManager m_imageManager;
    SharedPtr<Data::ImageBase> m_currentImage;
    ImageSlot* g_CurrentImageSlot = nullptr;
    /// What the view shows, empty after a failure: the next image then starts with a fresh view.
    std::optional<ShownImage> m_shown;
    bool m_isFullscreen = false;
    View::Varnolite m_view;
    ImageIndexFields m_indexFields;
    GUI::Label m_status;
    VarnoliteSettings m_settings;
};

} // namespace Quorvex::App
