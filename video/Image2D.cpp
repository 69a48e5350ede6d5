#include "video/Image2D.h"

#include "data/Dispatch.h"

namespace Quorvex::Platform::Video {

Image2D::Image2D(Context* owner, SharedPtr<Context> sharedContext, Function<void> uploadAgain)
    : ContextChild(owner, std::move(sharedContext)), repeatUpload(uploadAgain) {}

void Image2D::OnDeviceReset() {
    if (repeatUpload)
        repeatUpload();
}

void CheckTextureUpload(const Data::ImageBase& image, std::uint32_t largestSide) {
    Data::Dispatch(image.ColorType, "invalid color type", [](auto) {});
    if (image.AllocatedWidth > largestSide || image.AllocatedHeight > largestSide)
        throw Exception(BilingualText{"Die Bildauflösung wird von Ihrer Grafikkarte nicht unterstützt."_t,
                                      "The image resolution is not supported by your graphics card."});
}

} // namespace Quorvex::Platform::Video
