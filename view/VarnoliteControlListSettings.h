#pragma once

#include "settings/Property.h"
#include "video/ResamplingMode.h"

namespace Quorvex::View {

/// The settings of the image view and the tools around it, with their defaults. The order is that of the settings file.
/// GUI thread only.
class VarnoliteControlListSettings : public CompositeOfProperties {
    using Mode = Platform::Video::EnumResamplingMode;

public:
    explicit VarnoliteControlListSettings(std::string name = "VarnoliteControlListSettings")
        : CompositeOfProperties(std::move(name)) {}

    /// Sampling methods below, at and above 100 %.
    PropertyWithNotification<Mode> InterpolationL100{"InterpolationL100", this, Mode::Area};
    PropertyWithNotification<Mode> InterpolationE100{"InterpolationE100", this, Mode::Nearest};
    PropertyWithNotification<Mode> InterpolationG100{"InterpolationG100", this, Mode::Cubic};
    PropertyWithNotification<bool> Ruler{"Ruler", this, false};
    PropertyWithNotification<bool> Histogram{"Histogram", this, false};
    PropertyWithNotification<bool> ScrollBars{"ScrollBars", this, false};
    PropertyWithNotification<bool> RGBColorInfo{"RGBColorInfo", this, true};
    PropertyWithNotification<bool> BrightnessContrast{"BrightnessContrast", this, false};
};

} // namespace Quorvex::View
