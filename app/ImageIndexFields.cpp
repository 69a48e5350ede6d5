#include "app/ImageIndexFields.h"

#include "foundation/Numbers.h"

namespace Quorvex::App {

namespace {

std::uint32_t Rounded(double position) {
    return static_cast<std::uint32_t>(position + 0.5);
}

} // namespace

void ImageIndexFields::Show(std::uint32_t loadedImage, std::uint32_t imageCount) {
    index = IntegerToString(std::uint64_t{loadedImage});
    slash = "/";
    count = IntegerToString(std::uint64_t{imageCount});
    isSliderVisible = imageCount >= 2;
    sliderMaximum = isSliderVisible ? imageCount : 1;
    sliderPosition = loadedImage;
    if (isSliderInSync)
        sliderTarget = loadedImage;
}

void ImageIndexFields::Clear() {
    index = slash = count = String();
    isSliderVisible = false;
}

bool ImageIndexFields::IsTargetElsewhere() const {
    return Rounded(sliderPosition) != Rounded(sliderTarget);
}

std::uint32_t ImageIndexFields::GetTarget() const {
    return Rounded(sliderTarget);
}

} // namespace Quorvex::App
