#pragma once

#include "video/RendererTypeEnum.h"
#include "view/VarnoliteControlListSettings.h"

namespace Quorvex::App {

/// All that the user can set, with the defaults of a first run. GUI thread only.
class VarnoliteSettings : public View::VarnoliteControlListSettings {
    using RendererType = Platform::Video::RendererTypeEnum;

public:
    VarnoliteSettings() : VarnoliteControlListSettings("VarnoliteSettings") {
        Language.Notification.Bind(&SetLanguage);
    }

    /// Takes effect at once.
    PropertyWithNotification<Locale::EnumLanguage> Language{"Language", this, Locale::EnumLanguage::Automatic};
    /// Read once at start.
    PropertyWithNotification<RendererType> Renderer{"Renderer", this, RendererType::Direct3D9};
    /// Behind the image; straight colour.
    PropertyWithNotification<Data::ColorBGRA<float>> BackgroundColor{
        "BackgroundColor", this, {138 / 255.0f, 136 / 255.0f, 136 / 255.0f, 1.0f}};
    PropertyWithNotification<bool> ImageInfo{"ImageInfo", this, false};
    PropertyWithNotification<bool> ConsoleOutput{"ConsoleOutput", this, false};
    /// The main window's client area on the desktop, in pixels; all 0 before it has stood anywhere.
    InitializedProperty<int> WindowX0{"WindowX0", this, 0};
    InitializedProperty<int> WindowY0{"WindowY0", this, 0};
    InitializedProperty<int> WindowX1{"WindowX1", this, 0};
    InitializedProperty<int> WindowY1{"WindowY1", this, 0};
};

} // namespace Quorvex::App
