#pragma once

#include "foundation/String.h"

namespace Quorvex::App {

/// What the toolbar tells of the place in a file of several images: the number, the slash and the count, and a slider
/// with the position where it stands and the one where the user wants it. Positions count from 1.
struct ImageIndexFields {
    String index;
    String slash;
    String count;
    bool isSliderVisible = false;
    double sliderMaximum = 1;
    double sliderPosition = 1;
    double sliderTarget = 1;
    /// The slider stands where the shown image is. Cleared while the user moves it ahead of the load.
    bool isSliderInSync = true;

    /// Shows the number of the loaded image out of that many.
    void Show(std::uint32_t loadedImage, std::uint32_t imageCount);
    /// Nothing is loaded.
    void Clear();
    /// Whether the user has moved the slider away during a load.
    bool IsTargetElsewhere() const;
    std::uint32_t GetTarget() const;
};

} // namespace Quorvex::App
